// Every word of VR(48): what it does, how long it takes, and when it is refused.
#include <gtest/gtest.h>

#include "RunRig.h"

namespace torvane::simulator {

using namespace tests;
namespace {

constexpr int AllWords[] = {10, 11, 12, 13, 15, 17, 18, 19, 20, 21, 22};

std::string Word(int word) { return "VR(48)=" + std::to_string(word); }

void GoTo(RunRig& rig, double x, double y, double z = 0) {
  rig.Send("VR(22)=" + core::NumberText(x, -1));
  rig.Send("VR(23)=" + core::NumberText(y, -1));
  rig.Send("VR(95)=" + core::NumberText(z, -1));
  rig.Send("VR(48)=15");
  rig.Run.Advance(100);
  ASSERT_EQ(rig.Run.Mode(), MachineMode::Idle);
  rig.Events.clear();
}

TEST(ManualActions, EveryActionGivesTheWordItsRestValueAtItsEnd) {
  for (const int word : AllWords) {
    RunRig rig;
    GoTo(rig, 10, 10);
    rig.Send("VR(11)=1");
    rig.Send(Word(word));
    EXPECT_EQ(rig.Count(EventKind::ActionStarted), 1) << word;
    rig.Run.Advance(100);
    EXPECT_EQ(rig.Count(EventKind::ActionDone), 1) << word;
    EXPECT_EQ(rig.Vr(Vr::Command), 0) << word;
    EXPECT_EQ(rig.Memory.Word(Vr::Status), 0) << "an action by hand is no running program";
  }
}

TEST(ManualActions, ReferencesRunTheirAxesToZeroInPlausibleTime) {
  struct {
    int Word;
    double X, Y, Z;
    double Seconds;
  } cases[] = {{10, 0, 0, 0, 1 + 1 + 1 + 0.1 + 1 + 2},
               {11, 0, 200, 10, 1 + 1},
               {12, 100, 0, 10, 1 + 2},
               {13, 100, 200, 0, 1 + 0.1}};
  for (const auto& c : cases) {
    RunRig rig;
    GoTo(rig, 100, 200, 10);
    rig.Send(Word(c.Word));
    rig.Run.Advance(c.Seconds - 0.01);
    EXPECT_EQ(rig.Run.Mode(), MachineMode::Manual) << c.Word;
    rig.Run.Advance(0.02);
    EXPECT_EQ(rig.Run.Mode(), MachineMode::Idle) << c.Word;
    EXPECT_EQ(rig.X(), c.X) << c.Word;
    EXPECT_EQ(rig.Y(), c.Y) << c.Word;
    EXPECT_EQ(rig.Run.At().Z, c.Z) << c.Word;
  }
}

TEST(ManualActions, MoveGoesToItsThreeTargets) {
  RunRig rig;
  rig.Send("VR(22)=300");
  rig.Send("VR(23)=400");
  rig.Send("VR(48)=15");
  EXPECT_EQ(rig.Send("? ENDMOVE AXIS(1)"), "400\r\n>>");
  rig.Run.Advance(0.5);
  EXPECT_NEAR(rig.X(), 150, 1e-9);
  EXPECT_EQ(rig.Vr(Vr::FeedRate), 30000);
  rig.Run.Advance(0.5);
  EXPECT_EQ(rig.Y(), 400);
}

TEST(ManualActions, LoadPositions) {
  RunRig rig;
  rig.Send("VR(86)=1");
  rig.Send("VR(87)=2");
  rig.Send("VR(88)=30");
  rig.Send("VR(89)=40");
  rig.Send("VR(48)=17");
  rig.Run.Advance(10);
  EXPECT_EQ(rig.X(), 1);
  EXPECT_EQ(rig.Y(), 2);
  rig.Send("VR(48)=18");
  rig.Run.Advance(10);
  EXPECT_EQ(rig.X(), 30);
  EXPECT_EQ(rig.Y(), 40);
}

TEST(ManualActions, AJogGoesOnUntilItIsStopped) {
  struct {
    int Word;
    double X, Y;
  } cases[] = {{19, 100, 0}, {20, -100, 0}, {21, 0, 100}, {22, 0, -100}};
  for (const auto& c : cases) {
    RunRig rig;
    rig.Send("VR(11)=0");
    rig.Send("VR(10)=6000");
    rig.Send(Word(c.Word));
    rig.Run.Advance(1);
    rig.Send("VR(48)=0");
    rig.Run.Advance(1);
    EXPECT_NEAR(rig.X(), c.X, 1e-9) << c.Word;
    EXPECT_NEAR(rig.Y(), c.Y, 1e-9) << c.Word;
    EXPECT_EQ(rig.Run.Mode(), MachineMode::Idle);
  }
}

TEST(ManualActions, AKeyThatRepeatsItsWordJogsOn) {
  RunRig rig;
  rig.Send("VR(10)=6000");
  for (int i = 0; i < 10; ++i) {
    rig.Send("VR(48)=19");
    rig.Run.Advance(0.1);
  }
  EXPECT_NEAR(rig.X(), 100, 1e-9);
  EXPECT_EQ(rig.Count(EventKind::ActionStarted), 1);
  EXPECT_EQ(rig.Count(EventKind::ActionRefused), 0);
}

TEST(ManualActions, AJogOfAStepGoesItsDistanceThoughTheKeyIsLetGo) {
  RunRig rig;
  rig.Send("VR(11)=1");
  rig.Send("VR(12)=0.01");
  rig.Send("VR(48)=20");
  rig.Send("VR(48)=0");
  rig.Run.Advance(1);
  EXPECT_NEAR(rig.X(), -0.01, 1e-12);
  EXPECT_EQ(rig.Vr(Vr::Command), 0);
  rig.Send("VR(12)=50");
  rig.Send("VR(48)=20");
  rig.Run.Advance(10);
  EXPECT_NEAR(rig.X(), -50.01, 1e-9);
}

TEST(ManualActions, AJogThatGoesOnIsStoppedThoughStepsAreChosenMeanwhile) {
  RunRig rig;
  rig.Send("VR(11)=0");
  rig.Send("VR(10)=6000");
  rig.Send("VR(48)=19");
  rig.Run.Advance(1);
  rig.Send("VR(11)=1");
  rig.Send("VR(48)=0");
  rig.Run.Advance(1);
  EXPECT_NEAR(rig.X(), 100, 1e-9);
}

TEST(ManualActions, AnotherJogTakesOver) {
  RunRig rig;
  rig.Send("VR(10)=6000");
  rig.Send("VR(48)=19");
  rig.Run.Advance(1);
  rig.Send("VR(48)=21");
  rig.Run.Advance(1);
  rig.Send("VR(48)=0");
  EXPECT_NEAR(rig.X(), 100, 1e-9);
  EXPECT_NEAR(rig.Y(), 100, 1e-9);
}

TEST(ManualActions, JogsEndAtTheTravel) {
  MachineOptions options;
  options.TravelMinX = -10;
  options.TravelMaxX = 25;
  RunRig rig(options);
  rig.Send("VR(48)=19");
  rig.Run.Advance(100);
  EXPECT_EQ(rig.X(), 25);
  EXPECT_EQ(rig.Run.Mode(), MachineMode::Idle);
  rig.Send("VR(48)=20");
  rig.Run.Advance(100);
  EXPECT_EQ(rig.X(), -10);
}

TEST(ManualActions, TheStopOfAJogStopsNothingElse) {
  RunRig rig;
  rig.Send("VR(22)=300");
  rig.Send("VR(48)=15");
  rig.Send("VR(48)=0");
  EXPECT_EQ(rig.Vr(Vr::Command), 15);
  rig.Run.Advance(10);
  EXPECT_EQ(rig.X(), 300);
  rig.Send("VR(48)=0");
  EXPECT_EQ(rig.Vr(Vr::Command), 0);
  EXPECT_EQ(rig.Count(EventKind::ActionRefused), 0);
}

TEST(ManualActions, WordsThatMeanNothingAreRefused) {
  for (const char* word : {"14", "16", "9", "23", "-1", "1000000000", "10.5"}) {
    RunRig rig;
    EXPECT_EQ(rig.Send(std::string("VR(48)=") + word), ">>");
    EXPECT_EQ(rig.Vr(Vr::Command), 0) << word;
    EXPECT_EQ(rig.Count(EventKind::ActionRefused), 1) << word;
    EXPECT_EQ(rig.Run.Mode(), MachineMode::Idle) << word;
  }
}

/// True when the word is refused in the state that `prepare` brings about, with nothing moved.
template <typename Prepare>
bool RefusedIn(int word, Prepare prepare) {
  RunRig rig;
  rig.Send("VR(22)=300");
  rig.Send("VR(86)=300");
  rig.Send("VR(88)=300");
  prepare(rig);
  rig.Events.clear();
  rig.Send(Word(word));
  const bool refused = rig.Count(EventKind::ActionRefused) == 1;
  EXPECT_EQ(refused, rig.Vr(Vr::Command) == 0) << word;
  EXPECT_EQ(refused, rig.Message(LogicBit::Refused)) << word;
  EXPECT_EQ(refused, rig.Count(EventKind::ActionStarted) == 0) << word;
  return refused;
}

TEST(ManualActions, WhileRunningEveryWordIsRefused) {
  for (const int word : AllWords) {
    EXPECT_TRUE(RefusedIn(word, [](RunRig& rig) {
      rig.Cut(100, 0, 600);
      rig.Run.CycleStart();
    })) << word;
  }
}

TEST(ManualActions, AtAProgramStopTooForTheCycleStandsOpen) {
  for (const int word : AllWords) {
    EXPECT_TRUE(RefusedIn(word, [](RunRig& rig) {
      rig.Point(-1);
      rig.Run.CycleStart();
    })) << word;
  }
}

TEST(ManualActions, InFeedHoldEveryWordIsRefused) {
  for (const int word : AllWords) {
    EXPECT_TRUE(RefusedIn(word, [](RunRig& rig) { rig.Run.FeedHold(); })) << word;
  }
}

TEST(ManualActions, InErrorOnlyMovesAndLoadPositionsAreRefused) {
  for (const int word : AllWords) {
    const bool move = word >= 15 && word <= 18;
    EXPECT_EQ(RefusedIn(word, [](RunRig& rig) { rig.Run.RaiseError(3); }), move) << word;
  }
}

TEST(ManualActions, OneActionAtATime) {
  for (const int word : {10, 15, 17, 18}) {
    RunRig rig;
    rig.Send("VR(12)=100");
    rig.Send("VR(48)=19");
    rig.Send(Word(word));
    EXPECT_EQ(rig.Vr(Vr::Command), 19) << "the action in hand goes on";
    EXPECT_EQ(rig.Count(EventKind::ActionRefused), 1) << word;
  }
}

TEST(ManualActions, ACycleStartDuringAnActionIsRefused) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Send("VR(48)=10");
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Running());
  EXPECT_EQ(rig.Count(EventKind::StartRefused), 1);
  rig.Run.Advance(10);
  rig.Run.CycleStart();
  EXPECT_TRUE(rig.Running());
}

TEST(ManualActions, HoldAndStopEndAnActionWhereItStands) {
  for (const bool hold : {true, false}) {
    RunRig rig;
    rig.Send("VR(22)=300");
    rig.Send("VR(48)=15");
    rig.Run.Advance(0.1);
    hold ? rig.Run.FeedHold() : rig.Run.Stop();
    rig.Run.Advance(10);
    EXPECT_NEAR(rig.X(), 50, 1e-9);
    EXPECT_EQ(rig.Vr(Vr::Command), 0);
    EXPECT_EQ(rig.Bit(StatusBit::Feedhold), hold);
  }
}

TEST(Rollers, GoOnWithThreeLinesAndOffWithOne) {
  RunRig rig;
  rig.Send("VR(9)=1");
  EXPECT_EQ(rig.Send("VR(19)=VR(19) OR 131072"), ">>");
  EXPECT_TRUE(rig.Bit(StatusBit::RollersOn));
  EXPECT_EQ(rig.Send("VR(17)=VR(17) OR 32"), ">>");
  EXPECT_EQ(rig.Send("OP(8,VR(9))"), ">>");
  EXPECT_EQ(rig.Memory.Output(8), 1);
  EXPECT_TRUE(rig.Bit(StatusBit::RollersOn));
  EXPECT_FALSE(rig.Bit(StatusBit::InError)) << "rollers bar no move";
  EXPECT_EQ(rig.Send("VR(17)=VR(17)-32"), ">>");
  EXPECT_EQ(rig.Vr(Vr::LogicMessages), 0);
  EXPECT_TRUE(rig.Bit(StatusBit::RollersOn)) << "they are on their way down";
  rig.Run.Advance(0.4);
  EXPECT_TRUE(rig.Bit(StatusBit::RollersOn));
  rig.Run.Advance(0.2);
  EXPECT_FALSE(rig.Bit(StatusBit::RollersOn)) << "the controller clears the bit itself";
  EXPECT_EQ(rig.Memory.Output(8), 0);
  EXPECT_EQ(rig.Count(EventKind::RollersOn), 1);
  EXPECT_EQ(rig.Count(EventKind::RollersOff), 1);
}

TEST(FrontEnd, ReportsThatItIsUp) {
  RunRig rig;
  rig.Send("VR(18)=VR(18) OR 1");
  EXPECT_EQ(rig.Count(EventKind::FrontEndUp), 1);
}

}  // namespace
}  // namespace torvane::simulator

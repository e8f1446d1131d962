// Keys in the middle of ticks, on a line that takes its time: nothing is lost and nothing swapped.
#include <rapidcheck/gtest.h>

#include "ConsoleFixture.h"
#include "simulator/ControllerMemory.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

/// The whole console on a line of 9,600 baud: a tick takes some 200 ms.
class KeysOnASlowLine : public ConsoleFixture {
 protected:
  KeysOnASlowLine() : ConsoleFixture(simulator::PortOptions{.Baud = 9600, .HeartbeatMs = 0}) {
    Start();
  }

  /// Presses the key of a skip switch after each of these pauses, ms, from the loop and so in the
  /// middle of whatever waits then, and looks at what came of it.
  void FlipAfter(const std::vector<int>& pauses) {
    bool skip = Down("StatusMenuForm", "SkipButton(1)");
    std::vector<std::string> wanted;
    int at = 0;
    for (const int pause : pauses) {
      at += pause;
      Loop.After(at, [this] { TypeText("1"); });
      skip = !skip;
      wanted.push_back(skip ? "VR(92)=1" : "VR(92)=0");
    }
    RunFor(at + 3000);
    RC_ASSERT(TakeCommands() == wanted);
    RC_ASSERT(Down("StatusMenuForm", "SkipButton(1)") == skip);
    RC_ASSERT(Controller->Memory().Variable(simulator::Vr::BlockSkip1) == (skip ? 1 : 0));
    RC_ASSERT(!Shows("WarningForm"));
    RC_ASSERT(!Files->FileExists("Service\\Errors.txt"));
  }
  /// Each reply went to the one who asked for it.
  void ExpectOwnReplies() {
    RC_ASSERT(System.State.RunningBlock == 77);
    RC_ASSERT(System.State.StatusWord == Controller->Memory().Word(simulator::Vr::Status));
    RC_ASSERT(System.State.FeedOverride ==
              static_cast<float>(Controller->Memory().Variable(simulator::Vr::FeedOverride)));
    RC_ASSERT(LabelText("XYPositionForm", "PositionText(1)") == "0.00");
  }
};

TEST_F(KeysOnASlowLine, SkipSwitchesAtAnyMomentReachTheControllerOnceAndInOrder) {
  TypeF(4);
  Type(Key::P);  // its read-out makes the tick longer by three queries
  Type(Key::C);
  Screens().Open("StatusMenuForm");
  SetVariable(simulator::Vr::RunningLine, 77);
  RunFor(1000);
  (void)TakeCommands();
  EXPECT_TRUE(rc::check([this] {
    FlipAfter(*rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 120)));
    ExpectOwnReplies();
  }));
}

TEST_F(KeysOnASlowLine, TheSilentQueryStaysSilentThoughAScreenAsksTheSameMeanwhile) {
  simulator::FaultSettings silence;
  silence.Rate(simulator::FaultKind::Silence) = 1;
  int asked = 0;
  Controller->OnLine([&](std::string_view line) {
    if (line != "? VR(81)" || ++asked > 1) return;
    Controller->SetFaults(silence);  // this very line is never answered
    Loop.After(100, [this] { Screens().Open("ViewProgForm"); });
    Loop.After(9000, [this] { Controller->SetFaults({}); });
  });
  bool warned = false;
  const auto watch = Loop.MakeTimer([&] {
    if (!Shows("WarningForm")) return;
    warned = true;
    Type(Key::C);
  });
  watch->Start(500);
  RunFor(30000);
  EXPECT_GE(asked, 2);
  EXPECT_FALSE(warned);
  EXPECT_TRUE(Shows("ViewProgForm"));
  EXPECT_TRUE(System.Link.ReportCommsErrors);
}

TEST_F(KeysOnASlowLine, ATickInsideAButtonsExchangeWaitsAndComesRound) {
  TypeF(4);
  RunFor(500);
  (void)TakeCommands();
  TypeText("1");
  TypeText("2");
  EXPECT_EQ(TakeCommands(), (std::vector<std::string>{"VR(92)=1", "VR(93)=1"}));
  RunFor(600);
  EXPECT_GE(Times("? VR(19)"), 1);
  EXPECT_FALSE(Shows("WarningForm"));
}

TEST_F(KeysOnASlowLine, AScreenClosedWhileItsActivationStillReadsStaysClosed) {
  Loop.After(5, [this] { Type(Key::X); });
  TypeF(4);
  RunFor(300);
  EXPECT_FALSE(Shows("StatusMenuForm"));
  EXPECT_EQ(CurrentForm(), "");
  EXPECT_EQ(Front(), "FrontEnd");
}

TEST_F(KeysOnASlowLine, AScreenOpenedFromOneWhoseActivationStillReadsStaysInFront) {
  Loop.After(5, [this] { Type(Key::P); });
  TypeF(4);
  RunFor(300);
  EXPECT_EQ(CurrentForm(), "XYPositionForm");
  EXPECT_EQ(Front(), "XYPositionForm");
}

TEST_F(KeysOnASlowLine, ShutdownFromTheMiddleOfATickEndsInOrder) {
  ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "STAR"));
  Screens().Unload("SetupForm");
  Machine().CycleStart();
  RunFor(1000);
  for (const int moment : {7, 31, 63}) {
    SCOPED_TRACE(moment);
    Loop.After(moment, [this] {
      ThenType(Key::C);
      TypeF(12);
    });
    RunFor(700);
    EXPECT_FALSE(Shows("ShutdownForm"));
  }
  Loop.After(17, [this] {
    ThenType(Key::O);
    TypeF(12);
  });
  RunFor(2000);
  EXPECT_EQ(Session.Events, (std::vector<std::string>{"end session", "end process"}));
  EXPECT_FALSE(Port->IsOpen());
}

TEST_F(KeysOnASlowLine, ASelectionPressedInTheMiddleOfATickSelects) {
  TypeF(1);
  ThenTypeText("STAR");
  ThenType(Key::Enter);
  Type(Key::P);
  Loop.After(23, [this] { Type(Key::S); });
  RunFor(6000);
  EXPECT_TRUE(System.Active().Selected);
  EXPECT_EQ(CurrentForm(), "SetupForm");
  EXPECT_FALSE(Shows("WarningForm"));
}

}  // namespace
}  // namespace torvane::tests

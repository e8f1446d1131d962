// A session of the console is recorded in Polling.txt and replayed: the same keys at the same
// moments meet the same answers, line by line, without the machine.
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "ConsoleFixture.h"
#include "simulator/ReplayController.h"
#include "simulator/ReplayTrace.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;
using toolkit::Key;

constexpr const char* TraceName = "Service/Polling.txt";

/// An operator's work at a console. Where the machine is recorded, the hand at the machine is there
/// too; where it is replayed, the trace knows what came of it.
struct AtWork {
  ConsoleSession& Console;
  bool Recording = true;

  void AtMachine(const std::function<void(simulator::SimulatedController&)>& act) const {
    if (Recording) act(*Console.Controller);
  }
  void CycleStart() const {
    AtMachine([](auto& controller) { controller.TheMachine().CycleStart(); });
  }
  void RunWhile(bool running, int tenths) const {
    for (int i = 0; i < tenths && Console.System.State.MachineRunning == running; ++i) {
      Console.RunFor(100);
    }
  }
  void SelectByKeys(const std::string& program) const {
    Console.TypeF(1);
    Console.ThenTypeText(program);
    Console.ThenType(Key::Enter);
    Console.Type(Key::P);
    Console.Type(Key::S);
    Console.Type(Key::X);
    Console.RunFor(200);
  }
  void Run() const {
    CycleStart();
    Console.RunFor(200);
    RunWhile(true, 3000);
    Console.RunFor(200);
  }
  void Jog(Key arrow) const {
    Console.TypeF(3);
    Console.Type(Key::J);
    Console.RunFor(100);
    Console.Loop.Start([this, arrow] { Console.Desk->PressKey(toolkit::KeyStroke(arrow)); });
    Console.RunFor(700);
    Console.Loop.Start([this, arrow] { Console.Desk->ReleaseKey(toolkit::KeyStroke(arrow)); });
    Console.RunFor(300);
    Console.Type(Key::X);
    Console.Type(Key::X);
    Console.RunFor(100);
  }
  /// Stopped half-way, and on from a block of the list.
  void RunWithARestart() const {
    CycleStart();
    Console.RunFor(4000);
    AtMachine([](auto& controller) { controller.TheMachine().Stop(); });
    RunWhile(true, 100);
    Console.RunFor(200);
    Console.TypeF(1);
    for (int i = 0; i < 9; ++i) Console.ThenType(Key::Down);
    Console.ThenType(Key::S);
    Console.Type(Key::B);
    Console.RunFor(300);
    EXPECT_TRUE(Console.Shows("RestartForm"));
    CycleStart();
    for (int i = 0; i < 100 && Console.Shows("RestartForm"); ++i) Console.RunFor(100);
    RunWhile(true, 3000);
    Console.RunFor(200);
  }
  void ShutDown() const {
    Console.ThenType(Key::O);
    Console.TypeF(12);
    EXPECT_EQ(Console.Session.Events, (std::vector<std::string>{"end session", "end process"}));
  }
};

using Work = std::function<void(const AtWork&)>;

void TurnTraceOn(const Plant& plant, const std::string& timeOut = "10000") {
  plant.Directory.Put("Control.cnc", "Trio Link : TRUE\r\nPoll Log : TRUE\r\n");
  plant.Directory.Put("Trio.cfg",
                      "Poll Period (ms) : 50\r\nPoll Resume (ms) : 50\r\nReply Time Out (ms) : " +
                          timeOut + "\r\n");
}

/// The trace of so many consoles, one after the other on one machine.
std::string Record(const std::vector<Work>& sessions, simulator::PortOptions wire = {}) {
  const auto plant = std::make_shared<Plant>();
  TurnTraceOn(*plant);
  for (const Work& work : sessions) {
    ConsoleSession console(plant, wire);
    console.Start();
    work({console, true});
  }
  return plant->Directory.Get(TraceName);
}

class Replayed {
 public:
  explicit Replayed(const std::string& text)
      : Trace({{"Polling.txt", text}}),
        Answers(std::make_shared<simulator::ReplayController>(Trace)) {
    Answers->OnDifference([this](const simulator::ReplayDifference& difference) {
      Differences.push_back(Trace.PlaceText(difference.Place) + ": " + difference.Recorded + " / " +
                            difference.Came);
    });
    plant_->Answers = Answers.get();
    TurnTraceOn(*plant_);
  }
  /// The session of that number, from 0.
  simulator::ReplayCount Play(std::size_t session, const Work& work,
                              simulator::PortOptions wire = {}) {
    Answers->Begin(session);
    {
      ConsoleSession console(plant_, wire);
      console.Start();
      work({console, false});
    }
    Answers->EndSession();
    return Answers->Count();
  }
  [[nodiscard]] std::string Recorded() const { return plant_->Directory.Get(TraceName); }

  simulator::ReplayTrace Trace;
  std::shared_ptr<simulator::ReplayController> Answers;
  std::vector<std::string> Differences;

 private:
  std::shared_ptr<Plant> plant_ = std::make_shared<Plant>();
};

void ExpectSame(const simulator::ReplayCount& count, const Replayed& replay) {
  EXPECT_TRUE(count.Good()) << count.Answered << " of " << count.Recorded << ", " << count.Different
                            << " different";
  if (!replay.Differences.empty()) ADD_FAILURE() << replay.Differences.front();
}

void AWholeSession(const AtWork& at) {
  at.SelectByKeys("star");
  at.Run();
  EXPECT_EQ(at.Console.System.Active().BatchCounters.SheetsCompleted, 1);
  at.Console.TypeF(11);
  at.Console.RunFor(300);
  at.SelectByKeys("gasket");
  at.Console.TypeF(10);
  at.Console.RunFor(300);
  EXPECT_EQ(at.Console.System.ActiveSlot, 1);
  at.RunWithARestart();
  at.Jog(Key::Right);
  at.Console.TypeF(2);
  at.Console.RunFor(1000);
  at.Console.Type(Key::X);
  at.ShutDown();
}

TEST(Replay, AWholeSessionWithRunsChangesJogAndRestartGoesAsRecorded) {
  const std::string text = Record({AWholeSession});
  Replayed replay(text);
  ASSERT_EQ(replay.Trace.Sessions().size(), 1U);
  EXPECT_GT(replay.Trace.Exchanges().size(), 2000U);
  EXPECT_TRUE(replay.Trace.Remarks().empty());
  ExpectSame(replay.Play(0, AWholeSession), replay);
  EXPECT_EQ(replay.Recorded(), text) << "the replayed session leaves the same trace";
}

TEST(Replay, TheSameOnALineThatTakesItsTime) {
  const simulator::PortOptions wire{.Baud = 38400};
  const std::string text = Record({AWholeSession}, wire);
  Replayed replay(text);
  ExpectSame(replay.Play(0, AWholeSession, wire), replay);
}

/// Three consoles: one ends in order, one is killed, one is left to itself for the afternoon.
TEST(Replay, ADayOfSeveralConsolesGoesAsRecorded) {
  const std::vector<Work> day = {
      AWholeSession,
      [](const AtWork& at) {
        at.SelectByKeys("gasket");
        at.CycleStart();
        at.Console.RunFor(5000);
        at.AtMachine([](auto& controller) { controller.TheMachine().Stop(); });
        at.Console.RunFor(500);
      },
      [](const AtWork& at) {
        at.SelectByKeys("star");
        at.Run();
        at.Console.RunFor(100'000);
        at.ShutDown();
      }};
  Replayed replay(Record(day));
  ASSERT_EQ(replay.Trace.Sessions().size(), day.size());
  EXPECT_GT(replay.Trace.Exchanges().size(), 20'000U);
  for (std::size_t i = 0; i < day.size(); ++i) ExpectSame(replay.Play(i, day[i]), replay);
}

TEST(Replay, ALineThatWasDeadIsDeadAgain) {
  const Work work = [](const AtWork& at) {
    at.Console.RunFor(500);
    at.AtMachine([](auto& controller) { controller.SetSilent(true); });
    at.Console.RunFor(25'000);
    EXPECT_THAT(at.Console.Warning(), HasSubstr("GetTrio Timeout"));
    at.Console.Type(Key::C);
    at.Console.RunFor(100);
    at.Console.Type(Key::C);
    at.AtMachine([](auto& controller) { controller.SetSilent(false); });
    at.Console.RunFor(60'000);
  };
  Replayed replay(Record({work}));
  const auto count = replay.Play(0, work);
  EXPECT_EQ(count.Different, 0U) << (replay.Differences.empty() ? "" : replay.Differences.front());
}

TEST(Replay, AFaultOfTheControllerComesAgain) {
  const Work work = [](const AtWork& at) {
    at.AtMachine([](auto& controller) { controller.RefuseNext("? VR(25)"); });
    at.Console.RunFor(500);
    EXPECT_THAT(at.Console.Warning(), HasSubstr("GetTrio Error"));
    at.Console.Type(Key::C);
    at.Console.RunFor(500);
    at.ShutDown();
  };
  Replayed replay(Record({work}));
  ExpectSame(replay.Play(0, work), replay);
}

TEST(Replay, ALineOfAnotherProgramIsNamed) {
  const Work change = [](const AtWork& at) {
    at.Console.TypeF(11);
    at.Console.RunFor(300);
    at.ShutDown();
  };
  std::string text = Record({change});
  const auto changed = text.find("VR(91)=2");
  ASSERT_NE(changed, std::string::npos);
  const auto line = std::count(text.begin(), text.begin() + static_cast<long>(changed), '\n');
  text.replace(changed, 8, "VR(91)=1");
  Replayed replay(text);
  EXPECT_FALSE(replay.Play(0, change).Good());
  ASSERT_FALSE(replay.Differences.empty());
  EXPECT_EQ(replay.Differences.front(),
            "Polling.txt, line " + std::to_string(line) + ": VR(91)=1 / VR(91)=2");
}

TEST(Replay, AKeyAtAnotherMomentIsNamedAndTheConsoleWorksOn) {
  const Work early = [](const AtWork& at) {
    at.Console.RunFor(at.Recording ? 2000 : 1030);
    at.Console.TypeF(2);
    at.Console.RunFor(2000);
    EXPECT_FALSE(at.Console.Shows("WarningForm"));
    at.Console.Type(Key::X);
    at.ShutDown();
  };
  Replayed replay(Record({early}));
  const auto count = replay.Play(0, early);
  EXPECT_GT(count.Different, 0U);
  EXPECT_FALSE(replay.Differences.empty());
}

}  // namespace
}  // namespace torvane::tests

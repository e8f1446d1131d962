// The run journal of a whole console in front of the simulated machine.
#include <gmock/gmock.h>

#include "ConsoleFixture.h"
#include "supervision/JournalText.h"
#include "supervision/ProgramDigest.h"
#include "support/SheetPrograms.h"

namespace torvane::tests {
namespace {

using supervision::RunBegin;
using supervision::RunEnd;
using supervision::RunLine;
using toolkit::Key;

std::vector<RunLine> JournalOf(TempDirectory& directory) {
  std::vector<RunLine> runs;
  const std::string text = directory.Get("Service/Journal.csv");
  bool header = true;
  for (const std::string_view line : core::SplitLines(text)) {
    if (std::exchange(header, false)) continue;
    const auto run = supervision::ReadJournalLine(line);
    EXPECT_TRUE(run) << line;
    if (run) runs.push_back(*run);
  }
  return runs;
}

class JournalOfAConsole : public ConsoleFixture {
 protected:
  void SelectAndStart(const std::string& program = "STAR") {
    Start();
    Select(program);
    Machine().CycleStart();
    RunFor(300);
    ASSERT_TRUE(System.State.MachineRunning);
  }
  void RunToEnd() {
    for (int i = 0; i < 6000 && System.State.MachineRunning; ++i) RunFor(100);
    RunFor(200);
  }
  [[nodiscard]] std::vector<RunLine> Journal() { return JournalOf(Directory); }
};

TEST_F(JournalOfAConsole, ARunToItsEndIsCountedWithItsLengthAndTime) {
  SelectAndStart();
  RunToEnd();
  ASSERT_EQ(Journal().size(), 1U);
  const RunLine run = Journal()[0];
  EXPECT_EQ(run.Directory, "SHOP");
  EXPECT_EQ(run.Program, "STAR");
  EXPECT_EQ(run.Digest, supervision::Sha256(Directory.Get("Actvprg1.prg")));
  EXPECT_EQ(run.Ended, RunEnd::End);
  EXPECT_EQ(run.Begin, RunBegin::Start);
  EXPECT_EQ(run.Sheets, 1);
  EXPECT_EQ(run.StopCount, 0);
  EXPECT_NEAR(run.Seconds, Controller->Memory().Variable(52), 0.011);
  // The conversion counts the programmed path, the journal the one beside it that is cut.
  EXPECT_NEAR(run.Length, System.Active().Totals.ProfileLength,
              0.02 * System.Active().Totals.ProfileLength);
  EXPECT_FALSE(Files->FileExists("Service\\Errors.txt"));
}

TEST_F(JournalOfAConsole, ItAsksTheControllerNothing) {
  SelectAndStart();
  RunFor(1000);
  Lines.clear();
  RunFor(2000);
  std::vector<std::string> kinds;
  for (const std::string& line : Lines) {
    if (line.starts_with("? ")) kinds.push_back(line);
  }
  ASSERT_GE(kinds.size(), 16U);
  const auto first = std::find(kinds.begin(), kinds.end(), "? VR(19)");
  EXPECT_EQ(std::vector<std::string>(first, first + 8),
            (std::vector<std::string>{"? VR(19)", "? VR(52)", "? MPOS AXIS(0)", "? MPOS AXIS(1)",
                                      "? MPOS AXIS(4)", "? VR(98)", "? VR(25)", "? VR(81)"}));
}

TEST_F(JournalOfAConsole, AHoldAStopAndARestartAreTold) {
  SelectAndStart();
  RunFor(1500);
  Machine().FeedHold();
  RunFor(500);
  Machine().Release();
  RunFor(1000);
  Machine().Stop();
  RunFor(300);
  ASSERT_EQ(Journal().size(), 1U);
  const RunLine stopped = Journal()[0];
  EXPECT_EQ(stopped.Ended, RunEnd::Stop);
  ASSERT_EQ(stopped.Stops.size(), 2U);
  EXPECT_EQ(stopped.Stops[0].Cause, "feed hold");
  EXPECT_EQ(stopped.Stops[1].Cause, "stop");
  EXPECT_NEAR(stopped.Stops[1].Place.X, System.State.XPosition, 0.011);
  EXPECT_GT(stopped.Length, 0);

  TypeF(1);
  for (int i = 1; i < stopped.Last.Block; ++i) ThenType(Key::Down);
  ThenType(Key::S);
  Type(Key::B);
  RunFor(300);
  ASSERT_TRUE(Shows("RestartForm"));
  Machine().CycleStart();
  for (int i = 0; i < 100 && Shows("RestartForm"); ++i) RunFor(100);
  RunToEnd();
  ASSERT_EQ(Journal().size(), 2U);
  const RunLine restart = Journal()[1];
  EXPECT_EQ(restart.Begin, RunBegin::Restart);
  EXPECT_EQ(restart.FromBlock, stopped.Last.Block);
  EXPECT_EQ(restart.Ended, RunEnd::End);
  EXPECT_EQ(restart.Digest, stopped.Digest);
  const double whole = System.Active().Totals.ProfileLength;
  // The block that was stopped is cut once more from its begin.
  EXPECT_GT(stopped.Length + restart.Length, 0.95 * whole);
  EXPECT_LT(restart.Length, whole);
}

TEST_F(JournalOfAConsole, AnErrorIsNamedOnceItsMessageIsRead) {
  SelectAndStart();
  RunFor(500);
  Machine().RaiseError(1);
  RunFor(300);
  TypeF(9);
  RunFor(300);
  const std::string text(core::Trim(System.Messages.IoMessages[1]));
  ASSERT_FALSE(text.empty());
  Machine().ClearMessages();
  Machine().Stop();
  RunFor(300);
  ASSERT_EQ(Journal().size(), 1U);
  EXPECT_EQ(Journal()[0].Stops.at(0).Cause, "error: " + text);
}

TEST_F(JournalOfAConsole, TwoSlotsHaveTheirOwnLines) {
  SelectAndStart();
  RunToEnd();
  TypeF(11);
  RunFor(300);
  Select("GASKET");
  Machine().CycleStart();
  RunFor(300);
  Machine().Stop();
  RunFor(300);
  ASSERT_EQ(Journal().size(), 2U);
  EXPECT_EQ(Journal()[1].Slot, 2);
  EXPECT_EQ(Journal()[1].Program, "GASKET");
  EXPECT_EQ(Journal()[1].Ended, RunEnd::Stop);
}

TEST_F(JournalOfAConsole, AShutdownInARunIsTold) {
  SelectAndStart();
  RunFor(1000);
  End->ShutdownSystem(false);
  ASSERT_EQ(Journal().size(), 1U);
  EXPECT_EQ(Journal()[0].Ended, RunEnd::ConsoleEnded);
}

TEST_F(JournalOfAConsole, AShutdownOverADeadLineIsALostLink) {
  SelectAndStart();
  RunFor(1000);
  simulator::FaultSettings faults;
  faults.Rate(simulator::FaultKind::Silence) = 1;
  Controller->SetFaults(faults);
  RunFor(5000);
  EXPECT_TRUE(System.State.MachineRunning) << "no tick has told of it yet";
  End->ShutdownSystem(false);
  ASSERT_EQ(Journal().size(), 1U);
  EXPECT_EQ(Journal()[0].Ended, RunEnd::LinkLost);
}

TEST_F(JournalOfAConsole, AShutdownWhileIdleTellsNothing) {
  Start();
  RunFor(500);
  End->ShutdownSystem(false);
  EXPECT_FALSE(Files->FileExists("Service\\Journal.csv"));
  EXPECT_FALSE(Files->FileExists("Service\\Journal.run"));
}

TEST_F(JournalOfAConsole, ADiskThatCannotBeWrittenDisturbsNoRun) {
  SelectAndStart();
  RunFor(500);
  // A directory in the place of the files: nothing can be written there.
  Files->DeleteFile("Service\\Journal.run");
  Files->MakeDirectory("Service\\Journal.run");
  Files->MakeDirectory("Service\\Journal.csv");
  RunToEnd();
  EXPECT_FALSE(Shows("WarningForm"));
  const std::string errors = Directory.Get("Service/Errors.txt");
  EXPECT_NE(errors.find("Journal."), std::string::npos) << errors;
  EXPECT_EQ(errors.find("*** ERROR ***"), errors.rfind("*** ERROR ***")) << "noted once";
}

/// The row that the list of blocks marks, from 1; 0 none. The list is left again.
int MarkedRow(ConsoleSession& session) {
  int marked = 0;
  session.TypeF(1);
  session.Then([&] {
    auto* list = session.Control<toolkit::ListBox>("BlockStartForm", "BlockList");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->Current(), 0) << "marked, never selected";
    const auto& details = list->Details();
    const auto found = std::find(details.begin(), details.end(), "RAN LAST");
    if (found != details.end()) marked = static_cast<int>(found - details.begin()) + 1;
  });
  session.ThenType(Key::X);
  session.Type(Key::B);
  session.RunFor(200);
  return marked;
}

/// The visual restart marks the place with a cross, and takes it away when it is left.
void ExpectCross(ConsoleSession& session, const supervision::RunPlace& place) {
  const auto cross = [&] {
    return session.Main().PlotBox(1).Canvas().GetOverlay(platform::Overlay::EntryLine1);
  };
  EXPECT_FALSE(cross().Visible);
  session.TypeF(1);
  session.Type(Key::V);
  session.RunFor(50);
  ASSERT_EQ(session.System.Console.PlotKeyMode, 5);
  EXPECT_TRUE(cross().Visible);
  EXPECT_NEAR((cross().From.X + cross().To.X) / 2, place.X, 0.01);
  EXPECT_NEAR((cross().From.Y + cross().To.Y) / 2, place.Y, 0.01);
  session.Type(Key::C);
  session.RunFor(50);
  EXPECT_FALSE(cross().Visible);
}

TEST(JournalOfConsoles, AfterAControllerLostItsPowerInARunTheCrossIsWhereTheHeadWas) {
  const auto plant = std::make_shared<Plant>();
  ConsoleSession session(plant);
  session.Start();
  session.Select("STAR");
  session.Machine().CycleStart();
  session.RunFor(4000);
  const core::Vector2 head = {session.System.State.XPosition, session.System.State.YPosition};
  ASSERT_GT(std::hypot(head.X, head.Y), 50);
  plant->Controller->PowerCycle();
  session.RunFor(500);
  ASSERT_FALSE(session.System.State.MachineRunning);
  const auto runs = JournalOf(plant->Directory);
  ASSERT_EQ(runs.size(), 1U);
  EXPECT_NEAR(runs[0].Last.X, head.X, 50);
  EXPECT_NEAR(runs[0].Last.Y, head.Y, 50);
  ExpectCross(session, runs[0].Last);
}

TEST(JournalOfConsoles, AfterAKillTheNextStartTellsItAndTheListMarksThePlace) {
  const auto plant = std::make_shared<Plant>();
  int block = 0;
  {
    ConsoleSession first(plant);
    first.Start();
    first.Select("STAR");
    first.Machine().CycleStart();
    first.RunFor(4000);
    ASSERT_TRUE(first.System.State.MachineRunning);
  }
  EXPECT_EQ(plant->Directory.Get("Service/Journal.csv"), "(missing)");
  plant->Controller->PowerCycle();
  {
    ConsoleSession second(plant);
    second.Start();
    const auto runs = JournalOf(plant->Directory);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].Ended, RunEnd::ConsoleEnded);
    block = runs[0].Last.Block;
    EXPECT_GT(block, 1);
    EXPECT_EQ(second.System.State.RunningBlock, 0) << "the controller knows nothing";
    EXPECT_EQ(MarkedRow(second), block);
    ExpectCross(second, runs[0].Last);
    // Another program in the slot has another text.
    second.Select("GASKET");
    EXPECT_EQ(MarkedRow(second), 0);
    second.Select("STAR");
    EXPECT_EQ(MarkedRow(second), block);
    // Once it has come to its end there is nothing to go on with.
    second.Machine().CycleStart();
    second.RunFor(300);
    for (int i = 0; i < 6000 && second.System.State.MachineRunning; ++i) second.RunFor(100);
    second.RunFor(200);
    plant->Controller->PowerCycle();
    second.RunFor(200);
    EXPECT_EQ(MarkedRow(second), 0);
  }
  EXPECT_EQ(JournalOf(plant->Directory).size(), 2U);
}

}  // namespace
}  // namespace torvane::tests

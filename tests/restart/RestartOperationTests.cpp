// RestartForm without its window: what goes to the controller, and when.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "restart/RestartBench.h"

namespace torvane::restart {

using namespace tests;
namespace {

using testing::ElementsAre;
using Phase = RestartOperation::Phase;

constexpr int Ready = core::StatusBit::RestartReady;
constexpr int Running = core::StatusBit::Running;

constexpr const char* Refusal =
    "warning 1 1 \nCan Not Restart\n\nWhile Machine Is Running or In Error !";

struct Waiting : testing::Test, RestartBench {
  /// Status words of the ticks to come; the last one stays.
  std::vector<int> Words;
  std::size_t Tick = 0;
  int CancelAtTick = -1;

  Waiting() {
    Load(1, {"N5 G00 X10 Y20", "N10 G01 X30", "N123 G42 M04", "G00 X100 Y100"});
    EXPECT_TRUE(Files.FileExists("C:\\Actvprg1.cnv"));
    System.TableSent = 9;
    OnLine = [this](const std::string& line) {
      if (line != "? VR(19)") return;
      if (static_cast<int>(Tick) == CancelAtTick) {
        Loop.Post([this] { Operation.Cancel(); });
      }
      if (!Words.empty()) {
        Controller.Values["VR(19)"] = std::to_string(Words[std::min(Tick, Words.size() - 1)]);
      }
      ++Tick;
    };
  }

  void Gathered(int row) {
    static_cast<void>(Blocks.Begin());
    ASSERT_TRUE(Blocks.Select(row));
    ASSERT_TRUE(Blocks.Unload());
    Steps.clear();
  }
};

TEST_F(Waiting, ABlockRestartFromFormToStart) {
  Gathered(2);
  Words = {0, Ready, Ready, Running};
  Operation.StartRestart();
  EXPECT_THAT(Happened(), ElementsAre("lock", "show", "> TABLE (9,-999)", "> VR(91)=3", "green",
                                      "black", "> VR(91)=1", "> B1.00123R", "hide", "unlock"));
  EXPECT_EQ(LeftText(),
            "M100\r\nG00 X30 Y20 G40\r\n"
            " P101=-999 P102=-999 P103=-999 P104=-999 P105=-999 P106=-999 P107=-999 P108=-999 "
            "P109=-999 P110=-999\r\nTABLE (9,-999)\r\n");
  EXPECT_EQ(Screen.Labels.PositnLabel[1], "X30.00");
  EXPECT_EQ(Operation.CurrentPhase(), Phase::Closed);
}

TEST_F(Waiting, TheStartLineOfABlockWithoutANumberHasNothingBetween) {
  Gathered(3);
  Words = {Ready, Running};
  Operation.StartRestart();
  EXPECT_THAT(Happened(), testing::IsSupersetOf({"> VR(91)=1", "> B1R"}));
}

TEST_F(Waiting, ALampThatBlinksWithoutARunGoesRoundAgain) {
  Gathered(2);
  Words = {0, Ready, 0, 0, Ready, 0, Ready | Running, Running};
  Operation.StartRestart();
  EXPECT_THAT(Happened(), ElementsAre("lock", "show", "> TABLE (9,-999)", "> VR(91)=3", "green",
                                      "black", "green", "black", "green", "black", "> VR(91)=1",
                                      "> B1.00123R", "hide", "unlock"));
}

TEST_F(Waiting, CancelSendsTheSlotItself) {
  for (const int tick : {0, 3, 6}) {
    Gathered(2);
    Tick = 0;
    Words = {0, 0, 0, Ready, Ready, Ready, Ready};
    CancelAtTick = tick;
    Operation.StartRestart();
    Loop.RunFor(1000);
    const Lines steps = Happened();
    EXPECT_THAT(steps, testing::Contains("> VR(91)=1").Times(1)) << tick;
    EXPECT_THAT(steps, testing::Not(testing::Contains("> B1.00123R"))) << tick;
    EXPECT_THAT(steps, testing::Contains("hide").Times(1)) << tick;
    EXPECT_FALSE(Files.FileExists("C:\\Gather.rep"));
  }
}

TEST_F(Waiting, ACancelledRestartDoneAgainIsTheSame) {
  std::vector<std::string> files;
  std::vector<Lines> sent;
  for (const int cancelAt : {1, -1}) {
    Gathered(2);
    Tick = 0;
    CancelAtTick = cancelAt;
    Words = {0, Ready, Running};
    Operation.StartRestart();
    Loop.RunFor(1000);
    files.push_back(LeftText());
    Lines steps = Happened();
    steps.resize(4);
    sent.push_back(steps);
  }
  EXPECT_EQ(files[0], files[1]);
  EXPECT_EQ(sent[0], sent[1]);
}

TEST_F(Waiting, ACancelWhileTheLinesStillGoOutNeverPutsTheRestartTableInForce) {
  Gathered(2);
  const auto before = OnLine;
  OnLine = [&, before](const std::string& line) {
    if (line.starts_with("TABLE")) Loop.Start([this] { Operation.Cancel(); });
    before(line);
  };
  Operation.StartRestart();
  Loop.RunFor(1000);
  const Lines steps = Happened();
  EXPECT_THAT(steps, testing::Contains("> VR(91)=1"));
  EXPECT_THAT(steps, testing::Not(testing::Contains("> VR(91)=3")));
}

TEST_F(Waiting, ABusyMachineIsRefusedAndNothingIsWrittenOrSent) {
  for (const int bit : {core::StatusBit::Running, core::StatusBit::Cycle}) {
    Gathered(2);
    System.State = {};
    System.State.MachineRunning = bit == core::StatusBit::Running;
    System.State.MachineCycleBit = bit == core::StatusBit::Cycle;
    Operation.StartRestart();
    EXPECT_THAT(Happened(), ElementsAre("lock", Refusal, "hide", "unlock"));
    EXPECT_EQ(LeftText(), "(missing)");
    System.State = {};
  }
  Gathered(2);
  System.State.MachineInError = 4096;
  Operation.StartRestart();
  EXPECT_THAT(Happened(), ElementsAre("lock", Refusal, "hide", "unlock"));
}

TEST_F(Waiting, AFeedholdIsNoReasonToRefuse) {
  Gathered(2);
  System.State.MachineFeedhold = true;
  Words = {Ready, Running};
  Operation.StartRestart();
  EXPECT_THAT(Happened(), testing::Contains("> B1.00123R"));
}

TEST_F(Waiting, UnloadLeavesNothingOfTheRestart) {
  Gathered(2);
  Temp.Put("SplitCyc.drw", "x");
  Split.SplitRecord.Code = 120;
  Words = {Ready, Running};
  Operation.StartRestart();
  EXPECT_FALSE(Files.FileExists("C:\\Gather.rep"));
  EXPECT_FALSE(Files.FileExists("C:\\SplitCyc.drw"));
  EXPECT_EQ(Split.SplitRecord.Code, 0);
  GatherState cleared;
  ClearGatherState(cleared, System.Machine);
  EXPECT_EQ(States.RestartState, cleared);
  EXPECT_EQ(States.RestartNextState, cleared);
}

TEST_F(Waiting, WithTheLinkOffTheFileIsWrittenAndOnlyTheButtonEndsTheWait) {
  Gathered(2);
  System.Link.TrioLinkEnabled = false;
  Loop.After(60'000, [this] { Operation.Cancel(); });
  const auto from = Loop.NowMs();
  Operation.StartRestart();
  EXPECT_EQ(Loop.NowMs() - from, 60'000);
  EXPECT_THAT(Happened(), ElementsAre("lock", "show", "green", "hide", "unlock"));
  EXPECT_NE(LeftText(), "(missing)");
}

TEST_F(Waiting, TheTableCountIsNeitherResetNorRaised) {
  Gathered(2);
  Words = {Ready, Running};
  Operation.StartRestart();
  EXPECT_EQ(System.TableSent, 9);
}

TEST_F(Waiting, ARestartOfARestartLeavesNothingOfTheFirst) {
  Gathered(3);
  EXPECT_TRUE(States.RestartState.ProfilerOn);
  Words = {Ready, Running};
  Operation.StartRestart();
  Tick = 0;
  System.State = {};
  Gathered(1);
  EXPECT_FALSE(States.RestartState.ProfilerOn);
  Operation.StartRestart();
  EXPECT_THAT(Happened(), testing::Contains("> B1.0001R"));
  EXPECT_EQ(LeftText().find("M04"), std::string::npos);
}

// ---- the choice of a block ----

TEST_F(Waiting, TheListHoldsTheListingOfTheSlot) {
  EXPECT_THAT(Blocks.Begin(),
              ElementsAre("N5 G00 X10 Y20", "N10 G01 X30", "N123 G42 M04", "G00 X100 Y100"));
}

TEST_F(Waiting, TheLastRowHasNoNextState) {
  static_cast<void>(Blocks.Begin());
  ASSERT_TRUE(Blocks.Select(3));
  EXPECT_EQ(States.RestartNextState, States.RestartState);
  ASSERT_TRUE(Blocks.Select(1));
  EXPECT_EQ(States.RestartState.XPosition, 10);
  EXPECT_EQ(States.RestartNextState.XPosition, 30);
  EXPECT_EQ(States.RestartNextState.BlockNo, 123);
}

TEST_F(Waiting, ABusyMachineKeepsTheListOpen) {
  static_cast<void>(Blocks.Begin());
  System.State.MachineInError = 4096;
  EXPECT_FALSE(Blocks.Select(1));
  EXPECT_THAT(Happened(), ElementsAre("warning 1 1 \nCan Not Restart\nWhile Machine Is Running or "
                                      "In Error !"));
  EXPECT_FALSE(Blocks.Unload()) << "nothing follows";
}

TEST_F(Waiting, LeavingTheListLeadsToNoRestart) {
  static_cast<void>(Blocks.Begin());
  EXPECT_FALSE(Blocks.Unload());
}

TEST_F(Waiting, ABlockRestartForgetsAnEarlierSplit) {
  Split.RestartRecord.Code = Split.SplitRecord.Code = 120;
  static_cast<void>(Blocks.Begin());
  EXPECT_EQ(Split.RestartRecord.Code, 0);
  EXPECT_EQ(Split.SplitRecord.Code, 0);
}

TEST_F(Waiting, ASlotWithoutItsFilesCannotBeRestarted) {
  EXPECT_TRUE(RestartFilesExist(Files, System));
  for (const char* extension : {"cfg", "drw", "cnv", "tbl"}) {
    const std::string path = std::string("C:\\Actvprg1.") + extension;
    const std::string bytes = Files.ReadFile(path);
    Files.DeleteFile(path);
    EXPECT_FALSE(RestartFilesExist(Files, System)) << extension;
    Files.ReplaceFile(path, bytes);
  }
}

TEST_F(Waiting, TheLineThatRanLastIsMarked) {
  static_cast<void>(Blocks.Begin());
  EXPECT_EQ(Blocks.LastRunRow(), -1);
  System.State.RunningBlock = 1;
  EXPECT_EQ(Blocks.LastRunRow(), 0);
  System.State.RunningBlock = 3;
  EXPECT_EQ(Blocks.LastRunRow(), 3);
  System.State.RunningBlock = 300;
  EXPECT_EQ(Blocks.LastRunRow(), -1);
}

TEST_F(Waiting, SettingsMakeTwoLinesAndTheLineThatRanLastIsStillTheRightOne) {
  Load(1, {"G31 T2=3 1=4", "G00 X10 Y20", "G31 T2=3 1=5", "G01 X30", "G01 Y60"});
  static_cast<void>(Blocks.Begin());
  constexpr int Rows[] = {0, 0, 1, 2, 2, 3, 4};
  for (std::int16_t line = 1; line <= 7; ++line) {
    System.State.RunningBlock = line;
    EXPECT_EQ(Blocks.LastRunRow(), Rows[line - 1]) << "table line " << line;
  }
  Files.DeleteFile("C:\\Actvprg1.krw");
  EXPECT_EQ(Blocks.LastRunRow(), -1) << "the list comes up all the same";
}

TEST(BlockList, PagesMoveSelectionAndTopByTwenty) {
  const auto moved = [](int selected, int top, int count, bool up) {
    const ListPosition at = MovePage({selected, top}, count, up);
    return std::pair(at.Selected, at.Top);
  };
  EXPECT_EQ(moved(0, 0, 100, false), std::pair(20, 20));
  EXPECT_EQ(moved(90, 70, 100, false), std::pair(99, 79));
  EXPECT_EQ(moved(5, 3, 100, true), std::pair(0, 0));
  EXPECT_EQ(moved(3, 0, 10, false), std::pair(9, 0));
  EXPECT_EQ(moved(-1, 0, 0, false), std::pair(-1, 0));
}

}  // namespace
}  // namespace torvane::restart

// Restarts, runs that go on or not out of a hold, and the place that a restart is offered.
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "JournalPlant.h"

namespace torvane::supervision {

using namespace tests;
namespace {

TEST_F(RunJournalTest, ARestartIsALineOfItsOwnThatCountsFromItsPlace) {
  Idle();
  RunAt(2, 5, 80, 0);
  See([](Seen& at) { at.Running = false; }, 2);
  See([](Seen& at) {
    at.Running = true;
    at.Seconds = 0;
  });
  Journal->RunContinued({20, 60, 0});
  RunAt(2, 1, 60, 0);
  RunAt(4, 3, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  const RunLine run = Runs()[1];
  EXPECT_EQ(run.Begin, RunBegin::Restart);
  EXPECT_EQ(run.FromBlock, 20);
  EXPECT_NEAR(run.Length, 40 + 50 + 50 * 3.14159265, 0.06);
  EXPECT_EQ(run.Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ARestartWhoseLineComesALittleLateCountsFromItsPlace) {
  for (const int stopLine : {4, 5}) {
    Idle();
    RunAt(2, 1, 80, 0);
    RunAt(stopLine, 5, 100, 50);
    Idle();
    RunAt(stopLine, 0, 60, 0);
    Journal->RunContinued({20, 60, 0});
    RunAt(stopLine, 0.05, 60, 0);
    RunAt(2, 0.1, 60, 0);
    RunAt(4, 3, 100, 10);
    RunAt(EndLine, 9);
    Idle();
    EXPECT_EQ(Runs().back().Begin, RunBegin::Restart) << stopLine;
    EXPECT_NEAR(Runs().back().Length, 40 + 50 + 50 * 3.14159265, 0.06) << stopLine;
  }
}

TEST_F(RunJournalTest, ThePassAfterARestartIsAPassAllTheSame) {
  Idle();
  RunAt(2, 1, 80, 0);
  Idle();
  RunAt(5, 0.05, 100, 50);
  Journal->RunContinued({50, 100, 50});
  See([](Seen& /*at*/) {}, 10);
  RunAt(2, 9, 10, 0);
  RunAt(EndLine, 20);
  Idle();
  EXPECT_NEAR(Runs().back().Length, 150 + 2 * 50 * 3.14159265, 0.06);
}

TEST_F(RunJournalTest, ARestartThatIsToldBeforeItIsSeenIsNamedToo) {
  Idle();
  Journal->RunContinued({40, 100, 0});
  RunAt(4, 1, 100, 0);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(OnlyRun().Begin, RunBegin::Restart);
  Journal->RunContinued({40, 100, 0});
  Idle();
  RunAt(2, 1);
  Idle();
  EXPECT_EQ(Runs()[1].Begin, RunBegin::Start) << "that restart came to nothing";
}

TEST_F(RunJournalTest, AControllerThatLetsTheBitGoInAHoldStillHasOneRun) {
  Idle();
  RunAt(2, 5, 50, 0);
  See(
      [](Seen& at) {
        at.Running = false;
        at.Cycle = at.Hold = true;
      },
      30);
  RunAt(4, 8);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_EQ(Causes(OnlyRun()), "[feed hold]");
  EXPECT_EQ(OnlyRun().Ended, RunEnd::End);
}

TEST_F(RunJournalTest, AShorterProgramThatIsSelectedMeanwhileMakesNoEndOfAStop) {
  for (const bool blind : {false, true}) {
    Idle();
    RunAt(2, 1, 50, 0);
    RunAt(4, 5, 100, 20);
    See(
        [&](Seen& at) {
          at.Running = false;
          at.Hold = true;
          at.Blind = blind;
        },
        3);
    PutInSlot(1, "SHORT", 3);
    Idle();
    EXPECT_EQ(Runs().back().Ended, blind ? RunEnd::LinkLost : RunEnd::Stop) << blind;
    EXPECT_EQ(Runs().back().Program, "STAR") << blind;
    EXPECT_NEAR(Runs().back().Length, 120, 0.06) << blind;
    PutInSlot(1, "STAR", EndLine);
  }
  EXPECT_EQ(Runs().size(), 2U);
}

TEST_F(RunJournalTest, ThePlaceOfARunThatDidNotEndIsFoundByItsText) {
  Idle();
  RunAt(2, 5, 50, 0);
  Begin();
  Idle();
  ASSERT_TRUE(Journal->PlaceOfLastRun(1));
  EXPECT_EQ(Journal->PlaceOfLastRun(1)->Block, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(2)) << "another slot";
  Files.Put("C:\\Actvprg1.prg", Text + "1 ");
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "another text";
  Files.Put("C:\\Actvprg1.prg", Text + "1");
  RunAt(2, 5);
  RunAt(EndLine, 9);
  Idle();
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it has come to its end since";
}

TEST_F(RunJournalTest, ThePlaceOfARunIsKnownWhileTheHoldStaysOn) {
  const auto hold = [](Seen& at) {
    at.Running = false;
    at.Hold = true;
  };
  Idle();
  RunAt(4, 5, 100, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it runs";
  See([](Seen& at) { at.Hold = true; });
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it stands, and may go on";
  See(hold, 20);
  ASSERT_TRUE(Journal->PlaceOfLastRun(1));
  EXPECT_EQ(Journal->PlaceOfLastRun(1)->Block, 40);
  EXPECT_EQ(Journal->PlaceOfLastRun(1)->Y, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(2)) << "another slot";
  Files.Put("C:\\Actvprg1.prg", Text + "1 ");
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "another text";
  Files.Put("C:\\Actvprg1.prg", Text + "1");
  RunAt(EndLine, 9);
  See(hold, 20);
  EXPECT_FALSE(Journal->PlaceOfLastRun(1)) << "it has come to its end";
}

TEST_F(RunJournalTest, ARestartOutOfAHoldIsALineOfItsOwn) {
  struct Case {
    double Before;  ///< run time of the run that is held, s
    double First;   ///< as the tick reads it that sees the restart run
  };
  for (const Case& at : {Case{5, 0.05}, Case{5, 5}, Case{0.3, 0.05}}) {
    SCOPED_TRACE(at.First);
    Idle();
    RunAt(2, at.Before / 2, 50, 0);
    RunAt(4, at.Before, 100, 20);
    HoldWithoutTheBit();
    RunAt(4, at.First, 100, 10);
    Journal->RunContinued({40, 100, 10});
    RunAt(4, 0.1, 100, 10);
    RunAt(EndLine, 9);
    Idle();
    const auto runs = Runs();
    ASSERT_GE(runs.size(), 2U);
    const RunLine& held = runs[runs.size() - 2];
    EXPECT_EQ(held.Begin, RunBegin::Start);
    EXPECT_EQ(held.Ended, RunEnd::Stop);
    EXPECT_EQ(Causes(held), "[feed hold][stop]");
    EXPECT_EQ(held.Last.Y, 20);
    EXPECT_NEAR(held.Seconds, at.Before, 1e-6);
    EXPECT_NEAR(held.Length, 120, 0.06);
    const RunLine& restart = runs.back();
    EXPECT_EQ(restart.Begin, RunBegin::Restart);
    EXPECT_EQ(restart.FromBlock, 40);
    EXPECT_EQ(restart.Ended, RunEnd::End);
    EXPECT_EQ(restart.StopCount, 0);
    EXPECT_NE(TimeText(restart.Start), TimeText(held.Start));
    EXPECT_NEAR(restart.Seconds, 9, 1e-6);
    EXPECT_NEAR(restart.Length, 40 + 50 * 3.14159265, 0.06);
  }
  EXPECT_EQ(Runs().size(), 6U);
}

TEST_F(RunJournalTest, ARestartOutOfAHoldMayBeToldBeforeItIsSeen) {
  Idle();
  RunAt(4, 5, 100, 20);
  HoldWithoutTheBit();
  Journal->RunContinued({40, 100, 10});
  RunAt(4, 5, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Runs()[0].Ended, RunEnd::Stop);
  EXPECT_EQ(Runs()[1].Begin, RunBegin::Restart);
  EXPECT_EQ(Runs()[1].Ended, RunEnd::End);
}

TEST_F(RunJournalTest, ARestartThatIsHeldAtOnceKeepsThatStop) {
  Idle();
  RunAt(4, 5, 100, 20);
  HoldWithoutTheBit();
  See([](Seen& at) { at.Running = true; });
  Journal->RunContinued({40, 100, 10});
  RunAt(4, 0.1, 100, 10);
  RunAt(EndLine, 9);
  Idle();
  ASSERT_EQ(Runs().size(), 2U);
  EXPECT_EQ(Causes(Runs()[0]), "[feed hold][stop]");
  EXPECT_EQ(Causes(Runs()[1]), "[feed hold]");
}

TEST_F(RunJournalTest, AProgramThatIsStartedOutOfTheHoldOfAnotherIsALineOfItsOwn) {
  struct Case {
    const char* What;
    std::function<void()> Change;
    const char* Program;
  };
  const std::vector<Case> cases = {
      {"another slot", [this] { System.ActiveSlot = 2; }, "NEST"},
      {"another program", [this] { PutInSlot(1, "DISC", EndLine); }, "DISC"},
      {"another text", [this] { Files.Put("C:\\Actvprg1.prg", Text + "1 "); }, "STAR"}};
  for (const Case& at : cases) {
    SCOPED_TRACE(at.What);
    System.ActiveSlot = 1;
    PutInSlot(1, "STAR", EndLine);
    Idle();
    RunAt(2, 1, 50, 0);
    RunAt(4, 5, 100, 20);
    HoldWithoutTheBit();
    at.Change();
    RunAt(4, 5, 100, 20);  // neither figure is cleared yet
    RunAt(2, 0.1, 10, 0);
    RunAt(EndLine, 9);
    Idle();
    const auto runs = Runs();
    ASSERT_GE(runs.size(), 2U);
    EXPECT_EQ(runs[runs.size() - 2].Ended, RunEnd::Stop);
    EXPECT_EQ(runs[runs.size() - 2].Program, "STAR");
    EXPECT_EQ(runs[runs.size() - 2].StopCount, 2);
    EXPECT_EQ(runs.back().Program, at.Program);
    EXPECT_EQ(runs.back().StopCount, 0);
    EXPECT_EQ(runs.back().Ended, RunEnd::End);
    EXPECT_NEAR(runs.back().Seconds, 9, 1e-6);
  }
  EXPECT_EQ(Runs().size(), 6U);
}

}  // namespace
}  // namespace torvane::supervision

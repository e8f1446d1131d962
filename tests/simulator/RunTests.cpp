// Runs of a table: rows, window, stops, hold, skips, override, and the variables meanwhile.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "RunRig.h"

namespace torvane::simulator {

using namespace tests;
namespace {

TEST(Run, MovesAtTheRapidRateAndCutsAtTheFeed) {
  RunRig rig;
  rig.Move(100, 0);
  rig.Cut(100, 50, 600);  // 10 mm/s
  rig.End();
  rig.Select();
  rig.Run.CycleStart();
  EXPECT_TRUE(rig.Running());
  rig.Run.Advance(0.1);
  EXPECT_NEAR(rig.X(), 50, 1e-9);
  EXPECT_EQ(rig.Vr(Vr::FeedRate), 30000);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 1);
  rig.Run.Advance(0.1 + 2.5);
  EXPECT_NEAR(rig.Y(), 25, 1e-9);
  EXPECT_EQ(rig.Vr(Vr::FeedRate), 600);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 2);
  rig.Run.Advance(2.5);
  EXPECT_FALSE(rig.Running());
  EXPECT_EQ(rig.Y(), 50);
  EXPECT_NEAR(rig.Vr(Vr::RunTime), 5.2, 1e-6);
}

TEST(Run, AFeedOfZeroIsTheDefaultFeed) {
  RunRig rig;
  rig.Cut(10, 0, 0);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(0.1);
  EXPECT_EQ(rig.Vr(Vr::FeedRate), MachineOptions{}.DefaultFeed);
}

TEST(Run, ArcsGoRoundInTheirDirection) {
  for (const bool positive : {false, true}) {
    RunRig rig;
    rig.Move(10, 0);
    rig.Row(std::string(positive ? "3" : "2") + ",-20,0,-10,0,0,600,0");
    rig.End();
    rig.Run.CycleStart();
    rig.Run.Advance(10.0 / 500 + M_PI * 10 / 10 / 2);
    EXPECT_NEAR(rig.X(), 0, 1e-6);
    EXPECT_NEAR(rig.Y(), positive ? 10 : -10, 1e-6);
    rig.Run.Advance(10);
    EXPECT_NEAR(rig.X(), -10, 1e-9);
  }
}

TEST(Run, AnArcThatEndsWhereItStartsIsAFullCircle) {
  RunRig rig;
  rig.Row("3,0,0,-10,0,0,600,0");
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(M_PI);
  EXPECT_NEAR(rig.X(), -20, 1e-6);
  EXPECT_TRUE(rig.Running());
  rig.Run.Advance(M_PI + 0.001);
  EXPECT_FALSE(rig.Running());
  EXPECT_NEAR(rig.X(), 0, 1e-9);
}

TEST(Run, StatusBitsAndEventsOfACycle) {
  RunRig rig;
  rig.Cut(10, 0);
  rig.End();
  EXPECT_EQ(rig.Memory.Word(Vr::Status), 0);
  rig.Run.CycleStart();
  EXPECT_TRUE(rig.Running());
  EXPECT_TRUE(rig.Bit(StatusBit::Cycle));
  EXPECT_TRUE(rig.Bit(StatusBit::Beam));
  rig.Run.Advance(5);
  EXPECT_EQ(rig.Memory.Word(Vr::Status), 0);
  EXPECT_EQ(rig.Count(EventKind::CycleStarted), 1);
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
}

TEST(Run, TheBeamIsOnInCutsOnly) {
  RunRig rig;
  rig.Move(10, 0);
  rig.Cut(20, 0);
  rig.Point(1);
  rig.End();
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Bit(StatusBit::Beam));
  rig.Run.Advance(0.5);
  EXPECT_TRUE(rig.Bit(StatusBit::Beam));
  EXPECT_EQ(rig.Vr(Vr::ActualPower), 80);
  rig.Send("VR(69)=50");
  EXPECT_EQ(rig.Vr(Vr::ActualPower), 40);
  rig.Run.Advance(1);
  EXPECT_FALSE(rig.Bit(StatusBit::Beam)) << "in the dwell";
  EXPECT_EQ(rig.Vr(Vr::ActualPower), 0);
}

TEST(Run, ABeamNotAllowedStaysOff) {
  RunRig rig;
  rig.Cut(20, 0);
  rig.End();
  rig.Run.AllowBeam(false);
  rig.Run.CycleStart();
  rig.Run.Advance(0.5);
  EXPECT_TRUE(rig.Running());
  EXPECT_FALSE(rig.Bit(StatusBit::Beam));
  rig.Run.AllowBeam(true);
  EXPECT_TRUE(rig.Bit(StatusBit::Beam));
}

TEST(Run, TheOverrideComesBackAndRulesTheCut) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Run.CycleStart();
  rig.Send("VR(68)=50");
  EXPECT_EQ(rig.Vr(Vr::FeedOverride), 50);
  EXPECT_EQ(rig.Vr(Vr::FeedRate), 300);
  rig.Run.Advance(2);
  EXPECT_NEAR(rig.X(), 10, 1e-9);
  rig.Send("VR(68)=0");
  rig.Run.Advance(100);
  EXPECT_NEAR(rig.X(), 10, 1e-9);
  EXPECT_TRUE(rig.Running());
  rig.Send("VR(68)=200");
  rig.Run.Advance(1);
  EXPECT_NEAR(rig.X(), 30, 1e-9);
  rig.Send("VR(68)=500");
  EXPECT_EQ(rig.Vr(Vr::FeedOverride), 200);
  rig.Send("VR(68)=-5");
  EXPECT_EQ(rig.Vr(Vr::FeedOverride), 0);
}

TEST(Run, ADwellLastsItsSecondsWhateverTheOverride) {
  RunRig rig;
  rig.Point(2.5);
  rig.End();
  rig.Send("VR(68)=10");
  rig.Run.CycleStart();
  rig.Run.Advance(2.49);
  EXPECT_TRUE(rig.Running());
  rig.Run.Advance(0.02);
  EXPECT_FALSE(rig.Running());
}

TEST(Run, TheClampsTakeTheirTime) {
  for (const double action : {-2.0, -3.0}) {
    RunRig rig;
    rig.Point(action);
    rig.End();
    rig.Run.CycleStart();
    rig.Run.Advance(0.99);
    EXPECT_TRUE(rig.Running());
    rig.Run.Advance(0.02);
    EXPECT_FALSE(rig.Running());
    EXPECT_EQ(rig.X(), 0) << "the position of such a row is no target";
  }
}

TEST(Run, AStopWaitsForTheCycleStart) {
  RunRig rig;
  rig.Move(50, 0);
  rig.Point(-1);
  rig.Move(100, 0);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(1000);
  EXPECT_TRUE(rig.Run.AwaitingStart());
  EXPECT_TRUE(rig.Running()) << "the cycle stands open, so that its trace stays";
  EXPECT_TRUE(rig.Message(LogicBit::ProgramStop));
  EXPECT_TRUE(rig.Bit(StatusBit::InError));
  EXPECT_EQ(rig.X(), 50);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 2);
  EXPECT_NEAR(rig.Vr(Vr::RunTime), 0.1, 1e-9) << "the run time stands still";
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Message(LogicBit::ProgramStop));
  EXPECT_FALSE(rig.Bit(StatusBit::InError));
  rig.Run.Advance(1);
  EXPECT_EQ(rig.X(), 100);
  EXPECT_FALSE(rig.Running());
  EXPECT_EQ(rig.Count(EventKind::CycleStarted), 1);
}

TEST(Run, APointBehindAnArcIsNoTarget) {
  // Such a row carries the arc's increments; only what it says at the point counts.
  RunRig rig;
  rig.Move(100, 100);
  rig.Row("3,-20,0,-10,0,0,600,0");
  rig.Row("0,-20,0,0,0.5,600,0");
  rig.Row("9,-20,0,0,99,600,0");
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(100);
  EXPECT_FALSE(rig.Running());
  EXPECT_NEAR(rig.X(), 80, 1e-9);
  EXPECT_NEAR(rig.Y(), 100, 1e-9);
}

TEST(Run, FeedHoldStopsAndReleaseGoesOn) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  rig.Run.FeedHold();
  EXPECT_TRUE(rig.Bit(StatusBit::Feedhold));
  EXPECT_TRUE(rig.Running());
  EXPECT_FALSE(rig.Bit(StatusBit::Beam));
  EXPECT_EQ(rig.Vr(Vr::FeedRate), 0);
  rig.Run.Advance(100);
  EXPECT_NEAR(rig.X(), 10, 1e-9);
  EXPECT_NEAR(rig.Vr(Vr::RunTime), 1, 1e-9);
  rig.Run.Release();
  EXPECT_FALSE(rig.Bit(StatusBit::Feedhold));
  rig.Run.Advance(1);
  EXPECT_NEAR(rig.X(), 20, 1e-9);
}

TEST(Run, CycleStartAlsoEndsAHoldInACycle) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.FeedHold();
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Run.Held());
  EXPECT_EQ(rig.Count(EventKind::CycleStarted), 1);
}

TEST(Run, HeldInIdleTheCycleStartIsRefused) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Run.FeedHold();
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Running());
  EXPECT_TRUE(rig.Message(LogicBit::Refused));
  rig.Run.Release();
  rig.Run.CycleStart();
  EXPECT_TRUE(rig.Running());
}

TEST(Run, StopEndsTheCycleWhereItStands) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  rig.Run.Stop();
  EXPECT_EQ(rig.Memory.Word(Vr::Status), 0);
  rig.Run.Advance(10);
  EXPECT_NEAR(rig.X(), 10, 1e-9);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 1);
  EXPECT_EQ(rig.Vr(Vr::SheetsCompleted), 0);
}

TEST(Run, StopEndsAHoldToo) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.FeedHold();
  rig.Run.Stop();
  EXPECT_EQ(rig.Memory.Word(Vr::Status), 0);
}

TEST(Run, ItHoldsAtTheLastLineReceivedUntilMoreCome) {
  RunRig rig;
  rig.Move(10, 0);
  rig.Move(20, 0);
  rig.Run.CycleStart();
  rig.Run.Advance(100);
  EXPECT_TRUE(rig.Running());
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 2);
  EXPECT_EQ(rig.X(), 20);
  EXPECT_TRUE(rig.Message(LogicBit::WaitingForTable));
  EXPECT_FALSE(rig.Bit(StatusBit::InError));
  rig.Move(30, 0);
  EXPECT_FALSE(rig.Message(LogicBit::WaitingForTable));
  rig.Run.Advance(100);
  EXPECT_EQ(rig.X(), 30);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 3);
  rig.End();
  EXPECT_FALSE(rig.Running());
  EXPECT_EQ(rig.Count(EventKind::WaitingForTable), 2);
  EXPECT_EQ(rig.Count(EventKind::TableArrived), 2);
}

TEST(Run, AProgramOfNothingButItsEndIsDoneAtOnce) {
  RunRig rig;
  rig.End();
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Running());
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 1) << "the end row is the line reached";
}

TEST(Run, WithoutATableTheCycleStartIsRefused) {
  RunRig rig;
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Running());
  EXPECT_TRUE(rig.Message(LogicBit::TableIncomplete));
  EXPECT_EQ(rig.Count(EventKind::TableGone), 1);
  EXPECT_TRUE(rig.Bit(StatusBit::InError));
  rig.Run.Advance(5.1);
  EXPECT_EQ(rig.Memory.Word(Vr::LogicMessages), 0) << "a refusal's message goes by itself";
  EXPECT_EQ(rig.Memory.Word(Vr::Status), 0);
}

TEST(Run, AShortProgramRunsAgainFromWhatStandsInItsRing) {
  RunRig rig;
  rig.Move(10, 0);
  rig.Move(20, 0);
  rig.End();
  for (int sheet = 1; sheet <= 3; ++sheet) {
    rig.Run.CycleStart();
    EXPECT_EQ(rig.Vr(Vr::RunningLine), 1);
    rig.Run.Advance(10);
    EXPECT_FALSE(rig.Running());
    EXPECT_EQ(rig.Vr(Vr::SheetsCompleted), sheet);
  }
}

/// Feeds lines as a front end with a lead does.
void RunLong(RunRig& rig, int lines, int lead) {
  int sent = 0;
  const auto send = [&](int until) {
    for (; sent < std::min(until, lines); ++sent) {
      if (sent == lines - 1) {
        rig.End();
      } else {
        rig.Move(sent + 1, (sent + 1) % 7);
      }
    }
  };
  send(20);
  rig.Select();
  rig.Run.CycleStart();
  for (int tick = 0; tick < 100000 && rig.Running(); ++tick) {
    rig.Run.Advance(0.01);
    send(static_cast<int>(rig.Vr(Vr::RunningLine)) + lead);
  }
}

TEST(Run, AProgramOfManyLapsRunsToItsEnd) {
  for (const int lead : {1, 15, 25}) {
    RunRig rig;
    RunLong(rig, 500, lead);
    EXPECT_FALSE(rig.Running());
    EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
    EXPECT_EQ(rig.Count(EventKind::TableIncomplete), 0);
    EXPECT_EQ(rig.X(), 499);
    EXPECT_EQ(rig.Vr(Vr::RunningLine), 500);
  }
}

TEST(Run, AProgramThatWentOverItsBeginningMustBeSentAfresh) {
  RunRig rig;
  RunLong(rig, 100, 15);
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Running());
  EXPECT_TRUE(rig.Message(LogicBit::TableIncomplete));
  EXPECT_TRUE(rig.Message(LogicBit::Refused));
  EXPECT_EQ(EventText(rig.Events.back()),
            "cycle start refused: the table does not hold line 1, select the program again");
  rig.Begin();
  RunLong(rig, 100, 15);
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 2);
}

TEST(Run, TheLineReachedGoesBackToZeroWhereATableIsNamedWhileItStands) {
  for (const int slot : {1, 2}) {
    RunRig rig;
    RunLong(rig, 100, 15);
    EXPECT_EQ(rig.Vr(Vr::RunningLine), 100) << "it stays until a program is asked for again";
    rig.Run.Advance(60);
    EXPECT_EQ(rig.Vr(Vr::RunningLine), 100);
    rig.Select(slot);
    EXPECT_EQ(rig.Vr(Vr::RunningLine), 0);
  }
}

TEST(Run, TheLineReachedStaysWhereATableIsNamedDuringTheRun) {
  RunRig rig;
  for (int i = 1; i <= 8; ++i) rig.Move(100 * i, 0);
  rig.Select();
  rig.Run.CycleStart();
  rig.Run.Advance(0.7);
  const double line = rig.Vr(Vr::RunningLine);
  ASSERT_GT(line, 1);
  rig.Select(2);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), line);
  rig.Run.FeedHold();
  rig.Select(1);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), line) << "held in a cycle it does not stand";
}

TEST(Run, ARestartTableLeavesTheLineReachedAlone) {
  RunRig rig;
  RunLong(rig, 100, 15);
  rig.Select(3);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 100);
}

TEST(Run, ALineReachedThatHasNoProgramIsRefusedWithoutMovingIt) {
  RunRig rig;
  RunLong(rig, 100, 15);
  rig.Run.CycleStart();
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 100);
  EXPECT_EQ(rig.X(), 99);
}

TEST(Run, ALineLostOnItsWayHoldsTheRunBeforeIt) {
  RunRig rig;
  rig.Move(10, 0);
  rig.Move(20, 0);
  rig.Send("TABLE(521,0,40,0,0,0,0,0)");
  rig.Run.CycleStart();
  rig.Run.Advance(100);
  EXPECT_EQ(rig.X(), 20);
  EXPECT_TRUE(rig.Running());
  EXPECT_TRUE(rig.Message(LogicBit::TableIncomplete));
  EXPECT_TRUE(rig.Bit(StatusBit::InError));
  rig.Run.Stop();
  EXPECT_FALSE(rig.Message(LogicBit::TableIncomplete));
}

TEST(Run, ARowThatIsNoRowHoldsTheRun) {
  RunRig rig;
  rig.Move(10, 0);
  rig.Row("7,1,2,3,4,5,6");
  rig.Run.CycleStart();
  rig.Run.Advance(100);
  EXPECT_TRUE(rig.Running());
  EXPECT_TRUE(rig.Message(LogicBit::TableIncomplete));
}

TEST(Run, BlockSkipsFollowTheirSwitches) {
  for (int switches = 0; switches < 4; ++switches) {
    RunRig rig;
    rig.Move(10, 0, 0);
    rig.Move(0, 10, 1);
    rig.Move(10, 20, 2);
    rig.Point(-1);
    rig.End();
    rig.Send("VR(92)=" + std::to_string(switches & 1));
    rig.Send("VR(93)=" + std::to_string(switches >> 1));
    rig.Run.CycleStart();
    rig.Run.Advance(10);
    const bool skip1 = (switches & 1) != 0;
    const bool skip2 = (switches & 2) != 0;
    EXPECT_EQ(rig.Y(), !skip2 ? 20 : (!skip1 ? 10 : 0));
    EXPECT_EQ(rig.Vr(Vr::RunningLine), 4);
    rig.Run.CycleStart();
    EXPECT_FALSE(rig.Running());
  }
}

TEST(Run, SettingsGoToTheLaserAndTakeNoTime) {
  RunRig rig;
  rig.Row("4,0");
  rig.Row("5,70,1,90,-999,3,2");
  rig.Row("1.5,4,5,6,7,0");
  rig.End();
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Running());
  EXPECT_EQ(rig.Vr(70), 70);
  EXPECT_EQ(rig.Vr(71), 1);
  EXPECT_EQ(rig.Vr(72), 90);
  EXPECT_EQ(rig.Vr(73), 1000) << "a setting not given leaves what stands";
  EXPECT_EQ(rig.Vr(31), 1.5);
  EXPECT_EQ(rig.Vr(30), 7);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 4);
}

TEST(Run, TheSecondHalfOfSettingsIsNoEndOfTheTable) {
  RunRig rig;
  rig.Row("5,-999,-999,-999,-999,-999,-999");
  rig.Row("-999,-999,-999,-999,-999,0");
  rig.Move(10, 0);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  EXPECT_EQ(rig.X(), 10);
}

TEST(Run, SettingsWaitForTheirSecondHalf) {
  RunRig rig;
  rig.Row("5,70,1,90,4,3,2");
  rig.Run.CycleStart();
  EXPECT_TRUE(rig.Message(LogicBit::WaitingForTable));
  EXPECT_EQ(rig.Vr(70), 80);
  rig.Row("1,4,5,6,7,0");
  EXPECT_EQ(rig.Vr(70), 70);
}

TEST(Run, SheetsAreCountedUpToWhatIsRequired) {
  RunRig rig;
  rig.End();
  rig.Send("VR(82)=4");
  rig.Send("VR(83)=8");
  rig.Send("VR(84)=2");
  rig.Send("VR(85)=0");
  rig.Run.CycleStart();
  EXPECT_EQ(rig.Vr(Vr::SheetsCompleted), 1);
  EXPECT_FALSE(rig.Message(LogicBit::SheetCountReached));
  rig.Run.CycleStart();
  EXPECT_EQ(rig.Vr(Vr::SheetsCompleted), 2);
  EXPECT_TRUE(rig.Message(LogicBit::SheetCountReached));
  EXPECT_FALSE(rig.Bit(StatusBit::InError)) << "a full batch bars nothing";
}

TEST(Run, WithoutABatchNoCountIsEverReached) {
  RunRig rig;
  rig.End();
  rig.Send("VR(84)=1");
  rig.Run.CycleStart();
  EXPECT_EQ(rig.Vr(Vr::SheetsCompleted), 1);
  EXPECT_FALSE(rig.Message(LogicBit::SheetCountReached));
}

TEST(Run, TheOtherSlotRunsFromItsOwnRing) {
  RunRig rig;
  rig.Move(10, 0);
  rig.End();
  rig.UseSlot2();
  rig.Move(20, 0);
  rig.End();
  rig.Select(2);
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  EXPECT_EQ(rig.X(), 20);
  rig.Select(1);
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  EXPECT_EQ(rig.X(), 10);
}

TEST(Run, ASecondSlotThatWasOnlySentItsMiddleIsRefused) {
  // After start the lines of slot 2 go on with the count of slot 1, until it is selected.
  RunRig rig;
  rig.Send("TABLE(785,0,20,0,0,0,0,0)");
  rig.Send("TABLE(792,-999)");
  rig.Select(2);
  rig.Run.CycleStart();
  EXPECT_FALSE(rig.Running());
  EXPECT_TRUE(rig.Message(LogicBit::TableIncomplete));
}

TEST(Run, TheTableInForceCountsWhenTheCycleStarts) {
  RunRig rig;
  rig.Move(10, 0);
  rig.Move(20, 0);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(0.01);
  rig.Send("VR(91)=2");
  rig.Run.Advance(1);
  EXPECT_EQ(rig.X(), 20);
}

TEST(Run, PositionsAreScaledAndTheThirdAxisIsNot) {
  RunRig rig;
  rig.Send("VR(59)=1000");
  rig.Row("0,12.3456,-5,7,0,0,0");
  rig.Cut(112.3456, -5, 600);
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  EXPECT_EQ(rig.Send("? ENDMOVE AXIS(0)"), "112345.6\r\n>>");
  EXPECT_EQ(rig.Send("? MPOS AXIS(1)"), "-5000\r\n>>");
  const double measured = rig.Memory.Axis(AxisQuantity::Measured, 0);
  const double demand = rig.Memory.Axis(AxisQuantity::Demand, 0);
  EXPECT_GT(demand, measured);
  EXPECT_NEAR(rig.Memory.Axis(AxisQuantity::FollowingError, 0), demand - measured, 1e-9);
  rig.Run.FeedHold();
  EXPECT_EQ(rig.Send("? FE AXIS(0)"), "0\r\n>>");
  rig.Send("VR(59)=0");
  EXPECT_EQ(rig.Send("? MPOS AXIS(1)"), "-5\r\n>>") << "a divisor of 0 counts as 1";
}

TEST(Run, AnErrorHoldsTheCycleAndMustBeClearedFirst) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  rig.Run.RaiseError(5);
  EXPECT_EQ(rig.Vr(Vr::IoMessage), 5);
  EXPECT_TRUE(rig.Bit(StatusBit::InError));
  EXPECT_TRUE(rig.Bit(StatusBit::Feedhold));
  rig.Run.Release();
  rig.Run.CycleStart();
  EXPECT_TRUE(rig.Bit(StatusBit::Feedhold));
  rig.Run.ClearMessages();
  EXPECT_EQ(rig.Vr(Vr::IoMessage), 0);
  EXPECT_FALSE(rig.Bit(StatusBit::InError));
  rig.Run.Release();
  rig.Run.Advance(100);
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
}

TEST(Run, CodesThatTheFrontEndHasNoTextForAreNeverRaised) {
  RunRig rig;
  for (const int code : {0, -1, 65, 1000}) rig.Run.RaiseError(code);
  for (const int bit : {-1, 31, 32}) rig.Run.RaiseBit(bit);
  EXPECT_EQ(rig.Vr(Vr::IoMessage), 0);
  EXPECT_EQ(rig.Vr(Vr::LogicMessages), 0);
  rig.Run.RaiseBit(30);
  EXPECT_EQ(rig.Vr(Vr::LogicMessages), 1 << 30);
  rig.Run.ClearMessages();
  EXPECT_EQ(rig.Vr(Vr::LogicMessages), 0);
}

TEST(Run, TheFrontEndCannotTakeTheMachinesBitsAway) {
  RunRig rig;
  rig.Cut(100, 0, 600);
  rig.Run.CycleStart();
  rig.Send("VR(19)=0");
  EXPECT_TRUE(rig.Running());
  rig.Send("VR(19)=VR(19) OR 131072");
  EXPECT_TRUE(rig.Bit(StatusBit::RollersOn));
  EXPECT_TRUE(rig.Running());
}

RC_GTEST_PROP(Run, CuttingTimeIntoPiecesChangesNothing, ()) {
  const auto prepare = [](RunRig& rig) {
    rig.Move(50, 10);
    rig.Cut(80, 40, 900);
    rig.Row("2,10,0,5,0,0,700,0");
    rig.Point(0.3);
    rig.Row("3,-10,0,-5,0,-1,700,1");
    rig.Move(0, 0);
    rig.End();
    rig.Run.CycleStart();
  };
  RunRig whole;
  RunRig pieces;
  prepare(whole);
  prepare(pieces);
  const double time = *rc::gen::inRange(0, 10000) / 1000.0;
  const int parts = *rc::gen::inRange(1, 100);
  whole.Run.Advance(time);
  for (int i = 0; i < parts; ++i) pieces.Run.Advance(time / parts);
  RC_ASSERT(Distance(whole.Run.At(), pieces.Run.At()) < 1e-6);
  RC_ASSERT(std::abs(whole.Vr(Vr::RunTime) - pieces.Vr(Vr::RunTime)) < 1e-6);
}

RC_GTEST_PROP(Run, NoTableOfAnyNumbersEndsBadly, ()) {
  RunRig rig;
  const auto rows = *rc::gen::container<std::vector<std::vector<int>>>(
      rc::gen::container<std::vector<int>>(rc::gen::inRange(-5, 10)));
  for (const auto& row : rows) {
    if (row.empty()) continue;
    std::string values;
    for (const int value : row) values += (values.empty() ? "" : ",") + std::to_string(value);
    rig.Row(values);
  }
  rig.End();
  rig.Select();
  rig.Run.CycleStart();
  for (int i = 0; i < 50; ++i) {
    rig.Run.Advance(1);
    if (rig.Run.AwaitingStart()) rig.Run.CycleStart();
  }
  RC_ASSERT(std::isfinite(rig.X()) && std::isfinite(rig.Y()));
}

}  // namespace
}  // namespace torvane::simulator

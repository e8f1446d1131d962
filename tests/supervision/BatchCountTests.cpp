// The batch counters as the operator sets them.
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "Bench.h"
#include "supervision/BatchCount.h"

namespace torvane::supervision {

using namespace tests;
namespace {

core::Batch Of(double perSheet, double required, double completed) {
  return BatchOf(perSheet, required, completed).value();
}

TEST(BatchOf, CountsSheetsUpToTheNextWholeOne) {
  EXPECT_EQ(Of(7, 20, 0).SheetsRequired, 3);
  EXPECT_EQ(Of(5, 20, 0).SheetsRequired, 4);
  EXPECT_EQ(Of(5, 21, 0).SheetsRequired, 5);
  EXPECT_EQ(Of(30, 20, 0).SheetsRequired, 1);
  EXPECT_EQ(Of(7, 20, 1).SheetsToGo, 2);
}

TEST(BatchOf, RefusesLessThanOnePartASheetEvenWithoutPartsWanted) {
  EXPECT_FALSE(BatchOf(0, 20, 0));
  EXPECT_FALSE(BatchOf(0, 0, 0));
  EXPECT_FALSE(BatchOf(0.5, 20, 0)) << "rounds half to even";
  EXPECT_FALSE(BatchOf(-3, 20, 0));
  EXPECT_TRUE(BatchOf(0.6, 20, 0));
}

TEST(BatchOf, WithoutPartsWantedThereAreNoSheetsAndTheCompletedOnesStay) {
  const core::Batch batch = Of(4, 0, 9);
  EXPECT_EQ(batch.PartsPerSheet, 4);
  EXPECT_EQ(batch.PartsRequired, 0);
  EXPECT_EQ(batch.SheetsRequired, 0);
  EXPECT_EQ(batch.SheetsToGo, 0);
  EXPECT_EQ(batch.SheetsCompleted, 9);
}

TEST(BatchOf, MoreSheetsDoneThanWantedGoBelowZero) { EXPECT_EQ(Of(1, 3, 5).SheetsToGo, -2); }

RC_GTEST_PROP(BatchOf, TheSheetsAreTheFewestThatHoldTheParts, ()) {
  const auto perSheet = *rc::gen::inRange<std::int64_t>(1, std::numeric_limits<int>::max());
  const auto required = *rc::gen::inRange<std::int64_t>(1, std::numeric_limits<int>::max());
  const auto completed = *rc::gen::inRange<std::int64_t>(0, std::numeric_limits<int>::max());
  const core::Batch batch = Of(static_cast<double>(perSheet), static_cast<double>(required),
                               static_cast<double>(completed));
  RC_ASSERT(batch.SheetsRequired * perSheet >= required);
  RC_ASSERT((batch.SheetsRequired - 1) * perSheet < required);
  RC_ASSERT(batch.SheetsToGo == batch.SheetsRequired - completed);
}

TEST(StoreBatch, GoesIntoTheRecordTheFileAndTheController) {
  Bench bench;
  bench.System.ActiveSlot = 2;
  EXPECT_TRUE(StoreBatch(bench.System, bench.Files, bench.Downloads, {7, 20, 3, 1, 2}));
  EXPECT_EQ(bench.System.Programs[2].BatchCounters.SheetsToGo, 2);
  EXPECT_EQ(bench.Temp.Get("Actvprg2.btc"), "7\r\n20\r\n3\r\n1\r\n2\r\n******\r\n");
  EXPECT_EQ(bench.Sent(), (Lines{"VR(82)=7", "VR(83)=20", "VR(84)=3", "VR(85)=1"}))
      << "what is to go is never sent";
  EXPECT_FALSE(bench.Temp.Has("Actvprg1.btc"));
}

TEST(StoreBatch, AFileThatCanNotBeWrittenKeepsNothingFromTheController) {
  Bench bench;
  bench.Temp.MakeDirectory("Actvprg1.btc");  // a directory of the file's name
  EXPECT_FALSE(StoreBatch(bench.System, bench.Files, bench.Downloads, {7, 20, 3, 1, 2}));
  EXPECT_EQ(bench.System.Programs[1].BatchCounters.SheetsToGo, 2);
  EXPECT_EQ(bench.Sent(), (Lines{"VR(82)=7", "VR(83)=20", "VR(84)=3", "VR(85)=1"}));
}

}  // namespace
}  // namespace torvane::supervision

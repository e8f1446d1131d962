#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "SlotMaker.h"
#include "supervision/RunningBlock.h"

namespace torvane::supervision {

using namespace tests;
namespace {

/// A slot whose listing has `lines` lines "line <n>", and whose record n + 1 carries line number n.
struct Bench : SlotMaker {
  core::BySlot<core::ActiveProgram> Programs;

  explicit Bench(int lines) {
    std::vector<std::int16_t> numbers;
    for (int n = 1; n <= lines; ++n) numbers.push_back(static_cast<std::int16_t>(n));
    PutRecords(1, "drw", numbers);
    std::string listing;
    for (int n = 1; n <= lines; ++n) listing += Padded("  line " + std::to_string(n));
    Temp.Put("Actvprg1.rnd", listing);
    Programs[1].Selected = true;
    Programs[1].BodyLines = static_cast<std::int16_t>(lines);
  }
  ListingView Show(int slot, int block) {
    return ShowRunningBlock(Files, Directories, Programs, slot, block);
  }
};

std::string Line(int n) { return "line " + std::to_string(n); }

TEST(ShowRunningBlock, WithoutARunningRecordShowsTheStartWithoutAHighlight) {
  Bench bench(40);
  const auto rows = bench.Show(1, 0);
  for (int row = 0; row < ListingRows; ++row) {
    EXPECT_EQ(rows[static_cast<std::size_t>(row)].Text, Line(row + 1));
    EXPECT_FALSE(rows[static_cast<std::size_t>(row)].Inverse);
  }
}

TEST(ShowRunningBlock, TheFirstTwoLinesHighlightTheFirstRow) {
  Bench bench(40);
  for (const int line : {1, 2}) {
    const auto rows = bench.Show(1, line);
    EXPECT_EQ(rows[0].Text, Line(1));
    EXPECT_TRUE(rows[0].Inverse);
    EXPECT_FALSE(rows[1].Inverse);
  }
}

TEST(ShowRunningBlock, LaterLinesStartTwoRecordsBeforeAndHighlightTheSecondRow) {
  Bench bench(40);
  const auto rows = bench.Show(1, 10);
  EXPECT_EQ(rows[0].Text, Line(8));
  EXPECT_FALSE(rows[0].Inverse);
  EXPECT_EQ(rows[1].Text, Line(9));
  EXPECT_TRUE(rows[1].Inverse);
  EXPECT_FALSE(rows[2].Inverse);
  EXPECT_EQ(rows[17].Text, Line(25));
}

TEST(ShowRunningBlock, BehindTheLastLineTheRowsAreBlank) {
  Bench bench(40);
  const auto rows = bench.Show(1, 39);
  EXPECT_EQ(rows[0].Text, Line(37));
  EXPECT_EQ(rows[3].Text, Line(40));
  EXPECT_EQ(rows[4].Text, std::string(80, ' '));
  EXPECT_EQ(rows[17].Text, std::string(80, ' '));
}

TEST(ShowRunningBlock, ABlockAboveTheListingsEndShowsBlankRowsBehindTheLastLine) {
  Bench bench(5);
  const auto rows = bench.Show(1, 30000);
  EXPECT_EQ(rows[0].Text, Line(1));
  EXPECT_EQ(rows[4].Text, Line(5));
  EXPECT_EQ(rows[5].Text, std::string(80, ' '));
  for (const auto& row : rows) EXPECT_FALSE(row.Inverse);
}

TEST(ShowRunningBlock, IsBlankWithoutAProgram) {
  Bench bench(5);
  const auto blank = [](const ListingView& rows) {
    for (const auto& row : rows) {
      if (row.Text != std::string(80, ' ') || row.Inverse) return false;
    }
    return true;
  };
  EXPECT_TRUE(blank(bench.Show(2, 1))) << "the slot holds no program";
  bench.Programs[1].Selected = false;
  EXPECT_TRUE(blank(bench.Show(1, 1)));
  bench.Programs[1].Selected = true;
  bench.Files.DeleteFile("C:\\Actvprg1.rnd");
  EXPECT_TRUE(blank(bench.Show(1, 1)));
}

TEST(ShowRunningBlock, WithoutRecordsShowsTheStart) {
  Bench bench(5);
  bench.Files.DeleteFile("C:\\Actvprg1.drw");
  const auto rows = bench.Show(1, 4);
  EXPECT_EQ(rows[0].Text, Line(1));
  EXPECT_FALSE(rows[0].Inverse);
}

TEST(ShowRunningBlock, AListingShorterThanItsCountIsBlankBehindItsEnd) {
  Bench bench(5);
  bench.Programs[1].BodyLines = 12;
  const auto rows = bench.Show(1, 1);
  EXPECT_EQ(rows[4].Text, Line(5));
  EXPECT_EQ(rows[5].Text, std::string(80, ' '));
}

RC_GTEST_PROP(ListingWindow, StaysInTheListingAndHighlightsAtMostTheSecondRow,
              (std::int16_t block, std::int16_t line)) {
  const auto window = ListingWindowOf(block, line);
  RC_ASSERT(window.FirstRecord >= 1);
  RC_ASSERT(window.HighlightedRow >= 0);
  RC_ASSERT(window.HighlightedRow <= 2);
  if (block <= 0 || line <= 0) {
    RC_ASSERT(window == (ListingWindow{1, 0}));
  } else {
    // The highlighted record is the one before the line number, or the first.
    const int highlighted = window.FirstRecord + window.HighlightedRow - 1;
    RC_ASSERT(highlighted == std::max(1, line - 1));
  }
}

RC_GTEST_PROP(ShowRunningBlock, RowsAreConsecutiveLinesFromAnyBlock, ()) {
  static Bench bench(60);
  const int block = *rc::gen::inRange(-3, 70);
  const auto rows = bench.Show(1, block);
  int first = 0;
  for (int row = 0; row < ListingRows; ++row) {
    const auto& text = rows[static_cast<std::size_t>(row)].Text;
    if (row == 0) {
      first = std::stoi(text.substr(5));
      RC_ASSERT(first >= 1);
    }
    RC_ASSERT(text == (first + row <= 60 ? Line(first + row) : BlankRow()));
  }
}

}  // namespace
}  // namespace torvane::supervision

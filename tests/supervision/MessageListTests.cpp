#include <bitset>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "supervision/MessageList.h"
#include "support/Faults.h"

namespace torvane::supervision {
namespace {

struct Bench {
  core::MessageTables Tables;
  core::DirectorySet Directories;
  MessageList List;

  Bench() {
    Directories.MessageDirectory = "C:\\ROOT\\Messages\\";
    Directories.MessageHelpDirectory = "C:\\ROOT\\Messages\\Help\\";
    for (std::size_t code = 1; code <= 64; ++code) {
      Tables.IoMessages[code] = "Io " + std::to_string(code);
    }
    for (std::size_t bit = 0; bit < 32; ++bit) {
      Tables.LogicMessages[bit] = "Logic " + std::to_string(bit);
    }
  }
  bool Refresh(std::int32_t vr16, std::int32_t vr17, bool received = false) {
    return List.Refresh(vr16, vr17, received, Tables, Directories);
  }
};

TEST(MessageList, WithoutConditionsHasNoRowsAndNoSelection) {
  Bench bench;
  EXPECT_TRUE(bench.Refresh(0, 0));
  EXPECT_EQ(bench.List.Count(), 0);
  EXPECT_EQ(bench.List.SelectedMessage(), 0);
  EXPECT_EQ(bench.List.Row(1).Text, std::string(80, ' '));
  EXPECT_EQ(bench.List.HelpPath(1), "");
}

TEST(MessageList, ShowsTheCodeFirstAndThenTheBitsInRisingOrder) {
  Bench bench;
  bench.Refresh(7, 1 << 4 | 1 << 2, true);
  EXPECT_EQ(bench.List.Row(1).Text, " Io 7");
  EXPECT_EQ(bench.List.HelpPath(1), "C:\\ROOT\\Messages\\Help\\IO\\7.hlp");
  EXPECT_EQ(bench.List.Row(2).Text, " Logic 2");
  EXPECT_EQ(bench.List.HelpPath(2), "C:\\ROOT\\Messages\\Help\\Logic\\2.hlp");
  EXPECT_EQ(bench.List.Row(3).Text, " Logic 4");
  EXPECT_EQ(bench.List.Row(4).Text, " New Program(s) Received");
  EXPECT_EQ(bench.List.HelpPath(4), "C:\\ROOT\\Messages\\Receive.hlp");
  EXPECT_EQ(bench.List.Count(), 4);
  EXPECT_EQ(bench.List.Row(5).Text, std::string(80, ' '));
}

TEST(MessageList, BitThirtyOneMakesTheWordNegativeAndHidesEveryLogicMessage) {
  Bench bench;
  bench.Refresh(0, static_cast<std::int32_t>(0x80000001U));
  EXPECT_EQ(bench.List.Count(), 0);
}

TEST(MessageList, TwentyFiveBitsStopAtEighteenRows) {
  Bench bench;
  bench.Refresh(0, (1 << 25) - 1);
  EXPECT_EQ(bench.List.Count(), 18);
  EXPECT_EQ(bench.List.Row(18).Text, " Logic 17");
}

TEST(MessageList, ReceivedProgramsFindNoPlaceBehindEighteenRows) {
  Bench bench;
  bench.Refresh(3, (1 << 25) - 1, true);
  EXPECT_EQ(bench.List.Count(), 18);
  EXPECT_EQ(bench.List.Row(18).Text, " Logic 16");
}

TEST(MessageList, ABitWithoutATextGivesAnEmptyRow) {
  Bench bench;
  bench.Tables.LogicMessages[3].clear();
  bench.Refresh(0, 1 << 3);
  EXPECT_EQ(bench.List.Count(), 1);
  EXPECT_EQ(bench.List.Row(1).Text, " ");
}

TEST(MessageList, NegativeCodesShowNothing) {
  Bench bench;
  bench.Refresh(-5, 0);
  EXPECT_EQ(bench.List.Count(), 0);
}

TEST(MessageList, ACodeAboveTheTableEndsTheProgram) {
  Bench bench;
  EXPECT_TRUE(bench.Refresh(64, 0));
  EXPECT_EQ(bench.List.Row(1).Text, " Io 64");
  const std::string fault = tests::FaultOf([&] { bench.Refresh(65, 0); });
  EXPECT_NE(fault.find("IO.msg"), std::string::npos);
  EXPECT_NE(fault.find("65"), std::string::npos);
}

TEST(MessageList, IsBuiltAnewOnlyWhenSomethingChanged) {
  Bench bench;
  EXPECT_TRUE(bench.Refresh(1, 2));
  EXPECT_FALSE(bench.Refresh(1, 2));
  EXPECT_TRUE(bench.Refresh(2, 2));
  EXPECT_TRUE(bench.Refresh(2, 3));
  EXPECT_TRUE(bench.Refresh(2, 3, true));
  EXPECT_FALSE(bench.Refresh(2, 3, true));
  bench.List.Select(2);
  EXPECT_TRUE(bench.Refresh(2, 3, true));
  bench.List.Reset();
  EXPECT_TRUE(bench.Refresh(2, 3, true));
}

TEST(MessageList, AFreshListIsBuiltEvenWhereTheControllerReportsAllBits) {
  Bench bench;
  EXPECT_TRUE(bench.Refresh(-1, -1));
}

TEST(MessageList, TheSelectionIsHeldWithinTheRows) {
  Bench bench;
  bench.Refresh(0, 7);
  EXPECT_EQ(bench.List.SelectedMessage(), 1) << "the first row is chosen where rows stand";
  EXPECT_TRUE(bench.List.Row(1).Inverse);
  bench.List.Select(12);
  bench.Refresh(0, 7);
  EXPECT_EQ(bench.List.SelectedMessage(), 3);
  EXPECT_FALSE(bench.List.Row(1).Inverse);
  EXPECT_TRUE(bench.List.Row(3).Inverse);
  bench.Refresh(0, 1);
  EXPECT_EQ(bench.List.SelectedMessage(), 1);
  bench.Refresh(0, 0);
  EXPECT_EQ(bench.List.SelectedMessage(), 0);
}

TEST(MessageList, TheArrowsMoveByOneRow) {
  Bench bench;
  bench.Refresh(0, 7);
  bench.List.MoveSelection(1);
  bench.Refresh(0, 7);
  EXPECT_EQ(bench.List.SelectedMessage(), 2);
  bench.List.MoveSelection(-1);
  bench.List.MoveSelection(-1);
  bench.Refresh(0, 7);
  EXPECT_EQ(bench.List.SelectedMessage(), 1) << "above the first row is the first row";
}

RC_GTEST_PROP(MessageList, RowsFollowTheTwoNumbers, ()) {
  Bench bench;
  const auto vr16 = *rc::gen::inRange<std::int32_t>(-3, 65);
  const auto vr17 = *rc::gen::arbitrary<std::int32_t>();
  const bool received = *rc::gen::arbitrary<bool>();
  const int chosen = *rc::gen::inRange(-5, 40);
  bench.List.Select(chosen);
  bench.Refresh(vr16, vr17, received);
  const int bits =
      vr17 > 0 ? static_cast<int>(std::bitset<31>(static_cast<unsigned>(vr17)).count()) : 0;
  const int count = std::min(18, (vr16 > 0 ? 1 : 0) + bits + (received ? 1 : 0));
  RC_ASSERT(bench.List.Count() == count);
  RC_ASSERT(bench.List.SelectedMessage() >= (count > 0 ? 1 : 0));
  RC_ASSERT(bench.List.SelectedMessage() <= count);
  for (int row = 1; row <= MessageRows; ++row) {
    RC_ASSERT(bench.List.Row(row).Inverse == (row == bench.List.SelectedMessage()));
    RC_ASSERT(bench.List.HelpPath(row).empty() == (row > count));
    RC_ASSERT((bench.List.Row(row).Text == BlankRow()) == (row > count));
  }
  RC_ASSERT(!bench.Refresh(vr16, vr17, received));
}

}  // namespace
}  // namespace torvane::supervision

// Rows of the table: what each type holds, and the command lines that carry them.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "partprogram/TableRows.h"

namespace torvane::partprogram {
namespace {

TEST(TableRows, EveryTypeReadsItsPlaces) {
  const double move[] = {0, 10, -20, 0, 0, 3000, 1};
  auto row = ReadRow(move);
  ASSERT_TRUE(row);
  EXPECT_EQ(row->Type, RowType::Point);
  EXPECT_EQ(row->X, 10);
  EXPECT_EQ(row->Y, -20);
  EXPECT_EQ(row->Feed, 3000);
  EXPECT_EQ(row->Skip, 1);

  const double line[] = {1, 10, -20, 0, -1, 3000, 2};
  row = ReadRow(line);
  ASSERT_TRUE(row);
  EXPECT_EQ(row->Type, RowType::Line);
  EXPECT_TRUE(row->Blended);
  EXPECT_EQ(row->Action, 0);
  EXPECT_EQ(row->Skip, 2);

  const double arc[] = {2, 10, 0, 5, 0, 0, 1500, 0};
  row = ReadRow(arc);
  ASSERT_TRUE(row);
  EXPECT_EQ(row->Type, RowType::ArcNegative);
  EXPECT_EQ(row->I, 5);
  EXPECT_EQ(row->Feed, 1500);

  const double end[] = {-999};
  row = ReadRow(end);
  ASSERT_TRUE(row);
  EXPECT_EQ(row->Type, RowType::End);
}

TEST(TableRows, TheSecondHalfOfSettingsHasNoTypeOfItsOwn) {
  const double first[] = {5, 1, 2, 3, 4, 5, 6};
  auto row = ReadRow(first);
  ASSERT_TRUE(row);
  const double second[] = {-999, 10, 11, 12, 14, 1};
  ASSERT_TRUE(ReadSecondHalf(second, *row)) << "an eighth setting not given is no end of the table";
  EXPECT_EQ(row->Settings[0], 1);
  EXPECT_EQ(row->Settings[5], 6);
  EXPECT_EQ(row->Settings[6], -999);
  EXPECT_EQ(row->Settings[10], 14);
  EXPECT_EQ(row->Skip, 1);
  const double shorter[] = {-999, 10, 11, 12, 14};
  EXPECT_FALSE(ReadSecondHalf(shorter, *row));
}

TEST(TableRows, WhatIsNoRowIsNone) {
  EXPECT_FALSE(ReadRow({}));
  const double unknown[] = {7, 1, 2, 3, 4, 5, 6};
  EXPECT_FALSE(ReadRow(unknown));
  const double shorter[] = {0, 1, 2, 3, 4, 5};
  EXPECT_FALSE(ReadRow(shorter));
  const double longer[] = {1, 1, 2, 3, 4, 5, 6, 7};
  EXPECT_FALSE(ReadRow(longer));
  const double half[] = {0.5, 1, 2, 3, 4, 5, 6};
  EXPECT_FALSE(ReadRow(half));
}

std::vector<double> ValuesOf(std::string_view line) {
  std::array<double, LongestRow> values{};
  const auto read = ReadTableLine(line, values);
  return {read.begin(), read.end()};
}

TEST(TableLines, AreReadWithoutTheirIndex) {
  EXPECT_EQ(ValuesOf("TABLE(500,-999)"), (std::vector<double>{-999}));
  EXPECT_EQ(ValuesOf("TABLE(507,1,12.5,-0.25,0,-1,2000,0)"),
            (std::vector<double>{1, 12.5, -0.25, 0, -1, 2000, 0}));
  EXPECT_EQ(ValuesOf("TABLE(700,2,1,2,3,4,0,600,2)").size(), LongestRow);
}

TEST(TableLines, WhatIsNoneGivesNothing) {
  for (const char* line :
       {"", "TABLE", "TABLE(", "TABLE()", "TABLE(500)", "TABLE(500,", "TABLE(500,)",
        "TABLE(500,1,)", "TABLE(500,1", "TABLE(x,1)", "TABLE(500,x)", "TABLE(500,1 ,2)", "VR(1)=5",
        "TABLE (12,-999)", "TABLE(500,1,2,3,4,5,6,7,8,9)"}) {
    EXPECT_TRUE(ValuesOf(line).empty()) << line;
  }
}

}  // namespace
}  // namespace torvane::partprogram

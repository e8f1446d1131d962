// What records share in memory, and that no change of one shows in another.
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "partprogram/Conversion.h"
#include "partprogram/KerfRecords.h"

namespace torvane::tests {
namespace {

TEST(CommonFieldsOfRecords, AreOneObjectForAlikeRecords) {
  const auto records =
      Convert({"G31 T2=3", "G01 X10 Y0", "G01 X20 Y0", "G31 T2=1", "G31 T2=3", "G01 X30 Y0"})
          .Records;
  ASSERT_EQ(records.size(), 7U);
  EXPECT_EQ(records[2].Shared(), records[3].Shared());
  EXPECT_EQ(records[2].Shared(), records[6].Shared()) << "the settings are the same again";
  EXPECT_NE(records[1].Shared(), records[2].Shared());
}

TEST(CommonFieldsOfRecords, AChangeStaysInItsRecord) {
  DrawRecord one;
  one.ChangeCommon().Settings[3] = 7;
  DrawRecord other = one;
  EXPECT_EQ(one.Shared(), other.Shared());
  other.ChangeCommon().Settings[3] = 8;
  other[Figure::DwellTime] = 1;
  other[Figure::ToolAngle] = 2;
  EXPECT_EQ(one.Common().Settings[3], 7);
  EXPECT_EQ(one[Figure::ToolAngle], 0);
  EXPECT_EQ(other[Figure::ToolAngle], 2);
}

TEST(CommonFieldsOfRecords, OfAFileAreSharedWhereTheBytesAreTheSame) {
  DrawRecord one = Line({0, 0, 0}, {1, 0, 0});
  DrawRecord two = Line({1, 0, 0}, {2, 5, 0});
  DrawRecord other = two;
  other.ChangeCommon().Settings[0] = -0.0F;
  two.ChangeCommon().Settings[0] = one.ChangeCommon().Settings[0] = 0.0F;
  RecordDecoder decoder;
  std::vector<DrawRecord> read;
  for (const DrawRecord& record : {one, two, other, one}) {
    const std::string bytes = Bytes(record);
    read.push_back(
        decoder.Decode(std::span<const char, DrawRecordSize>(bytes.data(), DrawRecordSize)));
    EXPECT_EQ(Bytes(read.back()), bytes);
  }
  EXPECT_EQ(read[0].Shared(), read[1].Shared());
  EXPECT_EQ(read[0].Shared(), read[3].Shared());
  EXPECT_NE(read[0].Shared(), read[2].Shared()) << "a minus before a zero is kept";
}

TEST(CommonFieldsOfRecords, SettingsThatAreNoNumbersAreSharedAndKept) {
  const float none = std::numeric_limits<float>::quiet_NaN();
  CommonFields left;
  CommonFields right;
  left.Settings[5] = right.Settings[5] = none;
  EXPECT_TRUE(SameOnDisk(left, right));
  right.Marks[11] = 1;
  EXPECT_FALSE(SameOnDisk(left, right));
}

}  // namespace
}  // namespace torvane::tests

// Machine.stn and Laser.dat.
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/StationFiles.h"

namespace torvane::core {
namespace {

struct Read {
  StationTable Table;
  Station Active;
  explicit Read(std::string_view text) {
    Table.fill(Station{5, 5, "old", 1, 1, 1, 1, 1});
    Active = Table[0];
    ReadStationFile(text, Table, Active);
  }
};

TEST(StationFile, FillsTheRowOfItsNumberAndClearsTheOthers) {
  const Read read("3,\" LASER, 5 INCH \",1,12.5,-3,0.25,7\r\n******\r\n");
  const Station& row = read.Table[3];
  EXPECT_EQ(row.Number, 3);
  EXPECT_EQ(row.DefaultNumber, 3);
  EXPECT_EQ(row.Name, "LASER, 5 INCH") << "a comma in quotes divides nothing, blanks go";
  EXPECT_EQ(row.Type, 1);
  EXPECT_EQ(row.OffsetX, 12.5F);
  EXPECT_EQ(row.OffsetY, 3.0F);
  EXPECT_EQ(row.OffsetZ, 0.25F);
  EXPECT_EQ(row.Flag, 7);
  EXPECT_EQ(read.Active.Name, "LASER, 5 INCH");
  EXPECT_EQ(read.Active.Number, 3);
  EXPECT_EQ(read.Active.DefaultNumber, 3);
  EXPECT_EQ(read.Table[5].Name, "");
  EXPECT_EQ(read.Table[5].Number, 0);
}

TEST(StationFile, TheLastRowOfAWorkingTypeIsTheActiveOne) {
  const Read read(
      "1,A,1,0,0,0,0\r\n2,B,2,0,0,0,0\r\n3,C,10,0,0,0,0\r\n4,D,0,0,0,0,0\r\n******\r\n");
  EXPECT_EQ(read.Active.Name, "B");
  EXPECT_EQ(read.Table[3].Name, "C") << "stored, though never active";
  EXPECT_EQ(read.Table[3].Type, 10);
}

TEST(StationFile, WithoutAWorkingRowThereIsNoActiveStation) {
  const Read read("1,A,10,0,0,0,0\r\n******\r\n");
  EXPECT_EQ(read.Active.Number, 0);
  EXPECT_EQ(read.Active.Name, "");
}

TEST(StationFile, NegativeOffsetsAreStoredPositive) {
  const Read read("0,A,1,-1,-2.5,-0.125,-3\r\n******\r\n");
  EXPECT_EQ(read.Active.OffsetX, 1.0F);
  EXPECT_EQ(read.Active.OffsetY, 2.5F);
  EXPECT_EQ(read.Active.OffsetZ, 0.125F);
  EXPECT_EQ(read.Active.Flag, -3) << "the flag is no offset";
}

TEST(StationFile, ReadingStopsAtTheMarkerAtAnEmptyFieldAndAtANumberOutOfRange) {
  const std::string first = "1,A,1,0,0,0,0\r\n";
  const std::string last = "2,B,1,0,0,0,0\r\n******\r\n";
  for (const char* between : {"******\r\n", "\r\n", "65,X,1,0,0,0,0\r\n", "-1,X,1,0,0,0,0\r\n",
                              ",X,1,0,0,0,0\r\n", "99999,X,1,0,0,0,0\r\n"}) {
    EXPECT_EQ(Read(first + between + last).Active.Name, "A") << between;
  }
  EXPECT_EQ(Read(first + "64,X,1,0,0,0,0\r\n" + last).Active.Name, "B");
}

TEST(StationFile, ALastRowWithNothingBehindItIsLost) {
  EXPECT_EQ(Read("1,A,1,0,0,0,0\r\n2,B,1,0,0,0,0\r\n").Active.Name, "A");
  EXPECT_EQ(Read("1,A,1,0,0,0,0\r\n2,B,1,0").Active.Name, "A");
  EXPECT_EQ(Read("").Active.Name, "");
}

TEST(StationFile, FieldsMayStandOnLinesOfTheirOwn) {
  EXPECT_EQ(Read("1\n\"A\"\n1\n0\n0\n2\n0\n******\n").Active.OffsetZ, 2.0F);
}

RC_GTEST_PROP(StationFile, AnyTextLeavesATableWithoutSigns, (const std::string& text)) {
  const Read read(text + "\r\n1,A,1,-4,0,0,0\r\n******\r\n");
  for (const auto& row : read.Table) {
    RC_ASSERT(row.OffsetX >= 0 && row.OffsetY >= 0 && row.OffsetZ >= 0);
  }
}

TEST(LaserNames, OneALineUpToTheMarkerOrAnEmptyLine) {
  using Names = std::vector<std::string>;
  EXPECT_EQ(ReadLaserNames("MILD 1\r\n STEEL \r\n******\r\nMORE\r\n"), (Names{"MILD 1", "STEEL"}));
  EXPECT_EQ(ReadLaserNames("MILD 1\r\n\r\nMORE\r\n******\r\n"), Names{"MILD 1"});
  EXPECT_EQ(ReadLaserNames("MILD 1\r\nLOST\r\n"), Names{"MILD 1"}) << "no marker behind it";
  EXPECT_EQ(ReadLaserNames(""), Names{});
}

TEST(LaserNames, EntryZeroIsTheActiveStation) {
  Station active;
  active.Name = "LASER";
  EXPECT_EQ(MakeLaserNameList(active, {"A", "B"}), (LaserNameList{"LASER", "A", "B"}));
  EXPECT_EQ(MakeLaserNameList(active, {}), (LaserNameList{"LASER", "LASER"}))
      << "without names, entry 1 is that name too";
}

}  // namespace
}  // namespace torvane::core

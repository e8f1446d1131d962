#include <gtest/gtest.h>

#include "partprogram/Binding.h"
#include "partprogram/SplittingModule.h"
#include "platform/DiskFileSystem.h"
#include "support/TempDirectory.h"

using namespace torvane;
using namespace torvane::partprogram;

namespace {

DrawRecord Line() {
  DrawRecord record;
  record.Code = RecordCode::LineProfile;
  record.StartPoint = {1, 2, 0};
  record.EndPoint = {11.126F, 2, 0};
  record.KerfSide = 1;
  FinishRecord(record);
  return record;
}

DrawRecord Arc(float sweep) {
  DrawRecord record;
  record.Code = RecordCode::ArcProfile;
  record.CentrePoint = {10, 20, 0};
  record[Figure::Radius] = 5;
  record[Figure::Sweep] = sweep;
  record.KerfSide = 1;
  FinishRecord(record);
  return record;
}

TEST(WriteLineBlock, TellsTheEndWithTwoPlaces) {
  EXPECT_EQ(WriteLineBlock(Line()), "G01 X11.13 Y2.00");
}

TEST(WriteArcBlock, ChoosesTheWordBySweepAndYDirection) {
  EXPECT_EQ(WriteArcBlock(Arc(90), 1), "G03 X10.00 Y25.00 I-5.00 J0.00");
  EXPECT_EQ(WriteArcBlock(Arc(-90), 1), "G02 X10.00 Y15.00 I-5.00 J0.00");
  EXPECT_EQ(WriteArcBlock(Arc(90), 0), "G02 X10.00 Y25.00 I-5.00 J0.00");
  EXPECT_EQ(WriteArcBlock(Arc(-90), 0), "G03 X10.00 Y15.00 I-5.00 J0.00");
  EXPECT_EQ(WriteArcBlock(Arc(0), 1), "G03 X15.00 Y20.00 I-5.00 J0.00");
}

TEST(WriteElementBlock, TurnsTheElementAbout) {
  EXPECT_EQ(WriteElementBlock(Line(), 1), "G01 X1.00 Y2.00");
  EXPECT_EQ(WriteElementBlock(Arc(90), 1), "G02 X15.00 Y20.00 I0.00 J-5.00");
  DrawRecord dwell;
  dwell.Code = RecordCode::Dwell;
  EXPECT_EQ(WriteElementBlock(dwell, 1), "");
}

TEST(ReverseRecord, NegatesTheSideOfALineAndNotOfAnArc) {
  DrawRecord line = Line();
  ReverseLineRecord(line);
  EXPECT_EQ(line.KerfSide, -1);
  EXPECT_EQ(line[Figure::Angle], 180);
  DrawRecord arc = Arc(90);
  ReverseArcRecord(arc);
  EXPECT_EQ(arc.KerfSide, 1);
  EXPECT_EQ(arc[Figure::StartAngle], 90);
  EXPECT_EQ(arc[Figure::Sweep], -90);
}

TEST(ReverseRecord, AToolThatTurnsWithItsArcKeepsItsAngleToThePath) {
  DrawRecord arc = Arc(90);
  arc.ChangeCommon().BeamState1.On = -1;
  arc.ChangeCommon().BeamState1.Angle = 5;
  arc[Figure::ToolAngle] = 7;
  DrawRecord other = arc;
  arc.ChangeCommon().BeamState1.StationType = 10;
  ReverseArcRecord(arc);
  EXPECT_EQ(arc.Common().BeamState1.Angle, 95)
      << "five degrees off the new start, as off the old one";
  EXPECT_EQ(arc[Figure::ToolAngle], 7);
  ReverseArcRecord(other);
  EXPECT_EQ(other.Common().BeamState1.Angle, 5);
}

TEST(ReverseRecord, TwiceIsTheSameElement) {
  DrawRecord arc = Arc(90);
  ReverseArcRecord(arc);
  ReverseArcRecord(arc);
  EXPECT_NEAR(arc.StartPoint.X, 15, 1e-4);
  EXPECT_NEAR(arc.EndPoint.Y, 25, 1e-4);
}

TEST(ClearSplitCycle, ResetsTheCountersAndDeletesTheFile) {
  const tests::TempDirectory directory;
  directory.Put("SplitCyc.drw", "x");
  platform::DiskFileSystem files(directory.Path());
  core::DirectorySet directories;
  directories.RootDirectory = directory.Path() + "\\";
  SplitCycle split;
  split.SplitCurrent = 5;
  split.SplitRecord.Code = 120;
  ClearSplitCycle(split, files, directories);
  EXPECT_EQ(split.SplitCurrent, 1);
  EXPECT_EQ(split.SplitRecord.Code, 0);
  EXPECT_FALSE(directory.Has("SplitCyc.drw"));
  ClearSplitCycle(split, files, directories);  // no file, no fault
}

}  // namespace

#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"
#include "partprogram/Binding.h"
#include "partprogram/DrawRecord.h"

using namespace torvane;
using namespace torvane::partprogram;

namespace {

DrawRecord Line(float x1, float y1, float x2, float y2,
                std::int16_t code = RecordCode::LineProfile) {
  DrawRecord record;
  record.Code = code;
  record.StartPoint = {x1, y1, 0};
  record.EndPoint = {x2, y2, 0};
  FinishRecord(record);
  return record;
}

DrawRecord Arc(float x, float y, float radius, float start, float sweep) {
  DrawRecord record;
  record.Code = RecordCode::ArcProfile;
  record.CentrePoint = {x, y, 3};
  record[Figure::Radius] = radius;
  record[Figure::StartAngle] = start;
  record[Figure::Sweep] = sweep;
  FinishRecord(record);
  return record;
}

float Width(const Box& box) { return box.MaxX - box.MinX; }
float Height(const Box& box) { return box.MaxY - box.MinY; }

TEST(FinishProfile, ALineOfNoLengthHasABoxOfTenByTen) {
  const auto record = Line(5, 6, 5, 6);
  EXPECT_EQ(Width(record.BoxOuter), 10);
  EXPECT_EQ(Height(record.BoxOuter), 10);
  EXPECT_EQ(record.BoxOuter.MinX, 0);
  EXPECT_EQ(record.BoxOuter.MinY, 1);
}

TEST(FinishProfile, ALineOfAHundredHasABoxOf110By20) {
  const auto record = Line(0, 0, 100, 0);
  EXPECT_EQ(Width(record.BoxOuter), 110);
  EXPECT_EQ(Height(record.BoxOuter), 20);
  EXPECT_EQ(record.BoxOuter.MinY, -10);
  EXPECT_EQ(record.BoxInner.MaxX, 100);
  EXPECT_EQ(record.BoxInner.MaxY, 0);
}

TEST(FinishProfile, ALineGetsItsMiddleLengthAndAngle) {
  const auto record = Line(1, 2, 4, -2);
  EXPECT_EQ(record[Figure::Length], 5);
  EXPECT_EQ(record[Figure::Angle], 306.87F);
  EXPECT_EQ(record.MidPoint.X, 2.5F);
  EXPECT_EQ(record.CentrePoint.Y, 0);
  EXPECT_EQ(record.ProfileStart.X, 1);
  EXPECT_EQ(record.ProfileEnd.Y, -2);
}

TEST(FinishProfile, AnArcOfSweepZeroHasLengthZero) {
  EXPECT_EQ(Arc(0, 0, 10, 30, 0)[Figure::ArcLength], 0);
}

TEST(FinishProfile, AnArcGetsItsPointsAndAPositiveLength) {
  const auto record = Arc(10, 20, 10, 0, -90);
  EXPECT_EQ(record.StartPoint.X, 20);
  EXPECT_EQ(record.StartPoint.Z, 3);
  EXPECT_NEAR(record.EndPoint.X, 10, 1e-4);
  EXPECT_NEAR(record.EndPoint.Y, 10, 1e-4);
  EXPECT_NEAR(record.MidPoint.X, 17.0711, 1e-4);
  EXPECT_NEAR(record.MidPoint.Y, 12.9289, 1e-4);
  EXPECT_NEAR(record[Figure::ArcLength], 15.70796, 1e-4);
}

TEST(FinishProfile, AnArcsBoxTakesItsRadiusForTheLength) {
  const auto record = Arc(0, 0, 1000, 0, 0.5F);
  EXPECT_GE(Width(record.BoxOuter), 200);
}

TEST(FinishMove, KeepsItsLengthTwiceMore) {
  const auto record = Line(0, 0, 3, 4, RecordCode::Move);
  EXPECT_EQ(record[Figure::SecondLength], 5);
  EXPECT_EQ(record[Figure::ThirdLength], 5);
}

TEST(FinishMove, OfATurningStationLeavesLengthAndAngle) {
  DrawRecord record;
  record.Code = RecordCode::Move;
  record.EndPoint = {3, 4, 0};
  record.ChangeCommon().BeamState1.On = -1;
  record.ChangeCommon().BeamState1.StationType = 10;
  record[Figure::Length] = 77;
  record[Figure::Angle] = 12;
  FinishRecord(record);
  EXPECT_EQ(record[Figure::Length], 77);
  EXPECT_EQ(record[Figure::Angle], 12);
  EXPECT_EQ(record[Figure::ThirdLength], 77);
  EXPECT_EQ(record[Figure::SecondLength], 0);
  EXPECT_EQ(record.CentrePoint.X, 3);
  record.Code = 220;
  FinishRecord(record);
  EXPECT_EQ(record[Figure::Length], 5);
}

TEST(FinishPoint, AllPointsTakeThePosition) {
  for (const auto code : {RecordCode::Dwell, RecordCode::ProgramStop, RecordCode::Reposition}) {
    DrawRecord record;
    record.Code = code;
    record.CentrePoint = {7, 8, 9};
    FinishRecord(record);
    for (const Point3& point : {record.StartPoint, record.MidPoint, record.EndPoint,
                                record.ProfileStart, record.ProfileEnd}) {
      EXPECT_EQ(point.X, 7);
      EXPECT_EQ(point.Z, 9);
    }
    EXPECT_EQ(record.BoxInner.MaxY, 8);
    EXPECT_EQ(record.BoxOuter.MinX, 2);
    EXPECT_EQ(record.BoxOuter.MaxY, 13);
  }
}

TEST(FinishSheet, BindsThePlotSheet) {
  DrawRecord record;
  record.Code = RecordCode::PlotSheet;
  record[Figure::SheetX] = 1000;
  record[Figure::SheetY] = 500;
  FinishRecord(record);
  EXPECT_EQ(record.EndPoint.X, 1000);
  EXPECT_EQ(record.CentrePoint.Y, 250);
  EXPECT_EQ(record.MidPoint.X, 500);
  EXPECT_EQ(record.BoxOuter.MinX, -20);
  EXPECT_EQ(record.BoxOuter.MaxY, 520);
}

TEST(FinishRecord, LeavesOtherRecordsAlone) {
  for (const std::int16_t code : {100, 151, 210, 225, 230, 355, 360, 365, 370, 400, 0, -1}) {
    DrawRecord record;
    record.Code = code;
    record.CentrePoint = {7, 8, 9};
    FinishRecord(record);
    EXPECT_EQ(record.StartPoint.X, 0) << code;
    EXPECT_EQ(record.BoxOuter.MaxX, 0) << code;
  }
}

TEST(FinishRecord, ClearsThePlacementWordsOfAProfilingBeam) {
  DrawRecord record;
  record.ChangeCommon().BeamState1.Kind = 'P';
  record.ChangeCommon().BeamState1.Placement = {1, 2};
  record.ChangeCommon().ProfileNumber = 3;
  record.ChangeCommon().BeamState2.Kind = 'X';
  record.ChangeCommon().BeamState2.Placement = {1, 2};
  record.OwnNumber = 3;
  record.ChangeCommon().BeamState2.ProfilingMark = -1;
  FinishRecord(record);
  EXPECT_EQ(record.Common().BeamState1.Placement, (std::array<std::int32_t, 2>{0, 0}));
  EXPECT_EQ(record.Common().ProfileNumber, 3);
  EXPECT_EQ(record.Common().BeamState2.Placement, (std::array<std::int32_t, 2>{1, 2}));
  EXPECT_EQ(record.OwnNumber, 3);
  EXPECT_EQ(record.Common().BeamState2.ProfilingMark, -1);
}

/// The box as told: ends, and then each whole degree.
Box WalkedBox(const DrawRecord& record) {
  Box box{record.StartPoint.X, record.StartPoint.Y, record.StartPoint.X, record.StartPoint.Y};
  const auto include = [&](float x, float y) {
    box.MinX = std::min(box.MinX, x);
    box.MinY = std::min(box.MinY, y);
    box.MaxX = std::max(box.MaxX, x);
    box.MaxY = std::max(box.MaxY, y);
  };
  include(record.EndPoint.X, record.EndPoint.Y);
  const double start = record[Figure::StartAngle];
  const double sweep = record[Figure::Sweep];
  const int first = static_cast<int>(std::nearbyint(start));
  const int last = static_cast<int>(std::nearbyint(start + sweep));
  const int step = sweep < 0 ? -1 : 1;
  for (int degrees = first; step > 0 ? degrees <= last : degrees >= last; degrees += step) {
    const auto offset = core::PolarToXY(record[Figure::Radius], degrees);
    include(static_cast<float>(record.CentrePoint.X + offset.X),
            static_cast<float>(record.CentrePoint.Y + offset.Y));
  }
  return box;
}

RC_GTEST_PROP(FinishProfile, AnArcsBoxIsThatOfTheDegreeWalkToTheBit, ()) {
  const auto number = [](int low, int high) {
    return static_cast<float>(*rc::gen::inRange(low, high)) / 1000.0F;
  };
  const auto record = Arc(number(-900000, 900000), number(-900000, 900000), number(0, 900000),
                          number(0, 360000), number(-720000, 720000));
  const Box walked = WalkedBox(record);
  RC_ASSERT(record.BoxInner.MinX == walked.MinX);
  RC_ASSERT(record.BoxInner.MinY == walked.MinY);
  RC_ASSERT(record.BoxInner.MaxX == walked.MaxX);
  RC_ASSERT(record.BoxInner.MaxY == walked.MaxY);
}

RC_GTEST_PROP(FinishRecord, AnyRecordIsFinishedWithoutAFault, ()) {
  std::array<char, DrawRecordSize> bytes{};
  for (char& byte : bytes) byte = *rc::gen::arbitrary<char>();
  DrawRecord record = DecodeRecord(bytes);
  record.Code = *rc::gen::element<std::int16_t>(110, 120, 130, 220, 311, 500, 7);
  FinishRecord(record);
}

}  // namespace

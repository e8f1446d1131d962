// Where along an element a restart goes on.
#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "partprogram/Binding.h"
#include "partprogram/SplittingModule.h"
#include "restart/SplitPoint.h"

namespace torvane::restart {
namespace {

using partprogram::DrawRecord;
using partprogram::Figure;

DrawRecord Line(float x1, float y1, float x2, float y2) {
  DrawRecord record;
  record.Code = partprogram::RecordCode::LineProfile;
  record.StartPoint = {x1, y1, 0};
  record.EndPoint = {x2, y2, 0};
  partprogram::FinishRecord(record);
  return record;
}

DrawRecord Arc(float radius, float start, float sweep) {
  DrawRecord record;
  record.Code = partprogram::RecordCode::ArcProfile;
  record.CentrePoint = {100, 100, 0};
  record[Figure::Radius] = radius;
  record[Figure::StartAngle] = start;
  record[Figure::Sweep] = sweep;
  partprogram::FinishRecord(record);
  return record;
}

TEST(SplitStep, OfALineIsItsThirtiethAtTheFinest) {
  EXPECT_FLOAT_EQ(SplitStepOf(1000, 1000), 1000.0F / 30);
  EXPECT_FLOAT_EQ(SplitStepOf(30, 30), 1);
  EXPECT_FLOAT_EQ(SplitStepOf(10, 10), 1) << "an eleventh is below 1";
  EXPECT_FLOAT_EQ(SplitStepOf(2, 2), 1) << "a third is below 1 already";
  EXPECT_FLOAT_EQ(SplitStepOf(0.5, 0.5), 0.25F);
}

TEST(SplitStep, IsHeldToATenthAndThenToOneHalf) {
  EXPECT_FLOAT_EQ(SplitStepOf(0.15, 0.15), 0.075F);
  EXPECT_FLOAT_EQ(SplitStepOf(0.19, 0.19), 0.095F);
  EXPECT_FLOAT_EQ(SplitStepOf(0, 0), 0);
}

TEST(SplitStep, OfAnArcTestsItsLengthButStepsInDegrees) {
  // Radius 10, a quarter: 15.7 mm, so a sixteenth is below 1 mm and fifteenths are the step.
  EXPECT_FLOAT_EQ(SplitStepOf(-90, 15.708), -6);
  EXPECT_FLOAT_EQ(SplitStepOf(90, 15.708), 6);
  EXPECT_FLOAT_EQ(SplitStepOf(-0.15, 0.02), -0.075F);
}

TEST(SplitPoint, BeginsWithTheWholeElementTurnedAbout) {
  const SplitPoint point(Line(100, 100, 700, 100));
  EXPECT_EQ(point.Step(), 20);
  EXPECT_EQ(point.Remaining(), 600);
  EXPECT_EQ(point.Rest().StartPoint.X, 700);
  EXPECT_EQ(point.Rest().EndPoint.X, 100);
}

TEST(SplitPoint, PreviousAddsAStepToWhatRemainsAndNextTakesOneOff) {
  SplitPoint point(Line(100, 100, 700, 100));
  point.Press(SplitKey::OneMore);
  EXPECT_EQ(point.Remaining(), 600) << "never more than the whole";
  point.Press(SplitKey::OneLess);
  EXPECT_EQ(point.Remaining(), 580);
  EXPECT_FLOAT_EQ(point.Rest().EndPoint.X, 120);
  point.Press(SplitKey::LastStep);
  EXPECT_EQ(point.Remaining(), 20);
  EXPECT_FLOAT_EQ(point.Rest().EndPoint.X, 680);
  point.Press(SplitKey::OneLess);
  EXPECT_EQ(point.Remaining(), 20) << "never less than a step";
  point.Press(SplitKey::Whole);
  EXPECT_EQ(point.Rest().EndPoint.X, 100);
}

TEST(SplitPoint, OfAnArcStepsWithTheTurnedSweep) {
  SplitPoint point(Arc(10, 0, 90));
  EXPECT_FLOAT_EQ(point.Step(), -6);
  EXPECT_FLOAT_EQ(static_cast<float>(point.Remaining()), -90);
  point.Press(SplitKey::OneLess);
  EXPECT_FLOAT_EQ(static_cast<float>(point.Remaining()), -84);
  EXPECT_NEAR(point.Rest().EndPoint.X, 100 + 10 * std::cos(6 * std::acos(-1.0) / 180), 1e-4);
  point.Press(SplitKey::LastStep);
  point.Press(SplitKey::OneLess);
  EXPECT_FLOAT_EQ(static_cast<float>(point.Remaining()), -6);
}

TEST(SplitPoint, OfAnElementWithoutLengthStays) {
  SplitPoint point(Line(5, 5, 5, 5));
  for (const auto key : {SplitKey::OneLess, SplitKey::LastStep, SplitKey::OneMore}) {
    point.Press(key);
    EXPECT_EQ(point.Remaining(), 0);
    EXPECT_EQ(point.Rest().EndPoint.X, 5);
  }
}

TEST(SplitPoint, OnlyLinesAndArcsSplit) {
  DrawRecord record;
  EXPECT_FALSE(CanSplit(record));
  record.Code = partprogram::RecordCode::Move;
  EXPECT_FALSE(CanSplit(record));
  EXPECT_TRUE(CanSplit(Line(0, 0, 1, 1)));
  EXPECT_TRUE(CanSplit(Arc(1, 0, 90)));
}

double Distance(const partprogram::Point3& a, const partprogram::Point3& b) {
  return std::hypot(static_cast<double>(a.X) - b.X, static_cast<double>(a.Y) - b.Y);
}

RC_GTEST_PROP(SplitPoint, HoweverItIsMovedItLiesOnItsElement, (bool arc)) {
  const auto coordinate = rc::gen::map(rc::gen::inRange(-200000, 200000),
                                       [](int n) { return static_cast<float>(n) / 100.0F; });
  const DrawRecord record = arc ? Arc(1.0F + std::abs(*coordinate), *coordinate,
                                      static_cast<float>(*rc::gen::element(1, -1)) *
                                          static_cast<float>(*rc::gen::inRange(1, 36000)) / 100.0F)
                                : Line(*coordinate, *coordinate, *coordinate, *coordinate);
  SplitPoint point(record);
  for (const int key : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 4))) {
    point.Press(static_cast<SplitKey>(key));
    const DrawRecord& rest = point.Rest();
    RC_ASSERT(Distance(rest.StartPoint, record.EndPoint) < 2e-3);
    RC_ASSERT(std::abs(point.Remaining()) <= std::abs(point.Whole()) + 1e-9);
    RC_ASSERT(std::abs(point.Remaining()) >= std::abs(point.Step()) - 1e-9);
    if (arc) {
      RC_ASSERT(std::abs(Distance(rest.EndPoint, record.CentrePoint) - record[Figure::Radius]) <
                2e-3);
    } else {
      // The direction of a line has three places: up to 9 microns off at a metre, 25 at 2.8.
      RC_ASSERT(std::abs(Distance(rest.EndPoint, record.StartPoint) +
                         Distance(rest.EndPoint, record.EndPoint) -
                         Distance(record.StartPoint, record.EndPoint)) < 2e-3);
    }
  }
}

}  // namespace
}  // namespace torvane::restart

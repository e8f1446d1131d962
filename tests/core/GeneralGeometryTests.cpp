// Angles, polar form and the box.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"

namespace torvane::core {
namespace {

double ByRepeatedSteps(double degrees) {
  while (degrees < 0) degrees += 360;
  while (degrees >= 360) degrees -= 360;
  return degrees;
}

double AnyAngle() { return *rc::gen::inRange(-400000000, 400000000) / 12345.0; }

TEST(Geometry, PiHasNineFigures) { EXPECT_EQ(Pi, 3.14159265); }

RC_GTEST_PROP(NormaliseAngle, IsTheSameAsAddingAndTakingOff360, ()) {
  const double degrees = AnyAngle();
  RC_ASSERT(NormaliseAngle(degrees) == ByRepeatedSteps(degrees));
}

TEST(NormaliseAngle, StaysBelow360) {
  EXPECT_EQ(NormaliseAngle(360), 0);
  EXPECT_EQ(NormaliseAngle(-360), 0);
  EXPECT_EQ(NormaliseAngle(-1e-20), 0);
  EXPECT_FALSE(std::signbit(NormaliseAngle(-0.0)));
  EXPECT_EQ(NormaliseAngle(-90), 270);
}

TEST(NormaliseAngle, EndsOnAnything) {
  EXPECT_EQ(NormaliseAngle(std::numeric_limits<double>::infinity()), 0);
  EXPECT_EQ(NormaliseAngle(std::numeric_limits<double>::quiet_NaN()), 0);
  const double huge = NormaliseAngle(-1e300);
  EXPECT_TRUE(huge >= 0 && huge < 360);
}

TEST(XYToPolar, TheNineSignsOfTheTable) {
  const double a = RadiansToDegrees(std::atan(3.0 / 4.0));
  EXPECT_EQ(XYToPolar(-4, -3).Angle, 180 + a);
  EXPECT_EQ(XYToPolar(-4, 0).Angle, 180);
  EXPECT_EQ(XYToPolar(-4, 3).Angle, 180 - a);
  EXPECT_EQ(XYToPolar(0, -3).Angle, 270);
  EXPECT_EQ(XYToPolar(0, 0).Angle, 0);
  EXPECT_EQ(XYToPolar(0, 3).Angle, 90);
  EXPECT_EQ(XYToPolar(4, -3).Angle, 360 - a);
  EXPECT_EQ(XYToPolar(4, 0).Angle, 0);
  EXPECT_EQ(XYToPolar(4, 3).Angle, a);
  EXPECT_EQ(XYToPolar(4, 3).Length, 5);
  EXPECT_EQ(XYToPolar(0, 0).Length, 0);
}

TEST(XYToPolar, AnAngleThatRoundsUpTo360IsZero) { EXPECT_EQ(XYToPolar(1, -1e-300).Angle, 0); }

RC_GTEST_PROP(PolarForm, GoesThereAndBack, ()) {
  const double x = *rc::gen::inRange(-3000000, 3000000) / 1000.0;
  const double y = *rc::gen::inRange(-3000000, 3000000) / 1000.0;
  const Polar polar = XYToPolar(x, y);
  const Vector2 back = PolarToXY(polar.Length, polar.Angle);
  RC_ASSERT(polar.Angle >= 0 && polar.Angle < 360);
  RC_ASSERT(std::fabs(back.X - x) < 1e-3 && std::fabs(back.Y - y) < 1e-3);
}

RC_GTEST_PROP(RotateAbout, KeepsTheDistanceAndTurnsByTheAngle, ()) {
  const Vector2 centre{*rc::gen::inRange(-1000, 1000) / 8.0, *rc::gen::inRange(-1000, 1000) / 8.0};
  const Vector2 point{centre.X + *rc::gen::inRange(1, 1000) / 8.0, centre.Y};
  const double angle = *rc::gen::inRange(0, 3600) / 10.0;
  const Vector2 turned = RotateAbout(centre, angle, point);
  const Polar polar = XYToPolar(turned.X - centre.X, turned.Y - centre.Y);
  RC_ASSERT(std::fabs(polar.Length - (point.X - centre.X)) < 1e-9);
  const double difference = std::fabs(polar.Angle - angle);
  RC_ASSERT(std::min(difference, 360 - difference) < 1e-6);
}

TEST(PointInBox, TheEdgeIsInsideAndCornersStandInAnyOrder) {
  EXPECT_TRUE(PointInBox(10, 20, 0, 0, 0, 20));
  EXPECT_TRUE(PointInBox(0, 20, 10, 0, 5, 5));
  EXPECT_FALSE(PointInBox(0, 20, 10, 0, 10.1F, 5));
  EXPECT_FALSE(PointInBox(0, 0, 10, 20, 5, -0.1F));
  EXPECT_TRUE(PointInBox(3, 3, 3, 3, 3, 3));
}

}  // namespace
}  // namespace torvane::core

// Lines and arcs: ends that are exact, points that lie on the path, times that add up.
#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "simulator/Kinematics.h"

namespace torvane::simulator {
namespace {

double Range(int low, int high) { return *rc::gen::inRange(low * 100, high * 100) / 100.0; }

TEST(Kinematics, ALineTakesItsLengthOverItsRate) {
  Mover mover;
  Position at;
  mover.Add(Task::Travelling(Segment::Line({0, 0, 0}, {30, 40, 0}), 600));  // 10 mm/s
  EXPECT_DOUBLE_EQ(mover.Work(2, 100, at), 2);
  EXPECT_DOUBLE_EQ(at.X, 12);
  EXPECT_DOUBLE_EQ(at.Y, 16);
  EXPECT_DOUBLE_EQ(mover.Work(10, 100, at), 3);
  EXPECT_EQ(at.X, 30);
  EXPECT_TRUE(mover.Empty());
}

TEST(Kinematics, OnlyCutsFollowTheOverride) {
  Mover mover;
  mover.Add(Task::Cutting(Segment::Line({}, {10, 0, 0}), 600));
  EXPECT_EQ(mover.RateNow(50), 300);
  EXPECT_EQ(mover.RateNow(200), 1200);
  Position at;
  EXPECT_EQ(mover.Work(100, 0, at), 100) << "at 0 percent time passes and nothing moves";
  EXPECT_EQ(at.X, 0);
  mover.Clear();
  mover.Add(Task::Travelling(Segment::Line({}, {10, 0, 0}), 600));
  EXPECT_EQ(mover.RateNow(50), 600);
}

TEST(Kinematics, AHalfCircleGoesRoundItsCentre) {
  const auto arc = Segment::Arc({10, 0, 0}, {-10, 0, 0}, {0, 0, 0}, 0, 180);
  EXPECT_NEAR(arc.Length(), 31.4159265, 1e-6);
  EXPECT_NEAR(arc.At(arc.Length() / 2).Y, 10, 1e-9);
  const auto other = Segment::Arc({10, 0, 0}, {-10, 0, 0}, {0, 0, 0}, 0, -180);
  EXPECT_NEAR(other.At(other.Length() / 2).Y, -10, 1e-9);
}

TEST(Kinematics, AFullCircleEndsWhereItBegan) {
  const auto arc = Segment::Arc({10, 0, 0}, {10, 0, 0}, {0, 0, 0}, 0, -360);
  EXPECT_NEAR(arc.Length(), 62.831853, 1e-5);
  EXPECT_NEAR(arc.At(arc.Length() / 4).Y, -10, 1e-9);
  EXPECT_EQ(arc.At(arc.Length()).X, 10);
}

TEST(Kinematics, ALineOfNoLengthIsDoneAtOnce) {
  Mover mover;
  Position at;
  mover.Add(Task::Cutting(Segment::Line({5, 5, 0}, {5, 5, 0}), 600));
  EXPECT_EQ(mover.Work(1, 0, at), 0);
  EXPECT_TRUE(mover.Empty());
  EXPECT_EQ(at.X, 5);
}

RC_GTEST_PROP(Kinematics, PointsOfAnArcLieOnItsCircle, ()) {
  const Position centre{Range(-500, 500), Range(-500, 500), 0};
  const double radius = 0.1 + Range(0, 500);
  const double start = Range(0, 360);
  const double sweep = Range(-360, 360);
  RC_PRE(std::abs(sweep) > 0.01);
  const auto on = [&](double degrees) {
    const double angle = degrees * M_PI / 180.0;
    return Position{centre.X + radius * std::cos(angle), centre.Y + radius * std::sin(angle), 0};
  };
  const auto arc = Segment::Arc(on(start), on(start + sweep), centre, start, sweep);
  const double share = Range(0, 1);
  const Position at = arc.At(arc.Length() * share);
  RC_ASSERT(std::abs(Distance(at, centre) - radius) < 1e-6);
  RC_ASSERT(Distance(at, on(start + sweep * share)) < 1e-6);
  RC_ASSERT(std::abs(arc.NearestDistance(at) - arc.Length() * share) < 1e-4 ||
            std::abs(sweep) > 359);
}

RC_GTEST_PROP(Kinematics, CuttingTimeIntoPiecesChangesNothing, ()) {
  const Segment path = Segment::Line({0, 0, 0}, {Range(1, 100), Range(1, 100), 0});
  Mover whole;
  Mover pieces;
  Position a;
  Position b;
  for (Mover* mover : {&whole, &pieces}) {
    mover->Add(Task::Cutting(path, 700));
    mover->Add(Task::Waiting(0.7));
    mover->Add(Task::Travelling(Segment::Line(path.End(), {0, 0, 0}), 9000));
  }
  const double time = Range(0, 20);
  const auto run = [](Mover& mover, double seconds, Position& at) {
    while (seconds > 1e-12 && !mover.Empty()) seconds -= mover.Work(seconds, 80, at);
  };
  run(whole, time, a);
  const int parts = *rc::gen::inRange(1, 50);
  for (int i = 0; i < parts; ++i) run(pieces, time / parts, b);
  RC_ASSERT(Distance(a, b) < 1e-6);
}

}  // namespace
}  // namespace torvane::simulator

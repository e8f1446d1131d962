// Times of a path with acceleration: closed forms, and a walk in small steps over the same path.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "partprogram/SpeedProfile.h"

namespace torvane::partprogram {
namespace {

double Seconds(std::vector<SpeedLeg> legs, double acceleration) {
  TimeLegs(legs, acceleration);
  return std::accumulate(legs.begin(), legs.end(), 0.0,
                         [](double sum, const SpeedLeg& leg) { return sum + leg.Seconds; });
}

/// Highest speeds at the ends of many small steps, forwards and backwards; then the time of each
/// step at the mean of its speeds.
double SteppedSeconds(const std::vector<SpeedLeg>& legs, double acceleration) {
  constexpr int StepsPerLeg = 4000;
  std::vector<double> steps;
  std::vector<double> limits{0};
  for (const auto& leg : legs) {
    if (leg.Length <= 0) continue;
    limits.back() = std::min(limits.back(), leg.Speed);
    for (int i = 0; i < StepsPerLeg; ++i) {
      steps.push_back(leg.Length / StepsPerLeg);
      limits.push_back(leg.Speed);
    }
  }
  limits.back() = 0;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    limits[i + 1] =
        std::min(limits[i + 1], std::sqrt(limits[i] * limits[i] + 2 * acceleration * steps[i]));
  }
  for (std::size_t i = steps.size(); i > 0; --i) {
    limits[i - 1] =
        std::min(limits[i - 1], std::sqrt(limits[i] * limits[i] + 2 * acceleration * steps[i - 1]));
  }
  double seconds = 0;
  for (std::size_t i = 0; i < steps.size(); ++i)
    seconds += 2 * steps[i] / (limits[i] + limits[i + 1]);
  return seconds;
}

TEST(SpeedProfile, WithoutAccelerationALegTakesItsLengthOverItsSpeed) {
  EXPECT_DOUBLE_EQ(Seconds({{10, 5, 0}, {30, 10, 0}}, 0), 5);
}

TEST(SpeedProfile, ALongLegSpeedsUpCruisesAndBrakes) {
  EXPECT_NEAR(Seconds({{100, 50, 0}}, 1000), 100.0 / 50 + 50.0 / 1000, 1e-12);
}

TEST(SpeedProfile, AShortLegNeverReachesItsSpeed) {
  EXPECT_NEAR(Seconds({{10, 1000, 0}}, 1000), 2 * std::sqrt(10.0 / 1000), 1e-12);
}

TEST(SpeedProfile, OnePathCutIntoPiecesTakesTheSame) {
  EXPECT_NEAR(Seconds({{40, 50, 0}, {35, 50, 0}, {25, 50, 0}}, 1000), Seconds({{100, 50, 0}}, 1000),
              1e-12);
}

TEST(SpeedProfile, BrakingBeginsSeveralLegsBeforeTheEnd) {
  const std::vector<SpeedLeg> legs = {{100, 100, 0}, {1, 100, 0}, {1, 100, 0}, {1, 100, 0}};
  EXPECT_NEAR(Seconds(legs, 1000), Seconds({{103, 100, 0}}, 1000), 1e-12);
}

TEST(SpeedProfile, NothingTakesNoTime) {
  EXPECT_EQ(Seconds({}, 1000), 0);
  EXPECT_EQ(Seconds({{0, 10, 0}}, 1000), 0);
  EXPECT_EQ(Seconds({{0, 10, 0}}, 0), 0);
}

rc::Gen<std::vector<SpeedLeg>> AnyPath() {
  return rc::gen::container<std::vector<SpeedLeg>>(
      rc::gen::map(rc::gen::pair(rc::gen::inRange(1, 20000), rc::gen::inRange(10, 5000)),
                   [](const std::pair<int, int>& leg) {
                     return SpeedLeg{leg.first / 100.0, leg.second / 10.0, 0};
                   }));
}

RC_GTEST_PROP(SpeedProfile, AgreesWithAWalkInSmallSteps, ()) {
  auto path = *AnyPath();
  if (path.size() > 12) path.resize(12);
  if (path.empty()) return;
  const double acceleration = *rc::gen::inRange(100, 20000);
  const double stepped = SteppedSeconds(path, acceleration);
  RC_ASSERT(std::abs(Seconds(path, acceleration) - stepped) <= 0.01 * stepped);
}

RC_GTEST_PROP(SpeedProfile, MoreAccelerationNeverTakesLongerAndNeverLessThanNone, ()) {
  const auto path = *AnyPath();
  const double acceleration = *rc::gen::inRange(100, 20000);
  const double seconds = Seconds(path, acceleration);
  RC_ASSERT(seconds >= Seconds(path, acceleration * 2) - 1e-9);
  RC_ASSERT(Seconds(path, acceleration * 2) >= Seconds(path, 0) - 1e-9);
  RC_ASSERT(std::isfinite(seconds));
}

}  // namespace
}  // namespace torvane::partprogram

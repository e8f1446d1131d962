#include "partprogram/SpeedProfile.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace torvane::partprogram {

namespace {

/// Speed after `length` mm from `speed` on.
double Reached(double speed, double acceleration, double length) {
  return std::sqrt(speed * speed + 2 * acceleration * length);
}

/// Seconds of a leg that begins at `from` and ends at `to` mm/s.
double LegSeconds(const SpeedLeg& leg, double from, double to, double acceleration) {
  if (leg.Length <= 0) return 0;
  const double squares = (from * from + to * to) / 2;
  const double peak = std::min(leg.Speed, std::sqrt(acceleration * leg.Length + squares));
  const double ramps = (peak * peak - squares) / acceleration;  // mm
  const double cruise = std::max(0.0, leg.Length - ramps);
  return (2 * peak - from - to) / acceleration + cruise / peak;
}

/// Speeds at the start of each leg and at the end of the last.
std::vector<double> JointSpeeds(std::span<const SpeedLeg> legs, double acceleration) {
  std::vector<double> speeds(legs.size() + 1, 0.0);
  for (std::size_t i = 1; i < legs.size(); ++i) {
    const double highest = std::min(legs[i - 1].Speed, legs[i].Speed);
    speeds[i] = std::min(highest, Reached(speeds[i - 1], acceleration, legs[i - 1].Length));
  }
  for (std::size_t i = legs.size(); i > 1; --i) {
    const double braked = Reached(speeds[i], acceleration, legs[i - 1].Length);
    speeds[i - 1] = std::min(speeds[i - 1], braked);
  }
  return speeds;
}

}  // namespace

void TimeLegs(std::span<SpeedLeg> legs, double acceleration) {
  if (acceleration <= 0) {
    for (auto& leg : legs) leg.Seconds = leg.Length / leg.Speed;
    return;
  }
  const auto speeds = JointSpeeds(legs, acceleration);
  for (std::size_t i = 0; i < legs.size(); ++i) {
    legs[i].Seconds = LegSeconds(legs[i], speeds[i], speeds[i + 1], acceleration);
  }
}

}  // namespace torvane::partprogram

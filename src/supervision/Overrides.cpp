#include "supervision/Overrides.h"

#include <algorithm>
#include <cstddef>

namespace torvane::supervision {

namespace {

constexpr double Full = 100;
constexpr double TrialRun = 200;

double StepOf(int key) {
  const bool known = key >= 1 && static_cast<std::size_t>(key) <= OverrideSteps.size();
  return known ? OverrideSteps[static_cast<std::size_t>(key) - 1] : 0.0;
}

}  // namespace

double StepOverride(double percent, int key) {
  return StepOf(key) == 0 ? percent : std::clamp(percent + StepOf(key), 0.0, Full);
}

double StepLaserFeed(double percent, int key) {
  const double step = StepOf(key);
  const double wanted = std::max(0.0, percent + step);
  return step > 0 && wanted > Full ? TrialRun : wanted;
}

}  // namespace torvane::supervision

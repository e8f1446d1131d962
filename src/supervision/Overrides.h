// The keys by which an operator changes an override: what each makes of the value.
#pragma once

#include <array>

namespace torvane::supervision {

/// Keys 1 to 4 of an override, percent.
inline constexpr std::array<double, 4> OverrideSteps = {-20, -5, 5, 20};

/// `percent` after key 1 to 4, held between 0 and 100: the laser's power, and the feed from the
/// machine screen. Any other key changes nothing.
[[nodiscard]] double StepOverride(double percent, int key);

/// The feed from the laser screen: never below 0, and a key that adds and leads above 100 leads to
/// 200 at once, for trial runs. Between 100 and 200 the keys that take away work as everywhere.
[[nodiscard]] double StepLaserFeed(double percent, int key);

}  // namespace torvane::supervision

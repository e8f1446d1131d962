// The distances and speeds that the jog screen offers, and which of them the controller holds.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "core/LinkSettings.h"
#include "link/Trio.h"

namespace torvane::supervision {

/// One distance: the lines that set it.
struct JogDistance {
  std::string_view Caption;
  std::span<const std::string_view> Lines;
};

/// One speed, percent of the full jog speed. `UpTo` is the end of the band of stored percentages
/// that it stands for when the screen opens; the end itself belongs to it.
struct JogSpeed {
  std::string_view Caption;
  double Percent;
  double UpTo;
};

/// By option 1 to 7 less 1; the last distance is continuous.
[[nodiscard]] const std::array<JogDistance, 7>& JogDistances();
[[nodiscard]] const std::array<JogSpeed, 7>& JogSpeeds();
inline constexpr int ContinuousJog = 7;

/// Full jog speed in the controller's units, for a parameter that may be missing (0 or less).
[[nodiscard]] double JogSpeedLimit(double jogMaxSpeed);

/// Option 1 to 7 of the band that holds a stored percentage.
[[nodiscard]] int JogSpeedOption(double percent);

/// Sends what an option means, and at the opening takes over what the controller holds.
class JogSettings {
 public:
  JogSettings(link::Trio& trio, const core::LinkSettings& link) : trio_(trio), link_(link) {}

  /// Option 1 to 7.
  void SendDistance(int option);
  /// "VR(10)=" the percentage of the full speed, 2 decimals.
  void SendSpeed(int option);

  /// What the controller held when it was asked.
  struct Held {
    bool BySteps = false;
    int Distance = 0;  ///< mm, whole
    double Percent = 0;
  };
  [[nodiscard]] Held Read();

  /// The distance option that shows what the controller holds. A controller that jogs by steps
  /// selects continuous. Otherwise the stored distance itself is the option where it lies from 1
  /// to 6, and is not compared with the captions. Anything else is reset to continuous here, by
  /// two lines.
  [[nodiscard]] int DistanceOptionFor(const Held& held);

 private:
  link::Trio& trio_;
  const core::LinkSettings& link_;
};

}  // namespace torvane::supervision

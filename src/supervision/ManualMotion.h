// What the operator moves by hand besides jogging: reference, rollers, feed override, the two load
// positions and the direct move. Words to the controller only; it owns all motion.
#pragma once

#include <array>
#include <cstddef>

#include "core/System.h"
#include "link/Trio.h"
#include "supervision/OperatorDialogs.h"

namespace torvane::supervision {

/// The feed override as the machine screen's four keys change it, percent.
class FeedOverrideKeys {
 public:
  /// What one key adds, by its index 1 to 4 less 1, percent.
  static constexpr std::array<int, 4> Steps = {-20, -5, 5, 20};
  static constexpr int Least = 0;
  static constexpr int Most = 100;

  /// The value in force when the screen comes to the front; the poll does not change it later.
  void Take(float override);

  /// Key 1 to 4: the new value, held within Least and Most.
  int Press(int key);

  /// What was asked for last, percent.
  [[nodiscard]] int Value() const { return working_; }

 private:
  int working_ = 0;
};

/// X and Y of load position A, then of B, mm.
using LoadPositions = std::array<float, 4>;

class ManualMotion {
 public:
  ManualMotion(core::System& system, link::Trio& trio, OperatorDialogs& dialogs)
      : system_(system), trio_(trio), dialogs_(dialogs) {}

  /// `axes`: 0 all, 1 X, 2 Y, 3 Z. Refused with a warning while a cycle, a run or a feed hold
  /// stands; an error of the machine does not matter.
  void Reference(std::size_t axes);

  /// The three lines that switch the rollers on, or the one that switches them off. Off subtracts
  /// and counts on the bit that on has set, so only a state shown by the poll may lead here.
  void SwitchRollers(bool on);

  /// The override asked for, percent. Has no guard: it is made for a run.
  void RequestFeedOverride(int percent);

  /// As the controller holds them; 0 where it does not answer.
  [[nodiscard]] LoadPositions ReadLoadPositions();

  /// `position`: 0 A, 1 B. Its two values go to the controller in every case; the move itself is
  /// refused with a warning in a cycle, a run, a feed hold or an error.
  void GoToLoadPosition(std::size_t position, const LoadPositions& values);

  /// X, Y and Z, mm. Refused like a load position, and then nothing goes out at all.
  void MoveTo(const std::array<double, 3>& target);

 private:
  core::System& system_;
  link::Trio& trio_;
  OperatorDialogs& dialogs_;
};

}  // namespace torvane::supervision

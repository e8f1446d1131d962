// Who holds a jog key, and the stop that ends every hold.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/MachineData.h"
#include "link/JogLine.h"

namespace torvane::supervision {

/// By JogButton 1 to 4 less 1.
enum class JogDirection : std::size_t { Right, Up, Left, Down };
inline constexpr std::size_t JogDirections = 4;

/// Every jog word is followed by its stop: at the release of any of the keys, even while another
/// is held, and at whatever else ends the hold (another screen, a dialog, a lock, the window in
/// the background, a failed exchange). A word whose key is no longer held when it is carried out,
/// because a warning was answered first, is stopped at once.
///
///   let go --Hold--> held --Go, also repeated--> held, its word sent
///   held --Release, EndHolds, a failed word--> let go, "VR(48)=0"
///   let go --Go--> let go, its word and "VR(48)=0";  repeated: nothing
class JogControl {
 public:
  JogControl(link::JogLine& line, const core::MachineData& machine)
      : line_(line), machine_(machine) {}

  /// The operator's hand is on the key from here on; nothing is sent yet.
  void Hold(JogDirection direction);

  /// Sends the word of the key, again with every repeat of a held one. Waits for its prompt.
  void Go(JogDirection direction, bool repeat);

  /// A key was let go: the stop, whatever else is held.
  void Release(JogDirection direction);

  /// The holds can no longer be relied upon. Sends the stop if there was a word of theirs, nothing
  /// otherwise. Never waits.
  void EndHolds();

  [[nodiscard]] bool Held(JogDirection direction) const {
    return held_[Index(direction)] && !Ended();
  }

 private:
  /// The words' hold ended without one of these calls: an exchange failed, its stop is on its way.
  [[nodiscard]] bool Ended() const { return hold_ && !line_.Holds(*hold_); }
  void Tap(std::string_view word);
  void Forget();
  static std::size_t Index(JogDirection direction) { return static_cast<std::size_t>(direction); }

  link::JogLine& line_;
  const core::MachineData& machine_;
  std::array<bool, JogDirections> held_{};
  std::optional<link::JogLine::Hold> hold_;  ///< of the words that went out for the keys held
};

/// The labels of Y beside JogButton(2) and (4) in this order, by YDirection.
[[nodiscard]] std::array<const char*, 2> JogLabelsOfY(std::int16_t yDirection);

}  // namespace torvane::supervision

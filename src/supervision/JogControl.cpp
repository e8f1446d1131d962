#include "supervision/JogControl.h"

#include "link/Variables.h"

namespace torvane::supervision {

namespace {

using link::CommandLine::JogXMinus;
using link::CommandLine::JogXPlus;
using link::CommandLine::JogYMinus;
using link::CommandLine::JogYPlus;

using Words = std::array<std::string_view, JogDirections>;

/// Where plus Y runs up the screen the arrow up is plus.
constexpr Words YUp = {JogXPlus, JogYPlus, JogXMinus, JogYMinus};
constexpr Words YDown = {JogXPlus, JogYMinus, JogXMinus, JogYPlus};

constexpr std::int16_t PlusYUp = 1;

}  // namespace

std::array<const char*, 2> JogLabelsOfY(std::int16_t yDirection) {
  if (yDirection == PlusYUp) return {"Y+", "Y-"};
  return {"Y-", "Y+"};
}

void JogControl::Hold(JogDirection direction) {
  if (Ended()) Forget();
  held_[Index(direction)] = true;
}

void JogControl::Go(JogDirection direction, bool repeat) {
  const Words& words = machine_.YDirection == PlusYUp ? YUp : YDown;
  const std::string_view word = words[Index(direction)];
  if (!Held(direction)) return repeat ? void() : Tap(word);
  if (!hold_) hold_ = line_.BeginHold();
  line_.Jog(*hold_, word);
}

/// A word without a hold: its stop follows at once.
void JogControl::Tap(std::string_view word) {
  const auto hold = line_.BeginHold();
  line_.Jog(hold, word);
  if (line_.Holds(hold)) line_.Stop();
}

void JogControl::Release(JogDirection direction) {
  held_[Index(direction)] = false;
  hold_.reset();
  line_.Stop();
}

void JogControl::EndHolds() {
  const bool moved = hold_ && line_.Holds(*hold_);
  Forget();
  if (moved) line_.Stop();
}

void JogControl::Forget() {
  held_.fill(false);
  hold_.reset();
}

}  // namespace torvane::supervision

#include "simulator/KeypadLamps.h"

#include <algorithm>

namespace torvane::simulator {

namespace {

constexpr int Fan = 121;           ///< suction of the example keypad
constexpr double FanSeconds = 10;  ///< that it runs on
constexpr double Instant = 1e-12;  // s

}  // namespace

bool KeypadLamps::Later(int number, double value, double seconds) {
  if (!ControllerMemory::IsVariable(number)) return false;
  changes_.push_back({number, value, std::max(seconds, 0.0)});
  return true;
}

double KeypadLamps::NextIn() const {
  double next = -1;
  for (const auto& change : changes_) {
    if (next < 0 || change.SecondsLeft < next) next = std::max(change.SecondsLeft, 0.0);
  }
  return next;
}

void KeypadLamps::Put(int number, double value, const EventListener& tell) {
  if (memory_.Variable(number) == value) return;
  memory_.SetVariable(number, value);
  if (tell) tell({EventKind::ChangedByItself, number, value});
}

void KeypadLamps::Advance(double seconds, bool cutting, const EventListener& tell) {
  if (cutting) {
    if (fanLeft_ <= 0) Put(Fan, 1, tell);
    fanLeft_ = FanSeconds;
  } else if (fanLeft_ > 0) {
    fanLeft_ -= seconds;
    if (fanLeft_ <= 0) Put(Fan, 0, tell);
  }
  for (auto& change : changes_) change.SecondsLeft -= seconds;
  for (std::size_t i = 0; i < changes_.size();) {
    if (changes_[i].SecondsLeft > Instant) {
      ++i;
      continue;
    }
    const Change due = changes_[i];
    changes_.erase(changes_.begin() + static_cast<std::ptrdiff_t>(i));
    Put(due.Number, due.Value, tell);
  }
}

void KeypadLamps::PowerOn() {
  changes_.clear();
  fanLeft_ = 0;
}

}  // namespace torvane::simulator

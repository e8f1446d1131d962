#include "simulator/Rollers.h"

#include <algorithm>
#include <cmath>

#include "core/MachineState.h"
#include "simulator/MessageBoard.h"

namespace torvane::simulator {

namespace {

constexpr int RollerOutput = 8;
constexpr int Mask = 1 << LogicBit::Rollers;

void Say(const EventListener& tell, EventKind kind) {
  if (tell) tell({kind, 0, 0});
}

}  // namespace

void Rollers::MessagesWritten(double before, const EventListener& tell) {
  constexpr double Lowest = -2147483648.0;
  constexpr double Highest = 2147483647.0;
  const double now = memory_.Variable(Vr::LogicMessages);
  const bool up = (memory_.Word(Vr::LogicMessages) & Mask) != 0;
  const bool was = (static_cast<int>(std::clamp(std::trunc(before), Lowest, Highest)) & Mask) != 0;
  if (!was && now == before - Mask) return Say(tell, EventKind::RollersSpoilt);
  if (up == was) return;
  if (up) {
    secondsLeft_ = 0;
    return Say(tell, EventKind::RollersOn);
  }
  secondsLeft_ = std::max(options_.RollerSeconds, 1e-9);
}

void Rollers::Advance(double seconds, const EventListener& tell) {
  if (secondsLeft_ <= 0) return;
  secondsLeft_ -= seconds;
  if (secondsLeft_ > 1e-12) return;
  secondsLeft_ = 0;
  memory_.SetVariable(Vr::Status, memory_.Word(Vr::Status) & ~core::StatusBit::RollersOn);
  memory_.SetOutput(RollerOutput, 0);
  Say(tell, EventKind::RollersOff);
}

}  // namespace torvane::simulator

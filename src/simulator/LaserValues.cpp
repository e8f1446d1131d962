#include "simulator/LaserValues.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace torvane::simulator {

namespace {

struct LiveValue {
  int Variable;
  double Amplitude;  ///< in the variable's own unit; 0 for codes, which stay
  double Seconds;    ///< of one wave
};

constexpr LiveValue LiveValues[] = {
    {70, 0, 1},       // programmed power, percent
    {71, 0, 1},       // mode
    {72, 3, 2.3},     // duty, percent
    {73, 12, 1.7},    // frequency, Hz
    {74, 0, 1},       // ramping mode
    {75, 0.05, 4.1},  // ramp up
    {76, 0.05, 3.7},  // ramp down
    {77, 2, 5.3},     // minimum power of a ramp, percent
    {78, 0, 1},       // assist gas
    {30, 0, 1},       // automatic head compensation
    {31, 0.08, 0.9},  // tip height, mm
};

}  // namespace

void LaserValues::Show(ControllerMemory& memory, double seconds) {
  for (const auto& live : LiveValues) {
    const double still =
        still_.try_emplace(live.Variable, memory.Variable(live.Variable)).first->second;
    const double wave = std::sin(2 * std::numbers::pi * seconds / live.Seconds);
    memory.SetVariable(live.Variable,
                       live.Amplitude > 0 ? std::max(0.0, still + live.Amplitude * wave) : still);
  }
}

void LaserValues::Settle(ControllerMemory& memory) {
  for (const auto& [number, value] : still_) memory.SetVariable(number, value);
  still_.clear();
}

void LaserValues::Written(int number, double value) {
  const auto found = still_.find(number);
  if (found != still_.end()) found->second = value;
}

}  // namespace torvane::simulator

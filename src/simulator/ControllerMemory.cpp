#include "simulator/ControllerMemory.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace torvane::simulator {

namespace {

struct PowerOnValue {
  int Number;
  double Value;
};

/// All others are at 0.
constexpr PowerOnValue PowerOnValues[] = {
    {Vr::JogSpeed, 2000},
    {Vr::JogStep, 10},
    {Vr::Scale, 1},
    {Vr::FeedRequest, 100},
    {Vr::FeedOverride, 100},
    {Vr::PowerRequest, 100},
    {Vr::ProgrammedPower, 80},
    {Vr::TableInForce, 1},
    {72, 100},   // laser duty, percent
    {73, 1000},  // laser frequency, Hz
    {31, 1},     // tip height, mm
};

template <typename Array>
bool InRange(const Array& array, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < array.size();
}

template <typename Array>
double ValueAt(const Array& array, int index) {
  return InRange(array, index) ? array[static_cast<std::size_t>(index)] : 0.0;
}

}  // namespace

ControllerMemory::ControllerMemory() { PowerOn(); }

void ControllerMemory::PowerOn() {
  variables_ = {};
  namedValues_ = {};
  outputs_ = {};
  axes_ = {};
  table_.assign(TableCells, 0.0);
  for (const auto& entry : PowerOnValues) SetVariable(entry.Number, entry.Value);
}

double ControllerMemory::Variable(int number) const { return ValueAt(variables_, number); }

void ControllerMemory::SetVariable(int number, double value) {
  if (InRange(variables_, number)) variables_[static_cast<std::size_t>(number)] = value;
}

bool ControllerMemory::WriteVariable(int number, double value) {
  if (!InRange(variables_, number)) return false;
  const double before = Variable(number);
  SetVariable(number, value);
  if (listener_ != nullptr) listener_->VariableWritten(number, before);
  return true;
}

int ControllerMemory::Word(int number) const {
  const double value = std::trunc(Variable(number));
  const double held = std::clamp(value, static_cast<double>(std::numeric_limits<int>::min()),
                                 static_cast<double>(std::numeric_limits<int>::max()));
  return static_cast<int>(held);
}

double ControllerMemory::NamedValue(int number) const { return ValueAt(namedValues_, number); }

bool ControllerMemory::WriteNamedValue(int number, double value) {
  if (!InRange(namedValues_, number)) return false;
  namedValues_[static_cast<std::size_t>(number)] = value;
  return true;
}

double ControllerMemory::TableValue(int index) const { return ValueAt(table_, index); }

std::span<const double> ControllerMemory::TableRange(int index, int count) const {
  if (index < 0 || count < 0 || index > TableCells - count) return {};
  return std::span(table_).subspan(static_cast<std::size_t>(index),
                                   static_cast<std::size_t>(count));
}

bool ControllerMemory::WriteTable(int index, std::span<const double> values) {
  const auto room = static_cast<std::size_t>(std::max(0, TableCells - std::max(0, index)));
  if (index < 0 || values.empty() || values.size() > room) return false;
  std::copy(values.begin(), values.end(), table_.begin() + index);
  if (listener_ != nullptr) listener_->TableWritten(index, static_cast<int>(values.size()));
  return true;
}

bool ControllerMemory::WriteRestartMark(int index, double mark) {
  if (!InRange(table_, index)) return false;
  table_[static_cast<std::size_t>(index)] = mark;
  if (listener_ != nullptr) listener_->RestartMarkWritten(index);
  return true;
}

double ControllerMemory::Output(int output) const { return ValueAt(outputs_, output); }

bool ControllerMemory::WriteOutput(int output, double value) {
  if (!InRange(outputs_, output)) return false;
  SetOutput(output, value);
  if (listener_ != nullptr) listener_->OutputWritten(output, value);
  return true;
}

void ControllerMemory::SetOutput(int output, double value) {
  if (InRange(outputs_, output)) outputs_[static_cast<std::size_t>(output)] = value;
}

double ControllerMemory::Axis(AxisQuantity quantity, int axis) const {
  return ValueAt(axes_[static_cast<std::size_t>(quantity)], axis);
}

void ControllerMemory::SetAxis(AxisQuantity quantity, int axis, double value) {
  auto& values = axes_[static_cast<std::size_t>(quantity)];
  if (InRange(values, axis))
    values[static_cast<std::size_t>(axis)] = std::isfinite(value) ? value : 0.0;
}

}  // namespace torvane::simulator

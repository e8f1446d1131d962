#include "simulator/MessageBoard.h"

#include <algorithm>

namespace torvane::simulator {

namespace {

/// Bits that make the message button turn to its warning colours beside codes and raised bits.
constexpr unsigned WarningBits = 1U << LogicBit::ProgramStop | 1U << LogicBit::Refused |
                                 1U << LogicBit::TableIncomplete | 1U << LogicBit::RestartUnknown;

constexpr unsigned Mask(int bit) { return bit >= 0 && bit < LogicBit::Count ? 1U << bit : 0U; }

}  // namespace

void MessageBoard::Set(int bit, bool on) {
  const auto word = static_cast<unsigned>(memory_.Word(Vr::LogicMessages));
  const unsigned changed = on ? word | Mask(bit) : word & ~Mask(bit);
  if (changed != word) memory_.SetVariable(Vr::LogicMessages, static_cast<int>(changed));
}

bool MessageBoard::IsSet(int bit) const {
  return (static_cast<unsigned>(memory_.Word(Vr::LogicMessages)) & Mask(bit)) != 0;
}

void MessageBoard::SetCode(int code) {
  code_ = code;
  memory_.SetVariable(Vr::IoMessage, code);
}

void MessageBoard::RaiseBit(int bit) {
  raised_ |= Mask(bit);
  Set(bit, true);
}

void MessageBoard::RaiseFor(int bit, double seconds) {
  timed_ |= Mask(bit);
  secondsLeft_ = seconds;
  Set(bit, true);
}

void MessageBoard::Clear() {
  SetCode(0);
  for (int bit = 0; bit < LogicBit::Count; ++bit) {
    if (((raised_ | timed_) & Mask(bit)) != 0) Set(bit, false);
  }
  raised_ = 0;
  timed_ = 0;
  secondsLeft_ = 0;
}

void MessageBoard::PowerOn() {
  code_ = 0;
  raised_ = 0;
  timed_ = 0;
  secondsLeft_ = 0;
}

void MessageBoard::Advance(double seconds) {
  if (timed_ == 0) return;
  secondsLeft_ -= seconds;
  if (secondsLeft_ > 0) return;
  for (int bit = 0; bit < LogicBit::Count; ++bit) {
    if ((timed_ & ~raised_ & Mask(bit)) != 0) Set(bit, false);
  }
  timed_ = 0;
}

bool MessageBoard::InError() const {
  const auto word = static_cast<unsigned>(memory_.Word(Vr::LogicMessages));
  return code_ > 0 || raised_ != 0 || (word & WarningBits) != 0;
}

}  // namespace torvane::simulator

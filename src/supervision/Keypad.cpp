#include "supervision/Keypad.h"

#include "core/General.h"
#include "link/Variables.h"
#include "supervision/CycleRules.h"
#include "supervision/ScopedFlag.h"

namespace torvane::supervision {

namespace {

/// "(&A)" for key 1, to "(&P)".
std::string KeyMark(int key) { return std::string("(&") + static_cast<char>('@' + key) + ")"; }

}  // namespace

void Keypad::LoadKeypad() {
  const core::KeypadTable before = keys_;
  ++readings_;
  core::LoadKeypadFile(files_, system_.Directories, keys_);
  // Until its variable has been read again, a key goes by what it knew.
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    if (keys_[i].Variable == before[i].Variable) keys_[i].LastValue = before[i].LastValue;
  }
}

bool Keypad::ReadValue(int key) {
  if (!Entry(key).Active) return true;
  const int reading = readings_;
  const std::string variable = Entry(key).Variable;
  const std::int16_t value = trio_.GetRspnsInt(variable);
  if (reading != readings_) return false;
  Entry(key).LastValue = value;
  return true;
}

KeyLook Keypad::Look(int key) const {
  const core::KeypadEntry& entry = Entry(key);
  if (!entry.Active) return {false, false, false, KeyMark(key)};
  const bool on = entry.Latching && entry.LastValue == entry.ValueOn;
  return {true, entry.Latching, on,
          KeyMark(key) + "  " + (on ? entry.CaptionOn : entry.CaptionOff)};
}

bool Keypad::Allowed(int key) const { return UserKeyAllowed(Entry(key).StateMask, system_.State); }

void Keypad::Press(int key) {
  const core::KeypadEntry entry = Entry(key);
  if (keypadUpdating_ || !entry.Active || entry.Latching || !Allowed(key)) return;
  Send(entry, entry.ValueOn);
}

bool Keypad::Flip(int key) {
  const core::KeypadEntry entry = Entry(key);
  if (keypadUpdating_ || !entry.Active || !entry.Latching) return true;
  if (!Allowed(key)) return false;
  const std::int16_t value = entry.LastValue != entry.ValueOn ? entry.ValueOn : entry.ValueOff;
  const int reading = readings_;
  Send(entry, value);
  if (reading == readings_) Entry(key).LastValue = value;
  return true;
}

void Keypad::Send(const core::KeypadEntry& entry, std::int16_t value) {
  const ScopedFlag updating(keypadUpdating_);
  trio_.Download(link::Assignment(entry.Variable, core::IntegerText(value)));
}

}  // namespace torvane::supervision

// The user keypad: what its sixteen keys send, and when they may.
#pragma once

#include <cstdint>
#include <string>

#include "core/KeypadFile.h"
#include "core/System.h"
#include "link/Trio.h"
#include "platform/FileSystem.h"

namespace torvane::supervision {

/// How a key shows on the screen.
struct KeyLook {
  bool Active = false;    ///< otherwise hidden
  bool Latching = false;  ///< the toggle shows, not the button
  bool On = false;        ///< of a toggle
  std::string Caption;    ///< "(&A)  " and its text
};

/// Keys count from 1 to 16. Every call that asks or sends waits; the file may have been read again
/// when it returns.
class Keypad {
 public:
  Keypad(core::System& system, platform::FileSystem& files, link::Trio& trio)
      : system_(system), files_(files), trio_(trio) {}

  /// Reads Keypad.cfg afresh. A missing file is a RuntimeFault.
  void LoadKeypad();

  /// Asks for the variable of an active key. False when the file was read again meanwhile.
  bool ReadValue(int key);

  [[nodiscard]] KeyLook Look(int key) const;
  /// The machine's state of the last poll allows the key.
  [[nodiscard]] bool Allowed(int key) const;

  /// A push button: sends its value. Nothing while the state forbids it or another key is sending.
  void Press(int key);

  /// A toggle: sends the value that the last one read or sent asks for, whatever the key looks
  /// like. False when the state forbids it: the variable is then to be read again.
  bool Flip(int key);

 private:
  [[nodiscard]] core::KeypadEntry& Entry(int key) {
    return keys_[static_cast<std::size_t>(key - 1)];
  }
  [[nodiscard]] const core::KeypadEntry& Entry(int key) const {
    return keys_[static_cast<std::size_t>(key - 1)];
  }
  void Send(const core::KeypadEntry& entry, std::int16_t value);

  core::System& system_;
  platform::FileSystem& files_;
  link::Trio& trio_;
  core::KeypadTable keys_;
  int readings_ = 0;             ///< of the file
  bool keypadUpdating_ = false;  ///< a key is sending
};

}  // namespace torvane::supervision

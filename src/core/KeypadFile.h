// Keypad.cfg: the sixteen keys that a machine builder defines for the user keypad.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::core {

inline constexpr int KeypadKeys = 16;

struct KeypadEntry {
  bool Active = false;
  bool Latching = false;       ///< a toggle; otherwise a push button
  std::int16_t StateMask = 0;  ///< bits of UserKeyState; 0 works in every state
  std::string CaptionOff;      ///< at most 24 characters
  std::string CaptionOn;       ///< likewise; that of a button is CaptionOff
  std::string Variable;        ///< at most 12 characters, such as "VR(120)"
  std::int16_t ValueOn = 0;
  std::int16_t ValueOff = 0;   ///< of a button: ValueOn
  std::int16_t LastValue = 0;  ///< last read or sent
};

/// Key n is at n - 1.
using KeypadTable = std::array<KeypadEntry, KeypadKeys>;

/// Resets the table and takes the entries up to the field "******" or the end; an entry that is cut
/// short there does not count. A number outside 1 to 16, and a type other than M or L, skip the
/// rest of their line. A key given twice keeps the last entry. One without a variable is no key.
void ReadKeypadFile(std::string_view text, KeypadTable& keys);

/// The file must be there: RuntimeFault.
void LoadKeypadFile(platform::FileSystem& files, const DirectorySet& directories,
                    KeypadTable& keys);

}  // namespace torvane::core

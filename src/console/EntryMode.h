// Which characters a pad takes in which entry mode.
#pragma once

#include <string_view>

namespace torvane::console {

/// Entry modes by their number; a number from 1 up is a text of that length.
namespace EntryMode {
inline constexpr int Digits = -1;
inline constexpr int SignedDigits = -2;
inline constexpr int Decimal = -4;
inline constexpr int SignedDecimal = -5;
inline constexpr int Arithmetic = -6;
inline constexpr int ShortName = -8;
inline constexpr int Name = -32;
inline constexpr int LongName = -321;
inline constexpr int SearchName = -322;
}  // namespace EntryMode

/// Characters of the two control keys that every mode takes.
inline constexpr int BackspaceCharacter = 8;
inline constexpr int EnterCharacter = 13;

/// The key when the mode accepts it, 0 when it does not. `key` is a character code, `text` what
/// is in the box, `selectionLength` how much of it is selected. The caller beeps on a 0.
[[nodiscard]] int FilterKey(int key, int mode, std::string_view text, int selectionLength);

}  // namespace torvane::console

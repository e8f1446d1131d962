// What the keys of a pad do to the text of its box: no window, only text, cursor and selection.
#pragma once

#include <string>

namespace torvane::console {

/// The box of a pad. Cursor is the place before a character, 0 to the length, and one more after a
/// rejected key; the selection runs from the cursor on.
struct PadText {
  std::string Text;
  int Cursor = 0;
  int SelectionLength = 0;

  friend bool operator==(const PadText&, const PadText&) = default;
};

/// The state in which a pad opens: a text that is not empty is selected whole.
[[nodiscard]] PadText OpenPad(std::string text);

/// Puts a character in for the selection. The text is trimmed first. `character` 0, the answer of
/// the filter to a rejected key, ends the text there: what was after the cursor goes, and the
/// cursor still moves on by one, after the end of the text.
[[nodiscard]] PadText InsertCharacter(PadText pad, int character);

/// "<<<" and ">>>": a selection collapses to its start or its end, else the cursor moves by one.
[[nodiscard]] PadText MoveLeft(PadText pad);
[[nodiscard]] PadText MoveRight(PadText pad);

/// "CLEAR".
[[nodiscard]] PadText ClearText(const PadText& pad);

/// "DEL": the selection, or the character left of the cursor.
[[nodiscard]] PadText DeleteButtonPressed(PadText pad);

/// The key Backspace: the same on the trimmed text, so that a blank just typed goes alone.
[[nodiscard]] PadText BackspaceTyped(PadText pad);

/// The key Delete: of the trimmed text the selection, or the character right of the cursor.
[[nodiscard]] PadText DeleteTyped(PadText pad);

}  // namespace torvane::console

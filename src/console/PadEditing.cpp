#include "console/PadEditing.h"

#include <algorithm>

#include "core/General.h"

namespace torvane::console {

namespace {

int LengthOf(const PadText& pad) { return static_cast<int>(pad.Text.size()); }

/// Cursor and selection within the text, as the box itself keeps them.
PadText Bounded(PadText pad) {
  pad.Cursor = std::clamp(pad.Cursor, 0, LengthOf(pad));
  pad.SelectionLength = std::clamp(pad.SelectionLength, 0, LengthOf(pad) - pad.Cursor);
  return pad;
}

PadText Trimmed(PadText pad) {
  pad.Text = std::string(core::Trim(pad.Text));
  return Bounded(std::move(pad));
}

/// Trims the text and leaves the cursor where the box has it, which may be after the blanks that
/// went.
PadText TrimmedUnderCursor(PadText pad) {
  pad = Bounded(std::move(pad));
  const int cursor = pad.Cursor;
  pad = Trimmed(std::move(pad));
  pad.Cursor = cursor;
  return pad;
}

PadText WithoutSelection(PadText pad) {
  pad = Bounded(std::move(pad));
  pad.Text.erase(static_cast<std::size_t>(pad.Cursor),
                 static_cast<std::size_t>(pad.SelectionLength));
  pad.SelectionLength = 0;
  return pad;
}

}  // namespace

PadText OpenPad(std::string text) {
  const int length = static_cast<int>(text.size());
  return {std::move(text), 0, length};
}

PadText InsertCharacter(PadText pad, int character) {
  pad = Trimmed(std::move(pad));
  std::string left = pad.Text.substr(0, static_cast<std::size_t>(pad.Cursor));
  if (character != 0) {
    left += static_cast<char>(character);
    left += pad.Text.substr(static_cast<std::size_t>(pad.Cursor) +
                            static_cast<std::size_t>(pad.SelectionLength));
  }
  return {std::move(left), pad.Cursor + 1, 0};
}

PadText MoveLeft(PadText pad) {
  pad = Bounded(std::move(pad));
  if (pad.SelectionLength > 0) {
    pad.SelectionLength = 0;
  } else if (pad.Cursor > 0) {
    --pad.Cursor;
  }
  return pad;
}

PadText MoveRight(PadText pad) {
  pad = Bounded(std::move(pad));
  if (pad.SelectionLength > 0) {
    pad.Cursor += pad.SelectionLength;
    pad.SelectionLength = 0;
  } else if (pad.Cursor < LengthOf(pad)) {
    ++pad.Cursor;
  }
  return pad;
}

PadText ClearText(const PadText&) { return {}; }

namespace {

/// A cursor after the text has nothing on its left.
PadText RemoveLeft(PadText pad) {
  if (pad.SelectionLength > 0) return WithoutSelection(std::move(pad));
  if (pad.Cursor > 0) {
    --pad.Cursor;
    if (pad.Cursor < LengthOf(pad)) pad.Text.erase(static_cast<std::size_t>(pad.Cursor), 1);
  }
  return pad;
}

}  // namespace

PadText DeleteButtonPressed(PadText pad) { return RemoveLeft(Bounded(std::move(pad))); }

PadText BackspaceTyped(PadText pad) {
  return Bounded(RemoveLeft(TrimmedUnderCursor(std::move(pad))));
}

PadText DeleteTyped(PadText pad) {
  pad = Trimmed(std::move(pad));
  if (pad.SelectionLength > 0) return WithoutSelection(std::move(pad));
  if (pad.Cursor < LengthOf(pad)) pad.Text.erase(static_cast<std::size_t>(pad.Cursor), 1);
  return pad;
}

}  // namespace torvane::console

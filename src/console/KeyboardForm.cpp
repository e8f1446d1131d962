#include "console/KeyboardForm.h"

#include <string_view>

namespace torvane::console {

namespace {

/// KeyButton 0 to 46: digits, letters, then these.
constexpr std::string_view Symbols = " +-=%().!&#";
constexpr int FirstLetter = 10;
constexpr int FirstSymbol = 36;
constexpr int SpaceKey = 36;

char CharacterOf(int index) {
  if (index < FirstLetter) return static_cast<char>('0' + index);
  if (index < FirstSymbol) return static_cast<char>('A' + index - FirstLetter);
  return Symbols[static_cast<std::size_t>(index - FirstSymbol)];
}

std::string CaptionOf(int index) {
  if (index == SpaceKey) return "SPACE";
  const char character = CharacterOf(index);
  return character == '&' ? "&&" : std::string(1, character);
}

int KeyOfCharacter(char character) {
  for (int index = 0; index < KeyboardForm::KeyCount; ++index) {
    if (CharacterOf(index) == character) return index;
  }
  return SpaceKey;
}

/// The rows of the pad; a row of fewer than ten keys stands in the middle.
constexpr std::array<std::string_view, 5> KeyRows = {"1234567890", "+-=%().!&#", "QWERTYUIOP",
                                                     "ASDFGHJKL", "ZXCVBNM"};
constexpr int KeysInARow = 10;

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }

}  // namespace

KeyboardForm::KeyboardForm(const ScreenStart& start) : PadForm(start, "KeyboardBox") {
  for (int index = 0; index < KeyCount; ++index) {
    keys_[static_cast<std::size_t>(index)] = &AddPadKey(
        Numbered("KeyButton", index), CaptionOf(index), Role::MainKey,
        [this, index] { return static_cast<unsigned char>(InCase(CharacterOf(index))); });
  }
  shift_ = &AddTwoState(Body(), "ShiftButton", "CAPS LOCK", Role::SubKey, [](bool) {});
}

void KeyboardForm::Activated() {
  shift_->SetDown(true, toolkit::Events::Silent);
  PadForm::Activated();
}

char KeyboardForm::InCase(char character) const {
  constexpr char CaseDistance = 'a' - 'A';
  if (IsUpper(character) && !shift_->Down()) return static_cast<char>(character + CaseDistance);
  if (IsLower(character) && shift_->Down()) return static_cast<char>(character - CaseDistance);
  return character;
}

char KeyboardForm::Typed(char character) const { return InCase(character); }

void KeyboardForm::OkPressed() { Accept(TrimmedText()); }

void KeyboardForm::Layout(const toolkit::Metrics& metrics) {
  const int rowWidth = KeysInARow * metrics.Px(64) + (KeysInARow - 1) * metrics.Gap;
  const int side = metrics.Px(156);
  const int rows = static_cast<int>(KeyRows.size());
  const int gridHeight = rows * metrics.PadKeyHeight + (rows - 1) * metrics.Gap;
  toolkit::Area rest = PlaceBody(metrics, rowWidth + metrics.Margin + side + 2 * metrics.Margin,
                                 metrics.EntryHeight + gridHeight + metrics.PadKeyHeight +
                                     2 * metrics.Margin + metrics.Margin + metrics.Gap * 2);
  PadAreas areas;
  areas.Box = toolkit::TakeTop(rest, metrics.EntryHeight, metrics.Margin);
  toolkit::Area bottom = toolkit::TakeBottom(rest, metrics.PadKeyHeight, metrics.Gap * 2);
  areas.Cancel = toolkit::TakeRight(bottom, side, metrics.Gap);
  areas.Ok = toolkit::TakeRight(bottom, side, metrics.Margin);
  shift_->Place(toolkit::TakeLeft(bottom, side, metrics.Gap));
  keys_[SpaceKey]->Place(bottom);
  toolkit::Area column = toolkit::TakeRight(rest, side, metrics.Margin);
  const auto cells = toolkit::Rows(column, rows, metrics.Gap);
  areas.CursorLeft = cells[0];
  areas.CursorRight = cells[1];
  areas.Delete = cells[2];
  areas.Clear = cells[3];
  PlaceCommon(areas);
  LayoutRows(rest, metrics);
}

void KeyboardForm::LayoutRows(toolkit::Area rest, const toolkit::Metrics& metrics) {
  const auto lines = toolkit::Rows(rest, static_cast<int>(KeyRows.size()), metrics.Gap);
  const int key = (rest.Width - (KeysInARow - 1) * metrics.Gap) / KeysInARow;
  for (std::size_t row = 0; row < KeyRows.size(); ++row) {
    const int count = static_cast<int>(KeyRows[row].size());
    const int width = count * key + (count - 1) * metrics.Gap;
    toolkit::Area line = lines[row];
    line.X += (line.Width - width) / 2;
    line.Width = width;
    const auto cells = toolkit::Columns(line, count, metrics.Gap);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      keys_[static_cast<std::size_t>(KeyOfCharacter(KeyRows[row][i]))]->Place(cells[i]);
    }
  }
}

}  // namespace torvane::console

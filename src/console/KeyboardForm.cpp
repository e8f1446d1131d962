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

/// The rows of the pad; a row of fewer than ten keys is in the middle.
constexpr std::array<std::string_view, 5> KeyRows = {"1234567890", "+-=%().!&#", "QWERTYUIOP",
                                                     "ASDFGHJKL", "ZXCVBNM"};
constexpr int KeysInARow = 10;
constexpr double CharWide = 64;
constexpr double KeyGap = 8;
constexpr double SideWide = 156;

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
  std::vector<Cell> rows;
  for (const std::string_view line : KeyRows) {
    std::vector<Cell> cells = {Space()};
    for (const char character : line) {
      cells.push_back(Cell(keys_[static_cast<std::size_t>(KeyOfCharacter(character))])
                          .Wide(CharWide)
                          .High(PadKeyHigh));
    }
    cells.push_back(Space());
    rows.push_back(Columns(std::move(cells)));
  }
  Arrange(KeysInARow * CharWide + (KeysInARow + 1) * KeyGap, Rows(std::move(rows)), SideWide,
          {Cell(shift_).Wide(SideWide).High(PadKeyHigh), Cell(keys_[SpaceKey]).High(PadKeyHigh)});
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

}  // namespace torvane::console

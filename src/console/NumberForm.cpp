#include "console/NumberForm.h"

#include "core/General.h"

namespace torvane::console {

namespace {

/// NumberButton 0 to 16: the character, its place in the pad's grid, and how many cells it takes
/// to the right and down.
struct NumberKey {
  char Character;
  int Row;
  int Column;
  int Wide = 1;
  int High = 1;
};

constexpr std::array<NumberKey, 17> NumberKeys = {{
    {'0', 3, 0, 2, 1},
    {'1', 2, 0},
    {'2', 2, 1},
    {'3', 2, 2},
    {'4', 1, 0},
    {'5', 1, 1},
    {'6', 1, 2},
    {'7', 0, 0},
    {'8', 0, 1},
    {'9', 0, 2},
    {'.', 3, 2},
    {'+', 3, 3},
    {'-', 2, 3},
    {'*', 1, 3},
    {'/', 0, 3},
    {'(', 0, 4, 1, 2},
    {')', 2, 4, 1, 2},
}};

constexpr int GridRows = 4;
constexpr int GridColumns = 5;

}  // namespace

NumberForm::NumberForm(const ScreenStart& start) : PadForm(start, "NumberBox") {
  for (std::size_t i = 0; i < NumberKeys.size(); ++i) {
    const char character = NumberKeys[i].Character;
    keys_[i] = &AddPadKey(Numbered("NumberButton", static_cast<int>(i)), std::string(1, character),
                          Role::MainKey, [character] { return static_cast<int>(character); });
  }
}

void NumberForm::OkPressed() {
  const core::Calculation result = core::Calculate(TrimmedText());
  const bool nothing = result.Empty || result.ArithmeticError;
  Accept(nothing ? std::string() : core::NumberText(result.Value, -1));
}

void NumberForm::Layout(const toolkit::Metrics& metrics) {
  const int keyWidth = metrics.Px(84);
  const int side = metrics.Px(168);
  const int gridWidth = GridColumns * keyWidth + (GridColumns - 1) * metrics.Gap;
  const int gridHeight = GridRows * metrics.PadKeyHeight + (GridRows - 1) * metrics.Gap;
  toolkit::Area rest =
      PlaceBody(metrics, gridWidth + metrics.Margin + side + 2 * metrics.Margin,
                metrics.EntryHeight + gridHeight + metrics.KeyHeight + 4 * metrics.Margin);
  PadAreas areas;
  areas.Box = toolkit::TakeTop(rest, metrics.EntryHeight, metrics.Margin);
  toolkit::Area answers = toolkit::TakeBottom(rest, metrics.KeyHeight, metrics.Margin);
  areas.Cancel = toolkit::TakeRight(answers, side, metrics.Gap);
  areas.Ok = toolkit::TakeRight(answers, side);
  const auto column =
      toolkit::Rows(toolkit::TakeRight(rest, side, metrics.Margin), GridRows, metrics.Gap);
  areas.CursorLeft = column[0];
  areas.CursorRight = column[1];
  areas.Delete = column[2];
  areas.Clear = column[3];
  PlaceCommon(areas);
  const auto cells = toolkit::Cells(rest, GridRows, GridColumns, metrics.Gap);
  const auto cell = [&cells](int row, int at) {
    return cells[static_cast<std::size_t>(row) * GridColumns + static_cast<std::size_t>(at)];
  };
  for (std::size_t i = 0; i < NumberKeys.size(); ++i) {
    const NumberKey& key = NumberKeys[i];
    const toolkit::Area first = cell(key.Row, key.Column);
    const toolkit::Area last = cell(key.Row + key.High - 1, key.Column + key.Wide - 1);
    keys_[i]->Place({first.X, first.Y, last.Right() - first.X, last.Bottom() - first.Y});
  }
}

}  // namespace torvane::console

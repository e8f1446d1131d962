#include "console/NumberForm.h"

#include <array>
#include <map>
#include <string_view>

#include "core/General.h"

namespace torvane::console {

namespace {

/// NumberButton 0 to 16.
constexpr std::string_view Characters = "0123456789.+-*/()";

/// The rows of the pad; the brackets are beside them, each over two rows.
constexpr std::array<std::string_view, 4> KeyRows = {"789/", "456*", "123-", "0.+"};
constexpr double CharWide = 84;
constexpr double KeyGap = 8;
constexpr double TwoKeysWide = 2 * CharWide + KeyGap;
constexpr double SideWide = 168;

}  // namespace

NumberForm::NumberForm(const ScreenStart& start) : PadForm(start, "NumberBox") {
  std::map<char, toolkit::Button*> keys;
  for (const char character : Characters) {
    keys[character] = &AddPadKey(Numbered("NumberButton", static_cast<int>(keys.size())),
                                 std::string(1, character), Role::MainKey,
                                 [character] { return static_cast<int>(character); });
  }
  std::vector<Cell> rows;
  for (const std::string_view line : KeyRows) {
    std::vector<Cell> cells;
    for (const char character : line) {
      cells.push_back(
          Cell(keys[character]).Wide(character == '0' ? TwoKeysWide : CharWide).High(PadKeyHigh));
    }
    rows.push_back(Columns(std::move(cells)));
  }
  const Cell brackets = Rows(Sharing({keys['('], keys[')']})).Wide(CharWide);
  Arrange(5 * CharWide + 4 * KeyGap, Columns({Rows(std::move(rows)), brackets}), SideWide,
          {Space()});
}

void NumberForm::OkPressed() {
  const core::Calculation result = core::Calculate(TrimmedText());
  const bool nothing = result.Empty || result.ArithmeticError;
  Accept(nothing ? std::string() : core::NumberText(result.Value, -1));
}

}  // namespace torvane::console

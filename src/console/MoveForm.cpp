#include "console/MoveForm.h"

#include "console/ConsoleServices.h"
#include "console/EntryMode.h"
#include "core/General.h"

namespace torvane::console {

using toolkit::Key;

namespace {

constexpr std::array<const char*, 3> Labels = {"X  POSITION :  &1", "Y  POSITION :  &2",
                                               "Z  POSITION :  &3"};
constexpr int ShownDecimals = 2;
constexpr int EnteredDecimals = -1;

}  // namespace

MoveForm::MoveForm(const ScreenStart& start)
    : Screen(start), motion_(System(), Services().Trio, Services().Dialogs) {
  std::vector<std::vector<Cell>> lines;
  for (std::size_t i = 0; i < Labels.size(); ++i) {
    const int number = static_cast<int>(i) + 1;
    auto& label = AddLabel(Body(), Numbered("MoveLabel", number), Labels[i]);
    auto& box = AddNumberBox(Body(), Numbered("MoveBox", number), EntryMode::Arithmetic,
                             EnteredDecimals, [](double) {});
    AddKey(static_cast<Key>('0' + number), [&box] { box.Press(); });
    boxes_[i] = &box;
    lines.push_back({label, box});
  }
  auto& move = AddButton(Body(), "MoveButton", "&MOVE", Role::General, [this] { Move(); });
  SetHome(move);
  auto& exit = AddExitButton(Body());
  SetGrid(560, Rows({Table({240, 0}, lines),
                     Columns({Cell(move).Wide(KeyWide), Space(), Cell(exit).Wide(KeyWide)})})
                   .Spaced(SectionGap));
}

void MoveForm::Activated() {
  const auto& state = System().State;
  const std::array<float, 3> position = {state.XPosition, state.YPosition, state.ZPosition};
  for (std::size_t i = 0; i < boxes_.size(); ++i)
    boxes_[i]->SetText(core::NumberText(position[i], ShownDecimals));
}

void MoveForm::Move() {
  std::array<double, 3> target{};
  for (std::size_t i = 0; i < target.size(); ++i)
    target[i] = core::LeadingNumber(boxes_[i]->Text());
  motion_.MoveTo(target);
}

}  // namespace torvane::console

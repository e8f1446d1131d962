#include "console/LoadForm.h"

#include "console/ConsoleServices.h"
#include "console/EntryMode.h"
#include "core/General.h"

namespace torvane::console {

using toolkit::Key;

namespace {

constexpr std::array<const char*, 4> Labels = {"X :  &1", "Y :  &2", "X :  &3", "Y :  &4"};
constexpr std::array<const char*, 2> Captions = {"A", "B"};
constexpr int ShownDecimals = 2;
constexpr int EnteredDecimals = -1;

}  // namespace

LoadForm::LoadForm(const ScreenStart& start)
    : Screen(start), motion_(System(), Services().Trio, Services().Dialogs) {
  const Cell a = MakePosition(0);
  const Cell b = MakePosition(1);
  auto& exit = AddExitButton(Body());
  SetGrid(560, Rows({a, b, AtRight(exit)}).Spaced(SectionGap));
}

/// The boxes of a position with its key beside them.
Cell LoadForm::MakePosition(int position) {
  std::vector<std::vector<Cell>> lines;
  for (int i = 2 * position; i < 2 * position + 2; ++i) {
    const auto at = static_cast<std::size_t>(i);
    auto& label = AddLabel(Body(), Numbered("LoadLabel", i + 1), Labels.at(at));
    auto& box =
        AddNumberBox(Body(), Numbered("LoadBox", i + 1), EntryMode::Arithmetic, EnteredDecimals,
                     [this, at](double value) { values_.at(at) = static_cast<float>(value); });
    AddKey(static_cast<Key>('1' + i), [&box] { box.Press(); });
    boxes_.at(at) = &box;
    lines.push_back({label, box});
  }
  const char* caption = Captions.at(static_cast<std::size_t>(position));
  auto& key = AddButton(Body(), Numbered("LoadButton", position + 1), caption, Role::General,
                        [this, position] { Load(position); });
  AddKey(toolkit::KeyOf(caption[0]), key);
  return Columns({Table({96, 0}, lines), Cell(key).Wide(KeyWide)});
}

/// The values of the controller. Until they have come nothing may be sent or entered in their
/// place: a zero that was never read would become the load position.
void LoadForm::Activated() {
  for (auto* box : boxes_) box->SetEnabled(false);
  ++reading_;
  const auto values = motion_.ReadLoadPositions();
  if (--reading_ > 0 || !Visible()) return;
  values_ = values;
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    boxes_[i]->SetText(core::NumberText(values_[i], ShownDecimals));
    boxes_[i]->SetEnabled(true);
  }
}

void LoadForm::Load(int position) {
  if (reading_ > 0) return;
  motion_.GoToLoadPosition(static_cast<std::size_t>(position), values_);
}

}  // namespace torvane::console

#include "console/ShutdownForm.h"

#include "console/ConsoleServices.h"
#include "console/ScreenSet.h"

namespace torvane::console {

ShutdownForm::ShutdownForm(const ScreenStart& start) : Screen(start) {
  constexpr double MarkWide = 72;
  constexpr double LabelHigh = 120;
  auto& left = AddImage(Body(), "QuestionImage(0)", toolkit::MarkKind::Question);
  auto& right = AddImage(Body(), "QuestionImage(1)", toolkit::MarkKind::Question);
  label_ = &AddLabel(Body(), "ShutdownLabel", "SHUT DOWN ?", Role::Panel, toolkit::TypeStyle::Title,
                     toolkit::Alignment::Centre);
  keys_ = {&AddButton(Body(), "CancelButton", "&CANCEL", Role::General, [this] { Unload(); }),
           &AddButton(Body(), "ServiceButton", "&SERVICE", Role::General,
                      [this] { End(Services().Exits.ShutdownToService); }),
           &AddButton(Body(), "ShutdownButton", "&OK", Role::General,
                      [this] { End(Services().Exits.ShutdownSystem); })};
  SetHome(*keys_.back());
  SetGrid(
      520,
      Rows(
          {Columns({Cell(left).Wide(MarkWide), label_, Cell(right).Wide(MarkWide)}).High(LabelHigh),
           Columns(CellsOf(keys_))})
          .Spaced(SectionGap));
}

void ShutdownForm::End(const std::function<void()>& action) {
  ending_ = true;
  for (toolkit::Button* key : keys_) key->SetEnabled(false);
  Paint(*label_, Role::Bold, Colours());
  label_->SetText("SHUTTING DOWN !");
  Screens().Desk().Refresh();
  action();
  Unload();
}

bool ShutdownForm::FirstLook(const toolkit::KeyStroke&) { return ending_; }

}  // namespace torvane::console

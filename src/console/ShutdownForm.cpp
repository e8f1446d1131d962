#include "console/ShutdownForm.h"

#include "console/ScreenSet.h"

namespace torvane::console {

using toolkit::Alignment;
using toolkit::TypeStyle;

ShutdownForm::ShutdownForm(ScreenSet& screens, ShutdownActions actions)
    : Screen(screens, {.Name = ScreenName,
                       .PanelName = "ShutdownPanel",
                       .Title = "TORVANE 32",
                       .Keys = GlobalKeys::None,
                       .Current = false,
                       .Centred = true}),
      actions_(std::move(actions)) {
  for (int side = 0; side < 2; ++side) {
    marks_[side] =
        new toolkit::ImageMark(&Body(), toolkit::MarkKind::Question);  // owned by the panel
    Adopt(*marks_[side], "QuestionImage(" + std::to_string(side) + ")", Role::Panel);
  }
  label_ = &AddLabel(Body(), "ShutdownLabel", "SHUT DOWN ?", Role::Panel, TypeStyle::Title,
                     Alignment::Centre);
  cancel_ = &AddButton(Body(), "CancelButton", "&CANCEL", Role::General, [this] { Unload(); });
  service_ = &AddButton(Body(), "ServiceButton", "&SERVICE", Role::General,
                        [this] { End(actions_.ShutdownToService); });
  shutdown_ = &AddButton(Body(), "ShutdownButton", "&OK", Role::General,
                         [this] { End(actions_.ShutdownSystem); });
  SetHome(*shutdown_);
}

void ShutdownForm::End(const std::function<void()>& action) {
  Paint(*label_, Role::Bold, Colours());
  label_->SetText("SHUTTING DOWN !");
  Screens().Desk().Refresh();
  action();
  Unload();
}

void ShutdownForm::Layout(const toolkit::Metrics& metrics) {
  toolkit::Area rest =
      PlaceBody(metrics, 3 * metrics.KeyWidth + 2 * metrics.Gap + 2 * metrics.Margin,
                metrics.Px(120) + metrics.KeyHeight + 3 * metrics.Margin);
  const auto keys = toolkit::Columns(toolkit::TakeBottom(rest, metrics.KeyHeight, metrics.Margin),
                                     3, metrics.Gap);
  cancel_->Place(keys[0]);
  service_->Place(keys[1]);
  shutdown_->Place(keys[2]);
  const int mark = metrics.Px(72);
  marks_[0]->Place(toolkit::TakeLeft(rest, mark, metrics.Gap));
  marks_[1]->Place(toolkit::TakeRight(rest, mark, metrics.Gap));
  label_->Place(rest);
}

}  // namespace torvane::console

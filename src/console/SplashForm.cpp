#include "console/SplashForm.h"

namespace torvane::console {

using toolkit::Alignment;
using toolkit::TypeStyle;

SplashForm::SplashForm(const ScreenStart& start) : Screen(start) {
  splashPanel_ = &AddPanel(Window(), "SplashPanel", toolkit::PanelStyle::Body, Role::Panel);
  titlePanel_ = &AddLabel(*splashPanel_, "TitlePanel", "Torvane 32", Role::Panel, TypeStyle::Figure,
                          Alignment::Centre);
  versionPanel_ = &AddLabel(*splashPanel_, "VersionPanel", "", Role::Panel, TypeStyle::Title,
                            Alignment::Centre);
}

void SplashForm::Loaded() { versionPanel_->SetText("QX480 - TRIO"); }

void SplashForm::Layout(const toolkit::Metrics& metrics) {
  Window().SetSize(metrics.Px(640), metrics.Px(320));
  const toolkit::Area inside = Window().Inside();
  splashPanel_->Place(inside);
  toolkit::Area rest = toolkit::Area{0, 0, inside.Width, inside.Height}.Inset(metrics.Margin);
  versionPanel_->Place(toolkit::TakeBottom(rest, metrics.Px(80), metrics.Gap));
  titlePanel_->Place(rest);
}

}  // namespace torvane::console

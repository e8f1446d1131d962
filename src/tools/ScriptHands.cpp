#include "tools/ScriptHands.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

#include "core/General.h"
#include "toolkit/PickBox.h"
#include "toolkit/PlotCanvas.h"

namespace torvane::tools {

using toolkit::Control;
using toolkit::KeyStroke;

namespace {

toolkit::Desk& ConsoleDesk(const ScriptStage& stage) { return *stage.Desks().front(); }

/// The nearest control that a widget is part of, for a message.
std::string NameOf(QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (const auto* control = dynamic_cast<Control*>(widget); control && !control->Name().empty()) {
      return control->Name();
    }
    if (const auto* form = dynamic_cast<toolkit::Form*>(widget)) return form->Name();
  }
  return "the desk";
}

QPoint MiddleOf(const QWidget& widget) { return {widget.width() / 2, widget.height() / 2}; }

toolkit::ListBox* ListOf(Control& control) {
  if (auto* pick = dynamic_cast<toolkit::PickBox*>(&control)) {
    return pick->ListOpen() ? &pick->List() : nullptr;
  }
  return dynamic_cast<toolkit::ListBox*>(&control);
}

}  // namespace

toolkit::Form* ShownForm(const std::vector<toolkit::Desk*>& desks, const std::string& name) {
  for (toolkit::Desk* desk : desks) {
    const auto& forms = desk->Forms();
    const auto found = std::find_if(forms.rbegin(), forms.rend(), [&](const toolkit::Form* form) {
      return form->Visible() && form->Name() == name;
    });
    if (found != forms.rend()) return *found;
  }
  return nullptr;
}

void ScriptHands::Type(const KeyStroke& stroke) {
  Press(stroke);
  Release(stroke);
}

void ScriptHands::Press(const KeyStroke& stroke) {
  KeyStroke pressed = stroke;
  pressed.Repeat = stroke.Code != toolkit::Key::None && !heldKeys_.insert(stroke.Code).second;
  stage_.Loop.Post([&desk = ConsoleDesk(stage_), pressed] { desk.PressKey(pressed); });
}

void ScriptHands::Release(const KeyStroke& stroke) {
  heldKeys_.erase(stroke.Code);
  stage_.Loop.Post([&desk = ConsoleDesk(stage_), stroke] { desk.ReleaseKey(stroke); });
}

std::string ScriptHands::Find(const std::string& form, const std::string& control,
                              Control*& found) const {
  const toolkit::Form* const shown = ShownForm(stage_.Desks(), form);
  if (shown == nullptr) return form + " does not show";
  found = shown->Find(control);
  if (found == nullptr) return form + " has no " + control;
  if (!found->OnShow()) return control + " of " + form + " is hidden";
  if (!found->Enabled()) return control + " of " + form + " is disabled";
  return {};
}

std::string ScriptHands::AimAt(Control& control, const QPoint& place, Aim& aim) {
  QWidget& desk = *control.window();
  QWidget* const hit = desk.childAt(control.mapTo(&desk, place));
  if (hit != &control && !control.isAncestorOf(hit)) {
    return NameOf(&control) + " is covered there by " + NameOf(hit);
  }
  aim = {hit, hit->mapFrom(&desk, control.mapTo(&desk, place))};
  return {};
}

std::string ScriptHands::AimAtMiddle(const std::string& form, const std::string& control,
                                     Aim& aim) const {
  Control* found = nullptr;
  std::string refusal = Find(form, control, found);
  if (!refusal.empty()) return refusal;
  return AimAt(*found, MiddleOf(*found), aim);
}

std::string ScriptHands::Click(const std::string& form, const std::string& control) {
  Aim aim;
  std::string refusal = AimAtMiddle(form, control, aim);
  if (refusal.empty()) ClickAim(aim);
  return refusal;
}

std::string ScriptHands::DoubleClick(const std::string& form, const std::string& control) {
  Aim aim;
  std::string refusal = AimAtMiddle(form, control, aim);
  if (!refusal.empty()) return refusal;
  ClickAim(aim);
  Send(aim, QEvent::MouseButtonDblClick);
  Send(aim, QEvent::MouseButtonRelease);
  return {};
}

std::string ScriptHands::Hold(const std::string& form, const std::string& control) {
  const std::pair key(form, control);
  if (held_.count(key) != 0) return control + " of " + form + " is held already";
  Aim aim;
  std::string refusal = AimAtMiddle(form, control, aim);
  if (!refusal.empty()) return refusal;
  Send(aim, QEvent::MouseButtonPress);
  held_[key] = aim;
  return {};
}

std::string ScriptHands::LetGo(const std::string& form, const std::string& control) {
  const auto held = held_.find({form, control});
  if (held == held_.end()) return control + " of " + form + " is not held";
  Send(held->second, QEvent::MouseButtonRelease);
  held_.erase(held);
  return {};
}

std::string ScriptHands::ClickRow(const std::string& form, const std::string& control, int row) {
  Control* found = nullptr;
  std::string refusal = Find(form, control, found);
  if (!refusal.empty()) return refusal;
  toolkit::ListBox* const list = ListOf(*found);
  if (list == nullptr) return control + " of " + form + " shows no list";
  if (row > list->Count()) {
    return control + " of " + form + " has " + core::IntegerText(list->Count()) + " rows";
  }
  list->ScrollTo(row - 1);
  const toolkit::Area line = list->LineArea(row - 1);
  return ClickAt(*list, {line.X + line.Width / 2, line.Y + line.Height / 2});
}

std::string ScriptHands::Point(const std::string& form, const std::string& control, double x,
                               double y) {
  Control* found = nullptr;
  std::string refusal = Find(form, control, found);
  if (!refusal.empty()) return refusal;
  auto* const plot = dynamic_cast<toolkit::PlotCanvas*>(found);
  if (plot == nullptr) return control + " of " + form + " is no canvas";
  const double pixelX = std::round(plot->Canvas().ToPixelX(x));
  const double pixelY = std::round(plot->Canvas().ToPixelY(y));
  if (!(pixelX >= 0 && pixelY >= 0 && pixelX < plot->width() && pixelY < plot->height())) {
    return core::NumberText(x, -1) + " " + core::NumberText(y, -1) + " lies outside " + control;
  }
  return ClickAt(*plot, {static_cast<int>(pixelX), static_cast<int>(pixelY)});
}

std::string ScriptHands::ClickAt(Control& control, const QPoint& place) {
  Aim aim;
  std::string refusal = AimAt(control, place, aim);
  if (refusal.empty()) ClickAim(aim);
  return refusal;
}

void ScriptHands::ClickAim(const Aim& aim) {
  Send(aim, QEvent::MouseButtonPress);
  Send(aim, QEvent::MouseButtonRelease);
}

void ScriptHands::Send(const Aim& aim, QEvent::Type type) {
  stage_.Loop.Post([aim, type] {
    if (!aim.Target) return;  // its screen has gone meanwhile
    const bool up = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, aim.Place, aim.Target->mapToGlobal(aim.Place), Qt::LeftButton,
                      up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(aim.Target, &event);
  });
}

}  // namespace torvane::tools

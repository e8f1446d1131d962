// The makers of controls, and what a screen asks and tells.
#include <memory>
#include <utility>

#include "console/ConsoleServices.h"
#include "console/Pads.h"
#include "console/Screen.h"
#include "console/ScreenSet.h"
#include "core/General.h"
#include "supervision/OperatorDialogs.h"

namespace torvane::console {

using toolkit::Key;
using toolkit::PanelStyle;
using toolkit::PointerEvent;

void Screen::Adopt(toolkit::Control& control, const std::string& name, Role role) {
  control.SetName(name);
  Paint(control, role, Colours());
}

toolkit::Button& Screen::AddButton(QWidget& parent, const std::string& name,
                                   const std::string& caption, Role role, Handler click) {
  auto& button = Make<toolkit::Button>(parent, name, role);
  SetCaption(button, caption);
  button.OnClick(Guard([this, click = std::move(click)] {
    click();
    FocusHome();
  }));
  return button;
}

toolkit::TwoStateButton& Screen::AddTwoState(QWidget& parent, const std::string& name,
                                             const std::string& caption, Role role,
                                             std::function<void(bool)> change) {
  auto& button = Make<toolkit::TwoStateButton>(parent, name, role);
  SetCaption(button, caption);
  button.OnChange(
      [this, change = std::move(change)](bool down) { Guard([&] { change(down); })(); });
  button.OnClick(Guard([this] { FocusHome(); }));
  return button;
}

toolkit::OptionButton& Screen::AddOption(QWidget& parent, const std::string& name,
                                         const std::string& caption, Handler chosen) {
  auto& button = Make<toolkit::OptionButton>(parent, name, Role::General);
  SetCaption(button, caption);
  button.OnChange([this, chosen = std::move(chosen)](bool down) {
    if (down) Guard(chosen)();
  });
  button.OnClick(Guard([this] { FocusHome(); }));
  return button;
}

toolkit::Button& Screen::AddHoldButton(QWidget& parent, const std::string& name,
                                       const std::string& caption, Handler down, Handler up) {
  auto& button = Make<toolkit::Button>(parent, name, Role::General, caption);
  const auto held = std::make_shared<bool>(false);
  const auto end = [this, held, up = Guard(std::move(up))] {
    if (!std::exchange(*held, false)) return;
    up();
    FocusHome();
  };
  button.OnMouseDown([held, down = Guard(std::move(down))](const PointerEvent& event) {
    if (event.Button != toolkit::PointerButton::Left) return;
    *held = true;
    down();
  });
  button.OnMouseMove([&button, end](const PointerEvent& event) {
    if (!button.rect().contains(event.X, event.Y)) end();
  });
  button.OnMouseUp([end](const PointerEvent&) { end(); });
  return button;
}

toolkit::Label& Screen::AddLabel(QWidget& parent, const std::string& name, const std::string& text,
                                 Role role, toolkit::TypeStyle style,
                                 toolkit::Alignment alignment) {
  return Make<toolkit::Label>(parent, name, role, text, style, alignment);
}

toolkit::Label& Screen::AddValue(QWidget& parent, const std::string& name,
                                 toolkit::Alignment alignment) {
  auto& label = AddLabel(parent, name, "", Role::Entry, toolkit::TypeStyle::Readout, alignment);
  label.SetFilled(true);
  label.SetRim(true);
  label.SetPlainText(true);
  label.OnClick(Guard([this] { FocusHome(); }));
  return label;
}

toolkit::ListBox& Screen::AddList(QWidget& parent, const std::string& name,
                                  toolkit::Selection selection, Handler select) {
  auto& list = Make<toolkit::ListBox>(parent, name, Role::Entry, selection);
  if (select) list.OnSelect(Guard(std::move(select)));
  return list;
}

toolkit::PickBox& Screen::AddPick(QWidget& parent, const std::string& name, Handler change) {
  auto& box = Make<toolkit::PickBox>(parent, name, Role::Entry);
  if (change) box.OnChange(Guard(std::move(change)));
  return box;
}

toolkit::EntryBox& Screen::AddEntry(QWidget& parent, const std::string& name, Handler change) {
  auto& box = Make<toolkit::EntryBox>(parent, name, Role::Entry);
  if (change) box.OnChange(Guard(std::move(change)));
  return box;
}

toolkit::EntryBox& Screen::AddBox(QWidget& parent, const std::string& name, Handler click) {
  auto& box = Make<toolkit::EntryBox>(parent, name, Role::Entry);
  box.SetReadOnly(true);
  box.SetStyle(toolkit::TypeStyle::Readout);
  box.SetAlignRight(true);
  box.OnClick(Guard([this, click = std::move(click)] {
    click();
    FocusHome();
  }));
  return box;
}

toolkit::EntryBox& Screen::AddNumberBox(QWidget& parent, const std::string& name, int mode,
                                        int places, std::function<void(double)> entered) {
  auto& box = AddBox(parent, name, [] {});
  box.OnClick(Guard([this, &box, mode, places, entered = std::move(entered)] {
    const double value = EnterNumber(box, mode, places);
    if (!Visible()) return;  // it went while the pad was open
    entered(value);
    FocusHome();
  }));
  return box;
}

toolkit::ImageMark& Screen::AddImage(QWidget& parent, const std::string& name,
                                     toolkit::MarkKind kind, Role role) {
  return Make<toolkit::ImageMark>(parent, name, role, kind);
}

toolkit::ProgressBar& Screen::AddProgress(QWidget& parent, const std::string& name) {
  return Make<toolkit::ProgressBar>(parent, name, Role::Entry);
}

std::vector<toolkit::Button*> Screen::AddButtons(QWidget& parent, const std::string& name,
                                                 int first,
                                                 const std::vector<std::string>& captions,
                                                 Role role, const std::function<void(int)>& click) {
  std::vector<toolkit::Button*> buttons;
  int index = first;
  for (const std::string& caption : captions) {
    buttons.push_back(
        &AddButton(parent, Numbered(name, index), caption, role, [click, index] { click(index); }));
    ++index;
  }
  return buttons;
}

std::vector<toolkit::OptionButton*> Screen::AddOptions(QWidget& parent, const std::string& name,
                                                       int first,
                                                       const std::vector<std::string>& captions,
                                                       const std::function<void(int)>& chosen) {
  std::vector<toolkit::OptionButton*> options;
  int index = first;
  for (const std::string& caption : captions) {
    options.push_back(
        &AddOption(parent, Numbered(name, index), caption, [chosen, index] { chosen(index); }));
    ++index;
  }
  return options;
}

std::vector<toolkit::Label*> Screen::AddLabels(QWidget& parent, const std::string& name, int first,
                                               const std::vector<std::string>& texts) {
  std::vector<toolkit::Label*> labels;
  labels.reserve(texts.size());
  int index = first;
  for (const std::string& text : texts)
    labels.push_back(&AddLabel(parent, Numbered(name, index++), text));
  return labels;
}

std::vector<toolkit::Label*> Screen::AddValues(QWidget& parent, const std::string& name, int first,
                                               int count) {
  std::vector<toolkit::Label*> values;
  for (int index = first; index < first + count; ++index)
    values.push_back(&AddValue(parent, Numbered(name, index)));
  return values;
}

std::vector<toolkit::Label*> Screen::AddTextRows(QWidget& parent, const std::string& name,
                                                 int count, toolkit::TypeStyle style,
                                                 const std::function<void(int)>& press) {
  std::vector<toolkit::Label*> rows;
  for (int row = 1; row <= count; ++row) {
    auto& label = AddLabel(parent, Numbered(name, row), "", Role::Entry, style);
    label.SetShrinking(true);
    label.SetPlainText(true);
    label.SetFilled(true);
    label.OnClick(Guard([press, row] { press(row); }));
    rows.push_back(&label);
  }
  return rows;
}

toolkit::Frame& Screen::AddFrame(QWidget& parent, const std::string& name,
                                 const std::string& caption) {
  return Make<toolkit::Frame>(parent, name, Role::Panel, caption);
}

toolkit::Panel& Screen::AddPanel(QWidget& parent, const std::string& name, PanelStyle style,
                                 Role role, const std::string& caption) {
  return Make<toolkit::Panel>(parent, name, role, style, caption);
}

toolkit::Button& Screen::AddExitButton(QWidget& parent, const std::string& caption) {
  auto& button = AddButton(parent, "ExitButton", caption, Role::General, [this] { Unload(); });
  if (home_ == nullptr) SetHome(button);
  return button;
}

void Screen::AddKey(Key key, toolkit::Button& button) {
  keys_[key] = [&button] { button.Press(); };
}

void Screen::AddKey(Key key, Handler handler) { keys_[key] = std::move(handler); }

void Screen::SetCaption(toolkit::Button& button, const std::string& caption) {
  if (const auto old = accelerators_.find(&button); old != accelerators_.end()) {
    keys_.erase(old->second);
    accelerators_.erase(old);
  }
  button.SetCaption(caption);
  const Key key = toolkit::KeyOf(button.Accelerator());
  if (key == Key::None || !traits_.Accelerators) return;
  accelerators_[&button] = key;
  AddKey(key, button);
}

void Screen::Leads(toolkit::Button& button, const char* screen) {
  button.SetEnabled(screens_.Known(screen));
}

void Screen::SetHome(toolkit::Control& control) {
  home_ = &control;
  form_.SetDefaultFocus(home_);
}

double Screen::EnterNumber(toolkit::EntryBox& box, int mode, int places) {
  const double value = Services().EntryPads.EnterNumber(box.Text(), mode);
  box.SetText(core::NumberText(value, places));
  return value;
}

std::string Screen::EnterText(std::string_view text, int mode) {
  return Services().EntryPads.EnterText(text, mode);
}

void Screen::Warn(std::string_view first, std::string_view second) {
  auto& dialogs = Services().Dialogs;
  return second.empty() ? dialogs.Warn(first) : dialogs.Warn(first, second);
}

bool Screen::Confirm(std::string_view first, std::string_view second) {
  auto& dialogs = Services().Dialogs;
  return second.empty() ? dialogs.Confirm(first) : dialogs.Confirm(first, second);
}

}  // namespace torvane::console

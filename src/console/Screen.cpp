#include "console/Screen.h"

#include <algorithm>

#include "console/MainAreas.h"
#include "console/ScreenSet.h"

namespace torvane::console {

using toolkit::Key;
using toolkit::KeyStroke;
using toolkit::PanelStyle;
using toolkit::PointerEvent;

Screen::Screen(ScreenSet& screens, ScreenTraits traits)
    : screens_(screens), traits_(std::move(traits)), form_(screens.Desk(), traits_.Name) {
  Paint(form_, Role::Panel, Colours());
  form_.SetBackdrop(traits_.Backdrop);
  if (!traits_.PanelName.empty()) MakeTitle();
  form_.OnKeyDown([this](const KeyStroke& stroke) {
    bool used = false;
    Guard([&] { used = KeyDown(stroke); })();
    return used;
  });
  form_.OnActivate(Guard([this] { Activate(); }));
  form_.OnUnload(Guard([this] {
    Unloaded();
    HandOver();
    screens_.Retire(*this);
  }));
}

Screen::~Screen() = default;

const core::ColourTable& Screen::Colours() const { return screens_.System().Colours; }

void Screen::MakeTitle() {
  title_ =
      &AddPanel(form_, traits_.PanelName + "(0)", PanelStyle::Title, Role::Header, traits_.Title);
  body_ = &AddPanel(form_, traits_.PanelName + "(1)", PanelStyle::Body, Role::Panel);
  title_->OnMouseDown([this](const PointerEvent& event) { drag_.Down(event.X, event.Y); });
  title_->OnMouseMove([this](const PointerEvent& event) {
    if (event.Button == toolkit::PointerButton::None) return;
    const DragStep step = drag_.Move(event.X, event.Y);
    if (step.Left != 0 || step.Top != 0)
      form_.MoveTo(form_.Left() + step.Left, form_.Top() + step.Top);
  });
  title_->OnMouseUp([this](const PointerEvent&) { drag_.Up(); });
}

Screen::Handler Screen::Guard(Handler handler) {
  return [this, handler = std::move(handler)] {
    ++running_;
    try {
      handler();
    } catch (...) {
      --running_;
      throw;
    }
    --running_;
    // Unloaded by its own handler: nobody else will ask for its end.
    if (running_ == 0 && !form_.Visible()) screens_.Reap();
  };
}

template <class Control, class... Arguments>
Control& Screen::Make(QWidget& parent, const std::string& name, Role role,
                      Arguments&&... arguments) {
  auto* control =
      new Control(&parent, std::forward<Arguments>(arguments)...);  // owned by its parent
  Adopt(*control, name, role);
  return *control;
}

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

toolkit::Label& Screen::AddLabel(QWidget& parent, const std::string& name, const std::string& text,
                                 Role role, toolkit::TypeStyle style,
                                 toolkit::Alignment alignment) {
  return Make<toolkit::Label>(parent, name, role, text, style, alignment);
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

void Screen::SetHome(toolkit::Control& control) {
  home_ = &control;
  form_.SetDefaultFocus(home_);
}

void Screen::FocusHome() {
  if (form_.Visible()) form_.FocusDefault();
}

bool Screen::OtherKey(const KeyStroke&) { return false; }

bool Screen::KeyDown(const KeyStroke& stroke) {
  if (IsGlobalKey(stroke.Code, traits_.Keys)) {
    screens_.HandleFunctionKey(stroke.Code);
    return true;
  }
  if (const auto row = keys_.find(stroke.Code); row != keys_.end()) {
    const Handler handler = row->second;  // a handler may change the table
    handler();
    return true;
  }
  return OtherKey(stroke);
}

void Screen::Activate() {
  if (traits_.Current) screens_.System().Console.CurrentForm = traits_.Name;
  Activated();
  if (title_ != nullptr) title_->SetVisible(true);
  if (body_ != nullptr) body_->SetVisible(true);
  FocusHome();
}

void Screen::HandOver() {
  auto& current = screens_.System().Console.CurrentForm;
  if (traits_.Current && current == traits_.Name) current.clear();
  if (traits_.Parent.empty() || !screens_.Visible(traits_.Parent)) return;
  // The parent comes to the front by itself, whatever stands between it and this screen; only then
  // is its focus moved, or its own activation would move it again.
  toolkit::Form& parent = screens_.Find(traits_.Parent)->Window();
  current = traits_.Parent;
  parent.Show();
  if (auto* exit = parent.Find("ExitButton")) parent.FocusOn(exit);
}

/// Over the plot, so that the figures, the header and the keys of the main screen stay in sight
/// where there is room; over another screen a title's height below and beside it, so that a stack
/// reads as a stack.
void Screen::ChoosePlace() {
  if (traits_.Centred || traits_.Backdrop) return;
  const toolkit::Metrics& m = form_.Measures();
  const toolkit::Area room = PlotArea(m);
  int left = room.X + (room.Width - form_.width()) / 2;
  int top = room.Y + (room.Height - form_.height()) / 2;
  for (const toolkit::Form* below : screens_.Desk().Forms()) {
    if (!below->Visible() || below->Backdrop() || below == &form_) continue;
    left = below->Left() + m.TitleHeight;
    top = below->Top() + m.TitleHeight;
  }
  form_.MoveTo(std::max(m.Gap, std::min(left, room.Right() - form_.width())),
               std::max(m.Gap, std::min(top, room.Bottom() - form_.height())));
}

toolkit::Area Screen::PlaceBody(const toolkit::Metrics& metrics, int bodyWidth, int bodyHeight) {
  const int rim = 2 * metrics.Hairline;
  form_.SetSize(bodyWidth + rim, metrics.TitleHeight + bodyHeight + rim);
  toolkit::Area rest = form_.Inside();
  title_->Place(toolkit::TakeTop(rest, metrics.TitleHeight));
  body_->Place(rest);
  return toolkit::Area{0, 0, rest.Width, rest.Height}.Inset(metrics.Margin);
}

}  // namespace torvane::console

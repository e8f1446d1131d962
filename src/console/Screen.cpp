#include "console/Screen.h"

#include <algorithm>

#include "console/ConsoleServices.h"
#include "console/MainAreas.h"
#include "console/ScreenSet.h"

namespace torvane::console {

using toolkit::KeyStroke;
using toolkit::PanelStyle;
using toolkit::PointerEvent;

std::string Numbered(const std::string& name, int index) {
  return name + "(" + std::to_string(index) + ")";
}

Screen::Screen(const ScreenStart& start)
    : screens_(start.Set), traits_(start.Traits), form_(screens_.Desk(), traits_.Name) {
  Paint(form_, Role::Panel, Colours());
  form_.SetBackdrop(traits_.Backdrop);
  if (!traits_.PanelName.empty()) MakeTitle();
  form_.OnKeyDown([this](const KeyStroke& stroke) {
    bool used = false;
    Guard([&] { used = KeyDown(stroke); })();
    return used;
  });
  form_.OnKeyUp([this](const KeyStroke& stroke) { Guard([&] { KeyUp(stroke); })(); });
  if (traits_.SwallowsTyping) form_.OnKeyPress([](char) { return '\0'; });
  form_.OnHandsOff([this] { HandsOff(); });
  form_.OnActivate(Guard([this] { Activate(); }));
  form_.OnUnload(Guard([this] { Leave(); }));
}

Screen::~Screen() = default;

const core::ColourTable& Screen::Colours() const { return System().Colours; }
const ConsoleServices& Screen::Services() const { return screens_.Services(); }
core::System& Screen::System() const { return screens_.System(); }

void Screen::Unload() {
  if (form_.Visible()) return form_.Close();
  if (loading_) abandoned_ = true;
}

/// False when it gave up: then it never was there.
bool Screen::Load() {
  loading_ = true;
  Loaded();
  loading_ = false;
  if (abandoned_) {
    Leave();
    return false;
  }
  ChoosePlace();
  return true;
}

void Screen::Leave() {
  if (traits_.LocksOthers) screens_.LockForms(false, traits_.Name);
  Unloaded();
  HandOver();
  screens_.Retire(*this);
}

void Screen::RunStage(supervision::PollStage stage) {
  const auto found = stages_.find(stage);
  if (found == stages_.end()) return;
  Guard(found->second)();
}

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

void Screen::FocusHome() {
  if (form_.Visible()) form_.FocusDefault();
}

bool Screen::FirstLook(const KeyStroke&) { return false; }
bool Screen::OtherKey(const KeyStroke&) { return false; }
void Screen::KeyUp(const KeyStroke&) {}

bool Screen::KeyDown(const KeyStroke& stroke) {
  if (FirstLook(stroke) || !form_.Visible()) return true;
  if (traits_.Keys.Holds(stroke.Code)) {
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
  // The parent comes to the front by itself, whatever lies between it and this screen; only then
  // is its focus moved, or its own activation would move it again.
  toolkit::Form& parent = screens_.Find(traits_.Parent)->Window();
  current = traits_.Parent;
  parent.Show();
  if (auto* exit = parent.Find("ExitButton")) parent.FocusOn(exit);
}

void Screen::SetGrid(double width, const Cell& contents) {
  grid_ = contents.WithFoot();
  gridWidth_ = width;
}

void Screen::Layout(const toolkit::Metrics& metrics) {
  if (!grid_) return;
  int width = metrics.Px(gridWidth_);
  int height = grid_->Height(metrics) + 2 * metrics.Margin;
  // Moved by a title's height, it still covers the form below down to its foot.
  if (const toolkit::Form* below = traits_.Centred || !traits_.Current ? nullptr : FormBelow()) {
    const int rim = 2 * metrics.Hairline;
    width = std::max(width, below->width() - metrics.Margin - rim);
    height = std::max(height, below->height() - 2 * metrics.TitleHeight - rim);
  }
  grid_->Place(PlaceBody(metrics, width, height), metrics);
}

/// Over the plot, so that the figures, the header, the keys and the name of the program stay in
/// sight where there is room; over another screen a title's height below and beside it, so that a
/// stack reads as a stack.
void Screen::ChoosePlace() {
  if (traits_.Centred || traits_.Backdrop) return;
  const toolkit::Metrics& m = form_.Measures();
  const toolkit::Area room = PlotArea(m);
  const int above = room.Height - TextLinesHeight(m);
  int left = room.X + (room.Width - form_.width()) / 2;
  int top = room.Y + ((form_.height() <= above ? above : room.Height) - form_.height()) / 2;
  if (const toolkit::Form* below = FormBelow()) {
    left = below->Left() + m.Margin;
    top = below->Top() + m.TitleHeight;
  }
  form_.MoveTo(std::max(m.Gap, std::min(left, room.Right() - form_.width())),
               std::max(m.Gap, std::min(top, room.Bottom() - form_.height())));
}

/// The highest form that shows under this one; the main screen does not count.
const toolkit::Form* Screen::FormBelow() const {
  const toolkit::Form* below = nullptr;
  for (const toolkit::Form* form : screens_.Desk().Forms()) {
    if (form == &form_) break;
    if (form->Visible() && !form->Backdrop()) below = form;
  }
  return below;
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

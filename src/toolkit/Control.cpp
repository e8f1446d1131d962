#include "toolkit/Control.h"

#include <QMouseEvent>
#include <QPointer>

#include "toolkit/Desk.h"
#include "toolkit/Form.h"

namespace torvane::toolkit {

namespace {

PointerButton ButtonOf(Qt::MouseButtons buttons) {
  if (buttons & Qt::LeftButton) return PointerButton::Left;
  if (buttons & Qt::RightButton) return PointerButton::Right;
  if (buttons & Qt::MiddleButton) return PointerButton::Middle;
  return PointerButton::None;
}

PointerEvent At(const QMouseEvent& event, PointerButton button) {
  const QPoint place = event.position().toPoint();
  return {place.x(), place.y(), button};
}

Form* FormAbove(QWidget* widget) {
  for (; widget; widget = widget->parentWidget()) {
    if (auto* form = dynamic_cast<Form*>(widget)) return form;
    if (auto* control = dynamic_cast<Control*>(widget)) return control->OwnerForm();
  }
  return nullptr;
}

}  // namespace

Control::Control(QWidget* parent, Form* owner)
    : QWidget(parent), owner_(owner ? owner : FormAbove(parent)) {
  setFocusPolicy(Qt::NoFocus);
  if (owner_) owner_->AddControl(this);
  QWidget::setVisible(true);
}

Control::~Control() {
  if (owner_) owner_->DropControl(this);
}

void Control::Place(const Area& area) { setGeometry(area.X, area.Y, area.Width, area.Height); }

Area Control::Bounds() const { return {x(), y(), width(), height()}; }

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  QWidget::setVisible(visible);
}

bool Control::OnShow() const {
  if (!owner_) return isVisible();
  return visible_ && owner_->Visible() &&
         isVisibleTo(owner_->isAncestorOf(this) ? owner_ : nullptr);
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  LookChanged();
}

void Control::SetColours(Colour background, Colour foreground) {
  if (background_ == background && foreground_ == foreground) return;
  background_ = background;
  foreground_ = foreground;
  LookChanged();
}

bool Control::SetFocus() { return owner_ && owner_->FocusOn(this); }

bool Control::HasFocus() const { return owner_ && owner_->Active() && owner_->Focused() == this; }

bool Control::CanFocus() const {
  if (!focusable_ || !enabled_ || !visible_ || !owner_) return false;
  return !owner_->isAncestorOf(this) || isVisibleTo(owner_);
}

Form* Control::OwnerForm() const { return owner_; }

const Metrics& Control::Measures() const {
  static const Metrics drawn;
  return owner_ ? owner_->Measures() : drawn;
}

bool Control::KeyDown(const KeyStroke&) { return false; }
void Control::FocusChanged(bool) { update(); }
void Control::PointerDown(const PointerEvent&) {}
void Control::PointerMove(const PointerEvent&) {}
void Control::PointerUp(const PointerEvent&) {}
void Control::PointerDouble(const PointerEvent&) {}

bool Control::Admits() const { return !owner_ || owner_->AcceptsInput(); }

void Control::InActivity(std::function<void(Control&)> handle) {
  if (!owner_) return handle(*this);
  owner_->OwnerDesk().Loop().Start([this, handle = std::move(handle)] { handle(*this); });
}

void Control::Press(const PointerEvent& at, bool twice) {
  if (!Admits()) return;
  const QPointer<Control> self(this);
  if (owner_) owner_->PressedOn(this);
  if (!self || !enabled_ || !Admits()) return;
  if (CanFocus()) SetFocus();
  grabbed_ = at.Button;
  if (twice) PointerDouble(at);
  if (!self) return;
  PointerDown(at);
  if (!self || !mouseDown_) return;
  const auto handler = mouseDown_;
  handler(at);
}

void Control::Move(const PointerEvent& at) {
  if (!Admits() || !enabled_) return;
  const QPointer<Control> self(this);
  PointerMove(at);
  if (!self || !mouseMove_) return;
  const auto handler = mouseMove_;
  handler(at);
}

void Control::mousePressEvent(QMouseEvent* event) {
  event->accept();
  const PointerEvent at = At(*event, ButtonOf(event->button()));
  InActivity([at](Control& self) { self.Press(at, false); });
}

void Control::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  const PointerEvent at = At(*event, ButtonOf(event->button()));
  InActivity([at](Control& self) { self.Press(at, true); });
}

void Control::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  const PointerEvent at = At(*event, ButtonOf(event->buttons()));
  InActivity([at](Control& self) { self.Move(at); });
}

void Control::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  if (grabbed_ == PointerButton::None || ButtonOf(event->button()) != grabbed_) return;
  const PointerEvent at = At(*event, grabbed_);
  InActivity([at](Control& self) { self.Release(at, self.Admits() && self.enabled_); });
}

void Control::Release(const PointerEvent& event, bool counts) {
  grabbed_ = PointerButton::None;
  const QPointer<Control> self(this);
  if (counts) {
    PointerUp(event);
  } else {
    PointerCancelled();
  }
  if (!self || !mouseUp_) return;
  const auto handler = mouseUp_;
  if (!owner_) return handler(event);
  owner_->WhenEnabled([handler, event] { handler(event); });
}

void Control::resizeEvent(QResizeEvent*) { PlaceChanged(); }

void Control::hideEvent(QHideEvent*) {
  if (grabbed_ == PointerButton::None) return;
  const PointerEvent gone{-1, -1, grabbed_};
  InActivity([gone](Control& self) { self.Release(gone, false); });
}

}  // namespace torvane::toolkit

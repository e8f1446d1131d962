#include "toolkit/Form.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "toolkit/Button.h"
#include "toolkit/Desk.h"
#include "toolkit/Shadow.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

Form::Form(Desk& desk, std::string name) : QWidget(&desk), desk_(desk), name_(std::move(name)) {
  setFocusPolicy(Qt::NoFocus);
  hide();
  shadow_ = new Shadow(&desk);
  desk_.Add(*this);
}

Form::~Form() {
  for (Control* control : controls_) control->owner_ = nullptr;
  desk_.Remove(*this);
  delete shadow_;
}

void Form::Show() {
  if (!visible_) {
    visible_ = true;
    DefaultPlace();
    QWidget::show();
    shadow_->setVisible(!backdrop_);
  }
  desk_.RaiseInStack(*this);
  desk_.Activate(*this);
}

void Form::Raise() { desk_.RaiseInStack(*this); }

void Form::Hide() {
  if (!visible_) return;
  const QPointer<Form> self(this);
  HandsOff();
  desk_.ReleaseKeysOf(*this);
  if (!self || !visible_) return;
  ClosePopup();
  visible_ = false;
  ++hides_;
  QWidget::hide();
  shadow_->hide();
  desk_.Hidden(*this);
}

void Form::Close() {
  if (!visible_ || closing_) return;
  const QPointer<Form> self(this);
  struct Mark {
    const QPointer<Form>& Owner;
    ~Mark() {
      if (Owner) Owner->closing_ = false;
    }
  } const mark{self};
  closing_ = true;
  desk_.ReleaseKeysOf(*this);
  if (const auto handler = unload_) handler();
  if (self) Hide();
}

bool Form::Active() const { return desk_.ActiveForm() == this; }

void Form::SetEnabled(bool enabled, Holds holds) {
  const bool changes = enabled_ != enabled;
  enabled_ = enabled;
  // Also where it is disabled already, by a lock that kept them.
  if (!enabled_ && holds == Holds::End) HandsOff();
  if (!changes || !enabled_ || waiting_.empty()) return;
  desk_.Loop().Post([self = QPointer<Form>(this), jobs = std::exchange(waiting_, {})] {
    for (const auto& job : jobs) {
      if (self) self->WhenEnabled(job);
    }
  });
}

void Form::HandsOff() {
  if (const auto handler = handsOff_) handler();
}

/// What can wait is only what is done about it: that nothing is held any more is reported at once.
void Form::WhenEnabled(std::function<void()> job) {
  if (enabled_) return job();
  HandsOff();
  waiting_.push_back(std::move(job));
}

void Form::OnLayout(std::function<void(const Metrics&)> layout) {
  layout_ = std::move(layout);
  Relayout();
}

void Form::Relayout() {
  for (Control* control : controls_) control->MetricsChanged();
  if (backdrop_) setGeometry(desk_.Room());
  if (const auto layout = layout_) layout(Measures());
  DefaultPlace();
  update();
}

bool Form::FocusOn(Control* control) {
  if (!control || !control->CanFocus()) return false;
  if (focused_ == control) return true;
  Control* const before = std::exchange(focused_, control);
  if (before) before->FocusChanged(false);
  if (focused_ == control) control->FocusChanged(Active());
  return true;
}

Control* Form::Focused() const { return focused_; }

void Form::FocusDefault() { FocusOn(defaultFocus_); }

void Form::FocusNext(bool backwards) {
  std::vector<Control*> ring;
  std::copy_if(controls_.begin(), controls_.end(), std::back_inserter(ring),
               [](const Control* control) { return control->CanFocus(); });
  if (ring.empty()) return;
  const auto at = std::find(ring.begin(), ring.end(), focused_);
  const auto count = static_cast<long>(ring.size());
  long next = at == ring.end() ? (backwards ? 0 : -1) : at - ring.begin();
  next = (next + (backwards ? count - 1 : 1)) % count;
  FocusOn(ring[static_cast<std::size_t>(next)]);
}

void Form::MoveTo(int left, int top) {
  moving_ = true;
  move(left, top);
  moving_ = false;
  const QRect room = desk_.Room();
  if (room.isEmpty()) return;
  centreX_ = (left + width() / 2.0) / room.width();
  centreY_ = (top + height() / 2.0) / room.height();
}

void Form::SetSize(int width, int height) {
  if (backdrop_) return;
  resize(width, height);
  DefaultPlace();
}

void Form::DefaultPlace() {
  if (backdrop_) return;
  const QRect room = desk_.Room();
  move(static_cast<int>(std::lround(centreX_ * room.width() - width() / 2.0)),
       static_cast<int>(std::lround(centreY_ * room.height() - height() / 2.0)));
  PlaceShadow();
}

Area Form::Inside() const {
  const Area whole{0, 0, width(), height()};
  return backdrop_ ? whole : whole.Inset(Measures().Hairline);
}

const Metrics& Form::Measures() const { return desk_.Measures(); }

void Form::SetBackdrop(bool backdrop) {
  backdrop_ = backdrop;
  shadow_->setVisible(visible_ && !backdrop);
  desk_.RaiseInStack(*this);
  Relayout();
}

void Form::SetColours(Colour background, Colour foreground) {
  background_ = background;
  foreground_ = foreground;
  update();
}

Control* Form::Find(const std::string& name) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const Control* control) { return control->Name() == name; });
  return found == controls_.end() ? nullptr : *found;
}

std::vector<Control*> Form::Controls() const { return controls_; }

bool Form::AcceptsInput() const {
  const Form* modal = desk_.ModalForm();
  return visible_ && enabled_ && (!modal || modal == this);
}

void Form::SetPopup(Control* popup, std::function<void()> close) {
  popup_ = popup;
  closePopup_ = std::move(close);
}

void Form::ClosePopup() {
  if (!popup_) return;
  popup_ = nullptr;
  const auto close = std::exchange(closePopup_, nullptr);
  if (close) close();
}

void Form::PressedOn(Control* control) {
  if (popup_ && control != popup_ && !(control && popup_->isAncestorOf(control))) ClosePopup();
  desk_.RaiseInStack(*this);
  // Beside the press: coming to the front may wait for a slow line, and the finger be lifted
  // before.
  desk_.Loop().Start([this] { desk_.Activate(*this); });
}

void Form::DeliverKeyDown(KeyStroke stroke) {
  const QPointer<Form> self(this);
  if (const auto hook = keyDown_; hook && hook(stroke)) return;
  if (!self || !AcceptsInput()) return;
  if (const auto hook = keyPress_; hook && stroke.Character) {
    stroke.Character = hook(stroke.Character);
    if (!self || !AcceptsInput()) return;
    if (!stroke.Character) return TakeSwallowed(stroke);
  }
  if (stroke.Code == Key::Tab) return FocusNext(stroke.Shift);
  if (focused_ && focused_->CanFocus() && focused_->KeyDown(stroke)) return;
  if (self) PressDefault(stroke);
}

/// Enter is a key of the form even where nothing typed reaches its controls.
void Form::PressDefault(const KeyStroke& stroke) {
  if (stroke.Code == Key::Enter && defaultButton_) defaultButton_->KeyDown(stroke);
}

/// It lands nowhere. Another button that has the focus keeps Enter from the default one.
void Form::TakeSwallowed(const KeyStroke& stroke) {
  const bool elsewhere = focused_ && focused_ != defaultButton_ && focused_->CanFocus();
  if (elsewhere && dynamic_cast<const Button*>(focused_)) return;
  PressDefault(stroke);
}

void Form::DeliverKeyUp(const KeyStroke& stroke) {
  if (!keyUp_) return;
  WhenEnabled([hook = keyUp_, stroke] { hook(stroke); });
}

void Form::RunActivate() {
  if (const auto handler = activate_) handler();
}

void Form::AddControl(Control* control) { controls_.push_back(control); }

void Form::DropControl(Control* control) {
  std::erase(controls_, control);
  for (Control** role : {&focused_, &defaultFocus_, &defaultButton_}) {
    if (*role == control) *role = nullptr;
  }
  if (popup_ != control) return;
  popup_ = nullptr;
  closePopup_ = nullptr;
}

void Form::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (backdrop_) return painter.fillRect(rect(), ToQColor(background_));
  painter.setRenderHint(QPainter::Antialiasing);
  const Metrics& m = Measures();
  const double half = m.Hairline / 2.0;
  painter.setPen(QPen(ToQColor(DarkEdge(background_)), m.Hairline));
  painter.setBrush(ToQColor(background_));
  painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), m.Corner + 2,
                          m.Corner + 2);
}

void Form::mousePressEvent(QMouseEvent* event) {
  event->accept();
  desk_.Loop().Start([this] {
    if (AcceptsInput()) PressedOn(nullptr);
  });
}

void Form::PlaceShadow() { shadow_->Surround(geometry(), Measures()); }

void Form::resizeEvent(QResizeEvent*) { PlaceShadow(); }
void Form::moveEvent(QMoveEvent*) { PlaceShadow(); }

}  // namespace torvane::toolkit

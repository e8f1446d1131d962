#include "toolkit/Desk.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

#include "toolkit/PlotCanvas.h"
#include "toolkit/Shadow.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

/// Pixels: below that the screens do not fit.
constexpr int LeastWidth = 1024;
constexpr int LeastHeight = 768;

}  // namespace

Desk::Desk(platform::EventLoop& loop) : loop_(loop) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(LeastWidth, LeastHeight);
  resize(metrics_.DeskWidth, metrics_.DeskHeight);
}

Desk::~Desk() {
  loop_.GiveUpWaits();
  // Forms that the desk owns take themselves off its lists while they still stand.
  for (Form* form : std::vector<Form*>(stack_)) delete form;
}

void Desk::SetBackground(Colour colour) {
  background_ = colour;
  update();
}

void Desk::SetDock(QWidget* strip, std::function<int(const Metrics&)> height) {
  dock_ = strip;
  dockHeight_ = std::move(height);
  if (strip != nullptr) strip->setParent(this);
  Redock();
}

QRect Desk::Room() const {
  if (!dock_) return rect();
  return rect().adjusted(0, 0, 0,
                         -std::min(height(), dockHeight_(Metrics::For(width(), height()))));
}

void Desk::MeasureAs(std::function<Metrics()> measures) {
  measures_ = std::move(measures);
  Redock();
}

void Desk::Redock() {
  const QRect room = Room();
  metrics_ = measures_ ? measures_() : Metrics::For(room.width(), room.height());
  if (dock_) dock_->setGeometry(0, room.height(), width(), height() - room.height());
  for (Form* form : std::vector<Form*>(stack_)) form->Relayout();
}

Area Desk::WorkArea() const {
  const QRect room = Room();
  return workArea_ ? workArea_(metrics_) : Area{0, 0, room.width(), room.height()};
}

void Desk::OpenFullScreen() {
  setWindowFlag(Qt::FramelessWindowHint);
  // Where no window manager runs, nobody else would make it as large as the screen.
  setGeometry(screen()->geometry());
  showFullScreen();
  QWidget::setFocus();
}

void Desk::OpenWindow(int width, int height) {
  resize(width, height);
  show();
  QWidget::setFocus();
}

bool Desk::IsModal(const Form& form) const {
  return std::find(modal_.begin(), modal_.end(), &form) != modal_.end();
}

void Desk::ShowModal(Form& form) {
  if (IsModal(form)) return;
  if (modal_.empty()) belowModal_ = active_;
  modal_.push_back(&form);
  const QPointer<Form> guard(&form);
  const auto gone = [guard, hides = form.Hides()] { return !guard || guard->Hides() != hides; };
  try {
    form.Show();
    loop_.WaitUntil(gone);
  } catch (...) {
    // It may stand on, but nobody waits for it any more.
    if (!gone()) std::erase(modal_, &form);
    throw;
  }
}

/// A modal form has gone. What was shown below meanwhile comes to the front after the last one.
void Desk::EndModal() {
  if (Form* modal = ModalForm()) return SetActive(modal);
  Form* const below = std::exchange(belowModal_, nullptr);
  Form* const shown = std::exchange(shownDuringModal_, nullptr);
  if (shown && shown->Visible() && shown != below) return Activate(*shown);
  if (below && below->Visible()) return SetActive(below);
  if (Form* top = TopForm()) return Activate(*top);
  SetActive(nullptr);
}

Form* Desk::ModalForm() const {
  const auto standing = std::find_if(modal_.rbegin(), modal_.rend(),
                                     [](const Form* form) { return form->Visible(); });
  return standing == modal_.rend() ? nullptr : *standing;
}

Form* Desk::Find(const std::string& name) const {
  const auto found = std::find_if(stack_.begin(), stack_.end(),
                                  [&](const Form* form) { return form->Name() == name; });
  return found == stack_.end() ? nullptr : *found;
}

Form* Desk::TopForm() const {
  const auto top = std::find_if(stack_.rbegin(), stack_.rend(),
                                [](const Form* form) { return form->Visible(); });
  return top == stack_.rend() ? nullptr : *top;
}

void Desk::Refresh() {
  for (Form* form : stack_) {
    if (!form->Visible()) continue;
    for (Control* control : form->Controls()) {
      if (auto* plot = dynamic_cast<PlotCanvas*>(control)) plot->Flush();
    }
  }
  // What is dirty, and no more, is painted here and now.
  QEvent now(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(this, &now);
}

void Desk::SetBusy(bool busy) {
  busy_ = std::max(0, busy_ + (busy ? 1 : -1));
  if (busy_ == 0) return unsetCursor();
  setCursor(Qt::WaitCursor);
}

void Desk::Beep() {
  ++beeps_;
  QApplication::beep();
}

/// A function key pressed while the active form is locked goes to the highest form that is not, so
/// that the keys which are live at any time stay so.
Form* Desk::TargetOf(const KeyStroke& stroke) const {
  Form* const modal = ModalForm();
  Form* const first = modal ? modal : active_;
  if (first && first->AcceptsInput()) return first;
  if (!IsFunctionKey(stroke.Code)) return nullptr;
  const auto free = std::find_if(stack_.rbegin(), stack_.rend(),
                                 [](const Form* form) { return form->AcceptsInput(); });
  return free == stack_.rend() ? nullptr : *free;
}

void Desk::PressKey(const KeyStroke& stroke) {
  Form* const target = TargetOf(stroke);
  if (!target) return;
  // A held key never overtakes the handler of its own last stroke.
  if (stroke.Repeat && handled_.count(stroke.Code)) return;
  if (!stroke.Repeat) held_[stroke.Code] = target;
  struct Mark {
    std::multiset<Key>& Handled;
    std::multiset<Key>::iterator Mine;
    ~Mark() { Handled.erase(Mine); }
  } const mark{handled_, handled_.insert(stroke.Code)};
  target->DeliverKeyDown(stroke);
}

void Desk::ReleaseKey(const KeyStroke& stroke) {
  const auto held = held_.find(stroke.Code);
  if (held == held_.end()) return;
  const QPointer<Form> form = held->second;
  held_.erase(held);
  if (form) form->DeliverKeyUp(stroke);
}

void Desk::TypeKey(const KeyStroke& stroke) {
  PressKey(stroke);
  ReleaseKey(stroke);
}

void Desk::ReleaseKeysOf(const Form& form) {
  std::vector<Key> keys;
  for (const auto& [key, holder] : held_) {
    if (holder == &form) keys.push_back(key);
  }
  for (const Key key : keys) ReleaseKey(KeyStroke(key));
}

bool Desk::SavePicture(const std::string& path) {
  Refresh();
  return grab().save(QString::fromLocal8Bit(path.c_str()));
}

void Desk::Add(Form& form) {
  const std::vector<Form*> before = stack_;
  stack_.push_back(&form);
  ApplyStack(before);
}

void Desk::Remove(Form& form) {
  std::erase(stack_, &form);
  for (Form** role : {&shownDuringModal_, &belowModal_}) {
    if (*role == &form) *role = nullptr;
  }
  const bool modal = std::erase(modal_, &form) != 0;
  if (active_ == &form) active_ = nullptr;
  if (modal) return EndModal();
  if (!active_) active_ = ModalForm();
}

void Desk::Activate(Form& form) {
  if (Form* modal = ModalForm(); modal && modal != &form) {
    shownDuringModal_ = &form;
    return;
  }
  if (active_ == &form) return;
  SetActive(&form);
  form.RunActivate();
}

void Desk::SetActive(Form* form) {
  if (active_ == form) return;
  Form* const before = std::exchange(active_, form);
  if (before) before->HandsOff();
  if (before && before->Focused()) before->Focused()->FocusChanged(false);
  if (form && form->Focused()) form->Focused()->FocusChanged(true);
}

void Desk::RaiseInStack(Form& form) {
  const std::vector<Form*> before = stack_;
  std::erase(stack_, &form);
  stack_.push_back(&form);
  ApplyStack(before);
}

/// Backdrops at the bottom, modal forms on top in their own order, the rest as raised. Only forms
/// above the first change are touched, so that nothing is painted without need.
void Desk::ApplyStack(const std::vector<Form*>& before) {
  const auto level = [this](const Form* form) {
    if (form->Backdrop()) return -1L;
    const auto at = std::find(modal_.begin(), modal_.end(), form);
    return at == modal_.end() ? 0L : 1L + (at - modal_.begin());
  };
  std::stable_sort(stack_.begin(), stack_.end(),
                   [&](const Form* a, const Form* b) { return level(a) < level(b); });
  auto from = std::mismatch(stack_.begin(), stack_.end(), before.begin(), before.end()).first;
  for (; from != stack_.end(); ++from) {
    (*from)->shadow_->raise();
    (*from)->raise();
    if ((*from)->popup_) (*from)->popup_->raise();
  }
}

void Desk::Hidden(Form& form) {
  if (std::erase(modal_, &form) != 0) {
    if (active_ == &form) SetActive(nullptr);
    return EndModal();
  }
  if (active_ != &form) return;
  if (Form* modal = ModalForm()) return SetActive(modal);
  SetActive(nullptr);
  if (Form* top = TopForm()) Activate(*top);
}

void Desk::HandsOff() {
  if (active_) active_->HandsOff();
}

void Desk::ReleaseAllKeys() {
  while (!held_.empty()) ReleaseKey(KeyStroke(held_.begin()->first));
}

bool Desk::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      keyPressEvent(static_cast<QKeyEvent*>(event));
      return true;
    case QEvent::ShortcutOverride:
      event->accept();
      return true;
    case QEvent::WindowDeactivate:
      loop_.Start([this] {
        HandsOff();
        ReleaseAllKeys();
      });
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void Desk::keyPressEvent(QKeyEvent* event) {
  event->accept();
  loop_.Start([this, stroke = StrokeOf(*event)] { PressKey(stroke); });
}

void Desk::keyReleaseEvent(QKeyEvent* event) {
  event->accept();
  if (event->isAutoRepeat()) return;
  loop_.Start([this, stroke = StrokeOf(*event)] { ReleaseKey(stroke); });
}

void Desk::paintEvent(QPaintEvent* event) {
  QPainter(this).fillRect(event->rect(), ToQColor(background_));
}

void Desk::resizeEvent(QResizeEvent*) { Redock(); }

void Desk::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (closeRequest_) loop_.Start(closeRequest_);
}

}  // namespace torvane::toolkit

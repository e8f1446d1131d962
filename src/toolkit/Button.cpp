#include "toolkit/Button.h"

#include <QPainter>
#include <QPointer>
#include <QPolygonF>
#include <algorithm>

#include "toolkit/KeyMarks.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

/// A triangle as high as half of the room, that points the way.
void PaintArrow(QPainter& painter, const QRect& room, ArrowFace arrow, Colour ink) {
  constexpr double QuarterTurn = 90;
  constexpr int FirstTurned = static_cast<int>(ArrowFace::Right);
  const double half = std::min(room.width(), room.height()) / 3.0;
  const QPolygonF triangle({{half, 0}, {-half / 2, -half}, {-half / 2, half}});
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.translate(QRectF(room).center());
  painter.rotate(-QuarterTurn * (static_cast<int>(arrow) - FirstTurned));
  painter.setPen(Qt::NoPen);
  painter.setBrush(ToQColor(ink));
  painter.drawPolygon(triangle);
  painter.restore();
}

}  // namespace

Button::Button(QWidget* parent, std::string caption)
    : Control(parent), caption_(std::move(caption)), lines_(ParseCaption(caption_)) {
  SetFocusable(true);
}

void Button::SetCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  lines_ = ParseCaption(caption_);
  update();
}

void Button::SetArrow(ArrowFace arrow) {
  arrow_ = arrow;
  update();
}

bool Button::Press() {
  if (!OnShow() || !Enabled()) return false;
  Clicked();
  return true;
}

void Button::Clicked() { FireClick(); }

void Button::FireClick() {
  if (const auto handler = click_) handler();
}

bool Button::KeyDown(const KeyStroke& stroke) {
  if (stroke.Code != Key::Enter && stroke.Code != Key::Space) return false;
  if (!stroke.Repeat) Press();
  return true;
}

void Button::PointerDown(const PointerEvent& event) {
  if (event.Button != PointerButton::Left) return;
  held_ = true;
  sunk_ = true;
  update();
}

void Button::PointerMove(const PointerEvent& event) {
  const bool over = held_ && rect().contains(event.X, event.Y);
  if (over == sunk_) return;
  sunk_ = over;
  update();
}

void Button::PointerUp(const PointerEvent& event) {
  const bool click = held_ && rect().contains(event.X, event.Y);
  PointerCancelled();
  if (click) Press();
}

void Button::PointerCancelled() {
  held_ = false;
  sunk_ = false;
  update();
}

void Button::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  const FaceLook look{sunk_, Ringed(), HasFocus(), Enabled()};
  PaintFace(painter, rect(), Background(), look, m);
  const bool sinks = sunk_ || Ringed();
  const int drop = sinks ? m.Edge / 2 : -m.Edge / 2;
  const int side = m.Gap / 2 + m.Ring;
  painter.setRenderHint(QPainter::Antialiasing, false);
  const QRect room = rect().adjusted(side, drop, -side, drop);
  const Colour ink = Enabled() ? Foreground() : Faded(Foreground(), Background());
  if (arrow_ == ArrowFace::None) {
    PaintCaption(painter, room, lines_, ink, m);
  } else {
    PaintArrow(painter, room, arrow_, ink);
  }
  const int mark = m.Px(20);
  const int inset = m.Ring + m.Px(4);
  const QRect corner(width() - inset - mark, height() - inset - mark, mark, mark);
  PaintKeyMark(painter, corner, mark_, Foreground(), Background());
}

void Button::SetMark(KeyMark mark) {
  if (mark_ == mark) return;
  mark_ = mark;
  update();
}

void Button::SetLit(bool lit) {
  if (lit_ == lit) return;
  lit_ = lit;
  update();
}

TwoStateButton::TwoStateButton(QWidget* parent, std::string caption)
    : Button(parent, std::move(caption)) {}

void TwoStateButton::SetDown(bool down, Events events) {
  if (down_ == down) return;
  down_ = down;
  update();
  if (events == Events::Silent) return;
  if (const auto handler = change_) handler(down);
}

void TwoStateButton::Clicked() {
  const QPointer<TwoStateButton> self(this);
  SetDown(!down_, Events::Fire);
  if (self) FireClick();
}

OptionButton::OptionButton(QWidget* parent, std::string caption)
    : TwoStateButton(parent, std::move(caption)) {}

void OptionButton::Select(Events events) {
  for (QObject* sibling : parent()->children()) {
    auto* option = dynamic_cast<OptionButton*>(sibling);
    if (option && option != this) option->SetDown(false, Events::Silent);
  }
  SetDown(true, events);
}

void OptionButton::Clicked() {
  if (Down()) return;
  const QPointer<OptionButton> self(this);
  Select(Events::Fire);
  if (self) FireClick();
}

}  // namespace torvane::toolkit

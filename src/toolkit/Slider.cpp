#include "toolkit/Slider.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

Slider::Slider(QWidget* parent) : Control(parent) { SetFocusable(true); }

void Slider::SetMaximum(int maximum) {
  maximum_ = std::max(0, maximum);
  SetValue(value_);
  update();
}

void Slider::SetValue(int value) {
  value = std::clamp(value, 0, maximum_);
  if (value == value_) return;
  value_ = value;
  update();
}

int Slider::KnobWidth() const { return std::min(height() * 3 / 4, width() / 4); }

int Slider::KnobLeft(int value) const {
  return maximum_ == 0 ? 0 : (width() - KnobWidth()) * value / maximum_;
}

int Slider::StepAt(int x) const {
  const int way = width() - KnobWidth();
  if (way <= 0) return value_;
  const double share = (x - KnobWidth() / 2.0) / way;
  return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * maximum_));
}

void Slider::Take(int value) {
  const int before = value_;
  SetValue(value);
  if (value_ != before && change_) change_(value_);
}

bool Slider::KeyDown(const KeyStroke& stroke) {
  if (stroke.Code != Key::Left && stroke.Code != Key::Right) return false;
  Take(value_ + (stroke.Code == Key::Right ? 1 : -1));
  return true;
}

void Slider::PointerDown(const PointerEvent& event) {
  held_ = event.Button == PointerButton::Left;
  if (held_) Take(StepAt(event.X));
  update();
}

void Slider::PointerMove(const PointerEvent& event) {
  if (held_ && event.Button == PointerButton::Left) Take(StepAt(event.X));
}

void Slider::PointerUp(const PointerEvent&) {
  held_ = false;
  update();
}

void Slider::FocusChanged(bool) { update(); }

void Slider::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  const int knob = KnobWidth();
  const int middle = height() / 2;
  const QColor groove = ToQColor(DarkEdge(Background()));
  painter.fillRect(QRect(knob / 2, middle - m.Edge, width() - knob, 2 * m.Edge), groove);
  for (int step = 0; step <= maximum_; ++step) {
    painter.fillRect(QRect(KnobLeft(step) + knob / 2 - m.Hairline, middle - height() / 4,
                           2 * m.Hairline, height() / 2),
                     groove);
  }
  PaintFace(painter, QRect(KnobLeft(value_), 0, knob, height()), Background(),
            {.Sunk = held_, .Ringed = false, .Focused = HasFocus(), .Enabled = Enabled()}, m);
}

}  // namespace torvane::toolkit

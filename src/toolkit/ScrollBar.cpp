#include "toolkit/ScrollBar.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

ScrollBar::ScrollBar(QWidget* parent, Form* owner) : Control(parent, owner) {}

void ScrollBar::SetRange(int maximum, int pageSize) {
  maximum_ = std::max(0, maximum);
  page_ = std::max(1, pageSize);
  value_ = std::clamp(value_, 0, maximum_);
  update();
}

void ScrollBar::SetValue(int value) {
  value = std::clamp(value, 0, maximum_);
  if (value == value_) return;
  value_ = value;
  update();
}

int ScrollBar::ArrowHeight() const { return std::min(width(), height() / 3); }

Area ScrollBar::Thumb() const {
  const int track = height() - 2 * ArrowHeight();
  const double whole = maximum_ + page_;
  const int least = std::min(track, std::max(24, width() / 2));
  const int size = std::clamp(static_cast<int>(track * (page_ / whole)), least, track);
  const int top = maximum_ ? static_cast<int>((track - size) * (value_ / double(maximum_))) : 0;
  return {0, ArrowHeight() + top, width(), size};
}

void ScrollBar::Move(int value) {
  const int before = value_;
  SetValue(value);
  if (value_ == before) return;
  if (const auto handler = scroll_) handler(value_);
}

void ScrollBar::PointerDown(const PointerEvent& event) {
  const Area thumb = Thumb();
  if (event.Y < ArrowHeight()) return Move(value_ - 1);
  if (event.Y >= height() - ArrowHeight()) return Move(value_ + 1);
  if (event.Y < thumb.Y) return Move(value_ - page_);
  if (event.Y >= thumb.Bottom()) return Move(value_ + page_);
  grab_ = event.Y - thumb.Y;
}

void ScrollBar::PointerMove(const PointerEvent& event) {
  if (grab_ < 0 || event.Button == PointerButton::None) return;
  const Area thumb = Thumb();
  const int room = height() - 2 * ArrowHeight() - thumb.Height;
  if (room <= 0) return;
  const double share = (event.Y - grab_ - ArrowHeight()) / double(room);
  Move(static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * maximum_)));
}

void ScrollBar::PointerUp(const PointerEvent&) { grab_ = -1; }

void ScrollBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  painter.fillRect(rect(), ToQColor(Mix(Background(), Foreground(), 0.10)));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const bool used = maximum_ > 0 && Enabled();
  const Colour sign = Mix(Background(), Foreground(), used ? 0.85 : 0.25);
  painter.setBrush(ToQColor(sign));
  const double middle = width() / 2.0;
  const double size = std::min(width(), ArrowHeight()) / 6.0;
  for (const bool down : {false, true}) {
    const double y = down ? height() - ArrowHeight() / 2.0 : ArrowHeight() / 2.0;
    const double tip = down ? size : -size;
    QPainterPath arrow;
    arrow.moveTo(middle - 1.4 * size, y - tip / 1.4);
    arrow.lineTo(middle + 1.4 * size, y - tip / 1.4);
    arrow.lineTo(middle, y + tip / 1.4);
    painter.drawPath(arrow);
  }
  if (!used) return;
  const Area thumb = Thumb().Inset(m.Px(6), m.Px(2));
  painter.setBrush(ToQColor(Mix(Background(), Foreground(), 0.45)));
  painter.drawRoundedRect(thumb.X, thumb.Y, thumb.Width, thumb.Height, m.Corner, m.Corner);
}

}  // namespace torvane::toolkit

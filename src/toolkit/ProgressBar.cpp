#include "toolkit/ProgressBar.h"

#include <QPainter>
#include <algorithm>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

ProgressBar::ProgressBar(QWidget* parent) : Control(parent) {}

void ProgressBar::SetRange(int minimum, int maximum) {
  minimum_ = minimum;
  maximum_ = std::max(minimum, maximum);
  value_ = std::clamp(value_, minimum_, maximum_);
  update();
}

void ProgressBar::SetValue(int value) {
  value = std::clamp(value, minimum_, maximum_);
  if (value == value_) return;
  value_ = value;
  update();
}

void ProgressBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  painter.fillRect(rect(), ToQColor(Background()));
  const QRect inside = rect().adjusted(m.Edge, m.Edge, -m.Edge, -m.Edge);
  const double range = double(maximum_) - minimum_;
  const double share = range > 0 ? (double(value_) - minimum_) / range : 0;
  painter.fillRect(
      QRect(inside.topLeft(), QSize(static_cast<int>(inside.width() * share), inside.height())),
      ToQColor(Foreground()));
  painter.setPen(
      QPen(ToQColor(Rim(Background())), m.Hairline, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(rect().adjusted(0, 0, -m.Hairline, -m.Hairline));
}

}  // namespace torvane::toolkit

#include "tools/PanelLamp.h"

#include <QPainter>

#include "toolkit/Theme.h"

namespace torvane::tools {

namespace {

/// Diameter of the dot, in heights of the capitals beside it.
constexpr double DotSize = 1.5;

}  // namespace

PanelLamp::PanelLamp(QWidget* parent, std::string caption, toolkit::Colour lit)
    : Control(parent), caption_(std::move(caption)), lit_(lit) {}

void PanelLamp::SetLit(bool lit) {
  if (isLit_ == lit) return;
  isLit_ = lit;
  update();
}

void PanelLamp::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const toolkit::Metrics& m = Measures();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(toolkit::FontOf(m, isLit_ ? toolkit::TypeStyle::Bold : toolkit::TypeStyle::Body));
  const double dot = DotSize * QFontMetrics(painter.font()).capHeight();
  const toolkit::Colour rim = toolkit::Rim(Background());
  const double half = m.Ring / 2.0;
  const QRectF place(half, (height() - dot) / 2, dot, dot);
  painter.setPen(QPen(toolkit::ToQColor(isLit_ ? toolkit::DarkEdge(lit_) : rim), m.Ring));
  painter.setBrush(isLit_ ? QBrush(toolkit::ToQColor(lit_)) : QBrush(Qt::NoBrush));
  painter.drawEllipse(place);
  painter.setPen(toolkit::ToQColor(Foreground()));
  const int left = static_cast<int>(dot) + m.Ring + 2 * m.Gap;
  toolkit::PaintLine(painter, QRect(left, 0, width() - left, height()), {caption_, -1},
                     toolkit::Alignment::Left);
}

}  // namespace torvane::tools

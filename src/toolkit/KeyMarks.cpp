#include "toolkit/KeyMarks.h"

#include <QPainterPath>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

/// Parts of the sign's side.
constexpr double StrokeShare = 0.16;

void PaintTick(QPainter& painter, const QRectF& area, Colour ink) {
  const double side = area.width();
  painter.setPen(
      QPen(ToQColor(ink), side * StrokeShare, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  QPainterPath tick;
  tick.moveTo(area.topLeft() + QPointF(0.12 * side, 0.55 * side));
  tick.lineTo(area.topLeft() + QPointF(0.4 * side, 0.85 * side));
  tick.lineTo(area.topLeft() + QPointF(0.9 * side, 0.18 * side));
  painter.drawPath(tick);
}

void PaintTriangle(QPainter& painter, const QRectF& area, Colour ink, Colour face) {
  const double side = area.width();
  painter.setPen(Qt::NoPen);
  painter.setBrush(ToQColor(ink));
  QPainterPath triangle;
  triangle.moveTo(area.center().x(), area.top());
  triangle.lineTo(area.right(), area.bottom());
  triangle.lineTo(area.left(), area.bottom());
  triangle.closeSubpath();
  painter.drawPath(triangle);
  painter.setBrush(ToQColor(face));
  const double bar = side * StrokeShare;
  painter.drawRect(QRectF(area.center().x() - bar / 2, area.top() + 0.36 * side, bar, 0.3 * side));
  painter.drawRect(QRectF(area.center().x() - bar / 2, area.top() + 0.76 * side, bar, bar));
}

void PaintBars(QPainter& painter, const QRectF& area, Colour ink, Colour face) {
  const double side = area.width();
  painter.setPen(Qt::NoPen);
  painter.setBrush(ToQColor(ink));
  painter.drawEllipse(area);
  painter.setBrush(ToQColor(face));
  const double bar = side * StrokeShare;
  for (const double at : {0.34, 0.66})
    painter.drawRect(
        QRectF(area.left() + at * side - bar / 2, area.top() + 0.26 * side, bar, 0.48 * side));
}

}  // namespace

void PaintKeyMark(QPainter& painter, const QRect& area, KeyMark mark, Colour ink, Colour face) {
  if (mark == KeyMark::None) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (mark == KeyMark::Good) PaintTick(painter, area, ink);
  if (mark == KeyMark::Warning) PaintTriangle(painter, area, ink, face);
  if (mark == KeyMark::Hold) PaintBars(painter, area, ink, face);
  painter.restore();
}

}  // namespace torvane::toolkit

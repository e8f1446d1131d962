#include "toolkit/ImageMark.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

/// All signs are drawn in a square of 100 and scaled from there.
constexpr double Drawn = 100;

QPainterPath Triangle() {
  QPainterPath path;
  path.moveTo(50, 6);
  path.lineTo(96, 90);
  path.lineTo(4, 90);
  path.closeSubpath();
  return path;
}

QPainterPath Disc() {
  QPainterPath path;
  path.addEllipse(6, 6, 88, 88);
  return path;
}

void DrawExclamation(QPainter& painter) {
  QPainterPath stroke;
  stroke.moveTo(44, 34);
  stroke.lineTo(56, 34);
  stroke.lineTo(53, 64);
  stroke.lineTo(47, 64);
  stroke.closeSubpath();
  painter.drawPath(stroke);
  painter.drawEllipse(QPointF(50, 75), 5.5, 5.5);
}

void DrawQuestion(QPainter& painter, const QColor& colour) {
  QPainterPath hook;
  hook.moveTo(34, 40);
  hook.arcTo(34, 22, 32, 32, 180, -235);
  hook.quadTo(50, 56, 50, 66);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colour, 9, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
  painter.drawPath(hook);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawEllipse(QPointF(50, 77), 5.5, 5.5);
}

void DrawLetterI(QPainter& painter) {
  painter.drawEllipse(QPointF(50, 27), 6.5, 6.5);
  painter.drawRect(QRectF(45, 41, 10, 37));
}

}  // namespace

ImageMark::ImageMark(QWidget* parent, MarkKind kind) : Control(parent), kind_(kind) {}

void ImageMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double size = std::min(width(), height());
  painter.translate((width() - size) / 2, (height() - size) / 2);
  painter.scale(size / Drawn, size / Drawn);
  const QColor sign = ToQColor(Background());
  const QColor body = ToQColor(Foreground());
  painter.setPen(QPen(body, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(body);
  painter.drawPath(kind_ == MarkKind::Warning ? Triangle() : Disc());
  painter.setPen(Qt::NoPen);
  painter.setBrush(sign);
  if (kind_ == MarkKind::Warning) return DrawExclamation(painter);
  if (kind_ == MarkKind::Question) return DrawQuestion(painter, sign);
  DrawLetterI(painter);
}

}  // namespace torvane::toolkit

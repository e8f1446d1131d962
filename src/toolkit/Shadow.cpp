#include "toolkit/Shadow.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace torvane::toolkit {

namespace {

/// How dark it is at the form's edge, of 255.
constexpr double Darkest = 175;

/// What of a piece is drawn to `part` of its place; a piece one pixel wide or high is stretched.
QRect SourceOf(const QRect& part, const QRect& place, const QImage& piece) {
  const bool wide = piece.width() > 1;
  const bool high = piece.height() > 1;
  return {wide ? part.x() - place.x() : 0, high ? part.y() - place.y() : 0, wide ? part.width() : 1,
          high ? part.height() : 1};
}

}  // namespace

Form::Shadow::Shadow(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void Form::Shadow::Draw(int reach) {
  reach_ = reach;
  const int size = 2 * reach;
  QImage corner(size, size, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      // Distance outwards from a square of corner radius `reach` that ends `reach` pixels in.
      const double dx = std::max(0, size - x);
      const double dy = std::max(0, size - y);
      const double outside = std::clamp(std::hypot(dx, dy) / size, 0.0, 1.0);
      const double fade = (1 - outside) * (1 - outside);
      corner.setPixel(
          x, y,
          qRgba(0, 0, 0,
                static_cast<int>(Darkest * fade * 2.2 > Darkest ? Darkest : Darkest * fade * 2.2)));
    }
  }
  const QImage right = corner.mirrored(true, false);
  const QImage side = corner.copy(0, size - 1, size, 1);
  const QImage top = corner.copy(size - 1, 0, 1, size);
  pieces_ = {corner,
             right,
             corner.mirrored(false, true),
             right.mirrored(false, true),
             side,
             side.mirrored(true, false),
             top,
             top.mirrored(false, true)};
}

void Form::Shadow::Surround(const QRect& form, const Metrics& metrics) {
  const int reach = metrics.Px(20);
  if (reach != reach_) Draw(reach);
  setGeometry(form.adjusted(-reach, -reach + reach / 3, reach, reach + reach / 3));
  // Its rounded corners let the shadow through.
  const int corner = metrics.Corner + 2;
  covered_ = form.translated(-x(), -y()).adjusted(corner, corner, -corner, -corner);
  update();
}

/// Only what shows of the pieces: most repaints happen on the form itself, which hides its shadow,
/// and a stretched image costs as much as a whole list.
void Form::Shadow::paintEvent(QPaintEvent* event) {
  const int c = 2 * reach_;
  const int w = width();
  const int h = height();
  const QRegion shows = event->region() - covered_;
  if (w < 2 * c || h < 2 * c || shows.isEmpty()) return;
  const std::array<QRect, PieceCount> places = {
      QRect(0, 0, c, c),         QRect(w - c, 0, c, c),        QRect(0, h - c, c, c),
      QRect(w - c, h - c, c, c), QRect(0, c, c, h - 2 * c),    QRect(w - c, c, c, h - 2 * c),
      QRect(c, 0, w - 2 * c, c), QRect(c, h - c, w - 2 * c, c)};
  QPainter painter(this);
  for (std::size_t i = 0; i < PieceCount; ++i) {
    const QRect part = (shows & places[i]).boundingRect();
    if (!part.isEmpty()) painter.drawImage(part, pieces_[i], SourceOf(part, places[i], pieces_[i]));
  }
}

}  // namespace torvane::toolkit

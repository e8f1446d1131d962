#include "toolkit/Shadow.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace torvane::toolkit {

namespace {

/// How dark it is at the form's edge, of 255.
constexpr double Darkest = 175;

}  // namespace

Form::Shadow::Shadow(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void Form::Shadow::Draw(int reach) {
  reach_ = reach;
  const int size = 2 * reach;
  corner_ = QImage(size, size, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      // Distance outwards from a square of corner radius `reach` that ends `reach` pixels in.
      const double dx = std::max(0, size - x);
      const double dy = std::max(0, size - y);
      const double outside = std::clamp(std::hypot(dx, dy) / size, 0.0, 1.0);
      const double fade = (1 - outside) * (1 - outside);
      corner_.setPixel(
          x, y,
          qRgba(0, 0, 0,
                static_cast<int>(Darkest * fade * 2.2 > Darkest ? Darkest : Darkest * fade * 2.2)));
    }
  }
}

void Form::Shadow::Surround(const QRect& form, const Metrics& metrics) {
  const int reach = metrics.Px(20);
  if (reach != reach_) Draw(reach);
  setGeometry(form.adjusted(-reach, -reach + reach / 3, reach, reach + reach / 3));
  update();
}

void Form::Shadow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int c = corner_.width();
  const int w = width();
  const int h = height();
  if (w < 2 * c || h < 2 * c) return;
  const QImage right = corner_.mirrored(true, false);
  painter.drawImage(0, 0, corner_);
  painter.drawImage(w - c, 0, right);
  painter.drawImage(0, h - c, corner_.mirrored(false, true));
  painter.drawImage(w - c, h - c, right.mirrored(false, true));
  const QImage side = corner_.copy(0, c - 1, c, 1);
  const QImage top = corner_.copy(c - 1, 0, 1, c);
  painter.drawImage(QRect(0, c, c, h - 2 * c), side);
  painter.drawImage(QRect(w - c, c, c, h - 2 * c), side.mirrored(true, false));
  painter.drawImage(QRect(c, 0, w - 2 * c, c), top);
  painter.drawImage(QRect(c, h - c, w - 2 * c, c), top.mirrored(false, true));
}

}  // namespace torvane::toolkit

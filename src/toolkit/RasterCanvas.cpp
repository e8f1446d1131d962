#include "toolkit/RasterCanvas.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "toolkit/OverlayPainter.h"
#include "toolkit/PictureFile.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

QRgb PixelOf(platform::Colour colour) {
  return qRgb(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
              static_cast<int>((colour >> 16) & 0xFF));
}

/// Cuts the segment to [0, w] by [0, h] (Liang and Barsky). False when nothing is left.
bool Clip(double& x1, double& y1, double& x2, double& y2, double w, double h) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  double from = 0;
  double to = 1;
  const double side[4][2] = {{-dx, x1}, {dx, w - x1}, {-dy, y1}, {dy, h - y1}};
  for (const auto& [slope, room] : side) {
    if (slope == 0) {
      if (room < 0) return false;
      continue;
    }
    const double at = room / slope;
    if (slope < 0) {
      from = std::max(from, at);
    } else {
      to = std::min(to, at);
    }
    if (from > to) return false;
  }
  const double startX = x1;
  const double startY = y1;
  if (to < 1) {
    x2 = startX + to * dx;
    y2 = startY + to * dy;
  }
  if (from > 0) {
    x1 = startX + from * dx;
    y1 = startY + from * dy;
  }
  return true;
}

/// The far edge of the view belongs to its last pixel. Numbers a hair under a whole pixel come from
/// singles and the map's division, and mean that pixel.
int PixelAtEdge(double at, int size) {
  const int pixel = static_cast<int>(std::floor(at + 1e-6));
  return std::clamp(pixel, 0, size - 1);
}

QRect Around(const QPoint& a, const QPoint& b) {
  return {QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
          QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y()))};
}

/// A pixel of a shape that may lie outside.
int Place(double at) { return static_cast<int>(std::floor(std::clamp(at, -1e6, 1e6) + 1e-6)); }

}  // namespace

RasterCanvas::RasterCanvas(int width, int height)
    : MappedCanvas(width, height), image_(PixelWidth(), PixelHeight(), QImage::Format_RGB32) {
  image_.fill(Qt::black);
}

platform::Colour RasterCanvas::PixelAt(int x, int y) const {
  if (!image_.valid(x, y)) return Background();
  const QRgb pixel = image_.pixel(x, y);
  return static_cast<platform::Colour>(qRed(pixel) | (qGreen(pixel) << 8) | (qBlue(pixel) << 16));
}

void RasterCanvas::Touch(const QRect& area) {
  if (changed_) changed_(area);
}

void RasterCanvas::Resize(int width, int height) {
  SetPixelSize(width, height);
  if (image_.width() == PixelWidth() && image_.height() == PixelHeight()) return;
  image_ = QImage(PixelWidth(), PixelHeight(), QImage::Format_RGB32);
  PixelClear(Background());
}

bool RasterCanvas::Blank(platform::Colour colour) {
  if (blank_ == colour) return true;
  blank_.reset();
  return false;
}

void RasterCanvas::PixelClear(platform::Colour colour) {
  image_.fill(PixelOf(colour));
  blank_ = colour;
  Touch(image_.rect());
}

/// Bresenham, both ends included, all within the image.
void RasterCanvas::Plain(const QPoint& from, const QPoint& to, QRgb pixel) {
  auto* const bits = reinterpret_cast<QRgb*>(image_.bits());
  const auto stride = static_cast<std::ptrdiff_t>(image_.bytesPerLine() / 4);
  const int dx = std::abs(to.x() - from.x());
  const int dy = std::abs(to.y() - from.y());
  const std::ptrdiff_t stepX = from.x() < to.x() ? 1 : -1;
  const std::ptrdiff_t stepY = from.y() < to.y() ? stride : -stride;
  QRgb* at = bits + static_cast<std::ptrdiff_t>(from.y()) * stride + from.x();
  const bool flat = dx >= dy;
  const int major = flat ? dx : dy;
  const int minor = flat ? dy : dx;
  const std::ptrdiff_t along = flat ? stepX : stepY;
  const std::ptrdiff_t across = flat ? stepY : stepX;
  int error = major / 2;
  for (int i = 0;; ++i) {
    *at = pixel;
    if (i == major) break;
    at += along;
    error -= minor;
    if (error < 0) {
      at += across;
      error += major;
    }
  }
}

bool RasterCanvas::PlainPen() const {
  return PenWidth() == 1 && !Cased() && Style() == platform::PenStyle::Solid;
}

void RasterCanvas::Casing(QPainter& painter, const QPoint& from, const QPoint& to,
                          platform::Colour colour) {
  QPen pen(ToQColor(CasingOf(colour)), PenWidth() + 2 * CasingWidth);
  pen.setCapStyle(Qt::FlatCap);
  painter.setPen(pen);
  painter.drawLine(from, to);
}

void RasterCanvas::Penned(double x1, double y1, double x2, double y2, platform::Colour colour) {
  QPainter painter(&image_);
  QPen pen(ToQColor(colour), PenWidth());
  pen.setCapStyle(Qt::RoundCap);
  if (Style() == platform::PenStyle::Dotted) {
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({2.0, 2.0});
  }
  const QPoint from(Place(x1), Place(y1));
  const QPoint to(Place(x2), Place(y2));
  if (Cased()) Casing(painter, from, to, colour);
  painter.setPen(pen);
  painter.drawLine(from, to);
}

void RasterCanvas::PixelLine(double x1, double y1, double x2, double y2, platform::Colour colour) {
  if (Cased()) {
    blank_.reset();
  } else if (Blank(colour)) {
    return;
  }
  if (!PlainPen()) {
    const int reach = PenWidth() + (Cased() ? 2 * CasingWidth : 0);
    Penned(x1, y1, x2, y2, colour);
    const QRect area(QPoint(Place(std::min(x1, x2)), Place(std::min(y1, y2))),
                     QPoint(Place(std::max(x1, x2)), Place(std::max(y1, y2))));
    return Touch(area.adjusted(-reach, -reach, reach, reach) & image_.rect());
  }
  if (!Clip(x1, y1, x2, y2, PixelWidth(), PixelHeight())) return;
  const QPoint from(PixelAtEdge(x1, PixelWidth()), PixelAtEdge(y1, PixelHeight()));
  const QPoint to(PixelAtEdge(x2, PixelWidth()), PixelAtEdge(y2, PixelHeight()));
  Plain(from, to, PixelOf(colour));
  Touch(Around(from, to));
}

std::optional<QPoint> RasterCanvas::PlaceOf(const platform::UserPoint& point) const {
  const double x = ToPixelX(point.X), y = ToPixelY(point.Y);
  if (!(x >= 0 && x <= PixelWidth() && y >= 0 && y <= PixelHeight())) return std::nullopt;
  return QPoint(PixelAtEdge(x, PixelWidth()), PixelAtEdge(y, PixelHeight()));
}

void RasterCanvas::Lines(std::span<const platform::UserPoint> points, platform::Colour colour) {
  if (points.empty() || !PlainPen()) return MappedCanvas::Lines(points, colour);
  if (Blank(colour)) return;
  const QRgb pixel = PixelOf(colour);
  QRect changed;
  auto last = PlaceOf(points[0]);
  for (std::size_t i = 1; i < points.size(); ++i) {
    const auto next = PlaceOf(points[i]);
    if (last && next) {
      Plain(*last, *next, pixel);
      changed |= Around(*last, *next);
    } else {
      Line(points[i - 1].X, points[i - 1].Y, points[i].X, points[i].Y, colour);
    }
    last = next;
  }
  if (!changed.isNull()) Touch(changed);
}

void RasterCanvas::PixelBox(double x1, double y1, double x2, double y2, platform::Colour colour) {
  PixelLine(x1, y1, x2, y1, colour);
  PixelLine(x2, y1, x2, y2, colour);
  PixelLine(x2, y2, x1, y2, colour);
  PixelLine(x1, y2, x1, y1, colour);
}

void RasterCanvas::PixelFill(double x1, double y1, double x2, double y2, platform::Colour colour) {
  const QRect box(QPoint(Place(std::min(x1, x2)), Place(std::min(y1, y2))),
                  QPoint(Place(std::max(x1, x2)), Place(std::max(y1, y2))));
  const QRect area = box & image_.rect();
  if (area.isEmpty()) return;
  if (Blank(colour)) return;
  const auto stride = static_cast<std::ptrdiff_t>(image_.bytesPerLine() / 4);
  auto* const first = reinterpret_cast<QRgb*>(image_.scanLine(area.top())) + area.left();
  std::fill_n(first, area.width(), PixelOf(colour));
  QRgb* line = first;
  for (int y = area.top(); y < area.bottom(); ++y) {
    line += stride;
    std::copy_n(first, area.width(), line);
  }
  Touch(area);
}

void RasterCanvas::PixelEllipse(double x, double y, double radiusX, double radiusY,
                                platform::Colour colour) {
  const double reach = 8.0 * (PixelWidth() + PixelHeight());
  if (std::max({radiusX, radiusY, std::abs(x), std::abs(y)}) > 1000 * reach) return;
  if (Blank(colour)) return;
  QPainter painter(&image_);
  painter.setPen(QPen(ToQColor(colour), PenWidth()));
  painter.drawEllipse(QPointF(std::floor(x + 1e-6), std::floor(y + 1e-6)), std::round(radiusX),
                      std::round(radiusY));
  const QRect area(QPoint(Place(x - radiusX), Place(y - radiusY)),
                   QPoint(Place(x + radiusX), Place(y + radiusY)));
  const int around = PenWidth() + 1;
  Touch(area.adjusted(-around, -around, around, around) & image_.rect());
}

QRect RasterCanvas::OverlayArea(const platform::OverlayState& state) const {
  const double x1 = ToPixelX(state.From.X), y1 = ToPixelY(state.From.Y);
  const double x2 = ToPixelX(state.To.X), y2 = ToPixelY(state.To.Y);
  if (!std::isfinite(x1) || !std::isfinite(y1) || !std::isfinite(x2) || !std::isfinite(y2)) {
    return {};
  }
  const QRect area(QPoint(Place(std::min(x1, x2)), Place(std::min(y1, y2))),
                   QPoint(Place(std::max(x1, x2)), Place(std::max(y1, y2))));
  const int around = OverlayReach(*this);
  return area.adjusted(-around, -around, around, around) & image_.rect();
}

void RasterCanvas::OverlayChanged(const platform::OverlayState& before,
                                  const platform::OverlayState& after) {
  QRect area;
  if (before.Visible) area |= OverlayArea(before);
  if (after.Visible) area |= OverlayArea(after);
  if (!area.isEmpty()) Touch(area);
}

void RasterCanvas::PaintOverlays(QPainter& painter) const {
  toolkit::PaintOverlays(painter, *this);
}

QImage RasterCanvas::Compose() const {
  QImage whole = image_.copy();
  QPainter painter(&whole);
  PaintOverlays(painter);
  return whole;
}

QByteArray RasterCanvas::FileBytes() const { return PngOf(OverlaysShow() ? Compose() : image_); }

}  // namespace torvane::toolkit

#include "toolkit/SvgCanvas.h"

#include <QBuffer>
#include <QPainter>
#include <QPolygonF>
#include <QSvgGenerator>
#include <cmath>
#include <variant>
#include <vector>

#include "toolkit/OverlayPainter.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

struct Pen {
  platform::Colour Ink = 0;
  int Width = 1;
  bool Dotted = false;
  bool operator==(const Pen&) const = default;
};

struct Path {
  Pen With;
  QPolygonF Points;
};

struct Rectangle {
  Pen With;
  QRectF Place;
  bool Filled = false;
};

struct Ellipse {
  Pen With;
  QPointF Middle;
  double RadiusX = 0;
  double RadiusY = 0;
};

using Piece = std::variant<Path, Rectangle, Ellipse>;

QPen PenOf(const Pen& pen) {
  QPen with(ToQColor(pen.Ink), pen.Width);
  if (pen.Dotted) with.setDashPattern({2.0, 2.0});
  return with;
}

void Paint(QPainter& painter, const Piece& piece) {
  if (const auto* path = std::get_if<Path>(&piece)) {
    painter.setPen(PenOf(path->With));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(path->Points);
  } else if (const auto* box = std::get_if<Rectangle>(&piece)) {
    painter.setPen(box->Filled ? QPen(Qt::NoPen) : PenOf(box->With));
    painter.setBrush(box->Filled ? QBrush(ToQColor(box->With.Ink)) : QBrush(Qt::NoBrush));
    painter.drawRect(box->Place);
  } else if (const auto* ellipse = std::get_if<Ellipse>(&piece)) {
    painter.setPen(PenOf(ellipse->With));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(ellipse->Middle, ellipse->RadiusX, ellipse->RadiusY);
  }
}

}  // namespace

struct SvgCanvas::Record {
  std::vector<Piece> Pieces;
  platform::Colour Ground = 0;
};

SvgCanvas::SvgCanvas(int width, int height)
    : MappedCanvas(width, height), record_(std::make_unique<Record>()) {}

SvgCanvas::~SvgCanvas() = default;

void SvgCanvas::PixelLine(double x1, double y1, double x2, double y2, platform::Colour colour) {
  const Pen pen{colour, PenWidth(), Style() == platform::PenStyle::Dotted};
  const QPointF from(x1, y1);
  const QPointF to(x2, y2);
  auto& pieces = record_->Pieces;
  Path* last = pieces.empty() ? nullptr : std::get_if<Path>(&pieces.back());
  if (!last || !(last->With == pen) || last->Points.back() != from) {
    pieces.emplace_back(Path{pen, QPolygonF({from})});
    last = std::get_if<Path>(&pieces.back());
  }
  last->Points.append(to);
}

void SvgCanvas::PixelBox(double x1, double y1, double x2, double y2, platform::Colour colour) {
  const Pen pen{colour, PenWidth(), Style() == platform::PenStyle::Dotted};
  record_->Pieces.emplace_back(
      Rectangle{pen, QRectF(QPointF(x1, y1), QPointF(x2, y2)).normalized(), false});
}

void SvgCanvas::PixelFill(double x1, double y1, double x2, double y2, platform::Colour colour) {
  record_->Pieces.emplace_back(
      Rectangle{{colour, 1, false}, QRectF(QPointF(x1, y1), QPointF(x2, y2)).normalized(), true});
}

void SvgCanvas::PixelEllipse(double x, double y, double radiusX, double radiusY,
                             platform::Colour colour) {
  record_->Pieces.emplace_back(Ellipse{{colour, PenWidth(), false}, {x, y}, radiusX, radiusY});
}

void SvgCanvas::PixelClear(platform::Colour colour) {
  record_->Pieces.clear();
  record_->Ground = colour;
}

void SvgCanvas::OverlayChanged(const platform::OverlayState&, const platform::OverlayState&) {}

QByteArray SvgCanvas::FileBytes() const {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setTitle(QStringLiteral("Torvane 32"));
  generator.setSize(QSize(PixelWidth(), PixelHeight()));
  generator.setViewBox(QRect(0, 0, PixelWidth(), PixelHeight()));
  QPainter painter;
  if (!painter.begin(&generator)) return {};
  const QRectF whole(0, 0, PixelWidth(), PixelHeight());
  painter.setClipRect(whole);
  painter.fillRect(whole, ToQColor(record_->Ground));
  for (const Piece& piece : record_->Pieces) Paint(painter, piece);
  PaintOverlays(painter, *this);
  return painter.end() ? bytes : QByteArray();
}

}  // namespace torvane::toolkit

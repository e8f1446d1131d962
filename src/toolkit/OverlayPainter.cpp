#include "toolkit/OverlayPainter.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "toolkit/MappedCanvas.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

using platform::Overlay;

enum class Shape { Rectangle, RoundedSquare, Segment };

/// From here on the overlays move over the plot and carry a casing.
constexpr auto FirstMoving = static_cast<std::size_t>(Overlay::CrossLine1);

/// Pixels of canvas for each pixel of pen.
constexpr int CanvasPerPen = 900;

int PenOf(const MappedCanvas& canvas) {
  return std::max(1, static_cast<int>(std::lround(double(canvas.PixelWidth()) / CanvasPerPen)));
}

/// One row an overlay, in the order in which they lie over each other.
constexpr std::array<Shape, static_cast<std::size_t>(Overlay::Count)> Shapes = {
    Shape::Rectangle,      // SheetRect
    Shape::Rectangle,      // LimitRect
    Shape::Rectangle,      // ZoomRect
    Shape::Segment,        // CrossLine1
    Shape::Segment,        // CrossLine2
    Shape::RoundedSquare,  // IconShape
    Shape::Segment,        // IconLine1
    Shape::Segment,        // IconLine2
    Shape::Segment,        // TravelLine1
    Shape::Segment,        // TravelLine2
    Shape::Segment,        // EntryLine1
    Shape::Segment,        // EntryLine2
};

/// Far outside any canvas, near enough for the painter's numbers.
constexpr double FarOut = 30000;

int Pixel(double at) { return static_cast<int>(std::floor(std::clamp(at, -FarOut, FarOut))); }

void PaintOne(QPainter& painter, const MappedCanvas& canvas, Shape shape,
              const platform::OverlayState& state, const QPen& pen) {
  const double x1 = canvas.ToPixelX(state.From.X), y1 = canvas.ToPixelY(state.From.Y);
  const double x2 = canvas.ToPixelX(state.To.X), y2 = canvas.ToPixelY(state.To.Y);
  if (!std::isfinite(x1) || !std::isfinite(y1) || !std::isfinite(x2) || !std::isfinite(y2)) return;
  const QPoint from(Pixel(x1), Pixel(y1));
  const QPoint to(Pixel(x2), Pixel(y2));
  painter.setPen(pen);
  painter.setBrush(state.Filled ? QBrush(ToQColor(state.Fill)) : QBrush(Qt::NoBrush));
  if (shape == Shape::Segment) return painter.drawLine(from, to);
  const QRect area(std::min(from.x(), to.x()), std::min(from.y(), to.y()),
                   std::abs(to.x() - from.x()), std::abs(to.y() - from.y()));
  if (shape == Shape::Rectangle) return painter.drawRect(area);
  const double corner = std::min(area.width(), area.height()) * 0.25;
  painter.drawRoundedRect(area, corner, corner);
}

}  // namespace

void PaintOverlays(QPainter& painter, const MappedCanvas& canvas) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  const int width = PenOf(canvas);
  const auto paint = [&](std::size_t from, bool casing) {
    for (std::size_t i = from; i < Shapes.size(); ++i) {
      const platform::OverlayState state = canvas.GetOverlay(static_cast<Overlay>(i));
      if (!state.Visible || (casing && i < FirstMoving)) continue;
      const QPen pen(ToQColor(casing ? CasingOf(state.Border) : state.Border),
                     casing ? width + 2 * CasingWidth : width);
      PaintOne(painter, canvas, Shapes[i], state, pen);
    }
  };
  paint(FirstMoving, true);
  paint(0, false);
  painter.restore();
}

int OverlayReach(const MappedCanvas& canvas) { return PenOf(canvas) + CasingWidth + 1; }

}  // namespace torvane::toolkit

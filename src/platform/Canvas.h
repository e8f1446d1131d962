// A retained drawing surface in user units, as the plot needs it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace torvane::platform {

/// 0x00BBGGRR, red in the low byte.
using Colour = std::uint32_t;

/// Pen styles, with the numbers of the plot file.
enum class PenStyle { Solid = 0, Dotted = 2 };

/// A point in user units.
struct UserPoint {
  double X = 0;
  double Y = 0;
};

/// The retained shapes that lie over the pixels and are moved, never painted.
enum class Overlay {
  SheetRect,
  LimitRect,
  ZoomRect,
  CrossLine1,
  CrossLine2,
  IconShape,
  IconLine1,
  IconLine2,
  TravelLine1,
  TravelLine2,
  EntryLine1,
  EntryLine2,
  Count
};

/// Place and look of one overlay, corners in user units.
struct OverlayState {
  UserPoint From;
  UserPoint To;
  bool Visible = false;
  Colour Border = 0;
  Colour Fill = 0;
  bool Filled = false;
};

/// Coordinates are user units of the last Scale. What was painted stays until Cls.
class Canvas {
 public:
  virtual ~Canvas() = default;

  /// User coordinates of the top left and bottom right corner. Pixels painted before stay.
  virtual void Scale(UserPoint topLeft, UserPoint bottomRight) = 0;

  /// Width of the user range (right less left) and its height (bottom less top: negative when Y
  /// grows up the screen). Before the first Scale: the pixel size.
  [[nodiscard]] virtual double ScaleWidth() const = 0;
  [[nodiscard]] virtual double ScaleHeight() const = 0;

  /// Wipes all pixels to the background. Overlays stay.
  virtual void Cls() = 0;
  virtual void SetBackground(Colour colour) = 0;

  virtual void Line(double x1, double y1, double x2, double y2, Colour colour) = 0;
  /// A line from each point to the next, just as Line draws them; an arc is drawn so.
  virtual void Lines(std::span<const UserPoint> points, Colour colour) {
    for (std::size_t i = 1; i < points.size(); ++i) {
      Line(points[i - 1].X, points[i - 1].Y, points[i].X, points[i].Y, colour);
    }
  }
  virtual void Box(double x1, double y1, double x2, double y2, Colour colour) = 0;
  virtual void FilledBox(double x1, double y1, double x2, double y2, Colour colour) = 0;
  virtual void Circle(double x, double y, double radius, Colour colour) = 0;

  virtual void DrawStyle(PenStyle style) = 0;
  /// Pen width in pixels, from 1.
  virtual void DrawWidth(int pixels) = 0;
  /// Lines from now on carry an edge that sets them off from whatever they cross, where a canvas
  /// can; elsewhere it changes nothing.
  virtual void DrawCasing(bool /*cased*/) {}

  [[nodiscard]] virtual OverlayState GetOverlay(Overlay which) const = 0;
  virtual void SetOverlay(Overlay which, const OverlayState& state) = 0;
};

}  // namespace torvane::platform

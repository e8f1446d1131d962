// A canvas of pixels in memory: the plot of the screen and of pictures alike.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <functional>
#include <optional>
#include <string>

#include "toolkit/MappedCanvas.h"

class QPainter;

namespace torvane::toolkit {

/// Lines are one pixel and sharp, both ends included. Needs no window and no application object.
class RasterCanvas final : public MappedCanvas {
 public:
  RasterCanvas(int width, int height);

  /// The pixels painted so far, without overlays.
  [[nodiscard]] const QImage& Pixels() const { return image_; }
  [[nodiscard]] platform::Colour PixelAt(int x, int y) const;

  /// The overlays that show, over a painter whose origin is the canvas's top left corner.
  void PaintOverlays(QPainter& painter) const;
  /// Pixels and overlays together.
  [[nodiscard]] QImage Compose() const;
  /// Compose as the bytes of a PNG file; empty where it cannot be made.
  [[nodiscard]] QByteArray FileBytes() const;

  /// Empties the canvas at a new size; the scale stays.
  void Resize(int width, int height);

  /// One map and one changed rectangle for all of them.
  void Lines(std::span<const platform::UserPoint> points, platform::Colour colour) override;

  /// Told of each changed rectangle, in pixels.
  void OnChanged(std::function<void(const QRect&)> handler) { changed_ = std::move(handler); }

 protected:
  void PixelLine(double x1, double y1, double x2, double y2, platform::Colour colour) override;
  void PixelBox(double x1, double y1, double x2, double y2, platform::Colour colour) override;
  void PixelFill(double x1, double y1, double x2, double y2, platform::Colour colour) override;
  void PixelEllipse(double x, double y, double radiusX, double radiusY,
                    platform::Colour colour) override;
  void PixelClear(platform::Colour colour) override;
  void OverlayChanged(const platform::OverlayState& before,
                      const platform::OverlayState& after) override;

 private:
  /// Whether the pen draws lines of one pixel.
  [[nodiscard]] bool PlainPen() const;
  void Plain(const QPoint& from, const QPoint& to, QRgb pixel);
  /// The pixel of a point that lies in the view.
  [[nodiscard]] std::optional<QPoint> PlaceOf(const platform::UserPoint& point) const;
  void Penned(double x1, double y1, double x2, double y2, platform::Colour colour);
  void Casing(QPainter& painter, const QPoint& from, const QPoint& to, platform::Colour colour);
  void Touch(const QRect& area);
  /// Whether painting in this colour changes no pixel, as before a plot its old marks are painted
  /// over on a canvas that has just been wiped. If it may change one, the canvas is blank no more.
  [[nodiscard]] bool Blank(platform::Colour colour);
  [[nodiscard]] QRect OverlayArea(const platform::OverlayState& state) const;

  QImage image_;
  std::optional<platform::Colour> blank_;  ///< the colour of all pixels, while it is one
  std::function<void(const QRect&)> changed_;
};

}  // namespace torvane::toolkit

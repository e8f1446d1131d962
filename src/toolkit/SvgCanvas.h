// A canvas that becomes an SVG file.
#pragma once

#include <QByteArray>
#include <memory>

#include "toolkit/MappedCanvas.h"

namespace torvane::toolkit {

/// Segments that follow each other in one colour become one polyline. Needs no window.
class SvgCanvas final : public MappedCanvas {
 public:
  SvgCanvas(int width, int height);
  ~SvgCanvas() override;

  /// What was painted since the last Cls, with the overlays that show, as the bytes of an SVG file;
  /// empty where it cannot be made. The canvas can be painted on and asked again.
  [[nodiscard]] QByteArray FileBytes() const;

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
  struct Record;
  std::unique_ptr<Record> record_;
};

}  // namespace torvane::toolkit

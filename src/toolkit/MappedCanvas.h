// The map from user units to pixels, the pen and the overlays: what all canvases share.
#pragma once

#include <array>

#include "platform/Canvas.h"

namespace torvane::toolkit {

/// Turns every call into one in pixels: pixel x = (X - left) * width / (right - left), and the same
/// in Y. What cannot be mapped (an empty scale, a number that is none) draws nothing.
class MappedCanvas : public platform::Canvas {
 public:
  MappedCanvas(int width, int height);

  void Scale(platform::UserPoint topLeft, platform::UserPoint bottomRight) override;
  [[nodiscard]] double ScaleWidth() const override;
  [[nodiscard]] double ScaleHeight() const override;
  void SetBackground(platform::Colour colour) override { background_ = colour; }
  void Cls() override;

  void Line(double x1, double y1, double x2, double y2, platform::Colour colour) override;
  void Box(double x1, double y1, double x2, double y2, platform::Colour colour) override;
  void FilledBox(double x1, double y1, double x2, double y2, platform::Colour colour) override;
  void Circle(double x, double y, double radius, platform::Colour colour) override;

  void DrawStyle(platform::PenStyle style) override { style_ = style; }
  void DrawWidth(int pixels) override { penWidth_ = pixels < 1 ? 1 : pixels; }
  void DrawCasing(bool cased) override { cased_ = cased; }

  [[nodiscard]] platform::OverlayState GetOverlay(platform::Overlay which) const override;
  void SetOverlay(platform::Overlay which, const platform::OverlayState& state) override;

  [[nodiscard]] bool OverlaysShow() const;

  [[nodiscard]] int PixelWidth() const { return width_; }
  [[nodiscard]] int PixelHeight() const { return height_; }
  [[nodiscard]] platform::UserPoint ToUser(double x, double y) const;
  [[nodiscard]] double ToPixelX(double x) const { return (x - left_) * factorX_; }
  [[nodiscard]] double ToPixelY(double y) const { return (y - top_) * factorY_; }
  [[nodiscard]] platform::Colour Background() const { return background_; }
  [[nodiscard]] platform::PenStyle Style() const { return style_; }
  [[nodiscard]] int PenWidth() const { return penWidth_; }
  [[nodiscard]] bool Cased() const { return cased_; }

 protected:
  /// A new pixel size; the user range of the edges stays, or stays the pixel size if none was set.
  void SetPixelSize(int width, int height);

  /// The same in pixels, not yet clipped, all numbers finite.
  virtual void PixelLine(double x1, double y1, double x2, double y2, platform::Colour colour) = 0;
  virtual void PixelBox(double x1, double y1, double x2, double y2, platform::Colour colour) = 0;
  virtual void PixelFill(double x1, double y1, double x2, double y2, platform::Colour colour) = 0;
  virtual void PixelEllipse(double x, double y, double radiusX, double radiusY,
                            platform::Colour colour) = 0;
  virtual void PixelClear(platform::Colour colour) = 0;
  /// An overlay was moved, shown or hidden.
  virtual void OverlayChanged(const platform::OverlayState& before,
                              const platform::OverlayState& after) = 0;

 private:
  void Remap();

  int width_;
  int height_;
  double left_ = 0;
  double top_ = 0;
  double right_ = 0;
  double bottom_ = 0;
  double factorX_ = 1;
  double factorY_ = 1;
  bool scaled_ = false;
  platform::Colour background_ = 0;
  platform::PenStyle style_ = platform::PenStyle::Solid;
  int penWidth_ = 1;
  bool cased_ = false;
  std::array<platform::OverlayState, static_cast<std::size_t>(platform::Overlay::Count)> overlays_;
};

}  // namespace torvane::toolkit

#include "toolkit/MappedCanvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace torvane::toolkit {

namespace {

template <typename... Numbers>
bool Finite(Numbers... numbers) {
  return (std::isfinite(numbers) && ...);
}

bool Same(const platform::OverlayState& a, const platform::OverlayState& b) {
  return a.From.X == b.From.X && a.From.Y == b.From.Y && a.To.X == b.To.X && a.To.Y == b.To.Y &&
         a.Visible == b.Visible && a.Border == b.Border && a.Fill == b.Fill && a.Filled == b.Filled;
}

}  // namespace

MappedCanvas::MappedCanvas(int width, int height)
    : width_(std::max(1, width)), height_(std::max(1, height)) {
  Remap();
}

void MappedCanvas::Scale(platform::UserPoint topLeft, platform::UserPoint bottomRight) {
  left_ = topLeft.X;
  top_ = topLeft.Y;
  right_ = bottomRight.X;
  bottom_ = bottomRight.Y;
  scaled_ = true;
  Remap();
}

double MappedCanvas::ScaleWidth() const { return right_ - left_; }
double MappedCanvas::ScaleHeight() const { return bottom_ - top_; }

void MappedCanvas::Remap() {
  if (!scaled_) {
    right_ = width_;
    bottom_ = height_;
  }
  factorX_ = width_ / (right_ - left_);
  factorY_ = height_ / (bottom_ - top_);
}

void MappedCanvas::SetPixelSize(int width, int height) {
  width_ = std::max(1, width);
  height_ = std::max(1, height);
  Remap();
}

platform::UserPoint MappedCanvas::ToUser(double x, double y) const {
  return {left_ + x * (right_ - left_) / width_, top_ + y * (bottom_ - top_) / height_};
}

void MappedCanvas::Cls() { PixelClear(background_); }

void MappedCanvas::Line(double x1, double y1, double x2, double y2, platform::Colour colour) {
  const double a = ToPixelX(x1), b = ToPixelY(y1), c = ToPixelX(x2), d = ToPixelY(y2);
  if (Finite(a, b, c, d)) PixelLine(a, b, c, d, colour);
}

void MappedCanvas::Box(double x1, double y1, double x2, double y2, platform::Colour colour) {
  const double a = ToPixelX(x1), b = ToPixelY(y1), c = ToPixelX(x2), d = ToPixelY(y2);
  if (Finite(a, b, c, d)) PixelBox(a, b, c, d, colour);
}

void MappedCanvas::FilledBox(double x1, double y1, double x2, double y2, platform::Colour colour) {
  const double a = ToPixelX(x1), b = ToPixelY(y1), c = ToPixelX(x2), d = ToPixelY(y2);
  if (Finite(a, b, c, d)) PixelFill(a, b, c, d, colour);
}

void MappedCanvas::Circle(double x, double y, double radius, platform::Colour colour) {
  const double a = ToPixelX(x), b = ToPixelY(y);
  const double rx = std::abs(radius * factorX_), ry = std::abs(radius * factorY_);
  if (Finite(a, b, rx, ry)) PixelEllipse(a, b, rx, ry, colour);
}

platform::OverlayState MappedCanvas::GetOverlay(platform::Overlay which) const {
  const auto index = static_cast<std::size_t>(which);
  return index < overlays_.size() ? overlays_[index] : platform::OverlayState{};
}

bool MappedCanvas::OverlaysShow() const {
  return std::any_of(overlays_.begin(), overlays_.end(),
                     [](const platform::OverlayState& overlay) { return overlay.Visible; });
}

void MappedCanvas::SetOverlay(platform::Overlay which, const platform::OverlayState& state) {
  const auto index = static_cast<std::size_t>(which);
  if (index >= overlays_.size() || Same(overlays_[index], state)) return;
  const platform::OverlayState before = std::exchange(overlays_[index], state);
  OverlayChanged(before, state);
}

}  // namespace torvane::toolkit

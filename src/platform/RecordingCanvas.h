// A canvas that writes down what was drawn, in user units, for tests.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/Canvas.h"

namespace torvane::platform {

/// What one entry of the record did.
enum class CanvasCallKind { Scale, Cls, Background, Line, Box, FilledBox, Circle };

/// One call, with the pen that was set when it came. A circle has its radius in X2, Y2 stands at 0;
/// Cls has no numbers; Background has its colour alone.
struct CanvasCall {
  CanvasCallKind Kind = CanvasCallKind::Cls;
  double X1 = 0;
  double Y1 = 0;
  double X2 = 0;
  double Y2 = 0;
  Colour Ink = 0;
  PenStyle Style = PenStyle::Solid;
  int Width = 1;

  bool operator==(const CanvasCall&) const = default;
};

class RecordingCanvas final : public Canvas {
 public:
  /// The size in pixels, which is also the scale until the first Scale.
  RecordingCanvas(int pixelWidth, int pixelHeight);

  /// All calls so far, in order. DrawStyle and DrawWidth show in the calls after them.
  [[nodiscard]] const std::vector<CanvasCall>& Calls() const { return calls_; }
  /// The calls of one kind, in order.
  [[nodiscard]] std::vector<CanvasCall> CallsOf(CanvasCallKind kind) const;
  /// One line a call, for comparing at a glance: "Line 0 0 10 5 0000FF".
  [[nodiscard]] std::string Text() const;
  void Forget() { calls_.clear(); }

  void Scale(UserPoint topLeft, UserPoint bottomRight) override;
  [[nodiscard]] double ScaleWidth() const override { return width_; }
  [[nodiscard]] double ScaleHeight() const override { return height_; }
  void Cls() override;
  void SetBackground(Colour colour) override;
  void Line(double x1, double y1, double x2, double y2, Colour colour) override;
  void Box(double x1, double y1, double x2, double y2, Colour colour) override;
  void FilledBox(double x1, double y1, double x2, double y2, Colour colour) override;
  void Circle(double x, double y, double radius, Colour colour) override;
  void DrawStyle(PenStyle style) override { style_ = style; }
  void DrawWidth(int pixels) override { pen_ = pixels; }
  [[nodiscard]] OverlayState GetOverlay(Overlay which) const override;
  void SetOverlay(Overlay which, const OverlayState& state) override;

 private:
  void Note(CanvasCallKind kind, double x1, double y1, double x2, double y2, Colour colour);

  double width_;
  double height_;
  PenStyle style_ = PenStyle::Solid;
  int pen_ = 1;
  std::vector<CanvasCall> calls_;
  std::array<OverlayState, static_cast<std::size_t>(Overlay::Count)> overlays_{};
};

}  // namespace torvane::platform

#include "platform/RecordingCanvas.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace torvane::platform {

namespace {

constexpr std::array<const char*, 7> KindNames = {"Scale", "Cls",       "Background", "Line",
                                                  "Box",   "FilledBox", "Circle"};

}  // namespace

RecordingCanvas::RecordingCanvas(int pixelWidth, int pixelHeight)
    : width_(pixelWidth), height_(pixelHeight) {}

std::vector<CanvasCall> RecordingCanvas::CallsOf(CanvasCallKind kind) const {
  std::vector<CanvasCall> found;
  std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
               [kind](const CanvasCall& call) { return call.Kind == kind; });
  return found;
}

std::string RecordingCanvas::Text() const {
  std::string text;
  for (const auto& call : calls_) {
    std::array<char, 200> line{};
    std::snprintf(line.data(), line.size(), "%s %.10g %.10g %.10g %.10g %06X%s\n",
                  KindNames[static_cast<std::size_t>(call.Kind)], call.X1, call.Y1, call.X2,
                  call.Y2, static_cast<unsigned>(call.Ink),
                  call.Style == PenStyle::Dotted ? " dotted" : "");
    text += line.data();
  }
  return text;
}

void RecordingCanvas::Note(CanvasCallKind kind, double x1, double y1, double x2, double y2,
                           Colour colour) {
  calls_.push_back({kind, x1, y1, x2, y2, colour, style_, pen_});
}

void RecordingCanvas::Scale(UserPoint topLeft, UserPoint bottomRight) {
  width_ = bottomRight.X - topLeft.X;
  height_ = bottomRight.Y - topLeft.Y;
  Note(CanvasCallKind::Scale, topLeft.X, topLeft.Y, bottomRight.X, bottomRight.Y, 0);
}

void RecordingCanvas::Cls() { Note(CanvasCallKind::Cls, 0, 0, 0, 0, 0); }

void RecordingCanvas::SetBackground(Colour colour) {
  Note(CanvasCallKind::Background, 0, 0, 0, 0, colour);
}

void RecordingCanvas::Line(double x1, double y1, double x2, double y2, Colour colour) {
  Note(CanvasCallKind::Line, x1, y1, x2, y2, colour);
}

void RecordingCanvas::Box(double x1, double y1, double x2, double y2, Colour colour) {
  Note(CanvasCallKind::Box, x1, y1, x2, y2, colour);
}

void RecordingCanvas::FilledBox(double x1, double y1, double x2, double y2, Colour colour) {
  Note(CanvasCallKind::FilledBox, x1, y1, x2, y2, colour);
}

void RecordingCanvas::Circle(double x, double y, double radius, Colour colour) {
  Note(CanvasCallKind::Circle, x, y, radius, 0, colour);
}

OverlayState RecordingCanvas::GetOverlay(Overlay which) const {
  return overlays_.at(static_cast<std::size_t>(which));
}

void RecordingCanvas::SetOverlay(Overlay which, const OverlayState& state) {
  overlays_.at(static_cast<std::size_t>(which)) = state;
}

}  // namespace torvane::platform

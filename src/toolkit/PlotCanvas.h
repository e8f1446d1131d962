// The canvas of the main screen.
#pragma once

#include "toolkit/Control.h"
#include "toolkit/RasterCanvas.h"

namespace torvane::toolkit {

/// A control whose face is a RasterCanvas; draw on Canvas(). Painting asks for one update of all
/// that changed, whatever the number of lines; an overlay that moves repaints only its own place.
class PlotCanvas : public Control {
 public:
  explicit PlotCanvas(QWidget* parent);

  [[nodiscard]] RasterCanvas& Canvas() { return canvas_; }

  /// The size changed, the pixels are gone and the units are pixels again: scale and draw again.
  /// Runs from the loop, once for many steps.
  void OnRedraw(std::function<void()> handler) { redraw_ = std::move(handler); }

  /// In user units.
  void OnPlotDown(std::function<void(const PlotPointerEvent&)> handler) {
    down_ = std::move(handler);
  }
  void OnPlotMove(std::function<void(const PlotPointerEvent&)> handler) {
    move_ = std::move(handler);
  }
  void OnPlotUp(std::function<void(const PlotPointerEvent&)> handler) { up_ = std::move(handler); }

  /// Brings pending changes to the screen's paint queue at once.
  void Flush();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void PointerDown(const PointerEvent& event) override;
  void PointerMove(const PointerEvent& event) override;
  void PointerUp(const PointerEvent& event) override;
  void PlaceChanged() override;

 private:
  [[nodiscard]] PlotPointerEvent InUnits(const PointerEvent& event) const;
  void Changed(const QRect& area);

  RasterCanvas canvas_;
  QRect dirty_;
  bool redrawPending_ = false;
  std::function<void()> redraw_;
  std::function<void(const PlotPointerEvent&)> down_;
  std::function<void(const PlotPointerEvent&)> move_;
  std::function<void(const PlotPointerEvent&)> up_;
};

}  // namespace torvane::toolkit

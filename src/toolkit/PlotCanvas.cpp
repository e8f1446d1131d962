#include "toolkit/PlotCanvas.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>

namespace torvane::toolkit {

namespace {

QEvent::Type FlushRequest() {
  static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

QEvent::Type RedrawRequest() {
  static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

}  // namespace

PlotCanvas::PlotCanvas(QWidget* parent) : Control(parent), canvas_(1, 1) {
  SetFocusable(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  canvas_.OnChanged([this](const QRect& area) { Changed(area); });
}

void PlotCanvas::Changed(const QRect& area) {
  const bool first = dirty_.isNull();
  dirty_ |= area;
  if (first && !dirty_.isNull()) QCoreApplication::postEvent(this, new QEvent(FlushRequest()));
}

void PlotCanvas::Flush() {
  if (dirty_.isNull()) return;
  update(std::exchange(dirty_, QRect()));
}

bool PlotCanvas::event(QEvent* event) {
  if (event->type() == FlushRequest()) {
    Flush();
    return true;
  }
  if (event->type() == RedrawRequest()) {
    redrawPending_ = false;
    if (const auto handler = redraw_) handler();
    return true;
  }
  return Control::event(event);
}

void PlotCanvas::PlaceChanged() {
  if (canvas_.PixelWidth() == width() && canvas_.PixelHeight() == height()) return;
  canvas_.Resize(width(), height());
  // The range of the old size has the old aspect, and whoever fits a drawing asks the range for it.
  canvas_.Scale({0, 0}, {static_cast<double>(width()), static_cast<double>(height())});
  if (redrawPending_) return;
  redrawPending_ = true;
  QCoreApplication::postEvent(this, new QEvent(RedrawRequest()));
}

void PlotCanvas::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setClipRegion(event->region());
  painter.drawImage(event->rect(), canvas_.Pixels(), event->rect());
  canvas_.PaintOverlays(painter);
}

PlotPointerEvent PlotCanvas::InUnits(const PointerEvent& event) const {
  const platform::UserPoint at = canvas_.ToUser(event.X, event.Y);
  return {at.X, at.Y, event.Button};
}

void PlotCanvas::PointerDown(const PointerEvent& event) {
  if (const auto handler = down_) handler(InUnits(event));
}

void PlotCanvas::PointerMove(const PointerEvent& event) {
  if (const auto handler = move_) handler(InUnits(event));
}

void PlotCanvas::PointerUp(const PointerEvent& event) {
  if (const auto handler = up_) handler(InUnits(event));
}

}  // namespace torvane::toolkit

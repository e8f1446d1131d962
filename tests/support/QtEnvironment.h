// One application object for a test program, and an operator's hands.
#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <memory>

#include <gtest/gtest.h>

#include "toolkit/Application.h"
#include "toolkit/Control.h"
#include "toolkit/QtLoop.h"

namespace torvane::tests {

/// Off screen unless the environment names another platform.
class QtEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    application_ = std::make_unique<toolkit::Application>(count_, arguments_);
  }
  void TearDown() override { application_.reset(); }

 private:
  char name_[8] = "tests";
  char* arguments_[2] = {name_, nullptr};
  int count_ = 1;
  std::unique_ptr<toolkit::Application> application_;
};

/// Registers the environment of every program that includes this file.
inline ::testing::Environment* const Registered =
    ::testing::AddGlobalTestEnvironment(new QtEnvironment);

inline void SendMouse(QWidget& widget, QEvent::Type type, QPointF at, Qt::MouseButton button,
                      Qt::MouseButtons held) {
  QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

/// Places are pixels of the widget.
inline void PressAt(QWidget& widget, double x, double y, Qt::MouseButton button = Qt::LeftButton) {
  SendMouse(widget, QEvent::MouseButtonPress, {x, y}, button, button);
}
inline void DragTo(QWidget& widget, double x, double y, Qt::MouseButton button = Qt::LeftButton) {
  SendMouse(widget, QEvent::MouseMove, {x, y}, Qt::NoButton, button);
}
inline void ReleaseAt(QWidget& widget, double x, double y,
                      Qt::MouseButton button = Qt::LeftButton) {
  SendMouse(widget, QEvent::MouseButtonRelease, {x, y}, button, Qt::NoButton);
}
inline void ClickAt(QWidget& widget, double x, double y) {
  PressAt(widget, x, y);
  ReleaseAt(widget, x, y);
}
inline void Click(QWidget& widget) { ClickAt(widget, widget.width() / 2.0, widget.height() / 2.0); }
inline void DoubleClickAt(QWidget& widget, double x, double y) {
  ClickAt(widget, x, y);
  SendMouse(widget, QEvent::MouseButtonDblClick, {x, y}, Qt::LeftButton, Qt::LeftButton);
  ReleaseAt(widget, x, y);
}

/// Handles events for that long, ms.
inline void Pump(platform::EventLoop& loop, int ms = 0) {
  bool over = false;
  const auto timer = loop.MakeTimer([&] { over = true; });
  timer->Start(ms < 1 ? 1 : ms);
  loop.WaitUntil([&] { return over; });
}

}  // namespace torvane::tests

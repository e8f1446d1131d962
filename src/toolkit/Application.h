// The application object: fonts, and faults inside event handlers.
#pragma once

#include <QApplication>
#include <exception>

namespace torvane::toolkit {

/// Make one before any control. A fault thrown by a handler is kept, and QtLoop throws it again, so
/// that it ends in QtLoop::Run's caller.
class Application : public QApplication {
 public:
  Application(int& argc, char** argv);

  bool notify(QObject* receiver, QEvent* event) override;

  /// The first fault of a handler, which is taken out; null if there was none.
  std::exception_ptr TakeFault();
  [[nodiscard]] bool HasFault() const { return fault_ != nullptr; }

  /// Events whose handling has begun and not ended, on whichever stack.
  [[nodiscard]] static int EventDepth();

 private:
  std::exception_ptr fault_;
};

}  // namespace torvane::toolkit

// The application object: fonts, and faults inside event handlers.
#pragma once

#include <QApplication>
#include <exception>

namespace torvane::toolkit {

/// Make one before any control. A fault thrown by a handler is kept, and the waits of QtLoop throw
/// it again on their way out, so that it ends in QtLoop::Run's caller.
class Application : public QApplication {
 public:
  Application(int& argc, char** argv);

  bool notify(QObject* receiver, QEvent* event) override;

  /// The first fault of a handler, which is taken out; null if there was none.
  std::exception_ptr TakeFault();
  [[nodiscard]] bool HasFault() const { return fault_ != nullptr; }

 private:
  std::exception_ptr fault_;
};

}  // namespace torvane::toolkit

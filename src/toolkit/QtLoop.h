// The event loop of the console.
#pragma once

#include <functional>
#include <memory>

#include "platform/EventLoop.h"

namespace torvane::toolkit {

/// Waits nest: the innermost returns first. Needs an application object (a QCoreApplication will
/// do).
class QtLoop final : public platform::EventLoop {
 public:
  QtLoop();
  ~QtLoop() override;

  [[nodiscard]] std::int64_t NowMs() const override;
  [[nodiscard]] std::unique_ptr<platform::Timer> MakeTimer(std::function<void()> fired) override;
  void Post(std::function<void()> job) override;

  /// Throws again what a handler threw. After End, a wait inside Run is given up by an exception
  /// that only Run catches.
  void WaitUntil(const std::function<bool()>& done) override;

  /// Handles events until End; the exit status given there. Waits that are still under way are
  /// given up.
  int Run();
  /// Ends Run, or the next Run if none is under way.
  void End(int status);
  [[nodiscard]] bool Ended() const;

  /// Jobs posted from other threads are allowed while this runs; nothing else is.
  struct State;

 private:
  std::shared_ptr<State> state_;
};

}  // namespace torvane::toolkit

// The event loop of the console.
#pragma once

#include <functional>
#include <memory>

#include "platform/EventLoop.h"

namespace torvane::toolkit {

/// Needs an application object (a QCoreApplication will do). No wait runs a loop within a loop: a
/// handler that waits is put aside. Nothing of Qt may be on the stack between the start of an
/// activity and its wait (Qt would keep the exception that gives the wait up), and nobody waits
/// inside an event without an activity; both throw a std::logic_error.
class QtLoop final : public platform::EventLoop {
 public:
  QtLoop();
  ~QtLoop() override;

  [[nodiscard]] std::int64_t NowMs() const override;
  [[nodiscard]] std::unique_ptr<platform::Timer> MakeTimer(std::function<void()> fired) override;
  void Post(std::function<void()> job) override;
  void Start(std::function<void()> handler) override;

  /// Outside any activity: throws again what a handler threw.
  void WaitUntil(const std::function<bool()>& done) override;
  void GiveUpWaits() override;

  /// Handles events until End; the exit status given there. Waits that are still under way then are
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

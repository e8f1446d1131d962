// The event loop, its timers and its clock, without a toolkit.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace torvane::platform {

/// A periodic timer. It fires inside nested waits too, but never a second time while its own
/// handler is still running.
class Timer {
 public:
  virtual ~Timer() = default;

  /// Starts, or starts afresh, with a period in ms. A period of 0 stops the timer.
  virtual void Start(int intervalMs) = 0;

  /// Stops and sets the period to 0.
  virtual void Stop() = 0;

  [[nodiscard]] virtual bool Active() const = 0;

  /// The period in ms, 0 when stopped.
  [[nodiscard]] virtual int IntervalMs() const = 0;
};

/// The one loop of the one thread. Waits sleep in it; nothing spins.
class EventLoop {
 public:
  virtual ~EventLoop() = default;

  /// A clock that only goes forward, ms.
  [[nodiscard]] virtual std::int64_t NowMs() const = 0;

  [[nodiscard]] virtual std::unique_ptr<Timer> MakeTimer(std::function<void()> fired) = 0;

  /// Runs `job` from the loop, soon, behind what already stands in it.
  virtual void Post(std::function<void()> job) = 0;

  /// Handles events, sleeping between them, until `done` holds. `done` is asked first, then again
  /// after each event; it must have no side effect. May be called from inside a handler.
  virtual void WaitUntil(const std::function<bool()>& done) = 0;
};

}  // namespace torvane::platform

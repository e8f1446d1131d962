// The event loop, its timers and its clock, without a toolkit.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace torvane::platform {

/// A periodic timer. It fires whatever else waits, but never a second time while the activity of
/// its own last tick is under way.
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

/// The one loop of the one thread. Every handler that it runs (a timer's tick, a posted job) is an
/// activity with a stack of its own, so a handler that waits holds up no other: each wait ends when
/// its own condition holds, in any order. Waits sleep; nothing spins.
///
/// Between two waits anything may have happened. What a handler needs afterwards it holds by value
/// or looks at afresh.
class EventLoop {
 public:
  virtual ~EventLoop() = default;

  /// A clock that only goes forward, ms.
  [[nodiscard]] virtual std::int64_t NowMs() const = 0;

  [[nodiscard]] virtual std::unique_ptr<Timer> MakeTimer(std::function<void()> fired) = 0;

  /// Runs `job` from the loop, soon, after what is already queued.
  virtual void Post(std::function<void()> job) = 0;

  /// Runs `handler` as an activity, now, until it ends or first waits. Whoever receives an event
  /// from elsewhere (a key, the pointer) hands it on through this. A fault before the first wait
  /// leaves here, a later one the loop.
  virtual void Start(std::function<void()> handler) = 0;

  /// Sleeps until `done` holds, which is asked first, then again after each event; it must have no
  /// side effect. Inside an activity the others go on meanwhile; outside any (`main`, a test) this
  /// runs the loop itself.
  virtual void WaitUntil(const std::function<bool()>& done) = 0;

  /// Ends every wait that is under way by an exception that leaves its handler: before the first of
  /// the parts goes that a handler may come back to.
  virtual void GiveUpWaits() = 0;
};

}  // namespace torvane::platform

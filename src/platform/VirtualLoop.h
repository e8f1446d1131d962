// An event loop with virtual time: a wait jumps to the next timer, so ten seconds pass in no time.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/EventLoop.h"

namespace torvane::platform {

/// Deterministic: events run in the order of their time, then of their making.
class VirtualLoop final : public EventLoop {
 public:
  VirtualLoop();
  ~VirtualLoop() override;

  [[nodiscard]] std::int64_t NowMs() const override;
  [[nodiscard]] std::unique_ptr<Timer> MakeTimer(std::function<void()> fired) override;
  void Post(std::function<void()> job) override;

  void Start(std::function<void()> handler) override;

  /// Outside any activity: throws std::logic_error when nothing is left that could ever make `done`
  /// hold.
  void WaitUntil(const std::function<bool()>& done) override;
  void GiveUpWaits() override;

  /// Runs `job` once, `delayMs` from now.
  void After(std::int64_t delayMs, std::function<void()> job);

  /// Handles all that falls due within the next `ms`, and leaves the clock there. Inside an
  /// activity it waits for as long.
  void RunFor(std::int64_t ms);

  /// Events handled so far: a wait that polls instead of sleeping shows here.
  [[nodiscard]] std::uint64_t EventsHandled() const;

  /// Handlers that have begun and wait.
  [[nodiscard]] std::size_t ActivitiesUnderWay() const;

  /// Seen after each event and whatever went on after it.
  void OnEvent(std::function<void()> look);

 private:
  class VirtualTimer;
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace torvane::platform

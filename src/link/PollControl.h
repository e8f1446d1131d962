// The switching of the poll timer, the heartbeat of the program.
#pragma once

#include <functional>
#include <memory>

#include "core/LinkSettings.h"
#include "platform/EventLoop.h"

namespace torvane::link {

/// The first tick after any start comes PollResumeMs later, those after it every PollPeriodMs.
class PollControl {
 public:
  PollControl(platform::EventLoop& loop, core::LinkSettings& settings);

  void SetTick(std::function<void()> tick) { tick_ = std::move(tick); }

  /// Starts afresh. `setWanted` makes the poll one that pauses restart by themselves.
  void Start(bool setWanted);
  void Stop(bool clearWanted);

  /// Starts only a poll that is wanted: the end of every pause.
  void Resume();

 private:
  void Tick();

  core::LinkSettings& settings_;
  std::function<void()> tick_;
  std::unique_ptr<platform::Timer> timer_;
};

}  // namespace torvane::link

// The monitoring of a running console: it looks at what the poll has read, and asks nobody.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "core/System.h"
#include "monitoring/Adapter.h"
#include "monitoring/MonitorValues.h"
#include "platform/EventLoop.h"
#include "platform/TcpServer.h"

namespace torvane::monitoring {

/// Without an answer of the controller for so long nothing is known of the machine, ms.
inline constexpr int SilenceMs = 3000;

/// What the monitor looks at; all of it outlives the monitor.
struct MonitorSources {
  const core::System& System;
  /// Exchanges with the controller so far that were answered, and that failed.
  std::function<std::uint64_t()> Answers;
  std::function<std::uint64_t()> Failures;
  /// The messages that a screen lists, nothing while none does.
  std::function<std::optional<std::vector<ActiveMessage>>()> Messages;
  /// Time of day, ms since 1970.
  std::function<std::int64_t()> WallMs;
};

class Monitor {
 public:
  Monitor(platform::EventLoop& loop, platform::TcpServer& server, MonitorSources sources);
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  /// After each tick of the poll. A tick with a failed exchange is passed over: its values read as
  /// zero, which they are not.
  void AfterTick();

  /// The console ends: nothing is known from here on.
  void End();

  [[nodiscard]] std::size_t Clients() const { return adapter_.Clients(); }

 private:
  void Serve();
  void NoteAnswers();

  platform::EventLoop& loop_;
  MonitorSources sources_;
  Adapter adapter_;
  MonitorReader reader_;
  std::unique_ptr<platform::Timer> timer_;
  std::uint64_t answers_ = 0;      ///< as last looked at
  std::uint64_t tickAnswers_ = 0;  ///< at the end of the last tick
  std::uint64_t failures_ = 0;
  std::int64_t answeredMs_ = 0;
  bool ended_ = false;
};

}  // namespace torvane::monitoring

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
#include "supervision/PollObserver.h"

namespace torvane::monitoring {

/// Nothing is known of the machine after so long without an answer of the controller, and after so
/// long with ticks of which none has read all it asked for, ms.
inline constexpr int SilenceMs = 3000;

/// What the monitor looks at, for as long as the loop runs.
struct MonitorSources {
  const core::System& System;
  /// Exchanges with the controller so far that were answered.
  std::function<std::uint64_t()> Answers;
  /// The messages that a screen lists, nothing while none does.
  std::function<std::optional<std::vector<ActiveMessage>>()> Messages;
  /// Time of day, ms since 1970.
  std::function<std::int64_t()> WallMs;
};

class Monitor final : public supervision::PollObserver {
 public:
  Monitor(platform::EventLoop& loop, platform::TcpServer& server, MonitorSources sources);
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  // PollObserver
  /// A tick with a failed exchange is passed over, as its values read as zero, which they are not.
  void TickRead(const supervision::TickReading& tick) override;
  /// Nothing is known from here on.
  void ConsoleEnds(bool unheard) override;

  [[nodiscard]] std::size_t Clients() const { return adapter_.Clients(); }

 private:
  void Serve();
  void NoteAnswers();
  void PassOver();

  platform::EventLoop& loop_;
  MonitorSources sources_;
  Adapter adapter_;
  MonitorReader reader_;
  std::unique_ptr<platform::Timer> timer_;
  std::uint64_t answers_ = 0;      ///< as last looked at
  std::uint64_t tickAnswers_ = 0;  ///< at the end of the last tick
  std::int64_t answeredMs_ = 0;
  std::optional<std::int64_t> blindMs_;  ///< the first tick passed over since one was not
  bool ended_ = false;
};

}  // namespace torvane::monitoring

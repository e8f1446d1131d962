// Clients of the monitoring: each has every item when it comes and what changes after that.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "monitoring/MonitorValues.h"
#include "platform/EventLoop.h"
#include "platform/TcpServer.h"

namespace torvane::monitoring {

/// What a client may cost.
struct AdapterLimits {
  std::size_t Clients = 64;         ///< more are closed as they come
  std::size_t NewClients = 4;       ///< taken at a time
  std::size_t Backlog = 64 * 1024;  ///< bytes that a client has not taken; with more it is dropped
  std::size_t Input = 4 * 1024;     ///< bytes a second from a client; with more it is dropped
};

/// How long an agent may wait for a line before it takes the adapter for dead, ms. It pings sooner.
inline constexpr int HeartbeatMs = 10'000;

/// A client that has pinged and then not for so long has gone, ms. One that never pings may stay.
inline constexpr std::int64_t LongestPingPauseMs = 3 * HeartbeatMs;

/// Never waits for a client, and holds a bounded number of bytes for each.
class Adapter {
 public:
  /// `wallMs` is the time of day, ms since 1970.
  Adapter(platform::TcpServer& server, std::function<std::int64_t()> wallMs,
          AdapterLimits limits = {});
  ~Adapter();
  Adapter(const Adapter&) = delete;
  Adapter& operator=(const Adapter&) = delete;

  /// Tells every client what has changed.
  void Publish(const MonitorSnapshot& now);

  /// Takes new clients, answers heartbeats, lets those go that have gone or cost too much. To be
  /// called every few milliseconds; `nowMs` goes forward only.
  void Serve(std::int64_t nowMs);

  [[nodiscard]] std::size_t Clients() const { return clients_.size(); }

 private:
  struct Client;

  void TakeClients();
  /// False when it is to be dropped.
  [[nodiscard]] bool Attend(Client& client, std::int64_t nowMs) const;
  /// Nothing when it has sent too much.
  [[nodiscard]] std::optional<std::string> Input(Client& client, std::int64_t nowMs) const;
  [[nodiscard]] bool Send(Client& client, std::string_view text) const;
  [[nodiscard]] std::string Changes(const MonitorSnapshot& before, const MonitorSnapshot& now,
                                    bool everything) const;

  platform::TcpServer& server_;
  std::function<std::int64_t()> wallMs_;
  AdapterLimits limits_;
  MonitorSnapshot shown_;
  std::vector<std::unique_ptr<Client>> clients_;
};

}  // namespace torvane::monitoring

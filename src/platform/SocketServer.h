// TCP clients on the operating system's sockets, none of which ever blocks.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/TcpServer.h"

namespace torvane::platform {

/// Where a server listens. Without an address it is this computer alone.
struct TcpPlace {
  std::string Address = "127.0.0.1";  ///< numeric, IPv4 or IPv6
  std::uint16_t Port = 0;             ///< 0: the operating system chooses

  /// "127.0.0.1:7878", "[::1]:7878".
  [[nodiscard]] std::string Text() const;
};

/// What "[ADDRESS:]PORT" says: "7878", "192.168.1.5:7878", "[::1]:7878", "localhost:7878". False
/// where it says no such thing.
[[nodiscard]] bool ParseTcpPlace(const std::string& text, TcpPlace& place);

class SocketServer final : public TcpServer {
 public:
  /// Throws RuntimeFault, which names the place, where it cannot be had.
  explicit SocketServer(TcpPlace place);
  ~SocketServer() override;
  SocketServer(const SocketServer&) = delete;
  SocketServer& operator=(const SocketServer&) = delete;

  [[nodiscard]] std::unique_ptr<TcpClient> TakeClient() override;

  /// With the port that it has got.
  [[nodiscard]] const TcpPlace& Place() const { return place_; }

 private:
  TcpPlace place_;
  int handle_ = -1;
};

}  // namespace torvane::platform

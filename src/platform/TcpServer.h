// Clients that connect over TCP, without a toolkit. Nothing here waits for anybody.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace torvane::platform {

/// One client. Its end closes the connection at once and drops what is queued.
class TcpClient {
 public:
  virtual ~TcpClient() = default;

  /// False once the other end has gone.
  [[nodiscard]] virtual bool Connected() const = 0;

  /// At most `most` bytes of what waits; no more than a few kilobytes ever wait here.
  [[nodiscard]] virtual std::string Read(std::size_t most) = 0;

  /// Queues the bytes.
  virtual void Write(std::string_view bytes) = 0;

  /// Bytes queued that the operating system has not taken yet.
  [[nodiscard]] virtual std::size_t BytesQueued() const = 0;

  /// Offers what is queued to the operating system now, as far as it takes it.
  virtual void Flush() = 0;
};

class TcpServer {
 public:
  virtual ~TcpServer() = default;

  /// The next client that has connected; null where none waits. Clients that nobody takes wait
  /// with the operating system and cost nothing.
  [[nodiscard]] virtual std::unique_ptr<TcpClient> TakeClient() = 0;
};

}  // namespace torvane::platform

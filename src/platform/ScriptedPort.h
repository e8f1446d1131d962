// A serial port for tests: written bytes go to a script, and the script answers when it likes.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace torvane::platform {

/// Holds no thread and no device. The peer is a function that sees each write and calls
/// `Deliver` now or from a later event of the loop.
class ScriptedPort final : public SerialPort {
 public:
  explicit ScriptedPort(EventLoop& loop) : loop_(loop) {}

  /// The other end: called with each write.
  void SetPeer(std::function<void(std::string_view)> peer) { peer_ = std::move(peer); }

  /// Bytes arrive from the other end; the received handler runs from the loop. Lost while closed.
  void Deliver(std::string_view bytes);

  /// Open calls that are to fail before one succeeds; -1 fails always.
  void FailOpens(int count) { failOpens_ = count; }

  [[nodiscard]] int OpenCalls() const { return openCalls_; }
  [[nodiscard]] const PortSetup& Setup() const { return setup_; }
  /// All bytes written so far while the port was open.
  [[nodiscard]] const std::string& Written() const { return written_; }

  bool Open(const PortSetup& setup) override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return open_; }
  [[nodiscard]] std::size_t BytesWaiting() const override { return input_.size(); }
  [[nodiscard]] std::string ReadAll() override;
  void Write(std::string_view bytes) override;
  [[nodiscard]] std::size_t BytesQueued() const override { return queued_; }
  void SetDtr(bool on) override { setup_.Dtr = on; }
  void SetRts(bool on) override { setup_.Rts = on; }
  [[nodiscard]] PortLines Lines() const override { return lines_; }
  void OnReceived(std::function<void()> handler) override { received_ = std::move(handler); }
  void OnLineEvent(std::function<void(LineEvent)> handler) override { event_ = std::move(handler); }

  /// Sets the modem lines and tells the handler from the loop what has changed.
  void SetLines(const PortLines& lines);

  /// An event of the line; the handler runs from the loop.
  void Raise(LineEvent event);

  /// From now on written bytes stay in the output queue until Drain; off empties it.
  void HoldOutput(bool hold);
  /// So many bytes of the queue leave, oldest first.
  void Drain(std::size_t bytes);

 private:
  /// Runs `call` on the port from the loop; nothing once the port is gone.
  void PostCall(std::function<void(ScriptedPort&)> call);

  EventLoop& loop_;
  std::shared_ptr<ScriptedPort*> self_ = std::make_shared<ScriptedPort*>(this);
  std::function<void(std::string_view)> peer_;
  std::function<void()> received_;
  std::function<void(LineEvent)> event_;
  PortSetup setup_;
  PortLines lines_;
  std::string input_;
  std::string written_;
  int failOpens_ = 0;
  int openCalls_ = 0;
  std::size_t queued_ = 0;
  bool open_ = false;
  bool holdOutput_ = false;
};

}  // namespace torvane::platform

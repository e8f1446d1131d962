// The line to the controller with an ear on it.
#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "platform/SerialPort.h"

namespace torvane::tools {

/// Hands everything on to another port, which outlives it, and keeps the lines that were written,
/// without their carriage returns. Bytes that nobody asks for are not kept: it listens once Listen
/// has been called.
class SentLines final : public platform::SerialPort {
 public:
  explicit SentLines(platform::SerialPort& port) : port_(port) {}

  void Listen() { listening_ = true; }

  /// True when a line that begins with `text` has gone out since the line found last, or since
  /// Listen; that line and those before it are not found again.
  bool Find(std::string_view text);

  // platform::SerialPort
  bool Open(const platform::PortSetup& setup) override { return port_.Open(setup); }
  void Close() override { port_.Close(); }
  [[nodiscard]] bool IsOpen() const override { return port_.IsOpen(); }
  [[nodiscard]] std::size_t BytesWaiting() const override { return port_.BytesWaiting(); }
  [[nodiscard]] std::string ReadAll() override { return port_.ReadAll(); }
  void Write(std::string_view bytes) override;
  [[nodiscard]] std::size_t BytesQueued() const override { return port_.BytesQueued(); }
  void SetDtr(bool on) override { port_.SetDtr(on); }
  void SetRts(bool on) override { port_.SetRts(on); }
  [[nodiscard]] platform::PortLines Lines() const override { return port_.Lines(); }
  void OnReceived(std::function<void()> handler) override { port_.OnReceived(std::move(handler)); }
  void OnLineEvent(std::function<void(platform::LineEvent)> handler) override {
    port_.OnLineEvent(std::move(handler));
  }

 private:
  platform::SerialPort& port_;
  std::deque<std::string> lines_;
  std::string line_;  ///< what has been written of the next one
  bool listening_ = false;
};

}  // namespace torvane::tools

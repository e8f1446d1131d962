// The far end of the line behind the serial interface, in the same process.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "platform/EventLoop.h"
#include "platform/SerialPort.h"
#include "simulator/ControllerEnd.h"

namespace torvane::simulator {

struct PortOptions {
  /// Bits per second of the line, ten to a byte, each way; 0 for a line that takes no time.
  double Baud = 0;
  /// Period of a timer that moves the machine while nobody talks to it, ms; 0 for none. Exchanges
  /// move it anyway, to the time they happen at, so a timer is only needed by whoever listens for
  /// events or watches the machine by other means.
  int HeartbeatMs = 0;
};

/// Time is the loop's: virtual in tests, the clock's otherwise. Bytes arrive from the loop, never
/// within Write. An answer arrives whole, when its last byte would.
class SimulatedPort final : public platform::SerialPort {
 public:
  SimulatedPort(platform::EventLoop& loop, ControllerEnd& controller, PortOptions options = {});
  ~SimulatedPort() override;
  SimulatedPort(const SimulatedPort&) = delete;
  SimulatedPort& operator=(const SimulatedPort&) = delete;

  bool Open(const platform::PortSetup& setup) override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return open_; }
  [[nodiscard]] std::size_t BytesWaiting() const override { return input_.size(); }
  [[nodiscard]] std::string ReadAll() override;
  void Write(std::string_view bytes) override;
  [[nodiscard]] std::size_t BytesQueued() const override;
  void SetDtr(bool) override {}
  void SetRts(bool) override {}
  [[nodiscard]] platform::PortLines Lines() const override { return {true, true, true}; }
  void OnReceived(std::function<void()> handler) override { received_ = std::move(handler); }
  void OnLineEvent(std::function<void(platform::LineEvent)>) override {}

  /// Moves the machine to the loop's present time.
  void CatchUp();

  /// Milliseconds that the bytes of both directions have taken on the line so far.
  [[nodiscard]] double LineMs() const { return lineMs_; }

 private:
  struct Transfer {
    double AtMs = 0;  ///< when the last byte has arrived
    std::string Bytes;
  };

  [[nodiscard]] double TransferMs(std::size_t bytes) const;
  /// Books the line from `fromMs` on for `bytes` and gives the time when they are through.
  double Book(double fromMs, std::size_t bytes);
  void MoveTo(double ms);
  /// Puts what the controller has answered on the line, from `fromMs` on.
  void CollectAnswers(double fromMs);
  /// Hands the controller what has reached it by now.
  void Carry();
  /// From the loop: carries, then hands over what has arrived.
  void Deliver();
  void TellReceived();
  void Schedule();

  ControllerEnd& controller_;
  platform::EventLoop& loop_;
  PortOptions options_;
  std::unique_ptr<platform::Timer> wake_;
  std::unique_ptr<platform::Timer> heartbeat_;
  std::function<void()> received_;
  std::deque<Transfer> toController_;
  std::deque<Transfer> toFrontEnd_;
  std::string input_;
  std::shared_ptr<SimulatedPort*> self_;  ///< what posted jobs look at: gone when the port is
  double nowMs_ = 0;                      ///< the controller's time
  double lineFreeMs_ = 0;                 ///< when the line has carried all that was put on it
  double lineMs_ = 0;
  bool open_ = false;
};

}  // namespace torvane::simulator

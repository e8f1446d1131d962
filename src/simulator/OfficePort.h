// The second port with the office at its other end, in the same process.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/EventLoop.h"
#include "platform/LineWatch.h"
#include "platform/SerialPort.h"
#include "simulator/OfficePeer.h"

namespace torvane::simulator {

/// A line with both handshakes, modem lines, breaks and time-outs. Time is the loop's. What the
/// office sends while the port is closed is lost, as on a real line.
class OfficePort final : public platform::SerialPort {
 public:
  /// `baud` is the rate of both directions, bits per second; 0 for a line that takes no time.
  OfficePort(platform::EventLoop& loop, OfficePeer& office, double baud);
  ~OfficePort() override;
  OfficePort(const OfficePort&) = delete;
  OfficePort& operator=(const OfficePort&) = delete;

  bool Open(const platform::PortSetup& setup) override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return open_; }
  [[nodiscard]] std::size_t BytesWaiting() const override { return input_.size(); }
  [[nodiscard]] std::string ReadAll() override;
  void Write(std::string_view bytes) override;
  [[nodiscard]] std::size_t BytesQueued() const override { return queue_.size(); }
  void SetDtr(bool on) override { setup_.Dtr = on; }
  void SetRts(bool on) override { setup_.Rts = on; }
  [[nodiscard]] platform::PortLines Lines() const override { return office_.Lines(); }
  void OnReceived(std::function<void()> handler) override { received_ = std::move(handler); }
  void OnLineEvent(std::function<void(platform::LineEvent)> handler) override;

  /// Whoever has given the office something to do says so: nobody looks otherwise.
  void Wake();

 private:
  [[nodiscard]] bool UsesWires() const;
  [[nodiscard]] bool UsesCodes() const;
  /// The office does not take what the console has queued.
  [[nodiscard]] bool HeldUp() const;
  void Step();
  void SendQueued(double ms);
  void Arrive(std::string_view bytes);
  void LookAtLines();
  [[nodiscard]] platform::LineLook LookNow() const;
  /// Sleeps until something is due, not at all when nothing is.
  void Schedule();

  platform::EventLoop& loop_;
  OfficePeer& office_;
  std::unique_ptr<platform::Timer> timer_;
  platform::LineWatch watch_;
  platform::PortSetup setup_;
  std::function<void()> received_;
  std::function<void(platform::LineEvent)> event_;
  std::shared_ptr<OfficePort*> self_;  ///< what posted jobs look at: gone when the port is
  std::string queue_;                  ///< written, not yet on the line
  std::string input_;
  double bytesPerMs_;
  double budget_ = 0;
  std::int64_t lastMs_ = 0;
  bool open_ = false;
  bool told_ = false;  ///< a call of the received handler is under way to the loop
  bool heldByXoff_ = false;
};

}  // namespace torvane::simulator

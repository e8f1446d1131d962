// A serial port of the machine's PC.
#pragma once

#include <memory>

#include "platform/EventLoop.h"
#include "platform/SerialPort.h"
#include "toolkit/SerialSettings.h"

namespace torvane::toolkit {

/// Takes real devices and pseudo-terminals. A cable that is pulled (the device goes away) is
/// silence: the port stays open, nothing arrives, what is written is lost. Once a second it is
/// tried whether the device is back.
class QtSerialPort final : public platform::SerialPort {
 public:
  QtSerialPort(platform::EventLoop& loop, DeviceMap devices = {});
  ~QtSerialPort() override;

  bool Open(const platform::PortSetup& setup) override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override;
  [[nodiscard]] std::size_t BytesWaiting() const override;
  [[nodiscard]] std::string ReadAll() override;
  void Write(std::string_view bytes) override;
  /// The program's buffer and, where the system tells, the driver's.
  [[nodiscard]] std::size_t BytesQueued() const override;
  void SetDtr(bool on) override;
  void SetRts(bool on) override;
  [[nodiscard]] platform::PortLines Lines() const override;
  void OnReceived(std::function<void()> handler) override;
  /// The modem lines are looked at ten times a second while a handler is set. CTS is timed out
  /// after half a minute with bytes waiting under a hardware handshake; DSR holds nothing up.
  void OnLineEvent(std::function<void(platform::LineEvent)> handler) override;

  /// The device has gone since Open.
  [[nodiscard]] bool Lost() const;

 private:
  struct Device;
  std::unique_ptr<Device> device_;
};

}  // namespace torvane::toolkit

// A serial port as the link and the program transfer need it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace torvane::platform {

/// 0 none, 1 XON/XOFF, 2 RTS/CTS, 3 both, as the port files have it.
enum class Handshake { None = 0, XonXoff = 1, RtsCts = 2, Both = 3 };

/// What a port is opened with.
struct PortSetup {
  int Number = 0;                       ///< port number, from 1
  std::string Settings = "9600,N,8,1";  ///< baud,parity,data,stop
  Handshake Handshaking = Handshake::None;
  bool Dtr = false;
  bool Rts = false;
  bool DiscardNulls = true;
};

/// The modem lines that the transfer watches.
struct PortLines {
  bool Cts = false;
  bool Dsr = false;
  bool Carrier = false;
};

/// What happens on a port beside the bytes that come.
enum class LineEvent {
  CtsChanged,
  DsrChanged,
  CarrierChanged,
  Break,       ///< the other end holds the line
  CtsTimeout,  ///< bytes have waited too long for CTS
  DsrTimeout,  ///< or for DSR
};

class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// False when the device is not there or cannot be had; nothing is thrown.
  virtual bool Open(const PortSetup& setup) = 0;
  /// What has not left yet is dropped.
  virtual void Close() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;

  [[nodiscard]] virtual std::size_t BytesWaiting() const = 0;

  /// All that waits, nothing when nothing does.
  [[nodiscard]] virtual std::string ReadAll() = 0;

  /// Queues the bytes; never blocks.
  virtual void Write(std::string_view bytes) = 0;

  /// Bytes queued by Write that have not left yet.
  [[nodiscard]] virtual std::size_t BytesQueued() const = 0;

  virtual void SetDtr(bool on) = 0;
  virtual void SetRts(bool on) = 0;
  [[nodiscard]] virtual PortLines Lines() const = 0;

  /// Called from the loop when bytes have come. One handler; empty takes it away.
  virtual void OnReceived(std::function<void()> handler) = 0;

  /// Called from the loop with each event of the line. One handler; empty takes it away.
  virtual void OnLineEvent(std::function<void(LineEvent)> handler) = 0;
};

}  // namespace torvane::platform

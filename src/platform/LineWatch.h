// What has happened on a serial line between two looks at it.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/SerialPort.h"

namespace torvane::platform {

/// Bytes that have waited so long for a modem line have waited too long, ms.
inline constexpr std::int64_t LineTimeoutMs = 30000;

struct LineLook {
  PortLines Lines;
  int Breaks = 0;  ///< counted by the driver since the device was opened; 0 without a counter
  bool WaitsForCts = false;  ///< under a hardware handshake, bytes have not left yet
  bool WaitsForDsr = false;  ///< likewise, on a port whose DSR holds them up too
  std::int64_t NowMs = 0;
};

/// How long one modem line has held bytes up.
class HeldWatch {
 public:
  /// True once in each hold, when it has lasted too long.
  bool Held(bool held, std::int64_t nowMs);

 private:
  std::int64_t since_ = -1;  ///< ms; below 0 while nothing is held up
  bool told_ = false;
};

class LineWatch {
 public:
  /// What is set now is no event.
  void Begin(const LineLook& look);

  /// The events since the look before. A wait for a line is reported once; it begins anew when the
  /// line comes or the bytes have gone.
  [[nodiscard]] std::vector<LineEvent> Look(const LineLook& look);

 private:
  LineLook last_;
  HeldWatch cts_;
  HeldWatch dsr_;
};

}  // namespace torvane::platform

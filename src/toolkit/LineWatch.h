// What has happened on a serial line between two looks at it.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/SerialPort.h"

namespace torvane::toolkit {

/// Bytes that have waited so long for CTS have waited too long, ms.
inline constexpr std::int64_t CtsTimeoutMs = 30000;

struct LineLook {
  platform::PortLines Lines;
  int Breaks = 0;  ///< counted by the driver since the device was opened; 0 without a counter
  bool BytesWait = false;  ///< under a hardware handshake, bytes have not left yet
  std::int64_t NowMs = 0;
};

class LineWatch {
 public:
  /// What stands now is no event.
  void Begin(const LineLook& look);

  /// The events since the look before. A wait for CTS is told once; it begins anew when CTS comes
  /// or the bytes have gone.
  [[nodiscard]] std::vector<platform::LineEvent> Look(const LineLook& look);

 private:
  LineLook last_;
  std::int64_t heldSince_ = -1;  ///< ms; below 0 while nothing is held up
  bool told_ = false;
};

}  // namespace torvane::toolkit

// The second port as both directions open it.
#pragma once

#include "core/TransferSettings.h"
#include "platform/SerialPort.h"

namespace torvane::files {

/// DTR and RTS are always on, whatever the handshake line names.
[[nodiscard]] inline platform::PortSetup TransferPort(const core::TransferSettings& settings,
                                                      bool discardNulls) {
  return {.Number = settings.CommsPort,
          .Settings = settings.CommsSettings,
          .Handshaking = static_cast<platform::Handshake>(settings.CommsHandshake),
          .Dtr = true,
          .Rts = true,
          .DiscardNulls = discardNulls};
}

}  // namespace torvane::files

// Control.cms: the second serial port and the frame of a program on its line.
#pragma once

#include <string>
#include <string_view>

#include "core/TransferSettings.h"

namespace torvane::core {

/// The 17 lines of Control.cms; lines that are missing read as empty. A wrong value reads as 0,
/// never as a fault.
[[nodiscard]] TransferSettings ReadTransferFile(std::string_view text);

/// A code string, pairs "count,code" divided by commas: each character `code` (0 to 255) as often
/// as `count` says (held to 0 to 32767), joined. A code out of range, or none, gives nothing, and
/// an odd last number too. No more than 65536 characters come out.
[[nodiscard]] std::string ReadCodeString(std::string_view text);

/// A code list: decimal codes from 0 to 255 divided by commas; others are left out.
[[nodiscard]] CharacterSet ReadCodeList(std::string_view text);

}  // namespace torvane::core

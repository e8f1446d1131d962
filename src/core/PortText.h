// What the two port files, Trio.cms and Control.cms, have in common.
#pragma once

#include <cstdint>
#include <string_view>

namespace torvane::core {

/// Keywords of a handshake line, in either case and any company.
struct HandshakeWords {
  std::int16_t Handshaking = 0;  ///< "XON" or "XOFF" add 1, "RTS" or "CTS" add 2
  bool Dtr = false;              ///< "DTR" is named too
};
[[nodiscard]] HandshakeWords ReadHandshakeWords(std::string_view text);

/// `word` is somewhere in `text`.
[[nodiscard]] bool HoldsWord(std::string_view text, std::string_view word);

}  // namespace torvane::core

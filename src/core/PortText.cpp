#include "core/PortText.h"

#include <string>

#include "core/Text.h"

namespace torvane::core {

bool HoldsWord(std::string_view text, std::string_view word) {
  return text.find(word) != std::string_view::npos;
}

HandshakeWords ReadHandshakeWords(std::string_view text) {
  const std::string words = UpperCase(text);
  const bool software = HoldsWord(words, "XON") || HoldsWord(words, "XOFF");
  const bool hardware = HoldsWord(words, "RTS") || HoldsWord(words, "CTS");
  return {static_cast<std::int16_t>((software ? 1 : 0) + (hardware ? 2 : 0)),
          HoldsWord(words, "DTR")};
}

}  // namespace torvane::core

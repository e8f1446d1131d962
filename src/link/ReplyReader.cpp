#include "link/ReplyReader.h"

#include <cmath>

#include "core/General.h"

namespace torvane::link {

double ReadReplyValue(std::string_view query, std::string_view reply) {
  constexpr std::size_t BehindEcho = 1;  // the line feed after the echo
  constexpr std::size_t Dropped = 4;     // that line feed and the last three characters
  const std::size_t echo = query.size() + 1;
  if (reply.size() <= echo + Dropped) return 0;
  if (!reply.starts_with(query) || reply[query.size()] != '\r') return 0;
  const auto text = reply.substr(echo + BehindEcho, reply.size() - echo - Dropped);
  const double value = core::LeadingNumber(core::Trim(text));
  return std::isfinite(value) ? value : 0;
}

}  // namespace torvane::link

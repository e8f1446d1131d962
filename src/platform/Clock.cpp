#include "platform/Clock.h"

#include <ctime>

namespace torvane::platform {

LocalTime SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  if (localtime_r(&now, &parts) == nullptr) return {};
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

}  // namespace torvane::platform

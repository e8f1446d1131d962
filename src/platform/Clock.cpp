#include "platform/Clock.h"

namespace torvane::platform {

LocalTime LocalTimeOf(std::time_t moment) {
  std::tm parts{};
  if (localtime_r(&moment, &parts) == nullptr) return {};
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

LocalTime SystemClock::Now() const { return LocalTimeOf(std::time(nullptr)); }

}  // namespace torvane::platform

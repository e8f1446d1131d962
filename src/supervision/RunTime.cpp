#include "supervision/RunTime.h"

#include "core/General.h"

namespace torvane::supervision {

std::string RunTimeText(float runSeconds) {
  constexpr double Minute = 60;
  const double seconds = runSeconds;
  if (seconds < Minute) return "0:" + core::PadInteger(core::RoundToInt32(seconds), 2);
  const std::int32_t minutes = core::TruncateToInt32(seconds / Minute);
  const double rest = seconds - minutes * Minute;
  return core::LongText(minutes) + ":" + core::PadInteger(core::RoundToInt32(rest), 2);
}

}  // namespace torvane::supervision

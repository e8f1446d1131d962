// Lines of a text as fixed records of 80 bytes.
#include "core/General.h"
#include "partprogram/Passes.h"

namespace torvane::partprogram {
namespace {
constexpr std::size_t FixedLineSize = 80;
}

FixedLines MakeFixedLines(std::string_view text, bool skipEmpty) {
  FixedLines fixed;
  const auto lines = core::SplitLines(text);
  fixed.Bytes.assign(lines.size() * FixedLineSize, ' ');
  char* record = fixed.Bytes.data();
  for (const std::string_view whole : lines) {
    const std::string_view line = core::Trim(whole).substr(0, FixedLineSize);
    if (line.empty() && skipEmpty) continue;
    line.copy(record, line.size());
    record += FixedLineSize;
    ++fixed.Count;
  }
  fixed.Bytes.resize(static_cast<std::size_t>(fixed.Count) * FixedLineSize);
  return fixed;
}

}  // namespace torvane::partprogram

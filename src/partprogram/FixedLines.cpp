// Lines of a text as fixed records of 80 bytes.
#include "partprogram/FixedLines.h"

#include "core/General.h"
#include "core/Text.h"

namespace torvane::partprogram {
namespace {
constexpr std::size_t FixedLineSize = 80;
constexpr std::size_t PartSize = 800 * FixedLineSize;
}  // namespace

void TakeFixedLines(std::string_view& text, bool skipEmpty, std::string& bytes) {
  bytes.assign(PartSize, ' ');
  std::size_t end = 0;
  for (std::string_view whole; end < PartSize && core::TakeLine(text, whole);) {
    const std::string_view line = core::Trim(whole).substr(0, FixedLineSize);
    if (line.empty() && skipEmpty) continue;
    line.copy(bytes.data() + end, line.size());
    end += FixedLineSize;
  }
  bytes.resize(end);
}

FixedLines MakeFixedLines(std::string_view text, bool skipEmpty) {
  FixedLines fixed;
  std::string part;
  do {
    TakeFixedLines(text, skipEmpty, part);
    fixed.Bytes += part;
  } while (!part.empty());
  fixed.Count = static_cast<int>(fixed.Bytes.size() / FixedLineSize);
  return fixed;
}

}  // namespace torvane::partprogram

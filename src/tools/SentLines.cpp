#include "tools/SentLines.h"

#include <algorithm>

namespace torvane::tools {

namespace {

/// Hours of the poll; a script that waits for what was sent before that waits in vain.
constexpr std::size_t MostLines = 1000000;

}  // namespace

bool SentLines::Find(std::string_view text) {
  const auto found = std::find_if(lines_.begin(), lines_.end(),
                                  [&](const std::string& line) { return line.starts_with(text); });
  if (found == lines_.end()) return false;
  lines_.erase(lines_.begin(), found + 1);
  return true;
}

void SentLines::Write(std::string_view bytes) {
  if (listening_) {
    for (const char byte : bytes) {
      if (byte != '\r') {
        line_ += byte;
        continue;
      }
      lines_.push_back(std::move(line_));
      line_.clear();
      if (lines_.size() > MostLines) lines_.pop_front();
    }
  }
  port_.Write(bytes);
}

}  // namespace torvane::tools

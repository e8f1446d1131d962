#include "files/SendProgress.h"

#include <algorithm>
#include <limits>

namespace torvane::files {

namespace {

constexpr std::uint64_t LargeStep = 1000;
constexpr std::uint64_t AllPercent = 100;
/// A pace is one only after this time, ms.
constexpr std::int64_t PaceMs = 500;

}  // namespace

int SendProgress::Maximum() const {
  constexpr std::uint64_t Most = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(Most, Large() ? size_ / LargeStep : size_));
}

std::optional<int> SendProgress::Count(bool last) {
  ++count_;
  if (Large() && !last && count_ % LargeStep != 0) return std::nullopt;
  if (value_ >= Maximum()) return std::nullopt;
  return ++value_;
}

int SendProgress::Percent() const {
  if (size_ == 0) return static_cast<int>(AllPercent);
  return static_cast<int>(std::min(count_, size_) * AllPercent / size_);
}

std::optional<int> SendProgress::SecondsLeft(std::int64_t nowMs) const {
  constexpr std::int64_t MsPerSecond = 1000;
  constexpr double LongestSeconds = 359999;  // what four digits of hours show
  const std::int64_t elapsed = nowMs - startMs_;
  if (count_ == 0 || elapsed < PaceMs) return std::nullopt;
  const auto rest = static_cast<double>(size_ - std::min(count_, size_));
  const double ms = static_cast<double>(elapsed) * rest / static_cast<double>(count_);
  return static_cast<int>(std::min(LongestSeconds, (ms + MsPerSecond - 1) / MsPerSecond));
}

}  // namespace torvane::files

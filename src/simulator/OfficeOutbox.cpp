#include "simulator/OfficeOutbox.h"

#include <algorithm>

namespace torvane::simulator {

namespace {

/// Time that a line has been idle is no room for a later burst, ms.
constexpr double LongestBudgetMs = 50;
/// Bytes of a slow line are handed over in lots of at least so much time, ms.
constexpr double LeastLotMs = 2;

}  // namespace

void OfficeOutbox::Put(std::string_view bytes, std::size_t chunk, double pauseMs) {
  const std::size_t size = chunk == 0 ? bytes.size() : chunk;
  double wait = 0;
  while (!bytes.empty()) {
    parts_.push_back({wait, std::string(bytes.substr(0, size))});
    bytes.remove_prefix(std::min(size, bytes.size()));
    wait = pauseMs;
  }
}

void OfficeOutbox::Clear() {
  parts_.clear();
  budget_ = 0;
}

std::size_t OfficeOutbox::Waiting() const {
  std::size_t waiting = 0;
  for (const Part& part : parts_) waiting += part.Bytes.size();
  return waiting;
}

void OfficeOutbox::Advance(double ms) {
  if (held_ || parts_.empty()) {
    budget_ = 0;
    return;
  }
  double& wait = parts_.front().WaitMs;
  const double paused = std::min(wait, ms);
  wait -= paused;
  budget_ = std::min(budget_ + (ms - paused) * bytesPerMs_, LongestBudgetMs * bytesPerMs_ + 1);
}

std::string OfficeOutbox::Take() {
  std::string taken;
  while (!held_ && !parts_.empty() && parts_.front().WaitMs <= 0) {
    std::string& bytes = parts_.front().Bytes;
    const bool paced = bytesPerMs_ > 0;
    const auto room = paced ? static_cast<std::size_t>(budget_) : bytes.size();
    const std::size_t size = std::min(room, bytes.size());
    taken.append(bytes, 0, size);
    bytes.erase(0, size);
    if (paced) budget_ -= static_cast<double>(size);
    if (!bytes.empty()) break;
    parts_.pop_front();
  }
  return taken;
}

std::optional<double> OfficeOutbox::DueInMs() const {
  if (held_ || parts_.empty()) return std::nullopt;
  if (parts_.front().WaitMs > 0) return parts_.front().WaitMs;
  if (bytesPerMs_ <= 0 || budget_ >= 1) return 0;
  return std::max(LeastLotMs, (1 - budget_) / bytesPerMs_);
}

}  // namespace torvane::simulator

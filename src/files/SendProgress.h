// How far a send has come.
#pragma once

#include <cstdint>
#include <optional>

namespace torvane::files {

/// A program below this size moves the bar with each character, a larger one with each 1000.
inline constexpr std::uint64_t LargeProgram = 30001;

class SendProgress {
 public:
  /// `size` in characters, as the list showed it; the file may have changed since.
  explicit SendProgress(std::uint64_t size, std::int64_t startMs = 0)
      : size_(size), startMs_(startMs) {}

  /// The bar's maximum: the size, or its thousands.
  [[nodiscard]] int Maximum() const;

  /// One more character has been read; `last` is the last one of the file. The new value of the
  /// bar, where it moves; never above its maximum.
  std::optional<int> Count(bool last);

  [[nodiscard]] int Percent() const;
  /// What the rest takes at the pace so far, rounded up to seconds; nothing before there is a pace.
  [[nodiscard]] std::optional<int> SecondsLeft(std::int64_t nowMs) const;

 private:
  [[nodiscard]] bool Large() const { return size_ >= LargeProgram; }

  std::uint64_t size_;
  std::uint64_t count_ = 0;
  std::int64_t startMs_;
  int value_ = 0;
};

}  // namespace torvane::files

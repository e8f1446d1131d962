// The wall clock, for dates in reports.
#pragma once

#include <ctime>

namespace torvane::platform {

/// Local time of day. Month and day count from 1.
struct LocalTime {
  int Year = 2000;
  int Month = 1;
  int Day = 1;
  int Hour = 0;
  int Minute = 0;
  int Second = 0;
};

/// Local time of a moment of the machine's clock.
[[nodiscard]] LocalTime LocalTimeOf(std::time_t moment);

class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual LocalTime Now() const = 0;
};

/// The machine's own clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] LocalTime Now() const override;
};

/// A clock that stands still, for tests and golden files.
class FixedClock final : public Clock {
 public:
  explicit FixedClock(LocalTime time) : time_(time) {}
  [[nodiscard]] LocalTime Now() const override { return time_; }

 private:
  LocalTime time_;
};

}  // namespace torvane::platform

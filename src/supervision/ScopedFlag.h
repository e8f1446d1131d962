// A flag that is set for as long as something runs, however it ends.
#pragma once

#include <utility>

namespace torvane::supervision {

class ScopedFlag {
 public:
  /// Sets `flag` to `value` for the life of the guard, and to what it was before afterwards: one
  /// within another of the same flag leaves it to the outer one.
  explicit ScopedFlag(bool& flag, bool value = true)
      : flag_(flag), before_(std::exchange(flag, value)) {}
  ~ScopedFlag() { flag_ = before_; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace torvane::supervision

// A flag that is set for as long as something runs, however it ends.
#pragma once

#include <utility>

namespace torvane::supervision {

class FlagGuard {
 public:
  /// Sets `flag` to `value` for the life of the guard, and to what it was behind it: a guard within
  /// another of the same flag leaves it to the outer one.
  explicit FlagGuard(bool& flag, bool value = true)
      : flag_(flag), before_(std::exchange(flag, value)) {}
  ~FlagGuard() { flag_ = before_; }
  FlagGuard(const FlagGuard&) = delete;
  FlagGuard& operator=(const FlagGuard&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace torvane::supervision

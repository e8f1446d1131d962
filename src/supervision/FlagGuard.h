// A flag that is set for as long as something runs, however it ends.
#pragma once

namespace torvane::supervision {

class FlagGuard {
 public:
  /// Sets `flag` to `value` for the life of the guard, and to the contrary behind it.
  explicit FlagGuard(bool& flag, bool value = true) : flag_(flag), value_(value) { flag_ = value_; }
  ~FlagGuard() { flag_ = !value_; }
  FlagGuard(const FlagGuard&) = delete;
  FlagGuard& operator=(const FlagGuard&) = delete;

 private:
  bool& flag_;
  bool value_;
};

}  // namespace torvane::supervision

// Looks for a string in what comes, character by character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvane::core {

/// As plain as can be: what has matched so far is forgotten at the first character that does not go
/// on with it, and that character is not tried as a new beginning ("AAB" is not found in "AAAB").
/// An empty string is never found.
class PrefixMatcher {
 public:
  explicit PrefixMatcher(std::string_view wanted) : wanted_(wanted) {}

  /// The next character; true when the string is complete. Then the search begins anew.
  bool Take(char character) {
    if (wanted_.empty()) return false;
    matched_ = character == wanted_[matched_] ? matched_ + 1 : 0;
    if (matched_ < wanted_.size()) return false;
    matched_ = 0;
    return true;
  }

  void Reset() { matched_ = 0; }

 private:
  std::string wanted_;
  std::size_t matched_ = 0;
};

}  // namespace torvane::core

// How large a proof is: small among the other tests, as large as tools/proof says otherwise.
#pragma once

#include <charconv>
#include <cstdlib>
#include <cstring>

namespace torvane::tests {

/// The whole number in an environment variable, or `standard` where there is none.
[[nodiscard]] inline int Setting(const char* variable, int standard) {
  const char* text = std::getenv(variable);
  int value = 0;
  if (text == nullptr) return standard;
  const auto end = std::from_chars(text, text + std::strlen(text), value).ptr;
  return *end == '\0' && value > 0 ? value : standard;
}

/// Exchanges, kills or minutes: what a proof counts.
[[nodiscard]] inline int Count(int standard) { return Setting("TORVANE_PROOF_COUNT", standard); }
[[nodiscard]] inline unsigned Seed() {
  return static_cast<unsigned>(Setting("TORVANE_PROOF_SEED", 1));
}

}  // namespace torvane::tests

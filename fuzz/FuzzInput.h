// The bytes of a fuzz target as text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace torvane::fuzz {

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace torvane::fuzz

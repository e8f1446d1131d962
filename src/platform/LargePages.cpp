#include "platform/LargePages.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace torvane::platform {

void PreferLargePages(const void* block, std::size_t bytes) {
#ifdef __linux__
  constexpr std::uintptr_t LargePage = 2U << 20U;
  const auto begin = reinterpret_cast<std::uintptr_t>(block);
  const std::uintptr_t first = (begin + LargePage - 1) / LargePage * LargePage;
  const std::uintptr_t last = (begin + bytes) / LargePage * LargePage;
  if (first >= last) return;
  // A refusal leaves ordinary pages, which is all that it means.
  static_cast<void>(::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE));
#else
  static_cast<void>(block);
  static_cast<void>(bytes);
#endif
}

}  // namespace torvane::platform

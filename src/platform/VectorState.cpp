#include "platform/VectorState.h"

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

namespace torvane::platform {

#if defined(__x86_64__) && defined(__GNUC__)

namespace {

__attribute__((target("avx"))) void ZeroUpperHalves() { _mm256_zeroupper(); }

}  // namespace

void ClearVectorState() {
  if (__builtin_cpu_supports("avx")) ZeroUpperHalves();
}

#else

void ClearVectorState() {}

#endif

}  // namespace torvane::platform

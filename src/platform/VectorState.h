// A cure for a processor that computes slowly because of what a library left in it.
#pragma once

namespace torvane::platform {

/// Call before a long stretch of floating-point work. Wide vector code of a library, such as the
/// fill of a picture, may leave the upper halves of the vector registers in use; until they are
/// cleared, each sine and cosine of this thread takes about ten times as long. Where there is
/// nothing to clear it costs next to nothing, and it changes no result.
void ClearVectorState();

}  // namespace torvane::platform

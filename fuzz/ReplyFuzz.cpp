// Any reply to any query gives a finite number.
#include <cmath>

#include "FuzzInput.h"
#include "link/ReplyReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto text = torvane::fuzz::TextOf(data + 1, size - 1);
  const auto cut = data[0] % (text.size() + 1);
  if (!std::isfinite(torvane::link::ReadReplyValue(text.substr(0, cut), text.substr(cut))))
    __builtin_trap();
  return 0;
}

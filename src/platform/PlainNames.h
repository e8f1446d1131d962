// Names that arrive from outside: a part program or a directory may be called so, or may not.
#pragma once

#include <string_view>

namespace torvane::platform {

/// True for a name that stays in its directory: not empty, no separator, no colon, no wild card,
/// no control character, and not made of dots and blanks alone (".", "..").
[[nodiscard]] bool IsPlainName(std::string_view name);

}  // namespace torvane::platform

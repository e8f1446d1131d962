// Colour.cfg: the look of the console, which a fitter changes by editing the file.
#pragma once

#include <string>
#include <string_view>

#include "core/ColourTable.h"

namespace torvane::core {

/// 43 pairs of label and decimal value; the position alone counts. A text with fewer, or with
/// something else in place of a value, is a RuntimeFault that names `path`.
void ReadColourFile(std::string_view text, std::string_view path, ColourTable& colours);

/// The file as it is made at a first start: 43 lines and the marker.
[[nodiscard]] std::string ColourFileText(const ColourTable& colours);

}  // namespace torvane::core

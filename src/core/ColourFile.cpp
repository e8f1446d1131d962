#include "core/ColourFile.h"

#include <cstdint>
#include <limits>

#include "core/ConfigText.h"
#include "core/General.h"
#include "platform/RuntimeFault.h"

namespace torvane::core {

namespace {

/// As the file may hold it: a 32-bit value, with or without a sign.
constexpr double LowestColour = std::numeric_limits<std::int32_t>::min();
constexpr double HighestColour = std::numeric_limits<std::uint32_t>::max();

}  // namespace

void ReadColourFile(std::string_view text, std::string_view path, ColourTable& colours) {
  FieldReader fields(text);
  for (int entry = 0; entry < static_cast<int>(ColourName::Count); ++entry) {
    fields.Next();  // the label says nothing
    const auto field = fields.Next();
    if (!field) {
      throw platform::RuntimeFault(
          std::string(path), "ends too soon, colour " + std::to_string(entry + 1) + " is missing");
    }
    const double value = StoredNumber(*field, path, LowestColour, HighestColour);
    colours.Set(static_cast<ColourName>(entry),
                static_cast<std::uint32_t>(static_cast<std::int64_t>(RoundPlaces(value, 0))));
  }
}

std::string ColourFileText(const ColourTable& colours) {
  std::string text;
  for (int entry = 0; entry < static_cast<int>(ColourName::Count); ++entry) {
    text += ColourEntries[static_cast<std::size_t>(entry)].Label;
    text += ", " + std::to_string(colours[static_cast<ColourName>(entry)]) + " \r\n";
  }
  return text + std::string(EndMarker) + "\r\n";
}

}  // namespace torvane::core

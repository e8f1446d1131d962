// The comment lines at the top of a program: material, sheet and clamps.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace torvane::partprogram {

/// As written, in the program's own units. A side or clamp that was not given is 0.
struct ProgramHeader {
  std::string Material;
  double SheetX = 0;
  double SheetY = 0;
  std::array<double, 4> Clamps{};
};

/// Reads the leading lines that are empty or hold a "!", up to the first other one.
/// `clampCount` of the machine decides the forms of the clamp statement.
[[nodiscard]] ProgramHeader ReadProgramHeader(std::span<const std::string_view> lines,
                                              std::int16_t clampCount);

/// Takes the statements of one comment.
void ReadHeaderComment(std::string_view comment, std::int16_t clampCount, ProgramHeader& header);

/// The texts of the program information.
[[nodiscard]] std::string MaterialText(const ProgramHeader& header);
[[nodiscard]] std::string SheetText(const ProgramHeader& header);
[[nodiscard]] std::string ClampText(const ProgramHeader& header);

}  // namespace torvane::partprogram

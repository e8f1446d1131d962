// Part programs of any size, as a shop would write them: for the generator command, tests and
// benchmarks.
#pragma once

#include <algorithm>
#include <string>

#include "core/General.h"

namespace torvane::tools {

struct GeneratorOptions {
  int Profiles = 3000;       ///< closed profiles, eight blocks each
  bool Expressions = false;  ///< coordinates by parameters and sums instead of plain numbers
  double KerfWidth = 0.2;    ///< mm
  int Columns = 60;          ///< profiles beside each other
};

namespace generator {

inline constexpr double PitchX = 48;  ///< mm
inline constexpr double PitchY = 28;

/// A coordinate word: the number itself, or its way from the origin in P1 or P2.
inline void AppendWord(std::string& out, char letter, double origin, double offset,
                       const char* parameter) {
  out += ' ';
  out += letter;
  if (parameter == nullptr) {
    core::AppendNumber(out, core::RoundPlaces(origin + offset, 3), -1);
    return;
  }
  out += parameter;
  out += '+';
  core::AppendNumber(out, core::RoundPlaces(offset, 3), -1);
}

/// A slot with two half circles, cut from inside by a lead-in that meets it where a straight side
/// begins. All sizes differ a little from profile to profile.
inline void AppendProfile(std::string& out, int index, const GeneratorOptions& options) {
  const int column = index % options.Columns;
  const int row = index / options.Columns;
  const double x = 20 + PitchX * column;
  const double y = 12 + PitchY * row;
  const double width = 20 + 0.125 * (index % 37);
  const double radius = 5 + 0.0625 * (index % 41);
  const auto point = [&](double dx, double dy) {
    AppendWord(out, 'X', x, dx, options.Expressions ? "P1" : nullptr);
    AppendWord(out, 'Y', y, dy, options.Expressions ? "P2" : nullptr);
  };
  const auto arc = [&](double dx, double dy, double j) {
    out += "G03";
    point(dx, dy);
    out += " I0 J" + core::NumberText(j, -1) + "\r\n";
  };
  if (options.Expressions) {
    out += "P1=" + core::NumberText(x, -1) + " P2=" + core::NumberText(y, -1) + " ";
  }
  out += "G00";
  point(3, 3);
  out += "\r\nG31 T2=3 G41 K" + core::NumberText(options.KerfWidth, -1) + "\r\nG01";
  point(0, 0);
  out += " F2400\r\nG01";
  point(width, 0);
  out += "\r\n";
  arc(width, 2 * radius, radius);
  out += "G01";
  point(0, 2 * radius);
  out += "\r\n";
  arc(0, 0, -radius);
  out += "G31 T2=1 G40\r\n";
}

}  // namespace generator

/// A whole program: header, profiles, "M30". The sheet holds all of them.
[[nodiscard]] inline std::string GenerateProgram(const GeneratorOptions& options = {}) {
  const int rows = std::max(1, (options.Profiles + options.Columns - 1) / options.Columns);
  std::string out = "! GENERATED SHEET\r\n! MATERIAL : Mild steel 1 mm\r\n! SHEET : X";
  out += core::NumberText(40 + generator::PitchX * options.Columns, -1) + " Y";
  out += core::NumberText(40 + generator::PitchY * rows, -1);
  out += "\r\n! CLAMP : L80 R380\r\nG71 G90\r\n";
  for (int i = 0; i < options.Profiles; ++i) generator::AppendProfile(out, i, options);
  out += "M30\r\n";
  return out;
}

}  // namespace torvane::tools

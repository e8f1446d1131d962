// Reads the restart text.
#include <cmath>

#include "core/General.h"
#include "simulator/RestartPlan.h"

namespace torvane::simulator {

namespace {

/// The number after `letter`, which must be in the text.
std::optional<double> WordOf(std::string_view text, char letter) {
  const auto at = text.find(letter);
  if (at == std::string_view::npos) return std::nullopt;
  const double value = core::LeadingNumber(text.substr(at + 1));
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<Position> PointOf(std::string_view text, char first, char second) {
  const auto x = WordOf(text, first);
  const auto y = WordOf(text, second);
  if (!x || !y) return std::nullopt;
  return Position{*x, *y, 0};
}

std::optional<RestElement> RestOf(std::string_view line) {
  const bool arc = line.starts_with("G02") || line.starts_with("G03");
  const auto end = PointOf(line, 'X', 'Y');
  const auto centre = PointOf(line, 'I', 'J');
  if ((!arc && !line.starts_with("G01")) || !end || (arc && !centre)) return std::nullopt;
  return RestElement{arc, *end, centre.value_or(Position{})};
}

}  // namespace

std::optional<RestartText> ReadRestartText(const platform::FileSystem& files,
                                           std::string_view root) {
  const std::string path = std::string(root) + "Restart.tbx";
  if (!files.FileExists(path)) return std::nullopt;
  const std::string text = files.ReadFile(path);
  std::optional<RestartText> found;
  for (const auto line : core::SplitLines(text)) {
    if (!found) {
      const auto point = PointOf(line, 'X', 'Y');
      if (line.starts_with("G00") && point) found = RestartText{*point, std::nullopt};
    } else if (const auto rest = RestOf(line)) {
      found->Rest = rest;
    }
  }
  return found;
}

}  // namespace torvane::simulator

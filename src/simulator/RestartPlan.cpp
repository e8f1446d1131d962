#include "simulator/RestartPlan.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/General.h"
#include "partprogram/DrawRecord.h"
#include "simulator/PathFile.h"

namespace torvane::simulator {

namespace {

constexpr double StartTolerance = 0.001;  // mm
constexpr double SplitTolerance = 0.02;   // mm; the split point itself is rounded
constexpr double TextTolerance = 0.0051;  // mm; the text carries two decimals
constexpr int FractionDigits = 5;

/// The number behind `letter`, which must stand in the text.
std::optional<double> WordOf(std::string_view text, char letter) {
  const auto at = text.find(letter);
  if (at == std::string_view::npos) return std::nullopt;
  const double value = core::LeadingNumber(text.substr(at + 1));
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<Position> PointOf(std::string_view text) {
  const auto x = WordOf(text, 'X');
  const auto y = WordOf(text, 'Y');
  if (!x || !y) return std::nullopt;
  return Position{*x, *y, 0};
}

/// The block number of the start line's digits; 0 for none.
int BlockNumberOf(std::string_view fraction) {
  int number = 0;
  for (int digit = 0; digit < FractionDigits; ++digit) {
    const auto at = static_cast<std::size_t>(digit);
    number = number * 10 + (at < fraction.size() ? fraction[at] - '0' : 0);
  }
  return number;
}

/// The N number that opens a block, -1 without one.
int OpeningNumber(std::string_view line) {
  bool named = false;
  int number = -1;
  for (const char c : line) {
    if (c == ' ') continue;
    if (c == 'N' && !named) {
      named = true;
    } else if (named && c >= '0' && c <= '9' && number < 1'000'000) {
      number = std::max(number, 0) * 10 + (c - '0');
    } else {
      break;
    }
  }
  return number;
}

/// Number of the line (from 1) of the cleaned program that carries N`wanted`; 0 without one.
int LineOfBlock(const platform::FileSystem& files, const std::string& path, int wanted) {
  if (!files.FileExists(path)) return 0;
  const std::string text = files.ReadFile(path);
  int number = 0;
  for (const auto line : core::SplitLines(text)) {
    ++number;
    if (OpeningNumber(line) == wanted) return number;
  }
  return 0;
}

bool HoldsPoint(const PathElement& element, const RestartText& text) {
  using namespace partprogram;
  if (element.Code != RecordCode::LineProfile && element.Code != RecordCode::ArcProfile) {
    return false;
  }
  if (std::abs(element.End.X - text.ElementEnd->X) > TextTolerance ||
      std::abs(element.End.Y - text.ElementEnd->Y) > TextTolerance) {
    return false;
  }
  const Segment path = element.Path();
  Position on = path.At(path.NearestDistance(text.At));
  on.Z = 0;
  return Distance(on, text.At) <= SplitTolerance;
}

bool StartsAt(const PathElement& element, const Position& at) {
  return std::abs(element.Start.X - at.X) <= StartTolerance &&
         std::abs(element.Start.Y - at.Y) <= StartTolerance;
}

using Elements = std::vector<PathElement>;

Elements::const_iterator FindElement(const Elements& elements, int blockLine,
                                     const RestartText& text) {
  auto bound = elements.end();
  if (blockLine > 0) {
    bound = std::find_if(elements.begin(), elements.end(),
                         [&](const PathElement& e) { return e.BlockNumber >= blockLine; });
  }
  if (text.ElementEnd) {
    const auto holds = [&](const PathElement& e) { return HoldsPoint(e, text); };
    if (blockLine == 0) return std::find_if(elements.begin(), elements.end(), holds);
    const auto last = std::find_if(std::make_reverse_iterator(bound), elements.rend(), holds);
    return last == elements.rend() ? elements.end() : std::prev(last.base());
  }
  if (blockLine > 0) return bound;
  return std::find_if(elements.begin(), elements.end(),
                      [&](const PathElement& e) { return StartsAt(e, text.At); });
}

}  // namespace

std::optional<RestartText> ReadRestartText(const platform::FileSystem& files,
                                           std::string_view root) {
  const std::string path = std::string(root) + "Restart.tbx";
  if (!files.FileExists(path)) return std::nullopt;
  const std::string text = files.ReadFile(path);
  std::optional<RestartText> found;
  for (const auto line : core::SplitLines(text)) {
    const auto point = PointOf(line);
    if (line.starts_with("G00") && point && !found) found = RestartText{*point, std::nullopt};
    const bool element =
        line.starts_with("G01") || line.starts_with("G02") || line.starts_with("G03");
    if (element && point && found) found->ElementEnd = point;
  }
  return found;
}

std::optional<RestartPoint> FindRestartPoint(const platform::FileSystem& files,
                                             std::string_view root, int slot,
                                             std::string_view fraction, const RestartText& text) {
  PathFile programmed;
  PathFile compensated;
  if (!programmed.Load(files, SlotFile(root, slot, "drw")) ||
      !compensated.Load(files, SlotFile(root, slot, "krw"))) {
    return std::nullopt;
  }
  const int number = BlockNumberOf(fraction);
  int blockLine = 0;
  if (number > 0) {
    blockLine = LineOfBlock(files, SlotFile(root, slot, "cnv"), number);
    if (blockLine == 0) return std::nullopt;
  }
  const auto& elements = programmed.Elements();
  const auto at = FindElement(elements, blockLine, text);
  if (at == elements.end()) return std::nullopt;
  RestartPoint point;
  point.Line = compensated.FirstLineOf(at->RecordIndex);
  if (point.Line == 0) return std::nullopt;
  if (text.ElementEnd) {
    const Segment path = at->Path();
    if (path.Length() > 0) point.Share = path.NearestDistance(text.At) / path.Length();
  }
  return point;
}

}  // namespace torvane::simulator

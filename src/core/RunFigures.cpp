#include "core/RunFigures.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>

#include "core/ConfigText.h"
#include "core/General.h"
#include "platform/RuntimeFault.h"

namespace torvane::core {

namespace {

struct FigureLine {
  std::string_view Name;
  double RunFigures::*Field;
  double Low;
  double High;
};

constexpr double FastestRate = 1e7;           // mm per minute
constexpr double SteepestAcceleration = 1e7;  // mm/s²
constexpr double LongestTime = 3600;          // s
constexpr double FarthestPlace = 1e6;         // mm

constexpr FigureLine FigureLines[] = {
    {"Rapid Rate", &RunFigures::RapidRate, 1, FastestRate},
    {"Default Feed", &RunFigures::DefaultFeed, 1, FastestRate},
    {"Rapid Acceleration", &RunFigures::RapidAcceleration, 0, SteepestAcceleration},
    {"Cut Acceleration", &RunFigures::CutAcceleration, 0, SteepestAcceleration},
    {"Pierce Time", &RunFigures::PierceSeconds, 0, LongestTime},
    {"Clamp Time", &RunFigures::ClampSeconds, 0, LongestTime},
    {"Reposition Time", &RunFigures::RepositionSeconds, 0, LongestTime},
    {"Start X", &RunFigures::StartX, -FarthestPlace, FarthestPlace},
    {"Start Y", &RunFigures::StartY, -FarthestPlace, FarthestPlace},
};

class FigureReader {
 public:
  explicit FigureReader(std::string_view path) : path_(path) {}

  void Take(std::string_view line) {
    line = Trim(line.substr(0, line.find(';')));
    if (line.empty()) return;
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) Refuse("a line without a colon, ", line);
    const auto name = Trim(line.substr(0, colon));
    const auto* const row =
        std::find_if(std::begin(FigureLines), std::end(FigureLines),
                     [&](const FigureLine& known) { return EqualNoCase(known.Name, name); });
    if (row == std::end(FigureLines)) Refuse("no figure of a machine, ", name);
    bool& seen = seen_[static_cast<std::size_t>(row - std::begin(FigureLines))];
    if (seen) Refuse("comes twice, ", name);
    seen = true;
    const auto value = WholeNumber(line.substr(colon + 1));
    if (!value || *value < row->Low || *value > row->High) RefuseValue(*row, line);
    Figures.*row->Field = *value;
  }

  RunFigures Figures;

 private:
  [[noreturn]] void Refuse(std::string_view what, std::string_view text) const {
    throw platform::RuntimeFault(std::string(path_), std::string(what) + std::string(text));
  }
  [[noreturn]] void RefuseValue(const FigureLine& row, std::string_view line) const {
    std::string what(row.Name);
    what += " takes a number from " + NumberText(row.Low, -1) + " to ";
    what += NumberText(row.High, -1) + ", not ";
    Refuse(what, Trim(line.substr(line.find(':') + 1)));
  }

  std::string_view path_;
  std::array<bool, std::size(FigureLines)> seen_{};
};

}  // namespace

RunFigures ReadRunFigures(std::string_view text, std::string_view path) {
  FigureReader reader(path);
  for (const auto line : SplitLines(text)) reader.Take(line);
  return reader.Figures;
}

}  // namespace torvane::core

#include "restart/RestartText.h"

#include "core/General.h"
#include "partprogram/SplittingModule.h"

namespace torvane::restart {
namespace {

constexpr int FractionDigits = 5;
constexpr int FirstParameter = 101;

/// The shortest text of a single.
std::string Shortest(float value) { return core::NumberText(value, -1); }

std::string PositionLine(const GatherState& state) {
  return "G00 X" + Shortest(state.XPosition) + " Y" + Shortest(state.YPosition) + " G4" +
         core::IntegerText(state.KerfSide);
}

std::string ParameterLine(const GatherState& state) {
  std::string line;
  for (std::size_t i = 0; i < RestartParameters; ++i) {
    line += " P" + std::to_string(FirstParameter + i) + "=" + Shortest(state.ParameterValues[i]);
  }
  return line;
}

void CopyGatherText(std::string_view gatherText, std::string_view text,
                    std::vector<std::string>& lines) {
  for (std::string_view whole; core::TakeLine(gatherText, whole);) {
    const std::string_view line = core::Trim(whole);
    if (line.empty() || line == "******") continue;
    const bool reposition = line.find("G95") != std::string_view::npos;
    lines.push_back((reposition ? std::string(text) : std::string()) + std::string(line));
  }
}

std::string SideText(std::int16_t kerfSide) {
  switch (kerfSide) {
    case 1:
      return "Left";
    case 2:
      return "Right";
    default:
      return "None";
  }
}

}  // namespace

std::vector<std::string> RestartLines(const RestartContent& content, std::string_view text) {
  std::vector<std::string> lines;
  CopyGatherText(content.GatherText, text, lines);
  lines.emplace_back("M100");
  lines.push_back(PositionLine(content.State));
  lines.push_back(ParameterLine(content.State));
  if (content.State.ProfilerOn) lines.emplace_back("M04");
  std::string element = partprogram::WriteElementBlock(content.SplitRecord, content.YDirection);
  if (!element.empty()) lines.push_back(std::move(element));
  lines.push_back("TABLE (" + core::IntegerText(content.TableSent) + ",-999)");
  return lines;
}

bool GoesToController(std::string_view line) {
  return core::UpperCase(line).find("TABLE") != std::string::npos;
}

std::string BlockFraction(std::int16_t blockNo) {
  if (blockNo == 0) return {};
  std::string digits = core::PadInteger(blockNo, FractionDigits);
  digits.resize(digits.find_last_not_of('0') + 1);
  return "." + digits;
}

std::string StartLine(core::Slot slot, std::int16_t blockNo) {
  return "B" + core::IntegerText(slot.Number()) + BlockFraction(blockNo) + "R";
}

RestartLabels LabelsOf(const GatherState& state, std::string_view toolName) {
  RestartLabels labels;
  labels.PositnLabel[0] = state.Imperial ? "IMPERIAL" : "METRIC";
  labels.PositnLabel[1] = "X" + core::NumberText(state.XPosition, 2);
  labels.PositnLabel[2] = "Y" + core::NumberText(state.YPosition, 2);
  if (!state.ProfilerOn) return labels;
  labels.ToolLabel[1] = toolName;
  labels.PositnLabel[3] = "G4" + core::IntegerText(state.KerfSide);
  labels.HitsLabel = "Kerf Compensation : " + SideText(state.KerfSide);
  return labels;
}

}  // namespace torvane::restart

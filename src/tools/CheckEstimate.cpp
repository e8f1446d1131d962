#include "tools/CheckEstimate.h"

#include <cmath>

#include "core/General.h"
#include "platform/DiskFileSystem.h"
#include "platform/NativePaths.h"
#include "tools/ReportRows.h"

namespace torvane::tools {

namespace {

using core::NumberText;

std::string SkipText(const partprogram::RunSwitches& switches) {
  if (switches.Skip1 && switches.Skip2) return "block skips 1 and 2 on";
  if (switches.Skip1) return "block skip 1 on";
  return switches.Skip2 ? "block skip 2 on" : "block skips off";
}

std::string ContourText(const partprogram::Contour& contour) {
  std::string text = DurationText(contour.Seconds);
  text += ", " + NumberText(contour.Length, 1);
  text += " mm, from block " + std::to_string(contour.Block);
  if (contour.SubBlock > 0) text += ":" + std::to_string(contour.SubBlock);
  text += ", record " + std::to_string(contour.Record);
  return text;
}

}  // namespace

core::RunFigures ReadFigures(const std::string& native) {
  const auto path = platform::DiskFileSystem::ToWholeSystemPath(native);
  const platform::DiskFileSystem files(".");
  return core::ReadRunFigures(platform::ToSystemName(files.ReadFile(path)),
                              platform::ToSystemName(native));
}

CheckEstimate Estimate(const partprogram::PassResult& passes, const core::RunFigures& figures,
                       const EstimateQuestion& question) {
  CheckEstimate estimate;
  estimate.Switches = {question.OverridePercent, question.Skip1, question.Skip2};
  estimate.Run =
      partprogram::EstimateRun({passes.Table.Text, passes.Kerf}, figures, estimate.Switches);
  estimate.Longest =
      partprogram::LongestContours(estimate.Run, static_cast<std::size_t>(question.Contours));
  return estimate;
}

std::string DurationText(double seconds) {
  constexpr int TenthsOfMinute = 600;
  constexpr int MinutesOfHour = 60;
  constexpr double Longest = 1e9;  // s; a machine that never comes on takes any time
  if (!(seconds <= Longest)) return "over " + NumberText(Longest, 0) + " s";
  const auto tenths = static_cast<long long>(std::llround(seconds * 10));
  const auto minutes = tenths / TenthsOfMinute;
  const std::string rest = NumberText(static_cast<double>(tenths % TenthsOfMinute) / 10, 1);
  if (minutes == 0) return rest + " s";
  const auto two = [](std::string text) { return text.insert(0, text.size() < 2 ? 1 : 0, '0'); };
  std::string text;
  if (minutes >= MinutesOfHour) {
    text = std::to_string(minutes / MinutesOfHour) + ":" +
           two(std::to_string(minutes % MinutesOfHour));
  } else {
    text = std::to_string(minutes);
  }
  return text + (rest.size() < 4 ? ":0" : ":") + rest;
}

void AddEstimate(std::string& text, const CheckEstimate& estimate) {
  const auto& run = estimate.Run;
  AddRow(text, "run time",
         DurationText(run.Seconds()) + " at " + NumberText(estimate.Switches.OverridePercent, -1) +
             " %, " + SkipText(estimate.Switches));
  std::string shares;
  for (const auto& share : TimeShares) {
    if (!shares.empty()) shares += ", ";
    shares += share.Name;
    shares += " " + DurationText(run.*share.Field);
  }
  AddRow(text, "", shares);
  if (run.Stops > 0) {
    AddRow(text, "program stops", std::to_string(run.Stops) + ", the time there not counted");
  }
  if (run.Skipped > 0) AddRow(text, "rows skipped", std::to_string(run.Skipped));
  if (run.BrokenLine > 0) {
    AddRow(text, "", "up to table line " + std::to_string(run.BrokenLine) + ", which is no row");
  }
  AddRow(text, "contours", std::to_string(run.Contours.size()));
  for (const auto& contour : estimate.Longest) AddRow(text, "", ContourText(contour));
}

}  // namespace torvane::tools

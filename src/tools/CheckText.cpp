#include "tools/CheckText.h"

#include <algorithm>

#include "core/General.h"
#include "platform/NativePaths.h"
#include "tools/CheckEstimate.h"
#include "tools/CheckOptions.h"
#include "tools/ReportRows.h"

namespace torvane::tools {

namespace {

using core::NumberText;

std::string Counted(int count, std::string_view name) {
  return std::to_string(count) + " " + std::string(name);
}

std::string ClampText(const core::ActiveProgram& slot) {
  std::string text;
  for (const float clamp : slot.Clamps) {
    if (clamp <= 0) continue;
    if (!text.empty()) text += ", ";
    text += NumberText(clamp, -1);
  }
  return text.empty() ? "none" : text;
}

std::string KindsText(const CheckCounts& counts) {
  std::string text;
  for (const auto& kind : counts.Programmed) {
    if (kind.Count == 0) continue;
    if (!text.empty()) text += ", ";
    text += Counted(kind.Count, kind.Name);
  }
  return text;
}

void AddFigures(std::string& text, const CheckResult& result) {
  const auto& slot = result.Slot;
  const auto& counts = result.Counts;
  AddRow(text, "material", slot.Material.empty() ? "none" : slot.Material);
  AddRow(text, "sheet",
         NumberText(slot.SheetX, -1) + " x " + NumberText(slot.SheetY, -1) + " mm" +
             (slot.Imperial ? ", programmed in inches" : ""));
  AddRow(text, "clamps", ClampText(slot));
  AddRow(text, "kerf width", NumberText(slot.KerfWidth, -1) + " mm");
  AddRow(text, "lengths",
         NumberText(counts.CutLength, 1) + " mm cut, " + NumberText(slot.Totals.MoveLength, 1) +
             " mm moved");
  AddRow(text, "records",
         Counted(slot.DrawRecords, "programmed") +
             (slot.KerfRecords > 0 ? ", " + Counted(slot.KerfRecords, "compensated") : ""));
  if (const auto kinds = KindsText(counts); !kinds.empty()) AddRow(text, "", kinds);
  AddRow(text, "elements", std::to_string(counts.Elements));
  if (result.Outcome != partprogram::PassOutcome::Good) return;
  AddRow(text, "corner arcs", std::to_string(counts.CornerArcs));
  AddRow(text, "blends", std::to_string(counts.Blends));
  AddRow(text, "table lines", std::to_string(slot.TableLines));
  if (result.Estimate) AddEstimate(text, *result.Estimate);
}

/// What refuses the program first, then the warnings, each in the order of the walk. A message that
/// comes again and again is listed once, over all its blocks.
void AddErrors(std::string& text, const CheckResult& result) {
  for (const bool critical : {true, false}) {
    std::string_view last;
    for (const auto& error : result.Errors) {
      if (error.Critical != critical) continue;
      const auto message = core::Trim(error.Message);
      if (message != last) AddRow(text, critical ? "CRITICAL" : "warning", message);
      last = message;
      if (error.BlockNumber == 0 && error.Block.empty()) continue;
      AddRow(text, "", "block " + std::to_string(error.BlockNumber) + ": " + error.Block);
    }
  }
}

}  // namespace

std::string ProgramText(const CheckResult& result, bool withReport) {
  std::string text = result.Directory + "\\" + result.Program + ": ";
  text += result.Good() ? "good" : (result.Fault.empty() ? "refused, " : "not checked, ");
  text += RefusalText(result) + "\n";
  if (result.Fault.empty()) {
    AddFigures(text, result);
    AddErrors(text, result);
  }
  if (withReport) {
    for (const auto line : core::SplitLines(result.Report)) {
      text += line.empty() ? std::string() : "    " + std::string(line);
      text += '\n';
    }
  }
  return platform::ToNativeName(text);
}

std::string SummaryText(const std::vector<CheckResult>& results) {
  const auto count = [&](auto&& fits) {
    return static_cast<int>(std::count_if(results.begin(), results.end(), fits));
  };
  const int good = count([](const CheckResult& result) { return result.Good(); });
  const int faulty = count([](const CheckResult& result) { return !result.Fault.empty(); });
  const int all = static_cast<int>(results.size());
  std::string text = Counted(all, all == 1 ? "program: " : "programs: ") + Counted(good, "good") +
                     ", " + Counted(all - good - faulty, "refused");
  if (faulty > 0) text += ", " + Counted(faulty, "not checked");
  return text + "\n";
}

}  // namespace torvane::tools

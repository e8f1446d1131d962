#include "tools/CheckResult.h"

#include <algorithm>
#include <cmath>

namespace torvane::tools {

namespace {

namespace Code = partprogram::RecordCode;
using partprogram::Figure;
using partprogram::PassOutcome;

/// In the order of their codes.
constexpr std::array<RecordCount, 11> RecordKinds = {{
    {Code::Move, "Move", 0},
    {Code::LineProfile, "Line Profile", 0},
    {Code::ArcProfile, "Arc Profile", 0},
    {Code::Dwell, "Dwell", 0},
    {Code::ProgramStop, "Program Stop", 0},
    {Code::Reposition, "Reposition", 0},
    {Code::FlipRotate, "Flip / Rotate", 0},
    {Code::LoadPosition, "Load Position", 0},
    {Code::OpenClamps, "Open Clamps", 0},
    {Code::CancelOffsets, "Cancel Offsets", 0},
    {Code::Settings, "Settings", 0},
}};

}  // namespace

CheckCounts CountRecords(const std::vector<partprogram::DrawRecord>& programmed,
                         const std::vector<partprogram::DrawRecord>& compensated) {
  CheckCounts counts;
  counts.Programmed = RecordKinds;
  for (const auto& record : programmed) {
    const auto kind = std::find_if(counts.Programmed.begin(), counts.Programmed.end(),
                                   [&](const RecordCount& row) { return row.Code == record.Code; });
    if (kind != counts.Programmed.end()) ++kind->Count;
    const bool arc = record.Code == Code::ArcProfile;
    if ((!arc && record.Code != Code::LineProfile) || !record.BeamOn()) continue;
    ++counts.Elements;
    counts.CutLength += std::abs(record[arc ? Figure::ArcLength : Figure::Length]);
  }
  for (const auto& record : compensated) {
    if (record.Code == Code::ArcProfile && record[partprogram::Mark::CornerArc] != 0) {
      ++counts.CornerArcs;
    }
    if (record.Blended != 0) ++counts.Blends;
  }
  return counts;
}

std::string RefusalText(const CheckResult& result) {
  if (!result.Fault.empty()) return result.Fault;
  switch (result.Outcome) {
    case PassOutcome::Good:
      return {};
    case PassOutcome::IllegalKerf:
      return "Can Not Be Selected Due To Illegal Kerf Width !";
    case PassOutcome::ErrorsInCode:
      break;
  }
  return "Can Not Be Selected Due To Errors in Code !";
}

}  // namespace torvane::tools

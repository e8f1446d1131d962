// The walk of a restart holds with the walk of the conversion: the state in front of a block is the
// one that the records of the block begin with.
#include <cmath>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"
#include "restart/Gathering.h"

namespace torvane::restart {

using namespace tests;
namespace {

using partprogram::DrawRecord;
namespace RecordCode = partprogram::RecordCode;

std::string Number(int hundredths) { return core::NumberText(hundredths / 100.0, -1); }

/// One block by its kind; `a` and `b` are hundredths of a unit.
std::string BlockText(int kind, int a, int b) {
  const std::string point = " X" + Number(a) + " Y" + Number(b);
  static const std::vector<std::string> Modal = {"G90", "G91",          "G40", "G41 K0.2", "G42",
                                                 "M10", "M11",          "M12", "M13",      "G70",
                                                 "G71", "G31 T2=3 1=4", "M50", "G53",      "M04"};
  switch (kind) {
    case 0:
    case 1:
      return "G00" + point;
    case 2:
    case 3:
      return "G01" + point;
    case 4:
      return point;
    case 5:
      return "G56" + point;
    case 6:
      return "G92" + point;
    case 7:
      return "G02 I" + Number(a) + " J" + Number(b);  // a whole circle
    case 8:
      return "G98 S5 A" + std::to_string(a % 360) + point;
    case 9:
      return "G98 S6 A0" + point;
    case 10:
      return "P1=" + Number(a) + " P101=" + Number(b);
    case 11:
      return "G01 XP1+3 Y(P1*2)";
    default:
      return Modal[static_cast<std::size_t>(std::abs(a)) % Modal.size()];
  }
}

std::vector<std::string> AnyProgram() {
  std::vector<std::string> lines = {"G00 X1 Y1", "P2=0"};
  const auto blocks = *rc::gen::container<std::vector<std::tuple<int, int, int>>>(rc::gen::tuple(
      rc::gen::inRange(0, 16), rc::gen::inRange(-30000, 30000), rc::gen::inRange(-30000, 30000)));
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const auto& [kind, a, b] = blocks[i];
    lines.push_back("N" + std::to_string(i + 10) + " " + BlockText(kind, a, b));
  }
  if (!blocks.empty() && *rc::gen::arbitrary<bool>()) {
    lines.push_back("P2=P2+1");
    lines.push_back("IF P2<3 GOTO " +
                    std::to_string(*rc::gen::inRange<std::size_t>(10, 10 + blocks.size())));
    lines.push_back("G00 X7 Y7");
  }
  const std::vector<std::string> tail = {"M30", "S5", "G01 X5", "G91 Y3", "G90 G98 S6 A90",
                                         "M02", "S6", "X2",     "G02 I3", "M02"};
  lines.insert(lines.end(), tail.begin(), tail.end());
  return lines;
}

RC_GTEST_PROP(GatherWalk, StandsWhereTheRecordsOfItsBlockBegin, ()) {
  Gathering gathering;
  gathering.Machine.TravelMinX = gathering.Machine.TravelMinY = -1e6F;
  gathering.Machine.TravelMaxX = gathering.Machine.TravelMaxY = 1e6F;
  const auto lines = AnyProgram();
  const auto text = partprogram::MakeIntermediateFiles(Gathering::Join(lines), gathering.Machine);
  const core::Station station;
  const auto converted = partprogram::RunConversion(
      {text.Converted, "A", "B", &gathering.Machine, &station, platform::LocalTime{}});
  // A program that is refused never stands in a slot, and what it leaves undone has no records.
  RC_PRE(converted.CriticalErrors == 0);
  std::set<std::pair<int, int>> seen;
  for (const DrawRecord& record : converted.Records) {
    const bool moves = record.Code == RecordCode::Move || record.Code == RecordCode::LineProfile ||
                       record.Code == RecordCode::ArcProfile;
    // The counts do not tell subroutines of one call apart: the first that is met counts.
    if (!moves || !seen.emplace(record.BlockNumber, record.SubBlock).second) continue;
    if (record.SubNumber == 6 &&
        lines[static_cast<std::size_t>(record.BlockNumber - 1)].find("S6") == std::string::npos) {
      continue;
    }
    const GatherResult at = gathering.To(lines, record.BlockNumber, record.SubBlock);
    RC_ASSERT(at.Met);
    // An arc's record computes its start anew from centre, radius and angle.
    RC_ASSERT(std::abs(at.State.XPosition - record.StartPoint.X) < 1e-2F);
    RC_ASSERT(std::abs(at.State.YPosition - record.StartPoint.Y) < 1e-2F);
    RC_ASSERT(at.State.KerfSide == record.KerfSide);
  }
}

}  // namespace
}  // namespace torvane::restart

// The sheet comes out whole: a run stopped inside an element and started again there, held against
// an uninterrupted run of the same program.
#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support/ProgramGenerator.h"
#include "support/SheetRun.h"

namespace torvane::simulator {
namespace {

using torvane::testing::CompareSheet;
using torvane::testing::FirstCut;
using torvane::testing::Pieces;
using torvane::testing::RestartOrder;
using torvane::testing::SheetRun;
using torvane::testing::UninterruptedRun;
using torvane::testing::WaysBeforeFirstCut;

constexpr double Exact = 0.01;  // mm

/// The step by which an operator moves the split point along an element, mm.
double SplitStep(double length) {
  double step = length / 30;
  for (int n = 3; n <= 30; ++n) {
    if (length / n < 1) {
      step = length / (n - 1);
      break;
    }
  }
  return std::min(std::max(step, 0.1), length / 2);
}

/// The last split point that an operator can choose at or before `along` of an element, mm.
double SplitPointBefore(double length, double along) {
  if (length <= 0) return 0;
  const double step = SplitStep(length);
  return std::max(0.0, length - std::ceil((length - along) / step) * step);
}

/// Records of the cuts of a run, in the order in which they were begun.
std::vector<int> CutRecords(const Pieces& run) {
  std::vector<int> records;
  for (const auto& piece : run) {
    if (piece.Cut && piece.Beam && (records.empty() || records.back() != piece.Place.Record)) {
      records.push_back(piece.Place.Record);
    }
  }
  return records;
}

bool IsCorner(const SheetRun& sheet, int record) {
  const auto& kerf = sheet.Passes().Kerf.at(static_cast<std::size_t>(record - 1));
  return kerf[partprogram::Mark::CornerArc] != 0;
}

/// What an operator would choose for a run that was stopped `along` mm along the compensated
/// element of `record`.
RestartOrder OrderFor(const SheetRun& sheet, int record, double along) {
  const auto& compensated = sheet.Compensated().at(static_cast<std::size_t>(record - 2));
  const auto& programmed = sheet.ProgrammedOf(record);
  const double length = programmed.Path().Length();
  double stopped = programmed.Path().NearestDistance(compensated.Path().At(along));
  if (along <= Exact) stopped = 0;
  return sheet.SplitAt(record, SplitPointBefore(length, stopped));
}

struct Between {
  enum class What { Nothing, ConsoleAnew, PowerCycle, CancelledOnce } Happens = What::Nothing;
};

void HappenBetween(SheetRun& sheet, const RestartOrder& order, Between::What what) {
  switch (what) {
    case Between::What::Nothing:
      return;
    case Between::What::ConsoleAnew:
      return sheet.Select();
    case Between::What::PowerCycle:
      sheet.Controller().PowerCycle();
      return;
    case Between::What::CancelledOnce:
      sheet.SendRestartTable(order);
      sheet.CancelRestart();
      return;
  }
}

/// One way with the beam off; it may be none where the machine stands at the place already.
void ExpectOneWay(const Pieces& second, const Pieces& before) {
  ASSERT_FALSE(before.empty());
  const bool there = Distance(before.back().To, FirstCut(second).From) < 1e-3;
  EXPECT_LE(WaysBeforeFirstCut(second), 1);
  EXPECT_TRUE(there || WaysBeforeFirstCut(second) == 1);
}

/// Stops a run at a place, restarts it and holds the sheet against the uninterrupted one.
void StopAndGoOn(const std::string& program, const Pieces& whole, int record, double share,
                 SheetRun::Setting setting = {}, Between::What between = Between::What::Nothing) {
  SCOPED_TRACE("record " + std::to_string(record) + " at " + std::to_string(share));
  SheetRun sheet(program, setting);
  const auto& element = sheet.Compensated().at(static_cast<std::size_t>(record - 2));
  const double along = element.Path().Length() * share;
  sheet.Select();
  sheet.StopAt(record, along);
  sheet.Start();
  ASSERT_EQ(sheet.Count(EventKind::StopPointReached), 1);
  const auto first = sheet.PiecesOf(1);
  const double sheets = sheet.Variable(Vr::SheetsCompleted);
  const RestartOrder order = OrderFor(sheet, record, along);
  HappenBetween(sheet, order, between);
  sheet.Restart(order);
  // Switched on again, the machine counts its runs from 1: what came after the first run counts.
  auto second = sheet.AllPieces();
  second.erase(second.begin(), second.begin() + static_cast<std::ptrdiff_t>(first.size()));
  const auto cover = CompareSheet(whole, {first, second});
  EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
  EXPECT_LE(cover.Foreign(), Exact) << cover.Describe();
  EXPECT_LE(cover.LongestJump, 1e-3) << cover.Describe();
  for (const int twice : cover.RecordsCutTwice(Exact)) EXPECT_EQ(twice, record);
  const double step = std::max(1.5, SplitStep(sheet.ProgrammedLength(record)));
  const double corner = std::abs(element.Path().Length() - sheet.ProgrammedLength(record));
  EXPECT_LE(cover.Twice(record), step + Exact + corner) << cover.Describe();
  EXPECT_EQ(FirstCut(second).Place.Record, record);
  EXPECT_NEAR(FirstCut(second).S0, order.Along, Exact);
  ExpectOneWay(second, first);
  const double before = between == Between::What::PowerCycle ? 0 : sheets;
  EXPECT_EQ(sheet.Variable(Vr::SheetsCompleted), before + 1);
  EXPECT_EQ(sheet.Count(EventKind::TableIncomplete), 0);
  EXPECT_EQ(sheet.Count(EventKind::PathRefused), 0);
}

/// Every element of a program stopped in its first, its middle and its last part. The pieces that
/// the kerf pass put in at corners belong to no block and are left to the element in front.
void StopEverywhere(const std::string& program, SheetRun::Setting setting = {},
                    Between::What between = Between::What::Nothing, int every = 1) {
  const Pieces whole = UninterruptedRun(program, setting);
  const SheetRun sheet(program, setting);
  int count = 0;
  for (const int record : CutRecords(whole)) {
    if (IsCorner(sheet, record) || count++ % every != 0) continue;
    for (const double share : {0.0, 0.07, 0.5, 0.93}) {
      StopAndGoOn(program, whole, record, share, setting, between);
      if (::testing::Test::HasFailure()) return;
    }
  }
  EXPECT_GT(count, 0);
}

/// A square with a hole, the corners sharp enough for arcs outside.
std::string Square(const std::string& kerf, const std::string& before = "") {
  return "! SHEET : X400 Y300\r\nN10 G71 G90\r\n" + before +
         "N20 G00 X50 Y50\r\nN30 G31 T2=3\r\nN40 " + kerf +
         "\r\nN50 G01 X60 Y60 F2000\r\nN60 G01 X160 Y60\r\nN70 G01 X160 Y120\r\n"
         "N80 G03 X140 Y140 I-20 J0\r\nN90 G01 X60 Y140\r\nN100 G01 X60 Y60\r\nN110 G40\r\n"
         "N120 G31 T2=1\r\nN130 G00 X200 Y200\r\nN140 G31 T2=3\r\nN150 G02 X200 Y200 I15 J0\r\n"
         "N160 G31 T2=1\r\nN170 M30\r\n";
}

TEST(SheetRestart, WithoutCompensation) { StopEverywhere(Square("G40")); }
TEST(SheetRestart, CompensatedToTheLeft) { StopEverywhere(Square("G41 K0.2")); }
TEST(SheetRestart, CompensatedToTheRight) { StopEverywhere(Square("G42 K0.2")); }
TEST(SheetRestart, AWideKerfWithCornerArcs) { StopEverywhere(Square("G42 K4")); }
TEST(SheetRestart, MirroredInX) { StopEverywhere(Square("G41 K0.2", "N15 M11\r\n")); }
TEST(SheetRestart, MirroredInY) { StopEverywhere(Square("G41 K0.2", "N15 M12\r\n")); }
TEST(SheetRestart, MirroredInBoth) { StopEverywhere(Square("G42 K0.2", "N15 M13\r\n")); }

TEST(SheetRestart, YRunningDown) {
  SheetRun::Setting setting;
  setting.YDirection = 0;
  StopEverywhere(Square("G41 K0.2"), setting);
}

TEST(SheetRestart, InTheSecondSlot) {
  SheetRun::Setting setting;
  setting.Slot = 2;
  StopEverywhere(Square("G41 K0.2"), setting);
}

TEST(SheetRestart, AfterTheConsoleWasStartedAnew) {
  StopEverywhere(Square("G41 K0.2"), {}, Between::What::ConsoleAnew);
}
TEST(SheetRestart, AfterTheControllerWasSwitchedOff) {
  StopEverywhere(Square("G41 K0.2"), {}, Between::What::PowerCycle);
}
TEST(SheetRestart, CancelledAndAskedForAgain) {
  StopEverywhere(Square("G41 K0.2"), {}, Between::What::CancelledOnce);
}

TEST(SheetRestart, InInches) {
  StopEverywhere(
      "! SHEET : X24 Y12\r\nN10 G70 G90\r\nN20 G00 X2 Y2\r\nN30 G31 T2=3\r\nN40 G41 K0.2\r\n"
      "N50 G01 X2.5 Y2 F1500\r\nN60 G03 X2.5 Y2 I-0.5 J0\r\nN70 G40\r\nN80 G31 T2=1\r\n"
      "N90 M30\r\n");
}

/// A lug that is called turned by 0 and by 30 degrees, itself calling a hole; and a file call.
const char* const Lugs =
    "! SHEET : X600 Y400\r\nN10 G71 G90\r\nN20 G00 X100 Y100\r\nN30 G98 S1 A0\r\n"
    "N40 G00 X300 Y100\r\nN50 G98 S1 A30\r\nN60 G00 X100 Y300\r\nN70 Q2\r\nN80 G00 X300 Y300\r\n"
    "N90 Q2\r\nN100 M30\r\n\r\nS1\r\nG90\r\nG00 X-20 Y-10\r\nG31 T2=3\r\nG41 K0.15\r\n"
    "G01 X20 Y-10 F1800\r\nG02 X20 Y10 I0 J10\r\nG01 X-20 Y10\r\nG01 X-20 Y-10\r\nG40\r\n"
    "G31 T2=1\r\nG98 S2 A0\r\nM02\r\n\r\nS2\r\nG91\r\nG00 X0 Y0 Z0\r\nG31 T2=3\r\n"
    "G01 X4 Y0 Z0\r\nG03 X0 Y0 Z0 I-4 J0\r\nG31 T2=1\r\nG90\r\nM02\r\n";

TEST(SheetRestart, InCalledSubroutinesTurnedNestedAndByFile) { StopEverywhere(Lugs); }

TEST(SheetRestart, InsideSubroutinesAfterTheControllerWasSwitchedOff) {
  StopEverywhere(Lugs, {}, Between::What::PowerCycle);
}

/// Three laps of the same lines, each farther to the right.
const char* const LapsThatDiffer =
    "! SHEET : X600 Y200\r\nN10 G71 G90\r\nN20 P1=20\r\nN30 G00 XP1 Y20\r\nN40 G31 T2=3\r\n"
    "N50 G01 XP1+40 Y20 F2000\r\nN60 G01 XP1+40 Y60\r\nN70 G03 XP1 Y60 I-20 J0\r\n"
    "N80 G01 XP1 Y20\r\nN90 G31 T2=1\r\nN100 P1=P1+80\r\nN110 IF P1<250 GOTO 30\r\nN120 M30\r\n";

TEST(SheetRestart, InTheLapsOfALoopThatDiffer) { StopEverywhere(LapsThatDiffer); }
TEST(SheetRestart, InTheLapsOfALoopAfterTheConsoleWasStartedAnew) {
  StopEverywhere(LapsThatDiffer, {}, Between::What::ConsoleAnew);
}
TEST(SheetRestart, InTheLapsOfALoopAfterTheControllerWasSwitchedOff) {
  StopEverywhere(LapsThatDiffer, {}, Between::What::PowerCycle);
}

/// Three laps over the same path: only the line that was reached tells them apart.
const char* const LapsAlike =
    "! SHEET : X600 Y200\r\nN10 G71 G90\r\nN20 P1=0\r\nN30 G00 X20 Y20\r\nN40 G31 T2=3\r\n"
    "N50 G01 X60 Y20 F2000\r\nN60 G01 X60 Y60\r\nN70 G01 X20 Y20\r\nN80 G31 T2=1\r\n"
    "N90 P1=P1+1\r\nN100 IF P1<3 GOTO 30\r\nN110 M30\r\n";

TEST(SheetRestart, InLapsAlikeTheOneThatWasReachedCounts) { StopEverywhere(LapsAlike); }
TEST(SheetRestart, InLapsAlikeAlsoAfterACancelledRestart) {
  StopEverywhere(LapsAlike, {}, Between::What::CancelledOnce);
}
TEST(SheetRestart, InLapsAlikeAlsoAfterTheConsoleWasStartedAnew) {
  StopEverywhere(LapsAlike, {}, Between::What::ConsoleAnew);
}

TEST(SheetRestart, ProgramsWithoutNumbers) {
  std::string program;
  for (const auto line : core::SplitLines(LapsThatDiffer)) {
    const auto text = std::string(line);
    // The jump and its target keep theirs.
    const bool needed = text.starts_with("N30 ") || text.starts_with("N110 ");
    const auto blank = text.find(' ');
    program += (text.starts_with('N') && !needed ? text.substr(blank + 1) : text) + "\r\n";
  }
  StopEverywhere(program);
}

/// Test pieces that the switches leave out, in front of and after the contour.
const char* const WithSkips =
    "! SHEET : X600 Y200\r\nN10 G71 G90\r\nN20 G00 X10 Y10\r\nN30 G31 T2=3\r\n"
    "N40 G01 X40 Y10 F2000\r\n/N50 G01 X40 Y30\r\n//N60 G01 X10 Y30\r\nN70 G01 X70 Y30\r\n"
    "/N80 G01 X70 Y50\r\nN90 G01 X100 Y50\r\nN100 G31 T2=1\r\nN110 M30\r\n";

class SheetRestartSkips : public ::testing::TestWithParam<std::pair<int, int>> {};

TEST_P(SheetRestartSkips, SwitchedOnBeforeTheRun) {
  const auto [first, second] = GetParam();
  const auto prepare = [&](SheetRun& sheet) {
    sheet.Select();
    sheet.Send("VR(92)=" + std::to_string(first));
    sheet.Send("VR(93)=" + std::to_string(second));
  };
  SheetRun uninterrupted(WithSkips);
  prepare(uninterrupted);
  uninterrupted.Start();
  const Pieces whole = uninterrupted.AllPieces();
  for (const int record : CutRecords(whole)) {
    SheetRun sheet(WithSkips);
    prepare(sheet);
    const double along = sheet.ProgrammedLength(record) / 3;
    sheet.StopAt(record, along);
    sheet.Start();
    sheet.Restart(OrderFor(sheet, record, along));
    const auto cover = CompareSheet(whole, {sheet.PiecesOf(1), sheet.PiecesOf(2)});
    EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
    EXPECT_LE(cover.Foreign(), Exact) << cover.Describe();
    ExpectOneWay(sheet.PiecesOf(2), sheet.PiecesOf(1));
    EXPECT_EQ(sheet.Variable(Vr::SheetsCompleted), 1);
  }
}

INSTANTIATE_TEST_SUITE_P(Switches, SheetRestartSkips,
                         ::testing::Values(std::pair{0, 0}, std::pair{1, 0}, std::pair{0, 1},
                                           std::pair{1, 1}));

TEST(SheetRestart, BeyondTheLinesThatTheRingHolds) {
  torvane::testing::GeneratorOptions options;
  options.Profiles = 70;
  options.Columns = 10;
  const std::string program = torvane::testing::GenerateProgram(options);
  ASSERT_GT(SheetRun(program).Passes().Table.Lines, 500);
  StopEverywhere(program, {}, Between::What::Nothing, 61);
  StopEverywhere(program, {}, Between::What::ConsoleAnew, 97);
  StopEverywhere(program, {}, Between::What::PowerCycle, 97);
}

TEST(SheetRestart, ARestartOfARestartLeavesNothingOfTheFirst) {
  const std::string program = Square("G41 K0.2");
  const Pieces whole = UninterruptedRun(program);
  const auto records = CutRecords(whole);
  SheetRun sheet(program);
  sheet.Select();
  sheet.StopAt(records[1], 30);
  sheet.Start();
  sheet.StopAt(records[3], 5);
  sheet.Restart(OrderFor(sheet, records[1], 30));
  sheet.StopAt(records[3], 9);
  sheet.Restart(OrderFor(sheet, records[3], 5));
  sheet.Restart(OrderFor(sheet, records[3], 9));
  const auto cover = CompareSheet(
      whole, {sheet.PiecesOf(1), sheet.PiecesOf(2), sheet.PiecesOf(3), sheet.PiecesOf(4)});
  EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
  const std::vector<int> stopped{records[1], records[3]};
  for (const int twice : cover.RecordsCutTwice(Exact)) {
    EXPECT_NE(std::find(stopped.begin(), stopped.end(), twice), stopped.end());
  }
  for (int run = 2; run <= 4; ++run) ExpectOneWay(sheet.PiecesOf(run), sheet.PiecesOf(run - 1));
  EXPECT_EQ(sheet.Variable(Vr::SheetsCompleted), 1);
}

RC_GTEST_PROP(SheetRestartProperty, AnySheetStoppedAnywhereComesOutWhole, ()) {
  torvane::testing::GeneratorOptions options;
  options.Profiles = *rc::gen::inRange(1, 9);
  options.Columns = 3;
  options.KerfWidth = *rc::gen::inRange(0, 5) * 0.1;
  options.Expressions = *rc::gen::arbitrary<bool>();
  const std::string program = torvane::testing::GenerateProgram(options);
  const Pieces whole = UninterruptedRun(program);
  const SheetRun sheet(program);
  auto records = CutRecords(whole);
  std::erase_if(records, [&](int record) { return IsCorner(sheet, record); });
  RC_PRE(!records.empty());
  const int record = *rc::gen::elementOf(records);
  const double share = *rc::gen::inRange(0, 1000) / 1000.0;
  const auto between = *rc::gen::element(Between::What::Nothing, Between::What::ConsoleAnew,
                                         Between::What::PowerCycle, Between::What::CancelledOnce);
  StopAndGoOn(program, whole, record, share, {}, between);
  RC_ASSERT(!::testing::Test::HasFailure());
}

}  // namespace
}  // namespace torvane::simulator

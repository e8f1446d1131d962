// The sheet comes out whole: a run stopped inside an element and started again there, held against
// an uninterrupted run of the same program.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support/AnySheet.h"
#include "support/ProgramGenerator.h"
#include "support/SheetPrograms.h"
#include "support/SheetRun.h"
#include "support/SheetStops.h"

namespace torvane::simulator {
namespace {

using namespace torvane::tests;

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
  ExpectWholeSheet(whole, first, second,
                   {record, order.Along, sheet.ProgrammedLength(record), element.Path().Length()});
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

TEST(SheetRestart, InInches) { StopEverywhere(Inches); }

TEST(SheetRestart, InCalledSubroutinesTurnedNestedAndByFile) { StopEverywhere(Lugs); }

TEST(SheetRestart, InsideSubroutinesAfterTheControllerWasSwitchedOff) {
  StopEverywhere(Lugs, {}, Between::What::PowerCycle);
}

TEST(SheetRestart, InTheLapsOfALoopThatDiffer) { StopEverywhere(LapsThatDiffer); }
TEST(SheetRestart, InTheLapsOfALoopAfterTheConsoleWasStartedAnew) {
  StopEverywhere(LapsThatDiffer, {}, Between::What::ConsoleAnew);
}
TEST(SheetRestart, InTheLapsOfALoopAfterTheControllerWasSwitchedOff) {
  StopEverywhere(LapsThatDiffer, {}, Between::What::PowerCycle);
}

TEST(SheetRestart, InLapsAlikeTheOneThatWasReachedCounts) { StopEverywhere(LapsAlike); }
TEST(SheetRestart, InLapsAlikeAlsoAfterACancelledRestart) {
  StopEverywhere(LapsAlike, {}, Between::What::CancelledOnce);
}
TEST(SheetRestart, InLapsAlikeAlsoAfterTheConsoleWasStartedAnew) {
  StopEverywhere(LapsAlike, {}, Between::What::ConsoleAnew);
}

TEST(SheetRestart, ProgramsWithoutNumbers) {
  StopEverywhere(WithoutNumbers(LapsThatDiffer, {"N30 ", "N110 "}));
}

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
  torvane::tests::GeneratorOptions options;
  options.Profiles = 70;
  options.Columns = 10;
  const std::string program = torvane::tests::GenerateProgram(options);
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

/// Stops the program in any of its elements and goes on there.
void AnywhereInIt(const std::string& program) {
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

RC_GTEST_PROP(SheetRestartProperty, AnyLargeSheetStoppedAnywhereComesOutWhole, ()) {
  torvane::tests::GeneratorOptions options;
  options.Profiles = *rc::gen::inRange(1, 9);
  options.Columns = 3;
  options.KerfWidth = *rc::gen::inRange(0, 5) * 0.1;
  options.Expressions = *rc::gen::arbitrary<bool>();
  AnywhereInIt(torvane::tests::GenerateProgram(options));
}

RC_GTEST_PROP(SheetRestartProperty, AnyKindOfSheetStoppedAnywhereComesOutWhole, (unsigned seed)) {
  AnywhereInIt(AnySheet(seed).Program());
}

}  // namespace
}  // namespace torvane::simulator

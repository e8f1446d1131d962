// A run stops inside an element, the console ends one way or another and is started again, the run
// is restarted on the plot, all by keys: the sheet comes out whole.
#include <map>
#include <ostream>

#include <gmock/gmock.h>

#include "SheetShop.h"
#include "support/ProgramGenerator.h"
#include "support/SheetPrograms.h"

namespace torvane::tests {
namespace {

using simulator::EventKind;
using tests::Pieces;
using toolkit::Key;
namespace Vr = simulator::Vr;

/// What comes between the stop and the restart.
enum class Between { Nothing, Ended, Killed, PowerCycled, PowerCycledAndKilled };

struct SheetCase {
  const char* Name;
  std::string Program;
  Between Happens = Between::Killed;
  std::int16_t Slot = 1;
  std::string Skips = {};  ///< keys of the status menu: block skip 1 and 2
};

void PrintTo(const SheetCase& row, std::ostream* out) { *out << row.Name; }

/// Lines that go on in one direction, and arcs that they run into.
constexpr const char* Tangents =
    "! SHEET : X400 Y300\r\nN10 G71 G90\r\nN20 G00 X20 Y20\r\nN30 G31 T2=3\r\n"
    "N40 G41 K0.2 G01 X60 Y20 F2000\r\nN50 G01 X100 Y20\r\nN60 G03 X120 Y40 I0 J20\r\n"
    "N70 G01 X120 Y80\r\nN80 G03 X100 Y100 I-20 J0\r\nN90 G01 X20 Y100\r\nN100 G40\r\n"
    "N110 G31 T2=1\r\nN120 M30\r\n";

/// The sheet is moved on after the first contour, and a second one is cut.
constexpr const char* Repositioned =
    "! SHEET : X800 Y300\r\nN10 G71 G90\r\nN20 G00 X20 Y20\r\nN30 G31 T2=3\r\n"
    "N40 G01 X80 Y20 F2000\r\nN50 G01 X80 Y60\r\nN60 G31 T2=1\r\nN70 G95 I-200\r\n"
    "N80 G00 X260 Y20\r\nN90 G31 T2=3\r\nN100 G01 X300 Y20\r\nN110 G02 X300 Y60 I0 J20\r\n"
    "N120 G31 T2=1\r\nN130 M30\r\n";

std::string LongProgram() {
  tests::GeneratorOptions options;
  options.Profiles = 70;
  options.Columns = 10;
  return tests::GenerateProgram(options);
}

/// The same sheet without a stop, by a console of its own.
const Pieces& WholeSheet(const SheetCase& row) {
  static std::map<std::string, Pieces> sheets;
  auto& whole = sheets[row.Program + std::to_string(row.Slot) + row.Skips];
  if (!whole.empty()) return whole;
  SheetShop shop(row.Program, row.Slot);
  shop.StartConsole();
  shop.SelectProgram();
  for (const char key : row.Skips) shop.PressSkip(key);
  shop.Run();
  whole = shop.TakePieces();
  return whole;
}

void HappenBetween(SheetShop& shop, Between what) {
  if (what == Between::PowerCycled || what == Between::PowerCycledAndKilled) shop.PowerCycle();
  if (what == Between::Ended) shop.EndConsole();
  if (what == Between::Killed || what == Between::PowerCycledAndKilled) shop.KillConsole();
  if (what == Between::Nothing || what == Between::PowerCycled) {
    shop.Console().RunFor(300);
  } else {
    shop.StartConsole();
  }
}

/// Every so many of the cuts of a run, the first and the last among them, without the arcs that the
/// kerf pass put in at corners.
std::vector<int> StopRecords(const SheetShop& shop, const Pieces& whole, std::size_t count) {
  std::vector<int> records = CutRecords(whole);
  std::erase_if(records, [&](int record) { return shop.IsCorner(record); });
  std::vector<int> chosen;
  for (std::size_t i = 0; i < count && !records.empty(); ++i) {
    chosen.push_back(records[i * (records.size() - 1) / (count - 1)]);
  }
  return chosen;
}

class SheetByKeys : public ::testing::TestWithParam<SheetCase> {};

TEST_P(SheetByKeys, ComesOutWhole) {
  const SheetCase& row = GetParam();
  const Pieces& whole = WholeSheet(row);
  SheetShop shop(row.Program, row.Slot);
  shop.StartConsole();
  for (const char key : row.Skips) shop.PressSkip(key);
  constexpr double Shares[] = {0.5, 0.0, 0.93, 0.31};
  int turn = 0;
  shop.SelectProgram();
  for (const int record : StopRecords(shop, whole, std::size(Shares))) {
    const double along = shop.Compensated(record).Path().Length() * Shares[turn++];
    SCOPED_TRACE("record " + std::to_string(record) + " at " + std::to_string(along));
    if (turn > 1) shop.SelectProgram();
    (void)shop.TakePieces();
    shop.RunUntil(record, along);
    const Pieces first = shop.TakePieces();
    HappenBetween(shop, row.Happens);
    const double sheets = shop.Variable(Vr::SheetsCompleted);
    const auto how = row.Program.size() > 4000 ? Choosing::ByPointer : Choosing::ByKeys;
    const WantedEntry entry = shop.RestartOnPlot(record, along, how);
    shop.PressCycleStart();
    shop.RunOn();
    ExpectWholeSheet(whole, first, shop.TakePieces(), entry);
    EXPECT_EQ(shop.Variable(Vr::SheetsCompleted), sheets + 1);
    EXPECT_FALSE(shop.Console().Shows("WarningForm")) << shop.Console().Warning();
    EXPECT_EQ(shop.Console().System.State.MachineInError, 0);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SheetByKeys,
    ::testing::Values(
        SheetCase{"WithoutCompensation", Square("G40"), Between::Nothing},
        SheetCase{"CompensatedToTheLeftEndedByF12", Square("G41 K0.2"), Between::Ended},
        SheetCase{"CompensatedToTheRightKilled", Square("G42 K0.2")},
        SheetCase{"AfterACornerArc", Square("G42 K4")},
        SheetCase{"MirroredInX", Square("G41 K0.2", "N14 G56 X300 Y0\r\nN15 M11\r\n")},
        SheetCase{"MirroredInY", Square("G41 K0.2", "N14 G56 X0 Y250\r\nN15 M12\r\n"),
                  Between::Ended},
        SheetCase{"MirroredInBoth", Square("G42 K0.2", "N14 G56 X300 Y250\r\nN15 M13\r\n")},
        SheetCase{"InInches", Inches},
        SheetCase{"InSubroutinesTurnedAndNestedAndByFile", Lugs, Between::Ended},
        SheetCase{"InSubroutinesAfterAPowerCycle", Lugs, Between::PowerCycledAndKilled},
        SheetCase{"InLapsThatDiffer", LapsThatDiffer}, SheetCase{"InLapsAlike", LapsAlike},
        SheetCase{"WithSkipOneOn", WithSkips, Between::Killed, 1, "1"},
        SheetCase{"WithSkipTwoOn", WithSkips, Between::Ended, 1, "2"},
        SheetCase{"WithBothSkipsOn", WithSkips, Between::Nothing, 1, "12"},
        SheetCase{"WithNoSkipOn", WithSkips}, SheetCase{"InAndAfterBlendedElements", Tangents},
        SheetCase{"AroundASheetThatIsMoved", Repositioned},
        SheetCase{"InTheSecondSlot", Square("G41 K0.2"), Between::Killed, 2},
        SheetCase{"OfMoreThanFiveHundredLines", LongProgram()},
        SheetCase{"WithoutBlockNumbers", WithoutNumbers(Square("G41 K0.2"))},
        SheetCase{"AfterAPowerCycle", Square("G41 K0.2"), Between::PowerCycled}),
    [](const auto& row) { return std::string(row.param.Name); });

}  // namespace
}  // namespace torvane::tests

// Several stops and restarts of one sheet, by keys: a restart of a restart, one that is cancelled
// and done again, consoles that end while the machine cuts, and programs of any kind.
#include <gmock/gmock.h>

#include "SheetShop.h"
#include "support/AnySheet.h"
#include "support/FewCases.h"
#include "support/SheetPrograms.h"

namespace torvane::tests {
namespace {

using ::testing::ElementsAre;
using tests::CompareSheet;
using tests::Pieces;
using toolkit::Key;
namespace Vr = simulator::Vr;

/// Records of the square: its long sides, its arc, and the whole circle.
constexpr int LongSide = 5;
constexpr int Arc = 7;
constexpr int Circle = 13;

class SheetSession : public ::testing::Test {
 protected:
  /// A run without a stop first, then the program is selected again.
  explicit SheetSession(const std::string& program = Square("G41 K0.2")) : Shop(program) {
    Shop.StartConsole();
    Shop.SelectProgram();
    Shop.Run();
    Whole = Shop.TakePieces();
    Shop.SelectProgram();
  }
  [[nodiscard]] std::string RestartFile() { return Shop.ThePlant().Directory.Get("Restart.tbx"); }
  /// The commands that the restart form sends.
  [[nodiscard]] std::vector<std::string> Commands() { return Shop.Console().TakeCommands(); }

  SheetShop Shop;
  Pieces Whole;
};

TEST_F(SheetSession, TheRecordsAreWhatTheTestsTakeThemFor) {
  namespace Code = partprogram::RecordCode;
  EXPECT_EQ(Shop.Compensated(LongSide).Code, Code::LineProfile);
  EXPECT_NEAR(Shop.Programmed(LongSide).Path().Length(), 100, 1e-3);
  EXPECT_EQ(Shop.Compensated(Arc).Code, Code::ArcProfile);
  EXPECT_NEAR(Shop.Programmed(Circle).Path().Length(), 94.248, 1e-3);
}

TEST_F(SheetSession, ARestartOfARestartLeavesNothingOfTheFirst) {
  Shop.RunUntil(LongSide, 40);
  const Pieces first = Shop.TakePieces();
  (void)Shop.RestartOnPlot(LongSide, 40);
  Shop.Machine().StopAt(Arc, 20);
  Shop.PressCycleStart();
  Shop.RunOn();
  const Pieces second = Shop.TakePieces();
  const std::string left = RestartFile();
  Shop.KillConsole();
  Shop.StartConsole();
  const WantedEntry entry = Shop.RestartOnPlot(Arc, 20);
  EXPECT_NE(RestartFile(), left);
  Shop.PressCycleStart();
  Shop.RunOn();
  const Pieces third = Shop.TakePieces();
  const auto cover = CompareSheet(Whole, {first, second, third});
  EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
  EXPECT_LE(cover.Foreign(), Exact) << cover.Describe();
  EXPECT_LE(cover.Twice(LongSide), 100 / 30.0 + Exact);
  EXPECT_LE(cover.Twice(Arc), 1.5 + Exact);
  EXPECT_NEAR(tests::FirstCut(third).S0, entry.Along, Exact);
  ExpectOneWay(second, first);
  ExpectOneWay(third, second);
}

TEST_F(SheetSession, TheSameElementIsStoppedTwice) {
  Shop.RunUntil(Circle, 30);
  const Pieces first = Shop.TakePieces();
  (void)Shop.RestartOnPlot(Circle, 30);
  Shop.Machine().StopAt(Circle, 70);
  Shop.PressCycleStart();
  Shop.RunOn();
  const Pieces second = Shop.TakePieces();
  (void)Shop.RestartOnPlot(Circle, 70, Choosing::ByPointer);
  Shop.PressCycleStart();
  Shop.RunOn();
  const auto cover = CompareSheet(Whole, {first, second, Shop.TakePieces()});
  EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
  EXPECT_LE(cover.Foreign(), Exact) << cover.Describe();
}

TEST_F(SheetSession, ACancelledRestartDoneAgainIsTheSame) {
  Shop.RunUntil(Arc, 12);
  const Pieces first = Shop.TakePieces();
  (void)Commands();
  (void)Shop.RestartOnPlot(Arc, 12);
  const std::string file = RestartFile();
  const auto asked = Commands();
  EXPECT_THAT(asked,
              ElementsAre("TABLE (" + std::to_string(Shop.TableLines()) + ",-999)", "VR(91)=3"));
  Shop.Console().Type(Key::C);
  Shop.Console().RunFor(300);
  EXPECT_FALSE(Shop.Console().Shows("RestartForm"));
  EXPECT_THAT(Commands(), ElementsAre("VR(91)=1"));
  EXPECT_TRUE(Shop.TakePieces().empty()) << "nothing has moved";
  const WantedEntry entry = Shop.RestartOnPlot(Arc, 12);
  EXPECT_EQ(RestartFile(), file);
  EXPECT_EQ(Commands(), asked);
  Shop.PressCycleStart();
  EXPECT_THAT(Commands(), ElementsAre("VR(91)=1", "B1.0009R"));
  Shop.RunOn();
  ExpectWholeSheet(Whole, first, Shop.TakePieces(), entry);
}

TEST_F(SheetSession, ASplitThatWasLeftLeavesNothing) {
  Shop.RunUntil(LongSide, 40);
  const Pieces first = Shop.TakePieces();
  Shop.OpenVisual();
  for (int i = 0; i < 4; ++i) Shop.Console().Type(Key::N);
  Shop.Console().Type(Key::T);
  Shop.Console().Type(Key::L);
  Shop.Console().Type(Key::C);
  EXPECT_FALSE(Shop.Console().System.Console.PlotKeysActive);
  const WantedEntry entry = Shop.RestartOnPlot(LongSide, 40);
  Shop.PressCycleStart();
  Shop.RunOn();
  ExpectWholeSheet(Whole, first, Shop.TakePieces(), entry);
}

/// Nobody feeds the table: the machine runs to the last line that it has and waits there.
TEST_F(SheetSession, AConsoleKilledWhileTheMachineCuts) {
  auto& machine = Shop.Machine();
  machine.CycleStart();
  while (machine.Line() < LongSide - 1) Shop.Console().RunFor(20);
  Shop.KillConsole();
  Shop.ThePlant().Controller->Advance(1.3);
  ASSERT_EQ(machine.Mode(), simulator::MachineMode::Running);
  machine.Stop();
  const Pieces first = Shop.TakePieces();
  const auto& last = first.back();
  ASSERT_TRUE(last.Cut);
  Shop.StartConsole();
  const WantedEntry entry = Shop.RestartOnPlot(last.Place.Record, last.S1);
  Shop.PressCycleStart();
  Shop.RunOn();
  ExpectWholeSheet(Whole, first, Shop.TakePieces(), entry);
}

TEST_F(SheetSession, ABlockOfTheListIsCutAgainWhole) {
  Shop.RunUntil(Arc, 12);
  const Pieces first = Shop.TakePieces();
  Shop.KillConsole();
  Shop.StartConsole();
  auto& again = Shop.Console();
  again.TypeF(1);
  // N80 is line 9 of the listing, the head of the program being its first.
  for (int i = 0; i < 8; ++i) again.ThenType(Key::Down);
  again.ThenType(Key::S);
  again.Type(Key::B);
  again.RunFor(300);
  EXPECT_NE(RestartFile().find("G00 X160 Y120 G41"), std::string::npos) << RestartFile();
  Shop.PressCycleStart();
  Shop.RunOn();
  const Pieces second = Shop.TakePieces();
  const auto cover = CompareSheet(Whole, {first, second});
  EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
  EXPECT_LE(cover.Foreign(), Exact) << cover.Describe();
  EXPECT_THAT(cover.RecordsCutTwice(Exact), ElementsAre(Arc));
  EXPECT_EQ(tests::FirstCut(second).Place.Record, Arc);
  EXPECT_NEAR(tests::FirstCut(second).S0, 0, Exact);
  ExpectOneWay(second, first);
}

/// The ring after a console's start holds the first lines alone; what the machine goes on with is
/// sent in one piece by the first tick.
TEST_F(SheetSession, TheFirstTickAfterAConsolesStartSendsUpToTheLead) {
  Shop.KillConsole();
  SheetShop longer(AnySheet(7).Program());
  longer.StartConsole();
  longer.SelectProgram();
  ASSERT_GT(longer.TableLines(), 60);
  longer.KillConsole();
  constexpr int Reached = 38;
  longer.StartConsole([&](std::string_view line) {
    // A controller that keeps the line it has reached, whatever table is in force.
    if (line == "VR(18)=VR(18) OR 1") longer.SetVariable(Vr::RunningLine, Reached);
  });
  std::vector<int> sentBy;  // lines of the table that each tick sent
  for (const std::string& line : longer.Console().Lines) {
    if (line == "? VR(19)") sentBy.push_back(0);
    if (line.starts_with("TABLE(") && !sentBy.empty()) ++sentBy.back();
  }
  const int fill = longer.Console().System.Link.TableFillLines;
  const int lead = longer.Console().System.Link.TableLeadLines;
  ASSERT_FALSE(sentBy.empty());
  EXPECT_EQ(sentBy.front(), Reached + lead - fill) << "lines 21 to 53, in the first tick";
  EXPECT_EQ(std::count(sentBy.begin() + 1, sentBy.end(), 0), static_cast<long>(sentBy.size()) - 1);
  EXPECT_EQ(longer.Console().System.TableSent, Reached + lead);
}

TEST(SheetProperty, AnySheetStoppedAnywhereComesOutWholeByKeys) {
  const bool held = HoldsInCases(8, [] {
    const auto seed = *rc::gen::arbitrary<unsigned>();
    RC_LOG() << "seed " << seed;
    SheetShop shop(AnySheet(seed).Program());
    shop.StartConsole();
    shop.SelectProgram();
    shop.Run();
    const Pieces whole = shop.TakePieces();
    auto records = CutRecords(whole);
    std::erase_if(records, [&](int record) { return shop.IsCorner(record); });
    const int record = *rc::gen::elementOf(records);
    const double along =
        shop.Compensated(record).Path().Length() * *rc::gen::inRange(0, 1000) / 1000.0;
    RC_LOG() << " record " << record << " at " << along;
    shop.SelectProgram();
    shop.RunUntil(record, along);
    const Pieces first = shop.TakePieces();
    if (*rc::gen::arbitrary<bool>()) {
      if (*rc::gen::arbitrary<bool>()) shop.PowerCycle();
      shop.KillConsole();
      shop.StartConsole();
    }
    const WantedEntry entry = shop.RestartOnPlot(record, along);
    shop.PressCycleStart();
    shop.RunOn();
    ExpectWholeSheet(whole, first, shop.TakePieces(), entry);
    RC_ASSERT(!::testing::Test::HasFailure());
  });
  EXPECT_TRUE(held);
}

}  // namespace
}  // namespace torvane::tests

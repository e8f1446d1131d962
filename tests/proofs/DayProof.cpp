// A day at the machine: selections, changes of program, holds, stops, restarts, receptions, screens
// left open, consoles that end and start, and a line that fails twice an hour. No sheet, no
// program and no count may be lost by it, and the memory must not grow.
#include <algorithm>
#include <cstdint>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>

#include "Scale.h"
#include "console/SheetShop.h"
#include "support/AnySheet.h"

namespace torvane::tests {
namespace {

using toolkit::Key;
namespace Vr = simulator::Vr;

constexpr int Minute = 60'000;  // ms
/// What the heap may hold more at the end of the day than at noon, KiB.
constexpr std::int64_t GrowthKiB = 1024;

/// Of the heap proper and of large blocks beside it.
std::int64_t HeapKiB() {
  const auto heap = mallinfo2();
  return static_cast<std::int64_t>((heap.uordblks + heap.hblkhd) / 1024);
}

class Day {
 public:
  explicit Day(unsigned seed) : random_(seed), shop_(AnySheet(seed).Program()) { Begin(); }

  /// So many minutes of the machine's time.
  void Work(int minutes) {
    const std::int64_t until = NowMs() + std::int64_t{minutes} * Minute;
    noonMs_ = NowMs() + std::int64_t{minutes} * Minute / 2;
    NewSheet();
    while (NowMs() < until && !::testing::Test::HasFailure()) {
      Act();
      TakeStock();
    }
    shop_.EndConsole();
  }

  [[nodiscard]] std::string Tell() const {
    return std::to_string(sheets_) + " sheets of " + std::to_string(selections_) + " selections, " +
           std::to_string(restarts_) + " of them in two parts, " + std::to_string(changes_) +
           " changes of program, " + std::to_string(received_) + " programs received, " +
           std::to_string(failures_) + " failures of the line with " + std::to_string(dialogs_) +
           " dialogs, " + std::to_string(starts_) + " consoles; heap " + std::to_string(noonKiB_) +
           " KiB at noon, " + std::to_string(lastKiB_) + " KiB at the end";
  }
  [[nodiscard]] std::int64_t GrowthOfHeapKiB() const { return lastKiB_ - noonKiB_; }
  [[nodiscard]] int Sheets() const { return sheets_; }

 private:
  // ---- time and stock ----
  [[nodiscard]] std::int64_t NowMs() const { return before_ + console_->Loop.NowMs(); }
  [[nodiscard]] int Pick(int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random_);
  }
  void RunFor(int ms) { console_->RunFor(ms); }

  void Begin() {
    shop_.StartConsole();
    console_ = &shop_.Console();
    ++starts_;
    // The operator goes on whatever the line says.
    answers_ = console_->Loop.MakeTimer([this] {
      if (!console_->Shows("WarningForm")) return;
      const std::string warning = console_->Warning();
      EXPECT_TRUE(warning.starts_with("An error occurred while talking to TRIO !")) << warning;
      ++dialogs_;
      console_->Type(Key::C);
    });
    answers_->Start(1000);
  }
  void TakeStock() {
    console_->Lines.clear();
    lastKiB_ = HeapKiB();
    if (NowMs() < noonMs_) noonKiB_ = lastKiB_;
    EXPECT_LE(console_->Loop.ActivitiesUnderWay(), 1U) << "a tick at most";
  }

  // ---- what happens in a day ----
  void Act() {
    struct Row {
      const char* Name;
      void (Day::*Do)();
    };
    static constexpr Row Rows[] = {{"a new sheet", &Day::NewSheet},
                                   {"a sheet", &Day::CutSheet},
                                   {"one more sheet", &Day::CutSheet},
                                   {"a sheet in two", &Day::CutInTwo},
                                   {"reception", &Day::Receive},
                                   {"a screen", &Day::LookAround},
                                   {"change of program", &Day::ChangeProgram},
                                   {"coffee", &Day::CoffeeBreak},
                                   {"next shift", &Day::NextShift}};
    const Row& row = Rows[Pick(0, static_cast<int>(std::size(Rows)) - 1)];
    SCOPED_TRACE(row.Name + (" at minute " + std::to_string(NowMs() / Minute)));
    (this->*row.Do)();
    RunFor(1000);
    EXPECT_EQ(console_->Front(), "FrontEnd");
    EXPECT_FALSE(console_->System.Console.PlotKeysActive);
    if (NowMs() >= nextFailureMs_) LoseTheLine();
  }

  void NewSheet() {
    shop_.ThePlant().Directory.Put("Programs/SHOP/SHEET.prg", AnySheet(random_()).Program());
    Select();
    (void)shop_.TakePieces();
    shop_.Run();
    whole_ = shop_.TakePieces();
    Counted();
  }
  /// A program that is longer than the controller's table is selected before each run.
  void Select() {
    shop_.SelectProgram();
    ++selections_;
    counted_ = 0;
  }
  /// A sheet has come to its end: the machine and the console agree on the count.
  void Counted() {
    ++sheets_;
    ++counted_;
    RunFor(1000);
    EXPECT_EQ(shop_.Variable(Vr::SheetsCompleted), counted_);
    EXPECT_EQ(console_->System.TableSent, shop_.TableLines());
  }

  /// With a feed hold, a message, or a line that fails in the middle.
  void CutSheet() {
    Select();
    shop_.Machine().CycleStart();
    RunFor(Pick(500, 20'000));
    if (shop_.Machine().Mode() == simulator::MachineMode::Running) Disturb();
    shop_.RunOn();
    const auto cover = CompareSheet(whole_, {shop_.TakePieces()});
    EXPECT_LE(cover.Missing(), Exact) << cover.Describe();
    EXPECT_LE(cover.Foreign(), Exact) << cover.Describe();
    Counted();
  }
  void Disturb() {
    switch (Pick(0, 2)) {
      case 0:
        shop_.Machine().FeedHold();
        RunFor(Pick(100, 2 * Minute));
        shop_.Machine().Release();
        break;
      case 1:
        shop_.Machine().RaiseError(Pick(1, 20));
        RunFor(Pick(100, Minute));
        shop_.Machine().ClearMessages();
        shop_.Machine().Release();
        break;
      default:
        if (NowMs() >= nextFailureMs_) LoseTheLine();
    }
  }

  /// The run is stopped inside an element and goes on there, perhaps after a new start of the
  /// console or of the controller.
  void CutInTwo() {
    Select();
    const auto record = AnyElement();
    const double along = shop_.Compensated(record).Path().Length() * Pick(0, 999) / 1000.0;
    shop_.RunUntil(record, along);
    const Pieces first = shop_.TakePieces();
    RunFor(Pick(1000, 5 * Minute));
    if (Pick(0, 3) == 0) NewConsole(Pick(0, 1) == 0);
    const WantedEntry entry = shop_.RestartOnPlot(record, along);
    shop_.PressCycleStart();
    shop_.RunOn();
    ExpectWholeSheet(whole_, first, shop_.TakePieces(), entry);
    ++restarts_;
    Counted();
  }
  [[nodiscard]] int AnyElement() {
    auto records = CutRecords(whole_);
    std::erase_if(records, [this](int record) { return shop_.IsCorner(record); });
    return records[static_cast<std::size_t>(Pick(0, static_cast<int>(records.size()) - 1))];
  }

  void Receive() {
    static constexpr const char* Parts[] = {"GASKET", "STAR", "BRACKET-40"};
    const std::string part = Parts[Pick(0, static_cast<int>(std::size(Parts)) - 1)];
    const std::string name = "PART-" + std::to_string(++received_);
    for (const std::string& command : {std::string("directory OFFICE"), "name " + name,
                                       "send Programs\\SHOP\\" + part + ".prg"}) {
      (void)console_->Office->Obey(command);
    }
    RunFor(Minute);
    const auto& plant = shop_.ThePlant().Directory;
    EXPECT_EQ(plant.Get("Programs/OFFICE/" + name + ".prg"),
              plant.Get("Programs/SHOP/" + part + ".prg"));
    console_->Type(Key::M);
    if (console_->Shows("MessageForm")) console_->Type(Key::X);
  }

  /// A screen of the main keys stands open for a while.
  void LookAround() {
    constexpr int Screens[] = {2, 3, 4, 5, 6, 7, 9};
    console_->TypeF(Screens[Pick(0, static_cast<int>(std::size(Screens)) - 1)]);
    RunFor(Pick(100, 3 * Minute));
    const bool leftByE = console_->Front() == "MachineForm";
    const bool open = console_->Front() != "FrontEnd" || console_->System.Console.PlotKeysActive;
    if (open) console_->Type(leftByE ? Key::E : Key::X);
  }

  /// To the other slot and back.
  void ChangeProgram() {
    const int here = console_->System.ActiveSlot == 1 ? 1 : 2;
    for (const int slot : {3 - here, here}) {
      console_->TypeF(9 + slot);
      RunFor(Pick(1500, 10'000));
      EXPECT_EQ(console_->System.ActiveSlot, slot);
      ++changes_;
    }
  }

  void CoffeeBreak() { RunFor(Pick(Minute, 15 * Minute)); }

  void NextShift() {
    if (Pick(0, 9) == 0) NewConsole(false);
  }
  void NewConsole(bool powerCycle) {
    answers_.reset();
    before_ = NowMs();
    shop_.EndConsole();
    if (powerCycle) shop_.PowerCycle();
    Begin();
  }

  /// The cable is out for up to a minute.
  void LoseTheLine() {
    nextFailureMs_ += Pick(20 * Minute, 40 * Minute);
    ++failures_;
    shop_.ThePlant().Controller->SetSilent(true);
    RunFor(Pick(500, Minute));
    shop_.ThePlant().Controller->SetSilent(false);
    RunFor(25'000);
    EXPECT_FALSE(console_->Shows("WarningForm")) << console_->Warning();
  }

  std::mt19937 random_;
  SheetShop shop_;
  ConsoleSession* console_ = nullptr;
  std::unique_ptr<platform::Timer> answers_;
  Pieces whole_;
  std::int64_t before_ = 0;  ///< the day's time when this console started, ms
  std::int64_t nextFailureMs_ = 10 * Minute;
  std::int64_t noonMs_ = 0;
  std::int64_t noonKiB_ = 0, lastKiB_ = 0;
  int sheets_ = 0, counted_ = 0, selections_ = 0, restarts_ = 0, changes_ = 0, received_ = 0;
  int failures_ = 0, dialogs_ = 0, starts_ = 0;
};

TEST(ADayAtTheMachine, LosesNothingAndItsMemoryIsFlat) {
  Day day(Seed());
  const int minutes = Count(40);
  day.Work(minutes);
  EXPECT_GT(day.Sheets(), minutes / 30);
  if (minutes > 300) {
    EXPECT_LT(day.GrowthOfHeapKiB(), GrowthKiB);
  }
  std::cout << minutes << " minutes: " << day.Tell() << '\n';
}

}  // namespace
}  // namespace torvane::tests

// One machine in front of which consoles come and go: they are started, worked by keys, ended or
// killed, and everything that the machine runs is kept.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ConsoleFixture.h"
#include "core/SlotFiles.h"
#include "partprogram/DrawRecord.h"
#include "simulator/PathFile.h"
#include "support/SheetStops.h"

namespace torvane::tests {

/// How an operator comes to a record of a visual restart.
enum class Choosing { ByKeys, ByPointer };

class SheetShop {
 public:
  static constexpr const char* Program = "SHEET";

  explicit SheetShop(const std::string& program, std::int16_t slot = 1) : slot_(slot) {
    plant_->Directory.Put("Programs/SHOP/SHEET.prg", program);
    Machine().OnPath([this](const simulator::PathPiece& piece) { pieces_.push_back(piece); });
  }

  // ---- consoles ----
  [[nodiscard]] ConsoleSession& Console() { return *console_; }
  /// `watch` hears each line that the start sends.
  void StartConsole(const std::function<void(std::string_view)>& watch = {}) {
    console_ = std::make_unique<ConsoleSession>(plant_);
    if (watch) {
      plant_->Controller->OnLine([this, watch](std::string_view line) {
        console_->Lines.emplace_back(line);
        watch(line);
      });
    }
    console_->Start(!watch);
  }
  void KillConsole() { console_.reset(); }
  /// F12 and O.
  void EndConsole() {
    Console().Then([this] { EXPECT_TRUE(Console().Shows("ShutdownForm")); });
    Console().ThenType(toolkit::Key::O);
    Console().TypeF(12);
    EXPECT_EQ(Console().Session.Events, (std::vector<std::string>{"end session", "end process"}));
    console_.reset();
  }

  // ---- the machine ----
  [[nodiscard]] simulator::Machine& Machine() { return plant_->Controller->TheMachine(); }
  [[nodiscard]] double Variable(int number) {
    return plant_->Controller->Memory().Variable(number);
  }
  void SetVariable(int number, double value) {
    plant_->Controller->Memory().SetVariable(number, value);
  }
  [[nodiscard]] Plant& ThePlant() { return *plant_; }
  void PowerCycle() { plant_->Controller->PowerCycle(); }
  /// The pieces of path run since the last call.
  [[nodiscard]] tests::Pieces TakePieces() { return std::exchange(pieces_, {}); }

  // ---- the operator's work ----
  /// The program by its name on the pads, into its slot.
  void SelectProgram() {
    if (Console().System.ActiveSlot != slot_) Console().TypeF(9 + slot_);
    Console().RunFor(200);
    EXPECT_EQ(Console().System.ActiveSlot, slot_);
    Console().TypeF(1);
    Console().ThenTypeText("sheet");
    Console().ThenType(toolkit::Key::Enter);
    Console().Type(toolkit::Key::P);
    Console().Type(toolkit::Key::S);
    EXPECT_TRUE(Console().Shows("SetupForm"));
    Console().Type(toolkit::Key::X);
    Console().RunFor(200);
    const auto file = [&](std::string_view extension) {
      return core::SlotFile(Console().System.Directories, slot_, extension);
    };
    programmed_.Load(plant_->Files, file("drw"));
    compensated_.Load(plant_->Files, file("krw"));
  }

  /// A block skip on the status menu: '1' or '2'.
  void PressSkip(char key) {
    Console().TypeF(4);
    Console().Type(static_cast<toolkit::Key>(key));
    Console().Type(toolkit::Key::X);
    Console().RunFor(200);
    EXPECT_EQ(Variable(key == '1' ? simulator::Vr::BlockSkip1 : simulator::Vr::BlockSkip2), 1);
  }

  /// Cycle start at the machine, and on until it stands.
  void Run() {
    Machine().CycleStart();
    RunOn();
  }
  void RunOn() {
    for (int i = 0; i < 100000; ++i) {
      Console().RunFor(100);
      if (Machine().Mode() != simulator::MachineMode::Running) break;
      if (Machine().AwaitingStart()) Machine().CycleStart();
    }
    EXPECT_EQ(Machine().Mode(), simulator::MachineMode::Idle);
    Console().RunFor(300);
  }
  void RunUntil(int record, double along) {
    Machine().StopAt(record, along);
    Run();
    EXPECT_LT(Variable(simulator::Vr::RunningLine), TableLines()) << "the run was not stopped";
  }

  /// From the main screen to RestartForm: the record is chosen on the plot, split, and of the
  /// points at which it can be split the last one is taken that is not past `along` mm of the
  /// compensated element.
  [[nodiscard]] WantedEntry RestartOnPlot(int record, double along,
                                          Choosing how = Choosing::ByKeys) {
    OpenVisual();
    Choose(record, how);
    Console().Type(toolkit::Key::T);
    EXPECT_GT(Console().System.Console.PlotKeyMode, 5) << "a line or an arc can be split";
    const WantedEntry entry = MoveSplit(record, along);
    Console().Type(toolkit::Key::S);
    Console().RunFor(300);
    EXPECT_TRUE(Console().Shows("RestartForm"));
    return entry;
  }
  void OpenVisual() {
    Console().TypeF(1);
    Console().Type(toolkit::Key::V);
    Console().RunFor(50);
    EXPECT_EQ(Console().System.Console.PlotKeyMode, 5);
  }
  /// Cycle start while RestartForm waits; the form goes, and the run goes on to its end.
  void PressCycleStart() {
    Machine().CycleStart();
    for (int i = 0; i < 100 && Console().Shows("RestartForm"); ++i) Console().RunFor(100);
    EXPECT_FALSE(Console().Shows("RestartForm"));
  }

  // ---- the program ----
  [[nodiscard]] int TableLines() { return Console().System.Active().TableLines; }
  /// Of records of ".krw"; a record of ".drw" by the one of ".krw" that was made of it.
  [[nodiscard]] const simulator::PathElement& Compensated(int record) const {
    return *compensated_.OfRecord(record);
  }
  [[nodiscard]] const simulator::PathElement& Programmed(int record) const {
    return *programmed_.OfRecord(Compensated(record).RecordIndex);
  }
  /// An arc that the kerf pass put in at a corner belongs to an element, but is none itself.
  [[nodiscard]] bool IsCorner(int record) const { return Programmed(record).RecordIndex != record; }

 private:
  void Choose(int record, Choosing how) {
    const int drawn = Compensated(record).RecordIndex;
    if (how == Choosing::ByPointer) {
      const auto middle = Programmed(record).Path().At(Programmed(record).Path().Length() / 2);
      auto& plot = Console().Main().PlotBox(Console().System.ActiveSlot);
      ClickAt(plot, plot.Canvas().ToPixelX(middle.X), plot.Canvas().ToPixelY(middle.Y));
    }
    const int most = static_cast<int>(programmed_.Elements().size());
    for (int i = 0; i < most && Console().TheConsole->MarkedRecord() != drawn; ++i) {
      Console().Type(toolkit::Key::N);
    }
    EXPECT_EQ(Console().TheConsole->MarkedRecord(), drawn) << Describe(Programmed(record));
  }

  [[nodiscard]] std::string Describe(const simulator::PathElement& element) {
    const auto& view = Console().System.Views[static_cast<std::size_t>(slot_)];
    const auto point = [](double x, double y) {
      return std::to_string(x) + "," + std::to_string(y) + " ";
    };
    return "element " + point(element.Start.X, element.Start.Y) +
           point(element.End.X, element.End.Y) + "in view " + point(view.Corner1X, view.Corner1Y) +
           point(view.Corner2X, view.Corner2Y);
  }

  /// Shortens what remains, step by step, as long as the split point does not pass the stop.
  WantedEntry MoveSplit(int record, double along) {
    const auto programmed = Programmed(record).Path();
    const auto compensated = Compensated(record).Path();
    const double length = programmed.Length();
    const double stopped = along <= Exact ? 0 : programmed.NearestDistance(compensated.At(along));
    const double step = SplitStep(length);
    const int presses = step > 0 ? static_cast<int>((stopped + 1e-6) / step) : 0;
    for (int i = 0; i < presses; ++i) Console().Type(toolkit::Key::N);
    const double split = std::min(presses * step, length - step);
    const double entry =
        presses == 0 ? 0 : compensated.NearestDistance(programmed.At(std::max(split, 0.0)));
    return {record, entry, length, compensated.Length()};
  }

  std::shared_ptr<Plant> plant_ = std::make_shared<Plant>();
  std::unique_ptr<ConsoleSession> console_;
  std::int16_t slot_ = 1;
  tests::Pieces pieces_;
  simulator::PathFile programmed_;
  simulator::PathFile compensated_;
};

}  // namespace torvane::tests

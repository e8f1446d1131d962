// A program from its text to its runs on the simulated machine, without a console and without
// waiting: the passes make the slot's files in memory, a small front end feeds the table by its
// lead, and time is stepped by hand.
//
// How to use it:
//
//   SheetRun sheet(program);              // text of a part program; slot 1 unless told otherwise
//   sheet.Select();                       // first lines, and the table in force
//   sheet.StopAt(7, 12.5);                // record of ".krw", mm along its compensated element
//   sheet.Start();                        // cycle start, and on until the machine stands
//   sheet.Restart(sheet.SplitAt(7, 10));  // what the console would ask for, and on to the end
//   sheet.PiecesOf(1), sheet.PiecesOf(2)  // what each run has cut, for SheetCoverage.h
//
// A test of the console's own restart takes `Machine()` and `Files` alone and lets the console send
// the lines.
#pragma once

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/General.h"
#include "core/MachineData.h"
#include "core/SlotFiles.h"
#include "partprogram/FixedLines.h"
#include "partprogram/Pipeline.h"
#include "partprogram/SplittingModule.h"
#include "simulator/PathFile.h"
#include "simulator/ReadOnlyFiles.h"
#include "simulator/SimulatedController.h"
#include "support/SheetCoverage.h"

namespace torvane::tests {

/// What the console tells the machine of a restart.
struct RestartOrder {
  std::string Text;        ///< Restart.tbx, without its last line
  std::string StartLine;   ///< "B1.00123R"
  simulator::Position At;  ///< split point on the programmed element
  int Record = 0;          ///< of ".krw"
  double Along = 0;        ///< where it begins on the compensated element, mm
};

class SheetRun {
 public:
  struct Setting {
    int Slot = 1;
    std::int16_t YDirection = 1;
    float LoadX = 0;
    float LoadY = 0;
    int FillLines = 20;
    int LeadLines = 15;
  };

  explicit SheetRun(std::string_view program) : SheetRun(program, Setting()) {}
  SheetRun(std::string_view program, Setting setting) : setting_(setting), controller_(Options()) {
    Convert(program);
    Machine().OnPath([this](const simulator::PathPiece& piece) { pieces_.push_back(piece); });
    Machine().SetListener(
        [this](const simulator::MachineEvent& event) { Events.push_back(event); });
  }

  tests::ReadOnlyFiles Files;  ///< "R\" holds the slot's files
  std::vector<simulator::MachineEvent> Events;
  std::vector<std::string> Sent;  ///< every line that went out

  [[nodiscard]] simulator::Machine& Machine() { return controller_.TheMachine(); }
  [[nodiscard]] simulator::SimulatedController& Controller() { return controller_; }
  [[nodiscard]] const partprogram::PassResult& Passes() const { return passes_; }
  [[nodiscard]] Pieces AllPieces() const { return pieces_; }
  [[nodiscard]] Pieces PiecesOf(int run) const { return RunOf(pieces_, run); }
  [[nodiscard]] double Variable(int number) { return controller_.Memory().Variable(number); }
  [[nodiscard]] int Count(simulator::EventKind kind) const {
    return static_cast<int>(std::count_if(Events.begin(), Events.end(),
                                          [&](const auto& event) { return event.Kind == kind; }));
  }
  [[nodiscard]] const std::vector<simulator::PathElement>& Compensated() const {
    return compensated_.Elements();
  }

  /// One line; throws where the machine answers with a fault.
  void Send(const std::string& line) {
    Sent.push_back(line);
    controller_.Receive(line + "\r");
    if (controller_.TakeOutput().find('%') != std::string::npos) {
      throw std::runtime_error("refused: " + line);
    }
  }

  /// The first lines go out, and the slot's table is put in force. A console that was started anew
  /// does the same.
  void Select() {
    sent_ = 0;
    Fill(setting_.FillLines);
    Send("VR(91)=" + std::to_string(setting_.Slot));
  }

  void StopAt(int record, double along) { Machine().StopAt(record, along); }

  /// Cycle start, and on until the machine stands. Program stops are started again.
  void Start() {
    Machine().CycleStart();
    RunOn();
  }

  void RunOn() {
    constexpr double Tick = 0.05;
    constexpr int MostTicks = 2'000'000;
    for (int tick = 0; tick < MostTicks; ++tick) {
      if (Machine().Mode() != simulator::MachineMode::Running) return;
      controller_.Advance(Tick);
      if (Machine().AwaitingStart()) Machine().CycleStart();
      TopUp();
    }
    throw std::runtime_error("the run does not come to its end");
  }

  /// What a console asks for that goes on `along` mm behind the start of the programmed element of
  /// record `record` of ".krw".
  [[nodiscard]] RestartOrder SplitAt(int record, double along) const {
    const auto& kerf = passes_.Kerf.at(static_cast<std::size_t>(record - 1));
    const auto drawn = static_cast<std::size_t>(kerf.RecordIndex - 1);
    const auto& element = programmed_.Elements().at(drawn - 1);
    const auto& compensated = compensated_.Elements().at(static_cast<std::size_t>(record - 2));
    RestartOrder order;
    order.Record = record;
    order.At = element.Path().At(along);
    order.Along = along <= 0 ? 0 : compensated.Path().NearestDistance(order.At);
    order.StartLine = StartLineBehind(drawn);
    order.Text = "M100\r\nG00 X" + Single(order.At.X) + " Y" + Single(order.At.Y) + " G40\r\n" +
                 "M04\r\n" + RestBlock(element, order.At) + "\r\n";
    return order;
  }

  /// Length of the programmed element of a record of ".krw", mm.
  [[nodiscard]] double ProgrammedLength(int record) const {
    return ProgrammedOf(record).Path().Length();
  }
  [[nodiscard]] const simulator::PathElement& ProgrammedOf(int record) const {
    const auto& kerf = passes_.Kerf.at(static_cast<std::size_t>(record - 1));
    return programmed_.Elements().at(static_cast<std::size_t>(kerf.RecordIndex - 2));
  }

  /// The restart table, its wait and its start, and on until the machine stands.
  void Restart(const RestartOrder& order) {
    SendRestartTable(order);
    Machine().CycleStart();
    AwaitLamp(true);
    AwaitLamp(false);
    Send("VR(91)=" + std::to_string(setting_.Slot));
    Send(order.StartLine);
    TopUp();
    RunOn();
  }
  void SendRestartTable(const RestartOrder& order) {
    const std::string mark = "TABLE (" + std::to_string(sent_) + ",-999)";
    Files.Put("R\\Restart.tbx", order.Text + mark + "\r\n");
    Send(mark);
    Send("VR(91)=3");
  }
  void CancelRestart() { Send("VR(91)=" + std::to_string(setting_.Slot)); }

 private:
  simulator::ControllerOptions Options() {
    simulator::ControllerOptions options;
    options.Machine.RootDirectory = "R\\";
    options.Machine.Files = &Files;
    return options;
  }

  void Convert(std::string_view program) {
    core::MachineData machine;
    machine.YDirection = setting_.YDirection;
    machine.LoadPositionX = setting_.LoadX;
    machine.LoadPositionY = setting_.LoadY;
    machine.TravelMinX = machine.TravelMinY = -1000;
    machine.TravelMaxX = machine.TravelMaxY = 10000;
    machine.ArcChordsPerDegree = 10;
    machine.CornerLimitFactor = 2;
    machine.CornerFeedPercent = 60;
    core::Station station;
    partprogram::PassInput input;
    input.ProgramName = "SHEET";
    input.DirectoryName = "TEST";
    input.Slot = static_cast<std::int16_t>(setting_.Slot);
    input.Machine = &machine;
    input.ActiveStation = &station;
    passes_ = partprogram::RunPasses(partprogram::SqueezeProgram(program), input);
    if (passes_.Outcome != partprogram::PassOutcome::Good) {
      throw std::runtime_error("the program is refused:\n" + passes_.Conversion.Report);
    }
    table_ = core::SplitLines(passes_.Table.Text);
    PutSlotFiles();
  }

  void PutSlotFiles() {
    const auto file = [&](std::string_view extension) {
      return core::SlotFile("R\\", setting_.Slot, extension);
    };
    Files.Put(file("cnv"), passes_.Text.Converted);
    Files.Put(file("rnd"), partprogram::MakeFixedLines(passes_.Text.Body, true).Bytes);
    Files.Put(file("drw"), partprogram::EncodeRecords(passes_.Conversion.Records));
    Files.Put(file("krw"), partprogram::EncodeRecords(passes_.Kerf));
    Files.Put(file("tbl"), partprogram::MakeFixedLines(passes_.Table.Text, false).Bytes);
    programmed_.Load(Files, file("drw"));
    compensated_.Load(Files, file("krw"));
  }

  void Fill(int until) {
    const int target = std::min(until, static_cast<int>(table_.size()));
    for (; sent_ < target; ++sent_) Send(std::string(table_[static_cast<std::size_t>(sent_)]));
  }
  void TopUp() {
    const int reached = static_cast<int>(Variable(simulator::Vr::RunningLine));
    if (reached > sent_ - setting_.LeadLines) Fill(reached + setting_.LeadLines);
  }
  void AwaitLamp(bool on) {
    constexpr int RestartReady = 32768;
    for (int tick = 0; tick < 1000; ++tick) {
      if (((controller_.Memory().Word(simulator::Vr::Status) & RestartReady) != 0) == on) return;
      controller_.Advance(0.05);
      TopUp();
    }
    throw std::runtime_error("the lamp does not blink");
  }

  static std::string Single(double value) {
    return core::NumberText(static_cast<float>(value), -1);
  }

  /// N of the next block that made a record, as five digits behind a point.
  [[nodiscard]] std::string StartLineBehind(std::size_t drawn) const {
    const auto& records = passes_.Conversion.Records;
    const int own = records.at(drawn).BlockNumber;
    int next = own + 1;
    for (std::size_t i = drawn + 1; i < records.size(); ++i) {
      if (records[i].BlockNumber == own) continue;
      next = records[i].BlockNumber;
      break;
    }
    std::string line = "B" + std::to_string(setting_.Slot);
    const auto lines = core::SplitLines(passes_.Text.Body);
    if (next >= 1 && static_cast<std::size_t>(next) <= lines.size()) {
      const auto text = lines[static_cast<std::size_t>(next) - 1];
      const auto at = text.find('N');
      const double number =
          at == std::string_view::npos ? 0 : core::LeadingNumber(text.substr(at + 1));
      if (number > 0) {
        std::string digits = std::to_string(static_cast<int>(number));
        digits.insert(0, 5 - std::min<std::size_t>(5, digits.size()), '0');
        digits.erase(digits.find_last_not_of('0') + 1);
        line += "." + digits;
      }
    }
    return line + "R";
  }

  [[nodiscard]] std::string RestBlock(const simulator::PathElement& element,
                                      const simulator::Position& at) const {
    const auto two = [](double value) { return core::NumberText(value, 2); };
    std::string block = " X" + two(element.End.X) + " Y" + two(element.End.Y);
    if (element.Code != partprogram::RecordCode::ArcProfile) return "G01" + block;
    const bool negative = element.Sweep < 0;
    const bool second = (setting_.YDirection == 1) != negative;
    return (second ? "G03" : "G02") + block + " I" + two(element.Centre.X - at.X) + " J" +
           two(element.Centre.Y - at.Y);
  }

  Setting setting_;
  simulator::SimulatedController controller_;
  partprogram::PassResult passes_;
  std::vector<std::string_view> table_;
  simulator::PathFile programmed_;
  simulator::PathFile compensated_;
  Pieces pieces_;
  int sent_ = 0;
};

/// A program as a slot's files hold it, run from its start to its end without a stop.
[[nodiscard]] inline Pieces UninterruptedRun(std::string_view program,
                                             SheetRun::Setting setting = SheetRun::Setting()) {
  SheetRun sheet(program, setting);
  sheet.Select();
  sheet.Start();
  return sheet.AllPieces();
}

}  // namespace torvane::tests

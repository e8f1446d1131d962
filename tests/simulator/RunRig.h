// A machine with table rows in it, as the tests of runs need it.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "core/General.h"
#include "core/MachineState.h"
#include "support/SimulatedMachine.h"

namespace torvane::tests {

using namespace torvane::simulator;

namespace StatusBit = core::StatusBit;

/// Writes rows the way the front end does and lets time pass without an event loop.
class RunRig {
 public:
  explicit RunRig(MachineOptions options = {}) : Run(Memory, options) {
    Run.SetListener([this](const MachineEvent& event) { Events.push_back(event); });
  }

  /// One command line; the answer without its echo.
  std::string Send(const std::string& line) {
    const std::string answer(Line.Answer({line, false}));
    return answer.substr(std::min(answer.size(), line.size() + 2));
  }

  /// The next row of slot 1, without its index.
  void Row(const std::string& values) {
    if (next_ > last_) next_ = first_;
    Send("TABLE(" + std::to_string(next_) + "," + values + ")");
    next_ += 1 + static_cast<int>(std::count(values.begin(), values.end(), ','));
  }
  void UseSlot2() {
    first_ = next_ = 750;
    last_ = 950;
  }
  /// The rows that follow begin a program.
  void Begin() { next_ = first_; }
  [[nodiscard]] int NextIndex() const { return next_ > last_ ? first_ : next_; }

  void Move(double x, double y, int skip = 0) { Row("0," + Xy(x, y) + ",0,0,0," + Text(skip)); }
  /// The end of a line row is where the next one starts, when there are no records.
  void Cut(double x, double y, double feed = 600, int skip = 0) {
    Row("1," + Xy(x, y) + ",0,0," + Text(feed) + "," + Text(skip));
  }
  void Point(double action) { Row("0,0,0,0," + Text(action) + ",0,0"); }
  void End() { Row("-999"); }
  void Select(int slot = 1) { Send("VR(91)=" + std::to_string(slot)); }

  [[nodiscard]] bool Bit(int bit) const { return (Memory.Word(Vr::Status) & bit) != 0; }
  [[nodiscard]] bool Message(int bit) const {
    return (Memory.Word(Vr::LogicMessages) & (1 << bit)) != 0;
  }
  [[nodiscard]] bool Running() const { return Bit(StatusBit::Running); }
  [[nodiscard]] double Vr(int number) const { return Memory.Variable(number); }
  [[nodiscard]] double X() const { return Run.At().X; }
  [[nodiscard]] double Y() const { return Run.At().Y; }
  [[nodiscard]] int Count(EventKind kind) const {
    int count = 0;
    for (const auto& event : Events) count += event.Kind == kind ? 1 : 0;
    return count;
  }

  ControllerMemory Memory;
  Machine Run;
  CommandLine Line{Memory};
  std::vector<MachineEvent> Events;

 private:
  static std::string Text(double value) { return core::NumberText(value, -1); }
  static std::string Xy(double x, double y) { return Text(x) + "," + Text(y); }

  int first_ = 500;
  int last_ = 700;
  int next_ = 500;
};

}  // namespace torvane::tests

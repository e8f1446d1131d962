// The simulated controller with one fault on its line, on virtual time, and an operator beside it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/ScriptedPort.h"
#include "platform/VirtualLoop.h"
#include "simulator/SimulatedController.h"
#include "tools/ContractClauses.h"

namespace torvane::tests {

/// What is wrong with a controller; each part may be left empty.
struct LineFault {
  /// True for a line that is answered as good and not carried out.
  std::function<bool(const std::string& line, bool running)> Loses;
  /// The answer that goes out in place of the controller's.
  std::function<std::string(const std::string& line, std::string answer, bool running)> Spoils;
  /// How late an answer comes, ms; the count is that of the lines so far.
  std::function<int(int count)> DelayMs;
};

class FaultyController {
 public:
  explicit FaultyController(LineFault fault = {}, simulator::ControllerOptions options = {})
      : Controller(std::move(options)), Port(Loop), fault_(std::move(fault)) {
    Port.SetPeer([this](std::string_view bytes) { Hear(bytes); });
    Port.Open({});
    Controller.TheMachine().OnPath(
        [this](const simulator::PathPiece& piece) { Cut = Cut || piece.Cut || piece.Beam; });
  }

  /// The whole contract, with an operator who does as asked. `interrupt` as for TryContract.
  tools::ContractResult Try(tools::ContractSettings settings = {},
                            const std::function<void(std::function<void()>)>& interrupt = {}) {
    const auto ask = [this](tools::OperatorWish wish, const std::string&) {
      Asked.push_back(wish);
      AskedMs.push_back(Loop.NowMs());
      if (OperatorThere) Loop.After(300, [this, wish] { Obey(wish); });
    };
    return tools::TryContract({Loop, Port, ask}, settings, interrupt);
  }

  /// The same, with the end asked for after `ms`, if it has not come by then.
  tools::ContractResult TryFor(int ms) {
    Loop.After(ms, [this] {
      if (End) End();
    });
    return Try({}, [this](std::function<void()> end) { End = std::move(end); });
  }

  /// The head at a place, mm, by a manual move.
  void PutHead(double x, double y) {
    Controller.Memory().WriteVariable(22, x);
    Controller.Memory().WriteVariable(23, y);
    Controller.Memory().WriteVariable(48, 15);
    Controller.Advance(60);
  }

  /// A program of the owner's in a slot, whose first row begins at `index`: 10 mm away, then 100 mm
  /// of a cut.
  void PutOwnersProgram(int index) {
    const char* const rows[] = {"0,10,10,0,0,0,0", "1,110,10,0,0,1500,0", "0,30,10,0,0,0,0"};
    for (const char* const row : rows) {
      Controller.Receive("TABLE(" + std::to_string(index) + "," + row + ")\r");
      index += 7;
    }
    Controller.Receive("TABLE(" + std::to_string(index) + ",-999)\r");
    (void)Controller.TakeOutput();
  }

  [[nodiscard]] double Variable(int number) { return Controller.Memory().Variable(number); }
  void CatchUp() {
    Controller.Advance(static_cast<double>(Loop.NowMs() - lastMs_) / 1000);
    lastMs_ = Loop.NowMs();
  }

  platform::VirtualLoop Loop;
  simulator::SimulatedController Controller;
  platform::ScriptedPort Port;
  std::vector<std::string> Lines;
  std::vector<tools::OperatorWish> Asked;
  std::vector<std::int64_t> AskedMs;
  std::function<void(const std::string& line)> Heard;  ///< before a line is carried out
  std::function<void()> End;  ///< ends the trial; empty when there is nothing left to end
  bool OperatorThere = true;
  bool StopPressed = true;  ///< where it is asked for
  bool Cut = false;         ///< the machine has cut something

 private:
  void Obey(tools::OperatorWish wish) {
    CatchUp();
    if (wish == tools::OperatorWish::CycleStart) Controller.TheMachine().CycleStart();
    if (wish == tools::OperatorWish::Stop && StopPressed) Controller.TheMachine().Stop();
    if (wish == tools::OperatorWish::Release && StopPressed) {
      Controller.TheMachine().Stop();
      Controller.TheMachine().Release();
    }
  }

  void Hear(std::string_view bytes) {
    for (const char c : bytes) {
      if (c == '\r') {
        Answer(std::exchange(line_, {}));
      } else {
        line_ += c;
      }
    }
  }

  void Answer(const std::string& line) {
    CatchUp();
    Lines.push_back(line);
    if (Heard) Heard(line);
    const bool running = Controller.TheMachine().Mode() == simulator::MachineMode::Running;
    std::string answer = line + "\r\n>>";
    if (!fault_.Loses || !fault_.Loses(line, running)) {
      Controller.Receive(line + "\r");
      answer = Controller.TakeOutput();
    }
    if (fault_.Spoils) answer = fault_.Spoils(line, std::move(answer), running);
    const int delay = fault_.DelayMs ? fault_.DelayMs(static_cast<int>(Lines.size())) : 2;
    Loop.After(delay, [this, answer] { Port.Deliver(answer); });
  }

  LineFault fault_;
  std::string line_;
  std::int64_t lastMs_ = 0;
};

}  // namespace torvane::tests

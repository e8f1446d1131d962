// A simulated controller and machine behind a port, on a loop with virtual time.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/SerialPort.h"
#include "platform/VirtualLoop.h"
#include "simulator/MachineEvents.h"
#include "simulator/SimulatedController.h"
#include "simulator/SimulatedPort.h"

namespace torvane::tests {

/// Hand `Port` to whatever wants a serial port and `Loop` to whatever wants a loop. `Events` holds
/// all that the machine told, `Lines` all lines that reached the controller. For a line with the
/// timing of a real one set `PortOptions::Baud`; both directions then take ten bits a byte, and
/// `Port.LineMs()` says how much of the time was the line's own.
class SimulatedMachine {
 public:
  explicit SimulatedMachine(simulator::ControllerOptions options = {},
                            simulator::PortOptions line = {})
      : Controller(std::move(options)), Port(Loop, Controller, line) {
    Machine().SetListener(
        [this](const simulator::MachineEvent& event) { Events.push_back(event); });
    Controller.OnLine([this](std::string_view text) { Lines.emplace_back(text); });
  }

  [[nodiscard]] simulator::Machine& Machine() { return Controller.TheMachine(); }
  [[nodiscard]] simulator::ControllerMemory& Memory() { return Controller.Memory(); }
  [[nodiscard]] double Variable(int number) { return Memory().Variable(number); }
  [[nodiscard]] int Status() { return Memory().Word(simulator::Vr::Status); }

  /// The whole answer to one line, by way of the port: opens it at need and lets the loop run until
  /// the prompt has come.
  std::string Exchange(std::string_view line) {
    if (!Port.IsOpen()) Port.Open({});
    Port.Write(std::string(line) + "\r");
    std::string answer;
    Loop.WaitUntil([&] {
      answer += Port.ReadAll();
      return answer.ends_with(">>");
    });
    return answer;
  }

  /// Lets the loop and the machine run on.
  void Run(double seconds) {
    Loop.RunFor(static_cast<std::int64_t>(seconds * 1000.0));
    Port.CatchUp();
  }

  [[nodiscard]] int Count(simulator::EventKind kind) const {
    int count = 0;
    for (const auto& event : Events) count += event.Kind == kind ? 1 : 0;
    return count;
  }

  platform::VirtualLoop Loop;
  simulator::SimulatedController Controller;
  simulator::SimulatedPort Port;
  std::vector<simulator::MachineEvent> Events;
  std::vector<std::string> Lines;
};

}  // namespace torvane::tests

#include "simulator/OperatorCommands.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "core/General.h"

namespace torvane::simulator {

namespace {

using Panel = SimulatedController;

std::optional<int> WholeNumber(std::string_view text) {
  int value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<double> Decimal(std::string_view text) {
  double value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

OperatorAnswer Start(Panel& panel, std::string_view) {
  panel.TheMachine().CycleStart();
  return {};
}

OperatorAnswer Hold(Panel& panel, std::string_view) {
  panel.TheMachine().FeedHold();
  return {};
}

OperatorAnswer Release(Panel& panel, std::string_view) {
  panel.TheMachine().Release();
  return {};
}

OperatorAnswer Stop(Panel& panel, std::string_view) {
  panel.TheMachine().Stop();
  return {};
}

OperatorAnswer Error(Panel& panel, std::string_view argument) {
  const auto code = WholeNumber(argument);
  if (!code || *code < 1 || *code > 64) return {false, "error takes a code from 1 to 64"};
  panel.TheMachine().RaiseError(*code);
  return {};
}

OperatorAnswer Bit(Panel& panel, std::string_view argument) {
  const auto bit = WholeNumber(argument);
  if (!bit || *bit < 0 || *bit >= LogicBit::Count)
    return {false, "bit takes a number from 0 to 30"};
  panel.TheMachine().RaiseBit(*bit);
  return {};
}

OperatorAnswer Clear(Panel& panel, std::string_view) {
  panel.TheMachine().ClearMessages();
  return {};
}

OperatorAnswer Beam(Panel& panel, std::string_view argument) {
  if (!argument.empty() && argument != "on" && argument != "off") {
    return {false, "beam takes on or off, or nothing to change over"};
  }
  auto& machine = panel.TheMachine();
  machine.AllowBeam(argument.empty() ? !machine.BeamAllowed() : argument == "on");
  return {};
}

OperatorAnswer StopAt(Panel& panel, std::string_view argument) {
  const auto blank = argument.find(' ');
  const auto record = WholeNumber(argument.substr(0, blank));
  const auto along =
      blank == std::string_view::npos ? std::nullopt : Decimal(core::Trim(argument.substr(blank)));
  if (!record || *record < 2 || !along || *along < 0) {
    return {false, "stop-at takes a record from 2 and a distance along it in mm"};
  }
  panel.TheMachine().StopAt(*record, *along);
  return {};
}

OperatorAnswer PowerCycle(Panel& panel, std::string_view) {
  panel.PowerCycle();
  return {};
}

OperatorAnswer State(Panel& panel, std::string_view) { return {false, DescribeState(panel)}; }

OperatorAnswer Quit(Panel&, std::string_view) { return {true, ""}; }

struct CommandRow {
  std::string_view Word;
  OperatorAnswer (*CarryOut)(Panel&, std::string_view argument);
};

constexpr CommandRow CommandRows[] = {
    {"start", Start},     {"hold", Hold},
    {"release", Release}, {"stop", Stop},
    {"stop-at", StopAt},  {"error", Error},
    {"bit", Bit},         {"clear", Clear},
    {"beam", Beam},       {"power-cycle", PowerCycle},
    {"state", State},     {"quit", Quit},
};

std::string_view ModeName(const Machine& machine) {
  switch (machine.Mode()) {
    case MachineMode::Idle:
      return "idle";
    case MachineMode::Manual:
      return "manual action";
    case MachineMode::RestartWait:
      return "waiting for cycle start of a restart";
    case MachineMode::Restarting:
      return "restarting";
    case MachineMode::Running:
      return machine.AwaitingStart() ? "program stop" : "running";
  }
  return "";
}

}  // namespace

OperatorAnswer CarryOutOperatorCommand(std::string_view line, SimulatedController& controller) {
  const std::string_view text = core::Trim(line);
  if (text.empty()) return {};
  const auto blank = text.find(' ');
  const std::string_view word = text.substr(0, blank);
  const std::string_view argument =
      blank == std::string_view::npos ? std::string_view{} : core::Trim(text.substr(blank));
  for (const auto& row : CommandRows) {
    if (row.Word == word) return row.CarryOut(controller, argument);
  }
  return {false,
          "commands: start, hold, release, stop, stop-at RECORD MM, error CODE, bit N, clear, "
          "beam [on|off], power-cycle, state, quit"};
}

std::string DescribeState(SimulatedController& controller) {
  const auto& machine = controller.TheMachine();
  const auto& memory = controller.Memory();
  const auto number = [](double value, int places) { return core::NumberText(value, places); };
  std::string text = "state: ";
  text.append(ModeName(machine));
  if (machine.Held()) text.append(", held");
  text.append("; table ").append(number(memory.Variable(Vr::TableInForce), 0));
  text.append(" line ").append(number(memory.Variable(Vr::RunningLine), 0));
  text.append("; X").append(number(machine.At().X, 3));
  text.append(" Y").append(number(machine.At().Y, 3));
  text.append(" Z").append(number(machine.At().Z, 3));
  text.append("; feed ").append(number(machine.FeedNow(), 0));
  text.append("; time ").append(number(memory.Variable(Vr::RunTime), 2));
  text.append("; sheets ").append(number(memory.Variable(Vr::SheetsCompleted), 0));
  text.append("; VR(16) ").append(number(memory.Variable(Vr::IoMessage), 0));
  text.append(" VR(17) ").append(number(memory.Variable(Vr::LogicMessages), 0));
  text.append(" VR(19) ").append(number(memory.Variable(Vr::Status), 0));
  return text;
}

}  // namespace torvane::simulator

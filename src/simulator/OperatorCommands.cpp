#include "simulator/OperatorCommands.h"

#include <array>
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

/// "on" or "off".
std::optional<bool> Switch(std::string_view argument) {
  if (argument == "on") return true;
  if (argument == "off") return false;
  return std::nullopt;
}

OperatorAnswer Cycle(Panel& panel, std::string_view argument) {
  const auto on = Switch(argument);
  if (!on) return {false, "cycle takes on or off"};
  panel.TheMachine().ShowCycleBit(*on);
  return {};
}

OperatorAnswer Silence(Panel& panel, std::string_view argument) {
  const auto on = Switch(argument);
  if (!on) return {false, "silence takes on or off"};
  panel.SetSilent(*on);
  return {};
}

OperatorAnswer Percent(Panel& panel, std::string_view argument) {
  if (argument.empty()) return {false, "percent takes the beginning of the line to refuse"};
  panel.RefuseNext(argument);
  return {};
}

OperatorAnswer Reference(Panel& panel, std::string_view argument) {
  if (argument != "fail" && argument != "good") return {false, "reference takes fail or good"};
  panel.TheMachine().LetReferencesFail(argument == "fail");
  return {};
}

/// Numbers divided by blanks; nothing where one is none or the count is another.
template <std::size_t Count>
std::optional<std::array<double, Count>> Numbers(std::string_view text) {
  std::array<double, Count> numbers{};
  for (auto& number : numbers) {
    text = core::Trim(text);
    const auto word = text.substr(0, text.find(' '));
    const auto value = Decimal(word);
    if (!value) return std::nullopt;
    number = *value;
    text.remove_prefix(word.size());
  }
  if (!core::Trim(text).empty()) return std::nullopt;
  return numbers;
}

bool IsVariable(double number) {
  return number == std::trunc(number) && number >= 0 && number < VariableCount;
}

OperatorAnswer Set(Panel& panel, std::string_view argument) {
  const auto numbers = Numbers<2>(argument);
  if (!numbers || !IsVariable((*numbers)[0])) return {false, "set takes a variable and its value"};
  panel.Memory().WriteVariable(static_cast<int>((*numbers)[0]), (*numbers)[1]);
  return {};
}

OperatorAnswer Get(Panel& panel, std::string_view argument) {
  const auto number = WholeNumber(argument);
  if (!number || !ControllerMemory::IsVariable(*number)) return {false, "get takes a variable"};
  const std::string value = core::NumberText(panel.Memory().Variable(*number), -1);
  return {false, "VR(" + std::to_string(*number) + ") = " + value};
}

OperatorAnswer Later(Panel& panel, std::string_view argument) {
  const auto numbers = Numbers<3>(argument);
  if (!numbers || !IsVariable((*numbers)[0]) || (*numbers)[2] < 0) {
    return {false, "later takes a variable, its value and the seconds until it changes"};
  }
  panel.TheMachine().ChangeLater(static_cast<int>((*numbers)[0]), (*numbers)[1], (*numbers)[2]);
  return {};
}

OperatorAnswer Storage(Panel& panel, std::string_view argument) {
  const auto blank = argument.find(' ');
  const auto word = argument.substr(0, blank);
  const auto rest =
      blank == std::string_view::npos ? std::string_view{} : core::Trim(argument.substr(blank));
  const auto second = rest.find(' ');
  const auto number = WholeNumber(rest.substr(0, second));
  const auto path =
      second == std::string_view::npos ? std::string_view{} : core::Trim(rest.substr(second));
  auto& storage = panel.Storage();
  if (word == "good" && rest.empty()) {
    storage.Clear();
  } else if (word == "read-only") {
    storage.ReadOnly(rest);
  } else if (word == "gone") {
    storage.Gone(rest);
  } else if (word == "full-after" && number && *number >= 0) {
    storage.FullAfter(static_cast<std::uint64_t>(*number), path);
  } else if (word == "ready-at" && number && *number >= 1 && !path.empty()) {
    storage.ReadyAt(path, *number);
  } else {
    return {false,
            "storage takes good, read-only [PATH], gone [PATH], full-after BYTES [PATH] or "
            "ready-at TEST DRIVE"};
  }
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
    {"cycle", Cycle},     {"silence", Silence},
    {"percent", Percent}, {"reference", Reference},
    {"set", Set},         {"get", Get},
    {"later", Later},     {"storage", Storage},
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
  return {false, "commands: " + std::string(OperatorWords), false};
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

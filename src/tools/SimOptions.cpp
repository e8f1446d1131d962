#include "tools/SimOptions.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <utility>

#include "simulator/OperatorCommands.h"
#include "tools/Arguments.h"

namespace torvane::tools {

namespace {

constexpr int Rates[] = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};
constexpr double FastestMachine = 100000;
constexpr double LongestDelayMs = 600000;

struct Texts {
  std::vector<std::string> Faults;
  std::vector<std::string> Presets;
  double LateMs = 2000;
  double ReplyMs = 0;
};

void DescribeOptions(CLI::App& app, bool panel, SimOptions& options, Texts& texts) {
  auto* line = app.add_option_group("line", "Where the controller listens");
  line->add_option("--pty", options.PtyLink, "Makes a pseudo-terminal and this link to it");
  line->add_option("--device", options.Device, "Listens on this serial device");
  line->require_option(1);
  app.add_option("--baud", options.Baud, "Rate of the device, bits per second")
      ->check(CLI::IsMember(std::vector<int>(std::begin(Rates), std::end(Rates))))
      ->capture_default_str();
  app.add_option("--root", options.Root,
                 "Installation whose programs run: the machine follows their path");
  app.add_option("--speed", options.Controller.Speed, "How many times faster than time it works")
      ->check(CLI::Range(0.001, FastestMachine))
      ->check(CheckNumber)
      ->capture_default_str();
  app.add_option("--fault", texts.Faults,
                 "KIND=RATE, a rate from 0 to 1: lose or noise for each byte; pieces, percent, "
                 "silence or late for each line");
  app.add_option("--seed", options.Controller.Faults.Seed, "The same seed gives the same faults")
      ->capture_default_str();
  app.add_option("--late-ms", texts.LateMs, "How late a late answer comes")
      ->check(CLI::Range(0.0, LongestDelayMs))
      ->check(CheckNumber)
      ->capture_default_str();
  app.add_option("--reply-ms", texts.ReplyMs, "What the controller takes for each answer")
      ->check(CLI::Range(0.0, LongestDelayMs))
      ->check(CheckNumber)
      ->capture_default_str();
  app.add_option("--set", texts.Presets, "N=VALUE: a variable that stands so from the start");
  app.add_option("--path", options.Path,
                 "Writes each piece of path that was run into this file, a JSON object a line");
  app.add_option("--replay", options.Replay,
                 "Answers as the controller did whose exchanges are in this Polling.txt, and names "
                 "the first line that differs; Polling.bak goes before Polling.txt")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_option("--session", options.Session, "The one session to replay, counted from 1")
      ->check(CLI::PositiveNumber)
      ->needs("--replay");
  if (panel) app.add_flag("--panel", options.Panel, "Shows the operator panel in a window");
  app.footer("Commands on standard input: " + std::string(simulator::OperatorWords) +
             ". Events come on standard output.");
}

/// A recorded controller has no machine: what is said of one is a mistake.
void RefuseMachineOptions(const CLI::App& app) {
  if (app.count("--replay") == 0) return;
  for (const char* name :
       {"--root", "--speed", "--fault", "--seed", "--late-ms", "--set", "--path", "--panel"}) {
    const auto* option = app.get_option_no_throw(name);
    if (option != nullptr && option->count() > 0) {
      throw WrongUse(std::string("--replay goes without ") + name);
    }
  }
}

template <typename Number>
bool ReadWhole(std::string_view text, Number& value) {
  const auto* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stopped == end;
}

}  // namespace

simulator::PresetVariable ReadPreset(const std::string& text) {
  simulator::PresetVariable preset;
  const auto equals = text.find('=');
  const std::string_view all = text;
  if (equals == std::string::npos || !ReadWhole(all.substr(0, equals), preset.Number) ||
      !ReadWhole(all.substr(equals + 1), preset.Value) || !std::isfinite(preset.Value) ||
      !simulator::ControllerMemory::IsVariable(preset.Number)) {
    throw WrongUse("--set takes a variable and its value, such as 59=1000, not " + text);
  }
  return preset;
}

SimOptions ReadSimOptions(std::vector<std::string> arguments, bool panel, std::string& help) {
  constexpr double MsPerSecond = 1000;
  SimOptions options;
  Texts texts;
  CLI::App app("Plays the motion controller and its machine at the other end of a serial line.",
               "torvane-sim");
  DescribeOptions(app, panel, options, texts);
  if (!ReadArguments(app, std::move(arguments), help)) return options;
  RefuseMachineOptions(app);
  for (const auto& fault : texts.Faults) {
    if (!simulator::ParseFault(fault, options.Controller.Faults)) {
      throw WrongUse("--fault takes a kind and a rate, such as lose=0.001, not " + fault);
    }
  }
  for (const auto& preset : texts.Presets) {
    options.Controller.Presets.push_back(ReadPreset(preset));
  }
  options.Controller.Faults.LateSeconds = texts.LateMs / MsPerSecond;
  options.Controller.ReplySeconds = texts.ReplyMs / MsPerSecond;
  return options;
}

}  // namespace torvane::tools

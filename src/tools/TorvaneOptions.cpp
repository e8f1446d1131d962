#include "tools/TorvaneOptions.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <stdexcept>
#include <vector>

#include "tools/Arguments.h"
#include "tools/SimOptions.h"

namespace torvane::tools {

namespace {

/// "KEY=VALUE" taken apart, both sides with something in them.
std::pair<std::string, std::string> SplitPair(const std::string& text, const char* option) {
  const auto mark = text.find('=');
  if (mark == std::string::npos || mark == 0 || mark + 1 == text.size()) {
    throw CLI::ValidationError(option, "\"" + text + "\" is no KEY=VALUE");
  }
  return {text.substr(0, mark), text.substr(mark + 1)};
}

int WholeNumber(const std::string& text, const char* option) {
  int value = 0;
  if (!CLI::detail::lexical_cast(text, value) || value < 1) {
    throw CLI::ValidationError(option, "\"" + text + "\" is no number from 1 up");
  }
  return value;
}

void TakeDevices(const std::vector<std::string>& texts, TorvaneOptions& options) {
  for (const std::string& text : texts) {
    const auto [number, path] = SplitPair(text, "--device");
    options.Devices[WholeNumber(number, "--device")] = path;
  }
}

void TakeDrives(const std::vector<std::string>& texts, TorvaneOptions& options) {
  for (const std::string& text : texts) {
    const auto [letter, path] = SplitPair(text, "--drive");
    const char upper = static_cast<char>(letter[0] & ~0x20);
    if (letter.size() != 1 || upper < 'A' || upper > 'Z') {
      throw CLI::ValidationError("--drive", "\"" + letter + "\" is no drive letter");
    }
    options.Drives[upper] = path;
  }
}

void TakePresets(const std::vector<std::string>& texts, TorvaneOptions& options) {
  for (const std::string& text : texts) {
    try {
      options.Presets.push_back(ReadPreset(text));
    } catch (const WrongUse& fault) {
      throw CLI::ValidationError("--set", fault.what());
    }
  }
}

void TakeSelection(const std::string& text, TorvaneOptions& options) {
  if (text.empty()) return;
  const auto mark = text.find_first_of("/\\");
  if (mark == std::string::npos || mark == 0 || mark + 1 == text.size()) {
    throw CLI::ValidationError("--select", "\"" + text + "\" is no DIRECTORY/PROGRAM");
  }
  options.SelectDirectory = text.substr(0, mark);
  options.SelectProgram = text.substr(mark + 1);
}

void TakeWindow(const std::string& text, TorvaneOptions& options) {
  if (text.empty()) return;
  const auto mark = text.find('x');
  if (mark == std::string::npos)
    throw CLI::ValidationError("--window", "\"" + text + "\" is no WIDTHxHEIGHT");
  options.Window = WindowSize{WholeNumber(text.substr(0, mark), "--window"),
                              WholeNumber(text.substr(mark + 1), "--window")};
}

void DescribeSimulation(CLI::App& app, TorvaneOptions& options, std::vector<std::string>& presets) {
  app.add_flag("--simulate", options.Simulate,
               "work a simulated machine instead of the serial port");
  app.add_option("--speed", options.Speed, "machine seconds per second of the simulated machine")
      ->check(CLI::Range(0.01, 1000.0))
      ->check(CheckNumber);
  app.add_option("--set", presets,
                 "a variable of the simulated machine from the start, as in 59=1000")
      ->type_name("N=VALUE")
      ->needs("--simulate")
      ->allow_extra_args(false);
  app.add_option(
         "--path", options.Path,
         "writes each piece of path that the simulated machine has run, a JSON object a line")
      ->type_name("FILE")
      ->needs("--simulate");
  app.add_flag("--panel", options.Panel,
               "the simulated machine's panel in a window even off screen, for pictures")
      ->needs("--simulate");
}

void TakeMonitor(const std::string& text, TorvaneOptions& options) {
  if (text.empty()) return;
  platform::TcpPlace place;
  if (!platform::ParseTcpPlace(text, place)) {
    throw CLI::ValidationError("--monitor", "\"" + text + "\" is no [ADDRESS:]PORT");
  }
  options.Monitor = place;
}

}  // namespace

std::optional<TorvaneOptions> ReadTorvaneOptions(int argc, const char* const* argv,
                                                 int& exitStatus) {
  TorvaneOptions options;
  std::vector<std::string> devices;
  std::vector<std::string> drives;
  std::vector<std::string> presets;
  std::string select;
  std::string window;
  std::string monitor;
  CLI::App app("The console of the sheet-metal laser profiling machine.", "torvane");
  app.add_option("ROOT", options.Root, "folder of the installation, with Control.cfg")
      ->capture_default_str();
  DescribeSimulation(app, options, presets);
  app.add_option("--device", devices, "device of a port, as in 1=/dev/ttyUSB0")
      ->type_name("N=PATH")
      ->allow_extra_args(false);
  app.add_option("--drive", drives, "folder of a drive letter, as in A=/media/stick")
      ->type_name("L=PATH")
      ->allow_extra_args(false);
  app.add_flag("--console", options.OwnsMachine,
               "this is the machine's own PC: shutting down ends its session");
  app.add_option("--select", select, "select a program once the main screen is up")
      ->type_name("DIRECTORY/PROGRAM");
  app.add_flag("--start", options.Start, "press cycle start on the simulated machine")
      ->needs("--simulate");
  app.add_flag("--exit-after-run", options.ExitAfterRun, "shut down when the run has ended");
  app.add_option("--screenshot", options.Screenshot,
                 "a PNG of the last moment, or a folder for one of each");
  app.add_option("--keys", options.Keys,
                 "plays a script of keys on the console, for a demonstration or a test")
      ->type_name("FILE");
  app.add_option("--monitor", monitor,
                 "tells MTConnect agents that connect here what the machine does; without an "
                 "address only those on this computer")
      ->type_name("[ADDRESS:]PORT");
  app.add_option("--window", window, "a window instead of the full screen")
      ->type_name("WIDTHxHEIGHT");
  try {
    app.parse(argc, argv);
    TakeDevices(devices, options);
    TakeDrives(drives, options);
    TakeSelection(select, options);
    TakeWindow(window, options);
    TakeMonitor(monitor, options);
    TakePresets(presets, options);
  } catch (const CLI::ParseError& error) {
    exitStatus = app.exit(error, std::cout, std::cerr) == 0 ? 0 : ExitStatus::WrongUse;
    return std::nullopt;
  }
  return options;
}

}  // namespace torvane::tools

#include "tools/ContractCommand.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <ostream>
#include <utility>

#include "core/LinkFiles.h"
#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "toolkit/EndSignals.h"
#include "toolkit/QtLoop.h"
#include "toolkit/QtSerialPort.h"
#include "tools/Arguments.h"
#include "tools/ContractReport.h"

namespace torvane::tools {

namespace {

constexpr int Rates[] = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};

struct Texts {
  std::string Root;
  int Baud = 9600;
  bool NoRun = false;
};

void DescribeOptions(CLI::App& app, ContractOptions& options, Texts& texts) {
  constexpr int LongestWait = 3600;
  constexpr int LongestReplyMs = 600000;
  app.add_option("--device", options.Device, "Serial device that the controller is at")->required();
  auto* const root = app.add_option(
      "--root", texts.Root, "Installation whose Trio.cms and Trio.cfg say how the line is set");
  auto* const baud =
      app.add_option("--baud", texts.Baud, "Rate of the line, bits per second")
          ->check(CLI::IsMember(std::vector<int>(std::begin(Rates), std::end(Rates))))
          ->capture_default_str();
  root->excludes(baud);
  app.add_option("--reply-ms", options.Settings.ReplyMs, "Longest time that a reply may take")
      ->check(CLI::Range(1, LongestReplyMs))
      ->capture_default_str();
  app.add_option("--start", options.Settings.StartSeconds,
                 "Seconds that the operator has for the cycle start")
      ->check(CLI::Range(1, LongestWait))
      ->capture_default_str();
  app.add_flag("--no-run", texts.NoRun, "Leaves out the table, the command word and the run");
  app.add_flag("--json", options.Json, "Prints JSON in place of the report");
  app.footer(
      "The beam is never on. The run moves the head a millimetre to and fro and needs a cycle "
      "start "
      "at the machine; the program in slot 2 of the controller's table has to be selected again "
      "after it. Every variable that it writes is put back, or named.\n"
      "Exit status: 0 every clause holds, 1 one does not or could not be tried, 2 wrong use, no "
      "device, no controller, a machine that is not at rest, or a report that cannot be written.");
}

/// Of the installation's two files of the link.
void FollowInstallation(const std::string& root, bool replyGiven, ContractOptions& options) {
  const platform::DiskFileSystem files(root);
  core::LinkSettings link;
  bool enabled = true;
  core::ReadPortFile(files.ReadFile("Trio.cms"), "Trio.cms", link, enabled);
  options.Setup.Settings = link.PortSettings;
  options.Setup.Handshaking = static_cast<platform::Handshake>(link.Handshaking);
  if (replyGiven || !files.FileExists("Trio.cfg")) return;
  core::ReadLinkTimings(files.ReadFile("Trio.cfg"), link);
  if (link.ReplyTimeoutMs > 0) options.Settings.ReplyMs = link.ReplyTimeoutMs;
}

/// What the person at the machine is to know before anything is sent.
constexpr const char* Announcement =
    "The beam stays off. The head will move a millimetre, after a cycle start at the machine only. "
    "Slot 2 of the controller's table is written over: select its program again afterwards.\n";

/// False where it cannot be written.
bool Say(std::ostream& out, const std::string& text) {
  out << text << '\n' << std::flush;
  return out.good();
}

}  // namespace

ContractOptions ReadContractOptions(std::vector<std::string> arguments, std::string& help) {
  ContractOptions options;
  Texts texts;
  CLI::App app("Plays the front end's side of the line and says what of the contract holds.",
               "torvane-contract");
  DescribeOptions(app, options, texts);
  if (!ReadArguments(app, std::move(arguments), help)) return options;
  options.Setup.Number = 1;
  options.Setup.Settings = std::to_string(texts.Baud) + ",N,8,1";
  options.Settings.Run = !texts.NoRun;
  if (!texts.Root.empty()) {
    FollowInstallation(texts.Root, app.count("--reply-ms") > 0, options);
  }
  return options;
}

int ContractMain(const std::vector<std::string>& arguments, std::ostream& out,
                 std::ostream& errors) {
  try {
    std::string help;
    const auto options = ReadContractOptions(arguments, help);
    if (!help.empty()) {
      out << help;
      return ContractStatus::Holds;
    }
    // An output that nobody reads any more must not end the program: it has values to put back.
    std::signal(SIGPIPE, SIG_IGN);
    toolkit::QtLoop loop;
    toolkit::QtSerialPort port(loop, {{options.Setup.Number, options.Device}});
    if (!port.Open(options.Setup)) throw WrongUse(options.Device + ": cannot be opened");
    std::ostream& asking = options.Json ? errors : out;
    if (options.Settings.Run) asking << Announcement << std::flush;
    const auto ask = [&](OperatorWish wish, const std::string& text) {
      const bool heard = Say(asking, text) || Say(errors, text);
      if (!heard && wish == OperatorWish::CycleStart) {
        throw NotTried("nobody can be asked for the cycle start: the output cannot be written");
      }
    };
    std::function<void()> endEarly;
    const toolkit::EndSignals endSignals([&endEarly] {
      if (endEarly) endEarly();
    });
    const auto result = TryContract({loop, port, ask}, options.Settings,
                                    [&](std::function<void()> end) { endEarly = std::move(end); });
    if (!result.Barred.empty()) throw WrongUse(options.Device + ": " + result.Barred);
    out << (options.Json ? ContractJson(result) : ContractText(result)) << std::flush;
    if (!out) errors << NotBackText(result);
    return WhenWritten("torvane-contract", out, errors,
                       result.Holds() ? ContractStatus::Holds : ContractStatus::Fails);
  } catch (const std::exception& fault) {
    errors << "torvane-contract: " << fault.what() << '\n';
    return ContractStatus::NoTrial;
  }
}

}  // namespace torvane::tools

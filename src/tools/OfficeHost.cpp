#include "tools/OfficeHost.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

#include "core/TransferFile.h"
#include "platform/RuntimeFault.h"
#include "simulator/OfficeCommands.h"
#include "tools/Arguments.h"

namespace torvane::tools {

namespace {

constexpr int Rates[] = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};
/// How often the office looks around while nothing happens, ms.
constexpr int HeartbeatMs = 100;

/// Without a port file: nulls before, CR LF at the lines' ends, EOT after.
constexpr const char* CommonFrame =
    "Office\n2\n9600\nN\n8\n1\nNONE\nAUTO\n18\n30,0\n1,13,1,10\n1,4\n\n4\n0,4\n0\n0\n";

core::TransferSettings FrameOf(const platform::FileSystem& files, const std::string& path) {
  if (path.empty()) return core::ReadTransferFile(CommonFrame);
  return core::ReadTransferFile(files.ReadFile(platform::DiskFileSystem::ToSystemPath(path)));
}

}  // namespace

OfficeOptions ReadOfficeOptions(std::vector<std::string> arguments, std::string& help) {
  OfficeOptions options;
  CLI::App app("Plays the office at the other end of the program transfer line.", "torvane-office");
  auto* line = app.add_option_group("line", "Where the office listens");
  line->add_option("--pty", options.PtyLink, "Makes a pseudo-terminal and this link to it");
  line->add_option("--device", options.Device, "Listens on this serial device");
  line->require_option(1);
  app.add_option("--baud", options.Baud, "Rate of the line, bits per second")
      ->check(CLI::IsMember(std::vector<int>(std::begin(Rates), std::end(Rates))))
      ->capture_default_str();
  app.add_option("--settings", options.Settings,
                 "A port file such as Control.cms: preamble, end of line, postamble");
  app.add_option("--log", options.Log, "A file that takes what comes, byte for byte");
  app.footer("Commands on standard input; " + simulator::OfficeHelp());
  static_cast<void>(ReadArguments(app, std::move(arguments), help));
  return options;
}

OfficeHost::OfficeHost(const OfficeOptions& options, int keyboard, std::ostream& out)
    : files_("."),
      office_(FrameOf(files_, options.Settings)),
      line_(SimLine::Open(options.PtyLink, options.Device, options.Baud)),
      out_(out),
      input_(keyboard),
      last_(std::chrono::steady_clock::now()) {
  if (!options.Log.empty()) {
    log_.open(options.Log, std::ios::binary | std::ios::trunc);
    if (!log_) throw platform::RuntimeFault(options.Log, "cannot be written");
  }
  office_.SetBaud(options.Baud);
  office_.OnEvent([this](const std::string& text) { Say(text); });
  office_.OnBytes([this](std::string_view bytes) { log_ << bytes << std::flush; });
  Say("listening on " + (options.PtyLink.empty() ? options.Device : options.PtyLink));
}

bool OfficeHost::Step(int longestMs) {
  const auto due = office_.OutputDueInMs();
  const int wait = due ? std::min(longestMs, static_cast<int>(std::ceil(*due))) : longestMs;
  if (!input_.Wait(line_, !office_.Deaf(), wait)) return false;
  const auto now = std::chrono::steady_clock::now();
  office_.Advance(std::chrono::duration<double, std::milli>(now - last_).count());
  last_ = now;
  if (!office_.Deaf()) office_.Receive(line_.Read());
  for (const std::string& typed : input_.TakeLines()) Obey(typed);
  ShowLines();
  line_.Write(office_.TakeOutput());
  return !finished_;
}

void OfficeHost::Obey(const std::string& typed) {
  const auto answer = simulator::CarryOutOfficeCommand(typed, office_, files_);
  if (!answer.Text.empty()) Say(answer.Text);
  if (answer.Quit) finished_ = true;
}

void OfficeHost::ShowLines() {
  const auto& lines = office_.Lines();
  if (lines.Cts != shown_.Cts || lines.Dsr != shown_.Dsr) line_.SetModemLines(lines.Cts, lines.Dsr);
  shown_ = lines;
  if (std::exchange(breaks_, office_.Breaks()) != office_.Breaks()) line_.SendBreak();
}

int OfficeMain(const std::vector<std::string>& arguments, int keyboard, std::ostream& out,
               std::ostream& errors) {
  constexpr int NoLine = 1;
  try {
    std::string help;
    const OfficeOptions options = ReadOfficeOptions(arguments, help);
    if (!help.empty()) {
      out << help;
      return ExitStatus::Good;
    }
    OfficeHost host(options, keyboard, out);
    while (host.Step(HeartbeatMs)) {
    }
    return ExitStatus::Good;
  } catch (const WrongUse& fault) {
    errors << "torvane-office: " << fault.what() << '\n';
    return ExitStatus::WrongUse;
  } catch (const platform::RuntimeFault& fault) {
    errors << "torvane-office: " << fault.what() << '\n';
    return NoLine;
  }
}

}  // namespace torvane::tools

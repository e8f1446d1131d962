#include "tools/SimHost.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "platform/RuntimeFault.h"
#include "simulator/Installation.h"
#include "simulator/OperatorCommands.h"
#include "tools/ReplayHost.h"

namespace torvane::tools {

namespace {

/// How often the machine's events are looked for while nobody talks, ms.
constexpr int HeartbeatMs = 20;

std::unique_ptr<simulator::SimulatedController> MakeController(
    const SimOptions& options, const platform::FileSystem* installation) {
  auto wanted = options.Controller;
  if (installation != nullptr) simulator::FollowInstallation(*installation, wanted.Machine);
  return std::make_unique<simulator::SimulatedController>(wanted);
}

}  // namespace

SimHost::SimHost(const SimOptions& options, int input, std::ostream& out)
    : files_(options.Root.empty() ? nullptr
                                  : std::make_unique<platform::DiskFileSystem>(options.Root)),
      controller_(MakeController(options, files_.get())),
      line_(SimLine::Open(options.PtyLink, options.Device, options.Baud)),
      out_(out),
      input_(input),
      last_(std::chrono::steady_clock::now()) {
  controller_->TheMachine().SetListener(
      [this](const simulator::MachineEvent& event) { Say(simulator::EventText(event)); });
  if (!options.Path.empty()) {
    path_ = std::make_unique<PathLog>(options.Path);
    path_->Follow(controller_->TheMachine());
  }
  Say("listening on " + (options.PtyLink.empty() ? options.Device : options.PtyLink));
}

SimHost::~SimHost() = default;

void SimHost::Say(const std::string& text) { out_ << text << '\n' << std::flush; }

bool SimHost::Step(int longestMs) {
  if (!input_.Wait(line_, true, WaitMs(longestMs))) finished_ = true;
  CatchUp();
  controller_->Receive(line_.Read());
  for (const std::string& typed : input_.TakeLines()) Obey(typed);
  line_.Write(controller_->TakeOutput());
  return !finished_;
}

int SimHost::WaitMs(int longestMs) const {
  constexpr double MsPerSecond = 1000;
  const auto due = controller_->OutputDueIn();
  return due ? std::min(longestMs, static_cast<int>(std::ceil(*due * MsPerSecond))) : longestMs;
}

void SimHost::CatchUp() {
  const auto now = std::chrono::steady_clock::now();
  controller_->Advance(std::chrono::duration<double>(now - last_).count());
  last_ = now;
}

void SimHost::Obey(std::string_view line) {
  const auto answer = simulator::CarryOutOperatorCommand(line, *controller_);
  if (!answer.Text.empty()) Say(answer.Text);
  if (answer.Quit) finished_ = true;
}

int SimMain(const std::vector<std::string>& arguments, int input, std::ostream& out,
            std::ostream& errors, const SimPanel& panel) {
  constexpr int NoLine = 1;
  try {
    std::string help;
    const SimOptions options = ReadSimOptions(arguments, static_cast<bool>(panel), help);
    if (!help.empty()) {
      out << help;
      return ExitStatus::Good;
    }
    if (!options.Replay.empty()) return RunReplay(options, input, out);
    SimHost host(options, input, out);
    if (options.Panel && panel) return panel(host);
    while (host.Step(HeartbeatMs)) {
    }
    return ExitStatus::Good;
  } catch (const WrongUse& fault) {
    errors << "torvane-sim: " << fault.what() << '\n';
    return ExitStatus::WrongUse;
  } catch (const platform::RuntimeFault& fault) {
    errors << "torvane-sim: " << fault.what() << '\n';
    return NoLine;
  }
}

}  // namespace torvane::tools

#include "tools/SimHost.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <ostream>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "platform/RuntimeFault.h"
#include "simulator/Installation.h"
#include "simulator/OperatorCommands.h"

namespace torvane::tools {

namespace {

/// How often the machine's events are looked for while nobody talks, ms.
constexpr int HeartbeatMs = 20;
constexpr std::size_t LongestTyped = 4096;

SimLine OpenLine(const SimOptions& options) {
  if (!options.PtyLink.empty()) return SimLine::OnPseudoTerminal(options.PtyLink);
  return SimLine::OnDevice(options.Device, options.Baud);
}

std::unique_ptr<simulator::SimulatedController> MakeController(
    const SimOptions& options, const platform::FileSystem* installation) {
  auto wanted = options.Controller;
  if (installation != nullptr) simulator::FollowInstallation(*installation, wanted.Machine);
  return std::make_unique<simulator::SimulatedController>(wanted);
}

/// A handle that becomes readable when the program is asked to end. -1 where there is none.
int WatchSignals(sigset_t& before) {
  sigset_t ending;
  sigemptyset(&ending);
  sigaddset(&ending, SIGINT);
  sigaddset(&ending, SIGTERM);
  if (sigprocmask(SIG_BLOCK, &ending, &before) != 0) return -1;
  return signalfd(-1, &ending, SFD_NONBLOCK | SFD_CLOEXEC);
}

}  // namespace

SimHost::SimHost(const SimOptions& options, int input, std::ostream& out)
    : files_(options.Root.empty() ? nullptr
                                  : std::make_unique<platform::DiskFileSystem>(options.Root)),
      controller_(MakeController(options, files_.get())),
      line_(OpenLine(options)),
      out_(out),
      last_(std::chrono::steady_clock::now()),
      input_(input),
      signals_(WatchSignals(mask_)) {
  controller_->TheMachine().SetListener(
      [this](const simulator::MachineEvent& event) { Say(simulator::EventText(event)); });
  if (!options.Path.empty()) {
    path_ = std::make_unique<PathLog>(options.Path);
    path_->Follow(controller_->TheMachine());
  }
  Say("listening on " + (options.PtyLink.empty() ? options.Device : options.PtyLink));
}

SimHost::~SimHost() {
  if (signals_ < 0) return;
  close(signals_);
  sigprocmask(SIG_SETMASK, &mask_, nullptr);
}

void SimHost::Say(const std::string& text) { out_ << text << '\n' << std::flush; }

bool SimHost::Step(int longestMs) {
  Wait(longestMs);
  CatchUp();
  controller_->Receive(line_.Read());
  if (input_ >= 0) ReadCommands();
  line_.Write(controller_->TakeOutput());
  return !finished_;
}

void SimHost::Wait(int longestMs) {
  constexpr double MsPerSecond = 1000;
  int wait = longestMs;
  if (const auto due = controller_->OutputDueIn()) {
    wait = std::min(wait, static_cast<int>(std::ceil(*due * MsPerSecond)));
  }
  const short forLine = line_.WantsToWrite() ? POLLIN | POLLOUT : POLLIN;
  std::array<pollfd, 3> handles{
      {{line_.Handle(), forLine, 0}, {input_, POLLIN, 0}, {signals_, POLLIN, 0}}};
  if (poll(handles.data(), handles.size(), wait) < 0) return;  // EINTR: the next step sees to it
  if (handles[2].revents != 0) finished_ = true;
}

void SimHost::CatchUp() {
  const auto now = std::chrono::steady_clock::now();
  controller_->Advance(std::chrono::duration<double>(now - last_).count());
  last_ = now;
}

void SimHost::ReadCommands() {
  pollfd handle{input_, POLLIN, 0};
  if (poll(&handle, 1, 0) <= 0 || handle.revents == 0) return;
  std::array<char, 512> buffer{};
  const ssize_t count = read(input_, buffer.data(), buffer.size());
  if (count <= 0) {
    if (count == 0 || errno != EINTR) input_ = -1;  // no operator any more; the machine stays
    return;
  }
  typed_.append(buffer.data(), static_cast<std::size_t>(count));
  for (auto end = typed_.find('\n'); end != std::string::npos; end = typed_.find('\n')) {
    Obey(std::string_view(typed_).substr(0, end));
    typed_.erase(0, end + 1);
  }
  if (typed_.size() > LongestTyped) typed_.clear();
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
      return CheckStatus::Good;
    }
    SimHost host(options, input, out);
    if (options.Panel && panel) return panel(host);
    while (host.Step(HeartbeatMs)) {
    }
    return CheckStatus::Good;
  } catch (const WrongUse& fault) {
    errors << "torvane-sim: " << fault.what() << '\n';
    return CheckStatus::WrongUse;
  } catch (const platform::RuntimeFault& fault) {
    errors << "torvane-sim: " << fault.what() << '\n';
    return NoLine;
  }
}

}  // namespace torvane::tools

#include "tools/HostInput.h"

#include <array>
#include <cerrno>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace torvane::tools {

namespace {

constexpr std::size_t LongestTyped = 4096;

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

HostInput::HostInput(int keyboard) : keyboard_(keyboard), signals_(WatchSignals(mask_)) {}

HostInput::~HostInput() {
  if (signals_ < 0) return;
  close(signals_);
  sigprocmask(SIG_SETMASK, &mask_, nullptr);
}

bool HostInput::Wait(const SimLine& line, bool reads, int longestMs) {
  const int forReading = reads ? POLLIN : 0;
  const int forWriting = line.WantsToWrite() ? POLLOUT : 0;
  std::array<pollfd, 3> handles{{{line.Handle(), static_cast<short>(forReading | forWriting), 0},
                                 {keyboard_, POLLIN, 0},
                                 {signals_, POLLIN, 0}}};
  if (poll(handles.data(), handles.size(), longestMs) < 0) return true;  // EINTR: the next step
  return handles[2].revents == 0;
}

std::vector<std::string> HostInput::TakeLines() {
  std::vector<std::string> lines;
  pollfd handle{keyboard_, POLLIN, 0};
  if (keyboard_ < 0 || poll(&handle, 1, 0) <= 0 || handle.revents == 0) return lines;
  std::array<char, 512> buffer{};
  const ssize_t count = read(keyboard_, buffer.data(), buffer.size());
  if (count <= 0) {
    if (count == 0 || errno != EINTR) keyboard_ = -1;  // nobody there any more; the program stays
    return lines;
  }
  typed_.append(buffer.data(), static_cast<std::size_t>(count));
  for (auto end = typed_.find('\n'); end != std::string::npos; end = typed_.find('\n')) {
    lines.push_back(typed_.substr(0, end));
    typed_.erase(0, end + 1);
  }
  if (typed_.size() > LongestTyped) typed_.clear();
  return lines;
}

}  // namespace torvane::tools

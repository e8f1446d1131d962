#include "toolkit/EndSignals.h"

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace torvane::toolkit {

namespace {

/// Where a handler writes to; a handler can know nothing else.
std::atomic<int> writeEnd = -1;

extern "C" void NoteSignal(int) {
  const int before = errno;
  const char byte = 0;
  // A full pipe has been written to often enough.
  static_cast<void>(!::write(writeEnd.load(), &byte, 1));
  errno = before;
}

void Empty(int readEnd) {
  std::array<char, 64> bytes{};
  while (::read(readEnd, bytes.data(), bytes.size()) > 0) {
  }
}

}  // namespace

EndSignals::EndSignals(std::function<void()> asked) {
  if (::pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  writeEnd = pipe_[1];
  notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated,
                   [readEnd = pipe_[0], asked = std::move(asked)] {
                     Empty(readEnd);
                     asked();
                   });
  for (std::size_t i = 0; i < Signals.size(); ++i) {
    ::sigaction(Signals[i], nullptr, &before_[i]);
    if (before_[i].sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(Signals[i], &action, nullptr);
  }
}

EndSignals::~EndSignals() {
  if (!notifier_) return;
  for (std::size_t i = 0; i < Signals.size(); ++i) {
    ::sigaction(Signals[i], &before_[i], nullptr);
  }
  writeEnd = -1;
  notifier_.reset();
  for (const int end : pipe_) ::close(end);
}

}  // namespace torvane::toolkit

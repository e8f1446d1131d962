#include "monitoring/Monitor.h"

#include <utility>

namespace torvane::monitoring {

namespace {

/// How often new clients and heartbeats are looked for, ms.
constexpr int ServeMs = 10;

}  // namespace

Monitor::Monitor(platform::EventLoop& loop, platform::TcpServer& server, MonitorSources sources)
    : loop_(loop),
      sources_(std::move(sources)),
      adapter_(server, sources_.WallMs),
      timer_(loop.MakeTimer([this] { Serve(); })) {
  timer_->Start(ServeMs);
}

void Monitor::NoteAnswers() {
  const std::uint64_t answers = sources_.Answers();
  if (std::exchange(answers_, answers) != answers) answeredMs_ = loop_.NowMs();
}

void Monitor::AfterTick() {
  if (ended_) return;
  NoteAnswers();
  const bool answered = std::exchange(tickAnswers_, answers_) != answers_;
  const std::uint64_t failures = sources_.Failures();
  const bool failed = std::exchange(failures_, failures) != failures;
  if (!answered) {
    adapter_.Publish({});
  } else if (!failed) {
    adapter_.Publish(reader_.Read(sources_.System, sources_.Messages()));
  }
}

void Monitor::Serve() {
  NoteAnswers();
  if (loop_.NowMs() - answeredMs_ > SilenceMs) adapter_.Publish({});
  adapter_.Serve(loop_.NowMs());
}

void Monitor::End() {
  ended_ = true;
  adapter_.Publish({});
  adapter_.Flush();
}

}  // namespace torvane::monitoring

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

void Monitor::TickRead(const supervision::TickReading& tick) {
  if (ended_) return;
  NoteAnswers();
  const bool answered = std::exchange(tickAnswers_, answers_) != answers_;
  if (!answered) return adapter_.Publish({});
  if (tick.Blind) return PassOver();
  blindMs_.reset();
  adapter_.Publish(reader_.Read(sources_.System, sources_.Messages()));
}

/// One query that is refused for good leaves no tick whole, while the others are answered. Looked
/// at from ticks only: while the poll pauses none of them fails.
void Monitor::PassOver() {
  const std::int64_t now = loop_.NowMs();
  if (!blindMs_) blindMs_ = now;
  if (now - *blindMs_ > SilenceMs) adapter_.Publish({});
}

void Monitor::Serve() {
  NoteAnswers();
  if (loop_.NowMs() - answeredMs_ > SilenceMs) adapter_.Publish({});
  adapter_.Serve(loop_.NowMs());
}

void Monitor::ConsoleEnds(bool /*unheard*/) {
  ended_ = true;
  adapter_.Publish({});
}

}  // namespace torvane::monitoring

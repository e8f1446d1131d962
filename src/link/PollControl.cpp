#include "link/PollControl.h"

namespace torvane::link {

PollControl::PollControl(platform::EventLoop& loop, core::LinkSettings& settings)
    : settings_(settings), timer_(loop.MakeTimer([this] { Tick(); })) {}

void PollControl::Start(bool setWanted) {
  if (setWanted) settings_.PollingWanted = true;
  timer_->Stop();
  timer_->Start(settings_.PollResumeMs);
}

void PollControl::Stop(bool clearWanted) {
  timer_->Stop();
  if (clearWanted) settings_.PollingWanted = false;
}

void PollControl::Resume() {
  if (settings_.PollingWanted) Start(false);
}

void PollControl::Tick() {
  if (tick_) tick_();
  // A poll that was ended for good inside its own tick stays ended.
  if (!timer_->Active() && !settings_.PollingWanted) return;
  if (timer_->IntervalMs() == settings_.PollPeriodMs) return;
  timer_->Stop();
  timer_->Start(settings_.PollPeriodMs);
}

}  // namespace torvane::link

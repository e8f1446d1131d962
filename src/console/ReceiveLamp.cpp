#include "console/ReceiveLamp.h"

#include <utility>

#include "files/CommsModule.h"

namespace torvane::console {

namespace {

constexpr int TickMs = 250;
/// So long after the last character the lamp goes off.
constexpr int QuietTicks = 12;

}  // namespace

ReceiveLamp::ReceiveLamp(platform::EventLoop& loop, files::CommsModule& comms,
                         std::function<void(const std::string&)> show)
    : comms_(comms), show_(std::move(show)), timer_(loop.MakeTimer([this] { Tick(); })) {
  comms_.Reception().OnProgress([this] {
    moved_ = true;
    if (!timer_->Active()) timer_->Start(TickMs);
  });
}

ReceiveLamp::~ReceiveLamp() { comms_.Reception().OnProgress({}); }

void ReceiveLamp::Tick() {
  quietTicks_ = std::exchange(moved_, false) ? 0 : quietTicks_ + 1;
  const auto count = comms_.Reception().CharactersReceived();
  if (quietTicks_ >= QuietTicks) {
    timer_->Stop();
    show_("");
  } else if (quietTicks_ == 0) {
    show_(count == 0 ? "RECEIVED" : "RECEIVING   " + std::to_string(count));
  }
}

}  // namespace torvane::console

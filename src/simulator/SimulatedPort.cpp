#include "simulator/SimulatedPort.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace torvane::simulator {

namespace {

constexpr double BitsPerByte = 10;  // start, eight of data, stop
constexpr double MsPerSecond = 1000;
constexpr double Tiny = 1e-6;  // ms

}  // namespace

SimulatedPort::SimulatedPort(platform::EventLoop& loop, ControllerEnd& controller,
                             PortOptions options)
    : controller_(controller),
      loop_(loop),
      options_(options),
      wake_(loop.MakeTimer([this] { Deliver(); })),
      heartbeat_(loop.MakeTimer([this] { CatchUp(); })),
      self_(std::make_shared<SimulatedPort*>(this)),
      nowMs_(static_cast<double>(loop.NowMs())),
      lineFreeMs_(nowMs_) {
  if (options_.HeartbeatMs > 0) heartbeat_->Start(options_.HeartbeatMs);
}

SimulatedPort::~SimulatedPort() = default;

bool SimulatedPort::Open(const platform::PortSetup&) {
  open_ = true;
  return true;
}

void SimulatedPort::Close() {
  open_ = false;
  input_.clear();
  toController_.clear();
  toFrontEnd_.clear();
  wake_->Stop();
}

std::string SimulatedPort::ReadAll() { return std::exchange(input_, {}); }

std::size_t SimulatedPort::BytesQueued() const {
  std::size_t queued = 0;
  for (const auto& transfer : toController_) queued += transfer.Bytes.size();
  return queued;
}

double SimulatedPort::TransferMs(std::size_t bytes) const {
  if (options_.Baud <= 0) return 0;
  return static_cast<double>(bytes) * BitsPerByte * MsPerSecond / options_.Baud;
}

double SimulatedPort::Book(double fromMs, std::size_t bytes) {
  const double takes = TransferMs(bytes);
  lineMs_ += takes;
  lineFreeMs_ = std::max(fromMs, lineFreeMs_) + takes;
  return lineFreeMs_;
}

void SimulatedPort::Write(std::string_view bytes) {
  if (!open_ || bytes.empty()) return;
  double from = static_cast<double>(loop_.NowMs());
  // The loop counts whole milliseconds: what is written in the one in which the line came free
  // follows right on, so that rounding adds no time to the line's own.
  if (from - lineFreeMs_ < 1.0) from = lineFreeMs_;
  toController_.push_back({Book(from, bytes.size()), std::string(bytes)});
  Carry();
  Schedule();
}

void SimulatedPort::CatchUp() {
  MoveTo(static_cast<double>(loop_.NowMs()));
  CollectAnswers(nowMs_);
  Schedule();
}

void SimulatedPort::MoveTo(double ms) {
  if (ms <= nowMs_) return;
  controller_.Advance((ms - nowMs_) / MsPerSecond);
  nowMs_ = ms;
}

void SimulatedPort::CollectAnswers(double fromMs) {
  std::string answer = controller_.TakeOutput();
  if (answer.empty()) return;
  const double at = Book(fromMs, answer.size());
  toFrontEnd_.push_back({at, std::move(answer)});
}

void SimulatedPort::Carry() {
  const double now = static_cast<double>(loop_.NowMs());
  while (!toController_.empty() && toController_.front().AtMs <= now + Tiny) {
    const Transfer transfer = std::move(toController_.front());
    toController_.pop_front();
    MoveTo(transfer.AtMs);
    controller_.Receive(transfer.Bytes);
    CollectAnswers(transfer.AtMs);
  }
  MoveTo(now);
  CollectAnswers(nowMs_);
}

void SimulatedPort::Deliver() {
  Carry();
  const double now = static_cast<double>(loop_.NowMs());
  bool arrived = false;
  while (!toFrontEnd_.empty() && toFrontEnd_.front().AtMs <= now + Tiny) {
    input_ += toFrontEnd_.front().Bytes;
    toFrontEnd_.pop_front();
    arrived = true;
  }
  Schedule();
  if (arrived) TellReceived();
}

void SimulatedPort::TellReceived() {
  // As an event of its own: a handler may wait, and the timer must go on meanwhile.
  loop_.Post([self = std::weak_ptr<SimulatedPort*>(self_)] {
    const auto port = self.lock();
    if (!port) return;
    const auto handler = (*port)->received_;
    if (handler) handler();
  });
}

void SimulatedPort::Schedule() {
  double next = INFINITY;
  if (!toController_.empty()) next = std::min(next, toController_.front().AtMs);
  if (!toFrontEnd_.empty()) next = std::min(next, toFrontEnd_.front().AtMs);
  if (const auto due = controller_.OutputDueIn())
    next = std::min(next, nowMs_ + *due * MsPerSecond);
  wake_->Stop();
  if (!std::isfinite(next)) return;
  const double wait = std::ceil(next - static_cast<double>(loop_.NowMs()) - Tiny);
  if (wait >= 1) {
    wake_->Start(static_cast<int>(std::min(wait, 1e9)));
    return;
  }
  loop_.Post([self = std::weak_ptr<SimulatedPort*>(self_)] {
    if (const auto port = self.lock()) (*port)->Deliver();
  });
}

}  // namespace torvane::simulator

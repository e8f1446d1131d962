#include "simulator/OfficePort.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace torvane::simulator {

namespace {

constexpr char Xon = 17;
constexpr char Xoff = 19;
/// How often a line that carries something is looked at, ms.
constexpr int StepMs = 5;
/// And one whose modem lines somebody waits for, ms.
constexpr int LinesMs = 50;

}  // namespace

OfficePort::OfficePort(platform::EventLoop& loop, OfficePeer& office, double baud)
    : loop_(loop),
      office_(office),
      timer_(loop.MakeTimer([this] { Step(); })),
      self_(std::make_shared<OfficePort*>(this)),
      bytesPerMs_(baud / 10 / 1000),
      lastMs_(loop.NowMs()) {
  office_.SetBaud(baud);
}

OfficePort::~OfficePort() = default;

bool OfficePort::Open(const platform::PortSetup& setup) {
  Close();
  setup_ = setup;
  open_ = true;
  watch_.Begin(LookNow());
  Schedule();
  return true;
}

void OfficePort::Close() {
  open_ = false;
  heldByXoff_ = false;
  budget_ = 0;
  queue_.clear();
  input_.clear();
}

std::string OfficePort::ReadAll() { return std::exchange(input_, {}); }

bool OfficePort::UsesWires() const {
  return (static_cast<int>(setup_.Handshaking) & static_cast<int>(platform::Handshake::RtsCts)) !=
         0;
}

bool OfficePort::UsesCodes() const {
  return (static_cast<int>(setup_.Handshaking) & static_cast<int>(platform::Handshake::XonXoff)) !=
         0;
}

bool OfficePort::HeldUp() const {
  const auto& lines = office_.Lines();
  return heldByXoff_ || (UsesWires() && (!lines.Cts || !lines.Dsr || office_.Deaf()));
}

void OfficePort::Write(std::string_view bytes) {
  if (!open_) return;
  queue_.append(bytes);
  Wake();
}

void OfficePort::OnLineEvent(std::function<void(platform::LineEvent)> handler) {
  event_ = std::move(handler);
  watch_.Begin(LookNow());
  Schedule();
}

void OfficePort::Wake() {
  loop_.Post([self = std::weak_ptr<OfficePort*>(self_)] {
    if (const auto port = self.lock()) (*port)->Step();
  });
}

void OfficePort::Step() {
  const std::int64_t now = loop_.NowMs();
  const auto past = static_cast<double>(std::exchange(lastMs_, now));
  const double ms = static_cast<double>(now) - past;
  office_.Advance(ms);
  const std::string came = office_.TakeOutput();
  if (open_) Arrive(came);
  if (open_) SendQueued(ms);
  LookAtLines();
  Schedule();
}

void OfficePort::SendQueued(double ms) {
  if (queue_.empty() || HeldUp()) {
    budget_ = 0;
    return;
  }
  std::size_t size = queue_.size();
  if (bytesPerMs_ > 0) {
    budget_ += std::min(ms, static_cast<double>(LinesMs)) * bytesPerMs_;
    size = std::min(size, static_cast<std::size_t>(budget_));
    budget_ -= static_cast<double>(size);
  }
  const std::string bytes = queue_.substr(0, size);
  queue_.erase(0, size);
  // Without a handshake, what a deaf office does not read is lost.
  if (!office_.Deaf()) office_.Receive(bytes);
}

void OfficePort::Arrive(std::string_view bytes) {
  for (const char byte : bytes) {
    if (UsesCodes() && (byte == Xon || byte == Xoff)) {
      heldByXoff_ = byte == Xoff;
    } else if (byte != '\0' || !setup_.DiscardNulls) {
      input_ += byte;
    }
  }
  if (input_.empty() || std::exchange(told_, true)) return;
  loop_.Post([self = std::weak_ptr<OfficePort*>(self_)] {
    const auto port = self.lock();
    if (!port) return;
    (*port)->told_ = false;
    if ((*port)->input_.empty()) return;
    if (const auto handler = (*port)->received_) handler();
  });
}

platform::LineLook OfficePort::LookNow() const {
  const bool waits = UsesWires() && !queue_.empty();
  return {.Lines = office_.Lines(),
          .Breaks = office_.Breaks(),
          .WaitsForCts = waits,
          .WaitsForDsr = waits,
          .NowMs = loop_.NowMs()};
}

void OfficePort::LookAtLines() {
  if (!open_) return;
  for (const platform::LineEvent event : watch_.Look(LookNow())) {
    if (const auto handler = event_) handler(event);
  }
}

void OfficePort::Schedule() {
  double next = INFINITY;
  if (const auto due = office_.OutputDueInMs()) next = std::max<double>(*due, StepMs);
  if (open_ && !queue_.empty()) next = std::min<double>(next, HeldUp() ? LinesMs : StepMs);
  if (open_ && event_) next = std::min<double>(next, LinesMs);
  timer_->Stop();
  if (std::isfinite(next)) timer_->Start(static_cast<int>(std::min(std::ceil(next), 1e6)));
}

}  // namespace torvane::simulator

#include "tools/ContractLine.h"

#include <utility>

namespace torvane::tools {

namespace {

constexpr std::string_view Prompt = ">>";
constexpr int QuietMs = 500;  // within a reply

}  // namespace

ContractLine::ContractLine(platform::EventLoop& loop, platform::SerialPort& port, int replyMs)
    : loop_(loop), port_(port), replyMs_(replyMs), timer_(loop.MakeTimer([this] {
        expired_ = true;
        timer_->Stop();
      })) {
  port_.OnReceived([] {});  // what comes wakes the loop
}

ContractLine::~ContractLine() { port_.OnReceived({}); }

void ContractLine::WaitFor(int ms, const std::function<bool()>& done) {
  expired_ = false;
  timer_->Start(ms);
  loop_.WaitUntil([&] { return expired_ || interrupted_ || done(); });
  timer_->Stop();
  if (interrupted_) throw ContractInterrupted("ended before it was through");
}

bool ContractLine::WaitForBytes(int ms) {
  WaitFor(ms, [this] { return port_.BytesWaiting() > 0; });
  return port_.BytesWaiting() > 0;
}

void ContractLine::Settle() {
  interrupted_ = false;
  settled_ = true;
  if (std::exchange(owed_, false)) (void)WaitForBytes(replyMs_);
  const auto end = loop_.NowMs() + replyMs_;  // a controller may chatter without an end
  while (WaitForBytes(QuietMs) && loop_.NowMs() < end) (void)port_.ReadAll();
  (void)port_.ReadAll();
}

void ContractLine::Sleep(int ms) {
  WaitFor(ms, [] { return false; });
}

Exchange ContractLine::Send(std::string_view line) {
  (void)port_.ReadAll();
  Exchange exchange;
  exchange.Line = line;
  const auto start = loop_.NowMs();
  owed_ = true;
  port_.Write(exchange.Line + "\r");
  const auto end = start + 2 * replyMs_ + QuietMs;  // a controller may chatter without an end
  while (loop_.NowMs() <= end && WaitForBytes(exchange.Reply.empty() ? 2 * replyMs_ : QuietMs)) {
    owed_ = false;
    exchange.Reply += port_.ReadAll();
    exchange.Ms = loop_.NowMs() - start;
    exchange.Prompt = exchange.Reply.ends_with(Prompt);
    if (exchange.Prompt) break;
  }
  if (exchange.Reply.empty()) {
    owed_ = false;
    throw ControllerSilent("no answer to \"" + exchange.Line + "\" in " +
                           std::to_string(2 * replyMs_) + " ms");
  }
  return exchange;
}

}  // namespace torvane::tools

#include "link/LineQueue.h"

#include <algorithm>
#include <utility>

namespace torvane::link {

LineQueue::Turn::Turn(LineQueue& queue, LinePlace place, bool mayBeWithdrawn)
    : queue_(queue), place_(place), aborts_(queue.aborts_), mayBeWithdrawn_(mayBeWithdrawn) {
  auto& waiting = queue_.waiting_;
  const auto behind = std::find_if(waiting.begin(), waiting.end(),
                                   [place](const Turn* other) { return other->place_ > place; });
  waiting.insert(behind, this);
}

LineQueue::Turn::~Turn() {
  queue_.waiting_.remove(this);
  if (queue_.owner_ == this) queue_.owner_ = nullptr;
}

bool LineQueue::Turn::Await() {
  const auto lost = [this] {
    const bool aborted = queue_.aborts_ != aborts_ && place_ != LinePlace::Urgent;
    return withdrawn_ || queue_.closed_ || aborted;
  };
  const auto mine = [this] {
    return queue_.owner_ == nullptr && !queue_.waiting_.empty() && queue_.waiting_.front() == this;
  };
  queue_.loop_.WaitUntil([&] { return lost() || mine(); });
  queue_.waiting_.remove(this);
  if (lost()) return false;
  queue_.owner_ = this;
  return true;
}

LineQueue::LineQueue(platform::EventLoop& loop, platform::SerialPort& port,
                     core::LinkSettings& settings)
    : loop_(loop), port_(port), settings_(settings) {
  outTimer_ = loop_.MakeTimer([this] { ReplyTimeOut(); });
  port_.OnReceived([this] { TakeReceived(); });
}

LineQueue::~LineQueue() { port_.OnReceived({}); }

void LineQueue::Send(std::string_view line) {
  settings_.LastComms = line;
  outgoing_ = line;
  outgoing_ += '\r';
  port_.Write(outgoing_);
}

LineReply LineQueue::Collect(bool yielding) {
  struct Collecting {
    explicit Collecting(LineQueue& queue) : Of(queue) {
      Of.reply_.clear();
      Of.whole_ = false;
      Of.collecting_ = true;
      Of.settings_.ReplyTimedOut = false;
      if (Of.settings_.ReplyTimeoutMs > 0) Of.outTimer_->Start(Of.settings_.ReplyTimeoutMs);
    }
    ~Collecting() {
      Of.collecting_ = false;
      Of.settings_.ReplyTimedOut = false;
      Of.outTimer_->Stop();
    }
    Collecting(const Collecting&) = delete;
    Collecting& operator=(const Collecting&) = delete;
    LineQueue& Of;
  } const collecting(*this);

  const std::uint64_t aborts = aborts_;
  const auto ended = [this, aborts] { return closed_ || aborts_ != aborts; };
  TakeReceived();
  loop_.WaitUntil([&] {
    return whole_ || settings_.ReplyTimedOut || ended() || (yielding && UrgentWaiting());
  });
  LineReply reply;
  reply.Aborted = !whole_ && ended();
  reply.TimedOut = !whole_ && !reply.Aborted;
  reply.Text = std::move(reply_);
  if (whole_) return reply;
  ++owed_;
  halfPrompt_ = reply.Text.ends_with(Prompt.front());
  return reply;
}

void LineQueue::TakeReceived() {
  if (!collecting_ || whole_ || port_.BytesWaiting() == 0) return;
  reply_ += Read();
  TakeReplies();
}

/// Nothing but the ends of lines before the prompt: the answer to a bare carriage return. A late
/// reply to anything else has its echo.
bool LineQueue::Fits(std::size_t prompt) const {
  if (outgoing_.size() > 1) return reply_.starts_with(outgoing_);
  return reply_.find_first_not_of("\r\n") == prompt;
}

/// A reply with a strange echo while nothing is owed is taken for the one in hand, as its echo may
/// have been spoiled on the line; but then the true one may still come.
void LineQueue::TakeReplies() {
  for (auto end = reply_.find(Prompt); end != std::string::npos; end = reply_.find(Prompt)) {
    const bool fits = Fits(end);
    if (fits || owed_ == 0) {
      whole_ = true;
      outTimer_->Stop();
      const bool bare = outgoing_.size() == 1;
      if (!fits && !bare && reply_.find(ErrorMark) == std::string::npos) ++owed_;
      return;
    }
    reply_.erase(0, end + Prompt.size());
    Settle(1);
  }
}

void LineQueue::ReplyTimeOut() {
  outTimer_->Stop();
  TakeReceived();
  settings_.ReplyTimedOut = collecting_ && !whole_;
}

std::string LineQueue::Read() {
  std::string bytes = port_.ReadAll();
  if (bytes.empty() || !std::exchange(halfPrompt_, false)) return bytes;
  if (bytes.front() != Prompt.back()) return bytes;
  Settle(1);
  bytes.erase(0, 1);
  return bytes;
}

void LineQueue::FlushTrioInput() {
  if (!collecting_) DropInput();
}

void LineQueue::DropInput() {
  if (port_.BytesWaiting() == 0) return;
  const std::string dropped = Read();
  std::size_t rest = 0;
  for (auto end = dropped.find(Prompt); end != std::string::npos;
       end = dropped.find(Prompt, rest)) {
    rest = end + Prompt.size();
    Settle(1);
  }
  halfPrompt_ = owed_ > 0 && rest < dropped.size() && dropped.ends_with(Prompt.front());
}

void LineQueue::Settle(std::size_t replies) { owed_ -= std::min(owed_, replies); }

bool LineQueue::UrgentWaiting() const {
  return !waiting_.empty() && waiting_.front()->place_ == LinePlace::Urgent;
}

void LineQueue::Withdraw() {
  for (Turn* turn : waiting_) turn->withdrawn_ = turn->withdrawn_ || turn->mayBeWithdrawn_;
}

void LineQueue::AbortAll() { ++aborts_; }

void LineQueue::Close() {
  AbortAll();
  closed_ = true;
}

void LineQueue::Open() {
  closed_ = false;
  owed_ = 0;
  halfPrompt_ = false;
}

}  // namespace torvane::link

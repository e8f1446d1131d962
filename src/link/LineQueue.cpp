#include "link/LineQueue.h"

#include <algorithm>
#include <utility>

namespace torvane::link {

using State = LineSession::State;

LineQueue::LineQueue(platform::EventLoop& loop, platform::SerialPort& port,
                     core::LinkSettings& settings, PauseHandler& pause)
    : loop_(loop), port_(port), settings_(settings), pause_(pause) {
  outTimer_ = loop_.MakeTimer([this] { ReplyTimeOut(); });
  pauseTimer_ = loop_.MakeTimer([this] { PauseOver(); });
  port_.OnReceived([this] { TakeReceived(); });
}

LineQueue::~LineQueue() { port_.OnReceived({}); }

void LineQueue::Enqueue(LineSession& session) {
  if (closed_) return Abort(session);
  session.Phase = State::Queued;
  session.Next = nullptr;
  LineSession** end = &first_;
  while (*end != nullptr) end = &(*end)->Next;
  *end = &session;
  StartNext();
}

void LineQueue::EnqueueFirst(LineSession& session) {
  if (closed_) return Abort(session);
  session.Phase = State::Queued;
  session.Next = std::exchange(first_, &session);
  StartNext();
}

void LineQueue::Await(const LineSession& session) {
  loop_.WaitUntil([&session] { return session.Done(); });
}

void LineQueue::Remove(LineSession& session) {
  for (LineSession** link = &first_; *link != nullptr; link = &(*link)->Next) {
    if (*link != &session) continue;
    *link = session.Next;
    break;
  }
  if (owner_ != &session) return;
  const bool pausing = session.Phase == State::Pausing;
  owner_ = nullptr;
  outTimer_->Stop();
  pauseTimer_->Stop();
  if (pausing) pause_.PauseEnds();
  StartNext();
}

void LineQueue::FlushTrioInput() {
  if (owner_ == nullptr) DropInput();
}

void LineQueue::Close() {
  closed_ = true;
  outTimer_->Stop();
  pauseTimer_->Stop();
  settings_.ReplyTimedOut = false;
  while (first_ != nullptr) Abort(*std::exchange(first_, first_->Next));
  if (owner_ == nullptr) return;
  LineSession& owner = *std::exchange(owner_, nullptr);
  const bool pausing = owner.Phase == State::Pausing;
  Abort(owner);
  if (pausing) pause_.PauseEnds();
}

void LineQueue::StartNext() {
  if (owner_ != nullptr || first_ == nullptr) return;
  LineSession& session = *first_;
  first_ = session.Next;
  Start(session);
}

void LineQueue::Start(LineSession& session) {
  owner_ = &session;
  if (session.FlushFirst) DropInput();
  SendTrioLine(session.Text);
  if (session.PauseAfterSend && settings_.CommandDelayMs > 0) {
    session.Phase = State::Pausing;
    pause_.PauseBegins();
    pauseTimer_->Start(settings_.CommandDelayMs);
  } else {
    BeginWait();
  }
}

void LineQueue::SendTrioLine(std::string_view text) {
  settings_.LastComms = text;
  outgoing_ = text;
  outgoing_ += '\r';
  port_.Write(outgoing_);
}

void LineQueue::BeginWait() {
  owner_->Phase = State::Waiting;
  settings_.ReplyTimedOut = false;
  outTimer_->Stop();
  if (settings_.ReplyTimeoutMs > 0) outTimer_->Start(settings_.ReplyTimeoutMs);
  if (port_.BytesWaiting() == 0) return;
  // Bytes that came before the wait raise no further event of their own.
  loop_.Post([self = std::weak_ptr<LineQueue*>(self_)] {
    if (const auto queue = self.lock()) (*queue)->TakeReceived();
  });
}

bool LineQueue::Collecting() const { return owner_ != nullptr && owner_->Phase == State::Waiting; }

void LineQueue::TakeReceived() {
  if (!Collecting() || port_.BytesWaiting() == 0) return;
  std::string& reply = owner_->Reply;
  const std::size_t known = std::max<std::size_t>(reply.size(), 1) - 1;
  reply += port_.ReadAll();
  if (reply.find(Prompt, known) != std::string::npos) Complete();
}

void LineQueue::ReplyTimeOut() {
  settings_.ReplyTimedOut = true;
  if (!Collecting()) return outTimer_->Stop();
  if (port_.BytesWaiting() > 0) owner_->Reply += port_.ReadAll();
  owner_->TimedOut = true;
  Complete();
}

void LineQueue::PauseOver() {
  pauseTimer_->Stop();
  if (owner_ == nullptr || owner_->Phase != State::Pausing) return;
  LineSession* const session = owner_;
  pause_.PauseEnds();
  if (owner_ == session) BeginWait();
}

void LineQueue::Complete() {
  outTimer_->Stop();
  settings_.ReplyTimedOut = false;
  LineSession& session = *std::exchange(owner_, nullptr);
  const bool recover = session.Recovery != nullptr && session.Failed();
  if (session.FlushAfter || recover) DropInput();
  session.Phase = State::Done;
  if (recover && first_ != nullptr) return EnqueueFirst(*session.Recovery);
  StartNext();
}

void LineQueue::Abort(LineSession& session) {
  session.Aborted = true;
  session.Phase = State::Done;
}

void LineQueue::DropInput() {
  if (port_.BytesWaiting() > 0) static_cast<void>(port_.ReadAll());
}

}  // namespace torvane::link

#include "platform/ScriptedPort.h"

#include <algorithm>
#include <utility>

namespace torvane::platform {

void ScriptedPort::PostCall(std::function<void(ScriptedPort&)> call) {
  loop_.Post([self = std::weak_ptr<ScriptedPort*>(self_), call = std::move(call)] {
    if (const auto port = self.lock()) call(**port);
  });
}

void ScriptedPort::Deliver(std::string_view bytes) {
  if (!open_ || bytes.empty()) return;
  input_.append(bytes);
  PostCall([](ScriptedPort& port) {
    if (const auto handler = port.received_) handler();
  });
}

bool ScriptedPort::Open(const PortSetup& setup) {
  ++openCalls_;
  if (failOpens_ != 0) {
    if (failOpens_ > 0) --failOpens_;
    return false;
  }
  setup_ = setup;
  input_.clear();
  open_ = true;
  return true;
}

void ScriptedPort::Close() {
  open_ = false;
  queued_ = 0;
  input_.clear();
}

std::string ScriptedPort::ReadAll() { return std::exchange(input_, std::string()); }

void ScriptedPort::Write(std::string_view bytes) {
  if (!open_) return;
  written_.append(bytes);
  if (holdOutput_) queued_ += bytes.size();
  if (peer_) peer_(bytes);
}

void ScriptedPort::SetLines(const PortLines& lines) {
  const PortLines old = std::exchange(lines_, lines);
  if (old.Cts != lines.Cts) Raise(LineEvent::CtsChanged);
  if (old.Dsr != lines.Dsr) Raise(LineEvent::DsrChanged);
  if (old.Carrier != lines.Carrier) Raise(LineEvent::CarrierChanged);
}

void ScriptedPort::Raise(LineEvent event) {
  PostCall([event](ScriptedPort& port) {
    if (const auto handler = port.event_) handler(event);
  });
}

void ScriptedPort::HoldOutput(bool hold) {
  holdOutput_ = hold;
  if (!hold) Drain(queued_);
}

void ScriptedPort::Drain(std::size_t bytes) {
  queued_ -= std::min(bytes, queued_);
  PostCall([](ScriptedPort&) {});  // something has happened: who waits for room looks again
}

}  // namespace torvane::platform

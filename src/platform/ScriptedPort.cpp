#include "platform/ScriptedPort.h"

#include <utility>

namespace torvane::platform {

void ScriptedPort::PostHandler(std::function<void()> ScriptedPort::*handler) {
  loop_.Post([self = std::weak_ptr<ScriptedPort*>(self_), handler] {
    const auto port = self.lock();
    if (!port) return;
    const auto call = (**port).*handler;
    if (call) call();
  });
}

void ScriptedPort::Deliver(std::string_view bytes) {
  if (!open_ || bytes.empty()) return;
  input_.append(bytes);
  PostHandler(&ScriptedPort::received_);
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
  input_.clear();
}

std::string ScriptedPort::ReadAll() { return std::exchange(input_, std::string()); }

void ScriptedPort::Write(std::string_view bytes) {
  if (!open_) return;
  written_.append(bytes);
  if (peer_) peer_(bytes);
}

void ScriptedPort::SetLines(const PortLines& lines) {
  lines_ = lines;
  PostHandler(&ScriptedPort::changed_);
}

}  // namespace torvane::platform

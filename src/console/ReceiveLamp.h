// The lamp of the second port: it shows while data arrive.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/EventLoop.h"

namespace torvane::files {
class CommsModule;
}

namespace torvane::console {

class ReceiveLamp {
 public:
  /// `show` is given the lamp's text, empty for a lamp that is off; it is called four times a
  /// second at most, whatever arrives.
  ReceiveLamp(platform::EventLoop& loop, files::CommsModule& comms,
              std::function<void(const std::string&)> show);
  ~ReceiveLamp();
  ReceiveLamp(const ReceiveLamp&) = delete;
  ReceiveLamp& operator=(const ReceiveLamp&) = delete;

 private:
  void Tick();

  files::CommsModule& comms_;
  std::function<void(const std::string&)> show_;
  std::unique_ptr<platform::Timer> timer_;
  bool moved_ = false;  ///< something has come since the last tick
  int quietTicks_ = 0;
};

}  // namespace torvane::console

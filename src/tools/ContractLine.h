// One line at a time to a controller that may do anything, and what came back.
#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace torvane::tools {

/// What became of one line.
struct Exchange {
  std::string Line;
  std::string Reply;    ///< all that came, echo and prompt included
  bool Prompt = false;  ///< it ends with ">>"
  std::int64_t Ms = 0;  ///< from the line to the last byte of the reply
};

/// Nothing at all came back.
class ControllerSilent : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The user has asked for the end.
class ContractInterrupted : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Unlike the console's link it does not count on a prompt: a reply is over with its prompt, when
/// nothing more has come for half a second, or when its time is long up though more comes. So a
/// controller whose prompt is wrong can still be asked about everything else.
class ContractLine {
 public:
  /// `replyMs`: the longest a reply may take; twice as long is waited for.
  ContractLine(platform::EventLoop& loop, platform::SerialPort& port, int replyMs);
  ~ContractLine();
  ContractLine(const ContractLine&) = delete;
  ContractLine& operator=(const ContractLine&) = delete;

  /// Throws ControllerSilent, and ContractInterrupted.
  [[nodiscard]] Exchange Send(std::string_view line);
  /// Ends an interruption: lets the reply that it broke off arrive, and whatever else is still on
  /// its way, and drops it.
  void Settle();
  /// Lets so much time pass. Throws ContractInterrupted.
  void Sleep(int ms);

  [[nodiscard]] std::int64_t NowMs() const { return loop_.NowMs(); }
  [[nodiscard]] int ReplyMs() const { return replyMs_; }

  /// From now on every wait throws, until the line settles. Nothing after that: what was changed is
  /// being put back.
  void Interrupt() { interrupted_ = !settled_; }

 private:
  /// False when nothing came.
  [[nodiscard]] bool WaitForBytes(int ms);
  void WaitFor(int ms, const std::function<bool()>& done);

  platform::EventLoop& loop_;
  platform::SerialPort& port_;
  int replyMs_;
  std::unique_ptr<platform::Timer> timer_;
  bool expired_ = false;
  bool interrupted_ = false;
  bool settled_ = false;
  bool owed_ = false;  ///< nothing has come yet of the reply to the last line
};

}  // namespace torvane::tools

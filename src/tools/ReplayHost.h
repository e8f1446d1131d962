// A recorded controller as a program: a line, a trace, and what became of each session.
#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "simulator/ReplayController.h"
#include "simulator/ReplayTrace.h"
#include "tools/HostInput.h"
#include "tools/SimLine.h"
#include "tools/SimOptions.h"

namespace torvane::tools {

/// Replays the sessions of a trace to one console after the other. A session ends when the console
/// closes the line, or by the word `next`, as a serial device does not show that. It is over after
/// the last session, and after one that did not go as recorded.
class ReplayHost {
 public:
  /// `input` is the handle of the operator's words (`state`, `next`, `quit`), below 0 for none;
  /// what happens goes to `out`. Throws RuntimeFault where the trace or the line cannot be had,
  /// WrongUse where the trace has no such session.
  ReplayHost(const SimOptions& options, int input, std::ostream& out);

  /// Waits up to `longestMs` for something to happen and does what is due. False when it is over.
  bool Step(int longestMs);

  /// 0 where every session of the wish went as recorded, 1 otherwise.
  [[nodiscard]] int Status() const;

 private:
  void TellTrace();
  void BeginSession(std::size_t session);
  void EndSession();
  void Obey(std::string_view word);
  void Tell(const simulator::ReplayDifference& difference);
  [[nodiscard]] std::string CountText() const;
  [[nodiscard]] int WaitMs(int longestMs) const;
  void Say(std::string_view text);

  simulator::ReplayTrace trace_;
  simulator::ReplayController controller_;
  SimLine line_;
  std::ostream& out_;
  HostInput input_;
  std::chrono::steady_clock::time_point last_;
  std::size_t session_ = 0;  ///< from 0
  std::size_t end_ = 0;      ///< the session after the last one
  bool told_ = false;        ///< of the first difference
  bool good_ = true;
  bool finished_ = false;
};

/// The whole replay, until it is over; its exit status.
[[nodiscard]] int RunReplay(const SimOptions& options, int input, std::ostream& out);

}  // namespace torvane::tools

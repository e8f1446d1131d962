// The console driven without an operator: select, start, watch, picture, end.
#pragma once

#include <memory>
#include <string>

#include "platform/EventLoop.h"
#include "supervision/PollObserver.h"
#include "tools/ConsoleProgram.h"

namespace torvane::tools {

/// Exit statuses of a driven run.
namespace RunStatus {
inline constexpr int Good = 0;
inline constexpr int Refused = 1;     ///< not selected, or a warning had to be answered
inline constexpr int NotStarted = 3;  ///< the machine did not take the cycle start
}  // namespace RunStatus

/// Looks at the console from a timer, as a person would, and acts on what it sees.
///
///   WaitingForMain --main screen up--------------> Selecting
///   Selecting      --selected, or nothing to-----> Selected
///   Selecting      --refused---------------------> Ending (status Refused)
///   Selected       --the machine was seen--------> Starting
///   Starting       --machine runs----------------> Running
///   Starting       --no run within a while-------> Ending (status NotStarted)
///   Running        --machine has stopped---------> Ending
///   Ending         --pictures taken--------------> ShuttingDown, with --exit-after-run; else Idle
///   ShuttingDown   --closed----------------------> the program's end
///                  --not closed within a while---> the program's end (status Refused)
class UnattendedRun final : private supervision::PollObserver {
 public:
  UnattendedRun(ConsoleProgram& program, const TorvaneOptions& options);

 private:
  enum class Phase {
    WaitingForMain,
    Selecting,
    Selected,
    Starting,
    Running,
    Ending,
    ShuttingDown,
    Idle
  };

  // PollObserver
  void TickRead(const supervision::TickReading& tick) override;

  void Look();
  void AnswerDialogs();
  /// The file that was in hand when the first dialog came up, on standard error.
  void NameLastFile();
  void BeginSelection();
  void Select();
  void Begin();
  void PressStart();
  void WatchStart();
  void WatchRun();
  void End();
  void GiveUp();
  void Fail(int status, const std::string& sentence);
  void Enter(Phase phase);
  void TakePicture(const std::string& moment);
  void ShowStatusLine();

  ConsoleProgram& program_;
  TorvaneOptions options_;
  std::unique_ptr<platform::Timer> timer_;
  Phase phase_ = Phase::WaitingForMain;
  bool seen_ = false;  ///< a tick of the poll has come since the selection
  bool ran_ = false;
  std::int64_t enteredMs_ = 0;
  std::int64_t statusShownMs_ = 0;
  int pictures_ = 0;
  int dialogs_ = 0;
};

}  // namespace torvane::tools

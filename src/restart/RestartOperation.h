// The last step of any restart: tells the controller where to go on, waits for the operator's cycle
// start in step with the controller's lamp, and starts the run.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/Slot.h"
#include "core/System.h"
#include "link/Trio.h"
#include "partprogram/SplittingModule.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "restart/GatherState.h"
#include "restart/RestartText.h"
#include "supervision/OperatorDialogs.h"
#include "supervision/PollTrio.h"

namespace torvane::restart {

/// The state at the chosen block, and at the one after it.
struct RestartStates {
  GatherState RestartState;
  GatherState RestartNextState;
  std::int16_t Block = 0;   ///< line of the listing that was chosen, or
  std::int16_t Record = 0;  ///< record of ".drw" that was chosen on the plot; 0 none
};

/// RestartForm, as the operation sees it.
class RestartScreen {
 public:
  virtual ~RestartScreen() = default;

  /// The labels, and both panels.
  virtual void ShowRestart(const RestartLabels& labels) = 0;
  /// Text colour of CycleStartLabel, 0x00BBGGRR.
  virtual void SetCycleStartColour(std::uint32_t colour) = 0;
  /// Locks or unlocks all screens but this one.
  virtual void LockOtherForms(bool locked) = 0;
  /// Hides the form; its unload follows at once.
  virtual void HideRestart() = 0;
};

/// What the operation works with.
struct RestartParts {
  core::System& System;
  link::Trio& Trio;
  supervision::Poll& Poll;
  platform::EventLoop& Loop;
  platform::FileSystem& Files;
  supervision::OperatorDialogs& Dialogs;
  RestartStates& States;
  partprogram::SplitCycle& Split;
};

/// One opening of RestartForm.
///
///   from       event                                   to
///   Closed     the form comes up, the machine is free  Preparing
///   Closed     the form comes up, the machine is busy  Closed, after a warning
///   Preparing  Restart.tbx written, its lines sent     LampOff: "VR(91)=3", green
///   LampOff    RestartReady set                        LampOn: black
///   LampOn     RestartReady clear, not running         LampOff: green
///   LampOn     RestartReady clear, running             Starting: slot and start line
///   Preparing, LampOff, LampOn   CANCEL                Cancelled: the slot's table again
///   Starting, Cancelled          sent                  Closed
class RestartOperation {
 public:
  enum class Phase : std::uint8_t { Closed, Preparing, LampOff, LampOn, Starting, Cancelled };

  RestartOperation(const RestartParts& parts, RestartScreen& screen)
      : parts_(parts), screen_(screen) {}

  /// The form comes up. Returns when it has gone.
  void StartRestart();

  /// ExitButton. Nothing once the run has been started, or after a first press.
  void Cancel();

  /// The form has gone: the restart's state and its text are cleared, the poll goes on.
  void Unload();

  [[nodiscard]] Phase CurrentPhase() const { return phase_; }

 private:
  [[nodiscard]] bool Refused();
  void WriteRestartFile(std::string_view text);
  void SendRestartFile();
  void WaitCycleStart();
  [[nodiscard]] bool WaitLamp(Phase phase, bool lit);
  void StartRun();
  void Tick();
  void Hide();
  [[nodiscard]] bool IsCancelled() const { return phase_ == Phase::Cancelled; }
  [[nodiscard]] std::string RestartFile() const;
  [[nodiscard]] std::string SlotLine() const;

  RestartParts parts_;
  RestartScreen& screen_;
  Phase phase_ = Phase::Closed;
  std::int64_t lastTick_ = 0;
};

/// What "Restart.tbx" and the controller get, for a rehearsal as for the restart itself.
struct RestartLineSet {
  std::vector<std::string> File;      ///< Restart.tbx
  std::vector<std::string> Now;       ///< when the form comes up
  std::vector<std::string> AtStart;   ///< at the operator's cycle start
  std::vector<std::string> OnCancel;  ///< at CANCEL instead
};
[[nodiscard]] RestartLineSet RestartLineSetOf(const RestartContent& content, core::Slot slot);

}  // namespace torvane::restart

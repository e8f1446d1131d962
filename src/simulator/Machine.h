// The simulated machine: runs tables, does manual actions, and keeps the variables of the contract.
#pragma once

#include <string_view>

#include "core/Slot.h"
#include "simulator/ControllerMemory.h"
#include "simulator/KeypadLamps.h"
#include "simulator/Kinematics.h"
#include "simulator/LaserValues.h"
#include "simulator/MachineEvents.h"
#include "simulator/ManualActions.h"
#include "simulator/MessageBoard.h"
#include "simulator/PathTrace.h"
#include "simulator/Rollers.h"
#include "simulator/TableRun.h"

namespace torvane::simulator {

enum class MachineMode {
  Idle,
  Manual,       ///< an action of the command word
  RestartWait,  ///< the restart table is in force, the lamp blinks
  Restarting,   ///< started, waiting for the start line
  Running       ///< a table runs
};

/// How the modes follow each other. "start" is the operator's cycle start, "stop" the stop button.
///
///   Idle        --start, VR(91) 1 or 2, line 1 received-->  Running
///   Idle        --VR(48) of an action-->                    Manual
///   Idle        --VR(91)=3-->                               RestartWait
///   Manual      --done, VR(48)=0 of a jog, hold, stop-->    Idle
///   RestartWait --VR(91) other than 3-->                    Idle
///   RestartWait --start-->                                  Restarting
///   Restarting  --start line, block found-->                Running: one way with the beam off to
///                                                           the place, then it goes on from there
///   Restarting  --stop-->                                   Idle
///   Running     --end row, stop-->                          Idle
///
/// Feed hold lies over every mode: held in a cycle, nothing moves and the run time stands still
/// until release or cycle start; held in Idle, actions and the cycle start are refused. A program
/// stop, a missing line and a line not yet received are waits inside Running: the cycle is open
/// and counts as running, so that the trace of a part is not wiped at each stop. Back in Idle with
/// VR(91) at 3 the machine goes to RestartWait at once. An error holds a running cycle.
class Machine final : public MemoryListener {
 public:
  Machine(ControllerMemory& memory, MachineOptions options);

  void SetListener(EventListener listener) { listener_ = std::move(listener); }
  /// Hears every piece of path that a cycle has run; those in hand are reported at a hold and a
  /// stop.
  void OnPath(PathListener listener) { trace_.SetListener(std::move(listener)); }

  /// Lets time pass. The result does not depend on how the time is cut into pieces.
  void Advance(double seconds);

  // The operator panel.
  void CycleStart();
  void FeedHold();
  void Release();
  void Stop();
  /// A code of IO.msg, from 1 to 64; others are ignored. A running cycle is held.
  void RaiseError(int code);
  /// A bit of Logic.msg, from 0 to 30; others are ignored.
  void RaiseBit(int bit);
  /// Takes codes and raised bits away; a hold stays.
  void ClearMessages();
  void AllowBeam(bool allowed);
  /// The cycle is stopped once it has come `along` mm along the element of `record` (numbered as in
  /// ".krw"), or at once where it is beyond that in the record. Stands until it strikes or a cycle
  /// comes to its end; a further call takes its place.
  void StopAt(int record, double along);
  /// Bit 8192 of the status word by itself: a cycle that is open though nothing runs.
  void ShowCycleBit(bool on);
  /// References end half-way, with a message, until they are let again.
  void LetReferencesFail(bool fail) { referencesFail_ = fail; }
  /// A variable of the keypad takes a value by itself, in so many seconds. False for no variable.
  bool ChangeLater(int number, double value, double seconds) {
    return lamps_.Later(number, value, seconds);
  }
  /// No line has come for a while: tells of a jog that nobody watches, once for each.
  void LineQuiet();
  /// Switched off and on again: nothing is known any more but the position. The memory must have
  /// been put to its values before.
  void PowerOn();

  [[nodiscard]] MachineMode Mode() const { return mode_; }
  [[nodiscard]] bool Held() const { return held_; }
  [[nodiscard]] bool AwaitingStart() const;
  [[nodiscard]] bool BeamOn() const;
  [[nodiscard]] bool BeamAllowed() const { return beamAllowed_; }
  [[nodiscard]] const Position& At() const { return at_; }
  [[nodiscard]] int Line() const { return run_.Line(); }
  /// The rate of the motion in hand, mm per minute.
  [[nodiscard]] double FeedNow() const;

  // MemoryListener
  void VariableWritten(int number, double before) override;
  void TableWritten(int index, int count) override;
  void RestartMarkWritten(int linesSent) override { restartMark_ = linesSent; }
  void OutputWritten(int output, double value) override;
  bool RestartRequested(core::Slot slot, std::string_view fraction) override;

 private:
  struct StopPoint {
    int Record = 0;
    double Along = 0;  ///< mm
  };

  [[nodiscard]] bool InCycle() const;
  [[nodiscard]] unsigned BarredStates() const;
  [[nodiscard]] double Override() const;
  void Tell(EventKind kind, int value = 0) const;

  // Time.
  void FetchWork();
  void FetchRow();
  void AwaitRow(RowOutcome outcome);
  void ShowWait(RowOutcome wait);
  [[nodiscard]] double PassTime(double seconds);
  [[nodiscard]] double Move(double seconds);
  [[nodiscard]] bool OwnPath(const Task& task, const StopPoint& point) const;
  /// Seconds up to the stop point, no more than `seconds`; below 0 where it has been passed.
  [[nodiscard]] double UpToStopPoint(const Task& task, double seconds) const;
  void Trace(const Task& before, const Position& from, double done);

  // Changes of mode.
  void StartCycle();
  void FinishCycle();
  void CountSheet();
  void GoIdle();
  void FinishAction();
  void StartRestart();
  void ContinueAt(core::Slot slot, std::string_view fraction);
  void RestartLost();
  void Refuse(int word);
  void RefuseStart(EventKind why);
  void ObeyCommand(double before);
  void SelectTable();
  void BeginAction(const ManualAction& action);
  void ShortenReference();

  // The variables that the front end reads.
  void Publish();
  void PublishStatus();
  void PublishPositions();

  ControllerMemory& memory_;
  MachineOptions options_;
  EventListener listener_;
  MessageBoard messages_;
  TableRun run_;
  Mover mover_;
  PathTrace trace_;
  std::optional<StopPoint> stopPoint_;
  LaserValues laser_;
  Rollers rollers_;
  KeypadLamps lamps_;
  Position at_;
  Position actionFrom_;  ///< where the action in hand began
  MachineMode mode_ = MachineMode::Idle;
  const ManualAction* action_ = nullptr;
  std::optional<RestartText> restartText_;
  int restartMark_ = 0;  ///< lines sent, as the restart table says; 0 none
  int runs_ = 0;         ///< cycles started since switching on
  double runSeconds_ = 0;
  double lampSeconds_ = 0;
  RowOutcome wait_ = RowOutcome::Executed;  ///< Waiting or Missing while no line can be taken
  bool held_ = false;
  bool cycleBit_ = false;
  bool referencesFail_ = false;
  bool jogStep_ = false;  ///< the jog in hand is a step, which goes on to its end by itself
  bool jogTold_ = false;  ///< that the jog in hand is not watched
  bool beamAllowed_ = true;
};

}  // namespace torvane::simulator

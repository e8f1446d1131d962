#include "simulator/Machine.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/MachineState.h"
#include "platform/RuntimeFault.h"

namespace torvane::simulator {

namespace {

constexpr double HighestOverride = 200;  // percent
constexpr int RestartTable = 3;
constexpr double Instant = 1e-12;  // s; shorter rests of time are none

}  // namespace

Machine::Machine(ControllerMemory& memory, MachineOptions options)
    : memory_(memory),
      options_(std::move(options)),
      messages_(memory),
      run_(memory, options_),
      rollers_(memory, options_),
      lamps_(memory) {
  memory_.SetListener(this);
  Publish();
}

bool Machine::InCycle() const {
  return mode_ == MachineMode::Running || mode_ == MachineMode::Restarting;
}

bool Machine::AwaitingStart() const {
  return mode_ == MachineMode::Running && mover_.Current() != nullptr &&
         mover_.Current()->What == Task::Kind::AwaitStart;
}

bool Machine::BeamOn() const {
  return mode_ == MachineMode::Running && beamAllowed_ && !held_ && mover_.Current() != nullptr &&
         mover_.Current()->What == Task::Kind::Cut;
}

double Machine::Override() const {
  return std::clamp(memory_.Variable(Vr::FeedRequest), 0.0, HighestOverride);
}

double Machine::FeedNow() const { return held_ ? 0.0 : mover_.RateNow(Override()); }

void Machine::Tell(EventKind kind, int value) const {
  if (listener_) listener_({kind, value});
}

// ---- time ----

void Machine::Advance(double seconds) {
  if (!(seconds >= 0)) return;
  FetchWork();
  double left = seconds;
  while (left > Instant) {
    left -= PassTime(left);
    FetchWork();
  }
  Publish();
}

double Machine::PassTime(double seconds) {
  const bool cutting = BeamOn();
  const double next = lamps_.NextIn();
  if (next > Instant) seconds = std::min(seconds, next);
  const double used = held_ || mover_.Empty() ? seconds : Move(seconds);
  if (InCycle() && !held_ && !AwaitingStart()) runSeconds_ += used;
  lampSeconds_ += used;
  messages_.Advance(used);
  rollers_.Advance(used, listener_);
  lamps_.Advance(used, cutting, listener_);
  return used;
}

double Machine::Move(double seconds) {
  const Task task = *mover_.Current();
  const std::size_t tasks = mover_.Size();
  const Position from = at_;
  const double limit = UpToStopPoint(task, seconds);
  const double used = limit > 0 ? mover_.Work(limit, Override(), at_) : 0.0;
  const bool finished = mover_.Size() < tasks;
  if (used > 0 || finished) {
    Trace(task, from, finished ? task.Path.Length() : mover_.Current()->Done);
  }
  const bool reached = limit < seconds && (limit <= 0 || finished || used >= limit);
  const bool last = finished && stopPoint_ && OwnPath(task, *stopPoint_);
  if (reached || last) {
    Tell(EventKind::StopPointReached, stopPoint_->Record);
    stopPoint_.reset();
    Stop();
  }
  return used;
}

bool Machine::OwnPath(const Task& task, const StopPoint& point) const {
  return mode_ == MachineMode::Running && task.Moves() && !task.Approach &&
         run_.Record() == point.Record;
}

double Machine::UpToStopPoint(const Task& task, double seconds) const {
  if (!stopPoint_ || !OwnPath(task, *stopPoint_)) return seconds;
  constexpr double SecondsPerMinute = 60;
  const double rest = stopPoint_->Along - task.Done;
  const double rate = mover_.RateNow(Override()) / SecondsPerMinute;
  if (rest <= 0) return 0;
  return rate > 0 ? std::min(seconds, rest / rate) : seconds;
}

void Machine::Trace(const Task& before, const Position& from, double done) {
  if (!trace_.Wanted() || mode_ != MachineMode::Running || !before.Moves()) return;
  PathPiece piece;
  piece.Place = {runs_, run_.Line(), run_.Record(), run_.SkipLevel()};
  piece.Cut = before.What == Task::Kind::Cut;
  piece.Approach = before.Approach;
  piece.From = from;
  piece.To = at_;
  piece.S0 = before.Done;
  piece.S1 = done;
  piece.Beam = piece.Cut && beamAllowed_;
  trace_.Add(piece);
}

void Machine::StopAt(int record, double along) {
  stopPoint_ = StopPoint{record, along};
  Tell(EventKind::StopPointSet, record);
}

void Machine::FetchWork() {
  if (held_) return;
  if (mode_ == MachineMode::Manual && mover_.Empty()) FinishAction();
  while (mode_ == MachineMode::Running && mover_.Empty()) {
    FetchRow();
    if (wait_ != RowOutcome::Executed) return;
  }
}

void Machine::FetchRow() {
  laser_.Settle(memory_);
  const RowOutcome outcome = run_.Next(at_, mover_);
  if (const int line = run_.TakePathRefusal(); line > 0) Tell(EventKind::PathRefused, line);
  AwaitRow(outcome);
  if (wait_ != RowOutcome::Executed) return;
  memory_.SetVariable(Vr::RunningLine, run_.Line());
  if (outcome == RowOutcome::Finished) return FinishCycle();
  if (AwaitingStart()) {
    messages_.Set(LogicBit::ProgramStop, true);
    Tell(EventKind::ProgramStop, run_.Line());
  }
}

void Machine::AwaitRow(RowOutcome outcome) {
  const bool stuck = outcome == RowOutcome::Waiting || outcome == RowOutcome::Missing;
  const RowOutcome wanted = stuck ? outcome : RowOutcome::Executed;
  if (wanted == wait_) return;
  if (wanted == RowOutcome::Waiting) Tell(EventKind::WaitingForTable, run_.Line());
  if (wanted == RowOutcome::Missing) Tell(EventKind::TableIncomplete, run_.Line() + 1);
  if (wanted == RowOutcome::Executed) Tell(EventKind::TableArrived, run_.Line());
  ShowWait(wanted);
}

void Machine::ShowWait(RowOutcome wait) {
  if (wait == wait_) return;
  wait_ = wait;
  messages_.Set(LogicBit::WaitingForTable, wait_ == RowOutcome::Waiting);
  messages_.Set(LogicBit::TableIncomplete, wait_ == RowOutcome::Missing);
}

// ---- the operator panel ----

void Machine::CycleStart() {
  if (messages_.Code() > 0 || mode_ == MachineMode::Manual || (held_ && !InCycle())) {
    RefuseStart(EventKind::StartRefused);
  } else if (held_) {
    Release();
  } else if (AwaitingStart()) {
    mover_.Drop();
    messages_.Set(LogicBit::ProgramStop, false);
    FetchWork();
  } else if (mode_ == MachineMode::RestartWait) {
    StartRestart();
  } else if (mode_ == MachineMode::Idle) {
    StartCycle();
  }
  Publish();
}

void Machine::FeedHold() {
  if (held_) return;
  held_ = true;
  trace_.Flush();
  Tell(EventKind::Held);
  if (mode_ == MachineMode::Manual) FinishAction();
  Publish();
}

void Machine::Release() {
  if (!held_ || messages_.Code() > 0) return;
  held_ = false;
  Tell(EventKind::Released);
  Publish();
}

void Machine::Stop() {
  if (mode_ == MachineMode::Manual) FinishAction();
  if (InCycle()) {
    held_ = false;
    Tell(EventKind::CycleStopped, run_.Line());
    GoIdle();
  }
  Publish();
}

void Machine::RaiseError(int code) {
  constexpr int HighestCode = 64;
  if (code < 1 || code > HighestCode) return;
  messages_.SetCode(code);
  Tell(EventKind::ErrorRaised, code);
  if (mode_ != MachineMode::Idle && mode_ != MachineMode::RestartWait) FeedHold();
  Publish();
}

void Machine::RaiseBit(int bit) {
  if (bit < 0 || bit >= LogicBit::Count) return;
  messages_.RaiseBit(bit);
  Tell(EventKind::BitRaised, bit);
  Publish();
}

void Machine::ClearMessages() {
  messages_.Clear();
  Tell(EventKind::MessagesCleared);
  Publish();
}

void Machine::ShowCycleBit(bool on) {
  cycleBit_ = on;
  Publish();
}

void Machine::LineQuiet() {
  if (jogTold_ || action_ == nullptr || !action_->Jog) return;
  jogTold_ = true;
  Tell(EventKind::JogUnwatched);
}

void Machine::PowerOn() {
  trace_.Flush();
  laser_ = {};
  rollers_.PowerOn();
  lamps_.PowerOn();
  cycleBit_ = false;
  mover_.Clear();
  messages_.PowerOn();
  run_.PowerOn();
  mode_ = MachineMode::Idle;
  action_ = nullptr;
  restartText_.reset();
  stopPoint_.reset();
  restartMark_ = 0;
  runSeconds_ = 0;
  wait_ = RowOutcome::Executed;
  held_ = false;
  Tell(EventKind::PowerCycled);
  Publish();
}

void Machine::AllowBeam(bool allowed) {
  beamAllowed_ = allowed;
  Tell(EventKind::BeamAllowed, allowed ? 1 : 0);
  Publish();
}

void Machine::Refuse(int word) {
  messages_.RaiseFor(LogicBit::Refused, options_.RefusalSeconds);
  Tell(EventKind::ActionRefused, word);
}

void Machine::RefuseStart(EventKind why) {
  messages_.RaiseFor(LogicBit::Refused, options_.RefusalSeconds);
  Tell(why);
}

// ---- changes of mode ----

void Machine::StartCycle() {
  const double table = memory_.Variable(Vr::TableInForce);
  const bool named = table == 1 || table == 2;
  if (!named || !run_.Begin(static_cast<int>(table))) {
    messages_.RaiseFor(LogicBit::TableIncomplete, options_.RefusalSeconds);
    return RefuseStart(EventKind::TableGone);
  }
  mode_ = MachineMode::Running;
  ++runs_;
  runSeconds_ = 0;
  restartMark_ = 0;
  memory_.SetVariable(Vr::RunningLine, 0);
  messages_.Set(LogicBit::SheetCountReached, false);
  Tell(EventKind::CycleStarted, run_.Slot().Number());
  if (run_.PathMissing()) Tell(EventKind::PathMissing);
  FetchWork();
}

void Machine::FinishCycle() {
  if (stopPoint_) Tell(EventKind::StopPointMissed, stopPoint_->Record);
  stopPoint_.reset();
  CountSheet();
  Tell(EventKind::CycleFinished, memory_.Word(Vr::SheetsCompleted));
  GoIdle();
}

void Machine::CountSheet() {
  const double completed = memory_.Variable(Vr::SheetsCompleted) + 1;
  memory_.SetVariable(Vr::SheetsCompleted, completed);
  const double required = memory_.Variable(Vr::SheetsRequired);
  // The batch counts only where both parts and sheets were asked for.
  if (memory_.Variable(Vr::PartsRequired) == 0 || required == 0 || completed < required) return;
  messages_.Set(LogicBit::SheetCountReached, true);
  Tell(EventKind::SheetCountReached);
}

void Machine::GoIdle() {
  trace_.Flush();
  mover_.Clear();
  ShowWait(RowOutcome::Executed);
  messages_.Set(LogicBit::ProgramStop, false);
  restartText_.reset();
  mode_ = MachineMode::Idle;
  if (memory_.Variable(Vr::TableInForce) == RestartTable) SelectTable();
}

void Machine::FinishAction() {
  const ManualAction* done = std::exchange(action_, nullptr);
  const int word = done != nullptr ? done->Word : 0;
  memory_.SetVariable(Vr::Command, 0);
  if (done != nullptr && done->Jog && listener_) {
    listener_({EventKind::JogEnded, word, Distance(actionFrom_, at_)});
  }
  if (done != nullptr && done->Reference && referencesFail_) {
    messages_.RaiseBit(LogicBit::NotReferenced);
    Tell(EventKind::ReferenceFailed, word);
  } else {
    Tell(EventKind::ActionDone, word);
  }
  GoIdle();
}

void Machine::StartRestart() {
  mode_ = MachineMode::Restarting;
  ++runs_;
  runSeconds_ = 0;
  Tell(EventKind::RestartStarted);
  if (options_.Files == nullptr || options_.RootDirectory.empty()) return;
  try {
    restartText_ = ReadRestartText(*options_.Files, options_.RootDirectory);
  } catch (const platform::RuntimeFault&) {
    restartText_.reset();  // as where there is none: the line that was stopped is run again
  }
}

bool Machine::RestartRequested(core::Slot slot, std::string_view fraction) {
  if (mode_ != MachineMode::Restarting) return false;
  try {
    ContinueAt(slot, fraction);
  } catch (const platform::RuntimeFault&) {
    RestartLost();
  }
  Publish();
  return true;
}

void Machine::ContinueAt(core::Slot slot, std::string_view fraction) {
  RestartPoint point{std::max(run_.Reached(slot), 1), 0};
  if (restartText_) {
    const auto found = FindRestartPoint(*options_.Files, options_.RootDirectory,
                                        {slot, fraction, *restartText_, run_.Reached(slot)});
    if (!found) return RestartLost();
    point = *found;
  }
  run_.Continue(slot, point, std::exchange(restartMark_, 0));
  if (run_.PathMissing()) Tell(EventKind::PathMissing);
  mode_ = MachineMode::Running;
  memory_.SetVariable(Vr::RunningLine, point.Line);
  Tell(EventKind::RestartContinues, point.Line);
}

void Machine::RestartLost() {
  messages_.RaiseFor(LogicBit::RestartUnknown, options_.RefusalSeconds);
  Tell(EventKind::RestartUnknown);
  GoIdle();
}

// ---- what the front end writes ----

void Machine::VariableWritten(int number, double before) {
  laser_.Written(number, memory_.Variable(number));
  switch (number) {
    case Vr::Command:
      ObeyCommand(before);
      break;
    case Vr::TableInForce:
      SelectTable();
      break;
    case Vr::LogicMessages:
      rollers_.MessagesWritten(before, listener_);
      break;
    case Vr::FrontEndUp:
      if ((memory_.Word(Vr::FrontEndUp) & 1) != 0) Tell(EventKind::FrontEndUp);
      break;
    default:
      break;
  }
  Publish();
}

void Machine::TableWritten(int index, int count) {
  run_.Written(index, count, mode_ == MachineMode::Running);
  FetchWork();
  Publish();
}

void Machine::OutputWritten(int output, double) { Tell(EventKind::OutputSet, output); }

void Machine::SelectTable() {
  const double table = memory_.Variable(Vr::TableInForce);
  if (table == 1 || table == 2) {
    if (InCycle()) return;
    // The line that the last run reached is none of the program that starts next. A front end that
    // still read it would fill the table up to there, over the first lines of the new program.
    memory_.SetVariable(Vr::RunningLine, 0);
    if (mode_ == MachineMode::RestartWait) {
      mode_ = MachineMode::Idle;  // the restart was given up: no other program has come
      restartMark_ = 0;
    } else {
      run_.Selected(static_cast<int>(table));
    }
  } else if (table == RestartTable && mode_ == MachineMode::Idle) {
    mode_ = MachineMode::RestartWait;
    lampSeconds_ = 0;
    Tell(EventKind::RestartWaiting);
  }
}

unsigned Machine::BarredStates() const {
  const bool busy = InCycle() || mode_ == MachineMode::RestartWait;
  return (busy ? Bar::Running : 0U) | (held_ ? Bar::Held : 0U) |
         (messages_.InError() ? Bar::Error : 0U);
}

void Machine::ObeyCommand(double before) {
  const double word = memory_.Variable(Vr::Command);
  const bool jogging = action_ != nullptr && action_->Jog;
  if (word == 0) {
    Tell(EventKind::JogStopWord);
    if (jogging && !jogStep_) return FinishAction();
    memory_.SetVariable(Vr::Command, action_ != nullptr ? before : 0.0);
    return;
  }
  const ManualAction* wanted = FindAction(word);
  if (wanted != nullptr && wanted->Jog) Tell(EventKind::JogWord, wanted->Word);
  if (action_ != nullptr && word == action_->Word) return;  // a key that repeats
  const bool replaces = jogging && wanted != nullptr && wanted->Jog;
  if (wanted == nullptr || (wanted->Barred & BarredStates()) != 0 ||
      (action_ != nullptr && !replaces)) {
    memory_.SetVariable(Vr::Command, action_ != nullptr ? action_->Word : 0.0);
    return Refuse(static_cast<int>(std::clamp(word, -1e6, 1e6)));
  }
  if (replaces) FinishAction();
  BeginAction(*wanted);
}

void Machine::BeginAction(const ManualAction& action) {
  memory_.SetVariable(Vr::Command, action.Word);
  action_ = &action;
  actionFrom_ = at_;
  jogTold_ = false;
  jogStep_ = memory_.Variable(Vr::JogBySteps) != 0;
  mode_ = MachineMode::Manual;
  action.Plan(action, {memory_, options_, at_}, mover_);
  if (action.Reference && referencesFail_) ShortenReference();
  Tell(EventKind::ActionStarted, action.Word);
}

void Machine::ShortenReference() {
  const Segment whole = mover_.Current()->Path;
  mover_.Clear();
  const Segment half = Segment::Line(at_, whole.At(whole.Length() / 2));
  mover_.Add(Task::Travelling(half, options_.ReferenceRate));
}

}  // namespace torvane::simulator

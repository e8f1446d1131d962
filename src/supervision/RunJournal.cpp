#include "supervision/RunJournal.h"

#include <algorithm>
#include <array>
#include <utility>

#include "supervision/ProgramDigest.h"

namespace torvane::supervision {

namespace {

/// Records of the compensated path that a tick reads of a run's table: less than a millisecond.
constexpr int RecordsATick = 2000;

/// A message that came up this long before a stop is its cause, ms.
constexpr std::int64_t CauseMs = 1000;

/// The run time counts as set back where it has fallen by more than this, s.
constexpr double SetBackSeconds = 0.5;

/// What a line can hold of it; 0 of what is no number. A reply or a file may hold anything.
double Bounded(double figure) { return std::min(std::max(0.0, figure), double{MostOfAFigure}); }

/// So many ticks after its first one a run may still show the line of the run before. After a
/// restart a lower one is where it begins, and no next pass.
constexpr std::uint64_t LateLineTicks = 3;

constexpr const char* StopText = "stop";
constexpr const char* LinkLostText = "link lost";

}  // namespace

RunJournal::Reaction RunJournal::ReactionTo(State from, Sight sight) {
  using Journal = RunJournal;
  using enum State;
  constexpr Reaction Idles = {&Journal::Nothing, Idle};
  constexpr Reaction Falls = {&Journal::Fall, Fallen};
  constexpr Reaction FallsStillHeld = {&Journal::FallStillHeld, Fallen};
  constexpr Reaction Runs = {&Journal::GoOn, Running};
  constexpr Reaction Stands = {&Journal::Stand, Stopped};
  constexpr Reaction Loses = {&Journal::Lose, Blind};
  constexpr Reaction StaysFallen = {&Journal::Nothing, Fallen};
  constexpr Reaction Stays = {&Journal::Nothing, Blind};
  constexpr Reaction Opens = {&Journal::Begin, Running};
  constexpr Reaction OpensStopped = {&Journal::BeginStopped, Stopped};
  constexpr Reaction StaysStopped = {&Journal::StayStopped, Stopped};
  constexpr Reaction FallsHeld = {&Journal::FallHeld, Fallen};
  constexpr Reaction Closes = {&Journal::CloseFallen, Idle};
  constexpr Reaction Waits = {&Journal::Nothing, Uncounted};
  // to Unknown, Runs, Stands, Held, Away, Editing
  using Reactions = std::array<Reaction, 6>;
  static constexpr std::array<Reactions, 6> Table = {
      Reactions{Idles, Opens, OpensStopped, Idles, Idles, Idles},          // Idle
      Reactions{Loses, Runs, Stands, FallsHeld, Falls, Falls},             // Running
      Reactions{Loses, Runs, StaysStopped, FallsStillHeld, Falls, Falls},  // Stopped
      Reactions{StaysFallen, Runs, Stands, StaysFallen, Closes, Waits},    // Fallen
      Reactions{Waits, Runs, Stands, Waits, Closes, Waits},                // Uncounted
      Reactions{Stays, Runs, Stands, FallsStillHeld, Falls, Falls},        // Blind
  };
  return Table[static_cast<std::size_t>(from)][static_cast<std::size_t>(sight)];
}

void RunJournal::TickRead(const TickReading& tick) {
  if (ticks_++ == 0) store_.TakeUp();
  tick_ = tick;
  const Sight sight = Look();
  const Reaction reaction = ReactionTo(state_, sight);
  (this->*reaction.Do)();
  state_ = reaction.To;
  if (sight < Sight::Held) return;
  secondsAtRest_ = tick_.RunSeconds;
  if (sight == Sight::Held) return;
  seenIdle_ = true;
  lineBefore_ = parts_.System.State.RunningBlock;
  restart_.reset();
}

/// What the tick in hand sees of the machine.
RunJournal::Sight RunJournal::Look() {
  const core::MachineState& state = parts_.System.State;
  if (tick_.Blind) return Sight::Unknown;
  const bool inError = state.MachineInError != 0;
  if (inError && !inError_) errorMs_ = parts_.Loop.NowMs();
  inError_ = inError;
  if (!state.MachineRunning) {
    programStopTicks_ = 0;
    if (state.MachineFeedhold || state.MachineCycleBit) return Sight::Held;
    return parts_.System.Console.BatchEditing ? Sight::Editing : Sight::Away;
  }
  // A stop that is skipped may be seen once, on the way.
  const bool atStop =
      state_ != State::Idle && !LineIsOld(state.RunningBlock) &&
      table_.MadeBy(state.RunningBlock).Code == partprogram::RecordCode::ProgramStop;
  programStopTicks_ = atStop ? std::min(programStopTicks_ + 1, 2) : 0;
  return state.MachineFeedhold || programStopTicks_ == 2 ? Sight::Stands : Sight::Runs;
}

bool RunJournal::AnotherRun() const {
  if (state_ == State::Uncounted) return true;
  if (state_ == State::Fallen && (restart_ || OtherProgram())) return true;
  const bool doubtful = state_ == State::Fallen || state_ == State::Blind;
  return doubtful && secondsSeen_ > double{tick_.RunSeconds} + SetBackSeconds;
}

/// What is in force is not what ran. A slot that holds nothing starts nothing either.
bool RunJournal::OtherProgram() const {
  const core::System& system = parts_.System;
  const core::ActiveProgram& program = system.Programs[slot_];
  if (system.ActiveSlot != slot_) return true;
  if (!program.Selected) return false;
  if (program.DirectoryName != run_.Directory || program.ProgramName != run_.Program) return true;
  const std::string digest = SlotDigest(parts_.Files, system.Directories, slot_);
  return !digest.empty() && !run_.Digest.empty() && digest != run_.Digest;
}

/// It stands, and is not closed yet.
bool RunJournal::HasFallen() const { return state_ == State::Fallen || state_ == State::Uncounted; }

bool RunJournal::EndReached() const {
  return OwnSheet() || (tableLines_ > 0 && line_ >= tableLines_);
}

/// The sheet that the end of the run in hand completes has been counted.
bool RunJournal::OwnSheet() const { return sheetTick_ && *sheetTick_ >= doubtTick_; }

// ---- the work of the table ----

void RunJournal::Begin() {
  OpenRun();
  Note(RunEnd::ConsoleEnded);
}

void RunJournal::BeginStopped() {
  OpenRun();
  AddStop(CauseText());
}

void RunJournal::GoOn() {
  if (AnotherRun()) {
    CloseFallen();
    return Begin();
  }
  Follow(true);
  if (state_ != State::Running || parts_.Loop.NowMs() - notedMs_ >= NoteAgainMs) {
    Note(RunEnd::ConsoleEnded);
  }
}

void RunJournal::Stand() {
  if (AnotherRun()) {
    CloseFallen();
    return BeginStopped();
  }
  Follow(true);
  AddStop(CauseText());
}

/// The operator may have the messages read only now.
void RunJournal::StayStopped() {
  Follow(true);
  if (tick_.Messages.empty() || run_.Stops.empty()) return;
  std::string& cause = run_.Stops.back().Cause;
  if (cause.find(": ") != std::string::npos) return;
  cause.append(": ").append(tick_.Messages);
  Note(RunEnd::ConsoleEnded);
}

void RunJournal::Lose() {
  fallen_.reset();
  doubtTick_ = ticks_ - 1;
  ListStop(LinkLostText);
  Note(RunEnd::LinkLost);
}

void RunJournal::Fall() {
  FollowFall();
  fallCause_ = CauseText();
  NoteFallen();
}

void RunJournal::FallStillHeld() {
  FollowFall();
  NoteFallen();
}

/// A hold is a stop beside the one that ends the run. An open cycle alone is the end of the run
/// already, or that stop.
void RunJournal::FallHeld() {
  FollowFall();
  const bool held = parts_.System.State.MachineFeedhold;
  if (held || !EndReached()) {
    ListStop(CauseText());
    endListed_ = !held;
  }
  NoteFallen();
}

void RunJournal::CloseFallen() {
  const RunEnd ended = EndOfFall();
  if (ended == RunEnd::Stop && !endListed_) ListStop(fallCause_);
  Close(ended);
}

// ---- how it fell ----

void RunJournal::FollowFall() {
  unseen_ = state_ == State::Blind;
  if (!unseen_) doubtTick_ = ticks_ - 2;
  Follow(false);
  fallCause_ = StopText;
  endListed_ = false;
}

RunEnd RunJournal::EndOfFall() const {
  if (EndReached()) return RunEnd::End;
  return unseen_ || state_ == State::Blind ? RunEnd::LinkLost : RunEnd::Stop;
}

/// With the stop that closing it would list: it may still go on, and then there was none.
void RunJournal::NoteFallen() {
  const RunEnd ended = EndOfFall();
  const bool lists = ended == RunEnd::Stop && !endListed_;
  if (lists) ListStop(fallCause_);
  Note(ended);
  fallen_ = run_;
  if (lists) TakeBackStop();
}

/// What goes on is another run than the one that fell: the line of that one is what it was then.
void RunJournal::PartFromFallen() {
  run_ = fallen_.value_or(run_);
  WriteLine();
  if (state_ == State::Stopped) return BeginStopped();
  Begin();
}

// ---- the run under way ----

void RunJournal::OpenRun() {
  const core::System& system = parts_.System;
  slot_ = system.ActiveSlot;
  const core::ActiveProgram& program = system.Programs[slot_];
  const bool found = !seenIdle_;
  seenIdle_ = true;
  run_ = {};
  run_.Number = store_.NextNumber();
  run_.Start = parts_.Clock.Now();
  run_.Begin = found ? RunBegin::Found : RunBegin::Start;
  run_.Slot = slot_.Number();
  tableLines_ = program.TableLines;
  table_ = {};
  if (program.Selected) {
    run_.Directory = program.DirectoryName;
    run_.Program = program.ProgramName;
    run_.Material = program.Material;
    run_.Digest = SlotDigest(parts_.Files, system.Directories, slot_);
    table_ = CutTable(parts_.Files, system.Directories, slot_);
  }
  line_ = baseLine_ = programStopTicks_ = 0;
  passes_ = 0;
  uncounted_ = 0;
  unseen_ = false;
  fallen_.reset();
  sheetTick_.reset();
  readTick_.reset();
  lineMayBeOld_ = !found && lineBefore_ > 0 && system.State.RunningBlock == lineBefore_;
  oldUntil_ = ticks_ + LateLineTicks;
  baseWanted_ = found;
  baseUntil_ = 0;
  base_ = {system.State.XPosition, system.State.YPosition};
  secondsSeen_ = 0;
  setBackSeen_ = false;
  secondsAreOld_ = !found && tick_.RunSeconds > 0 && tick_.RunSeconds == secondsAtRest_;
  secondsBefore_ = found ? tick_.RunSeconds : 0;
  if (restart_) MarkRestart(RestartPlace(*restart_));
  Follow(true);
}

/// What a tick in which the controller was heard says of the run. One that stands and knows of no
/// line may have been switched off meanwhile: its positions count from where it came up.
void RunJournal::Follow(bool running) {
  const core::MachineState& state = parts_.System.State;
  table_.Read(RecordsATick);
  run_.End = parts_.Clock.Now();
  if (running || state.RunningBlock > 0) {
    run_.Last.X = state.XPosition;
    run_.Last.Y = state.YPosition;
  }
  FollowLine(state.RunningBlock, running);
  if (!parts_.System.Programs[slot_].Selected) return;  // the run time is not asked for then
  FollowSeconds(tick_.RunSeconds, running);
}

/// A controller may clear the run time a moment after the bit, and again when a run has ended.
/// Where it is set back while the machine runs, two ticks in a row, no tick has seen the run before
/// end.
void RunJournal::FollowSeconds(double seconds, bool running) {
  if (secondsAreOld_ && seconds == secondsAtRest_) return;
  secondsAreOld_ = false;
  const bool setBack = running && secondsSeen_ > seconds + SetBackSeconds;
  if (std::exchange(setBackSeen_, setBack) && setBack) {
    secondsBefore_ -= std::exchange(secondsSeen_, 0);
    setBackSeen_ = false;
  }
  secondsSeen_ = std::max(secondsSeen_, seconds);
  run_.Seconds = Bounded(secondsSeen_ - secondsBefore_);
}

/// A controller may set its counter a moment after the bit. Where that is over, the run is in the
/// line in which the one before was stopped; but none begins where a program ends.
bool RunJournal::LineIsOld(int line) const {
  return lineMayBeOld_ && line == lineBefore_ && (ticks_ <= oldUntil_ || line + 1 >= tableLines_);
}

/// A controller may set its counter back to 0 when a run has ended. That of a restart may come
/// after the line of the stop has been seen once more.
void RunJournal::FollowLine(int line, bool running) {
  if (line < 1 || LineIsOld(line)) return;
  const bool mayHaveBeenOld = std::exchange(lineMayBeOld_, lineMayBeOld_ && line == lineBefore_);
  const bool baseLate = line < baseLine_ && ticks_ <= baseUntil_;
  if (std::exchange(baseWanted_, false) || baseLate) {
    baseLine_ = line;
  } else if (running && line < line_ && !mayHaveBeenOld) {
    NextPass();
  }
  line_ = line;
  run_.Last.Record = line;
  const int block = table_.MadeBy(line).Block;
  if (block > 0) run_.Last.Block = block;  // the end line has none
}

/// The end of the one before may have been overlooked: its sheet is counted all the same.
void RunJournal::NextPass() {
  ++uncounted_;
  if (line_ + 1 < tableLines_) return;
  passes_ += table_.Whole() - table_.CutUpTo(baseLine_, base_.X, base_.Y);
  baseLine_ = 0;
}

std::string RunJournal::CauseText() const {
  const core::MachineState& state = parts_.System.State;
  std::string cause = StopText;
  if (programStopTicks_ == 2) cause = "program stop";
  if (state.MachineFeedhold) cause = "feed hold";
  const bool error = inError_ && parts_.Loop.NowMs() - errorMs_ <= CauseMs;
  if (error && programStopTicks_ < 2) cause = "error";
  if (!tick_.Messages.empty()) cause.append(": ").append(tick_.Messages);
  return cause;
}

void RunJournal::AddStop(const std::string& cause) {
  ListStop(cause);
  Note(RunEnd::ConsoleEnded);
}

void RunJournal::ListStop(const std::string& cause) {
  ++run_.StopCount;
  if (run_.Stops.size() < MostStops) run_.Stops.push_back({run_.End, run_.Last, cause});
}

void RunJournal::TakeBackStop() {
  --run_.StopCount;
  if (run_.Stops.size() > static_cast<std::size_t>(run_.StopCount)) run_.Stops.pop_back();
}

double RunJournal::LengthNow() const {
  const double before = baseLine_ > 0 ? table_.CutUpTo(baseLine_, base_.X, base_.Y) : 0;
  const double upTo =
      run_.Ended == RunEnd::End ? table_.Whole() : table_.CutUpTo(line_, run_.Last.X, run_.Last.Y);
  return Bounded(passes_ + upTo - before);
}

void RunJournal::Note(RunEnd ended) {
  run_.Ended = ended;
  run_.Length = LengthNow();
  store_.NoteRun(run_);
  notedMs_ = parts_.Loop.NowMs();
}

void RunJournal::Close(RunEnd ended) {
  table_.ReadAll();
  run_.Ended = ended;
  run_.Length = LengthNow();
  WriteLine();
}

void RunJournal::WriteLine() {
  store_.EndRun(run_);
  const bool unread = !readTick_ || *readTick_ < doubtTick_;
  const bool uncounted = run_.Ended == RunEnd::End && !OwnSheet();
  if (unread || uncounted) counter_.Owe(slot_, parts_.Loop.NowMs());
  lineBefore_ = run_.Last.Record;
  table_ = {};
}

// ---- what else is told ----

void RunJournal::BatchRead(const BatchReading& reading) {
  const auto found = counter_.Take(reading, parts_.Loop.NowMs());
  if (!found || state_ == State::Idle || reading.Slot != slot_) return;
  readTick_ = ticks_;
  if (found->More <= 0) return;
  run_.Sheets = static_cast<int>(std::min<std::int64_t>(run_.Sheets + found->More, MostOfAFigure));
  if (TakeOwn(*found)) sheetTick_ = ticks_;
  if (HasFallen()) NoteFallen();
}

/// Whether one of the sheets is that of the pass in hand. Those of the passes before come
/// first: without the batch screen nobody reads them before the bit falls. They may be found before
/// the next pass is seen to begin. Owed ones may be those of the run before.
bool RunJournal::TakeOwn(const FoundSheets& found) {
  const bool own = !found.Owed && found.More > uncounted_;
  uncounted_ = own ? -1 : std::max<std::int64_t>(0, uncounted_ - found.More);
  return own;
}

void RunJournal::RunContinued(const RestartPlace& place) {
  // No run is open yet, or the one that is open stands: it is the next that goes on.
  if (state_ == State::Idle || HasFallen()) {
    restart_ = place;
    return;
  }
  // Only a machine that stands is restarted.
  if (fallen_) PartFromFallen();
  MarkRestart(place);
}

void RunJournal::MarkRestart(const RestartPlace& place) {
  run_.Begin = RunBegin::Restart;
  run_.FromBlock = place.Block;
  base_ = {place.X, place.Y};
  baseWanted_ = true;
  baseUntil_ = ticks_ + LateLineTicks;
  lineMayBeOld_ = false;
  restart_.reset();
}

void RunJournal::ConsoleEnds(bool unheard) {
  if (state_ == State::Idle) return;
  const bool open = state_ == State::Running || state_ == State::Stopped;
  if (open && unheard) {
    Lose();
    doubtTick_ = ticks_;  // the tick under way, or the last readings, may have counted a sheet
    state_ = State::Blind;
  }
  if (open && !unheard) {
    run_.End = parts_.Clock.Now();
    // The tick that would have seen the run end may be cut short after its readings.
    Close(sheetTick_ && *sheetTick_ == ticks_ ? RunEnd::End : RunEnd::ConsoleEnded);
  } else {
    CloseFallen();
  }
  state_ = State::Idle;
}

std::optional<RunPlace> RunJournal::PlaceOfLastRun(core::Slot slot) const {
  if (state_ != State::Idle && !HasFallen()) return std::nullopt;
  const std::string digest = SlotDigest(parts_.Files, parts_.System.Directories, slot);
  if (digest.empty()) return std::nullopt;
  if (HasFallen() && slot == slot_ && run_.Digest == digest) {
    return EndReached() ? std::nullopt : std::optional(run_.Last);
  }
  const auto run = store_.LastRunOf(slot.Number(), digest);
  if (!run || run->Ended == RunEnd::End) return std::nullopt;
  return run->Last;
}

}  // namespace torvane::supervision

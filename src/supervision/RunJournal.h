// The run journal: what becomes of each run of the machine, noted from what the poll has read.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/General.h"
#include "core/System.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "supervision/CutTable.h"
#include "supervision/JournalStore.h"
#include "supervision/PollObserver.h"
#include "supervision/RunLine.h"
#include "supervision/SheetCounter.h"

namespace torvane::supervision {

/// The run under way is noted at every stop, and this long after the last note where the controller
/// has come on meanwhile.
inline constexpr std::int64_t NoteAgainMs = 1000;

struct JournalParts {
  const core::System& System;
  platform::FileSystem& Files;
  const platform::Clock& Clock;
  platform::EventLoop& Loop;
};

/// A run is open from the tick that first sees it to the one that has seen it end. What a tick
/// sees:
///
///   Unknown  an exchange of the tick has failed
///   Runs     MachineRunning
///   Stands   MachineRunning, and a feed hold or a program stop that waits for the operator
///   Held     not MachineRunning, but a feed hold or an open cycle: the run may go on
///   Away     none of these
///   Editing  none of these, while the batch entry keeps the sheets from being read
///
///   from \ sees  Unknown       Runs         Stands          Held               Away, Editing
///   Idle         -             Begin: Runs  Begin: Stopped  -                  -
///   Running      Lost: Blind   Running      Stop: Stopped   Fall, Stop: Fallen Fall: Fallen
///   Stopped      Lost: Blind   Running      Stopped         Fall: Fallen       Fall: Fallen
///   Fallen       Fallen        Running *    Stop: Stopped * Fallen             Close: Idle **
///   Uncounted    Uncounted     Running *    Stop: Stopped * Uncounted          Close: Idle **
///   Blind        Blind         Running *    Stop: Stopped * Fall: Fallen       Fall: Fallen
///
/// Where * finds the machine's run time set back, another run has begun, and so it has out of
/// Fallen where a restart has been told or another program is in force, and out of Uncounted
/// always: the one before is closed. A restart is told a moment after its first tick, which may not
/// have found any of this yet: a run that has gone on out of Fallen is parted then, and the one
/// before closed as it fell, unless the link was lost since. Where ** sees Editing, the run is
/// Uncounted until the entry is left. A run that falls is closed one tick later, so that a single
/// wrong reply ends none; what is noted of its end is of the tick in which it fell. The end of the
/// console closes what is open.
class RunJournal final : public PollObserver {
 public:
  explicit RunJournal(const JournalParts& parts)
      : parts_(parts), store_(parts.Files, parts.System.Directories) {}

  // PollObserver
  void TickRead(const TickReading& tick) override;
  void BatchRead(const BatchReading& reading) override;
  void RunContinued(const RestartPlace& place) override;
  void ConsoleEnds(bool unheard) override;

  /// Where the last run of the very text that stands in the slot ended, if it did not come to its
  /// end; nothing otherwise, and while a run goes on or is not heard of. One that has fallen and
  /// may still go on, as in a feed hold, counts as ended: a restart may begin there.
  [[nodiscard]] std::optional<RunPlace> PlaceOfLastRun(core::Slot slot) const;

 private:
  enum class State : std::uint8_t { Idle, Running, Stopped, Fallen, Uncounted, Blind };
  /// From Held on the machine is heard not to run.
  enum class Sight : std::uint8_t { Unknown, Runs, Stands, Held, Away, Editing };
  using Step = void (RunJournal::*)();
  /// What a sight leads to: the work of it, and the next state.
  struct Reaction {
    Step Do = nullptr;
    State To = State::Idle;
  };
  /// The table above.
  [[nodiscard]] static Reaction ReactionTo(State from, Sight sight);

  [[nodiscard]] Sight Look();
  [[nodiscard]] bool AnotherRun() const;
  [[nodiscard]] bool OtherProgram() const;
  [[nodiscard]] bool HasFallen() const;
  [[nodiscard]] bool EndReached() const;
  [[nodiscard]] bool OwnSheet() const;

  // the work of the table
  void Nothing() {}
  void Begin();
  void BeginStopped();
  void GoOn();
  void Stand();
  void StayStopped();
  void Lose();
  void Fall();
  void FallHeld();
  void FallStillHeld();
  void CloseFallen();

  void FollowFall();
  [[nodiscard]] RunEnd EndOfFall() const;
  void NoteFallen();
  void PartFromFallen();

  void OpenRun();
  void MarkRestart(const RestartPlace& place);
  void Follow(bool running);
  [[nodiscard]] bool LineIsOld(int line) const;
  void FollowLine(int line, bool running);
  void NextPass();
  void FollowSeconds(double seconds, bool running);
  void AddStop(const std::string& cause);
  void ListStop(const std::string& cause);
  void TakeBackStop();
  [[nodiscard]] std::string CauseText() const;
  void Close(RunEnd ended);
  void WriteLine();
  bool TakeOwn(const FoundSheets& found);
  void Note(RunEnd ended);
  [[nodiscard]] double LengthNow() const;

  JournalParts parts_;
  JournalStore store_;
  State state_ = State::Idle;
  TickReading tick_;          ///< the one in hand
  std::uint64_t ticks_ = 0;   ///< so many have been read
  bool seenIdle_ = false;     ///< one of them has seen the machine idle
  int lineBefore_ = 0;        ///< VR(81) before the run
  double secondsAtRest_ = 0;  ///< the machine's run time when it was last heard not to run
  bool inError_ = false;      ///< as the last tick saw it
  std::int64_t errorMs_ = 0;  ///< when the message in force came up

  // the run under way
  RunLine run_;
  core::Slot slot_;
  CutTable table_;
  int tableLines_ = 0;           ///< of its program: another may be selected before it is closed
  double secondsBefore_ = 0;     ///< of the machine's run time, before the run was found; less what
                                 ///< the run took before that was set back
  double secondsSeen_ = 0;       ///< the machine's run time
  bool secondsAreOld_ = false;   ///< it is still that of the run before
  bool setBackSeen_ = false;     ///< the last tick has found it set back
  int line_ = 0;                 ///< VR(81); 0 not known yet
  bool lineMayBeOld_ = false;    ///< VR(81) still stands where it did before the run
  std::uint64_t oldUntil_ = 0;   ///< up to here, by ticks_, it is that of the run before
  int baseLine_ = 0;             ///< where the run began; 0 the program's begin
  core::Vector2 base_;           ///< the place in that line, mm
  bool baseWanted_ = false;      ///< the next line is where the run begins
  std::uint64_t baseUntil_ = 0;  ///< up to here, by ticks_, a lower line is
  double passes_ = 0;            ///< mm of the passes before this one, in a cycle of several
  std::int64_t uncounted_ = 0;   ///< so many of them have no sheet yet; -1: this one has its own
  int programStopTicks_ = 0;     ///< ticks in a row at the line of a program stop
  std::string fallCause_;        ///< the cause of the stop that ends it, if one does
  bool endListed_ = false;       ///< that stop is in the list
  bool unseen_ = false;          ///< it fell while nothing was heard
  std::optional<RunLine> fallen_;  ///< as it would be had it ended where it fell last
  std::uint64_t doubtTick_ = 0;    ///< a sheet counted from here on says that the end was reached
  std::int64_t notedMs_ = 0;

  std::optional<RestartPlace> restart_;  ///< told before the run was seen

  SheetCounter counter_;
  std::optional<std::uint64_t> readTick_;   ///< ticks_ at the last good reading of the run
  std::optional<std::uint64_t> sheetTick_;  ///< the same when the sheet of a pass in hand was found
};

}  // namespace torvane::supervision

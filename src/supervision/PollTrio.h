// The heartbeat: each tick reads the controller's status word, positions and running record, feeds
// whatever screen is visible, draws the live plot and keeps the controller's table filled.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Slot.h"
#include "core/System.h"
#include "link/Downloads.h"
#include "link/Trio.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeFault.h"
#include "supervision/ChangeLock.h"
#include "supervision/MessageList.h"
#include "supervision/PollObserver.h"
#include "supervision/PollScreens.h"
#include "supervision/RunningBlock.h"

namespace torvane::supervision {

/// What the boxes of the laser screen show, each from box 1 on.
struct LaserFigures {
  std::array<std::string, 3> Feed;     ///< programmed, actual, override
  std::array<std::string, 3> Power;    ///< likewise
  std::array<std::string, 10> Status;  ///< laser mode to tip height
};

/// With the link off the tick still runs, and every value reads as 0. A failed query reads as 0 too
/// and is taken for the truth: the failure dialog is the operator's warning. It comes beside the
/// poll, which goes on.
///
/// Where a change of program begins while a tick waits for a reply, the tick ends at its next step:
/// what it holds belongs to the program that was.
class Poll {
 public:
  Poll(core::System& system, link::Trio& trio, link::Downloads& downloads,
       platform::FileSystem& files, PollScreens& screens, PlotStage& plot, MessageList& messages);

  /// One tick, in its fixed order. It waits for another that is under way; beside a change of
  /// program it does nothing.
  void PollTrio();

  /// Held by whoever changes the program in force.
  [[nodiscard]] ChangeLock& Changes() { return changes_; }

  /// `observer` outlives the poll. It hears of every tick that runs to its end.
  void Observe(PollObserver& observer) { observers_.push_back(&observer); }
  /// The run that has just begun is a restart.
  void TellRestart(const RestartPlace& place);
  /// The program ends in order. Observers are told of a dead line where an exchange of the tick
  /// under way has failed, or none has been answered for a while.
  void TellEnd();

  // ---- the stages, in the order of the tick ----

  void ReadStatus();
  /// Positions, skipped with the link off.
  void ReadPositions();
  void ReadFeeds();
  /// The running record, by the one query that fails without a word.
  void ReadRunningBlock();
  void RefreshMessageButton();
  void TopUpTable();
  /// The batch counters of the active slot; nothing with the link off and while they are edited.
  /// BatchForm's stage runs after it. A reading of the poll that a change of program has overtaken
  /// is dropped.
  void RefreshBatch(link::Asker asker = link::Asker::Operator);

  // ---- what the stages of the screens ask for ----

  /// X, Y and the third axis as PositionDisplayMode wants them: as measured, or asked for here.
  [[nodiscard]] std::array<float, 3> ReadDisplayedPositions();

  /// The listing around the running record where the record or the slot is not the one that was
  /// asked for last; it then counts as shown.
  [[nodiscard]] std::optional<ListingView> TakeChangedListing();

  /// The listing around a running record; all blank for a slot without a program.
  [[nodiscard]] ListingView Listing(core::Slot slot, int block) const;

  /// Asks for the two message numbers. True when the list was built anew and is to be shown.
  bool RefreshMessages();

  /// Whether the rollers are on, where that has changed since the last call or `force` asks.
  [[nodiscard]] std::optional<bool> TakeRollers(bool force);

  /// Feed, power and state of the laser, read afresh, as their boxes show them.
  [[nodiscard]] LaserFigures ReadLaserFigures();

  /// The next ReadRunningBlock shows the listing afresh.
  void ForgetShownBlock();

 private:
  /// Notes the count of program changes before a wait, and tells what happened in it.
  class Watch;
  using Stage = void (Poll::*)();

  void PlotPosition();
  void TellTick(std::uint64_t failuresBefore);
  void TellBatch(const BatchReading& reading);
  [[nodiscard]] std::uint64_t PollFailures() const;
  [[nodiscard]] bool Unheard() const;
  void RunMachineStages();
  void RefreshTickBatch();
  void RotateLog();
  void TellTableFault(const platform::RuntimeFault& fault);
  void ShowFigure(int index, float value, int places);
  [[nodiscard]] float ReadAxis(std::string_view expression, float scale, float offset);

  core::System& system_;
  link::Trio& trio_;
  link::Downloads& downloads_;
  platform::FileSystem& files_;
  PollScreens& screens_;
  PlotStage& plot_;
  MessageList& messages_;
  ChangeLock changes_;
  std::uint64_t faultToldOf_ = 0;  ///< ChangeLock::Begun, plus 1, when a table's fault was shown
  float runSeconds_ = 0;           ///< VR(52) as the last tick read it, s
  std::vector<PollObserver*> observers_;
  bool inTick_ = false;
  std::uint64_t failuresBefore_ = 0;  ///< of the poll, before the last tick that has begun
};

}  // namespace torvane::supervision

// The heartbeat: each tick reads the controller's status word, positions and running record, feeds
// whatever screen is visible, draws the live plot and keeps the controller's table filled.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/System.h"
#include "link/Downloads.h"
#include "link/Trio.h"
#include "platform/FileSystem.h"
#include "supervision/MessageList.h"
#include "supervision/PollScreens.h"

namespace torvane::supervision {

/// With the link off the tick still runs, and every value reads as 0. A failed query reads as 0 too
/// and is taken for the truth: the failure dialog is the operator's warning.
class Poll {
 public:
  Poll(core::System& system, link::Trio& trio, link::Downloads& downloads,
       platform::FileSystem& files, PollScreens& screens, PlotStage& plot, MessageList& messages);

  /// One tick, in its fixed order. A call from inside a tick's own waits returns at once.
  void PollTrio();

  // ---- the stages, in the order of the tick ----

  void ReadStatus();
  /// Positions, skipped with the link off.
  void ReadPositions();
  void ReadFeeds();
  /// The running record, by the one query that fails without a word.
  void ReadRunningBlock();
  void RefreshMessageButton();
  /// `force` sets RollerButton even where the rollers have not changed.
  void RefreshMachineForm(bool force);
  void RefreshLaserStatus();
  void RefreshRunTime();
  void TopUpTable();
  /// The batch counters of the active slot; nothing with the link off and while they are edited.
  void RefreshBatch();

  /// The message list, while its screen is visible.
  void RefreshMessages();

  /// The listing around a running record; the rows go to the program view.
  void ShowRunningBlock(int slot, int block);

  /// Runs `job`: now, or behind the refill of the table that is under way below it on the stack. A
  /// change of program in the middle of a refill would mix the lines of two programs.
  void RunOutsideTopUp(std::function<void()> job);

  /// The next ReadRunningBlock shows the listing afresh.
  void ForgetShownBlock();

  /// True while the poll itself moves RollerButton: its event sends nothing then.
  [[nodiscard]] bool RollerGuard() const { return rollerGuard_; }

 private:
  void ShowDemandPositions();
  void ShowFigure(PolledBoxes boxes, int index, float value, int places);
  [[nodiscard]] float ReadAxis(std::string_view expression, float scale, float offset);

  core::System& system_;
  link::Trio& trio_;
  link::Downloads& downloads_;
  platform::FileSystem& files_;
  PollScreens& screens_;
  PlotStage& plot_;
  MessageList& messages_;
  bool rollerGuard_ = false;
  bool inTick_ = false;
  bool toppingUp_ = false;
  std::vector<std::function<void()>> waiting_;
};

}  // namespace torvane::supervision

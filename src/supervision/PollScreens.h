// What the poll shows, and to whom. The screens implement it; nothing here waits.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/ActiveProgram.h"
#include "supervision/MessageList.h"
#include "supervision/RunningBlock.h"

namespace torvane::supervision {

/// Screens that cost exchanges or work only while they are visible.
enum class PolledForm {
  MachineForm,
  LaserStatusForm,
  SetupForm,
  BatchForm,
  XYPositionForm,
  XYJogForm,
  ViewProgForm,
  MessageForm
};

/// Groups of boxes that take one figure each.
enum class PolledBoxes {
  MainPosition,  ///< main screen: 1 to 3 the axes, 5 the override, 6 the feed
  Jog,           ///< XYJogForm: 1 and 2
  XYPosition,    ///< XYPositionForm: 1 to 3
  MachineFeed,   ///< MachineForm's FeedBox: 1
  LaserFeed,     ///< LaserStatusForm's FeedBox: 1 to 3
  LaserPower,    ///< LaserStatusForm's PowerBox: 1 to 3
  LaserStatus,   ///< LaserStatusForm's StatusBox: 1 to 10
  RunTime        ///< SetupForm's TimeBox: 1
};

class PollScreens {
 public:
  virtual ~PollScreens() = default;

  [[nodiscard]] virtual bool Visible(PolledForm form) const = 0;

  /// Puts a figure into a box. A screen that is not loaded is passed over, never loaded.
  virtual void ShowFigure(PolledBoxes boxes, int index, std::string_view text) = 0;

  /// Background of MessageButton as painted now, 0x00BBGGRR.
  [[nodiscard]] virtual std::uint32_t MessageButtonBackground() const = 0;
  /// Paints MessageButton afresh in these colours.
  virtual void PaintMessageButton(std::uint32_t background, std::uint32_t text) = 0;

  /// Presses or releases RollerButton. Its event may run: it asks `RollerGuard` first.
  virtual void SetRollerButton(bool on) = 0;

  /// The 18 rows of ViewProgForm.
  virtual void ShowListing(const ListingView& rows) = 0;

  /// The rows of MessageForm.
  virtual void ShowMessages(const MessageList& messages) = 0;

  /// True while BatchForm takes new values, its SetButton showing "&OK".
  [[nodiscard]] virtual bool BatchEditing() const = 0;
  /// BatchBox 1 to 5.
  virtual void ShowBatch(const core::Batch& batch) = 0;
};

/// The live plot, a floor above.
class PlotStage {
 public:
  virtual ~PlotStage() = default;

  /// One tick: nothing for a slot without a program; at the start of a run the plot afresh; the run
  /// time VR(52) into `RunSeconds`; then the trace.
  virtual void RealTimePlot() = 0;

  /// Redraws a slot's plot from its files, blank where there are none. The run time starts at 0.
  virtual void RefreshPlot(int slot) = 0;

  /// Brings the slot's PlotBox forward and puts the other's behind.
  virtual void ShowPlotBox(int slot) = 0;
};

}  // namespace torvane::supervision

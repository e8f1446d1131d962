// What the poll shows, and who takes part in its tick. The screens implement it.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/Slot.h"
#include "supervision/MessageButton.h"

namespace torvane::supervision {

/// The moments of a tick at which a screen may take part, in the order of the tick. A screen offers
/// a stage for as long as it lives; the tick calls it only while the screen shows, so a screen that
/// does not show costs no exchange.
enum class PollStage {
  JogPosition,   ///< the positions were read
  Position,      ///< likewise, after JogPosition
  RunningBlock,  ///< VR(81) was read
  Messages,      ///< the message button was painted
  Machine,
  Laser,
  RunTime,
  Batch,  ///< the batch counters were read; offering it has them read at every tick
};

class PollScreens {
 public:
  virtual ~PollScreens() = default;

  /// True while a screen shows that offers the stage.
  [[nodiscard]] virtual bool Offers(PollStage stage) const = 0;
  /// Runs the stage of the screen that shows and offers it; nothing otherwise. It may wait.
  virtual void RunStage(PollStage stage) = 0;

  /// PositionText of the main screen: 1 to 3 the axes, 5 the override, 6 the feed. Passed over
  /// while that screen is not loaded.
  virtual void ShowFigure(int index, std::string_view text) = 0;

  /// Background of MessageButton as painted now, 0x00BBGGRR.
  [[nodiscard]] virtual std::uint32_t MessageButtonBackground() const = 0;
  /// Paints MessageButton afresh in these colours.
  virtual void PaintMessageButton(std::uint32_t background, std::uint32_t text) = 0;
  /// The sign on MessageButton, for whoever cannot tell its colours.
  virtual void MarkMessageButton(MessageState state) = 0;
};

/// The live plot, a floor above.
class PlotStage {
 public:
  virtual ~PlotStage() = default;

  /// One tick: nothing for a slot without a program; at the start of a run the plot afresh; the run
  /// time VR(52) into `RunSeconds`; then the trace.
  virtual void RealTimePlot() = 0;

  /// Redraws a slot's plot from its files, blank where there are none. The run time starts at 0.
  virtual void RefreshPlot(core::Slot slot) = 0;

  /// Brings the slot's PlotBox forward and puts the other's behind.
  virtual void ShowPlotBox(core::Slot slot) = 0;
};

}  // namespace torvane::supervision

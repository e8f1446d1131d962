// The figures that the poll reads only for a screen that shows them: laser state and batch.

#include <algorithm>
#include <array>
#include <limits>

#include "link/Variables.h"
#include "supervision/PollTrio.h"

namespace torvane::supervision {

namespace {

namespace Variable = link::Variable;

constexpr std::array<std::string_view, 3> PowerVariables = {
    Variable::ProgrammedPower, Variable::ActualPower, Variable::PowerOverride};

/// Sheets still to cut; below 0 where more were cut than asked for. None without both wishes.
std::int32_t SheetsToGo(const core::Batch& batch) {
  if (batch.PartsRequired == 0 || batch.SheetsRequired == 0) return 0;
  const std::int64_t rest = std::int64_t{batch.SheetsRequired} - batch.SheetsCompleted;
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(rest, Limits::min(), Limits::max()));
}

}  // namespace

void Poll::RefreshLaserStatus() {
  const auto show = [this](PolledBoxes boxes, int index, std::string_view name, int places) {
    ShowFigure(boxes, index, trio_.GetRspnsSngl(name, places), places);
  };
  show(PolledBoxes::LaserFeed, 1, Variable::FeedRate, 0);
  // The actual feed is the same variable, read earlier in the tick.
  ShowFigure(PolledBoxes::LaserFeed, 2, system_.State.FeedRate, 0);
  ShowFigure(PolledBoxes::LaserFeed, 3, system_.State.FeedOverride, 0);
  int index = 0;
  for (const auto name : PowerVariables) show(PolledBoxes::LaserPower, ++index, name, 0);
  index = 0;
  for (const auto& value : link::LaserStatusValues) {
    show(PolledBoxes::LaserStatus, ++index, value.Name, value.Decimals);
  }
}

void Poll::RefreshBatch() {
  const std::int16_t slot = system_.ActiveSlot;
  if (!system_.Link.TrioLinkEnabled || screens_.BatchEditing()) return;
  if (slot != 1 && slot != 2) return;
  core::Batch read;
  read.PartsPerSheet = trio_.GetRspnsLng(Variable::PartsPerSheet);
  read.PartsRequired = trio_.GetRspnsLng(Variable::PartsRequired);
  read.SheetsRequired = trio_.GetRspnsLng(Variable::SheetsRequired);
  read.SheetsCompleted = trio_.GetRspnsLng(Variable::SheetsCompleted);
  read.SheetsToGo = SheetsToGo(read);
  system_.Programs[static_cast<std::size_t>(slot)].BatchCounters = read;
  // The operator may have begun to type, or have changed the slot, while the replies came.
  if (!screens_.BatchEditing() && system_.ActiveSlot == slot) screens_.ShowBatch(read);
}

}  // namespace torvane::supervision

// The figures that the poll reads only for a screen that shows them: laser state and batch.

#include <algorithm>
#include <array>
#include <limits>
#include <tuple>

#include "core/General.h"
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

bool SameCounters(const core::Batch& a, const core::Batch& b) {
  const auto figures = [](const core::Batch& batch) {
    return std::tie(batch.PartsPerSheet, batch.PartsRequired, batch.SheetsRequired,
                    batch.SheetsCompleted, batch.SheetsToGo);
  };
  return figures(a) == figures(b);
}

}  // namespace

LaserFigures Poll::ReadLaserFigures() {
  const auto read = [this](std::string_view name, int places) {
    return core::NumberText(trio_.GetRspnsSngl(name, places, link::Asker::Poll), places);
  };
  LaserFigures figures;
  // The actual feed is the same variable as the programmed one, read earlier in the tick.
  figures.Feed[0] = read(Variable::FeedRate, 0);
  figures.Feed[1] = core::NumberText(system_.State.FeedRate, 0);
  figures.Feed[2] = core::NumberText(system_.State.FeedOverride, 0);
  for (std::size_t i = 0; i < figures.Power.size(); ++i)
    figures.Power[i] = read(PowerVariables[i], 0);
  for (std::size_t i = 0; i < figures.Status.size(); ++i)
    figures.Status[i] = read(link::LaserStatusValues[i].Name, link::LaserStatusValues[i].Decimals);
  return figures;
}

void Poll::RefreshBatch(link::Asker asker) {
  const core::Slot slot = system_.ActiveSlot;
  if (!system_.Link.TrioLinkEnabled || system_.Console.BatchEditing) return;
  const bool ticking = asker == link::Asker::Poll;
  const std::uint64_t changes = changes_.Begun();
  const std::uint64_t failures = trio_.Failures(asker);
  const core::Batch before = system_.Programs[slot].BatchCounters;
  core::Batch read;
  read.PartsPerSheet = trio_.GetRspnsLng(Variable::PartsPerSheet, asker);
  read.PartsRequired = trio_.GetRspnsLng(Variable::PartsRequired, asker);
  read.SheetsRequired = trio_.GetRspnsLng(Variable::SheetsRequired, asker);
  read.SheetsCompleted = trio_.GetRspnsLng(Variable::SheetsCompleted, asker);
  read.SheetsToGo = SheetsToGo(read);
  if (ticking && (changes_.Begun() != changes || trio_.Ending())) return;
  core::Batch& counters = system_.Programs[slot].BatchCounters;
  // The operator has set or cleared them meanwhile: these replies are older than that.
  if (!SameCounters(counters, before)) return;
  counters = read;
  TellBatch({slot, before, read, trio_.Failures(asker) == failures});
  // The operator may have begun to type, or have changed the slot, while the replies came.
  if (!system_.Console.BatchEditing && system_.ActiveSlot == slot)
    screens_.RunStage(PollStage::Batch);
}

}  // namespace torvane::supervision

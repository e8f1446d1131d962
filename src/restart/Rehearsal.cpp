#include "restart/Rehearsal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/RuntimeFault.h"
#include "restart/GatherModule.h"
#include "restart/GatherReport.h"
#include "restart/SplitPoint.h"
#include "restart/VisualWalk.h"

namespace torvane::restart {

using partprogram::DrawRecord;
namespace RecordCode = partprogram::RecordCode;

namespace {

/// Farther from the element than this, the gathered position is not where it begins, mm.
constexpr double PositionTolerance = 0.01;

PlotRecords RecordsOf(std::span<const DrawRecord> draw) {
  const auto count = std::min<std::size_t>(draw.size(), std::numeric_limits<std::int16_t>::max());
  return {static_cast<std::int16_t>(count),
          [draw](std::int16_t number) -> std::optional<DrawRecord> {
            const auto index = static_cast<std::size_t>(number) - 1;
            if (number < 1 || index >= draw.size()) return std::nullopt;
            return draw[index];
          }};
}

bool Holds(std::span<const DrawRecord> records, std::int16_t code) {
  return std::any_of(records.begin(), records.end(),
                     [code](const DrawRecord& record) { return record.Code == code; });
}

bool Cuts(const DrawRecord& record) { return CanSplit(record) && record.BeamOn(); }

}  // namespace

Rehearser::Rehearser(RehearsedProgram program) : program_(std::move(program)) {
  for (const std::string& line : program_.Listing) ++numbers_[BlockNumberOf(line)];
  lines_ = static_cast<std::int16_t>(std::min<std::size_t>(
      core::SplitLines(program_.Converted).size(), std::numeric_limits<std::int16_t>::max()));
  Walk();
}

void Rehearser::Walk() {
  GatherWalk walk(program_.Converted, program_.Bodies, *program_.Machine);
  stops_.emplace(Place{0, 0}, Stop{walk.State(), 0});
  try {
    while (walk.Next()) {
      const Place place{walk.MainLine(), walk.SubLine()};
      if (!stops_.contains(place)) stops_.emplace(place, Stop{walk.State(), walk.Faults().size()});
      walk.Execute();
    }
    faults_ = walk.Faults();
  } catch (const platform::RuntimeFault& fault) {
    faults_ = walk.Faults();
    faults_.push_back({true, fault.what(), "", walk.MainLine()});
  }
  end_ = {walk.State(), faults_.size()};
}

const Rehearser::Stop& Rehearser::At(std::int16_t block, std::int16_t subBlock, bool& met) const {
  const auto found = stops_.find({block, subBlock});
  met = found != stops_.end();
  return met ? found->second : end_;
}

GatherState Rehearser::Gather(const GatherTarget& target, bool& met) const {
  GatherState state = At(target.Block, target.SubBlock, met).State;
  state.Gathered = GatherMark::Reached;
  state.BlockNo = BlockNumberOf(target.Text);
  return state;
}

std::string Rehearser::Listed(std::int16_t block) const {
  const bool listed = block >= 1 && static_cast<std::size_t>(block) <= program_.Listing.size();
  return listed ? program_.Listing[static_cast<std::size_t>(block) - 1] : std::string();
}

Rehearsal Rehearser::AtBlock(std::int16_t block, std::int16_t subBlock) const {
  Rehearsal rehearsal;
  rehearsal.Block = block;
  rehearsal.SubBlock = subBlock;
  rehearsal.Text = Listed(block);
  const GatherTarget target{rehearsal.Text, block, subBlock};
  rehearsal.State = Gather(target, rehearsal.Met);
  rehearsal.NextState = rehearsal.State;
  if (static_cast<std::size_t>(block) < program_.Listing.size()) {
    const auto next = static_cast<std::int16_t>(block + 1);
    bool met = false;
    const std::string text = Listed(next);
    rehearsal.NextState = Gather({text, next, 0}, met);
  }
  rehearsal.Entry = EntryOfBlock(program_.Records, block, subBlock,
                                 {rehearsal.State.XPosition, rehearsal.State.YPosition});
  rehearsal.GatherText = GatherEnd(rehearsal.State);
  Finish(rehearsal, target, {});
  return rehearsal;
}

Rehearsal Rehearser::AtRecord(std::int16_t number, std::optional<double> remaining) const {
  const DrawRecord& record = program_.Records.Draw[static_cast<std::size_t>(number) - 1];
  SplitPoint point(record);
  if (remaining) point.SetRemaining(*remaining);

  Rehearsal rehearsal;
  rehearsal.Visual = true;
  rehearsal.Block = record.BlockNumber;
  rehearsal.SubBlock = record.SubBlock;
  rehearsal.Text = Listed(record.BlockNumber);
  const NextBlock next = BlockAfter(RecordsOf(program_.Records.Draw), number, record);
  const std::string text = Listed(next.BlockNumber);
  const GatherTarget target{text, next.BlockNumber, next.SubBlock};
  rehearsal.State = Gather(target, rehearsal.Met);
  // After the last element the walk is meant to run to the end.
  if (next.BlockNumber > lines_) rehearsal.Met = true;
  rehearsal.NextState = rehearsal.State;
  rehearsal.GatherText = GatherEnd(rehearsal.State);
  const auto& end = point.Rest().EndPoint;
  rehearsal.State.XPosition = end.X;
  rehearsal.State.YPosition = end.Y;
  rehearsal.Entry =
      EntryOfSplit(program_.Records, number, {end.X, end.Y}, point.Remaining() == point.Whole());
  rehearsal.Split =
      RehearsedSplit{rehearsal.Entry ? rehearsal.Entry->Record : std::int16_t{0},
                     std::abs(static_cast<double>(point.Step())), std::abs(point.Remaining())};
  Finish(rehearsal, target, point.Rest());
  return rehearsal;
}

std::int16_t Rehearser::CutRecord(std::int16_t kerfRecord) const {
  const auto& [draw, kerf] = program_.Records;
  if (kerfRecord < 2 || static_cast<std::size_t>(kerfRecord) > kerf.size()) return 0;
  const std::int16_t number = kerf[static_cast<std::size_t>(kerfRecord) - 1].RecordIndex;
  if (number < 2 || static_cast<std::size_t>(number) > draw.size()) return 0;
  const DrawRecord& record = draw[static_cast<std::size_t>(number) - 1];
  // A corner arc belongs to an element, but is none itself.
  return CanSplit(record) && record.RecordIndex == kerfRecord ? number : std::int16_t{0};
}

void Rehearser::Finish(Rehearsal& rehearsal, const GatherTarget& target,
                       const DrawRecord& split) const {
  bool met = false;
  const std::size_t faults = At(target.Block, target.SubBlock, met).Faults;
  rehearsal.Faults.assign(faults_.begin(), faults_.begin() + static_cast<std::ptrdiff_t>(faults));
  rehearsal.GatherText = GatherHead(program_.ProgramName, program_.DirectoryName, program_.Time) +
                         GatherEntries(rehearsal.Faults) + rehearsal.GatherText;
  rehearsal.Lines = RestartLineSetOf(
      {rehearsal.State, "", split, program_.TableSent, program_.Machine->YDirection},
      program_.Slot);
  AddWarnings(rehearsal);
}

void Rehearser::AddWarnings(Rehearsal& rehearsal) const {
  const auto warn = [&](bool holds, std::string text) {
    if (holds) rehearsal.Warnings.push_back(std::move(text));
  };
  const GatherState& state = rehearsal.State;
  warn(!rehearsal.Met, "target not met");
  warn(state.BlockNo == 0, "no N on the block");
  if (state.BlockNo != 0) {
    const auto found = numbers_.find(state.BlockNo);
    warn(found != numbers_.end() && found->second > 1, "N on more than one block");
  }
  const auto& draw = program_.Records.Draw;
  warn(!rehearsal.Entry, "nothing to cut from the block on");
  if (!rehearsal.Entry) return;
  const auto at = static_cast<std::size_t>(rehearsal.Entry->DrawRecord) - 1;
  const auto before = draw.first(at);
  const auto after = draw.subspan(at);
  const auto cut = std::find_if(after.begin(), after.end(), Cuts);
  warn(!state.ProfilerOn && cut != after.end() && (rehearsal.Visual || &*cut == &after.front()),
       "beam state not known from G31");
  warn(Holds(before, RecordCode::Settings), "settings before the point not gathered");
  warn(Holds(before, RecordCode::Reposition), "sheet repositioned before the point");
  warn(Holds(after, RecordCode::Reposition), "sheet repositioned after the point");
  warn(Holds(before, RecordCode::FlipRotate), "sheet flipped or rotated before the point");
  const core::Vector2 begins = rehearsal.Entry->Programmed;
  warn(!rehearsal.Visual &&
           std::hypot(state.XPosition - begins.X, state.YPosition - begins.Y) > PositionTolerance,
       "position is not where the element begins");
}

}  // namespace torvane::restart

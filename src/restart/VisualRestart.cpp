#include "restart/VisualRestart.h"

#include "supervision/CycleRules.h"
#include "supervision/OperatorDialogs.h"

namespace torvane::restart {

namespace {

/// The wording is that of punching machines.
constexpr std::string_view NothingFirst = "Can Not Visually Restart";
constexpr std::string_view NothingSecond = "If No Punches Are On View !";

}  // namespace

const core::PlotView& VisualRestart::View() const {
  return parts_.System.Views[parts_.System.ActiveSlot];
}

void VisualRestart::BeginVisualRestart() {
  ClearRestart(parts_);
  point_.reset();
  highlighted_ = false;
  state_ = {};
  const PlotRecords records = OpenPlotRecords(parts_.Files, parts_.System);
  state_ = BeginWalk(records, View());
  const auto record = state_.VisualCurrent > 1 ? records.Read(state_.VisualCurrent) : std::nullopt;
  if (record) {
    parts_.Split.RestartRecord = *record;
    screens_.PaintRecord(*record, true);
    highlighted_ = true;
    screens_.EnableSplit(CanSplit(*record));
    return;
  }
  state_ = {};
  parts_.Dialogs.Warn(NothingFirst, NothingSecond);
  Leave();
}

void VisualRestart::VisualKey(PathKey key) {
  switch (Mode()) {
    case VisualMode::Choice:
      return WalkKeyPressed(key);
    case VisualMode::SplitLine:
    case VisualMode::SplitArc:
      return SplitKeyPressed(key);
    default:
      return;
  }
}

void VisualRestart::WalkKeyPressed(PathKey key) {
  if (state_.VisualCurrent <= 1 || key == PathKey::Select) return;
  if (key == PathKey::Split) return StartSplit();
  constexpr WalkKey Keys[] = {WalkKey::First, WalkKey::Previous, WalkKey::Next, WalkKey::Last};
  const PlotRecords records = OpenPlotRecords(parts_.Files, parts_.System);
  Choose(Walk(records, View(), state_, Keys[static_cast<int>(key) - 1]));
}

void VisualRestart::Choose(std::int16_t number) {
  if (number == state_.VisualCurrent) return;
  const auto record = OpenPlotRecords(parts_.Files, parts_.System).Read(number);
  if (!record) return;
  screens_.PaintRecord(parts_.Split.RestartRecord, false);
  screens_.PaintRecord(*record, true);
  highlighted_ = true;
  state_.VisualPrevious = state_.VisualCurrent;
  state_.VisualCurrent = number;
  parts_.Split.RestartRecord = *record;
  screens_.EnableSplit(CanSplit(*record));
}

void VisualRestart::Pick(float x, float y) {
  if (Mode() != VisualMode::Choice || state_.VisualCurrent <= 1) return;
  const auto pick = PickRecord(OpenPlotRecords(parts_.Files, parts_.System), x, y);
  if (pick) Choose(*pick);
}

void VisualRestart::StartSplit() {
  const auto& record = parts_.Split.RestartRecord;
  if (!CanSplit(record)) return;
  const bool arc = record.Code == partprogram::RecordCode::ArcProfile;
  Mode() = arc ? VisualMode::SplitArc : VisualMode::SplitLine;
  point_.emplace(record);
  parts_.Split.SplitRecord = point_->Rest();
  parts_.Split.SplitStep = point_->Step();
}

void VisualRestart::SplitKeyPressed(PathKey key) {
  if (!point_) return;
  if (key == PathKey::Select) return RestartHere();
  if (key == PathKey::Split) return;
  constexpr SplitKey Keys[] = {SplitKey::Whole, SplitKey::OneMore, SplitKey::OneLess,
                               SplitKey::LastStep};
  point_->Press(Keys[static_cast<int>(key) - 1]);
  ShowSplit();
}

void VisualRestart::ShowSplit() {
  parts_.Split.SplitRecord = point_->Rest();
  screens_.PaintRecord(parts_.Split.RestartRecord, false);
  screens_.PaintRecord(parts_.Split.SplitRecord, true);
}

void VisualRestart::RestartHere() {
  if (supervision::RefuseAction(supervision::CycleAction::Restart, parts_.System.State,
                                parts_.Dialogs)) {
    return Leave();
  }
  GatherAfterRecord();
  screens_.LeaveGraphics();
  GatherState& state = parts_.States.RestartState;
  if (state.Gathered == GatherMark::No) {
    return partprogram::ClearSplitCycle(parts_.Split, parts_.Files, parts_.System.Directories);
  }
  state.Gathered = GatherMark::VisualRestart;
  screens_.OpenRestartForm();
}

/// The state after the whole block, with the head at the split point.
void VisualRestart::GatherAfterRecord() {
  auto& states = parts_.States;
  const NextBlock next = BlockAfter(OpenPlotRecords(parts_.Files, parts_.System),
                                    state_.VisualCurrent, parts_.Split.RestartRecord);
  const std::string text = ListingLine(parts_.Files, parts_.System, next.BlockNumber);
  GatherForSlot(parts_, {text, next.BlockNumber, next.SubBlock}, states.RestartState);
  states.RestartNextState = states.RestartState;
  states.Record = state_.VisualCurrent;
  states.RestartState.XPosition = parts_.Split.SplitRecord.EndPoint.X;
  states.RestartState.YPosition = parts_.Split.SplitRecord.EndPoint.Y;
}

std::optional<core::Vector2> VisualRestart::LastPlace() const {
  if (parts_.Journal == nullptr) return std::nullopt;
  const auto place = parts_.Journal->PlaceOfLastRun(parts_.System.ActiveSlot);
  if (!place || place->Record < 1) return std::nullopt;
  return core::Vector2{place->X, place->Y};
}

void VisualRestart::Cancel() { Leave(); }

void VisualRestart::Leave() {
  screens_.LeaveGraphics();
  partprogram::ClearSplitCycle(parts_.Split, parts_.Files, parts_.System.Directories);
}

void VisualRestart::GiveBackRecord() {
  if (!highlighted_) return;
  highlighted_ = false;
  screens_.PaintRecord(parts_.Split.RestartRecord, false);
}

}  // namespace torvane::restart

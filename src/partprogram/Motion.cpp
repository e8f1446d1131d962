// Lines, arcs and the checks along their path.
#include <cmath>

#include "core/General.h"
#include "partprogram/ReversePass.h"

namespace torvane::partprogram {
namespace {

Point3 AtHeight(const Point3& point, float z) { return {point.X, point.Y, z}; }

/// The totals are singles: each sum is rounded to one.
void AddTo(float& total, double length) { total = static_cast<float>(total + length); }

}  // namespace

ReversePass::Flow ReversePass::TakePosition() {
  const Block& block = Words();
  if (block.HasAny(NoPositionWords)) return Flow::GoOn;
  if (UpdatePosition(block, reader_, InSubroutine(), walker_.Level(), state_)) {
    CheckLimits(state_.Current.X, state_.Current.Y);
  }
  return Flow::GoOn;
}

// ---- limits ----

void ReversePass::CheckLimits(double x, double y) {
  limitCheck_.Check(state_.Limits, x, y,
                    [this](std::string_view message) { Error(message, false); });
}

/// At the current point, a message each time.
void ReversePass::CheckLimitsEachTime() {
  LimitCheck each;
  each.Check(state_.Limits, state_.Current.X, state_.Current.Y,
             [this](std::string_view message) { Error(message, false); });
}

/// Along the path of the record: its singles, not what they were made of.
void ReversePass::CheckArcLimits(const DrawRecord& arc) {
  limitCheck_.CheckArc(state_.Limits,
                       {{arc.CentrePoint.X, arc.CentrePoint.Y},
                        arc[Figure::Radius],
                        arc[Figure::StartAngle],
                        arc[Figure::Sweep]},
                       [this](std::string_view message) { Error(message, false); });
}

// ---- lines ----

ReversePass::Flow ReversePass::TakeG00() {
  state_.MotionMode = 0;
  MakeLine(true);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG01() {
  state_.MotionMode = 1;
  MakeLine(false);
  return Flow::GoOn;
}

void ReversePass::MakeLine(bool rapid) {
  const Block& block = Words();
  if (!block.Has('X') && !block.Has('Y')) return;
  if (HoldsOtherMotion(block, rapid ? Word::G00 : Word::G01)) return;
  const bool cut = state_.Profiling;
  DrawRecord& record =
      cut ? AddRecord(Kind::LineProfile, Beam::On) : AddRecord(Kind::Move, Beam::Off);
  rounding_.Round(state_);
  record.StartPoint = AtHeight(state_.Previous, state_.Current.Z);
  record.EndPoint = AtHeight(state_.Current, state_.Current.Z);
  record.KerfSide = state_.KerfSide;
  record[Mark::MotionWord] = rapid ? 0 : 1;
  PutPlace(record);
  AddTo(cut ? profileLength_ : moveLength_, record[Figure::Length]);
}

/// The way from the last recorded end to the start of this record.
void ReversePass::AddGap(const DrawRecord& record) {
  const double dx = static_cast<double>(record.StartPoint.X) - last_.X;
  const double dy = static_cast<double>(record.StartPoint.Y) - last_.Y;
  if (dx != 0 || dy != 0) AddTo(moveLength_, std::sqrt(dx * dx + dy * dy));
}

// ---- arcs ----

ReversePass::Flow ReversePass::TakeG02() {
  state_.MotionMode = 2;
  MakeArc(true);
  return Flow::GoOn;
}

ReversePass::Flow ReversePass::TakeG03() {
  state_.MotionMode = 3;
  MakeArc(false);
  return Flow::GoOn;
}

void ReversePass::MakeArc(bool clockwise) {
  const Block& block = Words();
  if (!block.Has('X') && !block.Has('Y') && !block.Has('I') && !block.Has('J')) return;
  if (HoldsOtherMotion(block, clockwise ? Word::G02 : Word::G03)) return;
  const ArcSolution solution = SolveArc(block, reader_, state_, InSubroutine(), walker_.Level(),
                                        rounding_, clockwise, machine_.YDirection);
  if (solution.Arc) {
    PutArc(*solution.Arc, clockwise);
  } else {
    Error(solution.Error(), true);
  }
}

void ReversePass::PutArc(const ArcGeometry& arc, bool clockwise) {
  DrawRecord& record = AddRecord(Kind::ArcProfile, state_.Profiling ? Beam::On : Beam::Off);
  record.CentrePoint = {static_cast<float>(arc.Centre.X), static_cast<float>(arc.Centre.Y),
                        state_.Current.Z};
  record[Figure::Radius] = static_cast<float>(arc.Radius);
  record[Figure::StartAngle] = static_cast<float>(arc.StartAngle);
  record[Figure::Sweep] = static_cast<float>(arc.Sweep);
  record[Mark::ArcWord] = record[Mark::MotionWord] = clockwise ? 2 : 3;
  record.KerfSide = state_.KerfSide;
  PutPlace(record);
  // The length has the sign of the sweep, and so it goes into the total.
  AddTo(profileLength_, arc.Sweep / 360 * arc.Radius * 2 * core::Pi);
  CheckArcLimits(record);
}

}  // namespace torvane::partprogram

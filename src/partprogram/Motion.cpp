// Lines, arcs and the checks along their path.
#include <cmath>

#include "core/General.h"
#include "partprogram/ReversePass.h"

namespace torvane::partprogram {
namespace {

float Rounded(float value) { return static_cast<float>(core::RoundPlaces(value, 4)); }

void RoundPlane(Point3& point) {
  point.X = Rounded(point.X);
  point.Y = Rounded(point.Y);
}

Point3 AtHeight(const Point3& point, float z) { return {point.X, point.Y, z}; }

core::Vector2 Plane(const Point3& point) { return {point.X, point.Y}; }

/// What an axis was before a line rounded it: a line that leaves the axis alone keeps that.
void KeepUnrounded(float current, float& unrounded) {
  if (current != Rounded(unrounded)) unrounded = current;
}

/// One axis is where it was, told once more or left alone since a line rounded it.
bool Stays(float previous, float current, float unrounded) {
  return current == previous || (current == unrounded && previous == Rounded(unrounded));
}

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

/// One message an axis and block.
void ReversePass::CheckLimits(double x, double y) {
  const TravelLimits& limits = state_.Limits;
  if (!xLimitReported_ && (x < limits.XMin || x > limits.XMax)) {
    xLimitReported_ = true;
    Error(Message::LimitX, false);
  }
  if (!yLimitReported_ && (y < limits.YMin || y > limits.YMax)) {
    yLimitReported_ = true;
    Error(Message::LimitY, false);
  }
}

/// At the current point, a message each time.
void ReversePass::CheckLimitsEachTime() {
  const bool x = xLimitReported_;
  const bool y = yLimitReported_;
  xLimitReported_ = yLimitReported_ = false;
  CheckLimits(state_.Current.X, state_.Current.Y);
  xLimitReported_ = x;
  yLimitReported_ = y;
}

/// Walks the arc by whole degrees from its start. A circle that lies inside altogether needs no
/// walk: no product with a sine is longer than the radius, and rounding keeps the order of sums.
void ReversePass::CheckArcLimits(const DrawRecord& arc) {
  const TravelLimits& limits = state_.Limits;
  const double x = arc.CentrePoint.X;
  const double y = arc.CentrePoint.Y;
  const double radius = arc.Values[0];
  const bool inside = x - radius >= limits.XMin && x + radius <= limits.XMax &&
                      y - radius >= limits.YMin && y + radius <= limits.YMax;
  if (inside) return;
  const int steps = core::RoundToInt16(std::abs(static_cast<double>(arc.Values[10])));
  const int direction = arc.Values[10] < 0 ? -1 : 1;
  for (int step = 0; step <= steps && !(xLimitReported_ && yLimitReported_); ++step) {
    const core::Vector2 offset = core::PolarToXY(radius, arc.Values[9] + direction * step);
    CheckLimits(x + offset.X, y + offset.Y);
  }
}

// ---- lines ----

bool ReversePass::HoldsOtherMotion(Word own) const {
  for (const Word word : {Word::G00, Word::G01, Word::G02, Word::G03}) {
    if (word != own && Words().Has(word)) return true;
  }
  return false;
}

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
  if (HoldsOtherMotion(rapid ? Word::G00 : Word::G01)) return;
  const bool cut = state_.Profiling;
  DrawRecord& record = AddRecord(cut ? Kind::LineProfile : Kind::Move);
  // The position itself is rounded, not its record alone: the sums of an incremental program stay
  // on 4 places over any number of steps.
  KeepUnrounded(state_.Current.X, unrounded_.X);
  KeepUnrounded(state_.Current.Y, unrounded_.Y);
  RoundPlane(state_.Previous);
  RoundPlane(state_.Current);
  record.StartPoint = AtHeight(state_.Previous, state_.Current.Z);
  record.EndPoint = AtHeight(state_.Current, state_.Current.Z);
  record.KerfSide = state_.KerfSide;
  record.Flags[9] = rapid ? 0 : 1;
  if (cut) FillBeam(record);
  PutPlace(record);
  (cut ? profileLength_ : moveLength_) += record.Values[0];
}

void ReversePass::FillBeam(DrawRecord& record) const {
  record.BeamState1 = beam_;
  record.BeamState2.Floats[0] = -1;
}

/// The way from the last recorded end to the start of this record.
void ReversePass::AddGap(const DrawRecord& record) {
  const double dx = static_cast<double>(record.StartPoint.X) - last_.X;
  const double dy = static_cast<double>(record.StartPoint.Y) - last_.Y;
  if (dx != 0 || dy != 0) moveLength_ += std::sqrt(dx * dx + dy * dy);
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

/// Behind a line the start is rounded and the end is not. A circle that is told to end where the
/// line did, in inches or in a turned subroutine, is a whole one all the same.
bool ReversePass::EndsWhereItBegins() const {
  return Stays(state_.Previous.X, state_.Current.X, unrounded_.X) &&
         Stays(state_.Previous.Y, state_.Current.Y, unrounded_.Y);
}

void ReversePass::MakeArc(bool clockwise) {
  const Block& block = Words();
  if (!block.Has('X') && !block.Has('Y') && !block.Has('I') && !block.Has('J')) return;
  if (HoldsOtherMotion(clockwise ? Word::G02 : Word::G03)) return;
  const double radius = reader_.LengthOrZero(block, 'R', state_.Imperial);
  core::Vector2 centre{reader_.LengthOrZero(block, 'I', state_.Imperial),
                       reader_.LengthOrZero(block, 'J', state_.Imperial)};
  const double rotation = walker_.Level().Rotation;
  if (InSubroutine()) {
    if (rotation != 0 && (centre.X != 0 || centre.Y != 0)) {
      const core::Polar polar = core::XYToPolar(centre.X, centre.Y);
      centre = core::PolarToXY(polar.Length, polar.Angle + rotation);
    }
  } else {
    if (state_.MirrorX) centre.X = -centre.X;
    if (state_.MirrorY) centre.Y = -centre.Y;
  }
  const core::Vector2 from = Plane(state_.Previous);
  core::Vector2 to = Plane(state_.Current);
  if (EndsWhereItBegins()) to = from;
  const bool byCentre = radius == 0;
  const auto arc =
      byCentre ? SolveCentreArc(from, to, centre.X, centre.Y,
                                CentreArcTurnsPositive(clockwise, machine_.YDirection,
                                                       state_.MirrorX, state_.MirrorY))
               : SolveRadiusArc(from, to, radius,
                                RadiusArcTurnsPositive(clockwise, state_.MirrorX, state_.MirrorY));
  if (arc) {
    PutArc(*arc, clockwise);
  } else {
    Error(byCentre ? Message::InvalidCentre : Message::InvalidRadius, true);
  }
}

void ReversePass::PutArc(const ArcGeometry& arc, bool clockwise) {
  DrawRecord& record = AddRecord(Kind::ArcProfile);
  record.CentrePoint = {static_cast<float>(arc.Centre.X), static_cast<float>(arc.Centre.Y),
                        state_.Current.Z};
  record.Values[0] = static_cast<float>(arc.Radius);
  record.Values[9] = static_cast<float>(arc.StartAngle);
  record.Values[10] = static_cast<float>(arc.Sweep);
  record.Flags[5] = record.Flags[9] = clockwise ? 2 : 3;
  record.KerfSide = state_.KerfSide;
  if (state_.Profiling) FillBeam(record);
  PutPlace(record);
  // The length has the sign of the sweep, and so it goes into the total.
  profileLength_ += arc.Sweep / 360 * arc.Radius * 2 * core::Pi;
  CheckArcLimits(record);
}

}  // namespace torvane::partprogram

#include "partprogram/MotionSteps.h"

namespace torvane::partprogram {
namespace {

/// These blocks never go on in the running mode.
constexpr WordSet NoModalWords{Word::G04, Word::G53, Word::G56, Word::G92, Word::G95,
                               Word::M50, Word::M55, Word::M87, Word::M99};
constexpr WordSet MotionWords{Word::G00, Word::G01, Word::G02, Word::G03};

float Rounded(float value) { return static_cast<float>(core::RoundPlaces(value, 4)); }

void RoundPlane(Point3& point) {
  point.X = Rounded(point.X);
  point.Y = Rounded(point.Y);
}

core::Vector2 Plane(const Point3& point) { return {point.X, point.Y}; }

/// What an axis was before a line rounded it: a line that leaves the axis alone keeps that.
void KeepUnrounded(float current, float& unrounded) {
  if (current != Rounded(unrounded)) unrounded = current;
}

/// One axis is where it was, programmed once more or left alone since a line rounded it.
bool Stays(float previous, float current, float unrounded) {
  return current == previous || (current == unrounded && previous == Rounded(unrounded));
}

/// I and J in the machine's frame.
core::Vector2 CentreWords(const Block& block, WordReader& reader, const ModalState& state,
                          bool inSubroutine, double rotation) {
  core::Vector2 centre{reader.LengthOrZero(block, 'I', state.Imperial),
                       reader.LengthOrZero(block, 'J', state.Imperial)};
  if (inSubroutine) {
    if (rotation == 0 || (centre.X == 0 && centre.Y == 0)) return centre;
    const core::Polar polar = core::XYToPolar(centre.X, centre.Y);
    return core::PolarToXY(polar.Length, polar.Angle + rotation);
  }
  if (state.MirrorX) centre.X = -centre.X;
  if (state.MirrorY) centre.Y = -centre.Y;
  return centre;
}

}  // namespace

bool GoesOnInMode(const Block& block) {
  const bool placed = block.Has('X') || block.Has('Y') || block.Has('I') || block.Has('J');
  return placed && !block.HasAny(MotionWords) && !block.HasAny(NoModalWords);
}

bool HoldsOtherMotion(const Block& block, Word own) {
  for (const Word word : {Word::G00, Word::G01, Word::G02, Word::G03}) {
    if (word != own && block.Has(word)) return true;
  }
  return false;
}

bool StopIsText(const Block& block) {
  const std::string_view text = block.Text();
  const auto open = text.find('(');
  const auto close = text.find(')');
  const auto stop = text.find("M00");
  return open != std::string_view::npos && close != std::string_view::npos &&
         stop != std::string_view::npos && stop > open && stop < close;
}

void LineRounding::Round(ModalState& state) {
  KeepUnrounded(state.Current.X, unrounded_.X);
  KeepUnrounded(state.Current.Y, unrounded_.Y);
  RoundPlane(state.Previous);
  RoundPlane(state.Current);
}

bool LineRounding::EndsWhereItBegins(const ModalState& state) const {
  return Stays(state.Previous.X, state.Current.X, unrounded_.X) &&
         Stays(state.Previous.Y, state.Current.Y, unrounded_.Y);
}

ArcSolution SolveArc(const Block& block, WordReader& reader, const ModalState& state,
                     bool inSubroutine, const SubLevel& level, const LineRounding& rounding,
                     bool clockwise, std::int16_t yDirection) {
  const double radius = reader.LengthOrZero(block, 'R', state.Imperial);
  const core::Vector2 centre = CentreWords(block, reader, state, inSubroutine, level.Rotation);
  const core::Vector2 from = Plane(state.Previous);
  const core::Vector2 to = rounding.EndsWhereItBegins(state) ? from : Plane(state.Current);
  if (radius == 0) {
    return {
        SolveCentreArc(from, to, centre.X, centre.Y,
                       CentreArcTurnsPositive(clockwise, yDirection, state.MirrorX, state.MirrorY)),
        true};
  }
  return {SolveRadiusArc(from, to, radius,
                         RadiusArcTurnsPositive(clockwise, state.MirrorX, state.MirrorY)),
          false};
}

}  // namespace torvane::partprogram

#include "graphics/RecordPainter.h"

#include <array>
#include <cmath>

#include "core/General.h"

namespace torvane::graphics {

namespace {

using core::Vector2;
using partprogram::DrawRecord;
using partprogram::Point3;

/// Places of an arc's figures in Values.
constexpr std::size_t ArcRadius = 0;
constexpr std::size_t ArcStartAngle = 9;
constexpr std::size_t ArcSweep = 10;

struct ChordBand {
  double UpTo;  ///< degrees, included
  int Big;
  int Small;
};

/// From the smallest band up; what lies beyond them has the last row.
constexpr std::array<ChordBand, 3> ChordBands = {{{90, 16, 8}, {180, 32, 16}, {270, 48, 24}}};
constexpr ChordBand LastBand = {0, 64, 32};

Vector2 OnCircle(const DrawRecord& record, double radius, double angle) {
  const Vector2 offset = core::PolarToXY(radius, angle);
  return {record.CentrePoint.X + offset.X, record.CentrePoint.Y + offset.Y};
}

bool Differs(Vector2 point, const Point3& exact) {
  return point.X != exact.X || point.Y != exact.Y;
}

}  // namespace

int ArcChordCount(double sweep, bool big) {
  for (const auto& band : ChordBands) {
    if (std::abs(sweep) <= band.UpTo) return big ? band.Big : band.Small;
  }
  return big ? LastBand.Big : LastBand.Small;
}

void DrawLineRecord(platform::Canvas& canvas, const DrawRecord& record, platform::Colour colour) {
  canvas.Line(record.StartPoint.X, record.StartPoint.Y, record.EndPoint.X, record.EndPoint.Y,
              colour);
}

void DrawArcRecord(platform::Canvas& canvas, const DrawRecord& record, platform::Colour colour) {
  const double radius = record.Values[ArcRadius];
  const double start = record.Values[ArcStartAngle];
  const double sweep = record.Values[ArcSweep];
  const bool big = radius > std::abs(canvas.ScaleWidth()) / 10;
  const int chords = ArcChordCount(sweep, big);
  const double step = sweep / chords;
  const double limit = start + sweep;

  Vector2 at = OnCircle(record, radius, start);
  if (Differs(at, record.StartPoint)) {
    canvas.Line(record.StartPoint.X, record.StartPoint.Y, at.X, at.Y, colour);
  }
  // Counted on the angle: a positive step stops past the limit, a negative one below it, and the
  // count may fall one short by rounding. The number of chords bounds the loop for a damaged
  // record whose angles are too large for a step to show.
  double angle = start + step;
  for (int drawn = 0; drawn < chords && step != 0; ++drawn) {
    const bool within = step > 0 ? angle <= limit : angle >= limit;
    if (!within) break;
    const Vector2 next = OnCircle(record, radius, angle);
    canvas.Line(at.X, at.Y, next.X, next.Y, colour);
    at = next;
    angle += step;
  }
  if (Differs(at, record.EndPoint)) {
    canvas.Line(at.X, at.Y, record.EndPoint.X, record.EndPoint.Y, colour);
  }
}

void DrawPlotRecord(platform::Canvas& canvas, const core::ColourTable& colours,
                    const DrawRecord& record, PaintMode mode) {
  if (!IsCut(record) || record.BeamState1.On == 0) return;
  const platform::Colour colour = colours[RecordColour(record, mode)];
  if (record.Code == partprogram::RecordCode::LineProfile) {
    DrawLineRecord(canvas, record, colour);
  } else {
    DrawArcRecord(canvas, record, colour);
  }
}

}  // namespace torvane::graphics

#include "graphics/RecordPainter.h"

#include <array>
#include <cmath>

#include "core/General.h"

namespace torvane::graphics {

namespace {

using core::Vector2;
using partprogram::DrawRecord;
using partprogram::Figure;
using partprogram::Point3;

struct ChordBand {
  double UpTo;  ///< degrees, included
  int Big;
  int Small;
};

/// From the smallest band up; what lies beyond them has the last row.
constexpr std::array<ChordBand, 3> ChordBands = {{{90, 16, 8}, {180, 32, 16}, {270, 48, 24}}};
constexpr ChordBand LastBand = {0, 64, 32};

bool Differs(const platform::UserPoint& point, const Point3& exact) {
  return point.X != exact.X || point.Y != exact.Y;
}

double StartOf(const DrawRecord& record) { return record[Figure::StartAngle]; }
double SweepOf(const DrawRecord& record) { return record[Figure::Sweep]; }

/// An arc is big against the view when its radius is above a tenth of the view's width.
int ChordsOf(const platform::Canvas& canvas, const DrawRecord& record) {
  const bool big = record[Figure::Radius] > std::abs(canvas.ScaleWidth()) / 10;
  return ArcChordCount(SweepOf(record), big);
}

bool LeavesMark(const DrawRecord& record) { return IsCut(record) && record.BeamOn(); }

/// The chords of a fan around the record's centre, joined to the record's own ends.
void DrawFan(platform::Canvas& canvas, const DrawRecord& record, const ChordFan& fan,
             platform::Colour colour) {
  std::array<platform::UserPoint, MostChords + 3> points{};
  std::size_t count = 0;
  const double radius = record[Figure::Radius];
  const auto put = [&](Vector2 direction) {
    points[count++] = {record.CentrePoint.X + radius * direction.X,
                       record.CentrePoint.Y + radius * direction.Y};
  };
  const auto join = [&](const Point3& exact) { points[count++] = {exact.X, exact.Y}; };
  put(fan.First);
  if (Differs(points[0], record.StartPoint)) {
    count = 0;
    join(record.StartPoint);
    put(fan.First);
  }
  for (int i = 0; i < fan.Count; ++i) put(fan.Ends[static_cast<std::size_t>(i)]);
  if (Differs(points[count - 1], record.EndPoint)) join(record.EndPoint);
  canvas.Lines({points.data(), count}, colour);
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

ChordFan MakeChordFan(double start, double sweep, int chords) {
  ChordFan fan{start, sweep, chords, core::PolarToXY(1, start)};
  const double step = sweep / chords;
  const double limit = start + sweep;
  // Counted on the angle: a positive step stops past the limit, a negative one below it, and the
  // count may fall one short by rounding. The number of chords bounds the loop for a damaged
  // record whose angles are too large for a step to show.
  double angle = start + step;
  while (fan.Count < chords && step != 0 && (step > 0 ? angle <= limit : angle >= limit)) {
    fan.Ends[static_cast<std::size_t>(fan.Count++)] = core::PolarToXY(1, angle);
    angle += step;
  }
  return fan;
}

void DrawArcRecord(platform::Canvas& canvas, const DrawRecord& record, platform::Colour colour) {
  DrawFan(canvas, record, MakeChordFan(StartOf(record), SweepOf(record), ChordsOf(canvas, record)),
          colour);
}

void DrawPlotRecord(platform::Canvas& canvas, const core::ColourTable& colours,
                    const DrawRecord& record, PaintMode mode) {
  if (!LeavesMark(record)) return;
  const platform::Colour colour = colours[RecordColour(record, mode)];
  if (record.Code == partprogram::RecordCode::LineProfile) {
    DrawLineRecord(canvas, record, colour);
  } else {
    DrawArcRecord(canvas, record, colour);
  }
}

void RecordPainter::Draw(const DrawRecord& record, PaintMode mode) {
  if (!LeavesMark(record)) return;
  const platform::Colour colour = colours_[RecordColour(record, mode)];
  if (record.Code == partprogram::RecordCode::LineProfile) {
    DrawLineRecord(canvas_, record, colour);
  } else {
    DrawFan(canvas_, record, FanOf(StartOf(record), SweepOf(record), ChordsOf(canvas_, record)),
            colour);
  }
}

const ChordFan& RecordPainter::FanOf(double start, double sweep, int chords) {
  // Whole degrees spread well; anything else only has to land somewhere.
  const double mark = std::fmod(std::abs(start * 7 + sweep * 3 + chords), KeptFans);
  auto& fan = fans_[std::isfinite(mark) ? static_cast<std::size_t>(mark) : 0];
  if (fan.Start != start || fan.Sweep != sweep || fan.Chords != chords) {
    fan = MakeChordFan(start, sweep, chords);
  }
  return fan;
}

}  // namespace torvane::graphics

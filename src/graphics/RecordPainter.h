// Paints one record: a line as one segment, an arc as chords.
#pragma once

#include <array>

#include "core/ColourTable.h"
#include "core/General.h"
#include "graphics/RecordColour.h"
#include "partprogram/DrawRecord.h"
#include "platform/Canvas.h"

namespace torvane::graphics {

/// The largest number of chords that an arc can have.
inline constexpr std::size_t MostChords = 64;

/// How many chords an arc of `sweep` degrees (either sign) is drawn with: 8, 16, 24 or 32 by its
/// quarter, twice as many when it is `big` against the view. Beyond 360 the last band holds.
[[nodiscard]] int ArcChordCount(double sweep, bool big);

/// One segment from StartPoint to EndPoint.
void DrawLineRecord(platform::Canvas& canvas, const partprogram::DrawRecord& record,
                    platform::Colour colour);

/// The chords of an arc, joined to the record's own ends, which are exact where the polygon's are
/// computed. An arc is big when its radius is above a tenth of the view's width, so it gets more
/// chords when seen closer. An arc without sweep has no chords; only the joins are drawn.
void DrawArcRecord(platform::Canvas& canvas, const partprogram::DrawRecord& record,
                   platform::Colour colour);

/// The ends of an arc's chords as directions from its centre, without the arc's start.
struct ChordFan {
  double Start = 0;  ///< degrees, as asked for
  double Sweep = 0;  ///< degrees
  int Chords = 0;    ///< asked for; 0: no fan yet
  core::Vector2 First;
  int Count = 0;  ///< chords that there are: none without sweep, one less where rounding took one
  std::array<core::Vector2, MostChords> Ends{};
};
[[nodiscard]] ChordFan MakeChordFan(double start, double sweep, int chords);

/// Chooses the colour and draws; paints nothing unless the record is a cut with the beam on.
void DrawPlotRecord(platform::Canvas& canvas, const core::ColourTable& colours,
                    const partprogram::DrawRecord& record, PaintMode mode);

/// The same for many records of one program: it keeps the fans of the arcs drawn last, as programs
/// are full of the same corners and holes.
class RecordPainter {
 public:
  /// Both must outlive it.
  RecordPainter(platform::Canvas& canvas, const core::ColourTable& colours)
      : canvas_(canvas), colours_(colours) {}

  void Draw(const partprogram::DrawRecord& record, PaintMode mode);

 private:
  static constexpr std::size_t KeptFans = 16;

  const ChordFan& FanOf(double start, double sweep, int chords);

  platform::Canvas& canvas_;
  const core::ColourTable& colours_;
  std::array<ChordFan, KeptFans> fans_{};
};

}  // namespace torvane::graphics

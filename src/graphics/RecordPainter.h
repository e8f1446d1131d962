// Paints one record: a line as one segment, an arc as chords.
#pragma once

#include "core/ColourTable.h"
#include "graphics/RecordColour.h"
#include "partprogram/DrawRecord.h"
#include "platform/Canvas.h"

namespace torvane::graphics {

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

/// Chooses the colour and draws; paints nothing unless the record is a cut with the beam on.
void DrawPlotRecord(platform::Canvas& canvas, const core::ColourTable& colours,
                    const partprogram::DrawRecord& record, PaintMode mode);

}  // namespace torvane::graphics

// Replays a plot file: record by record, nothing kept.
#pragma once

#include "core/ColourTable.h"
#include "core/PlotSettings.h"
#include "graphics/RecordColour.h"
#include "partprogram/DrawRecord.h"
#include "platform/Canvas.h"
#include "platform/FileSystem.h"

namespace torvane::graphics {

/// False for a line or an arc that lies outside a view altogether; anything else may show.
[[nodiscard]] bool MayShow(const partprogram::DrawRecord& record, const core::PlotView& view);

/// Gives the records 2 to `count` of a ".drw" or ".krw" to DrawPlotRecord in order. A file that
/// ends earlier is drawn as far as it goes; no record is checked. With `clip`, only those that
/// MayShow in it, so that a part of a large plot costs what it shows.
void DrawRecordsOf(platform::RecordFile& file, int count, platform::Canvas& canvas,
                   const core::ColourTable& colours, const core::PlotView* clip = nullptr);

}  // namespace torvane::graphics

// Replays a plot file: record by record, nothing kept.
#pragma once

#include "core/ColourTable.h"
#include "graphics/RecordColour.h"
#include "platform/Canvas.h"
#include "platform/FileSystem.h"

namespace torvane::graphics {

/// Gives the records 2 to `count` of a ".drw" or ".krw" to DrawPlotRecord in order. A file that
/// ends earlier is drawn as far as it goes; no record is checked.
void DrawRecordsOf(platform::RecordFile& file, int count, platform::Canvas& canvas,
                   const core::ColourTable& colours);

}  // namespace torvane::graphics

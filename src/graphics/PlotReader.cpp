#include "graphics/PlotReader.h"

#include <array>

#include "graphics/RecordPainter.h"
#include "partprogram/DrawRecord.h"
#include "platform/VectorState.h"

namespace torvane::graphics {

void DrawRecordsOf(platform::RecordFile& file, int count, platform::Canvas& canvas,
                   const core::ColourTable& colours) {
  std::array<char, partprogram::DrawRecordSize> bytes{};
  partprogram::DrawRecord record;
  RecordPainter painter(canvas, colours);
  platform::ClearVectorState();
  for (int number = 2; number <= count; ++number) {
    if (!file.Read(static_cast<std::uint32_t>(number), bytes)) return;
    partprogram::DecodePlotFields(bytes, record);
    painter.Draw(record, PaintMode::Background);
  }
}

}  // namespace torvane::graphics

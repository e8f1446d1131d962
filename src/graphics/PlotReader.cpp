#include "graphics/PlotReader.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "graphics/RecordPainter.h"
#include "partprogram/DrawRecord.h"
#include "platform/VectorState.h"

namespace torvane::graphics {

namespace {

/// Room round a view, in its widths: what lies in it is drawn, pens are wider than a line.
constexpr double Margin = 0.01;

bool Overlaps(double low, double high, double a, double b, double margin) {
  return high >= std::min(a, b) - margin && low <= std::max(a, b) + margin;
}

}  // namespace

bool MayShow(const partprogram::DrawRecord& record, const core::PlotView& view) {
  const bool arc = record.Code == partprogram::RecordCode::ArcProfile;
  const double reach = arc ? std::abs(record[partprogram::Figure::Radius]) : 0.0F;
  const auto& from = arc ? record.CentrePoint : record.StartPoint;
  const auto& to = arc ? record.CentrePoint : record.EndPoint;
  const double margin = Margin * std::abs(static_cast<double>(view.Corner2X) - view.Corner1X);
  return Overlaps(std::min(from.X, to.X) - reach, std::max(from.X, to.X) + reach, view.Corner1X,
                  view.Corner2X, margin) &&
         Overlaps(std::min(from.Y, to.Y) - reach, std::max(from.Y, to.Y) + reach, view.Corner1Y,
                  view.Corner2Y, margin);
}

void DrawRecordsOf(platform::RecordFile& file, int count, platform::Canvas& canvas,
                   const core::ColourTable& colours, const core::PlotView* clip) {
  std::array<char, partprogram::DrawRecordSize> room{};
  partprogram::DrawRecord record;
  RecordPainter painter(canvas, colours);
  platform::ClearVectorState();
  for (int number = 2; number <= count; ++number) {
    const auto found = file.Look(static_cast<std::uint32_t>(number), room);
    if (found.empty()) return;
    const auto bytes = found.first<partprogram::DrawRecordSize>();
    if (!IsCut(partprogram::CodeIn(bytes))) continue;
    partprogram::DecodePlotFields(bytes, record);
    if (clip != nullptr && !MayShow(record, *clip)) continue;
    painter.Draw(record, PaintMode::Background);
  }
}

}  // namespace torvane::graphics

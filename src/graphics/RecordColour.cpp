#include "graphics/RecordColour.h"

#include <array>

namespace torvane::graphics {

namespace {

using core::ColourName;
using partprogram::DrawRecord;

bool Always(const DrawRecord& /*record*/) { return true; }
bool SkipOne(const DrawRecord& record) { return record.SkipLevel == 1; }
bool SkipTwo(const DrawRecord& record) { return record.SkipLevel == 2; }
bool NoCut(const DrawRecord& record) { return !IsCut(record); }
bool Beam(const DrawRecord& record) { return record.BeamOn(); }
bool NoMark(const DrawRecord& record) { return NoCut(record) || !Beam(record); }
bool Blended(const DrawRecord& record) { return record.Blended != 0; }
bool KerfLeft(const DrawRecord& record) { return record.KerfSide == 1; }
bool KerfRight(const DrawRecord& record) { return record.KerfSide == 2; }

struct ColourRule {
  PaintMode Mode;
  bool (*Applies)(const DrawRecord& record);
  ColourName Colour;
};

/// Tested from the top; each mode ends in a row that always applies.
constexpr std::array<ColourRule, 14> ColourRules = {{
    {PaintMode::Erase, Always, ColourName::SheetFill},

    {PaintMode::Background, SkipOne, ColourName::BlockSkip1},
    {PaintMode::Background, SkipTwo, ColourName::BlockSkip2},
    {PaintMode::Background, NoMark, ColourName::SheetFill},
    {PaintMode::Background, Blended, ColourName::BackgroundProfilingBlended},
    {PaintMode::Background, KerfLeft, ColourName::BackgroundProfilingG41},
    {PaintMode::Background, KerfRight, ColourName::BackgroundProfilingG42},
    {PaintMode::Background, Always, ColourName::BackgroundProfilingG40},

    {PaintMode::RealTime, SkipOne, ColourName::BlockSkip1},
    {PaintMode::RealTime, SkipTwo, ColourName::BlockSkip2},
    {PaintMode::RealTime, NoCut, ColourName::SheetFill},
    {PaintMode::RealTime, Beam, ColourName::RealTimeProfiling},
    {PaintMode::RealTime, Always, ColourName::RealTimeMovement},

    {PaintMode::Highlight, Always, ColourName::HighlightedDrawing},
}};

}  // namespace

ColourName RecordColour(const DrawRecord& record, PaintMode mode) {
  for (const auto& rule : ColourRules) {
    if (rule.Mode == mode && rule.Applies(record)) return rule.Colour;
  }
  return ColourName::SheetFill;
}

}  // namespace torvane::graphics

#include <gtest/gtest.h>

#include "PlotSetting.h"
#include "graphics/RecordColour.h"

namespace torvane::graphics {
namespace {

using core::ColourName;
using tests::Cut;
using tests::MoveTo;

partprogram::DrawRecord CutWith(int skip, int kerf, bool blended) {
  auto record = Cut(0, 0, 10, 0);
  record.SkipLevel = static_cast<std::int16_t>(skip);
  record.KerfSide = static_cast<std::int16_t>(kerf);
  record.Blended = blended ? -1 : 0;
  return record;
}

struct ColourCase {
  const char* Name;
  PaintMode Mode;
  partprogram::DrawRecord Record;
  ColourName Colour;
};

class RecordColours : public ::testing::TestWithParam<ColourCase> {};

TEST_P(RecordColours, AreTheFirstRowThatFits) {
  EXPECT_EQ(RecordColour(GetParam().Record, GetParam().Mode), GetParam().Colour);
}

partprogram::DrawRecord Dark(partprogram::DrawRecord record) {
  record.ChangeCommon().BeamState1.On = 0;
  return record;
}

partprogram::DrawRecord MoveWithSkip() {
  auto record = MoveTo(0, 0, 1, 1);
  record.SkipLevel = 1;
  return record;
}

constexpr auto Back = PaintMode::Background;
constexpr auto Real = PaintMode::RealTime;

INSTANTIATE_TEST_SUITE_P(
    Table, RecordColours,
    ::testing::Values(
        ColourCase{"EraseIsAlwaysTheFill", PaintMode::Erase, CutWith(1, 1, true),
                   ColourName::SheetFill},
        ColourCase{"PlainCut", Back, CutWith(0, 0, false), ColourName::BackgroundProfilingG40},
        ColourCase{"KerfLeft", Back, CutWith(0, 1, false), ColourName::BackgroundProfilingG41},
        ColourCase{"KerfRight", Back, CutWith(0, 2, false), ColourName::BackgroundProfilingG42},
        ColourCase{"UnknownKerfSideIsPlain", Back, CutWith(0, 3, false),
                   ColourName::BackgroundProfilingG40},
        ColourCase{"BlendedBeforeKerf", Back, CutWith(0, 1, true),
                   ColourName::BackgroundProfilingBlended},
        ColourCase{"SkipOneBeforeKerf", Back, CutWith(1, 1, false), ColourName::BlockSkip1},
        ColourCase{"SkipTwoBeforeBlended", Back, CutWith(2, 0, true), ColourName::BlockSkip2},
        ColourCase{"UnknownSkipIsNoSkip", Back, CutWith(3, 2, false),
                   ColourName::BackgroundProfilingG42},
        ColourCase{"MoveIsTheFill", Back, MoveTo(0, 0, 1, 1), ColourName::SheetFill},
        ColourCase{"MoveWithSkipHasTheSkipColourAllTheSame", Back, MoveWithSkip(),
                   ColourName::BlockSkip1},
        ColourCase{"DarkCutIsTheFill", Back, Dark(CutWith(0, 1, false)), ColourName::SheetFill},
        ColourCase{"RealTimeSkipOne", Real, CutWith(1, 0, false), ColourName::BlockSkip1},
        ColourCase{"RealTimeSkipTwo", Real, CutWith(2, 0, false), ColourName::BlockSkip2},
        ColourCase{"RealTimeMoveIsTheFill", Real, MoveTo(0, 0, 1, 1), ColourName::SheetFill},
        ColourCase{"RealTimeCut", Real, CutWith(0, 1, true), ColourName::RealTimeProfiling},
        ColourCase{"RealTimeDarkCut", Real, Dark(CutWith(0, 1, false)),
                   ColourName::RealTimeMovement},
        ColourCase{"HighlightIsAlwaysOneColour", PaintMode::Highlight, MoveWithSkip(),
                   ColourName::HighlightedDrawing}),
    [](const auto& each) { return each.param.Name; });

}  // namespace
}  // namespace torvane::graphics

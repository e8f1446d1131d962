#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "PlotSetting.h"
#include "graphics/PlotReader.h"
#include "graphics/RecordPainter.h"

namespace torvane::graphics {
namespace {

using tests::Arc;
using tests::Cut;
using tests::DrawRecord;
using tests::MoveTo;
using tests::RecordingCanvas;

DrawRecord AnyRecord() {
  const auto number = [] { return *rc::gen::inRange(-2000, 2000) / 4.0; };
  const auto coordinate = [&] { return static_cast<float>(number()); };
  DrawRecord record;
  switch (*rc::gen::inRange(0, 4)) {
    case 0:
      record = MoveTo(coordinate(), coordinate(), coordinate(), coordinate());
      break;
    case 1:
      record = Cut(coordinate(), coordinate(), coordinate(), coordinate());
      break;
    default:
      // Few angles, so that fans are kept, met again and displaced.
      record = Arc(number(), number(), 1 + *rc::gen::inRange(0, 200),
                   *rc::gen::element(0.0, 45.0, 90.0, 180.0, 270.0, 12.345),
                   *rc::gen::element(90.0, -90.0, 180.0, 360.0, -360.0, 30.5, 0.0));
  }
  record.SkipLevel = static_cast<std::int16_t>(*rc::gen::inRange(0, 3));
  record.KerfSide = static_cast<std::int16_t>(*rc::gen::inRange(0, 3));
  record.Blended = *rc::gen::arbitrary<bool>() ? std::int16_t{-1} : std::int16_t{0};
  return record;
}

RC_GTEST_PROP(PlotOfManyRecords, DrawsEachAsItIsDrawnAlone, ()) {
  const auto count = *rc::gen::inRange(1, 60);
  std::vector<DrawRecord> records;
  for (int i = 0; i < count; ++i) records.push_back(AnyRecord());

  const core::ColourTable colours;
  RecordingCanvas together(800, 600);
  RecordingCanvas alone(800, 600);
  RecordPainter painter(together, colours);
  for (const auto& record : records) {
    painter.Draw(record, PaintMode::Background);
    DrawPlotRecord(alone, colours, record, PaintMode::Background);
  }
  RC_ASSERT(together.Calls() == alone.Calls());
}

RC_GTEST_PROP(PlotOfManyRecords, WhatIsClippedHasNoPointInTheView, ()) {
  const DrawRecord record = AnyRecord();
  core::PlotView view;
  view.Corner1X = *rc::gen::inRange(-500, 500);
  view.Corner2X = view.Corner1X + static_cast<float>(*rc::gen::inRange(1, 400));
  view.Corner1Y = *rc::gen::inRange(-500, 500);
  view.Corner2Y = view.Corner1Y + static_cast<float>(*rc::gen::inRange(-400, 400));
  if (MayShow(record, view)) return;
  RecordingCanvas canvas(800, 600);
  DrawPlotRecord(canvas, {}, record, PaintMode::Background);
  for (const auto& line : canvas.CallsOf(platform::CanvasCallKind::Line)) {
    for (int i = 0; i <= 20; ++i) {
      const double x = line.X1 + (line.X2 - line.X1) * i / 20;
      const double y = line.Y1 + (line.Y2 - line.Y1) * i / 20;
      RC_ASSERT(!(x > view.Corner1X && x < view.Corner2X &&
                  y > std::min(view.Corner1Y, view.Corner2Y) &&
                  y < std::max(view.Corner1Y, view.Corner2Y)));
    }
  }
}

RC_GTEST_PROP(PlotOfManyRecords, FromAFileIsThatOfTheRecords, ()) {
  const auto count = *rc::gen::inRange(1, 40);
  std::vector<DrawRecord> records = {tests::SheetRecord()};
  for (int i = 0; i < count; ++i) records.push_back(AnyRecord());
  tests::MemoryFiles files;
  files.Files["P.drw"] = tests::FileOf(records);

  const core::ColourTable colours;
  RecordingCanvas fromFile(800, 600);
  DrawRecordsOf(*files.OpenRecords("P.drw", partprogram::DrawRecordSize),
                static_cast<int>(records.size()), fromFile, colours);
  RecordingCanvas direct(800, 600);
  for (const auto& record : records) {
    DrawPlotRecord(direct, colours, record, PaintMode::Background);
  }
  RC_ASSERT(fromFile.Calls() == direct.Calls());
}

RC_GTEST_PROP(PlotFields, OfAnyBytesAreThoseOfTheWholeRecord, ()) {
  std::array<char, partprogram::DrawRecordSize> bytes{};
  for (auto& byte : bytes) byte = *rc::gen::arbitrary<char>();
  const auto whole = partprogram::DecodeRecord(bytes);
  DrawRecord some;
  partprogram::DecodePlotFields(bytes, some);
  // As bytes, because a float of any bytes may be no number.
  DrawRecord expected;
  expected.Code = whole.Code;
  expected.SkipLevel = whole.SkipLevel;
  expected.StartPoint = whole.StartPoint;
  expected.EndPoint = whole.EndPoint;
  expected.CentrePoint = whole.CentrePoint;
  using partprogram::Figure;
  for (const Figure figure :
       {Figure::Length, Figure::SecondLength, Figure::ThirdLength, Figure::Angle, Figure::Sweep}) {
    expected[figure] = whole[figure];
  }
  expected.KerfSide = whole.KerfSide;
  expected.ChangeCommon().BeamState1.On = whole.Common().BeamState1.On;
  expected.Blended = whole.Blended;
  RC_ASSERT(tests::FileOf({some}) == tests::FileOf({expected}));
}

TEST(PlotOfAFile, LeavesTheFieldsOfOneRecordOutOfTheNext) {
  auto blended = Cut(0, 0, 1, 1);
  blended.Blended = -1;
  const auto plain = Cut(1, 1, 2, 2);
  tests::MemoryFiles files;
  files.Files["P.drw"] = tests::FileOf({tests::SheetRecord(), blended, plain});
  const core::ColourTable colours;
  RecordingCanvas canvas(800, 600);
  DrawRecordsOf(*files.OpenRecords("P.drw", partprogram::DrawRecordSize), 3, canvas, colours);
  ASSERT_EQ(canvas.Calls().size(), 2U);
  EXPECT_EQ(canvas.Calls()[0].Ink, colours[core::ColourName::BackgroundProfilingBlended]);
  EXPECT_EQ(canvas.Calls()[1].Ink, colours[core::ColourName::BackgroundProfilingG40]);
}

}  // namespace
}  // namespace torvane::graphics

#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "PlotSetting.h"
#include "graphics/RecordPainter.h"

namespace torvane::graphics {
namespace {

using partprogram::Figure;
using tests::Arc;
using tests::CanvasCall;
using tests::CanvasCallKind;
using tests::Cut;
using tests::DrawRecord;
using tests::MoveTo;
using tests::RecordingCanvas;

constexpr platform::Colour Ink = 0x123456;

/// A canvas whose view is `width` wide.
RecordingCanvas CanvasOf(double width) {
  RecordingCanvas canvas(800, 600);
  canvas.Scale({0, width * 0.75}, {width, 0});
  canvas.Forget();
  return canvas;
}

std::vector<CanvasCall> DrawnArc(const DrawRecord& record, double width) {
  auto canvas = CanvasOf(width);
  DrawArcRecord(canvas, record, Ink);
  return canvas.Calls();
}

bool OnTheCircle(double x, double y, const DrawRecord& arc) {
  const double distance = std::hypot(x - arc.CentrePoint.X, y - arc.CentrePoint.Y);
  return std::abs(distance - arc[partprogram::Figure::Radius]) <
         1e-6 * (1 + arc[partprogram::Figure::Radius]);
}

/// The segments between points of the computed polygon, without the joins to the record's ends.
int ChordsOf(const std::vector<CanvasCall>& lines, const DrawRecord& arc) {
  const double half = std::abs(static_cast<double>(arc[partprogram::Figure::Sweep])) / 2;
  int chords = 0;
  for (const auto& line : lines) {
    const double length = std::hypot(line.X2 - line.X1, line.Y2 - line.Y1);
    chords += length > 1e-3 * arc[partprogram::Figure::Radius] * std::min(1.0, half) ? 1 : 0;
  }
  return chords;
}

TEST(LineRecord, IsOneSegmentInXAndY) {
  auto canvas = CanvasOf(1000);
  auto record = Cut(1, 2, 3, 4);
  record.StartPoint.Z = 7;
  DrawLineRecord(canvas, record, Ink);
  EXPECT_EQ(canvas.Calls(), (std::vector<CanvasCall>{{CanvasCallKind::Line, 1, 2, 3, 4, Ink}}));
}

TEST(ArcChordCounts, FollowTheTable) {
  struct Row {
    double Sweep;
    int Big;
    int Small;
  };
  for (const auto& row : std::vector<Row>{{0, 16, 8},
                                          {90, 16, 8},
                                          {90.001, 32, 16},
                                          {180, 32, 16},
                                          {180.001, 48, 24},
                                          {270, 48, 24},
                                          {270.001, 64, 32},
                                          {360, 64, 32},
                                          {1000, 64, 32}}) {
    EXPECT_EQ(ArcChordCount(row.Sweep, true), row.Big) << row.Sweep;
    EXPECT_EQ(ArcChordCount(-row.Sweep, true), row.Big) << row.Sweep;
    EXPECT_EQ(ArcChordCount(row.Sweep, false), row.Small) << row.Sweep;
  }
}

TEST(ArcRecord, HalfCircleAboveATenthOfTheViewHas32ChordsAndSeenFromFurther16) {
  const auto arc = Arc(500, 300, 101, 0, 180);
  EXPECT_EQ(ChordsOf(DrawnArc(arc, 1000), arc), 32);
  EXPECT_EQ(ChordsOf(DrawnArc(arc, 1500), arc), 16);
}

TEST(ArcRecord, RadiusOfExactlyATenthIsNotBig) {
  const auto arc = Arc(500, 300, 100, 0, 180);
  EXPECT_EQ(ChordsOf(DrawnArc(arc, 1000), arc), 16);
}

TEST(ArcRecord, FullCircleHas64Or32Chords) {
  const auto arc = Arc(500, 300, 150, 0, 360);
  EXPECT_EQ(ChordsOf(DrawnArc(arc, 1000), arc), 64);
  EXPECT_EQ(ChordsOf(DrawnArc(arc, 5000), arc), 32);
}

TEST(ArcRecord, SweepOfMinus90RunsClockwiseAndEndsOnItsEndPointExactly) {
  const auto arc = Arc(100, 100, 50, 90, -90);
  for (const auto& [width, chords] : {std::pair{300.0, 16}, std::pair{1000.0, 8}}) {
    const auto lines = DrawnArc(arc, width);
    EXPECT_EQ(ChordsOf(lines, arc), chords);
    EXPECT_EQ(lines.back().X2, arc.EndPoint.X);
    EXPECT_EQ(lines.back().Y2, arc.EndPoint.Y);
    for (const auto& line : lines) {
      const double cross = (line.X1 - 100) * (line.Y2 - 100) - (line.Y1 - 100) * (line.X2 - 100);
      EXPECT_LE(cross, 1e-2) << "a chord ran counter-clockwise";
    }
    // From the top to the right, so by way of the quarter between them.
    EXPECT_GT(lines[lines.size() / 2].X1, 110);
    EXPECT_GT(lines[lines.size() / 2].Y1, 110);
  }
}

TEST(ArcRecord, IsJoinedToItsOwnEndsWhereThePolygonMissesThem) {
  auto arc = Arc(100, 100, 50, 0, 90);
  arc.StartPoint.X += 1;
  arc.EndPoint.Y += 2;
  const auto lines = DrawnArc(arc, 10000);
  ASSERT_EQ(lines.size(), 10U);
  EXPECT_EQ(lines.front().X1, 151);
  EXPECT_EQ(lines.front().X2, 150);
  EXPECT_EQ(lines.back().Y2, 152);
}

TEST(ArcRecord, WhosePolygonMeetsItsStartExactlyHasNoJoinThere) {
  // At angle 0 the computed start is the centre and the radius, without a rest.
  const auto arc = Arc(100, 100, 50, 0, 90);
  const auto lines = DrawnArc(arc, 10000);
  EXPECT_TRUE(OnTheCircle(lines.front().X2, lines.front().Y2, arc));
  EXPECT_NE(lines.front().Y2, 100) << "the first segment is a chord already";
}

TEST(ArcRecord, WithoutSweepHasNoChordsAndStillReachesItsEnd) {
  auto arc = Arc(100, 100, 50, 0, 0);
  arc.EndPoint = {10, 20, 0};
  EXPECT_EQ(DrawnArc(arc, 1000),
            (std::vector<CanvasCall>{{CanvasCallKind::Line, 150, 100, 10, 20, Ink}}));
}

TEST(ArcRecord, SweepBeyondACircleHasTheLastBand) {
  const auto arc = Arc(100, 100, 50, 0, 720);
  EXPECT_EQ(ChordsOf(DrawnArc(arc, 10000), arc), 32);
}

TEST(ArcRecord, OfADamagedFileComesToAnEnd) {
  const float endless = std::numeric_limits<float>::infinity();
  const float nothing = std::numeric_limits<float>::quiet_NaN();
  for (const float bad : {1e30F, -1e30F, 3e38F, endless, -endless, nothing}) {
    for (const auto field : {Figure::Radius, Figure::StartAngle, Figure::Sweep}) {
      auto arc = Arc(100, 100, 50, 0, 90);
      arc[field] = bad;
      EXPECT_LE(DrawnArc(arc, 1000).size(), 66U) << partprogram::PlaceOf(field) << " " << bad;
    }
  }
}

RC_GTEST_PROP(ArcRecordProperties, VerticesLieOnTheCircleAndThePathRunsFromStartToEnd, ()) {
  const auto number = [](int low, int high) { return *rc::gen::inRange(low, high) / 1000.0; };
  const double radius = number(100, 500'000);
  const double sweep = number(1, 360'000) * (*rc::gen::arbitrary<bool>() ? 1 : -1);
  const auto arc =
      Arc(number(-500'000, 500'000), number(-500'000, 500'000), radius, number(0, 360'000), sweep);
  const double width = number(10'000, 5'000'000);
  const auto lines = DrawnArc(arc, width);

  RC_ASSERT(!lines.empty());
  RC_ASSERT(lines.size() <= 66U);
  RC_ASSERT(lines.front().X1 == arc.StartPoint.X);
  RC_ASSERT(lines.front().Y1 == arc.StartPoint.Y);
  RC_ASSERT(lines.back().X2 == arc.EndPoint.X);
  RC_ASSERT(lines.back().Y2 == arc.EndPoint.Y);
  for (std::size_t i = 1; i < lines.size(); ++i) {
    RC_ASSERT(lines[i].X1 == lines[i - 1].X2);
    RC_ASSERT(lines[i].Y1 == lines[i - 1].Y2);
    RC_ASSERT(OnTheCircle(lines[i].X1, lines[i].Y1, arc));
  }
  // The count of the table, one less where the angle came out past the limit, and the two joins.
  const auto chords =
      static_cast<std::size_t>(ArcChordCount(arc[partprogram::Figure::Sweep], radius > width / 10));
  RC_ASSERT(lines.size() >= chords);
  RC_ASSERT(lines.size() <= chords + 2);
}

RC_GTEST_PROP(ArcRecordProperties, TheSweptAngleIsTheSweep, ()) {
  const double sweep = *rc::gen::inRange(1'000, 359'000) / 1000.0;
  const auto arc = Arc(0, 0, 200, *rc::gen::inRange(0, 360), sweep);
  double swept = 0;
  for (const auto& line : DrawnArc(arc, 1000)) {
    swept +=
        std::atan2(line.X1 * line.Y2 - line.Y1 * line.X2, line.X1 * line.X2 + line.Y1 * line.Y2);
  }
  RC_ASSERT(std::abs(swept * 180 / core::Pi - sweep) < 1e-2);
}

TEST(PlotRecord, OnlyACutWithTheBeamOnLeavesAMark) {
  const core::ColourTable colours;
  for (const auto mode :
       {PaintMode::Erase, PaintMode::Background, PaintMode::RealTime, PaintMode::Highlight}) {
    auto canvas = CanvasOf(1000);
    DrawPlotRecord(canvas, colours, MoveTo(0, 0, 10, 10), mode);
    auto moving = MoveTo(0, 0, 10, 10);
    moving.ChangeCommon().BeamState1.On = -1;
    DrawPlotRecord(canvas, colours, moving, mode);
    auto darkLine = Cut(0, 0, 10, 10);
    darkLine.ChangeCommon().BeamState1.On = 0;
    DrawPlotRecord(canvas, colours, darkLine, mode);
    auto darkArc = Arc(0, 0, 10, 0, 90);
    darkArc.ChangeCommon().BeamState1.On = 0;
    DrawPlotRecord(canvas, colours, darkArc, mode);
    for (const int code : {100, 151, 210, 220, 225, 230, 311, 321, 350, 355, 360, 365, 370, 400,
                           500, 0, -1, 32767}) {
      auto other = Cut(0, 0, 10, 10);
      other.Code = static_cast<std::int16_t>(code);
      DrawPlotRecord(canvas, colours, other, mode);
    }
    EXPECT_TRUE(canvas.Calls().empty());
  }
}

TEST(PlotRecord, AnyBeamWordButZeroCuts) {
  auto canvas = CanvasOf(1000);
  auto record = Cut(0, 0, 10, 10);
  record.ChangeCommon().BeamState1.On = 1;
  DrawPlotRecord(canvas, core::ColourTable(), record, PaintMode::Background);
  EXPECT_EQ(canvas.Calls().size(), 1U);
}

TEST(PlotRecord, SkippedBlockWithKerfPaintsInTheSkipColour) {
  const core::ColourTable colours;
  auto canvas = CanvasOf(1000);
  auto record = Cut(0, 0, 10, 10);
  record.SkipLevel = 1;
  record.KerfSide = 1;
  DrawPlotRecord(canvas, colours, record, PaintMode::Background);
  ASSERT_EQ(canvas.Calls().size(), 1U);
  EXPECT_EQ(canvas.Calls()[0].Ink, colours[core::ColourName::BlockSkip1]);
}

TEST(PlotRecord, ArcIsDrawnInItsColourThroughout) {
  const core::ColourTable colours;
  auto canvas = CanvasOf(1000);
  auto record = Arc(0, 0, 10, 0, 90);
  record.KerfSide = 2;
  DrawPlotRecord(canvas, colours, record, PaintMode::Background);
  ASSERT_GE(canvas.Calls().size(), 8U);
  for (const auto& call : canvas.Calls()) {
    EXPECT_EQ(call.Ink, colours[core::ColourName::BackgroundProfilingG42]);
    EXPECT_EQ(call.Width, 1);
    EXPECT_EQ(call.Style, platform::PenStyle::Solid);
  }
}

}  // namespace
}  // namespace torvane::graphics

// The walk over the records on view, and the pick.
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "partprogram/Binding.h"
#include "restart/VisualWalk.h"

namespace torvane::restart {
namespace {

using partprogram::DrawRecord;

DrawRecord Line(float x1, float y1, float x2, float y2, int block = 0) {
  DrawRecord record;
  record.Code = partprogram::RecordCode::LineProfile;
  record.BlockNumber = static_cast<std::int16_t>(block);
  record.StartPoint = {x1, y1, 0};
  record.EndPoint = {x2, y2, 0};
  partprogram::FinishRecord(record);
  return record;
}

DrawRecord PointRecord(std::int16_t code, float x, float y) {
  DrawRecord record;
  record.Code = code;
  record.CentrePoint = {x, y, 0};
  partprogram::FinishRecord(record);
  return record;
}

/// Records from 2 on; record 1 is a header.
struct Plot {
  std::vector<DrawRecord> All{DrawRecord{}};
  explicit Plot(std::vector<DrawRecord> records) {
    All.insert(All.end(), records.begin(), records.end());
  }
  [[nodiscard]] PlotRecords Records() const {
    return {static_cast<std::int16_t>(All.size()),
            [this](std::int16_t number) -> std::optional<DrawRecord> {
              const auto index = static_cast<std::size_t>(number - 1);
              if (number < 1 || index >= All.size()) return std::nullopt;
              return All[index];
            }};
  }
};

core::PlotView ViewOf(float x1, float y1, float x2, float y2) {
  core::PlotView view;
  view.Corner1X = x1;
  view.Corner1Y = y1;
  view.Corner2X = x2;
  view.Corner2Y = y2;
  return view;
}

const core::PlotView Up = ViewOf(0, 100, 100, 0);
const core::PlotView Down = ViewOf(0, 0, 100, 100);

TEST(RecordInView, APointOnTheEdgeDoesNotCount) {
  EXPECT_FALSE(RecordInView(Line(100, 50, 200, 50), Up));
  EXPECT_FALSE(RecordInView(Line(50, 100, 50, 200), Down));
  EXPECT_TRUE(RecordInView(Line(99.9F, 50, 200, 50), Up));
  EXPECT_TRUE(RecordInView(Line(50, 99.9F, 50, 200), Down));
}

TEST(RecordInView, ALineThatOnlyCrossesTheViewIsNotInIt) {
  EXPECT_FALSE(RecordInView(Line(-50, 50, 150, 50), Up));
}

TEST(RecordInView, RecordsWithoutPointsAreInViewWheneverTheDatumIs) {
  namespace Code = partprogram::RecordCode;
  for (const std::int16_t code : {Code::Settings, Code::LoadPosition, Code::OpenClamps}) {
    const DrawRecord record = PointRecord(code, 500, 500);
    EXPECT_FALSE(RecordInView(record, Up)) << "the datum lies on its corner";
    EXPECT_TRUE(RecordInView(record, ViewOf(-10, 100, 100, -10)));
    EXPECT_FALSE(RecordInView(record, ViewOf(400, 600, 600, 400))) << "its place does not count";
  }
  EXPECT_TRUE(RecordInView(PointRecord(Code::Dwell, 500, 500), ViewOf(400, 600, 600, 400)));
}

TEST(VisualWalk, BeginsWithTheFirstOnView) {
  const Plot plot({Line(500, 500, 600, 600), Line(10, 10, 20, 20), Line(500, 5, 600, 6),
                   Line(30, 30, 40, 40), Line(700, 7, 800, 8)});
  EXPECT_EQ(BeginWalk(plot.Records(), Up), (VisualState{3, 5, 5, 3}));
  EXPECT_EQ(BeginWalk(plot.Records(), ViewOf(1000, 1100, 1100, 1000)), VisualState{});
  EXPECT_EQ(BeginWalk(Plot({}).Records(), Up), VisualState{});
}

TEST(VisualWalk, GoesRoundTheRecordsOnView) {
  const Plot plot(
      {Line(10, 10, 20, 20), Line(500, 5, 600, 6), Line(30, 30, 40, 40), Line(50, 50, 60, 60)});
  const PlotRecords records = plot.Records();
  VisualState state = BeginWalk(records, Up);
  const auto press = [&](WalkKey key) {
    return state.VisualCurrent = Walk(records, Up, state, key);
  };
  EXPECT_EQ(press(WalkKey::Next), 4);
  EXPECT_EQ(press(WalkKey::Next), 5);
  EXPECT_EQ(press(WalkKey::Next), 2) << "from the last to the first";
  EXPECT_EQ(press(WalkKey::Previous), 5) << "from the first to the last";
  EXPECT_EQ(press(WalkKey::Previous), 4);
  EXPECT_EQ(press(WalkKey::Previous), 2);
  EXPECT_EQ(press(WalkKey::Last), 5);
  EXPECT_EQ(press(WalkKey::First), 2);
}

TEST(VisualWalk, ASingleRecordOnViewStays) {
  const Plot plot({Line(500, 5, 600, 6), Line(10, 10, 20, 20)});
  VisualState state = BeginWalk(plot.Records(), Up);
  for (const WalkKey key : {WalkKey::First, WalkKey::Previous, WalkKey::Next, WalkKey::Last}) {
    EXPECT_EQ(Walk(plot.Records(), Up, state, key), 3);
  }
}

TEST(VisualPick, NeedsAnOuterBoxWithItsEdges) {
  const Plot plot({Line(100, 100, 200, 100)});
  EXPECT_EQ(PickRecord(plot.Records(), 150, 100), 2);
  const auto& box = plot.All[1].BoxOuter;
  EXPECT_EQ(PickRecord(plot.Records(), box.MinX, box.MaxY), 2);
  EXPECT_EQ(PickRecord(plot.Records(), box.MinX - 0.01F, 100), std::nullopt);
}

TEST(VisualPick, TakesTheNearestOfSixPointsAndTheEarlierOnATie) {
  const Plot corner({Line(0, 0, 100, 0), Line(100, 0, 100, 100)});
  EXPECT_EQ(PickRecord(corner.Records(), 100, 0), 2) << "both end there";
  EXPECT_EQ(PickRecord(corner.Records(), 101, 4), 2);
  const Plot beside({Line(0, 0, 100, 0), Line(90, 2, 96, 2)});
  EXPECT_EQ(PickRecord(beside.Records(), 93, 1), 3);
}

TEST(VisualPick, AToolHitWinsATie) {
  DrawRecord hit = Line(0, 0, 100, 0);
  hit.Code = 210;
  EXPECT_EQ(PickRecord(Plot({Line(0, 0, 100, 0), hit}).Records(), 0, 0), 3);
  EXPECT_EQ(PickRecord(Plot({hit, hit}).Records(), 0, 0), 2);
}

TEST(BlockAfterRecord, IsTheNextOneThatAnotherLineOfTheMainFileMade) {
  DrawRecord inside = Line(0, 0, 1, 1, 7);
  inside.SubNumber = 5;
  inside.SubBlock = 3;
  DrawRecord later = Line(1, 1, 2, 2, 9);
  later.SubNumber = 6;
  later.SubBlock = 2;
  const Plot plot({inside, inside, Line(1, 0, 0, 1, 7), later});
  const NextBlock next = BlockAfter(plot.Records(), 2, plot.All[1]);
  EXPECT_EQ(next.BlockNumber, 9) << "the whole call is passed";
  EXPECT_EQ(next.SubBlock, 2);
  const NextBlock end = BlockAfter(plot.Records(), 5, plot.All[4]);
  EXPECT_EQ(end.BlockNumber, 10);
  EXPECT_EQ(end.SubBlock, 0);
}

RC_GTEST_PROP(VisualWalk, NextLeadsToEveryRecordOnViewAndPreviousBack, ()) {
  std::vector<DrawRecord> records;
  for (const auto& [x, y] : *rc::gen::nonEmpty(rc::gen::container<std::vector<std::pair<int, int>>>(
           rc::gen::pair(rc::gen::inRange(-150, 250), rc::gen::inRange(-150, 250))))) {
    records.push_back(Line(static_cast<float>(x), static_cast<float>(y), static_cast<float>(x + 7),
                           static_cast<float>(y - 3)));
  }
  const Plot plot(records);
  const PlotRecords source = plot.Records();
  VisualState state = BeginWalk(source, Up);
  int onView = 0;
  for (std::size_t i = 1; i < plot.All.size(); ++i) onView += RecordInView(plot.All[i], Up) ? 1 : 0;
  if (onView == 0) {
    RC_ASSERT(state == VisualState{});
    return;
  }
  int steps = 0;
  do {
    const std::int16_t before = state.VisualCurrent;
    state.VisualCurrent = Walk(source, Up, state, WalkKey::Next);
    VisualState back = state;
    RC_ASSERT(Walk(source, Up, back, WalkKey::Previous) == before);
    ++steps;
  } while (state.VisualCurrent != state.VisualFirst && steps <= onView);
  RC_ASSERT(steps == onView);
}

}  // namespace
}  // namespace torvane::restart

// The arithmetic of zoom and pan.
#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "graphics/ViewMath.h"

namespace torvane::graphics {
namespace {

core::PlotView ViewOf(float x1, float y1, float x2, float y2) {
  core::PlotView view;
  view.Corner1X = x1;
  view.Corner1Y = y1;
  view.Corner2X = x2;
  view.Corner2Y = y2;
  return view;
}

void ExpectView(const core::PlotView& view, float x1, float y1, float x2, float y2) {
  EXPECT_FLOAT_EQ(view.Corner1X, x1);
  EXPECT_FLOAT_EQ(view.Corner1Y, y1);
  EXPECT_FLOAT_EQ(view.Corner2X, x2);
  EXPECT_FLOAT_EQ(view.Corner2Y, y2);
  EXPECT_TRUE(view.ViewZoomed);
}

constexpr CanvasSize Wide{800, 400};

TEST(ZoomOut, GrowsByHalfRoundTheCentreWithoutLimit) {
  ExpectView(ZoomedOut(ViewOf(0, 100, 200, 0), 1), -50, 125, 250, -25);
  ExpectView(ZoomedOut(ViewOf(0, 0, 200, 100), 0), -50, -25, 250, 125);
  core::PlotView view = ViewOf(0, 100, 200, 0);
  for (int i = 0; i < 5; ++i) view = ZoomedOut(view, 1);
  EXPECT_NEAR(view.Corner2X - view.Corner1X, 200 * std::pow(1.5, 5), 0.01);
}

TEST(ZoomIn, IsAnchoredAtTheLowCornerAndNeverCentred) {
  // Wider than the canvas: the width is filled, the room goes to the far end of Y.
  ExpectView(*ZoomedTo({}, {10, 20, 110, 40}, Wide, 1), 10, 70, 110, 20);
  ExpectView(*ZoomedTo({}, {10, 20, 110, 40}, Wide, 0), 10, 20, 110, 70);
  // Higher: the height is filled, the room goes to the far end of X.
  ExpectView(*ZoomedTo({}, {10, 20, 30, 120}, Wide, 1), 10, 120, 210, 20);
  ExpectView(*ZoomedTo({}, {10, 20, 30, 120}, Wide, 0), 10, 20, 210, 120);
}

TEST(ZoomIn, TakesItsCornersInAnyOrder) {
  ExpectView(*ZoomedTo({}, {110, 40, 10, 20}, Wide, 1), 10, 70, 110, 20);
}

TEST(ZoomIn, NeedsBothSidesLongerThanOne) {
  EXPECT_FALSE(ZoomedTo({}, {10, 10, 10, 10}, Wide, 1)) << "two clicks on one point";
  EXPECT_FALSE(ZoomedTo({}, {10, 10, 10.5F, 210}, Wide, 1)) << "0.5 by 200";
  EXPECT_FALSE(ZoomedTo({}, {10, 10, 11, 210}, Wide, 1)) << "1 is not longer than 1";
  EXPECT_TRUE(ZoomedTo({}, {10, 10, 11.01F, 210}, Wide, 1));
}

TEST(ZoomIn, ASideOfZeroTakesTheOther) {
  ExpectView(*ZoomedTo({}, {10, 20, 110, 20}, Wide, 1), 10, 120, 210, 20);
  ExpectView(*ZoomedTo({}, {10, 20, 10, 120}, Wide, 1), 10, 120, 210, 20);
}

TEST(Pan, KeepsTheScaleAndPutsThePointInTheMiddle) {
  ExpectView(PannedTo(ViewOf(0, 100, 200, 0), 300, 50), 200, 100, 400, 0);
  ExpectView(PannedTo(ViewOf(0, 0, 200, 100), 0, 0), -100, -50, 100, 50);
}

TEST(Cursor, IsASixtyFourthOfTheView) {
  EXPECT_EQ(CursorSizeOf(ViewOf(0, 0, 640, 400)), 10);
  EXPECT_EQ(CursorSizeOf(ViewOf(640, 0, 0, 400)), 10);
  EXPECT_EQ(CursorSizeOf({}), 10);
  EXPECT_EQ(CursorSizeOf(ViewOf(0, 0, 128, 400)), 2);
}

TEST(Cursor, UpIsUpTheScreenWhicheverWayYRuns) {
  float x = 50;
  float y = 50;
  MoveCursor(ViewOf(0, 100, 100, 0), 1, 5, CursorMove::Up, x, y);
  EXPECT_EQ(y, 55);
  MoveCursor(ViewOf(0, 0, 100, 100), 0, 5, CursorMove::Up, x, y);
  EXPECT_EQ(y, 50);
  MoveCursor(ViewOf(0, 0, 100, 100), 0, 5, CursorMove::Down, x, y);
  EXPECT_EQ(y, 55);
  MoveCursor(ViewOf(0, 0, 100, 100), 0, 5, CursorMove::Left, x, y);
  EXPECT_EQ(x, 45);
}

RC_GTEST_PROP(Cursor, NeverLeavesTheView, (bool up)) {
  const core::PlotView view = up ? ViewOf(-20, 90, 130, -10) : ViewOf(-20, -10, 130, 90);
  float x = 55;
  float y = 40;
  for (const int move : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 4))) {
    MoveCursor(view, up ? 1 : 0, 37, static_cast<CursorMove>(move), x, y);
    RC_ASSERT(x >= -20 && x <= 130 && y >= -10 && y <= 90);
  }
}

RC_GTEST_PROP(ZoomIn, KeepsTheAspectAndShowsTheWholeSelection, (bool up)) {
  const auto number = rc::gen::map(rc::gen::inRange(-100000, 100000),
                                   [](int n) { return static_cast<float>(n) / 32; });
  const Selection s{*number, *number, *number, *number};
  const auto view = ZoomedTo({}, s, Wide, up ? 1 : 0);
  RC_PRE(view.has_value());
  const double width = static_cast<double>(view->Corner2X) - view->Corner1X;
  const double height = std::abs(static_cast<double>(view->Corner2Y) - view->Corner1Y);
  RC_ASSERT(std::abs(width / height - 2) < 1e-2);
  RC_ASSERT(view->Corner1X <= std::min(s.X1, s.X2) + 1e-2F);
  RC_ASSERT(view->Corner2X >= std::max(s.X1, s.X2) - 1e-2F);
}

}  // namespace
}  // namespace torvane::graphics

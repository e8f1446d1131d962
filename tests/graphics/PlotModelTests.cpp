#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "graphics/PlotModel.h"

namespace torvane::graphics {
namespace {

core::MachineData MachineWith(float minX, float minY, int yDirection) {
  core::MachineData machine;
  machine.TravelMinX = minX;
  machine.TravelMinY = minY;
  machine.YDirection = static_cast<std::int16_t>(yDirection);
  return machine;
}

TEST(FitOfTheSheet, NegativeLimitWidensTheFarEdgeAsWell) {
  const auto view = FitSheet(MachineWith(-50, 0, 1), 1000, 10, {800, 600});
  EXPECT_EQ(view.Corner1X, -60.0F);
  EXPECT_EQ(view.Corner2X, 1060.0F);
}

TEST(FitOfTheSheet, PositiveLimitMovesTheNearEdgeInwardAndTheFarEdgeOutward) {
  const auto view = FitSheet(MachineWith(30, 0, 1), 1000, 10, {800, 600});
  EXPECT_EQ(view.Corner1X, 20.0F);
  EXPECT_EQ(view.Corner2X, 1040.0F);
}

TEST(FitOfTheSheet, WideSheetFillsTheWidthWithYUp) {
  const auto view = FitSheet(MachineWith(-10, -10, 1), 1000, 100, {200, 100});
  // 1040 wide, so 520 high from the low end of Y at the bottom.
  EXPECT_EQ(view.Corner1X, -20.0F);
  EXPECT_EQ(view.Corner1Y, 500.0F);
  EXPECT_EQ(view.Corner2X, 1020.0F);
  EXPECT_EQ(view.Corner2Y, -20.0F);
}

TEST(FitOfTheSheet, WideSheetFillsTheWidthWithYDown) {
  const auto view = FitSheet(MachineWith(-10, -10, 0), 1000, 100, {200, 100});
  EXPECT_EQ(view.Corner1Y, -20.0F);
  EXPECT_EQ(view.Corner2X, 1020.0F);
  EXPECT_EQ(view.Corner2Y, 500.0F);
}

TEST(FitOfTheSheet, TallSheetFillsTheHeightWithYUp) {
  const auto view = FitSheet(MachineWith(-10, -10, 1), 100, 1000, {200, 100});
  EXPECT_EQ(view.Corner1X, -20.0F);
  EXPECT_EQ(view.Corner1Y, 1020.0F);
  EXPECT_EQ(view.Corner2X, 2060.0F);
  EXPECT_EQ(view.Corner2Y, -20.0F);
}

TEST(FitOfTheSheet, TallSheetFillsTheHeightWithYDown) {
  const auto view = FitSheet(MachineWith(-10, -10, -1), 100, 1000, {200, 100});
  EXPECT_EQ(view.Corner1Y, -20.0F);
  EXPECT_EQ(view.Corner2X, 2060.0F);
  EXPECT_EQ(view.Corner2Y, 1020.0F);
}

TEST(FitOfTheSheet, SheetOfTheCanvasAspectFillsTheWidth) {
  // 200 by 100 with its margins, exactly the canvas: the row for the width applies.
  const auto view = FitSheet(MachineWith(0, 0, 1), 180, 80, {200, 100});
  EXPECT_EQ(view.Corner2X, 190.0F);
  EXPECT_EQ(view.Corner1Y, 90.0F);
}

TEST(FitOfTheSheet, CornersAreSingles) {
  const auto view = FitSheet(MachineWith(-0.1F, 0, 1), 0.1F, 1, {3, 1});
  EXPECT_EQ(view.Corner1X, static_cast<float>(static_cast<double>(-0.1F) - 10));
}

TEST(FitOfTheSheet, KeepsTheZoomMarkAndTheIconOfTheOldView) {
  core::PlotView old;
  old.ViewZoomed = true;
  old.PlotIconSize = 3;
  const auto view = FitSheet(MachineWith(0, 0, 1), 100, 100, {1, 1}, old);
  EXPECT_TRUE(view.ViewZoomed);
  EXPECT_EQ(view.PlotIconSize, 3);
}

TEST(FitOfTheSheet, WithoutHeightThereIsNoDrawableView) {
  EXPECT_FALSE(ViewDrawable(FitSheet(MachineWith(0, 0, 1), 100, 100, {0, 0})));
}

RC_GTEST_PROP(FitOfTheSheetProperties, KeepsTheAspectHoldsTheSheetAndStartsAtTheLowEnd, ()) {
  const auto minX = static_cast<float>(*rc::gen::inRange(-500, 500));
  const auto minY = static_cast<float>(*rc::gen::inRange(-500, 500));
  const auto sheetX = static_cast<float>(*rc::gen::inRange(1, 4000));
  const auto sheetY = static_cast<float>(*rc::gen::inRange(1, 4000));
  const double width = *rc::gen::inRange(50, 3000);
  const double height = *rc::gen::inRange(50, 3000);
  const auto machine = MachineWith(minX, minY, *rc::gen::inRange(-1, 2));
  const auto view = FitSheet(machine, sheetX, sheetY, {width, height});

  const double spanX = static_cast<double>(view.Corner2X) - view.Corner1X;
  const double spanY = std::abs(static_cast<double>(view.Corner2Y) - view.Corner1Y);
  const double aspect = width / height;
  RC_ASSERT(std::abs(spanX / spanY - aspect) <= 1e-4 * aspect);

  const double lowY = std::min(view.Corner1Y, view.Corner2Y);
  const double highY = std::max(view.Corner1Y, view.Corner2Y);
  RC_ASSERT(view.Corner1X == minX - 10);
  RC_ASSERT(lowY == minY - 10);
  const double slack = 1e-3;
  RC_ASSERT(view.Corner2X >= std::abs(minX) + sheetX + 10 - slack);
  RC_ASSERT(highY >= std::abs(minY) + sheetY + 10 - slack);
  // One of the two axes is filled to its edge.
  RC_ASSERT(std::abs(view.Corner2X - (std::abs(minX) + sheetX + 10)) <= slack ||
            std::abs(highY - (std::abs(minY) + sheetY + 10)) <= slack);
  RC_ASSERT((machine.YDirection == 1) == (view.Corner1Y > view.Corner2Y));
}

RC_GTEST_PROP(FitOfTheSheetProperties, FittingAgainInTheUnitsOfTheFitChangesNothing, ()) {
  const auto machine = MachineWith(static_cast<float>(*rc::gen::inRange(-500, 0)),
                                   static_cast<float>(*rc::gen::inRange(-500, 0)), 1);
  const auto sheetX = static_cast<float>(*rc::gen::inRange(1, 4000));
  const auto sheetY = static_cast<float>(*rc::gen::inRange(1, 4000));
  const auto first = FitSheet(machine, sheetX, sheetY, {800, 600});
  const auto again = FitSheet(machine, sheetX, sheetY,
                              {std::abs(static_cast<double>(first.Corner2X) - first.Corner1X),
                               std::abs(static_cast<double>(first.Corner2Y) - first.Corner1Y)});
  RC_ASSERT(std::abs(again.Corner1Y - first.Corner1Y) <= 1e-3);
  RC_ASSERT(std::abs(again.Corner2X - first.Corner2X) <= 1e-3);
}

TEST(MovementIconSize, IsASixtyFourthOfTheViewWhicheverWayItRuns) {
  core::PlotView view;
  view.Corner1X = -60;
  view.Corner2X = 580;
  EXPECT_EQ(IconSizeOf(view), 10);
  std::swap(view.Corner1X, view.Corner2X);
  EXPECT_EQ(IconSizeOf(view), 10);
}

TEST(EmptyView, IsTheOneOfFourZeros) {
  core::PlotView view;
  EXPECT_TRUE(ViewEmpty(view));
  view.Corner2Y = 1;
  EXPECT_FALSE(ViewEmpty(view));
}

TEST(DrawableView, IsFiniteWithBothSizes) {
  core::PlotView view;
  EXPECT_FALSE(ViewDrawable(view));
  view.Corner2X = 100;
  EXPECT_FALSE(ViewDrawable(view));
  view.Corner2Y = -50;
  EXPECT_TRUE(ViewDrawable(view));
  view.Corner1X = std::numeric_limits<float>::infinity();
  EXPECT_FALSE(ViewDrawable(view));
  view.Corner1X = std::numeric_limits<float>::quiet_NaN();
  EXPECT_FALSE(ViewDrawable(view));
}

}  // namespace
}  // namespace torvane::graphics

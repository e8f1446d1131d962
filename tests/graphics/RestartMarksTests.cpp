// The marks of a restart over the plot.
#include <gtest/gtest.h>

#include "graphics/RestartMarks.h"
#include "platform/RecordingCanvas.h"

namespace torvane::graphics {
namespace {

using platform::Overlay;

constexpr RestartMarks Marks = {{0, 0}, {100, 50}, {100, 49}};
constexpr Overlay Shapes[] = {Overlay::TravelLine1, Overlay::TravelLine2, Overlay::EntryLine1,
                              Overlay::EntryLine2};

TEST(RestartMarks, LeadFromTheHeadByThePositionToACrossAtTheEntry) {
  const auto segments = MarkSegments(Marks, 10);
  const auto is = [](const platform::UserPoint& point, double x, double y) {
    EXPECT_DOUBLE_EQ(point.X, x);
    EXPECT_DOUBLE_EQ(point.Y, y);
  };
  is(segments[0][0], 0, 0);
  is(segments[0][1], 100, 50);
  is(segments[1][0], 100, 50);
  is(segments[1][1], 100, 49);
  is(segments[2][0], 95, 44);
  is(segments[2][1], 105, 54);
  is(segments[3][0], 95, 54);
  is(segments[3][1], 105, 44);
}

TEST(RestartMarks, ShowAndGoTogether) {
  platform::RecordingCanvas canvas(400, 300);
  ShowRestartMarks(canvas, Marks, 10);
  for (const Overlay which : Shapes) EXPECT_TRUE(canvas.GetOverlay(which).Visible);
  EXPECT_EQ(canvas.GetOverlay(Overlay::TravelLine1).To.X, 100);
  HideRestartMarks(canvas);
  for (const Overlay which : Shapes) EXPECT_FALSE(canvas.GetOverlay(which).Visible);
}

}  // namespace
}  // namespace torvane::graphics

// Plain names, the clocks, and the canvas that writes down what was drawn.
#include <ctime>

#include <gtest/gtest.h>

#include "platform/Clock.h"
#include "platform/PlainNames.h"
#include "platform/RecordingCanvas.h"
#include "platform/RuntimeFault.h"

namespace torvane::platform {
namespace {

TEST(PlainNames, OrdinaryProgramNamesAreTaken) {
  for (const char* name :
       {"PART", "BRACKET-40", "New Program 1", "a.b", "...x", "P\xC4NEL", "%$#"}) {
    EXPECT_TRUE(IsPlainName(name)) << name;
  }
}

TEST(PlainNames, NothingLeadsOutOfItsDirectory) {
  for (const char* name : {"", ".", "..", "...", ".. ", " ", "a\\b", "a/b", "..\\x", "A:", "C:x",
                           "/", "\\", "x*", "?", "line\nend"}) {
    EXPECT_FALSE(IsPlainName(name)) << name;
  }
  EXPECT_FALSE(IsPlainName(std::string_view("a\0b", 3)));
}

TEST(Clock, AFixedClockStandsStill) {
  const FixedClock clock({2026, 11, 20, 23, 59, 58});
  EXPECT_EQ(clock.Now().Year, 2026);
  EXPECT_EQ(clock.Now().Second, 58);
}

TEST(Clock, TheSystemClockTellsTheLocalTime) {
  const std::time_t before = std::time(nullptr);
  const LocalTime now = SystemClock().Now();
  std::tm parts{};
  parts.tm_year = now.Year - 1900;
  parts.tm_mon = now.Month - 1;
  parts.tm_mday = now.Day;
  parts.tm_hour = now.Hour;
  parts.tm_min = now.Minute;
  parts.tm_sec = now.Second;
  parts.tm_isdst = -1;
  EXPECT_LE(std::difftime(std::mktime(&parts), before), 2);
  EXPECT_GE(std::difftime(std::mktime(&parts), before), 0);
}

TEST(RecordingCanvas, WritesDownWhatWasDrawnWithThePenOfTheMoment) {
  RecordingCanvas canvas(400, 200);
  EXPECT_EQ(canvas.ScaleWidth(), 400);
  canvas.Scale({-10, 90}, {110, -10});
  EXPECT_EQ(canvas.ScaleWidth(), 120);
  EXPECT_EQ(canvas.ScaleHeight(), -100) << "Y grows up";
  canvas.DrawStyle(PenStyle::Dotted);
  canvas.DrawWidth(3);
  canvas.Line(0, 0, 10, 5, 0x0000FF);
  canvas.DrawStyle(PenStyle::Solid);
  canvas.Circle(1, 2, 3, 0x00FF00);
  EXPECT_EQ(canvas.Text(),
            "Scale -10 90 110 -10 000000\n"
            "Line 0 0 10 5 0000FF dotted\n"
            "Circle 1 2 3 0 00FF00\n");
  ASSERT_EQ(canvas.CallsOf(CanvasCallKind::Line).size(), 1u);
  EXPECT_EQ(canvas.CallsOf(CanvasCallKind::Line)[0].Width, 3);
}

TEST(RecordingCanvas, OverlaysKeepTheirStateThroughAWipe) {
  RecordingCanvas canvas(10, 10);
  OverlayState state;
  state.From = {1, 2};
  state.Visible = true;
  canvas.SetOverlay(Overlay::ZoomRect, state);
  canvas.Cls();
  EXPECT_TRUE(canvas.GetOverlay(Overlay::ZoomRect).Visible);
  EXPECT_EQ(canvas.GetOverlay(Overlay::ZoomRect).From.Y, 2);
  EXPECT_FALSE(canvas.GetOverlay(Overlay::SheetRect).Visible);
  canvas.Forget();
  EXPECT_TRUE(canvas.Calls().empty());
}

TEST(RuntimeFault, NamesTheFileFirst) {
  const RuntimeFault fault("C:\\ROOT\\Trio.cms", "not found");
  EXPECT_STREQ(fault.what(), "C:\\ROOT\\Trio.cms: not found");
  EXPECT_EQ(fault.Path(), "C:\\ROOT\\Trio.cms");
  EXPECT_STREQ(RuntimeFault("", "no memory").what(), "no memory");
}

}  // namespace
}  // namespace torvane::platform

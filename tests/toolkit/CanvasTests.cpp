// The map, the pixels, the overlays and the plot's mouse.
#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <limits>
#include <vector>

#include <rapidcheck/gtest.h>

#include "ScreenFixture.h"
#include "toolkit/PictureFile.h"
#include "toolkit/PlotCanvas.h"
#include "toolkit/RasterCanvas.h"
#include "toolkit/SvgCanvas.h"

namespace torvane::tests {
namespace {

using namespace toolkit;
using platform::Overlay;
using platform::OverlayState;
using platform::PenStyle;

constexpr Colour Ground = 0x400000, Ink = 0x00FFFF, Other = 0xFF00FF;

class Pixels : public ::testing::Test {
 protected:
  Pixels() : Canvas(200, 100) {
    Canvas.SetBackground(Ground);
    Canvas.Cls();
  }

  int Count(Colour colour) const {
    int count = 0;
    for (int y = 0; y < 100; ++y) {
      for (int x = 0; x < 200; ++x) count += Canvas.PixelAt(x, y) == colour;
    }
    return count;
  }

  RasterCanvas Canvas;
};

TEST_F(Pixels, BeforeTheFirstScaleUnitsArePixels) {
  EXPECT_EQ(Canvas.ScaleWidth(), 200);
  EXPECT_EQ(Canvas.ScaleHeight(), 100);
  Canvas.Line(10, 20, 10, 20, Ink);
  EXPECT_EQ(Canvas.PixelAt(10, 20), Ink);
}

TEST_F(Pixels, YDownMapsTheFirstCornerToTheTopLeft) {
  Canvas.Scale({-10, -20}, {90, 30});
  EXPECT_EQ(Canvas.ScaleWidth(), 100);
  EXPECT_EQ(Canvas.ScaleHeight(), 50);
  Canvas.Line(0, 0, 0, 0, Ink);
  EXPECT_EQ(Canvas.PixelAt(20, 40), Ink);
}

TEST_F(Pixels, YUpMapsTheHighEdgeToTheTop) {
  Canvas.Scale({-10, 30}, {90, -20});
  EXPECT_EQ(Canvas.ScaleHeight(), -50);
  Canvas.Line(0, 20, 0, 20, Ink);
  EXPECT_EQ(Canvas.PixelAt(20, 20), Ink);
  const auto back = Canvas.ToUser(20, 20);
  EXPECT_DOUBLE_EQ(back.X, 0);
  EXPECT_DOUBLE_EQ(back.Y, 20);
}

TEST_F(Pixels, TheEdgesOfTheViewAreTheEdgePixels) {
  Canvas.Scale({0, 50}, {100, 0});
  Canvas.Box(0, 0, 100, 50, Ink);
  for (const auto& [x, y] : {std::pair{0, 0}, {199, 0}, {0, 99}, {199, 99}}) {
    EXPECT_EQ(Canvas.PixelAt(x, y), Ink) << x << " " << y;
  }
  EXPECT_EQ(Count(Ink), 2 * 200 + 2 * 98);
}

TEST_F(Pixels, ALineIsOnePixelWideWithBothEnds) {
  Canvas.Line(10, 10, 110, 60, Ink);
  EXPECT_EQ(Count(Ink), 101);
  EXPECT_EQ(Canvas.PixelAt(10, 10), Ink);
  EXPECT_EQ(Canvas.PixelAt(110, 60), Ink);
}

TEST_F(Pixels, AFilledBoxCoversItsEdgesInEitherOrderOfCorners) {
  Canvas.FilledBox(20, 30, 10, 20, Ink);
  EXPECT_EQ(Count(Ink), 11 * 11);
}

TEST_F(Pixels, ACircleIsAnOutline) {
  Canvas.Circle(100, 50, 20, Ink);
  EXPECT_EQ(Canvas.PixelAt(100, 50), Ground);
  EXPECT_EQ(Canvas.PixelAt(120, 50), Ink);
  EXPECT_EQ(Canvas.PixelAt(100, 30), Ink);
}

TEST_F(Pixels, TheScaleLeavesWhatWasPainted) {
  Canvas.Line(10, 20, 10, 20, Ink);
  Canvas.Scale({0, 0}, {1, 1});
  EXPECT_EQ(Canvas.PixelAt(10, 20), Ink);
}

TEST_F(Pixels, WidthAndStyleHoldUntilTheyAreSetBack) {
  Canvas.DrawWidth(4);
  Canvas.Line(20, 50, 120, 50, Ink);
  EXPECT_GE(Count(Ink), 4 * 100);
  Canvas.Cls();
  Canvas.DrawWidth(1);
  Canvas.DrawStyle(PenStyle::Dotted);
  Canvas.Line(20, 50, 120, 50, Ink);
  EXPECT_GT(Count(Ink), 30);
  EXPECT_LT(Count(Ink), 80);
  Canvas.Cls();
  Canvas.DrawStyle(PenStyle::Solid);
  Canvas.DrawWidth(0);
  Canvas.Line(20, 50, 120, 50, Ink);
  EXPECT_EQ(Count(Ink), 101);
}

TEST_F(Pixels, WhatLiesOutsideIsClipped) {
  Canvas.Line(-1000, 50, 1000, 50, Ink);
  EXPECT_EQ(Count(Ink), 200);
  Canvas.Line(-1e30, -1e30, 1e30, 1e30, Other);
  Canvas.Line(300, 0, 300, 100, Other);
  Canvas.FilledBox(-1e9, 90, 1e9, 1e9, Other);
  EXPECT_EQ(Canvas.PixelAt(0, 99), Other);
  Canvas.Circle(0, 0, 1e18, Other);
}

TEST_F(Pixels, AnEmptyScaleAndNumbersThatAreNoneDrawNothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Canvas.Line(nan, 0, 10, 10, Ink);
  Canvas.Circle(nan, 0, 10, Ink);
  Canvas.Scale({5, 5}, {5, 5});
  Canvas.Line(0, 0, 10, 10, Ink);
  Canvas.FilledBox(0, 0, 10, 10, Ink);
  Canvas.SetOverlay(Overlay::ZoomRect, {{0, 0}, {1, 1}, true, Ink, 0, false});
  EXPECT_EQ(Count(Ink), 0);
  EXPECT_FALSE(Canvas.Compose().isNull());
}

TEST_F(Pixels, OverlaysLieOverThePixelsAndSurviveCls) {
  const OverlayState cross{{90, 50}, {110, 50}, true, Ink, 0, false};
  Canvas.SetOverlay(Overlay::CrossLine1, cross);
  EXPECT_EQ(Count(Ink), 0);
  Canvas.Cls();
  const QImage shown = Canvas.Compose();
  EXPECT_EQ(shown.pixel(100, 50), qRgb(255, 255, 0));
  EXPECT_EQ(Canvas.GetOverlay(Overlay::CrossLine1).To.X, 110);
}

TEST_F(Pixels, AnOverlayThatMovesTouchesOnlyItsOwnPlaces) {
  QRect touched;
  OverlayState rect{{10, 10}, {20, 20}, true, Ink, 0, false};
  Canvas.SetOverlay(Overlay::ZoomRect, rect);
  Canvas.OnChanged([&](const QRect& area) { touched |= area; });
  Canvas.SetOverlay(Overlay::ZoomRect, rect);
  EXPECT_TRUE(touched.isNull());
  rect.From.X = 12;
  Canvas.SetOverlay(Overlay::ZoomRect, rect);
  EXPECT_TRUE(touched.contains(10, 10));
  EXPECT_LT(touched.width(), 20);
}

RC_GTEST_PROP(CanvasLines, NoLineWhateverItsEndsLeavesTheImage, ()) {
  RasterCanvas canvas(*rc::gen::inRange(1, 60), *rc::gen::inRange(1, 60));
  canvas.Scale({-10, 10}, {10, -10});
  for (int i = 0; i < 50; ++i) {
    const auto at = [] { return *rc::gen::inRange(-400, 400) / 13.0; };
    canvas.Line(at(), at(), at(), at(), Ink);
  }
}

RC_GTEST_PROP(CanvasLines, ManyAtOnceLeaveThePixelsOfOneByOne, ()) {
  const int width = *rc::gen::inRange(1, 60), height = *rc::gen::inRange(1, 60);
  RasterCanvas one(width, height), many(width, height);
  QRect touched;
  std::vector<platform::UserPoint> points(*rc::gen::inRange<std::size_t>(0, 12));
  // On the edges, in the view, beyond it, and nowhere.
  const auto at = [] {
    const int number = *rc::gen::inRange(-300, 300);
    return number == 299 ? std::numeric_limits<double>::quiet_NaN() : number / 20.0;
  };
  for (auto& point : points) point = {at(), at()};
  const auto style = *rc::gen::element(PenStyle::Solid, PenStyle::Solid, PenStyle::Dotted);
  const int pen = *rc::gen::element(1, 1, 2);
  const auto ink = *rc::gen::element(Ink, Ground);
  for (RasterCanvas* canvas : {&one, &many}) {
    canvas->SetBackground(Ground);
    canvas->Cls();
    canvas->Scale({-10, 10}, {10, -10});
    canvas->DrawStyle(style);
    canvas->DrawWidth(pen);
  }
  const QImage before = many.Pixels().copy();
  many.OnChanged([&](const QRect& area) { touched |= area; });
  many.Lines(points, ink);
  for (std::size_t i = 1; i < points.size(); ++i) {
    one.Line(points[i - 1].X, points[i - 1].Y, points[i].X, points[i].Y, ink);
  }
  RC_ASSERT(many.Pixels() == one.Pixels());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const bool changed = many.Pixels().pixel(x, y) != before.pixel(x, y);
      RC_ASSERT(!changed || touched.contains(x, y));
    }
  }
}

RC_GTEST_PROP(CanvasLines, TheMapAndItsInverseMeet, ()) {
  RasterCanvas canvas(640, 480);
  const auto at = [] { return *rc::gen::inRange(-100000, 100000) / 16.0; };
  const double left = at(), top = at();
  const double width = *rc::gen::inRange(1, 5000), height = *rc::gen::inRange(1, 5000);
  const double up = *rc::gen::element(-1.0, 1.0);
  canvas.Scale({left, top}, {left + width, top + up * height});
  const double x = left + width * 0.3, y = top + up * height * 0.7;
  const auto back = canvas.ToUser(canvas.ToPixelX(x), canvas.ToPixelY(y));
  RC_ASSERT(std::abs(back.X - x) < 1e-6);
  RC_ASSERT(std::abs(back.Y - y) < 1e-6);
}

TEST(Pictures, PngAndSvgHoldTheSameDrawing) {
  RasterCanvas raster(100, 100);
  SvgCanvas vector(100, 100);
  for (MappedCanvas* canvas : std::initializer_list<MappedCanvas*>{&raster, &vector}) {
    canvas->SetBackground(Ground);
    canvas->Cls();
    canvas->Scale({0, 100}, {100, 0});
    canvas->FilledBox(10, 10, 90, 50, 0x808080);
    canvas->Line(10, 10, 50, 50, Ink);
    canvas->Line(50, 50, 90, 10, Ink);
    canvas->Circle(50, 70, 10, Other);
    canvas->SetOverlay(Overlay::LimitRect, {{5, 95}, {95, 5}, true, 0x00C000, 0, false});
  }
  EXPECT_EQ(QImage::fromData(raster.FileBytes(), "png").convertToFormat(QImage::Format_RGB32),
            raster.Compose());
  const QByteArray text = vector.FileBytes();
  EXPECT_EQ(text.count("<polyline"), 1) << "segments that follow each other are one line";
  EXPECT_TRUE(text.contains("#ffff00"));
  EXPECT_TRUE(text.contains("#00c000"));
}

QImage Speckled(int colours) {
  QImage picture(40, 30, QImage::Format_RGB32);
  for (int i = 0; i < 40 * 30; ++i) {
    picture.setPixel(i % 40, i / 40, qRgb(i % colours % 250, i % colours / 250, 7));
  }
  return picture;
}

TEST(BlankCanvas, TakesNoNoticeOfItsOwnColourAndLosesNoOther) {
  RasterCanvas canvas(60, 40);
  canvas.SetBackground(Ground);
  canvas.Cls();
  canvas.FilledBox(5, 5, 50, 30, Ground);
  canvas.Line(0, 0, 59, 39, Ground);
  EXPECT_EQ(canvas.PixelAt(10, 10), Ground);
  canvas.FilledBox(5, 5, 50, 30, Ink);
  canvas.FilledBox(20, 10, 30, 20, Ground);
  canvas.Line(6, 8, 18, 8, Ground);
  EXPECT_EQ(canvas.PixelAt(25, 15), Ground) << "the old colour shows over another one";
  EXPECT_EQ(canvas.PixelAt(10, 8), Ground);
  EXPECT_EQ(canvas.PixelAt(10, 9), Ink);
  canvas.Cls();
  canvas.DrawCasing(true);
  canvas.Line(10, 20, 50, 20, Ground);
  canvas.DrawCasing(false);
  EXPECT_NE(canvas.PixelAt(30, 19), Ground) << "a casing has another colour than its line";
  canvas.Line(10, 19, 50, 19, Ground);
  EXPECT_EQ(canvas.PixelAt(30, 19), Ground);
}

TEST(PicturesOfFewColours, HaveAPaletteAndTheSamePixels) {
  for (const int colours : {1, 2, 17, 256}) {
    const QImage picture = Speckled(colours);
    const QImage indexed = WithPalette(picture);
    EXPECT_EQ(indexed.colorCount(), colours);
    EXPECT_EQ(indexed.convertToFormat(QImage::Format_RGB32), picture);
    EXPECT_EQ(QImage::fromData(PngOf(picture)).convertToFormat(QImage::Format_RGB32), picture);
  }
}

TEST(PicturesOfManyColours, StayAsTheyAre) {
  const QImage picture = Speckled(257);
  EXPECT_TRUE(WithPalette(picture).isNull());
  EXPECT_EQ(QImage::fromData(PngOf(picture)).convertToFormat(QImage::Format_RGB32), picture);
}

class Plots : public OnDesk {
 protected:
  Plots() : One(Desk_, "FrontEnd", Log), Plot(&One.Body) {
    Plot.Place({10, 10, 200, 100});
    One.Window.Show();
    Pump(Loop, 5);
  }
  Screen One;
  PlotCanvas Plot;
};

TEST_F(Plots, TheMouseIsToldInUserUnits) {
  Plot.Canvas().Scale({0, 50}, {100, 0});
  PlotPointerEvent up;
  Plot.OnPlotUp([&](const PlotPointerEvent& event) { up = event; });
  ClickAt(Plot, 50, 25);
  EXPECT_DOUBLE_EQ(up.X, 25);
  EXPECT_DOUBLE_EQ(up.Y, 37.5);
  EXPECT_EQ(up.Button, PointerButton::Left);
}

TEST_F(Plots, AResizeEmptiesThePixelsGoesBackToPixelUnitsAndAsksOnceForARedraw) {
  int asked = 0;
  Plot.OnRedraw([&] { ++asked; });
  Plot.Canvas().Scale({0, 50}, {100, 0});
  Plot.Place({10, 10, 300, 150});
  Plot.Place({10, 10, 320, 160});
  Pump(Loop, 5);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(Plot.Canvas().PixelWidth(), 320);
  EXPECT_EQ(Plot.Canvas().ScaleWidth(), 320);
  EXPECT_EQ(Plot.Canvas().ScaleHeight(), 160);
}

TEST_F(Plots, WhatIsPaintedShowsWithoutFurtherAsking) {
  Plot.Canvas().FilledBox(0, 0, 200, 100, Ink);
  Pump(Loop, 20);
  EXPECT_EQ(Desk_.grab().toImage().pixel(Plot.mapTo(&Desk_, QPoint(50, 50))), qRgb(255, 255, 0));
}

}  // namespace
}  // namespace torvane::tests

// What keeps the console fluent, as ratios and round numbers that hold on a slow machine.
#include <QElapsedTimer>
#include <QPainter>

#include "ScreenFixture.h"
#include "toolkit/PlotCanvas.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

class Speed : public OnDesk {
 protected:
  Speed() : One(Desk_, "FrontEnd", Log), Plot(&One.Body) {
    Plot.Place({0, 0, 380, 280});
    One.Window.Show();
    Pump(Loop, 5);
  }
  Screen One;
  PlotCanvas Plot;
};

/// Best of several, in ns a line.
template <typename Job>
double BestPerLine(int lines, Job job) {
  qint64 best = std::numeric_limits<qint64>::max();
  for (int run = 0; run < 5; ++run) {
    QElapsedTimer clock;
    clock.start();
    job();
    best = std::min(best, clock.nsecsElapsed());
  }
  return static_cast<double>(best) / lines;
}

TEST_F(Speed, ALineCostsAFractionOfAPaintersLine) {
  constexpr int Lines = 20000;
  RasterCanvas& canvas = Plot.Canvas();
  canvas.Scale({0, 280}, {380, 0});
  const double own = BestPerLine(Lines, [&] {
    for (int i = 0; i < Lines; ++i) canvas.Line(i % 370, i % 270, i % 370 + 8, i % 270 + 5, 0xFF);
  });
  QImage image(380, 280, QImage::Format_RGB32);
  const double painter = BestPerLine(Lines / 10, [&] {
    for (int i = 0; i < Lines / 10; ++i) {
      QPainter each(&image);
      each.setPen(Qt::red);
      each.drawLine(i % 370, i % 270, i % 370 + 8, i % 270 + 5);
    }
  });
  RecordProperty("nanosecondsPerLine", static_cast<int>(own));
  EXPECT_LT(own, painter / 2);
}

TEST_F(Speed, AKeyPressIsPaintedWithinSixteenMilliseconds) {
  Button key(&One.Body, "GO");
  key.Place({10, 10, 200, 72});
  Desk_.Refresh();
  const double perPress = BestPerLine(1, [&] {
    PressAt(key, 5, 5);
    Desk_.Refresh();
    ReleaseAt(key, 5, 5);
  });
  EXPECT_LT(perPress, 16e6);
}

}  // namespace
}  // namespace torvane::tests

// The first plot of a large program against its own segments through the canvas's plain line.
//
// LoadPlot reads, decodes and works out chords; PlainLines draws the same segments from memory. The
// counter "segments" is the same in both, so the ratio of their times is the figure that counts: at
// most 1.5 on the canvas of the screen. The counting canvas shows what is left when lines cost
// nothing.
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "core/SlotFiles.h"
#include "core/System.h"
#include "graphics/DrawingModule.h"
#include "partprogram/Pipeline.h"
#include "platform/DiskFileSystem.h"
#include "platform/RecordingCanvas.h"
#include "support/ProgramGenerator.h"
#ifdef TORVANE_WITH_TOOLKIT
#include "toolkit/RasterCanvas.h"
#endif

namespace {

using namespace torvane;
/// A program of the largest size: 24,000 lines, 3,000 closed slots with lead-ins.
partprogram::PassResult GeneratedProgram(const core::MachineData& machine) {
  const core::Station station;
  const std::string text = partprogram::SqueezeProgram(tests::GenerateProgram());
  return partprogram::RunPasses(text, {"SHEET", "BENCH", 1, &machine, &station, {}});
}

/// A line costs a call and nothing else.
class CountingCanvas final : public platform::Canvas {
 public:
  CountingCanvas(int width, int height) : width_(width), height_(height) {}
  void Scale(platform::UserPoint topLeft, platform::UserPoint bottomRight) override {
    width_ = bottomRight.X - topLeft.X;
    height_ = bottomRight.Y - topLeft.Y;
  }
  [[nodiscard]] double ScaleWidth() const override { return width_; }
  [[nodiscard]] double ScaleHeight() const override { return height_; }
  void Cls() override {}
  void SetBackground(platform::Colour) override {}
  void Line(double x1, double y1, double x2, double y2, platform::Colour colour) override {
    sum_ += x1 + y1 + x2 + y2 + colour;
  }
  void Box(double, double, double, double, platform::Colour) override {}
  void FilledBox(double, double, double, double, platform::Colour) override {}
  void Circle(double, double, double, platform::Colour) override {}
  void DrawStyle(platform::PenStyle) override {}
  void DrawWidth(int) override {}
  [[nodiscard]] platform::OverlayState GetOverlay(platform::Overlay) const override { return {}; }
  void SetOverlay(platform::Overlay, const platform::OverlayState&) override {}

 private:
  double width_;
  double height_;
  double sum_ = 0;
};

#ifdef TORVANE_WITH_TOOLKIT
/// The canvas of the screen, which is told of every changed rectangle.
class ScreenCanvas {
 public:
  ScreenCanvas(int width, int height) : canvas_(width, height) {
    canvas_.OnChanged([this](const QRect& area) { dirty_ |= area; });
  }
  operator platform::Canvas&() { return canvas_; }

 private:
  toolkit::RasterCanvas canvas_;
  QRect dirty_;
};
#endif

/// A root directory in memory with the program in slot 1, gone when it ends.
class Installation {
 public:
  Installation()
      : root_("/dev/shm/torvane-plot-bench-" + std::to_string(::getpid())), files_(root_) {
    std::filesystem::create_directories(root_ + "/Service");
    System.Directories.RootDirectory = platform::DiskFileSystem::ToSystemPath(root_) + "\\";
    System.Directories.ServiceDirectory = System.Directories.RootDirectory + "Service\\";
    System.Machine.YDirection = 1;
    System.Machine.TravelMaxX = 3000;
    System.Machine.TravelMaxY = 1500;
    const auto passes = GeneratedProgram(System.Machine);
    partprogram::FillSlot(passes, System.Programs[1]);
    System.Programs[1].Selected = true;
    files_.ReplaceFile(core::SlotFile(System.Directories, 1, "drw"),
                       partprogram::EncodeRecords(passes.Conversion.Records));
  }
  ~Installation() { std::filesystem::remove_all(root_); }
  Installation(const Installation&) = delete;
  Installation& operator=(const Installation&) = delete;

  core::System System;
  [[nodiscard]] platform::DiskFileSystem& Files() { return files_; }

  /// What the plot draws, as calls of the plain line.
  [[nodiscard]] std::vector<platform::CanvasCall> Segments(int width, int height) {
    platform::RecordingCanvas canvas(width, height);
    graphics::DrawingModule(System, files_, {&canvas, &canvas}).LoadPlot(1);
    return canvas.CallsOf(platform::CanvasCallKind::Line);
  }

 private:
  std::string root_;
  platform::DiskFileSystem files_;
};

Installation& House() {
  static Installation house;
  return house;
}

template <typename Surface>
void LoadPlot(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  const int height = width * 3 / 4;
  Surface surface(width, height);
  platform::Canvas& canvas = surface;
  graphics::DrawingModule drawing(House().System, House().Files(), {&canvas, &canvas});
  for (auto _ : state) drawing.LoadPlot(1);
  state.counters["segments"] = static_cast<double>(House().Segments(width, height).size());
  state.counters["records"] = House().System.Programs[1].DrawRecords;
}

/// One tenth of the sheet in view: what lies outside is not drawn. At most 16 ms.
template <typename Surface>
void ZoomedToATenth(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  Surface surface(width, width * 3 / 4);
  platform::Canvas& canvas = surface;
  graphics::DrawingModule drawing(House().System, House().Files(), {&canvas, &canvas});
  drawing.LoadPlot(1);
  core::PlotView& view = House().System.Views[1];
  const core::PlotView fit = view;
  const float share = std::sqrt(0.1F);
  view.Corner2X = fit.Corner1X + (fit.Corner2X - fit.Corner1X) * share;
  view.Corner1Y = fit.Corner2Y + (fit.Corner1Y - fit.Corner2Y) * share;
  view.ViewZoomed = true;
  for (auto _ : state) drawing.LoadPlot(1);
  view = fit;
}

template <typename Surface>
void PlainLines(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  const int height = width * 3 / 4;
  Surface surface(width, height);
  platform::Canvas& canvas = surface;
  graphics::DrawingModule(House().System, House().Files(), {&canvas, &canvas}).LoadPlot(1);
  const auto segments = House().Segments(width, height);
  for (auto _ : state) {
    for (const auto& line : segments) canvas.Line(line.X1, line.Y1, line.X2, line.Y2, line.Ink);
  }
  state.counters["segments"] = static_cast<double>(segments.size());
}

BENCHMARK(LoadPlot<CountingCanvas>)->Arg(800)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlainLines<CountingCanvas>)->Arg(800)->Unit(benchmark::kMicrosecond);
#ifdef TORVANE_WITH_TOOLKIT
BENCHMARK(ZoomedToATenth<ScreenCanvas>)->Arg(800)->Arg(1400)->Unit(benchmark::kMicrosecond);
BENCHMARK(LoadPlot<ScreenCanvas>)->Arg(800)->Arg(1400)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlainLines<ScreenCanvas>)->Arg(800)->Arg(1400)->Unit(benchmark::kMicrosecond);
#endif

}  // namespace

BENCHMARK_MAIN();

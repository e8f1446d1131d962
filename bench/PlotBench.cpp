// The first plot of a large program against its own segments through the canvas's plain line.
//
// LoadPlot reads, decodes and works out chords; PlainLines draws the same segments from memory. The
// counter "segments" is the same in both, so the ratio of their times is the figure that counts: at
// most 2 on the canvas of the screen. The counting canvas shows what is left when lines cost
// nothing.
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "core/System.h"
#include "graphics/DrawingModule.h"
#include "platform/DiskFileSystem.h"
#include "platform/RecordingCanvas.h"
#ifdef TORVANE_WITH_TOOLKIT
#include "toolkit/RasterCanvas.h"
#endif

namespace {

using namespace torvane;
using partprogram::DrawRecord;
using partprogram::RecordCode::ArcProfile;
using partprogram::RecordCode::LineProfile;
using partprogram::RecordCode::Move;

constexpr int Profiles = 3000;
constexpr float SheetX = 3000;
constexpr float SheetY = 1500;

/// A program as the passes leave it: closed profiles of lines and round corners with a lead-in.
class ProgramRecords {
 public:
  ProgramRecords() {
    records_.emplace_back().Code = partprogram::RecordCode::Sheet;
    for (int i = 0; i < Profiles; ++i) AddProfile(40.0 * (i % 73) + 5, 35.0 * (i / 73) + 5, i);
  }
  [[nodiscard]] const std::vector<DrawRecord>& All() const { return records_; }

 private:
  void AddProfile(double x, double y, int index) {
    const double width = 24 + index % 7;
    const double height = 20 + index % 5;
    const double radius = 2 + index % 4;
    Go(Move, x + width / 2, y + 3);
    Go(LineProfile, x + width / 2, y);
    Go(LineProfile, x + width - radius, y);
    Corner(x + width - radius, y + radius, radius, 270);
    Go(LineProfile, x + width, y + height - radius);
    Corner(x + width - radius, y + height - radius, radius, 0);
    Go(LineProfile, x, y + height);
    Go(LineProfile, x, y);
    Go(LineProfile, x + width / 2, y);
  }

  DrawRecord& Add(std::int16_t code, double x, double y) {
    auto& record = records_.emplace_back();
    record.Code = code;
    record.StartPoint = {static_cast<float>(x_), static_cast<float>(y_), 0};
    x_ = core::RoundPlaces(x, 4);
    y_ = core::RoundPlaces(y, 4);
    record.EndPoint = {static_cast<float>(x_), static_cast<float>(y_), 0};
    record.BeamState1.On = code == Move ? 0 : -1;
    return record;
  }
  void Go(std::int16_t code, double x, double y) { Add(code, x, y); }
  void Corner(double x, double y, double radius, double start) {
    const auto end = core::PolarToXY(radius, start + 90);
    auto& record = Add(ArcProfile, x + end.X, y + end.Y);
    record.CentrePoint = {static_cast<float>(x), static_cast<float>(y), 0};
    record.Values[0] = static_cast<float>(radius);
    record.Values[9] = static_cast<float>(start);
    record.Values[10] = 90;
  }

  std::vector<DrawRecord> records_;
  double x_ = 0;
  double y_ = 0;
};

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

/// A root directory in memory with the program in slot 1, gone when it ends.
class Installation {
 public:
  Installation()
      : root_("/dev/shm/torvane-plot-bench-" + std::to_string(::getpid())), files_(root_) {
    std::filesystem::create_directories(root_ + "/Service");
    System.Directories.RootDirectory = platform::DiskFileSystem::ToSystemPath(root_) + "\\";
    System.Directories.ServiceDirectory = System.Directories.RootDirectory + "Service\\";
    System.Machine.YDirection = 1;
    auto& program = System.Programs[1];
    program.Selected = true;
    program.SheetX = SheetX;
    program.SheetY = SheetY;
    const ProgramRecords records;
    program.DrawRecords = static_cast<std::int16_t>(records.All().size());
    std::string bytes;
    for (const auto& record : records.All()) {
      std::array<char, partprogram::DrawRecordSize> one{};
      partprogram::EncodeRecord(record, one);
      bytes.append(one.data(), one.size());
    }
    files_.ReplaceFile(core::SlotFile(System.Directories, 1, "drw"), bytes);
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
  Surface canvas(width, height);
  graphics::DrawingModule drawing(House().System, House().Files(), {&canvas, &canvas});
  for (auto _ : state) drawing.LoadPlot(1);
  state.counters["segments"] = static_cast<double>(House().Segments(width, height).size());
  state.counters["records"] = House().System.Programs[1].DrawRecords;
}

template <typename Surface>
void PlainLines(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  const int height = width * 3 / 4;
  Surface canvas(width, height);
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
BENCHMARK(LoadPlot<toolkit::RasterCanvas>)->Arg(800)->Arg(1400)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlainLines<toolkit::RasterCanvas>)->Arg(800)->Arg(1400)->Unit(benchmark::kMicrosecond);
#endif

}  // namespace

BENCHMARK_MAIN();

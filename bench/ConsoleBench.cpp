// What the operator feels: how long a key press takes to be painted while the poll runs and the
// machine cuts, how long the event loop is ever held meanwhile, and the memory of it all.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include "core/ScreenNames.h"
#include "toolkit/Application.h"
#include "toolkit/PickBox.h"
#include "tools/ConsoleProgram.h"
#include "tools/ProgramGenerator.h"

namespace {

using namespace torvane;  // a program of its own
using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration span) {
  return std::chrono::duration<double, std::milli>(span).count();
}

constexpr const char* LongProgram = "TWENTY-THOUSAND";

/// A copy of the example installation with two programs near the 16-bit counts, and a long text.
std::string MakeInstallation() {
  const auto folder =
      std::filesystem::path("/dev/shm") / ("torvane-bench-" + std::to_string(getpid()));
  std::filesystem::copy(std::filesystem::path(TORVANE_SOURCE_DIR) / "examples" / "installation",
                        folder, std::filesystem::copy_options::recursive);
  for (const char* name : {"LARGE-1", "LARGE-2"}) {
    std::ofstream(folder / "Programs" / "SHOP" / (std::string(name) + ".prg"), std::ios::binary)
        << tools::GenerateProgram({.Profiles = 3000});
  }
  std::ofstream text(folder / "Programs" / "SHOP" / (std::string(LongProgram) + ".prg"));
  for (int line = 0; line < 20000; ++line) text << "N" << line << " G01 X" << line << ".25 Y-7\r\n";
  return folder.string();
}

/// The longest time between two turns of the loop.
class LoopWatch {
 public:
  explicit LoopWatch(toolkit::QtLoop& loop) : timer_(loop.MakeTimer([this] { Turn(); })) {
    timer_->Start(1);
  }
  void Reset() {
    last_ = Clock::now();
    longest_ = 0;
  }
  [[nodiscard]] double LongestMs() const { return longest_; }

 private:
  void Turn() {
    const auto now = Clock::now();
    longest_ = std::max(longest_, Milliseconds(now - last_));
    last_ = now;
  }

  std::unique_ptr<platform::Timer> timer_;
  Clock::time_point last_ = Clock::now();
  double longest_ = 0;
};

void WaitMs(toolkit::QtLoop& loop, int ms) {
  bool over = false;
  const auto timer = loop.MakeTimer([&over] { over = true; });
  timer->Start(ms);
  loop.WaitUntil([&over] { return over; });
}

/// From a key press to the last pixel, ms.
double KeyMs(toolkit::Desk& desk, toolkit::Key key) {
  const auto start = Clock::now();
  desk.TypeKey(toolkit::KeyStroke(key));
  desk.Refresh();
  return Milliseconds(Clock::now() - start);
}

/// The editor on a program of 20,000 lines: its opening, and its slowest step.
void MeasureEditor(benchmark::State& state, tools::ConsoleProgram& program) {
  auto& desk = program.Desk();
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::F1));
  auto* form = program.Console().Screens().Set().Find(core::ScreenNames::ProgramForm);
  dynamic_cast<toolkit::PickBox*>(form->Window().Find("ProgramCombo"))->SetText(LongProgram);
  state.counters["editor_open_ms"] = KeyMs(desk, toolkit::Key::E);
  double slowest = 0;
  for (const auto key : {toolkit::Key::W, toolkit::Key::Down, toolkit::Key::N, toolkit::Key::U}) {
    for (int step = 0; step < 50; ++step) slowest = std::max(slowest, KeyMs(desk, key));
  }
  state.counters["editor_step_ms"] = slowest;
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::C));
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::X));
}

/// A key that opens a screen and one that closes it, each from the press to the last pixel.
void Measure(benchmark::State& state, tools::ConsoleProgram& program) {
  auto& desk = program.Desk();
  program.System().ActiveSlot = 1;
  MeasureEditor(state, program);
  const double first = [&] {
    const auto start = Clock::now();
    program.Console().Selection().SelectProgram("SHOP", "LARGE-1");
    return Milliseconds(Clock::now() - start);
  }();
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::X));
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::F11));
  program.Console().Selection().SelectProgram("SHOP", "LARGE-2");
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::X));
  program.Machine()->Controller().TheMachine().CycleStart();
  WaitMs(program.Loop(), 500);
  LoopWatch watch(program.Loop());
  watch.Reset();
  std::vector<double> times;
  for (auto _ : state) {
    WaitMs(program.Loop(), 7 + static_cast<int>(times.size() * 13 % 50));
    const auto key = times.size() % 2 == 0 ? toolkit::Key::F9 : toolkit::Key::X;
    const double ms = KeyMs(desk, key);
    times.push_back(ms);
    state.SetIterationTime(ms / 1000);
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["worst_key_ms"] = *std::max_element(times.begin(), times.end());
  state.counters["longest_loop_ms"] = watch.LongestMs();
  state.counters["select_ms"] = first;
  state.counters["peak_MiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

void KeyToPixels(benchmark::State& state) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int count = 1;
  char name[] = "bench";
  char* arguments[] = {name, nullptr};
  toolkit::Application application(count, arguments);
  tools::TorvaneOptions options;
  options.Root = MakeInstallation();
  options.Simulate = true;
  tools::ConsoleProgram program(options);
  auto look = program.Loop().MakeTimer([&] {
    if (!program.Console().Screens().Set().Visible(core::ScreenNames::FrontEnd)) return;
    static bool measured = false;
    if (std::exchange(measured, true)) return;
    Measure(state, program);
    program.ShutDown();
  });
  look->Start(20);
  program.Run();
  std::filesystem::remove_all(options.Root);
}
BENCHMARK(KeyToPixels)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

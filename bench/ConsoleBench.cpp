// What the operator feels: how long a key press takes to be painted while the poll runs and the
// machine cuts, how long the event loop is ever held meanwhile, and the memory of it all.
#include <algorithm>
#include <chrono>
#include <ctime>
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

/// Processor time of this thread, ms: what a key costs, whatever else the PC does.
double ProcessorMs() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_nsec) / 1e6;
}

struct KeyCost {
  double WallMs = 0;
  double ProcessorMs = 0;
};

/// From a key press to the last pixel.
KeyCost CostOf(toolkit::Desk& desk, toolkit::Key key) {
  const auto start = Clock::now();
  const double before = ProcessorMs();
  desk.TypeKey(toolkit::KeyStroke(key));
  desk.Refresh();
  return {Milliseconds(Clock::now() - start), ProcessorMs() - before};
}

double KeyMs(toolkit::Desk& desk, toolkit::Key key) { return CostOf(desk, key).WallMs; }

/// The editor on a program of 20,000 lines: its opening, and its slowest step.
void MeasureEditor(benchmark::State& state, tools::ConsoleProgram& program) {
  auto& desk = program.Desk();
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::F1));
  auto* form = program.Console().Screens().Set().Find(core::ScreenNames::ProgramForm);
  dynamic_cast<toolkit::PickBox*>(form->Window().Find("ProgramCombo"))->SetText(LongProgram);
  const KeyCost open = CostOf(desk, toolkit::Key::E);
  state.counters["editor_open_ms"] = open.WallMs;
  state.counters["editor_open_cpu_ms"] = open.ProcessorMs;
  KeyCost slowest;
  for (const auto key : {toolkit::Key::W, toolkit::Key::Down, toolkit::Key::N, toolkit::Key::U}) {
    for (int step = 0; step < 50; ++step) {
      const KeyCost cost = CostOf(desk, key);
      slowest.WallMs = std::max(slowest.WallMs, cost.WallMs);
      slowest.ProcessorMs = std::max(slowest.ProcessorMs, cost.ProcessorMs);
    }
  }
  state.counters["editor_step_ms"] = slowest.WallMs;
  state.counters["editor_step_cpu_ms"] = slowest.ProcessorMs;
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::C));
  desk.TypeKey(toolkit::KeyStroke(toolkit::Key::X));
}

/// Ticks of the poll in so many ms, by their first query.
int TicksIn(tools::ConsoleProgram& program, int ms) {
  const auto stage = program.Stage();
  stage.Sent.Listen();
  while (stage.Sent.Find("? VR(19)")) {
  }
  WaitMs(program.Loop(), ms);
  int ticks = 0;
  while (stage.Sent.Find("? VR(19)")) ++ticks;
  return ticks;
}

/// The poll while a program comes in at the fastest rate of a second port, against the poll while
/// nothing comes; quiet spells before and after, so that the machine's own load counts for both.
void MeasureReception(benchmark::State& state, tools::ConsoleProgram& program) {
  constexpr int SpellMs = 3000;
  constexpr int BytesPerSpell = 115200 / 10 * SpellMs / 1000;
  const int before = TicksIn(program, SpellMs);
  program.Office()->Obey("baud 115200");
  program.Office()->Obey("endless Programs\\SHOP\\LARGE-1.prg");
  const auto received = [&] {
    return static_cast<double>(program.Comms().Reception().CharactersReceived());
  };
  const double from = received();
  const int during = TicksIn(program, SpellMs);
  const double came = received() - from;
  program.Office()->Obey("halt");
  const int after = TicksIn(program, SpellMs);
  state.counters["receive_period_ratio"] = (before + after) / 2.0 / during;
  state.counters["receive_rate_ratio"] = came / BytesPerSpell;
}

/// A key that opens a screen and one that closes it, each from the press to the last pixel.
void Measure(benchmark::State& state, tools::ConsoleProgram& program) {
  auto& desk = program.Desk();
  program.System().ActiveSlot = 1;
  MeasureEditor(state, program);
  MeasureReception(state, program);
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

// Selection of a generated program against a floor that parses the same numbers and writes the same
// bytes through one buffer, both into memory-backed storage.
//
// Figures that count: Select/3000 over Floor/3000 at most 3; Select/3000 over Select/750 at most
// 1.05 times Floor/3000 over Floor/750; SelectExpressions over Select at most 1.2; the counter
// "peak_MiB" of a run of Select alone below 24. Estimate/3000 over
// Select/3000 stays below 0.5.
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "partprogram/RunEstimate.h"
#include "partprogram/SlotWriter.h"
#include "platform/DiskFileSystem.h"
#include "support/ProgramGenerator.h"

namespace {

using namespace torvane;
using namespace torvane::partprogram;

/// A directory in memory, gone at the end.
class MemoryDirectory {
 public:
  MemoryDirectory() : path_("/dev/shm/torvane-bench-" + std::to_string(getpid())) {
    std::filesystem::create_directories(path_ + "/Service");
    std::filesystem::create_directories(path_ + "/Subs");
  }
  ~MemoryDirectory() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  MemoryDirectory(const MemoryDirectory&) = delete;
  MemoryDirectory& operator=(const MemoryDirectory&) = delete;

  [[nodiscard]] core::DirectorySet Directories() const {
    core::DirectorySet directories;
    directories.RootDirectory = path_ + "/";
    directories.ServiceDirectory = path_ + "/Service/";
    directories.SubsDirectory = {path_ + "/Subs/", path_ + "/Subs/"};
    return directories;
  }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

core::MachineData Machine() {
  core::MachineData machine;
  machine.YDirection = 1;
  machine.TravelMinX = -10;
  machine.TravelMaxX = 3060;
  machine.TravelMinY = -10;
  machine.TravelMaxY = 1560;
  machine.ClampCount = 2;
  machine.CornerLimitFactor = 2;
  machine.BlendAngle = 15;
  machine.BlendMinRadius = 0.5F;
  return machine;
}

std::string Program(std::int64_t profiles, bool expressions) {
  tests::GeneratorOptions options;
  options.Profiles = static_cast<int>(profiles);
  options.Expressions = expressions;
  return tests::GenerateProgram(options);
}

/// An operator selects now and then: each time starts with the memory of the last one given back,
/// so that small and large programs pay alike for what they take.
void StartFresh(benchmark::State& state) {
  state.PauseTiming();
  malloc_trim(0);
  state.ResumeTiming();
}

PassResult SelectOnce(std::string_view program, platform::FileSystem& files,
                      const core::DirectorySet& directories) {
  static const core::MachineData machine = Machine();
  static const core::Station station{1, 1, "Laser", 3, 0, 0, 0, 0};
  const PassInput input{"SHEET", "BENCH", 1, &machine, &station, {}};
  const std::string squeezed = SqueezeProgram(program);
  files.ReplaceFile(core::SlotFile(directories, 1, core::Extension::Program), squeezed);
  return MakeSlotFiles(files, directories, squeezed, input);
}

void RunSelect(benchmark::State& state, bool expressions) {
  const MemoryDirectory directory;
  platform::DiskFileSystem files(directory.Path());
  const core::DirectorySet directories = directory.Directories();
  const std::string program = Program(state.range(0), expressions);
  for (auto _ : state) {
    StartFresh(state);
    const PassResult result = SelectOnce(program, files, directories);
    if (result.Outcome != PassOutcome::Good) {
      state.SkipWithError(result.Conversion.Report.c_str());
      return;
    }
    state.counters["lines"] = result.BodyLines;
    state.counters["records"] =
        static_cast<double>(result.Conversion.Records.size() + result.Kerf.size());
    state.counters["table_lines"] = result.Table.Lines;
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peak_MiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

void Select(benchmark::State& state) { RunSelect(state, false); }
void SelectExpressions(benchmark::State& state) { RunSelect(state, true); }

/// Every number of a text, by the cheapest plain scan.
double SumOfNumbers(std::string_view text) {
  double sum = 0;
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if ((c >= '0' && c <= '9') || c == '-') {
      const std::size_t end = std::min(text.find_first_not_of("0123456789.", at + 1), text.size());
      sum += core::LeadingNumber(text.substr(at, end - at));
      at = end;
    } else {
      ++at;
    }
  }
  return sum;
}

/// Sizes of the files that a selection leaves.
std::vector<std::size_t> SizesOf(const std::string& path) {
  std::vector<std::size_t> sizes;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) sizes.push_back(entry.file_size());
  }
  return sizes;
}

void Floor(benchmark::State& state) {
  const MemoryDirectory directory;
  platform::DiskFileSystem files(directory.Path());
  const core::DirectorySet directories = directory.Directories();
  const std::string program = Program(state.range(0), false);
  SelectOnce(program, files, directories);
  const std::vector<std::size_t> sizes = SizesOf(directory.Path());
  for (auto _ : state) {
    StartFresh(state);
    const double sum = SumOfNumbers(program);
    std::string buffer;
    int number = 0;
    for (const std::size_t size : sizes) {
      buffer.assign(size, static_cast<char>(sum));
      files.ReplaceFile(directories.RootDirectory + "floor" + std::to_string(++number), buffer);
    }
  }
}

/// How long the run takes, of 24,000 lines.
void Estimate(benchmark::State& state) {
  const core::MachineData machine = Machine();
  const core::Station station{1, 1, "Laser", 3, 0, 0, 0, 0};
  const PassResult result = RunPasses(SqueezeProgram(Program(state.range(0), false)),
                                      {"SHEET", "BENCH", 1, &machine, &station, {}});
  core::RunFigures figures;
  figures.CutAcceleration = figures.RapidAcceleration = 5000;
  for (auto _ : state) {
    const RunEstimate run = EstimateRun({result.Table.Text, result.Kerf}, figures, {});
    benchmark::DoNotOptimize(run.Contours.data());
    state.counters["run_s"] = run.Seconds();
    state.counters["contours"] = static_cast<double>(run.Contours.size());
  }
}

BENCHMARK(Floor)->Arg(750)->Arg(3000)->Unit(benchmark::kMillisecond);
BENCHMARK(Select)->Arg(750)->Arg(3000)->Unit(benchmark::kMillisecond);
BENCHMARK(Estimate)->Arg(3000)->Unit(benchmark::kMillisecond);
BENCHMARK(SelectExpressions)->Arg(3000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

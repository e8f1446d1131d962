// The search through many programs against what grep costs for the same word, and the editor's text
// of a long program.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <benchmark/benchmark.h>

#include "files/EditDocument.h"
#include "files/ProgramSearch.h"
#include "platform/DiskFileSystem.h"
#include "support/TempDirectory.h"

namespace {

using namespace torvane;

/// 2,000 programs of 200 lines in 20 directories.
struct Shelf {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Files{Temp.Path(), {{'C', Temp.Path()}}};

  Shelf() {
    std::string text;
    for (int line = 0; line < 200; ++line)
      text += "N" + std::to_string(line) + " G01 X100.25 Y7\r\n";
    for (int program = 0; program < 2000; ++program) {
      const std::string directory = "Programs/GROUP-" + std::to_string(program % 20) + "/";
      Temp.Put(directory + "PLATE-" + std::to_string(program) + ".prg", text);
    }
  }
};

const Shelf& TheShelf() {
  static const Shelf shelf;
  return shelf;
}

void SearchTwoThousandPrograms(benchmark::State& state) {
  const Shelf& shelf = TheShelf();
  std::size_t found = 0;
  for (auto _ : state) {
    found = files::SearchPrograms(shelf.Files, "C:\\Programs\\", {"", "plate-1"},
                                  [](const files::SearchProgress&) { return true; })
                .size();
  }
  state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(SearchTwoThousandPrograms)->Unit(benchmark::kMillisecond);

/// What the search is held against: the same word in the same files, the process included.
void GrepTwoThousandPrograms(benchmark::State& state) {
  const std::string command = "grep -ri plate-1 " + TheShelf().Temp.Path() + "/Programs >/dev/null";
  for (auto _ : state) benchmark::DoNotOptimize(std::system(command.c_str()));
}
BENCHMARK(GrepTwoThousandPrograms)->Unit(benchmark::kMillisecond)->UseRealTime();

std::string LongProgram() {
  std::string text;
  for (int line = 0; line < 20000; ++line)
    text += "N" + std::to_string(line) + " G01 X" + std::to_string(line) + ".25 Y-7.125  \r\n";
  return text;
}

void EditorTakesTwentyThousandLines(benchmark::State& state) {
  const std::string text = LongProgram();
  for (auto _ : state) {
    files::EditDocument document;
    document.Load(text);
    benchmark::DoNotOptimize(document.Count());
  }
}
BENCHMARK(EditorTakesTwentyThousandLines)->Unit(benchmark::kMillisecond);

void EditorInsertsAtTheStart(benchmark::State& state) {
  files::EditDocument document;
  document.Load(LongProgram());
  for (auto _ : state) {
    document.Insert("N1 G00 X0 Y0");
    static_cast<void>(document.Delete());
  }
}
BENCHMARK(EditorInsertsAtTheStart)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

// What a restart costs: the walk to its block against the selection of the program (at most a
// third), and the rehearsal of every restart of a program of 1,000 blocks (below a second).
#include <optional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "partprogram/FixedLines.h"
#include "partprogram/Pipeline.h"
#include "restart/GatherModule.h"
#include "restart/Rehearsal.h"
#include "restart/SlotProgram.h"
#include "restart/SplitPoint.h"
#include "support/ProgramGenerator.h"

namespace {

using namespace torvane;

core::MachineData LargeMachine() {
  core::MachineData machine;
  machine.YDirection = 1;
  machine.TravelMaxX = 3000;
  machine.TravelMaxY = 1500;
  return machine;
}

/// `profiles` of eight blocks each.
struct Sheet {
  core::MachineData Machine = LargeMachine();
  core::Station Station;
  std::string Squeezed;
  partprogram::PassResult Passes;

  explicit Sheet(int profiles)
      : Squeezed(partprogram::SqueezeProgram(tests::GenerateProgram({profiles}))),
        Passes(Select()) {}
  [[nodiscard]] partprogram::PassResult Select() const {
    return partprogram::RunPasses(Squeezed, {"SHEET", "BENCH", 1, &Machine, &Station, {}});
  }
};

void Selection(benchmark::State& state) {
  const Sheet sheet(3000);
  for (auto _ : state) benchmark::DoNotOptimize(sheet.Select());
}

void GatherToTheEnd(benchmark::State& state) {
  const Sheet sheet(3000);
  for (auto _ : state) {
    restart::GatherWalk walk(sheet.Passes.Text.Converted, {}, sheet.Machine);
    benchmark::DoNotOptimize(restart::WalkToBlock(walk, {"", 32767, 0}));
  }
}

void RehearseAll(benchmark::State& state) {
  const Sheet sheet(125);
  const auto listing =
      restart::ListingLines(partprogram::MakeFixedLines(sheet.Passes.Text.Body, true).Bytes);
  const auto& draw = sheet.Passes.Conversion.Records;
  for (auto _ : state) {
    const restart::Rehearser rehearser({sheet.Passes.Text.Converted,
                                        {},
                                        {draw, sheet.Passes.Kerf},
                                        listing,
                                        "SHEET",
                                        "BENCH",
                                        1,
                                        20,
                                        &sheet.Machine,
                                        {}});
    for (std::size_t block = 1; block <= listing.size(); ++block) {
      benchmark::DoNotOptimize(rehearser.AtBlock(static_cast<std::int16_t>(block), 0));
    }
    for (std::size_t i = 1; i < draw.size(); ++i) {
      if (!restart::CanSplit(draw[i])) continue;
      benchmark::DoNotOptimize(rehearser.AtRecord(static_cast<std::int16_t>(i + 1), std::nullopt));
    }
  }
}

BENCHMARK(Selection)->Unit(benchmark::kMillisecond);
BENCHMARK(GatherToTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK(RehearseAll)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

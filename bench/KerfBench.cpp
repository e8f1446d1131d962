// What a join of two offset elements costs, held against the walk over every chord, and what the
// passes behind the walk of a program cost.
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "../tests/support/ChordWalk.h"
#include "partprogram/Binding.h"
#include "partprogram/BlendModule.h"
#include "partprogram/FixedLines.h"
#include "partprogram/Intersection.h"
#include "partprogram/KerfModule.h"
#include "partprogram/TableModule.h"

namespace {

using namespace torvane;
using namespace torvane::partprogram;

ChordArc Arc(double x, double y, double radius, double start, double sweep) {
  return {{x, y}, radius, start, sweep, static_cast<std::int64_t>(std::abs(sweep)) * 10};
}

struct LineArcJoin {
  Segment Line;
  ChordArc Curve;
};

/// Offset lines that meet their arc, that run past it, and that just touch it.
std::vector<LineArcJoin> LineArcJoins() {
  std::vector<LineArcJoin> joins;
  for (int i = 0; i < 64; ++i) {
    const double height = 0.35 * i - 11;
    joins.push_back({{{980, 500 + height}, {1020, 500 + height + 0.1 * (i % 7)}},
                     Arc(1000, 500, 10, 15.0 * (i % 24), i % 2 == 0 ? 180 : -180)});
  }
  return joins;
}

struct ArcArcJoin {
  ChordArc First;
  ChordArc Second;
};

/// Two half circles of 180 degrees each, apart by nothing to more than both radii.
std::vector<ArcArcJoin> ArcArcJoins() {
  std::vector<ArcArcJoin> joins;
  for (int i = 0; i < 16; ++i) {
    joins.push_back({Arc(1000, 500, 10, 45.0 * (i % 8), 180),
                     Arc(1000.3 + 1.4 * i, 500 + 0.2 * i, 8, 30.0 * i, -180)});
  }
  return joins;
}

void LineArcEveryChord(benchmark::State& state) {
  const auto joins = LineArcJoins();
  for (auto _ : state) {
    for (const auto& join : joins) {
      benchmark::DoNotOptimize(tests::WalkLineArc(join.Line, join.Curve));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(joins.size()));
}

void LineArcSearch(benchmark::State& state) {
  const auto joins = LineArcJoins();
  for (auto _ : state) {
    for (const auto& join : joins) {
      benchmark::DoNotOptimize(IntersectLineArc(join.Line, join.Curve));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(joins.size()));
}

/// The arcs' points are worked out once beforehand here: the plain walk at its best.
void TwoArcsEveryPair(benchmark::State& state) {
  const auto joins = ArcArcJoins();
  for (auto _ : state) {
    for (const auto& join : joins) {
      benchmark::DoNotOptimize(tests::WalkArcs(join.First, join.Second));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(joins.size()));
}

void TwoArcsSearch(benchmark::State& state) {
  const auto joins = ArcArcJoins();
  for (auto _ : state) {
    for (const auto& join : joins) {
      benchmark::DoNotOptimize(IntersectArcs(join.First, join.Second));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(joins.size()));
}

BENCHMARK(LineArcEveryChord);
BENCHMARK(LineArcSearch);
BENCHMARK(TwoArcsEveryPair);
BENCHMARK(TwoArcsSearch);

DrawRecord Element(std::int16_t code, Point3 start, Point3 end) {
  DrawRecord record;
  record.Code = code;
  record.StartPoint = start;
  record.EndPoint = end;
  record.Feed = 2500;
  record.KerfSide = code == RecordCode::Move ? std::int16_t{0} : std::int16_t{1};
  FinishRecord(record);
  return record;
}

DrawRecord CornerOf(Point3 centre, double radius, double start, double sweep) {
  DrawRecord record;
  record.Code = RecordCode::ArcProfile;
  record.CentrePoint = centre;
  record[partprogram::Figure::Length] = static_cast<float>(radius);
  record[partprogram::Figure::Angle] = static_cast<float>(start);
  record[partprogram::Figure::Sweep] = static_cast<float>(sweep);
  record.KerfSide = 1;
  FinishRecord(record);
  return record;
}

/// Closed profiles with a lead-in: a move and seven elements each, `records` in all.
std::vector<DrawRecord> Program(int records) {
  std::vector<DrawRecord> draw(1);
  draw.front().Code = RecordCode::Sheet;
  for (int n = 0; static_cast<int>(draw.size()) + 8 <= records; ++n) {
    const auto x = static_cast<float>(n % 60 * 45.123);
    const auto y = static_cast<float>(n / 60 * 31.717);
    draw.push_back(Element(RecordCode::Move, {0, 0, 0}, {x + 5, y - 3, 0}));
    draw.push_back(Element(RecordCode::LineProfile, {x + 5, y - 3, 0}, {x + 5, y, 0}));
    draw.push_back(Element(RecordCode::LineProfile, {x + 5, y, 0}, {x + 30, y, 0}));
    draw.push_back(CornerOf({x + 30, y + 4, 0}, 4, 270, 90));
    draw.push_back(Element(RecordCode::LineProfile, {x + 34, y + 4, 0}, {x + 34, y + 20, 0}));
    draw.push_back(Element(RecordCode::LineProfile, {x + 34, y + 20, 0}, {x, y + 20, 0}));
    draw.push_back(Element(RecordCode::LineProfile, {x, y + 20, 0}, {x, y, 0}));
    draw.push_back(Element(RecordCode::LineProfile, {x, y, 0}, {x + 5, y, 0}));
  }
  return draw;
}

void PassesBehindTheWalk(benchmark::State& state) {
  const auto draw = Program(static_cast<int>(state.range(0)));
  const core::MachineData machine;
  std::size_t lines = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto copy = draw;
    state.ResumeTiming();
    KerfResult kerf = MakeKerfFile(copy, 0.15, machine);
    MarkBlends(kerf.Records, machine);
    const TableResult table = MakeTables(1, kerf.Records);
    lines = static_cast<std::size_t>(table.Lines);
    benchmark::DoNotOptimize(MakeFixedLines(table.Text, false));
  }
  state.counters["records"] = static_cast<double>(draw.size());
  state.counters["lines"] = static_cast<double>(lines);
}
BENCHMARK(PassesBehindTheWalk)->Arg(6000)->Arg(24000)->Unit(benchmark::kMillisecond);

void TablesOnly(benchmark::State& state) {
  auto draw = Program(24000);
  const core::MachineData machine;
  KerfResult kerf = MakeKerfFile(draw, 0.15, machine);
  for (auto _ : state) benchmark::DoNotOptimize(MakeTables(1, kerf.Records));
}
BENCHMARK(TablesOnly)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

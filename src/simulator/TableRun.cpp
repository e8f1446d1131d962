#include "simulator/TableRun.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "core/General.h"
#include "partprogram/DrawRecord.h"
#include "simulator/Expressions.h"

namespace torvane::simulator {

namespace {

constexpr std::size_t TableRecordSize = 80;
constexpr double EndMark = -999;
constexpr double HopTolerance = 1e-4;  // mm; nearer than this the machine stands at the start

struct SettingTarget {
  std::size_t Setting;  ///< index into the settings of a pair
  int Variable;
};

/// Where the settings of a pair show on the laser screen.
constexpr SettingTarget SettingTargets[] = {{0, 70}, {1, 71}, {2, 72}, {3, 73}, {4, 78}, {5, 74},
                                            {6, 31}, {7, 75}, {8, 76}, {9, 77}, {10, 30}};

double Degrees(double radians) { return radians * 180.0 / std::numbers::pi; }

/// The arc of a row, from where the machine stands.
Segment RowArc(const TableRow& row, const Position& from) {
  const Position to{from.X + row.X, from.Y + row.Y, from.Z};
  const Position centre{from.X + row.I, from.Y + row.J, from.Z};
  const double start = Degrees(std::atan2(-row.J, -row.I));
  double sweep = Degrees(std::atan2(row.Y - row.J, row.X - row.I)) - start;
  const bool negative = row.Type == RowType::ArcNegative;
  if (negative && sweep >= 0) sweep -= 360.0;
  if (!negative && sweep <= 0) sweep += 360.0;
  return Segment::Arc(from, to, centre, start, sweep);
}

}  // namespace

TableRun::TableRun(ControllerMemory& memory, const MachineOptions& options)
    : memory_(memory), options_(options), rings_{TableRing(500, 700), TableRing(750, 950)} {}

void TableRun::Written(int index, int count, bool running) {
  const auto values = memory_.TableRange(index, count);
  for (std::size_t i = 0; i < rings_.size(); ++i) {
    auto& ring = rings_[i];
    if (values.empty() || !ring.Holds(index)) continue;
    // A lone end mark out of turn closes the restart table and is no line of the program.
    if (count == 1 && values[0] == EndMark && !ring.Due(index) && !ring.First(index)) continue;
    ring.Written(index, values, running && slot_ == static_cast<int>(i) + 1);
  }
}

void TableRun::Selected(int slot) {
  if (slot == 1 || slot == 2) rings_[static_cast<std::size_t>(slot - 1)].Select();
}

void TableRun::Open(int slot) {
  slot_ = slot;
  share_ = 0;
  pathRefusal_ = 0;
  stored_.reset();
  Ring().Settle();
  program_ = Ring().Programs();
  if (options_.Files == nullptr || options_.RootDirectory.empty()) return;
  const auto& root = options_.RootDirectory;
  pathMissing_ = !path_.Load(*options_.Files, SlotFile(root, slot, "krw"));
}

bool TableRun::Begin(int slot) {
  const auto& ring = rings_[static_cast<std::size_t>(slot - 1)];
  if (ring.Row(1) == nullptr) return false;
  Open(slot);
  line_ = 0;
  return true;
}

void TableRun::Continue(int slot, const RestartPoint& point) {
  Open(slot);
  line_ = std::max(point.Line, 1) - 1;
  if (options_.Files != nullptr && !options_.RootDirectory.empty()) {
    const std::string table = SlotFile(options_.RootDirectory, slot, "tbl");
    stored_ = options_.Files->OpenRecords(table, TableRecordSize);
  }
  share_ = std::clamp(point.Share, 0.0, 1.0);
}

int TableRun::TakePathRefusal() { return std::exchange(pathRefusal_, 0); }

std::span<const double> TableRun::StoredRow(int line) {
  std::array<char, TableRecordSize> record{};
  if (!stored_ || !stored_->Read(static_cast<std::uint32_t>(line), record)) return {};
  ExpressionReader reader(std::string_view(record.data(), record.size()), memory_);
  storedValues_.clear();
  if (!core::EqualNoCase(reader.Word(), "TABLE") || !reader.Take('(') || !reader.Index()) return {};
  while (reader.Take(',')) {
    const auto value = reader.Expression();
    if (!value) return {};
    storedValues_.push_back(*value);
  }
  if (!reader.Take(')')) return {};
  return storedValues_;
}

RowOutcome TableRun::Fetch(int line, std::span<const double>& values) {
  const auto& ring = Ring();
  if (ring.Programs() != program_) return RowOutcome::Missing;
  if (const RingRow* row = ring.Row(line)) {
    values = row->Read();
  } else if (line > ring.NewestLine()) {
    return ring.Broken() ? RowOutcome::Missing : RowOutcome::Waiting;
  } else {
    values = StoredRow(line);
  }
  return values.empty() ? RowOutcome::Missing : RowOutcome::Executed;
}

RowOutcome TableRun::Next(const Position& from, Mover& mover) {
  const int line = line_ + 1;
  std::span<const double> values;
  RowOutcome outcome = Fetch(line, values);
  if (outcome != RowOutcome::Executed) return outcome;
  auto row = ReadRow(values);
  if (!row) return RowOutcome::Missing;
  int last = line;
  if (row->Type == RowType::SettingsPair) {
    last = line + 1;
    outcome = Fetch(last, values);
    if (outcome != RowOutcome::Executed) return outcome;
    if (!ReadSecondHalf(values, *row)) return RowOutcome::Missing;
  }
  line_ = last;
  if (row->Type == RowType::End) return RowOutcome::Finished;
  if (Skipped(*row)) {
    share_ = 0;
    return RowOutcome::Skipped;
  }
  Perform(*row, ElementOf(*row, line), from, mover);
  share_ = 0;
  return RowOutcome::Executed;
}

bool TableRun::Skipped(const TableRow& row) const {
  return (row.Skip == 1 && memory_.Variable(Vr::BlockSkip1) != 0) ||
         (row.Skip == 2 && memory_.Variable(Vr::BlockSkip2) != 0);
}

const PathElement* TableRun::ElementOf(const TableRow& row, int line) {
  if (path_.Empty()) return nullptr;
  const PathElement* element = path_.OfLine(line);
  if (element != nullptr && RowFits(row, *element)) return element;
  path_ = {};
  pathRefusal_ = line;
  return nullptr;
}

void TableRun::Perform(const TableRow& row, const PathElement* element, const Position& from,
                       Mover& mover) {
  switch (row.Type) {
    case RowType::Point:
      return PerformPoint(row, element, from, mover);
    case RowType::Line:
    case RowType::ArcNegative:
    case RowType::ArcPositive:
      return PerformCut(row, element, from, mover);
    case RowType::SettingsPair:
      return ApplySettings(row);
    case RowType::Other:
      if (element == nullptr || element->Code != partprogram::RecordCode::CancelOffsets) {
        mover.Add(Task::Waiting(options_.RepositionSeconds));
      }
      return;
    case RowType::Settings:
    case RowType::End:
      return;
  }
}

void TableRun::PerformPoint(const TableRow& row, const PathElement* element, const Position& from,
                            Mover& mover) const {
  if (row.Action > 0) return mover.Add(Task::Waiting(row.Action));
  if (row.Action == PointAction::Stop) return mover.Add(Task::AwaitingStart());
  if (row.Action != PointAction::None) return mover.Add(Task::Waiting(options_.ClampSeconds));
  Position target{row.X, row.Y, row.Z};
  if (element != nullptr) {
    const bool load = element->Code == partprogram::RecordCode::LoadPosition;
    target = load ? element->Centre : element->End;
  }
  mover.Add(Task::Travelling(Segment::Line(from, target), options_.RapidRate));
}

void TableRun::PerformCut(const TableRow& row, const PathElement* element, const Position& from,
                          Mover& mover) {
  const double feed = row.Feed > 0 ? row.Feed : options_.DefaultFeed;
  if (element == nullptr) {
    const bool line = row.Type == RowType::Line;
    const Segment path = line ? Segment::Line(from, {row.X, row.Y, row.Z}) : RowArc(row, from);
    return mover.Add(Task::Cutting(path, feed));
  }
  Task cut = Task::Cutting(element->Path(), feed);
  cut.Done = cut.Path.Length() * share_;
  const Position start = cut.Path.At(cut.Done);
  if (Distance(from, start) > HopTolerance) {
    mover.Add(Task::Travelling(Segment::Line(from, start), options_.RapidRate));
  }
  mover.Add(cut);
}

void TableRun::ApplySettings(const TableRow& row) {
  for (const auto& target : SettingTargets) {
    const double value = row.Settings[target.Setting];
    if (value != core::NoValue) memory_.SetVariable(target.Variable, value);
  }
}

}  // namespace torvane::simulator

#include "simulator/TableRun.h"

#include <algorithm>
#include <utility>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "partprogram/DrawRecord.h"
#include "simulator/Expressions.h"

namespace torvane::simulator {

namespace {

constexpr std::size_t TableRecordSize = 80;
constexpr int FirstIndex1 = 500;
constexpr int LastIndex1 = 700;
constexpr int FirstIndex2 = 750;
constexpr int LastIndex2 = 950;

struct SettingTarget {
  std::size_t Setting;  ///< index into the settings of a pair
  int Variable;
};

/// Where the settings of a pair show on the laser screen.
constexpr SettingTarget SettingTargets[] = {{0, 70}, {1, 71}, {2, 72}, {3, 73}, {4, 78}, {5, 74},
                                            {6, 31}, {7, 75}, {8, 76}, {9, 77}, {10, 30}};

}  // namespace

TableRun::TableRun(ControllerMemory& memory, const MachineOptions& options)
    : memory_(memory),
      options_(options),
      rings_{TableRing(FirstIndex1, LastIndex1), TableRing(FirstIndex2, LastIndex2)} {}

void TableRun::Written(int index, int count, bool running) {
  const auto values = memory_.TableRange(index, count);
  for (const core::Slot slot : core::BothSlots) {
    auto& ring = rings_[slot];
    if (values.empty() || !ring.Holds(index)) continue;
    ring.Written(index, values, running && slot_ == slot);
  }
}

void TableRun::Selected(core::Slot slot) { rings_[slot].Select(); }

void TableRun::Forget() {
  record_ = 0;
  skip_ = 0;
  along_ = 0;
  place_.reset();
  path_ = {};
  pathMissing_ = false;
  pathRefusal_ = 0;
  stored_.reset();
}

void TableRun::Open(core::Slot slot) {
  slot_ = slot;
  Forget();
  Ring().Settle();
  program_ = Ring().Programs();
  if (options_.Files == nullptr || options_.RootDirectory.empty()) return;
  const auto& root = options_.RootDirectory;
  pathMissing_ = !path_.Load(*options_.Files, core::SlotFile(root, slot, core::Extension::Kerf));
}

bool TableRun::Begin(core::Slot slot) {
  const auto& ring = rings_[slot];
  if (ring.Row(1) == nullptr) return false;
  Open(slot);
  line_ = 0;
  return true;
}

void TableRun::Continue(core::Slot slot, const RestartPoint& point, int linesSent) {
  Open(slot);
  line_ = std::max(point.Line, 1) - 1;
  if (options_.Files != nullptr && !options_.RootDirectory.empty()) {
    const std::string table = core::SlotFile(options_.RootDirectory, slot, core::Extension::Table);
    stored_ = options_.Files->OpenRecords(table, TableRecordSize);
    ResumeRing(linesSent);
    ApplySettingsBefore(line_ + 1);
    place_ = PositionBefore(line_ + 1);
  }
  along_ = std::max(point.Along, 0.0);
}

void TableRun::ResumeRing(int linesSent) {
  if (linesSent <= 0 || (Ring().NewestLine() == linesSent && !Ring().Broken())) return;
  const int values = static_cast<int>(StoredRow(linesSent).size());
  if (values > 0) Ring().Resume(linesSent, storedIndex_ + values);
}

void TableRun::ApplySettingsBefore(int line) {
  for (const auto& element : path_.Elements()) {
    if (element.TableLine >= line) return;
    if (element.Code != partprogram::RecordCode::Settings) continue;
    auto row = partprogram::ReadRow(StoredRow(path_.FirstLineOf(element.Record)));
    if (!row || row->Type != RowType::SettingsPair) continue;
    if (partprogram::ReadSecondHalf(StoredRow(element.TableLine), *row) && !Skipped(*row))
      ApplySettings(*row);
  }
}

std::optional<Position> TableRun::PositionBefore(int line) const {
  namespace Code = partprogram::RecordCode;
  std::optional<Position> at;
  for (const auto& element : path_.Elements()) {
    if (element.TableLine >= line) break;
    if (element.Code == Code::LoadPosition) at = element.Centre;
    if (element.Code == Code::Move || element.Code == Code::LineProfile ||
        element.Code == Code::ArcProfile) {
      at = element.End;
    }
  }
  return at;
}

void TableRun::PowerOn() {
  rings_ = {TableRing(FirstIndex1, LastIndex1), TableRing(FirstIndex2, LastIndex2)};
  reached_ = {};
  line_ = 0;
  slot_ = 1;
  Forget();
}

int TableRun::TakePathRefusal() { return std::exchange(pathRefusal_, 0); }

std::span<const double> TableRun::StoredRow(int line) {
  std::array<char, TableRecordSize> record{};
  if (line < 1 || !stored_ || !stored_->Read(static_cast<std::uint32_t>(line), record)) return {};
  ExpressionReader reader(std::string_view(record.data(), record.size()), memory_);
  storedValues_.clear();
  if (!core::EqualNoCase(reader.Word(), "TABLE") || !reader.Take('(')) return {};
  const auto index = reader.Index();
  if (!index) return {};
  storedIndex_ = *index;
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
  auto row = partprogram::ReadRow(values);
  if (!row) return RowOutcome::Missing;
  int last = line;
  if (row->Type == RowType::SettingsPair) {
    last = line + 1;
    outcome = Fetch(last, values);
    if (outcome != RowOutcome::Executed) return outcome;
    if (!partprogram::ReadSecondHalf(values, *row)) return RowOutcome::Missing;
  }
  line_ = last;
  reached_[slot_] = last;
  skip_ = row->Skip;
  record_ = 0;
  if (row->Type == RowType::End) return RowOutcome::Finished;
  if (!Skipped(*row)) Perform(*row, ElementOf(*row, line), from, mover);
  along_ = 0;
  return Skipped(*row) ? RowOutcome::Skipped : RowOutcome::Executed;
}

bool TableRun::Skipped(const TableRow& row) const {
  return (row.Skip == 1 && memory_.Variable(Vr::BlockSkip1) != 0) ||
         (row.Skip == 2 && memory_.Variable(Vr::BlockSkip2) != 0);
}

const PathElement* TableRun::ElementOf(const TableRow& row, int line) {
  if (path_.Empty()) return nullptr;
  const PathElement* element = path_.OfLine(line);
  if (element != nullptr && RowFits(row, *element)) {
    record_ = element->Record;
    return element;
  }
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
        Wait(Task::Waiting(options_.RepositionSeconds), from, mover);
      }
      return;
    case RowType::Settings:
    case RowType::End:
      return;
  }
}

void TableRun::GoTo(const Position& from, const Position& to, Mover& mover) const {
  if (Distance(from, to) <= partprogram::HopTolerance) return;
  Task way = Task::Travelling(Segment::Line(from, to), options_.RapidRate);
  way.Approach = true;
  mover.Add(way);
}

void TableRun::Wait(const Task& wait, const Position& from, Mover& mover) {
  if (place_) GoTo(from, *place_, mover);
  place_.reset();
  mover.Add(wait);
}

void TableRun::PerformPoint(const TableRow& row, const PathElement* element, const Position& from,
                            Mover& mover) {
  if (row.Action > 0) return Wait(Task::Waiting(row.Action), from, mover);
  if (row.Action == PointAction::Stop) return Wait(Task::AwaitingStart(), from, mover);
  if (row.Action != PointAction::None) {
    return Wait(Task::Waiting(options_.ClampSeconds), from, mover);
  }
  place_.reset();
  const Position target = partprogram::PointTarget(row, element);
  mover.Add(Task::Travelling(Segment::Line(from, target), options_.RapidRate));
}

void TableRun::PerformCut(const TableRow& row, const PathElement* element, const Position& from,
                          Mover& mover) {
  const double feed = row.Feed > 0 ? row.Feed : options_.DefaultFeed;
  place_.reset();
  if (element == nullptr) {
    return mover.Add(Task::Cutting(partprogram::RowPath(row, from), feed));
  }
  Task cut = Task::Cutting(element->Path(), feed);
  cut.Done = std::min(along_, cut.Path.Length());
  GoTo(from, cut.Path.At(cut.Done), mover);
  mover.Add(cut);
}

void TableRun::ApplySettings(const TableRow& row) {
  for (const auto& target : SettingTargets) {
    const double value = row.Settings[target.Setting];
    if (value != core::NoValue) memory_.SetVariable(target.Variable, value);
  }
}

}  // namespace torvane::simulator

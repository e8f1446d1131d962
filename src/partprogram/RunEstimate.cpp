#include "partprogram/RunEstimate.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "core/General.h"
#include "partprogram/PathElement.h"
#include "partprogram/SpeedProfile.h"
#include "partprogram/TableRows.h"

namespace torvane::partprogram {

namespace {

constexpr double SecondsPerMinute = 60;

/// The element that each line of a table belongs to, asked for in the order of the lines.
class ElementWalk {
 public:
  explicit ElementWalk(std::span<const DrawRecord> kerf) : kerf_(kerf) {}

  /// Null where there are no records, or no more; `fits` false from then on.
  [[nodiscard]] const DrawRecord* OfLine(int line, const TableRow& row,
                                         std::optional<PathElement>& element) {
    element.reset();
    if (kerf_.size() < 2) return nullptr;
    while (at_ < kerf_.size() && kerf_[at_].TableLine < line) ++at_;
    if (at_ < kerf_.size()) element = ToElement(static_cast<int>(at_) + 1, kerf_[at_]);
    if (element && RowFits(row, *element)) return &kerf_[at_];
    element.reset();
    kerf_ = {};
    return nullptr;
  }

 private:
  std::span<const DrawRecord> kerf_;
  std::size_t at_ = 1;  ///< after the header
};

/// The head on its way through the rows.
class RunWalk {
 public:
  RunWalk(const RunTable& table, const core::RunFigures& figures, const RunSwitches& switches)
      : text_(table.Text),
        elements_(table.Kerf),
        figures_(figures),
        switches_(switches),
        at_{figures.StartX, figures.StartY, 0} {
    result_.Contours.reserve(table.Kerf.size() / 8);
  }

  RunEstimate Run() {
    TableRow row;
    while (NextRow(row)) {
      if (Skipped(row)) {
        ++result_.Skipped;
        continue;
      }
      record_ = elements_.OfLine(firstLine_, row, element_);
      Take(row);
    }
    EndContour();
    FinishMotion();
    return std::move(result_);
  }

 private:
  // Rows.

  /// False at the end of the table and at a line that is no row.
  bool NextRow(TableRow& row) {
    firstLine_ = line_ + 1;
    std::array<double, LongestRow> values{};
    const auto first = ReadRow(NextValues(values));
    if (!first) return Broken();
    row = *first;
    if (row.Type == RowType::SettingsPair && !ReadSecondHalf(NextValues(values), row)) {
      return Broken();
    }
    return row.Type != RowType::End;
  }

  std::span<const double> NextValues(std::array<double, LongestRow>& values) {
    ++line_;
    std::string_view line;
    if (!core::TakeLine(text_, line)) return {};
    return ReadTableLine(line, values);
  }

  bool Broken() {
    result_.BrokenLine = line_;
    return false;
  }

  [[nodiscard]] bool Skipped(const TableRow& row) const {
    return (row.Skip == 1 && switches_.Skip1) || (row.Skip == 2 && switches_.Skip2);
  }

  void Take(const TableRow& row) {
    switch (row.Type) {
      case RowType::Point:
        return TakePoint(row);
      case RowType::Line:
      case RowType::ArcNegative:
      case RowType::ArcPositive:
        return TakeCut(row);
      case RowType::SettingsPair:
        return TakeSettings(row);
      case RowType::Other:
        return TakeOther();
      case RowType::Settings:
      case RowType::End:
        return;
    }
  }

  void TakePoint(const TableRow& row) {
    FinishMotion();
    if (row.Action > 0) return Dwell(row.Action);
    EndContour();
    if (row.Action == PointAction::Stop) {
      ++result_.Stops;
    } else if (row.Action != PointAction::None) {
      Wait(figures_.ClampSeconds, result_.MachineSeconds);
    } else {
      MoveTo(PointTarget(row, element_ ? &*element_ : nullptr));
    }
  }

  void TakeOther() {
    if (element_ && element_->Code == RecordCode::CancelOffsets) return;
    FinishMotion();
    EndContour();
    Wait(figures_.RepositionSeconds, result_.MachineSeconds);
  }

  /// The second setting switches the beam: on from 3 upwards.
  void TakeSettings(const TableRow& row) {
    constexpr std::size_t BeamSetting = 1;
    constexpr double BeamOn = 3;
    const double beam = row.Settings[BeamSetting];
    if (beam == core::NoValue) return;
    if (beam < BeamOn) EndContour();
    beamIsOn_ = beam >= BeamOn;
  }

  void TakeCut(const TableRow& row) {
    const Segment path = element_ ? element_->Path() : RowPath(row, at_);
    const Position start = path.At(0);
    const bool hop = Distance(at_, start) > HopTolerance;
    if (hop || !row.Blended) FinishMotion();
    const bool beam = record_ == nullptr || record_->BeamOn();
    if (!beam) EndContour();
    if (hop) MoveTo(start);
    if (beam) BeginContour();
    const double feed = row.Feed > 0 ? row.Feed : figures_.DefaultFeed;
    const double speed = feed * switches_.OverridePercent / 100 / SecondsPerMinute;
    if (path.Length() > 0) motion_.push_back({path.Length(), speed, 0});
    result_.CutLength += path.Length();
    if (contour_) contour_->Length += path.Length();
    at_ = path.End();
  }

  // Time.

  void Wait(double seconds, double& sum) {
    sum += seconds;
    if (contour_) contour_->Seconds += seconds;
  }

  /// A dwell between the beam on and the first element belongs to the contour that follows.
  void Dwell(double seconds) {
    Wait(seconds, result_.DwellSeconds);
    if (!contour_ && beamIsOn_) leadSeconds_ += seconds;
  }

  void MoveTo(const Position& target) {
    const double length = Distance(at_, target);
    SpeedLeg way{length, figures_.RapidRate / SecondsPerMinute, 0};
    TimeLegs({&way, 1}, figures_.RapidAcceleration);
    result_.MoveLength += length;
    Wait(way.Seconds, result_.MoveSeconds);
    at_ = target;
  }

  /// The cuts in hand come to rest.
  void FinishMotion() {
    TimeLegs(motion_, figures_.CutAcceleration);
    for (const auto& leg : motion_) Wait(leg.Seconds, result_.CutSeconds);
    motion_.clear();
  }

  // Contours.

  void BeginContour() {
    if (contour_) return;
    FinishMotion();
    contour_.emplace();
    contour_->Seconds = leadSeconds_;
    if (record_ != nullptr) {
      contour_->Block = record_->BlockNumber;
      contour_->SubBlock = record_->SubBlock;
      contour_->Record = element_->Record;
    }
    Wait(figures_.PierceSeconds, result_.MachineSeconds);
  }

  void EndContour() {
    leadSeconds_ = 0;
    if (!contour_) return;
    FinishMotion();
    result_.Contours.push_back(*contour_);
    contour_.reset();
  }

  std::string_view text_;
  ElementWalk elements_;
  const core::RunFigures& figures_;
  const RunSwitches& switches_;
  RunEstimate result_;
  Position at_;
  int line_ = 0;       ///< of the table, the last that was read
  int firstLine_ = 0;  ///< of the row in hand
  std::optional<PathElement> element_;
  const DrawRecord* record_ = nullptr;  ///< that of element_
  std::vector<SpeedLeg> motion_;        ///< cuts of one motion, not timed yet
  std::optional<Contour> contour_;      ///< what has been cut since the beam went on
  bool beamIsOn_ = false;               ///< as the settings say
  double leadSeconds_ = 0;              ///< dwells since then, before the first element
};

}  // namespace

RunEstimate EstimateRun(const RunTable& table, const core::RunFigures& figures,
                        const RunSwitches& switches) {
  return RunWalk(table, figures, switches).Run();
}

std::vector<Contour> LongestContours(const RunEstimate& estimate, std::size_t count) {
  std::vector<const Contour*> order;
  order.reserve(estimate.Contours.size());
  for (const auto& contour : estimate.Contours) order.push_back(&contour);
  const auto middle = order.begin() + static_cast<std::ptrdiff_t>(std::min(count, order.size()));
  std::partial_sort(order.begin(), middle, order.end(), [](const Contour* a, const Contour* b) {
    return a->Seconds != b->Seconds ? a->Seconds > b->Seconds : a < b;
  });
  std::vector<Contour> longest;
  longest.reserve(static_cast<std::size_t>(middle - order.begin()));
  for (auto at = order.begin(); at != middle; ++at) longest.push_back(**at);
  return longest;
}

}  // namespace torvane::partprogram

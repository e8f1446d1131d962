// The kerf pass: ".drw" records to ".krw" records, every element of a compensated profile moved
// aside and joined to its neighbours again.
#include "partprogram/KerfModule.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "partprogram/Intersection.h"
#include "partprogram/KerfJoin.h"
#include "partprogram/OffsetElements.h"
#include "platform/LargePages.h"

namespace torvane::partprogram {

namespace {

/// Two points nearer than this in both axes are one point, mm.
constexpr double SamePointDistance = 0.1;

constexpr std::size_t MostRecords = std::numeric_limits<std::int16_t>::max();

bool IsSamePoint(Point3 a, Point3 b) {
  return std::fabs(static_cast<double>(a.X) - b.X) < SamePointDistance &&
         std::fabs(static_cast<double>(a.Y) - b.Y) < SamePointDistance;
}

bool IsElement(const DrawRecord& record) {
  return record.Code == RecordCode::LineProfile || record.Code == RecordCode::ArcProfile;
}

/// Head moves without cutting, and what opens or turns the sheet.
bool BreaksProfile(const DrawRecord& record) {
  switch (record.Code) {
    case RecordCode::Move:
    case RecordCode::FlipRotate:
    case RecordCode::LoadPosition:
    case RecordCode::OpenClamps:
      return true;
    default:
      return false;
  }
}

class KerfPass {
 public:
  KerfPass(std::vector<DrawRecord>& draw, double kerfWidth, const core::MachineData& machine)
      : draw_(draw), kerfWidth_(kerfWidth), machine_(machine) {}

  KerfResult Run() {
    std::vector<DrawRecord>& kerf = result_.Records;
    if (draw_.empty()) return std::move(result_);
    // Room for a corner arc after every element: the records never move.
    kerf.reserve(std::min(2 * draw_.size(), MostRecords + 2));
    platform::PreferLargePages(kerf.data(), kerf.capacity() * sizeof(DrawRecord));
    kerf.push_back(draw_.front());
    result_.IllegalWidth = !std::isfinite(kerfWidth_);
    for (std::size_t i = 1; i < draw_.size(); ++i) {
      TakeRecord(i);
      if (kerf.size() <= MostRecords) continue;
      result_.TooManyRecords = true;
      kerf.resize(MostRecords);
      break;
    }
    kerf.front()[Mark::RecordCount] = static_cast<std::int16_t>(kerf.size());
    return std::move(result_);
  }

 private:
  /// `i` counts from 0; the numbers that records hold count from 1.
  void TakeRecord(std::size_t i) {
    std::vector<DrawRecord>& kerf = result_.Records;
    DrawRecord& record = draw_[i];
    kerf.push_back(record);
    if (BreaksProfile(record)) previousDraw_ = previousKerf_ = 0;
    if (IsElement(record)) {
      Offset(kerf.back());
      if (previousDraw_ != 0) Join(record);
    }
    kerf.back().RecordIndex = static_cast<std::int16_t>(i + 1);
    record.RecordIndex = static_cast<std::int16_t>(std::min(kerf.size(), MostRecords));
    if (!IsElement(record)) return;
    previousDraw_ = i;
    previousKerf_ = kerf.size() - 1;
  }

  void Offset(DrawRecord& element) {
    if (element.Code == RecordCode::LineProfile) {
      OffsetLine(element, kerfWidth_, machine_.YDirection);
    } else if (!OffsetArc(element, kerfWidth_, machine_.YDirection)) {
      result_.IllegalWidth = true;
    }
  }

  /// Joins the last record, made of `programmed`, to the element before it.
  void Join(const DrawRecord& programmed) {
    std::vector<DrawRecord>& kerf = result_.Records;
    DrawRecord& previous = kerf[previousKerf_];
    DrawRecord& current = kerf.back();
    if (!IsSamePoint(programmed.StartPoint, draw_[previousDraw_].EndPoint)) return;
    if (IsSamePoint(previous.EndPoint, current.StartPoint)) return;
    const Intersection meeting = FindIntersection(previous, current, machine_.ArcChordsPerDegree);
    if (meeting.Kind == Meeting::None ||
        (meeting.Kind == Meeting::Extension && IsTooFar(meeting.Point, programmed.StartPoint))) {
      // After whatever lies between, a dwell for one, and in front of the current element.
      DrawRecord arc = MakeCornerArc(previous, current, programmed.StartPoint, kerfWidth_,
                                     machine_.CornerFeedPercent);
      ShareWithLastArc(previous, arc);
      kerf.insert(kerf.end() - 1, std::move(arc));
      return;
    }
    TrimElement(previous, meeting.Point, ElementEnd::End);
    TrimElement(current, meeting.Point, ElementEnd::Start);
  }

  /// The common fields of a corner arc come from those of the record before it alone.
  void ShareWithLastArc(const DrawRecord& previous, DrawRecord& arc) {
    if (lastArc_ != nullptr && previous.Shared() == beforeLastArc_) return arc.Share(lastArc_);
    beforeLastArc_ = previous.Shared();
    lastArc_ = arc.Shared();
  }

  [[nodiscard]] bool IsTooFar(core::Vector2 point, Point3 corner) const {
    const double distance = core::XYToPolar(point.X - corner.X, point.Y - corner.Y).Length;
    return distance > machine_.CornerLimitFactor * kerfWidth_;
  }

  std::vector<DrawRecord>& draw_;
  double kerfWidth_;
  const core::MachineData& machine_;
  KerfResult result_;
  std::size_t previousDraw_ = 0;  ///< 0, the header: none
  std::size_t previousKerf_ = 0;
  std::shared_ptr<CommonFields> beforeLastArc_;
  std::shared_ptr<CommonFields> lastArc_;
};

}  // namespace

KerfResult MakeKerfFile(std::vector<DrawRecord>& draw, double kerfWidth,
                        const core::MachineData& machine) {
  return KerfPass(draw, kerfWidth, machine).Run();
}

}  // namespace torvane::partprogram

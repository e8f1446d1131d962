#include "restart/VisualWalk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/General.h"

namespace torvane::restart {

using partprogram::DrawRecord;
using partprogram::Point3;

namespace {

constexpr std::int16_t FirstRecord = 2;

/// Farther than any sheet reaches, mm.
constexpr double FarAway = 99999;

/// A hit of a tool; it wins a pick over another record at the very same distance.
constexpr std::int16_t ToolHit = 210;

bool StrictlyBetween(float value, float a, float b) {
  return value > std::min(a, b) && value < std::max(a, b);
}

bool OnView(const PlotRecords& records, const core::PlotView& view, std::int16_t number) {
  const auto record = records.Read(number);
  return record && RecordInView(*record, view);
}

double NearestPoint(const DrawRecord& record, float x, float y) {
  const std::array<Point3, 6> points = {record.StartPoint,  record.MidPoint,     record.EndPoint,
                                        record.CentrePoint, record.ProfileStart, record.ProfileEnd};
  double nearest = FarAway;
  for (const Point3& point : points) {
    nearest = std::min(
        nearest, std::hypot(static_cast<double>(point.X) - x, static_cast<double>(point.Y) - y));
  }
  return nearest;
}

}  // namespace

bool RecordInView(const DrawRecord& record, const core::PlotView& view) {
  const auto inside = [&](float x, float y) {
    return view.Corner1X < x && x < view.Corner2X &&
           StrictlyBetween(y, view.Corner1Y, view.Corner2Y);
  };
  return inside(record.BoxInner.MinX, record.BoxInner.MinY) ||
         inside(record.BoxInner.MaxX, record.BoxInner.MaxY) ||
         inside(record.StartPoint.X, record.StartPoint.Y) ||
         inside(record.EndPoint.X, record.EndPoint.Y);
}

VisualState BeginWalk(const PlotRecords& records, const core::PlotView& view) {
  VisualState state;
  for (int n = FirstRecord; n <= records.Count; ++n) {
    const auto number = static_cast<std::int16_t>(n);
    if (!OnView(records, view, number)) continue;
    if (state.VisualFirst < FirstRecord) state.VisualFirst = state.VisualCurrent = number;
    state.VisualLast = number;
  }
  state.VisualPrevious = state.VisualLast;
  return state;
}

std::int16_t Walk(const PlotRecords& records, const core::PlotView& view, const VisualState& state,
                  WalkKey key) {
  if (key == WalkKey::First) return state.VisualFirst;
  if (key == WalkKey::Last) return state.VisualLast;
  const int step = key == WalkKey::Next ? 1 : -1;
  const std::int16_t limit = step > 0 ? state.VisualLast : state.VisualFirst;
  for (int n = state.VisualCurrent + step; step > 0 ? n <= limit : n >= limit; n += step) {
    if (OnView(records, view, static_cast<std::int16_t>(n))) return static_cast<std::int16_t>(n);
  }
  return step > 0 ? state.VisualFirst : state.VisualLast;
}

std::optional<std::int16_t> PickRecord(const PlotRecords& records, float x, float y) {
  struct Noted {
    std::int16_t Number;
    std::int16_t Code;
    double Distance;
  };
  std::vector<Noted> noted;
  for (int n = FirstRecord; n <= records.Count; ++n) {
    const auto record = records.Read(static_cast<std::int16_t>(n));
    if (!record) break;
    const auto& box = record->BoxOuter;
    if (!core::PointInBox(box.MinX, box.MinY, box.MaxX, box.MaxY, x, y)) continue;
    noted.push_back({static_cast<std::int16_t>(n), record->Code, NearestPoint(*record, x, y)});
  }
  if (noted.size() == 1) return noted.front().Number;
  const Noted* pick = nullptr;
  for (const Noted& each : noted) {
    const double best = pick != nullptr ? pick->Distance : FarAway;
    const bool ties =
        pick != nullptr && each.Distance == best && each.Code == ToolHit && pick->Code != ToolHit;
    if (each.Distance < best || ties) pick = &each;
  }
  if (pick == nullptr) return std::nullopt;
  return pick->Number;
}

NextBlock BlockAfter(const PlotRecords& records, std::int16_t number, const DrawRecord& chosen) {
  for (int n = number; n <= records.Count; ++n) {
    const auto record = records.Read(static_cast<std::int16_t>(n));
    if (!record) break;
    if (record->BlockNumber != chosen.BlockNumber) return {record->BlockNumber, record->SubBlock};
  }
  return {static_cast<std::int16_t>(std::min<int>(chosen.BlockNumber + 1, INT16_MAX)), 0};
}

}  // namespace torvane::restart

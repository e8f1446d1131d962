#include "partprogram/OffsetElements.h"

#include <array>

#include "core/General.h"
#include "partprogram/Binding.h"

namespace torvane::partprogram {

namespace {

constexpr bool IsSide(std::int16_t side) { return side == 1 || side == 2; }

/// Degrees from a line's direction to the side it moves to, by `KerfSide` less 1; the columns are
/// `YDirection` 0 and any other.
constexpr std::array<std::array<double, 2>, 2> NormalOfSide = {{{-90, 90}, {90, -90}}};

/// By `KerfSide` less 1 and whether the sweep is negative; the columns are `YDirection` 1 and any
/// other. A line looks at its `YDirection` differently.
constexpr std::array<std::array<std::array<int, 2>, 2>, 2> ArcSigns = {{
    {{{-1, +1}, {+1, -1}}},  // side 1: sweep 0 or positive, negative
    {{{+1, -1}, {-1, +1}}},  // side 2
}};

void Move(Point3& point, core::Vector2 offset) {
  point.X = static_cast<float>(point.X + offset.X);
  point.Y = static_cast<float>(point.Y + offset.Y);
}

}  // namespace

int KerfArcSign(std::int16_t side, double sweep, std::int16_t yDirection) {
  if (!IsSide(side)) return 0;
  return ArcSigns[static_cast<std::size_t>(side - 1)][sweep < 0 ? 1 : 0][yDirection == 1 ? 0 : 1];
}

void OffsetLine(DrawRecord& record, double kerfWidth, std::int16_t yDirection) {
  if (record.KerfSide == 0) return;
  if (IsSide(record.KerfSide)) {
    const auto side = static_cast<std::size_t>(record.KerfSide - 1);
    const double normal = record[Figure::Angle] + NormalOfSide[side][yDirection != 0 ? 1 : 0];
    const core::Vector2 offset = core::PolarToXY(kerfWidth, normal);
    Move(record.StartPoint, offset);
    Move(record.EndPoint, offset);
  }
  record.KerfSide = 0;
  FinishRecord(record);
}

bool OffsetArc(DrawRecord& record, double kerfWidth, std::int16_t yDirection) {
  if (record.KerfSide == 0) return true;
  const int sign = KerfArcSign(record.KerfSide, record[Figure::Sweep], yDirection);
  const double radius = record[Figure::Radius] + sign * kerfWidth;
  if (radius > 0) record[Figure::Radius] = static_cast<float>(radius);
  record.KerfSide = 0;
  FinishRecord(record);
  return sign >= 0 || radius > 0;
}

}  // namespace torvane::partprogram

// How a record lies on disk: its size, the places of the figures and marks that each kind of record
// keeps, and the two ways over.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace torvane::partprogram {

struct DrawRecord;

/// Bytes of a record on disk. Little-endian, no padding.
inline constexpr std::size_t DrawRecordSize = 516;

/// The floats of a record by what they mean for its kind, each with its place among the 18.
/// Lengths in mm, angles in degrees, times as the program tells them.
enum class Figure : std::uint8_t {
  // Sheet
  SheetX = 0,
  SheetY = 1,
  FirstClamp = 6,  ///< and the three after it
  KerfWidth = 14,
  // Move and Line Profile
  Length = 0,
  SecondLength = 1,  ///< a move's length once more
  ThirdLength = 4,   ///< and again
  Angle = 9,
  // Arc Profile
  Radius = 0,
  ArcLength = 1,  ///< never negative
  StartAngle = 9,
  Sweep = 10,  ///< negative turns clockwise where Y grows upwards
  // Arc of a tool that turns with it: nothing fills these, a turned arc keeps them in step
  SecondRadius = 11,
  ToolStartAngle = 12,
  ToolSweep = 13,
  ToolAngle = 14,
  // Dwell
  DwellTime = 0,
  // Reposition
  RepositionX = 0,
  Backoff = 1,
  LimitXMin = 2,  ///< from here on
  LimitXMax = 3,
  Return = 5,
  // Flip / Rotate
  Rotation = 9,
  // Load Position
  LoadX = 0,
  LoadY = 1,
};

/// The 16-bit words of a record by what they mean for its kind, each with its place among the 12.
/// A mark is -1 where it is set.
enum class Mark : std::uint8_t {
  // Sheet
  RecordCount = 0,  ///< records of the file, the header among them
  Imperial = 1,
  // Move, Line Profile and Arc Profile: the motion word, 0 to 3
  MotionWord = 9,
  // Arc Profile
  ArcWord = 5,     ///< 2 or 3, as MotionWord
  CornerArc = 11,  ///< the kerf pass has put the arc in
  // Flip / Rotate
  FlipX = 0,
  FlipY = 1,
  // Open Clamps: set for M87
  OpensClamps = 0,
  // Settings
  SettingsMode = 0,  ///< 0 to 2: G30 to G32
};

[[nodiscard]] constexpr std::size_t PlaceOf(Figure figure) {
  return static_cast<std::size_t>(figure);
}
[[nodiscard]] constexpr std::size_t PlaceOf(Mark mark) { return static_cast<std::size_t>(mark); }

/// Clamp `index` (0 to 3) of a Sheet.
[[nodiscard]] constexpr Figure ClampFigure(std::size_t index) {
  return static_cast<Figure>(PlaceOf(Figure::FirstClamp) + index);
}

/// Writes the 516 bytes of a record.
void EncodeRecord(const DrawRecord& record, std::span<char, DrawRecordSize> bytes);

/// Any 516 bytes give a record; nothing is checked.
[[nodiscard]] DrawRecord DecodeRecord(std::span<const char, DrawRecordSize> bytes);

/// Only what a plot reads: Code, SkipLevel, StartPoint, EndPoint, CentrePoint, the figures,
/// KerfSide, BeamState1 and Blended. The other fields of `record` stay.
void DecodePlotFields(std::span<const char, DrawRecordSize> bytes, DrawRecord& record);

}  // namespace torvane::partprogram

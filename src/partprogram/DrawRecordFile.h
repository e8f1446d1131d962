// How a record lies on disk: its size, the places of the figures and marks that each kind of record
// keeps, and the two ways over.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace torvane::partprogram {

struct CommonFields;
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

/// Where the figures and marks of moves, lines and arcs lie within a record in memory; NoRoom for
/// the others, which are among its common fields.
inline constexpr std::size_t NoRoom = 255;
[[nodiscard]] constexpr std::size_t RoomOf(Figure figure) {
  switch (PlaceOf(figure)) {
    case PlaceOf(Figure::Length):
      return 0;
    case PlaceOf(Figure::SecondLength):
      return 1;
    case PlaceOf(Figure::ThirdLength):
      return 2;
    case PlaceOf(Figure::Angle):
      return 3;
    case PlaceOf(Figure::Sweep):
      return 4;
    default:
      return NoRoom;
  }
}
[[nodiscard]] constexpr std::size_t RoomOf(Mark mark) {
  switch (PlaceOf(mark)) {
    case PlaceOf(Mark::SettingsMode):
      return 0;
    case PlaceOf(Mark::FlipY):
      return 1;
    case PlaceOf(Mark::ArcWord):
      return 2;
    case PlaceOf(Mark::MotionWord):
      return 3;
    case PlaceOf(Mark::CornerArc):
      return 4;
    default:
      return NoRoom;
  }
}

/// Writes the 516 bytes of a record.
void EncodeRecord(const DrawRecord& record, std::span<char, DrawRecordSize> bytes);

/// Any 516 bytes give a record; nothing is checked.
[[nodiscard]] DrawRecord DecodeRecord(std::span<const char, DrawRecordSize> bytes);

/// The same for many records of one file: those that are alike share their common fields.
class RecordDecoder {
 public:
  [[nodiscard]] DrawRecord Decode(std::span<const char, DrawRecordSize> bytes);

 private:
  static constexpr std::size_t Kept = 8;

  std::array<std::shared_ptr<CommonFields>, Kept> recent_;
  std::size_t oldest_ = 0;
};

/// The Code of a record alone.
[[nodiscard]] std::int16_t CodeIn(std::span<const char, DrawRecordSize> bytes);

/// Only what a plot reads: Code, SkipLevel, StartPoint, EndPoint, CentrePoint, the figures of lines
/// and arcs, KerfSide, whether the beam is on, and Blended. The other fields of `record` stay.
void DecodePlotFields(std::span<const char, DrawRecordSize> bytes, DrawRecord& record);

}  // namespace torvane::partprogram

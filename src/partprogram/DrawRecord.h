// The record of one thing that the machine will do: one row of ".drw" and ".krw".
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "partprogram/DrawRecordFile.h"

namespace torvane::partprogram {

/// What a record stands for.
namespace RecordCode {
inline constexpr std::int16_t Sheet = 100;
inline constexpr std::int16_t Move = 110;
inline constexpr std::int16_t LineProfile = 120;
inline constexpr std::int16_t ArcProfile = 130;
inline constexpr std::int16_t Dwell = 311;
inline constexpr std::int16_t ProgramStop = 321;
inline constexpr std::int16_t Reposition = 350;
inline constexpr std::int16_t FlipRotate = 355;
inline constexpr std::int16_t LoadPosition = 360;
inline constexpr std::int16_t OpenClamps = 365;
inline constexpr std::int16_t CancelOffsets = 370;
inline constexpr std::int16_t Settings = 400;
}  // namespace RecordCode

/// mm.
struct Point3 {
  float X = 0;
  float Y = 0;
  float Z = 0;
};

/// X minimum, Y minimum, X maximum, Y maximum, mm.
struct Box {
  float MinX = 0;
  float MinY = 0;
  float MaxX = 0;
  float MaxY = 0;
};

/// Blank-padded single-byte text of a fixed size.
template <std::size_t Size>
using FixedText = std::array<char, Size>;

/// `text` cut to the field or padded with blanks.
template <std::size_t Size>
[[nodiscard]] constexpr FixedText<Size> PadText(std::string_view text) {
  FixedText<Size> out{};
  out.fill(' ');
  for (std::size_t i = 0; i < Size && i < text.size(); ++i) out[i] = text[i];
  return out;
}

/// Without the blanks at the end.
template <std::size_t Size>
[[nodiscard]] std::string_view TextOf(const FixedText<Size>& field) {
  std::string_view text(field.data(), Size);
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

/// Laser state at a record.
struct BeamState {
  std::int16_t On = 0;  ///< -1 while the beam cuts
  char Kind = ' ';      ///< 'P' while profiling
  FixedText<18> ToolName = PadText<18>("");
  float ProfilingMark = 0;         ///< second state: -1 while profiling
  std::array<float, 2> Carried{};  ///< nothing fills them
  float Angle = 0;                 ///< degrees
  std::int16_t StationNumber = 0;
  std::int16_t StationType = 0;
  std::array<std::int32_t, 2> Placement{};
  std::int32_t Number = 0;  ///< first state: 1 while profiling; second: the record's own number
};

/// Figures and marks that depend on the kind of record are reached by their names, `arc[Figure::
/// Sweep]`; only DrawRecordFile knows where they lie.
struct DrawRecord {
  std::int16_t Code = 0;
  FixedText<18> Name = PadText<18>("");
  FixedText<72> Material = PadText<72>("");
  std::int16_t BlockNumber = 0;
  std::int16_t SubNumber = 0;
  std::int16_t SubBlock = 0;
  std::int16_t RecordIndex = 0;
  std::int16_t TableLine = 0;
  std::int16_t SkipLevel = 0;
  Point3 StartPoint;
  Point3 MidPoint;
  Point3 EndPoint;
  Point3 CentrePoint;
  Point3 ProfileStart;
  Point3 ProfileEnd;
  std::int16_t KerfSide = 0;
  std::int16_t Reserved = 0;
  Box BoxInner;
  Box BoxOuter;
  BeamState BeamState1;
  BeamState BeamState2;
  float Feed = 0;
  std::array<float, 24> Settings = ClearedSettings();  ///< -999: not set
  std::int16_t Blended = 0;

  [[nodiscard]] float& operator[](Figure figure) { return values_[PlaceOf(figure)]; }
  [[nodiscard]] float operator[](Figure figure) const { return values_[PlaceOf(figure)]; }
  [[nodiscard]] std::int16_t& operator[](Mark mark) { return flags_[PlaceOf(mark)]; }
  [[nodiscard]] std::int16_t operator[](Mark mark) const { return flags_[PlaceOf(mark)]; }

  static constexpr std::array<float, 24> ClearedSettings() {
    std::array<float, 24> settings{};
    settings.fill(-999.0F);
    return settings;
  }

 private:
  friend struct DrawRecordFields;

  std::array<float, 18> values_{};
  std::array<std::int16_t, 12> flags_{};
};

}  // namespace torvane::partprogram

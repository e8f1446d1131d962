// What a record is made of: points, boxes, fixed texts, laser states, and the fields that many
// records share.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace torvane::partprogram {

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

/// Laser state at a record, without its number.
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
};

/// What neighbouring records mostly have alike: they share one object of it, which is several times
/// the size of a record.
struct CommonFields {
  FixedText<18> Name = PadText<18>("");
  FixedText<72> Material = PadText<72>("");
  std::int16_t Reserved = 0;
  BeamState BeamState1;
  std::int32_t ProfileNumber = 0;  ///< of BeamState1: 1 while profiling
  BeamState BeamState2;
  std::array<float, 24> Settings = ClearedSettings();  ///< -999: not set
  std::array<float, 18> Figures{};                     ///< those without a place in the record
  std::array<std::int16_t, 12> Marks{};                ///< likewise

  static constexpr std::array<float, 24> ClearedSettings() {
    std::array<float, 24> settings{};
    settings.fill(-999.0F);
    return settings;
  }
};

/// Of a cleared record.
inline constexpr CommonFields ClearedFields{};

/// The same bytes on disk, to the last bit.
[[nodiscard]] bool SameOnDisk(const CommonFields& left, const CommonFields& right);

}  // namespace torvane::partprogram

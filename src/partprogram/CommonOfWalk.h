// What the records of a walk share: one object of common fields for all records of a kind that are
// made under the same settings.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "core/MachineData.h"
#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

/// Code and name of a record, and its row among the kinds.
struct RecordKind {
  std::uint8_t Row;
  std::int16_t Code;
  FixedText<18> Name;
};

/// What the walk makes.
namespace Kind {
inline constexpr RecordKind Move{0, RecordCode::Move, PadText<18>("Move")};
inline constexpr RecordKind LineProfile{1, RecordCode::LineProfile, PadText<18>("Line Profile")};
inline constexpr RecordKind ArcProfile{2, RecordCode::ArcProfile, PadText<18>("Arc Profile")};
inline constexpr RecordKind Dwell{3, RecordCode::Dwell, PadText<18>("Dwell")};
inline constexpr RecordKind ProgramStop{4, RecordCode::ProgramStop, PadText<18>("Program Stop")};
inline constexpr RecordKind Reposition{5, RecordCode::Reposition, PadText<18>("Reposition")};
inline constexpr RecordKind FlipRotate{6, RecordCode::FlipRotate, PadText<18>("Flip / Rotate")};
inline constexpr RecordKind LoadPosition{7, RecordCode::LoadPosition, PadText<18>("Load Position")};
inline constexpr RecordKind OpenClamps{8, RecordCode::OpenClamps, PadText<18>("Open Clamps")};
inline constexpr RecordKind CancelOffsets{9, RecordCode::CancelOffsets,
                                          PadText<18>("Cancel Offsets")};
inline constexpr RecordKind Settings{10, RecordCode::Settings, PadText<18>("Settings")};
inline constexpr std::size_t Count = 11;
}  // namespace Kind

enum class Beam : std::uint8_t { Off, On };

class CommonOfWalk {
 public:
  using Settings = std::array<float, 24>;

  /// Elements are cut by the laser of `station`.
  CommonOfWalk(const core::Station& station, const Settings& settings);

  /// For the records from now on. Programs go to and fro between a few sets of settings.
  void SetSettings(const Settings& settings);

  [[nodiscard]] const std::shared_ptr<CommonFields>& Of(const RecordKind& kind, Beam beam);

 private:
  /// The objects made so far under one set of settings, by kind and beam.
  struct Row {
    Settings Values;
    std::array<std::array<std::shared_ptr<CommonFields>, 2>, Kind::Count> Made;
  };
  static constexpr std::size_t KeptRows = 8;

  BeamState beam_;  ///< first state of every element cut
  std::array<Row, KeptRows> rows_;
  std::size_t used_ = 1;
  std::size_t row_ = 0;
  std::size_t oldest_ = 0;
};

}  // namespace torvane::partprogram

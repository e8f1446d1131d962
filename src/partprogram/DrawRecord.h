// The record of one thing that the machine will do: one row of ".drw" and ".krw".
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <utility>

#include "partprogram/DrawRecordFile.h"
#include "partprogram/RecordParts.h"

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

/// Figures and marks that depend on the kind of record are reached by their names, `arc[Figure::
/// Sweep]`; only DrawRecordFile knows where they lie.
///
/// A program has tens of thousands of records, so a record in memory holds what differs from one to
/// the next, a third of its bytes on disk, and shares the rest. Records that share may be read from
/// several threads; a change gives the record common fields of its own.
struct DrawRecord {
  std::int16_t Code = 0;
  std::int16_t BlockNumber = 0;
  std::int16_t SubNumber = 0;
  std::int16_t SubBlock = 0;
  std::int16_t RecordIndex = 0;
  std::int16_t TableLine = 0;
  std::int16_t SkipLevel = 0;
  std::int16_t KerfSide = 0;
  std::int16_t Blended = 0;
  Point3 StartPoint;
  Point3 MidPoint;
  Point3 EndPoint;
  Point3 CentrePoint;
  Point3 ProfileStart;
  Point3 ProfileEnd;
  Box BoxInner;
  Box BoxOuter;
  std::int32_t OwnNumber = 0;  ///< of BeamState2: of a cut, its RecordIndex when it was made
  float Feed = 0;

  [[nodiscard]] const CommonFields& Common() const { return common_ ? *common_ : ClearedFields; }
  /// The common fields for a change, no longer shared.
  [[nodiscard]] CommonFields& ChangeCommon();
  void Share(std::shared_ptr<CommonFields> common) { common_ = std::move(common); }
  [[nodiscard]] const std::shared_ptr<CommonFields>& Shared() const { return common_; }

  /// The beam cuts.
  [[nodiscard]] bool BeamOn() const { return Common().BeamState1.On != 0; }

  [[nodiscard]] float& operator[](Figure figure) {
    const auto room = RoomOf(figure);
    return room < NoRoom ? figures_[room] : ChangeCommon().Figures[PlaceOf(figure)];
  }
  [[nodiscard]] float operator[](Figure figure) const {
    const auto room = RoomOf(figure);
    return room < NoRoom ? figures_[room] : Common().Figures[PlaceOf(figure)];
  }
  [[nodiscard]] std::int16_t& operator[](Mark mark) {
    const auto room = RoomOf(mark);
    return room < NoRoom ? marks_[room] : ChangeCommon().Marks[PlaceOf(mark)];
  }
  [[nodiscard]] std::int16_t operator[](Mark mark) const {
    const auto room = RoomOf(mark);
    return room < NoRoom ? marks_[room] : Common().Marks[PlaceOf(mark)];
  }

 private:
  std::array<float, 5> figures_{};
  std::array<std::int16_t, 5> marks_{};
  std::shared_ptr<CommonFields> common_;
};

}  // namespace torvane::partprogram

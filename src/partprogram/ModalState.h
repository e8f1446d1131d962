// What a reader of a program keeps from block to block, and how a block moves the head.
#pragma once

#include <array>
#include <cstdint>

#include "core/General.h"
#include "core/MachineData.h"
#include "partprogram/Block.h"
#include "partprogram/DrawRecord.h"
#include "partprogram/Walker.h"
#include "partprogram/WordValues.h"

namespace torvane::partprogram {

/// Inches become millimetres.
inline constexpr double InchFactor = 25.4;

/// Largest word value and largest parameter, in size. Beyond them lies no machine.
inline constexpr double LargestWord = 1e9;
inline constexpr double LargestParameter = 1e15;

/// Working travel limits, mm. A reposition moves them.
struct TravelLimits {
  float XMin = 0;
  float XMax = 0;
  float YMin = 0;
  float YMax = 0;
};

/// Positions mm, angles degrees.
struct ModalState {
  std::int16_t MotionMode = 0;  ///< 0 to 3: G00 to G03
  bool Imperial = false;
  bool Incremental = false;
  std::int16_t KerfSide = 0;  ///< 0 to 2: G40 to G42
  bool Profiling = false;
  bool MirrorX = false;
  bool MirrorY = false;
  std::int16_t SkipLevel = 0;
  double Feed = 0;  ///< as written, whatever the units
  Point3 Current;
  Point3 Previous;
  float OffsetX = 0;
  float OffsetY = 0;
  TravelLimits Limits;
  std::array<float, 24> Settings = CommonFields::ClearedSettings();
  core::WordValue X;  ///< position words of the running block, in mm
  core::WordValue Y;
  core::WordValue Z;

  /// At the load position of the machine, its travel as limits, all else as at the start of a pass.
  [[nodiscard]] static ModalState AtStart(const core::MachineData& machine);
};

/// Value reader of one pass: remembers the first fault of the block.
class WordReader {
 public:
  explicit WordReader(const Parameters& parameters) : parameters_(&parameters) {}

  /// The value after a letter, or any other key. Beyond LargestWord it is a fault and not found.
  [[nodiscard]] core::WordValue Value(const Block& block, char letter);
  [[nodiscard]] core::WordValue Value(std::string_view text, std::string_view key);
  [[nodiscard]] core::WordValue ValueAt(std::string_view text, std::size_t from);
  [[nodiscard]] core::WordValue Integer(std::string_view text, std::string_view key);
  /// 0 where the word is not found.
  [[nodiscard]] double ValueOrZero(const Block& block, char letter);
  /// The same in mm.
  [[nodiscard]] double LengthOrZero(const Block& block, char letter, bool imperial);

  void Raise(ReadFault fault);
  [[nodiscard]] ReadFault Fault() const { return fault_; }
  void ClearFault() { fault_ = ReadFault::None; }

 private:
  [[nodiscard]] core::WordValue Checked(core::WordValue value);

  const Parameters* parameters_;
  ReadFault fault_ = ReadFault::None;
};

/// Blocks with one of these do not move the head by their X, Y and Z.
inline constexpr WordSet NoPositionWords{Word::G56, Word::G92, Word::G04};

/// Reads X, Y and Z into the state; X and Y in mm.
void ReadPositionWords(const Block& block, WordReader& reader, ModalState& state);

/// Previous becomes current; the words move current under units, offsets, mirroring and, in a
/// subroutine (`inSubroutine`), the origin and turn of its call. False where there was no word.
[[nodiscard]] bool UpdatePosition(const Block& block, WordReader& reader, bool inSubroutine,
                                  SubLevel& level, ModalState& state);

/// G56 and G92: the work offset grows by the words, or is set so that the position reads them.
void AddWorkOffset(const Block& block, WordReader& reader, ModalState& state);
void SetWorkOffset(const Block& block, WordReader& reader, ModalState& state);

/// Takes each "P" number "=" expression of the block, left to right.
void AssignParameters(const Block& block, WordReader& reader, Parameters& parameters);

/// What an "IF" block does.
enum class Decision : std::uint8_t { GoOn, Jump, Leave };
[[nodiscard]] Decision Decide(const Block& block, WordReader& reader);

}  // namespace torvane::partprogram

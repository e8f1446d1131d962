// Reads a program line by line as the machine would run it: through calls, returns and jumps.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "partprogram/Block.h"

namespace torvane::partprogram {

/// Deepest call of a subroutine from a subroutine.
inline constexpr int MaxSubDepth = 64;

/// Blocks that a walk may read. A program of 32767 records that reads thirty blocks for each of
/// them stays below; one that comes this far is going round in a circle. A walk may be given a
/// lower limit, where circles are to be cut short.
inline constexpr int MaxWalkBlocks = 1'000'000;

/// Longest block, in characters without its comment.
inline constexpr std::size_t MaxBlockLength = 1000;

/// The "N" number at the head of a prepared block; -999 where there is none. A number that 16 bits
/// do not hold is given as it is, up to 2^31 - 1: no jump can name it.
[[nodiscard]] std::int32_t ScanBlockNumber(std::string_view block);

/// The lines of one file, and where its block numbers are. The text must outlive it.
class ProgramLines {
 public:
  ProgramLines() = default;
  explicit ProgramLines(std::string_view text);

  [[nodiscard]] std::size_t Count() const { return lines_.size(); }
  [[nodiscard]] std::string_view Line(std::size_t index) const { return lines_[index]; }
  [[nodiscard]] const std::vector<std::string_view>& All() const { return lines_; }

  /// Index of the first line with the block number; Count() where no line has it. The first call
  /// reads the numbers of all lines, so that a loop does not read the file again on each round.
  [[nodiscard]] std::size_t Find(std::int32_t blockNumber);

 private:
  std::vector<std::string_view> lines_;
  std::vector<std::pair<std::int32_t, std::size_t>> numbers_;
  bool numbered_ = false;
};

/// One entry of the subroutine stack; entry 0 is the main file.
struct SubLevel {
  std::int16_t Number = 0;
  std::int16_t RepeatCount = 1;
  float Rotation = 0;  ///< degrees
  float OriginX = 0;
  float OriginY = 0;
  float LocalX = 0;
  float LocalY = 0;
  std::int16_t LineCount = 0;
  ProgramLines* Lines = nullptr;
  std::size_t First = 0;  ///< line with which each round begins
  std::size_t Next = 0;   ///< line that is read next
};

enum class WalkStep : std::uint8_t {
  Block,         ///< a block is ready
  End,           ///< the main file is at its end
  TooManyLines,  ///< a line number that 16 bits do not hold
  Endless,       ///< as many blocks read as the walk may, rounds of subroutines counted among them
};

class Walker {
 public:
  /// `main` and the texts of `subs` must outlive the walker.
  Walker(std::string_view main, const std::map<std::int16_t, std::string>& subs,
         int maxBlocks = MaxWalkBlocks);

  /// Reads the next line into CurrentBlock. Returns from subroutines happen here: at the end of
  /// their text and at "M02".
  [[nodiscard]] WalkStep Next();

  [[nodiscard]] const Block& CurrentBlock() const { return block_; }
  /// The line as it is in the file, comment included.
  [[nodiscard]] std::string_view CurrentLine() const { return line_; }

  /// Goes on at the first line of the running file that has the block number. Without one the
  /// file is at its end.
  void Jump(std::int32_t target);

  /// Words that end a round of a subroutine: "M02" alone, unless they are set here.
  void SetReturnWords(WordSet words) { returns_ = words; }

  [[nodiscard]] bool HasSub(std::int16_t number) const { return subs_.contains(number); }
  /// Adds a subroutine, or takes another text for it. Each round begins at the first line with
  /// `firstBlock` as its block number, or at the first line of all. `text` must outlive the walker.
  void AddSub(std::int16_t number, std::string_view text);
  void AddSub(std::int16_t number, std::string_view text, std::int32_t firstBlock);
  /// Enters a subroutine that HasSub, with an entry cleared but for number and repeat count 1.
  /// The depth must be below MaxSubDepth.
  SubLevel& Call(std::int16_t number);

  /// Leaves the running subroutine. False in the main file: the program ends.
  [[nodiscard]] bool Leave();

  [[nodiscard]] int Depth() const { return depth_; }
  [[nodiscard]] SubLevel& Level() { return levels_[static_cast<std::size_t>(depth_)]; }
  [[nodiscard]] const SubLevel& Level() const { return levels_[static_cast<std::size_t>(depth_)]; }
  /// The block number of every record.
  [[nodiscard]] std::int16_t MainLine() const { return levels_[0].LineCount; }
  [[nodiscard]] ProgramLines& MainLines() { return main_; }

 private:
  struct Sub {
    ProgramLines Lines;
    std::size_t First = 0;
  };

  void Return();

  ProgramLines main_;
  std::map<std::int16_t, Sub> subs_;
  WordSet returns_{Word::M02};
  std::array<SubLevel, MaxSubDepth + 1> levels_{};
  int depth_ = 0;
  int maxBlocks_;
  int blocks_ = 0;
  bool arriving_ = false;  ///< the next line is the target of a jump: its "M02" does not return
  Block block_;
  std::string_view line_;
};

/// "<number>.sub" by number: each definition of the ".cnv", with its opening and closing lines,
/// comments included. Inside a definition nothing opens another one. A number defined twice keeps
/// the last one.
[[nodiscard]] std::map<std::int16_t, std::string> ExtractSubroutines(std::string_view converted);

}  // namespace torvane::partprogram

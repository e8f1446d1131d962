// A block made ready for the tests of its words: left of the comment, without blanks, upper-cased.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace torvane::partprogram {

/// The words that a pass tests a block for. A test means the text of the word anywhere in the block
/// and nothing more: "G010" holds G01.
enum class Word : std::uint8_t {
  G00,
  G01,
  G02,
  G03,
  G04,
  G28,
  G30,
  G31,
  G32,
  G37,
  G40,
  G41,
  G42,
  G53,
  G56,
  G68,
  G69,
  G70,
  G71,
  G90,
  G91,
  G92,
  G95,
  G98,
  M00,
  M01,
  M02,
  M03,
  M04,
  M05,
  M06,
  M10,
  M11,
  M12,
  M13,
  M30,
  M50,
  M55,
  M87,
  M99,
  If,
  Goto,
  Abort,
  Return,
  Count
};

/// The text that the test looks for.
[[nodiscard]] std::string_view TextOf(Word word);

/// A set of words.
class WordSet {
 public:
  constexpr WordSet() = default;
  template <typename... Words>
  constexpr explicit WordSet(Words... words) : bits_((Bit(words) | ... | 0)) {}
  constexpr void Add(Word word) { bits_ |= Bit(word); }
  [[nodiscard]] constexpr bool Has(Word word) const { return (bits_ & Bit(word)) != 0; }
  [[nodiscard]] constexpr bool HasAny(WordSet other) const { return (bits_ & other.bits_) != 0; }

 private:
  static constexpr std::uint64_t Bit(Word word) {
    return std::uint64_t{1} << static_cast<unsigned>(word);
  }
  std::uint64_t bits_ = 0;
};
static_assert(static_cast<int>(Word::Count) <= 64);

/// One scan finds every word; each test is then one bit. Reused from line to line, so that a line
/// costs no memory.
class Block {
 public:
  Block() = default;
  explicit Block(std::string_view line) { Prepare(line); }

  /// Takes the next line, comment and all.
  void Prepare(std::string_view line);

  [[nodiscard]] std::string_view Text() const { return text_; }
  [[nodiscard]] bool Has(Word word) const { return words_.Has(word); }
  [[nodiscard]] bool HasAny(WordSet words) const { return words_.HasAny(words); }
  /// A capital letter anywhere.
  [[nodiscard]] bool Has(char letter) const {
    return (letters_ & (1U << static_cast<unsigned>(letter - 'A'))) != 0;
  }
  /// 1 for a "\" or "/" anywhere, divisions included; 2 for two of the same in a row.
  [[nodiscard]] std::int16_t SkipLevel() const { return skipLevel_; }

 private:
  void Scan();

  std::string text_;
  WordSet words_;
  std::uint32_t letters_ = 0;
  std::int16_t skipLevel_ = 0;
};

/// Holds an "S" with a value and no "G98": opens the definition of a subroutine.
[[nodiscard]] bool OpensDefinition(const Block& block);

}  // namespace torvane::partprogram

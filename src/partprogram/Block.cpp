#include "partprogram/Block.h"

#include <array>

#include "core/General.h"
#include "partprogram/WordValues.h"

namespace torvane::partprogram {
namespace {

constexpr std::size_t WordCount = static_cast<std::size_t>(Word::Count);

constexpr std::array<std::string_view, WordCount> WordTexts = {
    "G00", "G01", "G02", "G03", "G04", "G28", "G30", "G31", "G32",  "G37",   "G40",
    "G41", "G42", "G53", "G56", "G68", "G69", "G70", "G71", "G90",  "G91",   "G92",
    "G95", "G98", "M00", "M01", "M02", "M03", "M04", "M05", "M06",  "M10",   "M11",
    "M12", "M13", "M30", "M50", "M55", "M87", "M99", "IF",  "GOTO", "ABORT", "RETURN"};

/// Words of a letter and two digits by these digits; Count where there is none.
using DigitTable = std::array<Word, 100>;

constexpr std::size_t TwoDigits(char tens, char ones) {
  return static_cast<std::size_t>(tens - '0') * 10 + static_cast<std::size_t>(ones - '0');
}

constexpr DigitTable WordsOf(char letter) {
  DigitTable table{};
  table.fill(Word::Count);
  for (std::size_t i = 0; i < WordCount; ++i) {
    const std::string_view text = WordTexts[i];
    if (text.size() != 3 || text[0] != letter) continue;
    table[TwoDigits(text[1], text[2])] = static_cast<Word>(i);
  }
  return table;
}

constexpr DigitTable GWords = WordsOf('G');
constexpr DigitTable MWords = WordsOf('M');

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr std::array<char, 256> UpperTable = [] {
  std::array<char, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    const bool lower = i >= 'a' && i <= 'z';
    table[i] = static_cast<char>(lower ? i - ('a' - 'A') : i);
  }
  return table;
}();

constexpr std::uint32_t LettersOf(std::string_view text) {
  std::uint32_t letters = 0;
  for (const char c : text) letters |= 1U << static_cast<unsigned>(c - 'A');
  return letters;
}

}  // namespace

std::string_view TextOf(Word word) {
  return word < Word::Count ? WordTexts[static_cast<std::size_t>(word)] : std::string_view{};
}

void Block::Prepare(std::string_view line) {
  const std::string_view part = core::BlockPart(line);
  text_.resize(part.size());
  std::size_t length = 0;
  for (const char c : part) {
    if (c != ' ') text_[length++] = UpperTable[static_cast<unsigned char>(c)];
  }
  text_.resize(length);
  Scan();
}

void Block::Scan() {
  words_ = {};
  letters_ = 0;
  skipLevel_ = 0;
  const std::string_view text = text_;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c >= 'A' && c <= 'Z') {
      letters_ |= 1U << static_cast<unsigned>(c - 'A');
      if ((c != 'G' && c != 'M') || i + 2 >= text.size()) continue;
      if (!IsDigit(text[i + 1]) || !IsDigit(text[i + 2])) continue;
      const std::size_t digits = TwoDigits(text[i + 1], text[i + 2]);
      const Word word = c == 'G' ? GWords[digits] : MWords[digits];
      if (word != Word::Count) words_.Add(word);
    } else if (c == '/' || c == '\\') {
      const bool doubled = i + 1 < text.size() && text[i + 1] == c;
      if (doubled) skipLevel_ = 2;
      if (skipLevel_ == 0) skipLevel_ = 1;
    }
  }
  for (const Word word : {Word::If, Word::Goto, Word::Abort, Word::Return}) {
    const std::uint32_t letters = LettersOf(TextOf(word));
    if ((letters_ & letters) == letters && text.find(TextOf(word)) != std::string_view::npos) {
      words_.Add(word);
    }
  }
}

bool OpensDefinition(const Block& block) {
  return block.Has('S') && !block.Has(Word::G98) && GetWordInteger(block.Text(), "S").Found;
}

}  // namespace torvane::partprogram

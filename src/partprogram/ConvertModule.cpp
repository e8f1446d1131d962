// The cleaning step: from the squeezed program to ".bdy" and ".cnv".
#include "partprogram/ConvertModule.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/General.h"
#include "partprogram/Block.h"
#include "partprogram/WordValues.h"

namespace torvane::partprogram {
namespace {

constexpr std::string_view LineEnd = "\r\n";

/// The blocks whose centre words and arc words are rewritten hold none of these.
constexpr WordSet Foreign{Word::G00, Word::G01, Word::G04, Word::G92,
                          Word::G56, Word::G53, Word::M50};

/// Where the last character of the first `word` from `from` on is, blanks between its
/// characters not counted: a reader of the block takes "M 01" for the word too. npos without it.
std::size_t EndOfWord(std::string_view text, std::string_view word, std::size_t from = 0) {
  for (auto at = text.find(word.front(), from); at != std::string_view::npos;
       at = text.find(word.front(), at + 1)) {
    std::size_t last = at;
    for (std::size_t i = 1; i < word.size() && last != std::string_view::npos; ++i) {
      last = text.find_first_not_of(' ', last + 1);
      if (last != std::string_view::npos && text[last] != word[i]) last = std::string_view::npos;
    }
    if (last != std::string_view::npos) return last;
  }
  return std::string_view::npos;
}

/// Gives every `word` another last character.
void Replace(std::string& text, std::string_view word, char last) {
  for (auto at = EndOfWord(text, word); at != std::string::npos; at = EndOfWord(text, word, at)) {
    text[at] = last;
  }
}

/// The letter with its value negated, the full number, and one blank; the old number goes.
void NegateWord(std::string& block, char letter, const Parameters& fixed) {
  const std::string_view key(&letter, 1);
  const core::WordValue value = GetStaticValue(block, key, fixed);
  if (!value.Found) return;
  const auto from = block.find(letter) + 1;
  auto to = block.find_first_not_of("0123456789 +-.", from);
  if (to == std::string::npos) to = block.size();
  block.replace(from, to - from, core::NumberText(-value.Value, -1) + " ");
}

void RewriteArc(std::string& block, const core::MachineData& machine) {
  const Block words(block);
  const bool clockwise = words.Has(Word::G02);
  if (clockwise == words.Has(Word::G03) || words.HasAny(Foreign)) return;
  if (!words.Has('X') && !words.Has('Y') && !words.Has('H') && !words.Has('V')) return;
  if (machine.SwapArcWords) Replace(block, clockwise ? "G02" : "G03", clockwise ? '3' : '2');
  if (machine.NegateArcCentre) {
    const Parameters fixed;  // nothing is set before a walk of the program
    NegateWord(block, 'I', fixed);
    NegateWord(block, 'J', fixed);
  }
}

/// Replaces each double blank by a single one until there are none.
void CollapseBlanks(std::string& block) {
  const auto doubled = [](char left, char right) { return left == ' ' && right == ' '; };
  block.erase(std::unique(block.begin(), block.end(), doubled), block.end());
}

/// `block` gets the line's block as it goes into the ".cnv".
void ConvertBlock(std::string_view part, const core::MachineData& machine, std::string& block) {
  block.resize(part.size());
  char before = '\0';
  bool blanks = false;
  bool stop = false;
  for (std::size_t i = 0; i < part.size(); ++i) {
    const char c = part[i];
    block[i] = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    blanks = blanks || (c == ' ' && before == ' ');
    stop = stop || block[i] == 'M';
    before = c;
  }
  if (stop) {
    if (const auto at = EndOfWord(block, "M01"); at != std::string::npos) block[at] = '0';
  }
  if (machine.SwapArcWords || machine.NegateArcCentre) {
    RewriteArc(block, machine);
    blanks = true;
  }
  if (blanks) CollapseBlanks(block);
}

/// Tells line by line whether it belongs to the body: outside the definitions of subroutines.
class BodyFilter {
 public:
  bool Keeps(std::string_view line) {
    if (inDefinition_) {
      block_.Prepare(line);
      if (block_.Has(Word::M02)) inDefinition_ = false;
      return false;
    }
    if (line.find_first_of("Ss") == std::string_view::npos) return true;
    block_.Prepare(line);
    inDefinition_ = OpensDefinition(block_);
    return !inDefinition_;
  }

 private:
  Block block_;
  bool inDefinition_ = false;
};

}  // namespace

std::string SqueezeProgram(std::string_view program) {
  std::string squeezed;
  squeezed.reserve(program.size() + 2);
  for (const std::string_view whole : core::SplitLines(program)) {
    const std::string_view line = core::Trim(whole);
    if (!line.empty()) squeezed.append(line).append("\r\n");
  }
  return squeezed;
}

IntermediateText MakeIntermediateFiles(std::string_view program, const core::MachineData& machine) {
  IntermediateText text;
  text.Body.reserve(program.size() + 16);
  text.Converted.reserve(program.size() + program.size() / 16 + 64);
  BodyFilter body;
  std::string block;
  for (const std::string_view whole : core::SplitLines(program)) {
    const std::string_view line = core::Trim(whole);
    if (body.Keeps(line)) text.Body.append(line).append(LineEnd);

    ConvertBlock(core::BlockPart(line), machine, block);
    text.Converted += block;
    if (!block.empty()) text.Converted += ' ';
    if (const auto comment = core::CommentPart(line); !comment.empty()) {
      text.Converted.append("! ").append(comment);
    }
    text.Converted += LineEnd;
  }
  return text;
}

}  // namespace torvane::partprogram

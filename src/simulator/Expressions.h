// Reads the few expressions that the front end sends: numbers, VR(n), M values, TABLE(n), axis
// positions, and + - * / OR AND with brackets.
#pragma once

#include <optional>
#include <string_view>

#include "simulator/ControllerMemory.h"

namespace torvane::simulator {

/// A reader that walks over one command line. Blanks may be anywhere between words; letters count
/// alike in both cases. OR binds weakest, then AND, then + and -, then * and /, then a sign.
class ExpressionReader {
 public:
  ExpressionReader(std::string_view text, const ControllerMemory& memory)
      : text_(text), memory_(memory) {}

  /// The value, or nothing for anything that is no expression of this controller, a division by
  /// zero, a result that is no finite number, bits of a number that is none of 32 bits, and
  /// brackets nested deeper than 32.
  [[nodiscard]] std::optional<double> Expression();

  /// An expression that gives a whole number, as an index must be.
  [[nodiscard]] std::optional<int> Index();

  /// An index between brackets: "(" expression ")".
  [[nodiscard]] std::optional<int> BracketIndex();

  /// Takes `symbol` if it comes next.
  bool Take(char symbol);
  /// Takes the letters that come next, upper-cased by comparison only; empty if none do.
  [[nodiscard]] std::string_view Word();
  /// Takes the digits that come next, with no blank before them; empty if none do.
  [[nodiscard]] std::string_view Digits();
  [[nodiscard]] bool AtEnd();
  /// A blank comes next.
  [[nodiscard]] bool AtBlank() const { return at_ < text_.size() && text_[at_] == ' '; }

 private:
  using Reader = std::optional<double> (ExpressionReader::*)();

  [[nodiscard]] std::optional<double> Or();
  [[nodiscard]] std::optional<double> And();
  [[nodiscard]] std::optional<double> Sum();
  [[nodiscard]] std::optional<double> Product();
  [[nodiscard]] std::optional<double> Signed();
  [[nodiscard]] std::optional<double> Operand();
  [[nodiscard]] std::optional<double> Number();
  [[nodiscard]] std::optional<double> Named(std::string_view word);
  [[nodiscard]] std::optional<double> AxisPosition(AxisQuantity quantity);
  [[nodiscard]] std::optional<double> Bits(Reader part, std::string_view word, bool both);
  bool TakeWord(std::string_view word);
  void SkipBlanks();
  [[nodiscard]] char Next();

  std::string_view text_;
  const ControllerMemory& memory_;
  std::size_t at_ = 0;
  int depth_ = 0;
};

/// The value of a whole text, nothing left over after it.
[[nodiscard]] std::optional<double> Evaluate(std::string_view text, const ControllerMemory& memory);

}  // namespace torvane::simulator

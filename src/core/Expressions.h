// The arithmetic of the language, and the readers of plain words, which know no parameters.
#pragma once

#include <string_view>

#include "core/Numbers.h"

namespace torvane::core {

/// A value reader's result. `Found` is false when the key is absent, when nothing could be read or
/// when the value is -999; `Value` is then -999.
struct WordValue {
  double Value = NoValue;
  bool Found = false;
};

/// The text after the first `key`: digits . + - * / ( ) are taken, a blank after the first of
/// them or any other character ends it; read as a plain number, nothing is evaluated.
[[nodiscard]] WordValue GetPlainValue(std::string_view block, std::string_view key);

/// Digits only after the first `key`, by the rule of ReadDigits; a value of -999 counts as found
/// here.
[[nodiscard]] WordValue GetPlainInteger(std::string_view block, std::string_view key);

/// The whole number that `text` begins with. Blanks before the first digit and every "+" are
/// skipped. The first "-" is kept where it is: before the digits it is the sign, after digits
/// it ends the number ("12-3" is 12); a later one is skipped ("-1-2" is -12). Any other character
/// ends it. `Found` is false where neither a digit nor a "-" is; a lone "-" is 0.
[[nodiscard]] WordValue ReadDigits(std::string_view text);

/// What Calculate gives: the value, and whether brackets were unbalanced or a division by zero met.
struct Calculation {
  double Value = 0;              ///< with an error, that of the last span that came to its end
  bool Empty = true;             ///< nothing was worked out
  bool ArithmeticError = false;  ///< unbalanced brackets or a division by zero
};

/// Strictly left to right, no precedence: "2+3*4" is 20. Brackets are worked out from the inside
/// and go back into the expression as text, so that they keep only what NumberText shows of them.
/// Characters that are no digit, point, operator or bracket are dropped first. A "-" after
/// anything but a digit is a sign ("--5" is no number and reads as 0). Every other operator waits,
/// wherever it is, and with two operands the first that waits is applied: "+5-3" is 8 and
/// "5*+3-1" is 16.
[[nodiscard]] Calculation Calculate(std::string_view expression);

}  // namespace torvane::core

#include "core/Expressions.h"

#include <algorithm>
#include <string>

namespace torvane::core {

namespace {

constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }

constexpr bool IsNumberPart(char character) { return IsDigit(character) || character == '.'; }

constexpr bool IsExpressionPart(char character) {
  return IsNumberPart(character) ||
         std::string_view("+-*/()").find(character) != std::string_view::npos;
}

/// The block after the first `key`, or nothing and false.
bool FindBehind(std::string_view block, std::string_view key, std::string_view& rest) {
  const auto at = block.find(key);
  if (at == std::string_view::npos) return false;
  rest = block.substr(at + key.size());
  return true;
}

/// A span without brackets, from the left. A number that ends is the next operand; with two of them
/// the first operator that waits is applied and the others move up.
class SpanWalk {
 public:
  Calculation Run(std::string_view span) {
    std::size_t numberStart = 0;
    bool lastWasDigit = false;
    for (std::size_t at = 0; at < span.size(); ++at) {
      const char character = span[at];
      if (IsNumberPart(character)) {
        lastWasDigit = true;
      } else if (character != '-' || lastWasDigit) {
        EndNumber(span.substr(numberStart, at - numberStart));
        if (result_.ArithmeticError) return result_;
        waiting_ += character;
        numberStart = at + 1;
        lastWasDigit = false;
      }
    }
    EndNumber(span.substr(numberStart));
    return result_;
  }

 private:
  void EndNumber(std::string_view number) {
    if (number.empty()) return;
    const double operand = LeadingNumber(number);
    if (result_.Empty) {
      result_.Value = operand;
      result_.Empty = false;
    } else {
      Apply(waiting_[applied_++], operand);
    }
  }

  void Apply(char operation, double operand) {
    switch (operation) {
      case '+':
        result_.Value += operand;
        break;
      case '-':
        result_.Value -= operand;
        break;
      case '*':
        result_.Value *= operand;
        break;
      default:
        result_.ArithmeticError = operand == 0;
        if (operand != 0) result_.Value /= operand;
    }
  }

  Calculation result_;
  std::string waiting_;      ///< operators in the order in which they are
  std::size_t applied_ = 0;  ///< of them; a second operand always has one in front of it
};

/// An expression without brackets: an error leaves nothing.
Calculation CalculatePlain(std::string_view expression) {
  const Calculation result = SpanWalk().Run(expression);
  return result.ArithmeticError ? Calculation{.Value = 0, .Empty = true, .ArithmeticError = true}
                                : result;
}

/// Works the brackets out from the last "(" on, each replaced by its text. With an error the value
/// is that of the last span that came to its end, 0 and empty before the first.
Calculation CalculateBrackets(std::string text) {
  Calculation inner;
  const auto failed = [&] {
    inner.ArithmeticError = true;
    return inner;
  };
  std::string number;
  for (auto open = text.rfind('('); open != std::string::npos; open = text.rfind('(', open)) {
    const auto close = text.find(')', open);
    if (close == std::string::npos) return failed();
    const auto span = SpanWalk().Run(std::string_view(text).substr(open + 1, close - open - 1));
    if (span.ArithmeticError) return failed();
    inner = span;
    number.clear();
    AppendNumber(number, inner.Value, -1);
    text.replace(open, close - open + 1, number);
  }
  const auto whole = SpanWalk().Run(text);
  return whole.ArithmeticError ? failed() : whole;
}

}  // namespace

Calculation Calculate(std::string_view expression) {
  const bool clean = std::all_of(expression.begin(), expression.end(), IsExpressionPart);
  const auto opened = std::count(expression.begin(), expression.end(), '(');
  const auto closed = std::count(expression.begin(), expression.end(), ')');
  if (opened != closed) return {.Value = 0, .Empty = true, .ArithmeticError = true};
  if (clean && opened == 0) return CalculatePlain(expression);
  std::string text(expression);
  std::erase_if(text, [](char character) { return !IsExpressionPart(character); });
  return CalculateBrackets(std::move(text));
}

WordValue GetPlainValue(std::string_view block, std::string_view key) {
  std::string_view rest;
  if (!FindBehind(block, key, rest)) return {};
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  const auto end = std::find_if_not(rest.begin(), rest.end(), IsExpressionPart);
  rest = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  if (rest.empty()) return {};
  const double value = LeadingNumber(rest);
  return {value, value != NoValue};
}

WordValue ReadDigits(std::string_view text) {
  double value = 0;
  bool digits = false;
  bool negative = false;
  bool signTaken = false;
  bool ended = false;  // a sign after digits ends the number, though not the walk
  for (const char character : text) {
    if (IsDigit(character)) {
      digits = true;
      if (!ended) value = value * 10.0 + (character - '0');
    } else if (character == '-') {
      if (!signTaken) (digits ? ended : negative) = true;
      signTaken = true;
    } else if (character == ' ' ? digits : character != '+') {
      break;
    }
  }
  if (!digits && !signTaken) return {};
  return {negative ? 0.0 - value : value, true};
}

WordValue GetPlainInteger(std::string_view block, std::string_view key) {
  std::string_view rest;
  return FindBehind(block, key, rest) ? ReadDigits(rest) : WordValue{};
}

}  // namespace torvane::core

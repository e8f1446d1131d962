#include "partprogram/WordValues.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace torvane::partprogram {
namespace {

using core::NoValue;
using core::WordValue;

constexpr std::string_view RoundWord = "ROUND";
constexpr std::string_view TruncWord = "TRUNC";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

void Raise(ReadFault* fault, ReadFault kind) {
  if (fault != nullptr && *fault == ReadFault::None) *fault = kind;
}

WordValue Reading(double value) {
  if (value == NoValue) return {};
  return {value + 0.0, true};  // a zero has no sign
}

/// Where the text after the key begins; npos without the key.
std::size_t BehindKey(std::string_view block, std::string_view key) {
  std::size_t at = block.find(key);
  if (key == "R") {
    while (at != std::string_view::npos && block.substr(at, RoundWord.size()) == RoundWord) {
      at = block.find(key, at + 1);
    }
  }
  return at == std::string_view::npos ? at : at + key.size();
}

/// A number by itself, as nearly every word has it: the same value that the long way gives. Nothing
/// where the text is anything else.
std::optional<double> PlainNumber(std::string_view text, std::size_t at) {
  static constexpr std::array<double, 16> Powers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                    1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const bool negative = at < text.size() && text[at] == '-';
  if (negative) ++at;
  std::uint64_t digits = 0;
  int count = 0;
  int places = 0;
  bool point = false;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (IsDigit(c)) {
      digits = digits * 10 + static_cast<std::uint64_t>(c - '0');
      if (++count > 15) return std::nullopt;  // a double holds 15 digits and their power exactly
      if (point) ++places;
    } else if (c == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  if (count == 0) return std::nullopt;
  if (at < text.size()) {
    const char c = text[at];
    if (c == 'R' || c == 'T') {
      const auto word = text.substr(at, 5);
      if (word == RoundWord || word == TruncWord) return std::nullopt;
    } else if (c == 'P' || c == ' ' || (c >= '(' && c <= '/' && c != ',')) {
      return std::nullopt;
    }
  }
  const double value = static_cast<double>(digits) / Powers[static_cast<std::size_t>(places)];
  return negative ? -value : value;
}

/// "P101=" to "P110=": assignments that only a restart carries out. In a walk they end the value in
/// front of them and mean nothing else.
bool SetsRestartParameter(std::string_view text) {
  if (text.size() < 5 || text[1] != '1' || text[4] != '=') return false;
  return (text[2] == '0' && text[3] >= '1' && text[3] <= '9') || (text[2] == '1' && text[3] == '0');
}

/// Walks the text after a key and builds the expression. `Lookup` gives the value of a parameter,
/// or nothing where the scan ends.
template <typename Lookup>
class Scanner {
 public:
  Scanner(const Lookup& lookup, ReadFault* fault, int depth)
      : lookup_(lookup), fault_(fault), depth_(depth) {}

  WordValue Read(std::string_view text, std::size_t at) {
    if (const auto plain = PlainNumber(text, at)) return Reading(*plain);
    expression_.reserve(UsualLength);
    bool going = true;
    while (going && at < text.size()) going = Take(text, at);
    if (expression_.empty()) return {};
    return Reading(core::Calculate(expression_).Value);
  }

 private:
  /// Characters of an expression that need no second piece of memory.
  static constexpr std::size_t UsualLength = 48;

  /// The number in the three characters from a "P" on. One or two digits after it are all that
  /// nearly every program writes; anything else is read the long way.
  static WordValue ParameterNumber(std::string_view text) {
    if (text.size() < 2 || !IsDigit(text[1])) return GetWordInteger(text, "P");
    const double first = text[1] - '0';
    if (text.size() < 3 || !IsDigit(text[2])) return {first, true};
    return {first * 10 + (text[2] - '0'), true};
  }

  /// One step of the walk; false where it ends.
  bool Take(std::string_view text, std::size_t& at) {
    switch (text[at]) {
      case ' ':
        ++at;
        return true;
      case '.':
      case '*':
      case '/':
      case '+':
      case '-':
      case '(':
      case ')':
        expression_ += text[at++];
        return true;
      case 'P':
        return TakeParameter(text, at);
      case 'R':
        return text.substr(at, RoundWord.size()) == RoundWord && TakeFunction(text, at, true);
      case 'T':
        return text.substr(at, TruncWord.size()) == TruncWord && TakeFunction(text, at, false);
      default:
        if (!IsDigit(text[at])) return false;
        expression_ += text[at++];
        return true;
    }
  }

  bool TakeParameter(std::string_view text, std::size_t& at) {
    for (const std::size_t ahead : {std::size_t{2}, std::size_t{3}}) {
      if (at + ahead < text.size() && text[at + ahead] == '=') return false;
    }
    if (SetsRestartParameter(text.substr(at))) return false;
    const WordValue number = ParameterNumber(text.substr(at, 3));
    const std::optional<double> value = lookup_(text.substr(at), number);
    if (!value) return false;
    core::AppendNumber(expression_, *value, 3);
    at += number.Value < 10 ? 2 : 3;
    return true;
  }

  bool TakeFunction(std::string_view text, std::size_t& at, bool round) {
    if (depth_ >= MaxFunctionDepth) {
      Raise(fault_, ReadFault::NestedTooDeep);
      return false;
    }
    const std::size_t inside = std::min(at + RoundWord.size() + 1, text.size());
    std::size_t end = inside;
    for (int open = 1; end < text.size() && open > 0; ++end) {
      if (text[end] == '(') ++open;
      if (text[end] == ')') --open;
    }
    std::string argument = "(";
    argument += text.substr(inside, end - inside);
    const double value = Scanner(lookup_, fault_, depth_ + 1).Read(argument, 0).Value;
    if (round) {
      const double whole = core::RoundPlaces(value, 0);
      if (!(whole >= std::numeric_limits<std::int16_t>::min() &&
            whole <= std::numeric_limits<std::int16_t>::max())) {
        Raise(fault_, ReadFault::NumberRange);
      }
      expression_ += core::IntegerText(core::TruncateToInt16(whole));
    } else {
      core::AppendNumber(expression_, std::trunc(value), 3);
    }
    at = end;
    return true;
  }

  const Lookup& lookup_;
  ReadFault* fault_;
  int depth_;
  std::string expression_;
};

/// Three digits after a "P" that name no parameter.
bool NamesMoreThanHundred(std::string_view text) {
  if (text.size() < 4 || !IsDigit(text[1]) || !IsDigit(text[2]) || !IsDigit(text[3])) return false;
  return (text[1] - '0') * 100 + (text[2] - '0') * 10 + (text[3] - '0') > 100;
}

}  // namespace

WordValue ReadExpression(std::string_view block, std::size_t from, const Parameters& parameters,
                         ReadFault* fault) {
  const auto lookup = [&](std::string_view text, const WordValue& number) -> std::optional<double> {
    const bool known = number.Found && number.Value >= 0 &&
                       number.Value < static_cast<double>(parameters.Values.size());
    if (!known || (!parameters.TwoDigitNumbers && NamesMoreThanHundred(text))) {
      Raise(fault, ReadFault::ParameterNumber);
      return std::nullopt;
    }
    return parameters.Values[static_cast<std::size_t>(number.Value)];
  };
  return Scanner(lookup, fault, 0).Read(block, from);
}

WordValue GetWordValue(std::string_view block, std::string_view key, const Parameters& parameters,
                       ReadFault* fault) {
  const std::size_t from = BehindKey(block, key);
  if (from == std::string_view::npos) return {};
  return ReadExpression(block, from, parameters, fault);
}

WordValue GetStaticValue(std::string_view block, std::string_view key, const Parameters& fixed) {
  const auto lookup = [&](std::string_view, const WordValue& number) -> std::optional<double> {
    const bool readable =
        number.Found && (number.Value == 0 || (number.Value >= 12 && number.Value <= 99));
    if (!readable) return std::nullopt;
    return fixed.Values[static_cast<std::size_t>(number.Value)];
  };
  const std::size_t from = BehindKey(block, key);
  if (from == std::string_view::npos) return {0, false};
  const WordValue value = Scanner(lookup, nullptr, 0).Read(block, from);
  return value.Found ? value : WordValue{0, false};
}

WordValue GetWordInteger(std::string_view block, std::string_view key, ReadFault* fault) {
  std::size_t at = BehindKey(block, key);
  if (at == std::string_view::npos) return {};
  bool digits = false;
  bool minus = false;
  bool negative = false;
  bool closed = false;  // a minus sign among the digits ends the number, not the walk
  double value = 0;
  for (; at < block.size(); ++at) {
    const char c = block[at];
    if (IsDigit(c)) {
      digits = true;
      if (!closed) value = value * 10 + (c - '0');
    } else if (c == '-') {
      if (!minus) (digits ? closed : negative) = true;
      minus = true;
    } else if (c == ' ') {
      if (digits) break;
    } else if (c != '+') {
      break;
    }
  }
  if (!digits && !minus) return {};
  if (negative) value = -value;
  const std::int16_t held = core::TruncateToInt16(value);
  if (static_cast<double>(held) != value) Raise(fault, ReadFault::NumberRange);
  return Reading(held);
}

}  // namespace torvane::partprogram

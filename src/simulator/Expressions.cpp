#include "simulator/Expressions.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "core/General.h"

namespace torvane::simulator {

namespace {

constexpr int DeepestNesting = 32;

struct AxisWord {
  std::string_view Word;
  AxisQuantity Quantity;
};

constexpr AxisWord AxisWords[] = {
    {"MPOS", AxisQuantity::Measured},
    {"DPOS", AxisQuantity::Demand},
    {"ENDMOVE", AxisQuantity::EndOfMove},
    {"FE", AxisQuantity::FollowingError},
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

std::optional<double> Finite(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

/// The 32 bits of a whole number; a status word with bit 31 set may be given as a positive number.
std::optional<std::uint32_t> BitsOf(double value) {
  const double whole = std::trunc(value);
  if (whole < std::numeric_limits<std::int32_t>::min() ||
      whole > std::numeric_limits<std::uint32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(whole));
}

}  // namespace

void ExpressionReader::SkipBlanks() {
  while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
}

char ExpressionReader::Next() {
  SkipBlanks();
  return at_ < text_.size() ? text_[at_] : '\0';
}

bool ExpressionReader::AtEnd() {
  SkipBlanks();
  return at_ >= text_.size();
}

bool ExpressionReader::Take(char symbol) {
  SkipBlanks();
  if (at_ >= text_.size() || text_[at_] != symbol) return false;
  ++at_;
  return true;
}

std::string_view ExpressionReader::Word() {
  SkipBlanks();
  const std::size_t from = at_;
  while (at_ < text_.size() && IsLetter(text_[at_])) ++at_;
  return text_.substr(from, at_ - from);
}

std::string_view ExpressionReader::Digits() {
  const std::size_t from = at_;
  while (at_ < text_.size() && IsDigit(text_[at_])) ++at_;
  return text_.substr(from, at_ - from);
}

bool ExpressionReader::TakeWord(std::string_view word) {
  SkipBlanks();
  const std::size_t from = at_;
  if (core::EqualNoCase(Word(), word)) return true;
  at_ = from;
  return false;
}

std::optional<double> ExpressionReader::Expression() {
  if (depth_ >= DeepestNesting) return std::nullopt;
  ++depth_;
  const auto value = Or();
  --depth_;
  return value;
}

std::optional<int> ExpressionReader::Index() {
  const auto value = Expression();
  if (!value || *value != std::trunc(*value) || std::abs(*value) > TableCells) return std::nullopt;
  return static_cast<int>(*value);
}

std::optional<int> ExpressionReader::BracketIndex() {
  if (!Take('(')) return std::nullopt;
  const auto index = Index();
  if (!index || !Take(')')) return std::nullopt;
  return index;
}

std::optional<double> ExpressionReader::Bits(Reader part, std::string_view word, bool both) {
  auto left = (this->*part)();
  while (left && TakeWord(word)) {
    const auto right = (this->*part)();
    if (!right) return std::nullopt;
    const auto a = BitsOf(*left);
    const auto b = BitsOf(*right);
    if (!a || !b) return std::nullopt;
    left = static_cast<double>(static_cast<std::int32_t>(both ? (*a & *b) : (*a | *b)));
  }
  return left;
}

std::optional<double> ExpressionReader::Or() { return Bits(&ExpressionReader::And, "OR", false); }
std::optional<double> ExpressionReader::And() { return Bits(&ExpressionReader::Sum, "AND", true); }

std::optional<double> ExpressionReader::Sum() {
  auto left = Product();
  while (left && (Next() == '+' || Next() == '-')) {
    const char sign = Next();
    ++at_;
    const auto right = Product();
    if (!right) return std::nullopt;
    left = Finite(sign == '+' ? *left + *right : *left - *right);
  }
  return left;
}

std::optional<double> ExpressionReader::Product() {
  auto left = Signed();
  while (left && (Next() == '*' || Next() == '/')) {
    const char sign = Next();
    ++at_;
    const auto right = Signed();
    if (!right || (sign == '/' && *right == 0)) return std::nullopt;
    left = Finite(sign == '*' ? *left * *right : *left / *right);
  }
  return left;
}

std::optional<double> ExpressionReader::Signed() {
  bool negative = false;
  while (Next() == '+' || Next() == '-') {
    if (Next() == '-') negative = !negative;
    ++at_;
  }
  const auto value = Operand();
  if (!value) return std::nullopt;
  return negative ? 0.0 - *value : *value;
}

std::optional<double> ExpressionReader::Operand() {
  const char next = Next();
  if (IsDigit(next) || next == '.') return Number();
  if (Take('(')) {
    const auto value = Expression();
    if (!value || !Take(')')) return std::nullopt;
    return value;
  }
  return Named(Word());
}

std::optional<double> ExpressionReader::Number() {
  double value = 0;
  const char* first = text_.data() + at_;
  const auto [end, fault] =
      std::from_chars(first, text_.data() + text_.size(), value, std::chars_format::fixed);
  if (fault != std::errc{}) return std::nullopt;
  at_ += static_cast<std::size_t>(end - first);
  return Finite(value);
}

std::optional<double> ExpressionReader::Named(std::string_view word) {
  if (core::EqualNoCase(word, "VR")) {
    const auto index = BracketIndex();
    if (!index || !ControllerMemory::IsVariable(*index)) return std::nullopt;
    return memory_.Variable(*index);
  }
  if (core::EqualNoCase(word, "TABLE")) {
    const auto index = BracketIndex();
    if (!index || *index < 0 || *index >= TableCells) return std::nullopt;
    return memory_.TableValue(*index);
  }
  if (core::EqualNoCase(word, "M")) {
    const std::string_view digits = Digits();
    if (digits.empty() || digits.size() > 3) return std::nullopt;
    return memory_.NamedValue(static_cast<int>(core::LeadingNumber(digits)));
  }
  for (const auto& entry : AxisWords) {
    if (core::EqualNoCase(word, entry.Word)) return AxisPosition(entry.Quantity);
  }
  return std::nullopt;
}

std::optional<double> ExpressionReader::AxisPosition(AxisQuantity quantity) {
  if (!TakeWord("AXIS")) return std::nullopt;
  const auto axis = BracketIndex();
  if (!axis || *axis < 0 || *axis >= AxisCount) return std::nullopt;
  return memory_.Axis(quantity, *axis);
}

std::optional<double> Evaluate(std::string_view text, const ControllerMemory& memory) {
  ExpressionReader reader(text, memory);
  const auto value = reader.Expression();
  return value && reader.AtEnd() ? value : std::nullopt;
}

}  // namespace torvane::simulator

#include "core/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace torvane::core {

namespace {

constexpr std::array<double, 23> PowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr double TwoTo52 = 4503599627370496.0;
constexpr double TwoTo53 = 9007199254740992.0;

/// A smaller number shows as zero.
constexpr double SmallestShown = 0.0001;

constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// Half to even; `magnitude` is not negative and below 2^53.
double WholeHalfEven(double magnitude) {
  if (magnitude >= TwoTo52) return magnitude;
  return (magnitude + TwoTo52) - TwoTo52;
}

/// The whole number nearest to the exact product of `magnitude` and 10^places, half to even;
/// `magnitude` times 10^places is below 2^53. The product rounded to a double decides, but where
/// it is exactly at a half: there what the rounding of the product lost tells the side.
double ScaledWhole(double magnitude, int places) {
  const double scale = PowersOfTen[static_cast<std::size_t>(places)];
  const double product = magnitude * scale;
  const double whole = WholeHalfEven(product);
  const double rest = product - whole;
  if (rest != 0.5 && rest != -0.5) return whole;
  const double lost = std::fma(magnitude, scale, -product);
  if (lost == 0) return whole;
  if (rest > 0) return lost > 0 ? whole + 1 : whole;
  return lost < 0 ? whole - 1 : whole;
}

/// Longest text: a sign, 309 digits, a point, and the decimals of a number near 0.0001.
using NumberBuffer = std::array<char, 400>;

char* PutWhole(char* out, std::uint64_t whole) { return std::to_chars(out, out + 24, whole).ptr; }

/// `scaled` over 10^places, with all its decimals.
char* PutDecimals(char* out, std::uint64_t scaled, int places) {
  std::uint64_t unit = 1;
  for (int i = 0; i < places; ++i) unit *= 10;
  out = PutWhole(out, scaled / unit);
  *out++ = '.';
  std::uint64_t decimals = scaled % unit;
  for (int i = places - 1; i >= 0; --i) {
    out[i] = static_cast<char>('0' + decimals % 10);
    decimals /= 10;
  }
  return out + places;
}

char* DropZeros(char* end) {
  while (end[-1] == '0') --end;
  return end[-1] == '.' ? end - 1 : end;
}

/// Shortest plain decimals of a finite magnitude. Whole numbers and numbers of up to 4 decimals,
/// which is nearly all that is ever shown, are written without the general search: within 15
/// digits no two decimals read back as the same double, so the one that does is the shortest.
char* PutShortest(char* out, char* end, double magnitude) {
  if (magnitude < 1e9) {
    // A wrong guess at a half is found out by the comparison.
    const auto scaled =
        static_cast<std::uint64_t>(magnitude * 1e4 + 0.5);  // NOLINT(bugprone-incorrect-roundings)
    if (static_cast<double>(scaled) / 1e4 == magnitude) {
      return DropZeros(PutDecimals(out, scaled, 4));
    }
  }
  return std::to_chars(out, end, magnitude, std::chars_format::fixed).ptr;
}

/// True when `places` decimals give back the single; `scaled` is then the number times 10^places.
bool ReadsBack(double magnitude, double scale, float single, std::uint64_t& scaled) {
  scaled =
      static_cast<std::uint64_t>(magnitude * scale + 0.5);  // NOLINT(bugprone-incorrect-roundings)
  return static_cast<float>(static_cast<double>(scaled) / scale) == single;
}

/// The same for a single. Below 1024 singles lie closer than 0.0001, below 8192 closer than 0.001:
/// at most one decimal of 4 or 3 places reads back as a given single, and it is the shortest.
char* PutShortest(char* out, char* end, float single) {
  const double magnitude = single;
  std::uint64_t scaled = 0;
  if (magnitude < 1024.0) {
    if (ReadsBack(magnitude, 1e4, single, scaled)) return DropZeros(PutDecimals(out, scaled, 4));
  } else if (magnitude < 8192.0) {
    if (ReadsBack(magnitude, 1e3, single, scaled)) return DropZeros(PutDecimals(out, scaled, 3));
    // Of several decimals of 4 places the nearest one counts, where there is one.
    const bool readsBack = ReadsBack(magnitude, 1e4, single, scaled);
    const bool tie = static_cast<double>(scaled) - magnitude * 1e4 == 0.5;
    if (readsBack && !tie) return PutDecimals(out, scaled, 4);
  } else if (magnitude < 16777216.0 && std::floor(magnitude) == magnitude) {
    return PutWhole(out, static_cast<std::uint64_t>(magnitude));
  }
  return std::to_chars(out, end, single, std::chars_format::fixed).ptr;
}

/// Shortest text `[begin, end)` lengthened with zeros or cut to `places` decimals.
char* SetDecimals(char* begin, char* end, int places) {
  char* point = std::find(begin, end, '.');
  if (places == 0) return point;
  if (point == end) *end++ = '.';
  while (end - point <= places) *end++ = '0';
  return point + 1 + places;
}

template <class Float>
void AppendMagnitude(std::string& out, Float value, int places) {
  NumberBuffer buffer;
  char* const begin = buffer.data() + 1;  // the place before it is the sign's
  char* const limit = buffer.data() + buffer.size() - 8;
  char* end = begin;
  bool zero = false;
  const double magnitude = std::fabs(static_cast<double>(value));
  if (places < 0) {
    zero = std::fabs(value) < static_cast<Float>(SmallestShown);
    if (!zero) end = PutShortest(begin, limit, std::fabs(value));
  } else if (magnitude * PowersOfTen[static_cast<std::size_t>(places)] < TwoTo53) {
    const double scaled = ScaledWhole(magnitude, places);
    const double scale = PowersOfTen[static_cast<std::size_t>(places)];
    zero = scaled / scale < SmallestShown;
    const auto whole = zero ? 0 : static_cast<std::uint64_t>(scaled);
    end = places == 0 ? PutWhole(begin, whole) : PutDecimals(begin, whole, places);
  } else {
    end = SetDecimals(begin, PutShortest(begin, limit, std::fabs(value)), places);
  }
  if (zero && places <= 0) {
    *begin = '0';
    end = begin + 1;
  }
  if (!zero && value < 0) {
    buffer[0] = '-';
    out.append(buffer.data(), end);
  } else {
    out.append(begin, end);
  }
}

template <class Float>
void AppendText(std::string& out, Float value, int places) {
  AppendMagnitude(out, std::isfinite(value) ? value : Float{0}, std::min(places, 6));
}

template <class Integer>
Integer HeldWithin(double value) {
  if (std::isnan(value)) return 0;
  constexpr auto least = static_cast<double>(std::numeric_limits<Integer>::min());
  constexpr auto most = static_cast<double>(std::numeric_limits<Integer>::max());
  return static_cast<Integer>(std::clamp(value, least, most));
}

/// The end of the digits that begin at `at`.
std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

/// Where the number at the start of `text` ends, the sign excluded.
struct NumberSpan {
  std::size_t Mantissa = 0;  ///< characters of digits and point
  std::size_t All = 0;       ///< with the exponent
  bool HasDigits = false;
};

NumberSpan MeasureNumber(std::string_view text) {
  NumberSpan span;
  std::size_t at = SkipDigits(text, 0);
  span.HasDigits = at > 0;
  if (at < text.size() && text[at] == '.') {
    const std::size_t decimals = SkipDigits(text, at + 1);
    span.HasDigits = span.HasDigits || decimals > at + 1;
    at = decimals;
  }
  span.Mantissa = span.All = at;
  if (at < text.size() && std::string_view("EeDd").find(text[at]) != std::string_view::npos) {
    std::size_t digits = at + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) ++digits;
    const std::size_t end = SkipDigits(text, digits);
    if (end > digits) span.All = end;
  }
  return span;
}

/// True for a number (digits, point, exponent E) that is too large rather than too small.
bool IsBeyondRange(std::string_view number) {
  const auto exponentMark = std::min(number.find_first_of("Ee"), number.size());
  const std::string_view mantissa = number.substr(0, exponentMark);
  const auto point = static_cast<std::ptrdiff_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto first = static_cast<std::ptrdiff_t>(mantissa.find_first_of("123456789"));
  std::string_view exponentText = number.substr(std::min(exponentMark + 1, number.size()));
  const bool negative = exponentText.starts_with('-');
  if (negative || exponentText.starts_with('+')) exponentText.remove_prefix(1);
  std::ptrdiff_t exponent = 0;
  const auto read =
      std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  // No number that the machine's memory holds shifts its point that far.
  constexpr std::ptrdiff_t LargestExponent = 1'000'000'000;
  if (read.ec == std::errc::result_out_of_range || exponent > LargestExponent) return !negative;
  return point - first + (negative ? -exponent : exponent) > 0;
}

/// The general case, by the library, which knows the exponent E only.
double ParseGeneral(std::string_view number) {
  std::string text(number);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == 'D' || c == 'd'; }, 'E');
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  return IsBeyondRange(text) ? std::numeric_limits<double>::infinity() : 0.0;
}

/// Up to 15 digits and 22 decimals: whole number over a power of ten, both exact, one rounding.
double ParseMantissa(std::string_view number) {
  if (number.size() > 16) return ParseGeneral(number);
  std::uint64_t digits = 0;
  std::size_t decimals = 0;
  bool point = false;
  for (const char character : number) {
    if (character == '.') {
      point = true;
      continue;
    }
    digits = digits * 10 + static_cast<std::uint64_t>(character - '0');
    decimals += point ? 1 : 0;
  }
  if (digits >= static_cast<std::uint64_t>(TwoTo53)) return ParseGeneral(number);
  return static_cast<double>(digits) / PowersOfTen[decimals];
}

}  // namespace

double LeadingNumber(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return 0;
  text.remove_prefix(first);
  const bool negative = text.front() == '-';
  if (negative || text.front() == '+') text.remove_prefix(1);
  const NumberSpan span = MeasureNumber(text);
  if (!span.HasDigits) return 0;
  const double magnitude = span.All == span.Mantissa ? ParseMantissa(text.substr(0, span.Mantissa))
                                                     : ParseGeneral(text.substr(0, span.All));
  return negative ? 0.0 - magnitude : magnitude;
}

std::int16_t TruncateToInt16(double value) { return HeldWithin<std::int16_t>(std::trunc(value)); }
std::int32_t TruncateToInt32(double value) { return HeldWithin<std::int32_t>(std::trunc(value)); }
std::int16_t RoundToInt16(double value) { return HeldWithin<std::int16_t>(RoundPlaces(value, 0)); }
std::int32_t RoundToInt32(double value) { return HeldWithin<std::int32_t>(RoundPlaces(value, 0)); }

double RoundPlaces(double value, int places) {
  places = std::clamp(places, 0, 15);
  const double magnitude = std::fabs(value);
  const double scale = PowersOfTen[static_cast<std::size_t>(places)];
  // From 2^53 on decimals lie closer than doubles: the nearest double is the value itself.
  if (!(magnitude * scale < TwoTo53)) return value;
  const double rounded = ScaledWhole(magnitude, places) / scale;
  return value < 0 ? 0.0 - rounded : rounded;
}

void AppendNumber(std::string& out, double value, int places) { AppendText(out, value, places); }
void AppendNumber(std::string& out, float value, int places) { AppendText(out, value, places); }

std::string NumberText(double value, int places) {
  std::string text;
  AppendText(text, value, places);
  return text;
}

std::string NumberText(float value, int places) {
  std::string text;
  AppendText(text, value, places);
  return text;
}

std::string IntegerText(std::int16_t value) { return std::to_string(value); }
std::string LongText(std::int32_t value) { return std::to_string(value); }

std::string PadInteger(std::int32_t value, int width) {
  const auto digits = static_cast<std::size_t>(std::max(width, 0));
  const std::string text = std::string(digits, '0') + std::to_string(value);
  return text.substr(text.size() - digits);
}

}  // namespace torvane::core

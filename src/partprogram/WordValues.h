// The readers of word values: what comes after a letter of a block, parameters and functions
// included.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/General.h"

namespace torvane::partprogram {

/// P0 to P100. All start at 0 on every pass.
struct Parameters {
  std::array<double, 101> Values{};
  /// A third digit is a digit after the value, so that P101 reads P10 and a 1; without this it is
  /// a fault.
  bool TwoDigitNumbers = false;
};

/// Why a reader could not follow its text. The value then is what had been read up to there.
enum class ReadFault : std::uint8_t {
  None,
  ParameterNumber,  ///< a parameter below P0 or above P100, or a "P" without a number
  NumberRange,      ///< a whole number that 16 bits do not hold
  NestedTooDeep,    ///< ROUND and TRUNC inside each other more than MaxFunctionDepth times
};

/// Deepest nesting of ROUND and TRUNC. The text of a block is cut long before a sane one gets
/// there.
inline constexpr int MaxFunctionDepth = 32;

/// The value after the first `key` of `block`: digits, points, operators, brackets, parameters and
/// functions, worked out by Calculate. The key "R" passes over each "R" that begins "ROUND".
/// A fault goes to `fault`, which is left alone where there is none.
[[nodiscard]] core::WordValue GetWordValue(std::string_view block, std::string_view key,
                                           const Parameters& parameters,
                                           ReadFault* fault = nullptr);

/// The same for an expression that begins at `from`, for a caller that has found its key already.
[[nodiscard]] core::WordValue ReadExpression(std::string_view block, std::size_t from,
                                             const Parameters& parameters, ReadFault* fault);

/// The whole number after the first `key`, -32768 to 32767: digits only, plus signs and blanks in
/// front skipped, the first minus sign kept wherever it stands.
[[nodiscard]] core::WordValue GetWordInteger(std::string_view block, std::string_view key,
                                             ReadFault* fault = nullptr);

/// As GetWordValue, before any walk of the program: P0 and P12 to P99 are read from `fixed`, any
/// other number ends the scan. Nothing found yields 0.
[[nodiscard]] core::WordValue GetStaticValue(std::string_view block, std::string_view key,
                                             const Parameters& fixed);

}  // namespace torvane::partprogram

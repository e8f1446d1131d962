// What a walk of a program reports.
#pragma once

#include <string_view>

#include "partprogram/WordValues.h"

namespace torvane::partprogram {

/// Messages of the pass, as they are handed to WriteError.
namespace Message {
inline constexpr std::string_view InvalidCentre = " Non-Interpolated Arc (Invalid I,J) ";
inline constexpr std::string_view InvalidRadius = " Non-Interpolated Arc (Invalid R) ";
inline constexpr std::string_view LimitX = " Out of limits in X ";
inline constexpr std::string_view LimitY = " Out of limits in Y ";
inline constexpr std::string_view Backoff = " Reposition with Excessive Backoff distance (J) ";
inline constexpr std::string_view Return = " Reposition with Excessive Return distance (K) ";
inline constexpr std::string_view SubMissing = " Subroutine Does Not Exist ";
inline constexpr std::string_view SubTooDeep = " Subroutine Calls Nested Too Deep ";
inline constexpr std::string_view ParameterNumber = " Parameter Number Out of Range ";
inline constexpr std::string_view NumberRange = " Number Out of Range ";
inline constexpr std::string_view FunctionTooDeep = " Functions Nested Too Deep ";
inline constexpr std::string_view BlockTooLong = " Block Too Long ";
inline constexpr std::string_view TooManyLines = " Too Many Lines in Program ";
inline constexpr std::string_view TooManyRecords = " Too Many Records in Program ";
inline constexpr std::string_view TooManyErrors = " Too Many Errors in Program ";
inline constexpr std::string_view Endless = " Program Does Not End ";
inline constexpr std::string_view TooManyTableLines = " Too Many Table Lines in Program ";
inline constexpr std::string_view TableLineTooLong = " Table Line Too Long ";
}  // namespace Message

/// The message of a value that could not be read; empty for None.
[[nodiscard]] constexpr std::string_view TextOf(ReadFault fault) {
  switch (fault) {
    case ReadFault::ParameterNumber:
      return Message::ParameterNumber;
    case ReadFault::NumberRange:
      return Message::NumberRange;
    case ReadFault::NestedTooDeep:
      return Message::FunctionTooDeep;
    case ReadFault::None:
      break;
  }
  return {};
}

}  // namespace torvane::partprogram

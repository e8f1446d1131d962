// What one row of the table says, and the command line that carries it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace torvane::partprogram {

/// The value that ends a table.
inline constexpr double EndMark = -999;

enum class RowType {
  Point = 0,        ///< a rapid move, or what Action says at the point
  Line = 1,         ///< a cut; X and Y are where it starts
  ArcNegative = 2,  ///< X, Y and I, J count from the start
  ArcPositive = 3,
  Settings = 4,      ///< settings stay as they are
  SettingsPair = 5,  ///< the row after it is its second half and has no type of its own
  Other = 9,
  End = -999
};

/// Codes of the fifth value of a point row; a positive number is a dwell in seconds.
namespace PointAction {
inline constexpr int None = 0;
inline constexpr int Stop = -1;
inline constexpr int CloseClamps = -2;
inline constexpr int OpenClamps = -3;
}  // namespace PointAction

/// Settings of a pair: 1 to 6, then the eighth, then four whose meaning the seventh decides.
inline constexpr std::size_t SettingCount = 11;

/// Lengths mm, feed mm per minute as written, 0 where the program gave none.
struct TableRow {
  RowType Type = RowType::Point;
  double X = 0;
  double Y = 0;
  double Z = 0;
  double Action = 0;
  double I = 0;
  double J = 0;
  bool Blended = false;
  double Feed = 0;
  int Skip = 0;
  std::array<double, SettingCount> Settings{};
};

/// Values of the longest row.
inline constexpr std::size_t LongestRow = 8;

/// The values behind the index of a command line, "TABLE(500,0,12.5,...)", written into `values`.
/// Empty for any other text, and for more values than a row has.
[[nodiscard]] std::span<const double> ReadTableLine(std::string_view line,
                                                    std::array<double, LongestRow>& values);

/// Nothing when the type is unknown or the number of values is not that of the type.
[[nodiscard]] std::optional<TableRow> ReadRow(std::span<const double> values);

/// Adds the second half of a pair. False when it has not its six values.
bool ReadSecondHalf(std::span<const double> values, TableRow& row);

}  // namespace torvane::partprogram

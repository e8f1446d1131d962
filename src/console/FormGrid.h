// How a screen is laid out: rows and columns of controls, and the one arithmetic that places them.
#pragma once

#include <vector>

#include "toolkit/Control.h"

namespace torvane::console {

/// A control, a gap, or rows or columns of further cells. Sizes are in pixels of the drawing, for
/// a desk of 1280 by 960, and scale with the desk; keys never are lower than a finger needs.
///
///   SetGrid(720, Rows({
///       Inside(frame, Table({136, 0}, {{label, box}, {label2, box2}})),
///       Columns({Space(), Cell(exit).Wide(152)}),
///   }).Spaced(SectionGap));
///
/// A control has the height of its kind (key, entry, lines of text, visible lines of a list), a
/// frame or a panel that of its contents. In columns, cells without a width of their own share what
/// the others leave; in rows, only cells with a share grow beyond their least height.
class Cell {
 public:
  // A control serves where a cell is asked for, so that lists of controls read as lists.
  Cell(toolkit::Control& control);  // NOLINT(google-explicit-constructor)
  Cell(toolkit::Control* control);  // NOLINT(google-explicit-constructor)

  /// A width of its own.
  [[nodiscard]] Cell Wide(double drawn) const;
  /// A height of its own in place of the natural one.
  [[nodiscard]] Cell High(double drawn) const;
  /// How much it takes of what the others leave, in the direction of its neighbours.
  [[nodiscard]] Cell Share(double weight) const;
  /// Distance between the cells inside; 8 by default.
  [[nodiscard]] Cell Spaced(double drawn) const;

  /// Rows whose last one stays at the foot when there is more room than they need.
  [[nodiscard]] Cell WithFoot() const;

  /// The least height, pixels.
  [[nodiscard]] int Height(const toolkit::Metrics& metrics) const;
  void Place(const toolkit::Area& area, const toolkit::Metrics& metrics) const;

 private:
  enum class Kind { Control, Space, Rows, Columns, Layers, Inside };

  Cell(Kind kind, std::vector<Cell> cells);
  friend Cell Space();
  friend Cell Rows(std::vector<Cell> cells);
  friend Cell Columns(std::vector<Cell> cells);
  friend Cell Layers(std::vector<Cell> cells);
  friend Cell Inside(toolkit::Control& box, const Cell& contents);

  [[nodiscard]] int GapOf(const toolkit::Metrics& metrics) const;
  [[nodiscard]] int ContentsHeight(const toolkit::Metrics& metrics) const;
  void PlaceRows(const toolkit::Area& area, const toolkit::Metrics& metrics) const;
  void PlaceColumns(const toolkit::Area& area, const toolkit::Metrics& metrics) const;

  Kind kind_;
  toolkit::Control* control_ = nullptr;
  std::vector<Cell> cells_;
  double wide_ = 0;
  double high_ = 0;
  double share_ = -1;  ///< below 0: 1 in columns, none in rows
  double gap_ = 8;
  bool foot_ = false;
};

/// Between the parts of a screen, in pixels of the drawing.
inline constexpr double SectionGap = 24;
/// Of an ordinary key.
inline constexpr double KeyWide = 152;

/// Nothing; takes what the others leave.
[[nodiscard]] Cell Space();
/// Below each other.
[[nodiscard]] Cell Rows(std::vector<Cell> cells);
/// Side by side.
[[nodiscard]] Cell Columns(std::vector<Cell> cells);
/// One over the other, of which one shows at a time.
[[nodiscard]] Cell Layers(std::vector<Cell> cells);
/// The same cells, of which each takes its part of what is left.
[[nodiscard]] std::vector<Cell> Sharing(std::vector<Cell> cells);
/// Rows with columns that line up: `widths` in pixels of the drawing, 0 for what is left (equal
/// parts where there are several).
[[nodiscard]] Cell Table(const std::vector<double>& widths,
                         const std::vector<std::vector<Cell>>& rows);
/// A frame or a panel round its contents, which are controls made in it.
[[nodiscard]] Cell Inside(toolkit::Control& box, const Cell& contents);
/// One key at the right end of its row.
[[nodiscard]] Cell AtRight(toolkit::Control& key, double wide = KeyWide);

/// Height of a line of a listing or of messages.
inline constexpr double TextLineHigh = 33;

/// The controls of an array as cells.
template <class Control>
[[nodiscard]] std::vector<Cell> CellsOf(const std::vector<Control*>& controls) {
  return {controls.begin(), controls.end()};
}

/// The lines of a listing as cells.
template <class Control>
[[nodiscard]] std::vector<Cell> LinesOf(const std::vector<Control*>& lines) {
  std::vector<Cell> cells;
  cells.reserve(lines.size());
  for (Control* line : lines) cells.push_back(Cell(line).High(TextLineHigh));
  return cells;
}

}  // namespace torvane::console

// Any part program that a shop might write: contours of lines and arcs in the cells of a sheet,
// with or without kerf, some incremental, some in subroutines that are called turned, some in laps,
// with numbers on all blocks, on some or on none.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "core/General.h"

namespace torvane::tests {

class AnySheet {
 public:
  explicit AnySheet(unsigned seed) : random_(seed), numbering_(Pick(0, 2)) {}

  [[nodiscard]] std::string Program() {
    Line("! SHEET : X640 Y480", false);
    Line(Chance(3) ? "G56 X3 Y2 G71 G90" : "G71 G90");
    for (int row = 0; row < Rows; ++row) AddRow(CellSize / 2 + row * CellSize);
    Line("M30");
    for (const std::string& body : subs_) text_ += "\r\n" + body;
    return text_;
  }

 private:
  static constexpr int CellSize = 150;  // mm
  static constexpr int Columns = 3;
  static constexpr int Rows = 2;

  struct Corner {
    int X = 0;
    int Y = 0;
    int Arc = 0;  ///< the way to it: 0 a line, 2 and 3 half a circle by G02 and G03
  };
  using Contour = std::vector<Corner>;

  [[nodiscard]] int Pick(int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random_);
  }
  [[nodiscard]] bool Chance(int of) { return Pick(1, of) == 1; }

  void Line(const std::string& block, bool mayBeNumbered = true) {
    number_ += 10;
    const bool numbered = mayBeNumbered && (numbering_ == 2 || (numbering_ == 1 && Chance(2)));
    if (numbered) text_ += "N" + std::to_string(number_) + " ";
    text_ += block + "\r\n";
  }

  /// Corners around the middle, at growing angles: the contour does not cross itself.
  [[nodiscard]] Contour AnyContour() {
    static constexpr int Around[8][2] = {{1, 0},  {1, 1},   {0, 1},  {-1, 1},
                                         {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
    Contour contour;
    for (const auto& [x, y] : Around) {
      if (contour.size() + 3 > 3 && Chance(4)) continue;
      const int far = Pick(15, 35);
      contour.push_back({x * far, y * far, Chance(3) ? Pick(2, 3) : 0});
    }
    contour.push_back(contour.front());
    contour.back().Arc = 0;
    return contour;
  }

  static std::string Number(double value) { return core::NumberText(value, -1); }
  static std::string Signed(int value) { return (value < 0 ? "" : "+") + std::to_string(value); }

  /// The blocks of a contour. `x` and `y` write the coordinates of a corner.
  template <class X, class Y>
  [[nodiscard]] std::vector<std::string> Blocks(const Contour& contour, const X& x, const Y& y) {
    const int side = Pick(0, 2);
    const std::string kerf =
        side == 0 ? "G40" : "G4" + std::to_string(side) + " K0." + std::to_string(Pick(1, 4));
    std::vector<std::string> blocks = {"G00" + x(contour[0]) + y(contour[0]), "G31 T2=3 " + kerf};
    for (std::size_t i = 1; i < contour.size(); ++i) {
      const Corner& from = contour[i - 1];
      const Corner& to = contour[i];
      std::string block = to.Arc == 0 ? "G01" : "G0" + std::to_string(to.Arc);
      block += x(to) + y(to);
      if (to.Arc != 0) {
        block += " I" + Number((to.X - from.X) / 2.0) + " J" + Number((to.Y - from.Y) / 2.0);
      }
      if (i == 1) block += " F3000";
      blocks.push_back(block);
    }
    blocks.emplace_back("G31 T2=1 G40");
    return blocks;
  }

  [[nodiscard]] std::vector<std::string> Absolute(const Contour& contour, int atX, int atY) {
    return Blocks(
        contour, [&](const Corner& at) { return " X" + std::to_string(atX + at.X); },
        [&](const Corner& at) { return " Y" + std::to_string(atY + at.Y); });
  }

  void AddRow(int atY) {
    if (Chance(3)) return AddLaps(atY);
    for (int column = 0; column < Columns; ++column) {
      const int atX = CellSize / 2 + column * CellSize;
      switch (Pick(0, 3)) {
        case 0:
          AddCall(atX, atY);
          break;
        case 1:
          AddIncremental(atX, atY);
          break;
        default:
          for (const auto& block : Absolute(AnyContour(), atX, atY)) Line(block);
      }
      if (Chance(6)) Line("M00");
    }
  }

  void AddIncremental(int atX, int atY) {
    const Contour contour = AnyContour();
    Line("G00 X" + std::to_string(atX) + " Y" + std::to_string(atY));
    Line("G91");
    Corner last;
    const auto step = [&](const Corner& at) {
      const std::string text =
          " X" + std::to_string(at.X - last.X) + " Y" + std::to_string(at.Y - last.Y);
      last = at;
      return text;
    };
    const auto blocks = Blocks(contour, step, [](const Corner&) { return std::string(); });
    for (const auto& block : blocks) Line(block);
    Line("G90");
  }

  /// A subroutine, called turned and perhaps once more beside it.
  void AddCall(int atX, int atY) {
    subs_.push_back("S" + std::to_string(subs_.size() + 1) + "\r\nG90\r\n");
    for (const auto& block : Absolute(AnyContour(), 0, 0)) subs_.back() += block + "\r\n";
    subs_.back() += "M02\r\n";
    static constexpr const char* Turns[] = {"0", "30", "90", "200"};
    Line("G00 X" + std::to_string(atX) + " Y" + std::to_string(atY));
    Line("G98 S" + std::to_string(subs_.size()) + " A" + Turns[Pick(0, 3)]);
  }

  /// Three laps of one contour, side by side.
  void AddLaps(int atY) {
    Line("P1=" + std::to_string(CellSize / 2));
    const auto blocks = Blocks(
        AnyContour(), [](const Corner& at) { return " XP1" + Signed(at.X); },
        [&](const Corner& at) { return " Y" + std::to_string(atY + at.Y); });
    number_ += 10;
    const int top = number_;
    text_ += "N" + std::to_string(top) + " " + blocks.front() + "\r\n";
    for (std::size_t i = 1; i < blocks.size(); ++i) Line(blocks[i]);
    Line("P1=P1+" + std::to_string(CellSize));
    Line("IF P1<" + std::to_string(Columns * CellSize) + " GOTO " + std::to_string(top));
  }

  std::mt19937 random_;
  int numbering_;
  int number_ = 0;
  std::string text_;
  std::vector<std::string> subs_;
};

}  // namespace torvane::tests

// The arithmetic of the form grid, without a console: rows, columns, shares, feet.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "console/FormGrid.h"
#include "platform/VirtualLoop.h"
#include "support/QtEnvironment.h"
#include "toolkit/Button.h"
#include "toolkit/Desk.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"

namespace torvane::console {
namespace {

using toolkit::Area;
using toolkit::Metrics;

struct Bench {
  platform::VirtualLoop Loop;
  toolkit::Desk Desk{Loop};
  toolkit::Form Form{Desk, "TrialForm"};
  std::vector<toolkit::Button*> Keys;

  explicit Bench(std::size_t keys, int width = 1280, int height = 1024) {
    Desk.OpenWindow(width, height);
    for (std::size_t i = 0; i < keys; ++i) Keys.push_back(new toolkit::Button(&Form));
  }
  [[nodiscard]] const Metrics& M() const { return Desk.Measures(); }
};

TEST(FormGrid, AColumnWithoutAWidthTakesWhatTheOthersLeave) {
  Bench bench(3);
  const Cell row =
      Columns({bench.Keys[0], Cell(bench.Keys[1]).Wide(100), Cell(bench.Keys[2]).Share(3)});
  row.Place({0, 0, 516, 72}, bench.M());
  EXPECT_EQ(bench.Keys[0]->Bounds(), (Area{0, 0, 100, 72}));
  EXPECT_EQ(bench.Keys[1]->Bounds(), (Area{108, 0, 100, 72}));
  EXPECT_EQ(bench.Keys[2]->Bounds(), (Area{216, 0, 300, 72}));
}

TEST(FormGrid, RowsTakeTheirOwnHeightAndTheLastStaysAtTheFoot) {
  Bench bench(2);
  const Cell rows = Rows({bench.Keys[0], bench.Keys[1]}).Spaced(SectionGap);
  EXPECT_EQ(rows.Height(bench.M()), 2 * bench.M().KeyHeight + bench.M().Margin);
  rows.Place({10, 20, 200, 400}, bench.M());
  EXPECT_EQ(bench.Keys[1]->Bounds().Y, 20 + bench.M().KeyHeight + bench.M().Margin);
  rows.WithFoot().Place({10, 20, 200, 400}, bench.M());
  EXPECT_EQ(bench.Keys[0]->Bounds().Y, 20);
  EXPECT_EQ(bench.Keys[1]->Bounds().Bottom(), 420);
}

TEST(FormGrid, ColumnsOfATableLineUp) {
  Bench bench(6);
  Table({120, 0, 0}, {{bench.Keys[0], bench.Keys[1], bench.Keys[2]},
                      {bench.Keys[3], bench.Keys[4], bench.Keys[5]}})
      .Place({0, 0, 700, 200}, bench.M());
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(bench.Keys[i]->Bounds().X, bench.Keys[i + 3]->Bounds().X);
    EXPECT_EQ(bench.Keys[i]->Bounds().Width, bench.Keys[i + 3]->Bounds().Width);
  }
  EXPECT_EQ(bench.Keys[0]->Bounds().Width, 120);
}

TEST(FormGrid, AKeyIsNeverLowerThanAFingerNeeds) {
  Bench bench(1, 1024, 768);
  EXPECT_EQ(Cell(bench.Keys[0]).High(40).Height(bench.M()), 56);
}

TEST(FormGrid, AFrameIsAsHighAsItsContentsAndHoldsThem) {
  Bench bench(0);
  auto* frame = new toolkit::Frame(&bench.Form, "SHEET");
  auto* key = new toolkit::Button(frame);
  const Cell cell = Inside(*frame, Rows({key}));
  cell.Place({0, 0, 300, cell.Height(bench.M())}, bench.M());
  EXPECT_TRUE(frame->rect().contains(key->geometry()));
  EXPECT_EQ(key->height(), bench.M().KeyHeight);
}

RC_GTEST_PROP(FormGrid, ColumnsFillTheirRowToTheLastPixelWithoutOverlap, ()) {
  const auto count = *rc::gen::inRange<std::size_t>(1, 8);
  Bench bench(count);
  std::vector<Cell> cells;
  bool open = false;
  for (std::size_t i = 0; i < count; ++i) {
    const int kind = *rc::gen::inRange(0, 3);
    Cell cell(bench.Keys[i]);
    if (kind == 0) {
      cells.push_back(cell.Wide(*rc::gen::inRange(20, 90)));
    } else {
      cells.push_back(cell.Share(*rc::gen::inRange(1, 5)));
      open = true;
    }
  }
  const int width = *rc::gen::inRange(800, 1600);
  Columns(cells).Place({5, 0, width, 72}, bench.M());
  int x = 5;
  for (const toolkit::Button* key : bench.Keys) {
    RC_ASSERT(key->Bounds().X == x);
    RC_ASSERT(key->Bounds().Width > 0);
    x = key->Bounds().Right() + bench.M().Gap;
  }
  if (open) RC_ASSERT(x - bench.M().Gap == 5 + width);
}

}  // namespace
}  // namespace torvane::console

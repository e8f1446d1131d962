// The title drag's arithmetic, and a form that follows it.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "console/TitleDrag.h"

namespace torvane::console {
namespace {

TEST(TitleDrag, APressAtXOrYOfExactlyZeroDoesNotDrag) {
  struct Place {
    int X, Y;
  };
  for (const Place at : {Place{0, 5}, Place{5, 0}, Place{0, 0}}) {
    TitleDrag drag;
    drag.Down(at.X, at.Y);
    const DragStep step = drag.Move(40, 30);
    EXPECT_EQ(step.Left, 0);
    EXPECT_EQ(step.Top, 0);
  }
}

TEST(TitleDrag, ASecondPressStartsFromItsOwnPlace) {
  TitleDrag drag;
  drag.Down(10, 10);
  EXPECT_EQ(drag.Move(15, 12).Left, 5);
  drag.Up();
  EXPECT_EQ(drag.Move(99, 99).Left, 0) << "let go";
  drag.Down(100, 50);
  EXPECT_EQ(drag.Move(90, 45).Left, -10);
  EXPECT_EQ(drag.Move(90, 45).Top, -5);
}

RC_GTEST_PROP(TitleDrag, TheFormStaysUnderThePointer, ()) {
  // The panel moves with the form: on the desk the grab point follows the pointer, step by step.
  TitleDrag drag;
  int left = *rc::gen::inRange(-500, 500);
  int top = *rc::gen::inRange(-500, 500);
  const int x = *rc::gen::inRange(1, 300);
  const int y = *rc::gen::inRange(1, 50);
  drag.Down(x, y);
  for (int i = 0; i < 8; ++i) {
    const int pointerX = *rc::gen::inRange(-2000, 2000);
    const int pointerY = *rc::gen::inRange(-2000, 2000);
    const DragStep step = drag.Move(pointerX - left, pointerY - top);
    left += step.Left;
    top += step.Top;
    RC_ASSERT(left + x == pointerX);
    RC_ASSERT(top + y == pointerY);
  }
}

}  // namespace
}  // namespace torvane::console

// The slider: steps by pointer and by keys.
#include "ScreenFixture.h"
#include "toolkit/Slider.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

class Sliders : public OnDesk {
 protected:
  Sliders() : One(Desk_, "OneForm", Log), Speed(&One.Body) {
    Speed.Place({10, 10, 300, 56});
    Speed.SetMaximum(5);
    One.Window.Show();
    Speed.SetFocus();
    Speed.OnChange([this](int value) { Log.push_back(std::to_string(value)); });
    Log.clear();
  }

  Screen One;
  Slider Speed;
};

TEST_F(Sliders, APressAndADragGoToTheNearestStepAndTellEachOnce) {
  PressAt(Speed, 299, 28);
  EXPECT_EQ(Speed.Value(), 5);
  DragTo(Speed, 298, 28);
  DragTo(Speed, 150, 28);
  DragTo(Speed, -40, 28);
  ReleaseAt(Speed, -40, 28);
  EXPECT_EQ(Speed.Value(), 0);
  EXPECT_EQ(Taken(), (Words{"5", "3", "0"}));
  DragTo(Speed, 299, 28);
  EXPECT_EQ(Speed.Value(), 0);
}

TEST_F(Sliders, LeftAndRightMoveItByOneStepWithinItsRange) {
  Desk_.TypeKey(KeyStroke(Key::Left));
  Desk_.TypeKey(KeyStroke(Key::Right));
  Desk_.TypeKey(KeyStroke(Key::Right));
  EXPECT_EQ(Speed.Value(), 2);
  EXPECT_EQ(Taken(), (Words{"1", "2"}));
}

TEST_F(Sliders, TheProgramSetsItWithoutAWordAndWithinItsRange) {
  Speed.SetValue(99);
  EXPECT_EQ(Speed.Value(), 5);
  Speed.SetMaximum(3);
  EXPECT_EQ(Speed.Value(), 3);
  Speed.SetValue(-1);
  EXPECT_EQ(Speed.Value(), 0);
  EXPECT_TRUE(Taken().empty());
}

}  // namespace
}  // namespace torvane::tests

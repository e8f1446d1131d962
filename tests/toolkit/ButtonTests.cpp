#include "ScreenFixture.h"
#include "toolkit/Button.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

class Keys : public OnDesk {
 protected:
  Keys() : One(Desk_, "OneForm", Log), Plain(&One.Body, "&OK"), Toggle(&One.Body, "&ROLLERS") {
    Plain.Place({10, 10, 120, 72});
    Toggle.Place({10, 100, 120, 72});
    Plain.OnClick([this] { Log.push_back("click"); });
    Toggle.OnChange([this](bool down) { Log.push_back(down ? "down" : "up"); });
    Toggle.OnClick([this] { Log.push_back("toggle click"); });
    One.Window.Show();
    Log.clear();
  }

  Screen One;
  Button Plain;
  TwoStateButton Toggle;
};

TEST_F(Keys, APressAndReleaseIsAClick) {
  PressAt(Plain, 5, 5);
  EXPECT_TRUE(Plain.Sunk());
  EXPECT_EQ(Taken(), Words{});
  ReleaseAt(Plain, 5, 5);
  EXPECT_FALSE(Plain.Sunk());
  EXPECT_EQ(Taken(), Words{"click"});
}

TEST_F(Keys, AReleaseBesideItIsNone) {
  PressAt(Plain, 5, 5);
  DragTo(Plain, 500, 5);
  EXPECT_FALSE(Plain.Sunk());
  ReleaseAt(Plain, 500, 5);
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Keys, AQuickSecondTapIsASecondClick) {
  DoubleClickAt(Plain, 5, 5);
  EXPECT_EQ(Taken(), (Words{"click", "click"}));
}

TEST_F(Keys, AnotherPointerButtonDoesNothing) {
  PressAt(Plain, 5, 5, Qt::RightButton);
  EXPECT_FALSE(Plain.Sunk());
  ReleaseAt(Plain, 5, 5, Qt::RightButton);
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Keys, APressByTheProgramIsRefusedWhereTheOperatorCouldNotPress) {
  EXPECT_TRUE(Plain.Press());
  Plain.SetEnabled(false);
  EXPECT_FALSE(Plain.Press());
  Plain.SetEnabled(true);
  Plain.SetVisible(false);
  EXPECT_FALSE(Plain.Press());
  Plain.SetVisible(true);
  One.Body.SetVisible(false);
  EXPECT_FALSE(Plain.Press());
  One.Body.SetVisible(true);
  One.Window.Hide();
  EXPECT_FALSE(Plain.Press());
  EXPECT_EQ(Taken(), Words{"click"});
}

TEST_F(Keys, ADisabledOneTakesNoPress) {
  Plain.SetEnabled(false);
  Click(Plain);
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Keys, SpaceAndEnterPressTheFocusedOneOnceHoweverLongHeld) {
  Plain.SetFocus();
  Desk_.PressKey(KeyStroke(Key::Enter));
  KeyStroke held(Key::Enter);
  held.Repeat = true;
  Desk_.PressKey(held);
  Desk_.ReleaseKey(held);
  Desk_.TypeKey(KeyStroke(Key::Space));
  EXPECT_EQ(Taken(), (Words{"click", "click"}));
}

TEST_F(Keys, TheAcceleratorIsTheFormsBusinessNotTheWindowSystems) {
  Toggle.SetFocus();
  KeyStroke alt('o');
  alt.Alt = true;
  Desk_.TypeKey(alt);
  Desk_.TypeKey(KeyStroke('o'));
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Keys, ATwoStateOneTellsItsChangeThenItsClick) {
  Click(Toggle);
  EXPECT_TRUE(Toggle.Down());
  EXPECT_EQ(Taken(), (Words{"down", "toggle click"}));
  Toggle.Press();
  EXPECT_FALSE(Toggle.Down());
  EXPECT_EQ(Taken(), (Words{"up", "toggle click"}));
}

TEST_F(Keys, AChangeByTheProgramFiresOnlyWhenAsked) {
  Toggle.SetDown(true, Events::Silent);
  EXPECT_TRUE(Toggle.Down());
  EXPECT_EQ(Taken(), Words{});
  Toggle.SetDown(true, Events::Fire);
  EXPECT_EQ(Taken(), Words{});
  Toggle.SetDown(false, Events::Fire);
  EXPECT_EQ(Taken(), Words{"up"});
}

TEST_F(Keys, ARefusedOneSnapsBackFromItsOwnHandler) {
  Toggle.OnChange([this](bool down) {
    Log.push_back(down ? "down" : "up");
    Toggle.SetDown(false, Events::Silent);
  });
  Click(Toggle);
  EXPECT_FALSE(Toggle.Down());
  EXPECT_EQ(Taken(), (Words{"down", "toggle click"}));
}

TEST_F(Keys, AHandlerMayHideItsOwnForm) {
  Plain.OnClick([this] { One.Window.Close(); });
  Click(Plain);
  EXPECT_FALSE(One.Window.Visible());
  EXPECT_EQ(Taken(), Words{"unload OneForm"});
}

TEST_F(Keys, AHandlerMayDestroyItsOwnKey) {
  auto* mortal = new Button(&One.Body, "GO");
  mortal->Place({200, 10, 120, 72});
  mortal->OnClick([&] { delete mortal; });
  mortal->SetFocus();
  Click(*mortal);
  EXPECT_EQ(One.Window.Focused(), nullptr);
}

TEST_F(Keys, OfSeveralOptionsOneIsDown) {
  OptionButton first(&One.Body, "1 (&H)");
  OptionButton second(&One.Body, "5 (&I)");
  first.OnChange([this](bool down) { Log.push_back(down ? "first" : "first up"); });
  second.OnChange([this](bool down) { Log.push_back(down ? "second" : "second up"); });
  first.Press();
  second.Press();
  EXPECT_FALSE(first.Down());
  EXPECT_TRUE(second.Down());
  second.Press();
  EXPECT_TRUE(second.Down());
  EXPECT_EQ(Taken(), (Words{"first", "second"}));
  first.Select(Events::Silent);
  EXPECT_FALSE(second.Down());
  EXPECT_EQ(Taken(), Words{});
}

}  // namespace
}  // namespace torvane::tests

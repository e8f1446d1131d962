// The user keypad, by keys and by touch.
#include "ConsoleFixture.h"
#include "toolkit/Theme.h"

namespace torvane::tests {
namespace {

using core::ColourName;
using toolkit::Key;
using Words = std::vector<std::string>;

class KeypadScreen : public ConsoleFixture {
 protected:
  KeypadScreen() {
    Directory.Put("Keypad.cfg",
                  "1,M,1,\"OVERRIDE 100 %\",\"VR(68)\",100\r\n"
                  "3,L,3,\"WORK LIGHT OFF\",\"WORK LIGHT ON\",\"VR(120)\",1,0\r\n"
                  "4,L,0,\"SUCTION OFF\",\"SUCTION ON\",\"VR(121)\",1,0\r\n"
                  "11,M,0,\"BLOW\",\"VR(122)\",4\r\n"
                  "******\r\n");
    Start();
  }

  void Open() {
    TypeF(5);
    RunFor(300);
    Lines.clear();
  }
  [[nodiscard]] toolkit::Button& Button(int key) {
    return *Control<toolkit::Button>("UserForm", "UserButton(" + std::to_string(key) + ")");
  }
  [[nodiscard]] toolkit::TwoStateButton& Check(int key) {
    return *Control<toolkit::TwoStateButton>("UserForm", "UserCheck(" + std::to_string(key) + ")");
  }
  void Running(bool running) {
    if (running) {
      Select("GASKET");
      Screens().Unload("SetupForm");
      Machine().CycleStart();
      RunFor(500);
      ASSERT_TRUE(System.State.MachineRunning);
    }
  }
};

TEST_F(KeypadScreen, ShowsTheKeysOfItsFile) {
  Open();
  EXPECT_EQ(CurrentForm(), "UserForm");
  EXPECT_EQ(Control<toolkit::Panel>("UserForm", "UserPanel(0)")->Caption(), "KEYPAD");
  EXPECT_EQ(Focus("UserForm"), "ExitButton");
  EXPECT_EQ(Button(1).Caption(), "(&A)  OVERRIDE 100 %");
  EXPECT_TRUE(Button(1).Visible());
  EXPECT_FALSE(Check(1).Visible());
  EXPECT_EQ(Check(3).Caption(), "(&C)  WORK LIGHT OFF");
  EXPECT_TRUE(Check(3).Visible());
  EXPECT_FALSE(Button(3).Visible());
  EXPECT_FALSE(Check(3).Down());
  EXPECT_EQ(Button(2).Caption(), "(&B)");
  EXPECT_FALSE(Button(2).Visible());
  EXPECT_FALSE(Check(2).Visible());
  EXPECT_FALSE(Button(2).Enabled());
}

TEST_F(KeypadScreen, TheKeysSendByTheirLetters) {
  Open();
  Type(Key::A);
  Type(Key::C);
  Type(Key::C);
  Type(Key::B);
  Type(Key::K);
  RunFor(100);
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=100", "VR(120)=1", "VR(120)=0", "VR(122)=4"}));
  EXPECT_EQ(Focus("UserForm"), "ExitButton");
  Type(Key::X);
  EXPECT_FALSE(Shows("UserForm"));
}

TEST_F(KeypadScreen, TheSameByTouch) {
  Open();
  Click(Button(1));
  RunFor(50);
  Click(Check(4));
  RunFor(50);
  EXPECT_TRUE(Check(4).Down());
  EXPECT_EQ(Check(4).Caption(), "(&D)  SUCTION ON");
  Click(Check(4));
  RunFor(50);
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=100", "VR(121)=1", "VR(121)=0"}));
  EXPECT_FALSE(Check(4).Down());
  EXPECT_EQ(Check(4).Caption(), "(&D)  SUCTION OFF");
}

TEST_F(KeypadScreen, AToggleShowsWhatItsVariableHolds) {
  SetVariable(121, 1);
  SetVariable(120, 5);
  Open();
  EXPECT_TRUE(Check(4).Down());
  EXPECT_EQ(Check(4).Caption(), "(&D)  SUCTION ON");
  EXPECT_FALSE(Check(3).Down()) << "neither value";
  Type(Key::D);
  Type(Key::C);
  RunFor(100);
  EXPECT_EQ(TakeCommands(), (Words{"VR(121)=0", "VR(120)=1"}));
}

TEST_F(KeypadScreen, TheDirectionComesFromTheLastValueAndNotFromTheLook) {
  Open();
  SetVariable(121, 1);  // the machine has switched it by itself: nobody has asked since
  Type(Key::D);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{"VR(121)=1"});
  EXPECT_TRUE(Check(4).Down());
}

TEST_F(KeypadScreen, AForbiddenToggleIsReadAgainAndSnapsBackWithoutAWord) {
  Running(true);
  Open();
  SetVariable(120, 1);
  Type(Key::C);
  RunFor(100);
  EXPECT_EQ(Times("? VR(120)"), 1);
  EXPECT_TRUE(TakeCommands().empty());
  EXPECT_TRUE(Check(3).Down()) << "what the controller holds";
  EXPECT_EQ(Check(3).Caption(), "(&C)  WORK LIGHT ON");
  Type(Key::A);
  RunFor(50);
  EXPECT_TRUE(TakeCommands().empty());
  EXPECT_FALSE(Shows("WarningForm"));
  Type(Key::D);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{"VR(121)=1"}) << "a mask of 0 works in every state";
}

TEST_F(KeypadScreen, ForbiddenKeysLookDimmed) {
  Open();
  const auto face = System.Colours[ColourName::GeneralButtons];
  const auto text = System.Colours[ColourName::GeneralButtonText];
  EXPECT_EQ(Button(1).Foreground(), text);
  Running(true);
  EXPECT_EQ(Button(1).Foreground(), toolkit::Faded(text, face));
  EXPECT_EQ(Check(3).Foreground(), toolkit::Faded(text, face));
  EXPECT_EQ(Check(4).Foreground(), text);
  Machine().Stop();
  RunFor(1000);
  EXPECT_EQ(Button(1).Foreground(), text);
}

TEST_F(KeypadScreen, TheFileIsReadEveryTimeItFronts) {
  Open();
  Directory.Put("Keypad.cfg", "2,M,0,NEW,VR(9),1\r\n******\r\n");
  TypeF(9);
  Type(Key::X);
  RunFor(300);
  EXPECT_EQ(Front(), "UserForm");
  EXPECT_TRUE(Button(2).Visible());
  EXPECT_EQ(Button(2).Caption(), "(&B)  NEW");
  EXPECT_FALSE(Button(1).Visible());
  EXPECT_FALSE(Check(3).Visible());
}

TEST_F(KeypadScreen, FunctionKeysPassAndKIsItsOwn) {
  Open();
  Type(Key::K);
  RunFor(50);
  EXPECT_EQ(TakeCommands(), Words{"VR(122)=4"});
  TypeF(4);
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  Type(Key::K);
  EXPECT_EQ(CurrentForm(), "UserForm") << "K opens it from everywhere else";
  TypeF(11);
  RunFor(100);
  EXPECT_EQ(System.ActiveSlot, 2) << "the keypad does not hold the slot";
}

TEST_F(KeypadScreen, KeysWithoutAnEntryDoNothing) {
  Open();
  for (const Key key : {Key::B, Key::E, Key::F, Key::P}) Type(key);
  RunFor(100);
  EXPECT_TRUE(TakeCommands().empty());
}

}  // namespace
}  // namespace torvane::tests

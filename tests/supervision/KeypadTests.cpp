// The user keypad without its screen.
#include <gtest/gtest.h>

#include "Bench.h"
#include "platform/RuntimeFault.h"
#include "supervision/Keypad.h"

namespace torvane::supervision {

using namespace tests;
namespace {

class KeypadTest : public ::testing::Test, public Bench {
 protected:
  KeypadTest() {
    Temp.Put("Keypad.cfg",
             "1,M,0,PUSH,VR(100),5\r\n"
             "2,L,0,OFF,ON,VR(101),1,7\r\n"
             "3,M,1,IDLE,VR(102),1\r\n"
             "4,L,1,DARK,LIGHT,VR(103),1,0\r\n"
             "******\r\n");
  }
  void Load() {
    Keys.LoadKeypad();
    for (int key = 1; key <= core::KeypadKeys; ++key) EXPECT_TRUE(Keys.ReadValue(key));
    Sent();
  }
  /// Assignments that went out.
  Lines Assigned() {
    Lines lines;
    for (const auto& line : Sent()) {
      if (line.find('?') == std::string::npos) lines.push_back(line);
    }
    return lines;
  }

  Keypad Keys{System, Files, Trio};
};

TEST_F(KeypadTest, EveryActiveKeyIsAskedForMomentaryOnesToo) {
  Keys.LoadKeypad();
  for (int key = 1; key <= core::KeypadKeys; ++key) (void)Keys.ReadValue(key);
  const Lines sent = Sent();
  ASSERT_EQ(sent.size(), 4U);
  for (std::size_t i = 0; i < sent.size(); ++i) {
    EXPECT_NE(sent[i].find("VR(10" + std::to_string(i) + ")"), std::string::npos) << sent[i];
  }
}

TEST_F(KeypadTest, CaptionsCarryTheLettersWithTwoBlanks) {
  Load();
  EXPECT_EQ(Keys.Look(1).Caption, "(&A)  PUSH");
  EXPECT_EQ(Keys.Look(2).Caption, "(&B)  OFF");
  EXPECT_EQ(Keys.Look(16).Caption, "(&P)");
  EXPECT_FALSE(Keys.Look(16).Active);
}

TEST_F(KeypadTest, AButtonSendsItsValueEveryTime) {
  Load();
  Keys.Press(1);
  Keys.Press(1);
  EXPECT_EQ(Assigned(), (Lines{"VR(100)=5", "VR(100)=5"}));
}

TEST_F(KeypadTest, AToggleGoesByTheLastValueReadOrSent) {
  Controller.Values["VR(101)"] = "1";
  Load();
  EXPECT_TRUE(Keys.Look(2).On);
  EXPECT_EQ(Keys.Look(2).Caption, "(&B)  ON");
  EXPECT_TRUE(Keys.Flip(2));
  EXPECT_FALSE(Keys.Look(2).On);
  EXPECT_TRUE(Keys.Flip(2));
  EXPECT_TRUE(Keys.Look(2).On);
  EXPECT_EQ(Assigned(), (Lines{"VR(101)=7", "VR(101)=1"}));
}

TEST_F(KeypadTest, AToggleThatHoldsNeitherValueShowsOffAndSendsOn) {
  Controller.Values["VR(101)"] = "33";
  Load();
  EXPECT_FALSE(Keys.Look(2).On);
  EXPECT_EQ(Keys.Look(2).Caption, "(&B)  OFF");
  EXPECT_TRUE(Keys.Flip(2));
  EXPECT_EQ(Assigned(), Lines{"VR(101)=1"});
}

TEST_F(KeypadTest, AForbiddenKeySendsNothingAndAForbiddenToggleIsToBeReadAgain) {
  Load();
  System.State.MachineRunning = true;
  EXPECT_FALSE(Keys.Allowed(3));
  Keys.Press(3);
  EXPECT_FALSE(Keys.Flip(4));
  EXPECT_FALSE(Keys.Look(4).On);
  EXPECT_TRUE(Keys.Allowed(2));
  EXPECT_TRUE(Keys.Flip(2));
  EXPECT_EQ(Assigned(), Lines{"VR(101)=1"});
  System.State.MachineRunning = false;
  Keys.Press(3);
  EXPECT_EQ(Assigned(), Lines{"VR(102)=1"});
}

TEST_F(KeypadTest, AButtonIsNoToggleAndNoKeyIsNeither) {
  Load();
  Keys.Press(2);
  EXPECT_TRUE(Keys.Flip(1));
  Keys.Press(9);
  EXPECT_TRUE(Keys.Flip(9));
  EXPECT_EQ(Assigned(), Lines{});
}

TEST_F(KeypadTest, TheFileIsReadAfreshAndAKeyRemembersWhatItsVariableHeld) {
  Controller.Values["VR(101)"] = "1";
  Load();
  Temp.Put("Keypad.cfg", "2,L,0,OFF,ON,VR(101),1,0\n5,M,0,NEW,VR(9),1\n");
  Keys.LoadKeypad();
  EXPECT_FALSE(Keys.Look(1).Active);
  EXPECT_TRUE(Keys.Look(5).Active);
  EXPECT_TRUE(Keys.Look(2).On);
}

TEST_F(KeypadTest, WithoutItsFileItIsAFaultThatNamesIt) {
  Files.DeleteFile("C:\\Keypad.cfg");
  try {
    Keys.LoadKeypad();
    FAIL() << "no fault";
  } catch (const platform::RuntimeFault& fault) {
    EXPECT_EQ(fault.Path(), "C:\\Keypad.cfg");
  }
}

}  // namespace
}  // namespace torvane::supervision

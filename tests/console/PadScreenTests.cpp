// The number pad and the key pad, worked by typed keys and by their own keys.
#include "ConsoleFixture.h"
#include "console/EntryMode.h"
#include "toolkit/EntryBox.h"

namespace torvane::tests {
namespace {

namespace EntryMode = console::EntryMode;
using toolkit::Key;

class PadScreens : public ConsoleFixture {
 protected:
  PadScreens() { Start(); }

  [[nodiscard]] console::Pads& Pads() { return TheConsole->Screens().EntryPads(); }
  [[nodiscard]] toolkit::EntryBox& Box() {
    const bool number = Shows("NumberForm");
    return *Control<toolkit::EntryBox>(number ? "NumberForm" : "KeyboardForm",
                                       number ? "NumberBox" : "KeyboardBox");
  }
  /// A key of the pad that shows.
  void Press(const std::string& name) {
    auto* button =
        Control<toolkit::Button>(Shows("NumberForm") ? "NumberForm" : "KeyboardForm", name);
    ASSERT_NE(button, nullptr) << name;
    EXPECT_TRUE(button->Press()) << name;
  }
  void ThenPress(const std::string& name) {
    Then([this, name] { Press(name); });
  }
  /// What the number pad gives for a text typed over the initial one.
  double Typed(const std::string& text) {
    ThenTypeText(text);
    ThenType(Key::Enter);
    return Pads().EnterNumber("1", EntryMode::Arithmetic);
  }
};

TEST_F(PadScreens, ADigitReplacesTheWholeInitialText) {
  Then([this] {
    EXPECT_TRUE(Shows("NumberForm"));
    EXPECT_EQ(Box().Text(), "1250");
    EXPECT_EQ(Box().Cursor(), 0);
    EXPECT_EQ(Box().SelectionLength(), 4);
    EXPECT_EQ(Focus("NumberForm"), "NumberBox");
    TypeText("7");
    EXPECT_EQ(Box().Text(), "7");
    EXPECT_EQ(Box().Cursor(), 1);
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterNumber(" 1250 ", EntryMode::Arithmetic), 7);
  EXPECT_FALSE(Shows("NumberForm"));
}

TEST_F(PadScreens, WhatIsTypedIsWorkedOutFromLeftToRight) {
  EXPECT_EQ(Typed("1250/2+13.5"), 638.5);
  EXPECT_EQ(Typed("2+3*4"), 20);
  EXPECT_EQ(Typed("2+(3*4)"), 14);
  EXPECT_EQ(Typed("-5*-2"), 10);
}

TEST_F(PadScreens, AFaultyExpressionGivesZeroWithoutAMessage) {
  EXPECT_EQ(Typed("(1+2"), 0);
  EXPECT_EQ(Typed("5/0"), 0);
  EXPECT_FALSE(Shows("WarningForm"));
}

TEST_F(PadScreens, AnEmptyBoxGivesZero) {
  ThenPress("DeleteButton(0)");
  ThenPress("OkButton");
  EXPECT_EQ(Pads().EnterNumber("12", EntryMode::Digits), 0);
}

TEST_F(PadScreens, CancelGivesTheValueOfTheInitialText) {
  ThenTypeText("99");
  ThenPress("ExitButton");
  EXPECT_EQ(Pads().EnterNumber("12.5", EntryMode::Arithmetic), 12.5);
  ThenTypeText("X");
  ThenPress("ExitButton");
  EXPECT_EQ(Pads().EnterText(" PLATE ", EntryMode::Name), "PLATE");
}

TEST_F(PadScreens, TheNumberPadHasItsKeysInOrder) {
  const std::string characters = "0123456789.+-*/()";
  Then([this, characters] {
    for (std::size_t i = 0; i < characters.size(); ++i) {
      const std::string name = "NumberButton(" + std::to_string(i) + ")";
      EXPECT_EQ(Caption("NumberForm", name), std::string(1, characters[i]));
      Press(name);
      EXPECT_EQ(Focus("NumberForm"), "NumberBox") << name;
    }
    EXPECT_EQ(Control<toolkit::Button>("NumberForm", "NumberButton(17)"), nullptr);
    EXPECT_EQ(Caption("NumberForm", "CursorButton(1)"), "<<<");
    EXPECT_EQ(Caption("NumberForm", "CursorButton(2)"), ">>>");
    EXPECT_EQ(Caption("NumberForm", "DeleteButton(0)"), "&CLEAR ALT+C");
    EXPECT_EQ(Caption("NumberForm", "DeleteButton(1)"), "DEL");
    EXPECT_EQ(Caption("NumberForm", "OkButton"), "OK");
    EXPECT_EQ(Caption("NumberForm", "ExitButton"), "CANCEL");
    EXPECT_EQ(Control<toolkit::Panel>("NumberForm", "NumberPanel(0)")->Caption(), "NUMBER PAD");
    EXPECT_EQ(Box().Text(), characters);
    Press("ExitButton");
  });
  (void)Pads().EnterNumber("", EntryMode::Arithmetic);
}

TEST_F(PadScreens, TheKeyPadHasItsKeysInOrder) {
  const std::string characters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ +-=%().!&#";
  Then([this, characters] {
    for (std::size_t i = 1; i < characters.size(); ++i) {
      const std::string name = "KeyButton(" + std::to_string(i) + ")";
      std::string caption(1, characters[i]);
      if (characters[i] == ' ') caption = "SPACE";
      if (characters[i] == '&') caption = "&&";
      EXPECT_EQ(Caption("KeyboardForm", name), caption);
      Press(name);
    }
    EXPECT_EQ(Control<toolkit::Button>("KeyboardForm", "KeyButton(47)"), nullptr);
    EXPECT_EQ(Caption("KeyboardForm", "ShiftButton"), "CAPS LOCK");
    EXPECT_EQ(Control<toolkit::Panel>("KeyboardForm", "KeyboardPanel(0)")->Caption(), "KEY PAD");
    EXPECT_EQ(Box().Text(), "123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ+-=%().!&#");
    Press("DeleteButton(0)");
    Press("KeyButton(0)");
    EXPECT_EQ(Box().Text(), "0");
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterText("", 80), "0");
}

TEST_F(PadScreens, CapsLockIsOnEachTimeThePadComesUp) {
  Then([this] {
    EXPECT_TRUE(Down("KeyboardForm", "ShiftButton"));
    Press("KeyButton(10)");
    TypeText("b");
    Press("ShiftButton");
    EXPECT_FALSE(Down("KeyboardForm", "ShiftButton"));
    EXPECT_EQ(Focus("KeyboardForm"), "KeyboardBox");
    Press("KeyButton(10)");
    TypeText("B");
    Press("KeyButton(36)");
    EXPECT_EQ(Box().Text(), "ABab ");
    Press("KeyButton(45)");
    EXPECT_EQ(Box().Text(), "ABab&");
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterText("", EntryMode::Name), "ABab&");
  Then([this] {
    EXPECT_TRUE(Down("KeyboardForm", "ShiftButton"));
    Press("ExitButton");
  });
  (void)Pads().EnterText("", EntryMode::Name);
}

TEST_F(PadScreens, ARejectedKeyBeepsAndEndsTheTextAtTheCursor) {
  Then([this] {
    Box().SetCursor(2);
    const int beeps = Desk->Beeps();
    TypeText("A");
    EXPECT_EQ(Desk->Beeps(), beeps + 1);
    EXPECT_EQ(Box().Text(), "12");
    EXPECT_EQ(Box().Cursor(), 3);
    TypeText("9");
    EXPECT_EQ(Box().Text(), "129");
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterNumber("12345", EntryMode::Digits), 129);
}

TEST_F(PadScreens, APadKeyOutsideTheModeIsRejectedAlike) {
  Then([this] {
    Press("NumberButton(10)");
    EXPECT_EQ(Box().Text(), "");
    Press("NumberButton(3)");
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterNumber("12345", EntryMode::Digits), 3);
}

TEST_F(PadScreens, ASpaceNeverStartsANameAndAFullNameTakesNothingMore) {
  const std::string full(32, 'N');
  Then([this, full] {
    TypeText(" ");
    EXPECT_EQ(Box().Text(), "");
    TypeText(full);
    EXPECT_EQ(Box().Text(), full);
    const int beeps = Desk->Beeps();
    TypeText("X");
    EXPECT_EQ(Desk->Beeps(), beeps + 1);
    EXPECT_EQ(Box().Text(), full) << "rejected at the end, where nothing stands behind the cursor";
    Box().SetCursor(0);
    Box().SetSelectionLength(1);
    TypeText("X");
    EXPECT_EQ(Box().Text(), "X" + full.substr(1));
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterText("", EntryMode::Name), "X" + full.substr(1));
}

TEST_F(PadScreens, ASpaceAtTheEndGoesWithTheNextKeyAndOneInTheMiddleStays) {
  Then([this] {
    TypeText("AB ");
    EXPECT_EQ(Box().Text(), "AB ");
    TypeText("C");
    EXPECT_EQ(Box().Text(), "ABC") << "the text is trimmed before a key goes in";
    Press("CursorButton(1)");
    TypeText(" ");
    EXPECT_EQ(Box().Text(), "AB C");
    EXPECT_EQ(Box().Cursor(), 3);
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterText("", EntryMode::Name), "AB C");
}

TEST_F(PadScreens, CursorAndDeleteKeys) {
  Then([this] {
    Press("CursorButton(2)");
    EXPECT_EQ(Box().Cursor(), 4) << "a selection collapses to its end";
    Press("CursorButton(1)");
    EXPECT_EQ(Box().Cursor(), 3);
    Type(Key::Backspace);
    EXPECT_EQ(Box().Text(), "ABD");
    EXPECT_EQ(Box().Cursor(), 2);
    Type(Key::Delete);
    EXPECT_EQ(Box().Text(), "AB");
    Press("DeleteButton(1)");
    EXPECT_EQ(Box().Text(), "A");
    TypeText(" B ");
    Type(Key::Backspace);
    EXPECT_EQ(Box().Text(), "AB") << "Backspace took the blank";
    toolkit::KeyStroke clear(Key::C);
    clear.Alt = true;
    clear.Character = 0;
    Desk->TypeKey(clear);
    EXPECT_EQ(Box().Text(), "");
    TypeText("C");
    EXPECT_EQ(Box().Text(), "C") << "without Alt it is a letter";
    Press("ExitButton");
  });
  (void)Pads().EnterText("ABCD", EntryMode::Name);
}

TEST_F(PadScreens, APadHandsOnNoGlobalKeyAndLeavesCurrentFormAlone) {
  TypeF(4);
  Then([this] {
    EXPECT_EQ(CurrentForm(), "StatusMenuForm");
    for (int key = 1; key <= 12; ++key) TypeF(key);
    Type(Key::Escape);
    EXPECT_EQ(Front(), "KeyboardForm");
    EXPECT_FALSE(Shows("ShutdownForm") || Shows("MessageForm") || Shows("ProgramForm"));
    TypeText("K");
    EXPECT_EQ(Box().Text(), "K");
    Press("OkButton");
  });
  EXPECT_EQ(Pads().EnterText("", EntryMode::Name), "K");
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  EXPECT_EQ(Front(), "StatusMenuForm");
}

}  // namespace
}  // namespace torvane::tests

// The main screen: its controls, its keys in both states, its buttons.
#include <fstream>

#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using core::ColourName;
using toolkit::Key;

class MainScreen : public ConsoleFixture {
 protected:
  MainScreen() { Start(); }

  toolkit::Button& Button(const std::string& name) {
    return *Control<toolkit::Button>("FrontEnd", name);
  }
  std::string Caption(const std::string& name) { return Button(name).Caption(); }
  bool Seen(const std::string& name) {
    auto* control = Screens().Find("FrontEnd")->Window().Find(name);
    return control != nullptr && control->OnShow();
  }
  std::string Panel(const std::string& name) {
    return Control<toolkit::Panel>("FrontEnd", name)->Caption();
  }
  /// How the two program buttons stand: "1", "2", or something wrong.
  std::string SlotShown() {
    return std::string(Down("FrontEnd", "ProgramButton(1)") ? "1" : "") +
           (Down("FrontEnd", "ProgramButton(2)") ? "2" : "");
  }
};

TEST_F(MainScreen, CaptionsToTheLetter) {
  EXPECT_EQ(Panel("HeaderPanel"), "TORVANE 32");
  EXPECT_EQ(Caption("MainButton(1)"), "    PROGRAM     F1");
  EXPECT_EQ(Caption("MainButton(2)"), "       LASER         F2");
  EXPECT_EQ(Caption("MainButton(3)"), "    MACHINE       F3");
  EXPECT_EQ(Caption("MainButton(4)"), "     STATUS        F4");
  EXPECT_EQ(Caption("MainButton(5)"), "    KEYPAD     F5");
  EXPECT_EQ(Caption("MainButton(6)"), "         FILE           F6");
  EXPECT_EQ(Caption("MainButton(7)"), "    GRAPHICS     F7");
  EXPECT_EQ(Caption("ProgramButton(1)"), "PROGRAM 1   F10");
  EXPECT_EQ(Caption("ProgramButton(2)"), "PROGRAM 2   F11");
  EXPECT_EQ(Caption("MessageButton"), "MESSAGES  F9");
  EXPECT_EQ(Caption("ShutdownButton"), " SHUTDOWN   F12");
  EXPECT_EQ(Caption("GraphicsButton(1)"), "&REDRAW");
  EXPECT_EQ(Caption("GraphicsButton(2)"), "&ZOOM IN");
  EXPECT_EQ(Caption("GraphicsButton(3)"), "ZOOM &OUT");
  EXPECT_EQ(Caption("GraphicsButton(4)"), "&PAN");
  EXPECT_EQ(Caption("KerfButton"), "SHOW &KERF");
  EXPECT_EQ(Caption("LimitsButton"), "SHOW &LIMITS");
}

TEST_F(MainScreen, FiguresOfNormalWork) {
  const char* labels[] = {"X", "Y", "Z", "T", "F", "F"};
  for (int i = 1; i <= 6; ++i) {
    const std::string number = "(" + std::to_string(i) + ")";
    EXPECT_EQ(LabelText("FrontEnd", "PositionLabel" + number), labels[i - 1]);
    const bool shown = i <= 3 || i == 6;
    EXPECT_EQ(Seen("PositionLabel" + number), shown) << i;
    EXPECT_EQ(Seen("PositionText" + number), shown) << i;
  }
  EXPECT_EQ(LabelText("FrontEnd", "PositionText(1)"), "0.0");
  EXPECT_EQ(LabelText("FrontEnd", "PositionText(6)"), "0");
}

TEST_F(MainScreen, ColoursOfItsGroups) {
  const auto expect = [this](const std::string& name, ColourName back, ColourName fore) {
    auto* control = Screens().Find("FrontEnd")->Window().Find(name);
    ASSERT_NE(control, nullptr) << name;
    EXPECT_EQ(control->Background(), System.Colours[back]) << name;
    EXPECT_EQ(control->Foreground(), System.Colours[fore]) << name;
  };
  expect("HeaderPanel", ColourName::HeaderBackground, ColourName::HeaderText);
  expect("MainPanel", ColourName::PanelBackground, ColourName::PanelText);
  for (const char* name : {"MainButton(1)", "GraphicsButton(4)", "PathButton(6)",
                           "ProgramButton(2)", "ShutdownButton", "KerfButton"})
    expect(name, ColourName::GeneralButtons, ColourName::GeneralButtonText);
  expect("MessageButton", ColourName::OkMessageButton, ColourName::OkMessageButtonText);
  for (const char* name : {"TextPanel", "StatusPanel"})
    expect(name, ColourName::TextBackground, ColourName::Text);
  expect("PositionText(1)", ColourName::StatusBackground, ColourName::StatusPositionText);
  expect("PositionText(6)", ColourName::StatusBackground, ColourName::StatusFeedText);
  EXPECT_EQ(Screens().Find("FrontEnd")->Window().Background(),
            System.Colours[ColourName::PlotBackground]);
}

TEST_F(MainScreen, AfterAnyButtonTypingGoesToTheCanvas) {
  for (const char* name : {"MainButton(2)", "MainButton(3)", "MainButton(5)", "MainButton(6)",
                           "ProgramButton(1)", "ProgramButton(2)"}) {
    Button(name).SetFocus();
    Button(name).Press();
    RunFor(100);
    EXPECT_EQ(Focus("FrontEnd"), "PlotBox(" + std::to_string(System.ActiveSlot.Number()) + ")")
        << name;
  }
  TypeF(4);
  EXPECT_TRUE(Shows("StatusMenuForm"));
}

TEST_F(MainScreen, FiguresHandTheFocusBack) {
  Button("MainButton(4)").SetFocus();
  Click(*Control<toolkit::Label>("FrontEnd", "PositionText(1)"));
  EXPECT_EQ(Focus("FrontEnd"), "PlotBox(1)");
}

TEST_F(MainScreen, TheEighthFunctionKeyDoesNothing) {
  TypeF(8);
  EXPECT_EQ(Screens().VisibleNames(), std::vector<std::string>{"FrontEnd"});
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(MainScreen, MainButtonsOpenTheirScreens) {
  Button("MainButton(1)").Press();
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Front(), "ProgramForm");
  Button("MainButton(4)").Press();
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  Button("MessageButton").Press();
  EXPECT_EQ(CurrentForm(), "MessageForm");
  EXPECT_EQ(Front(), "MessageForm");
}

TEST_F(MainScreen, LockedOnlyMessagesAndShutdownAnswer) {
  System.Console.FormsLocked = true;
  Lines.clear();
  for (const int key : {1, 4, 7, 10, 11}) TypeF(key);
  Type(Key::K);
  for (int i = 1; i <= 7; ++i) Button("MainButton(" + std::to_string(i) + ")").Press();
  Button("ProgramButton(2)").Press();
  EXPECT_EQ(Screens().VisibleNames(), std::vector<std::string>{"FrontEnd"});
  EXPECT_FALSE(System.Console.PlotKeysActive);
  EXPECT_EQ(SlotShown(), "1");
  EXPECT_TRUE(TakeCommands().empty());
  TypeF(9);
  EXPECT_TRUE(Shows("MessageForm"));
  Then([this] {
    EXPECT_TRUE(Shows("ShutdownForm"));
    Type(Key::C);
  });
  TypeF(12);
  EXPECT_TRUE(Session.Events.empty());
}

TEST_F(MainScreen, TheGraphicsStateOpensAndCloses) {
  TypeF(7);
  EXPECT_TRUE(System.Console.PlotKeysActive);
  EXPECT_EQ(System.Console.PlotKeyMode, 0);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_EQ(Panel("TextPanel"), "GRAPHICS");
  EXPECT_EQ(Panel("StatusPanel"), "");
  EXPECT_EQ(Caption("ShutdownButton"), "E&XIT");
  EXPECT_TRUE(Seen("GraphicsButton(1)") && Seen("KerfButton") && Seen("LimitsButton"));
  EXPECT_FALSE(Seen("MainButton(1)") || Seen("PositionBox") || Seen("ProgramButton(1)") ||
               Seen("ProgramButton(2)") || Seen("PathButton(1)"));
  Type(Key::X);
  EXPECT_FALSE(System.Console.PlotKeysActive);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_EQ(Caption("ShutdownButton"), " SHUTDOWN   F12");
  EXPECT_TRUE(Seen("MainButton(1)") && Seen("PositionBox") && Seen("ProgramButton(1)"));
  EXPECT_FALSE(Seen("GraphicsButton(1)"));
}

TEST_F(MainScreen, FunctionKeysAreDeadInTheGraphicsStateButF9) {
  TypeF(7);
  Lines.clear();
  for (const int key : {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12}) TypeF(key);
  Type(Key::Escape);
  EXPECT_EQ(Screens().VisibleNames(), std::vector<std::string>{"FrontEnd"});
  EXPECT_TRUE(System.Console.PlotKeysActive);
  EXPECT_TRUE(TakeCommands().empty());
  TypeF(9);
  EXPECT_EQ(Front(), "MessageForm");
}

TEST_F(MainScreen, KFlipsTheKerfAndLTheLimitsInTheGraphicsState) {
  TypeF(7);
  const bool kerf = Down("FrontEnd", "KerfButton");
  const bool limits = Down("FrontEnd", "LimitsButton");
  Type(Key::K);
  EXPECT_NE(Down("FrontEnd", "KerfButton"), kerf);
  EXPECT_EQ(System.Plot.KerfShown, !kerf);
  Type(Key::L);
  EXPECT_NE(Down("FrontEnd", "LimitsButton"), limits);
  Type(Key::K);
  Type(Key::L);
  EXPECT_EQ(Down("FrontEnd", "KerfButton"), kerf);
  EXPECT_EQ(Down("FrontEnd", "LimitsButton"), limits);
  EXPECT_EQ(Focus("FrontEnd"), "PlotBox(1)");
}

TEST_F(MainScreen, KeysOfDisabledGraphicsButtonsDoNothing) {
  Main().Modes().EnterGraphics(false);
  const bool kerf = Down("FrontEnd", "KerfButton");
  const bool limits = Down("FrontEnd", "LimitsButton");
  for (const Key key : {Key::K, Key::L, Key::R, Key::Z, Key::O, Key::P}) Type(key);
  EXPECT_EQ(Down("FrontEnd", "KerfButton"), kerf);
  EXPECT_EQ(Down("FrontEnd", "LimitsButton"), limits);
}

TEST_F(MainScreen, ShutdownInAModeOnlyCancelsTheMode) {
  for (const std::int16_t mode : {std::int16_t{1}, std::int16_t{2}, std::int16_t{4}}) {
    TypeF(7);
    System.Console.PlotKeyMode = mode;
    Button("ShutdownButton").Press();
    EXPECT_TRUE(System.Console.PlotKeysActive) << mode;
    EXPECT_EQ(System.Console.PlotKeyMode, 0) << mode;
    EXPECT_FALSE(Shows("ShutdownForm"));
    System.Console.PlotKeyMode = mode;
    Type(Key::C);
    EXPECT_TRUE(System.Console.PlotKeysActive) << mode;
    EXPECT_EQ(System.Console.PlotKeyMode, 0) << mode;
    Button("ShutdownButton").Press();
    EXPECT_FALSE(System.Console.PlotKeysActive) << mode;
  }
}

TEST_F(MainScreen, RedrawStaysInTheGraphicsState) {
  Select("STAR");
  TypeF(7);
  System.Views[1].ViewZoomed = true;
  Type(Key::R);
  EXPECT_FALSE(System.Views[1].ViewZoomed);
  EXPECT_TRUE(System.Console.PlotKeysActive);
  EXPECT_EQ(Panel("TextPanel"), "GRAPHICS");
  EXPECT_TRUE(Button("GraphicsButton(1)").Enabled());
}

TEST_F(MainScreen, OpenScreensComeBackInTheirOrderAfterAPressOnTheMainScreen) {
  TypeF(4);
  Type(Key::P);
  ASSERT_EQ(CurrentForm(), "XYPositionForm");
  RunFor(100);
  Click(Main().PlotBox(1));
  EXPECT_EQ(Front(), "XYPositionForm") << "a press on the plot brings them back too";
  EXPECT_EQ(CurrentForm(), "XYPositionForm");
  Lines.clear();
  Button("ShutdownButton").SetFocus();
  Click(*Control<toolkit::Label>("FrontEnd", "PositionText(1)"));
  Button("ProgramButton(1)").Press();
  EXPECT_EQ(Front(), "XYPositionForm");
  EXPECT_EQ(Screens().VisibleNames(),
            (std::vector<std::string>{"FrontEnd", "StatusMenuForm", "XYPositionForm"}));
  EXPECT_EQ(Times("? VR(92)"), 0) << "a screen that is only raised does not read";
}

TEST_F(MainScreen, TheCanvasOfTheSlotInForceIsTheOneThatShows) {
  EXPECT_TRUE(Main().PlotBox(1).Visible());
  EXPECT_FALSE(Main().PlotBox(2).Visible());
  TypeF(11);
  EXPECT_FALSE(Main().PlotBox(1).Visible());
  EXPECT_TRUE(Main().PlotBox(2).Visible());
  EXPECT_EQ(Focus("FrontEnd"), "PlotBox(2)");
}

TEST_F(MainScreen, ItsTextLineIsBlankWhenItGoes) {
  TypeF(7);
  EXPECT_EQ(Panel("TextPanel"), "GRAPHICS");
  std::string text = "(not asked)";
  auto* panel = Control<toolkit::Panel>("FrontEnd", "TextPanel");
  Screens().Unload("FrontEnd");
  text = panel->Caption();
  EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace torvane::tests

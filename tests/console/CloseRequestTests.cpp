// The window system asks to close the window: the console stays until its own question is answered.
#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class CloseRequest : public ConsoleFixture {
 protected:
  /// What a press on the window's close key does.
  void CloseWindow() { Desk->close(); }
};

TEST_F(CloseRequest, AsksAsF12Does) {
  Start();
  Then([this] {
    EXPECT_EQ(Front(), "ShutdownForm");
    Type(Key::C);
  });
  CloseWindow();
  RunFor(200);
  EXPECT_EQ(Front(), "FrontEnd");
  EXPECT_TRUE(Desk->isVisible());
  EXPECT_TRUE(Session.Events.empty());
}

TEST_F(CloseRequest, ASecondOneIsIgnoredWhileTheQuestionStands) {
  Start();
  CloseWindow();
  for (int i = 0; i < 3; ++i) {
    Then([this] {
      EXPECT_EQ(Front(), "ShutdownForm");
      CloseWindow();
    });
  }
  Then([this] { EXPECT_TRUE(Desk->isVisible()); });
  ThenType(Key::C);
  RunFor(500);
  EXPECT_EQ(Front(), "FrontEnd");
  EXPECT_FALSE(Shows("ShutdownForm"));
  EXPECT_TRUE(Desk->isVisible());
  EXPECT_TRUE(Session.Events.empty());
}

TEST_F(CloseRequest, DuringTheSplashDoesNothing) {
  bool asked = false;
  Loop.After(1000, [&] {
    ASSERT_TRUE(Shows("SplashForm"));
    CloseWindow();
  });
  Loop.After(1500, [&] {
    asked = Shows("ShutdownForm");
    EXPECT_TRUE(Shows("SplashForm"));
    EXPECT_TRUE(Desk->isVisible());
  });
  Start();
  EXPECT_FALSE(asked);
  EXPECT_EQ(Front(), "FrontEnd");
}

TEST_F(CloseRequest, LeavesTheGraphicsStateFirst) {
  Start();
  TypeF(7);
  System.Console.PlotKeyMode = 1;
  Then([this] {
    EXPECT_FALSE(System.Console.PlotKeysActive);
    EXPECT_EQ(Front(), "ShutdownForm");
    Type(Key::C);
  });
  CloseWindow();
  RunFor(200);
  EXPECT_EQ(Caption("FrontEnd", "ShutdownButton"), " SHUTDOWN   F12");
}

TEST_F(CloseRequest, DuringTheShutdownDoesNothing) {
  Start();
  Then([this] { Type(Key::O); });
  CloseWindow();
  RunFor(200);
  EXPECT_TRUE(System.ShuttingDown);
  const auto events = Session.Events;
  CloseWindow();
  RunFor(200);
  EXPECT_EQ(Session.Events, events);
}

TEST_F(CloseRequest, TheKeysAreDeadOnceItShutsDown) {
  Start();
  // The machine does not answer any more, so that the last exchanges take their time.
  Then([this] {
    Controller->OnLine([this](std::string_view) {
      // The first of the last exchanges: SHUTTING DOWN ! stands.
      EXPECT_EQ(LabelText("ShutdownForm", "ShutdownLabel"), "SHUTTING DOWN !");
      for (const Key key : {Key::O, Key::S, Key::C, Key::F12, Key::Enter}) Type(key);
    });
    Type(Key::O);
  });
  CloseWindow();
  RunFor(500);
  EXPECT_EQ(Session.Events, (std::vector<std::string>{"end session", "end process"}))
      << "one end, the one that was chosen first";
}

}  // namespace
}  // namespace torvane::tests

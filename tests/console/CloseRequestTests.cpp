// The window system asks to close the console's window.
#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

struct CloseRequests : ConsoleFixture {
  /// As the program does it: a job of its own.
  void CloseWindow() {
    Loop.Post([this] { TheConsole->CloseRequested(); });
    RunFor(50);
  }
};

TEST_F(CloseRequests, AskTheShutdownQuestion) {
  Start();
  Then([this] {
    EXPECT_TRUE(Shows("ShutdownForm"));
    Type(Key::C);
  });
  CloseWindow();
  EXPECT_FALSE(Shows("ShutdownForm"));
  EXPECT_TRUE(Shows("FrontEnd"));
  EXPECT_TRUE(Session.Events.empty());
}

TEST_F(CloseRequests, WhileTheQuestionStandsAreIgnored) {
  Start();
  Then([this] {
    TheConsole->CloseRequested();
    TheConsole->CloseRequested();
    EXPECT_EQ(Screens().VisibleNames().size(), 2U);
    Type(Key::C);
  });
  CloseWindow();
  EXPECT_FALSE(Shows("ShutdownForm")) << "one question, one answer";
  EXPECT_EQ(Desk->ModalForm(), nullptr);
}

TEST_F(CloseRequests, InTheSplashDoNothing) {
  TheConsole->CloseRequested();
  EXPECT_FALSE(Shows("ShutdownForm"));
  Start();
  EXPECT_TRUE(Shows("FrontEnd"));
}

TEST_F(CloseRequests, InTheGraphicsStateLeaveThatFirst) {
  Start();
  TypeF(7);
  ASSERT_TRUE(System.Console.PlotKeysActive);
  Then([this] {
    EXPECT_TRUE(Shows("ShutdownForm"));
    EXPECT_FALSE(System.Console.PlotKeysActive);
    Type(Key::C);
  });
  CloseWindow();
  EXPECT_FALSE(System.Console.PlotKeysActive);
  EXPECT_TRUE(Shows("FrontEnd"));
}

TEST_F(CloseRequests, AfterTheEndDoNothing) {
  Start();
  ThenType(Key::O);
  CloseWindow();
  EXPECT_EQ(Session.Events, (std::vector<std::string>{"end session", "end process"}));
  CloseWindow();
  EXPECT_FALSE(Shows("ShutdownForm"));
  EXPECT_FALSE(Shows("FrontEnd"));
}

TEST_F(CloseRequests, TheKeysAreDeadOnceItShutsDown) {
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
  EXPECT_EQ(Session.Events, (std::vector<std::string>{"end session", "end process"}))
      << "one end, the one that was chosen first";
}

}  // namespace
}  // namespace torvane::tests

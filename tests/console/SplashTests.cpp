// What stands while the program starts.
#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

class Splash : public ConsoleFixture {};

TEST_F(Splash, StandsForFourSecondsAndTakesNoKeys) {
  bool early = false;
  bool late = false;
  Loop.After(200, [&] {
    early = Shows("SplashForm");
    EXPECT_EQ(LabelText("SplashForm", "TitlePanel"), "Torvane 32");
    EXPECT_EQ(LabelText("SplashForm", "VersionPanel"), "QX480 - TRIO");
    EXPECT_EQ(CurrentForm(), "");
    for (const int key : {1, 4, 7, 9, 12}) TypeF(key);
    EXPECT_EQ(Screens().VisibleNames(), std::vector<std::string>{"SplashForm"});
  });
  Loop.After(3900, [&] { late = Shows("SplashForm"); });
  Start();
  EXPECT_TRUE(early);
  EXPECT_TRUE(late);
  EXPECT_FALSE(Shows("SplashForm"));
  EXPECT_EQ(Front(), "FrontEnd");
  EXPECT_GE(Loop.NowMs(), 4000);
  RunFor(100);
  EXPECT_GE(Times("? VR(19)"), 1) << "the main screen starts the poll";
}

TEST_F(Splash, OfflineTheMainScreenShowsZeroesAndOkColours) {
  Files->ReplaceFile("Control.cnc", "FALSE\r\nFALSE\r\n");
  Start();
  EXPECT_TRUE(SystemBoxes.empty());
  EXPECT_FALSE(Port->IsOpen());
  for (const char* name : {"PositionText(1)", "PositionText(2)", "PositionText(3)"})
    EXPECT_EQ(LabelText("FrontEnd", name), "0.0");
  EXPECT_EQ(LabelText("FrontEnd", "PositionText(6)"), "0");
  EXPECT_EQ(Control<toolkit::Button>("FrontEnd", "MessageButton")->Background(),
            System.Colours[core::ColourName::OkMessageButton]);
  ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "STAR")) << "all actions pass";
  EXPECT_TRUE(Lines.empty());
}

}  // namespace
}  // namespace torvane::tests

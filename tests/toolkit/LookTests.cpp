// What must be true of every screen's look, and its pictures when TORVANE_PICTURES names a folder.
#include <QFontInfo>
#include <QFontMetrics>
#include <cstdlib>

#include "Showcase.h"
#include "support/QtEnvironment.h"
#include "toolkit/Theme.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

struct DeskSize {
  int Width;
  int Height;
};

class EverySize : public ::testing::TestWithParam<DeskSize> {
 protected:
  QtLoop Loop;
};

TEST_P(EverySize, KeysAreAtLeastFiftySixHigh) {
  const Metrics m = Metrics::For(GetParam().Width, GetParam().Height);
  EXPECT_GE(m.KeyHeight, 56);
  EXPECT_LE(m.KeyHeight, 84);
  EXPECT_GE(m.PadKeyHeight, 56);
  EXPECT_LE(m.PadKeyHeight, m.KeyHeight);
}

TEST_P(EverySize, NothingIsCutOnTheShowcase) {
  Desk desk(Loop);
  MainShowcase main(desk);
  ControlShowcase controls(desk);
  desk.OpenWindow(GetParam().Width, GetParam().Height);
  main.Screen.Show();
  controls.Screen.Show();
  controls.Screen.FocusDefault();
  Pump(Loop, 20);
  for (Form* form : {&main.Screen, &controls.Screen}) {
    EXPECT_TRUE(desk.rect().contains(form->geometry())) << form->Name();
    for (Control* control : form->Controls()) {
      if (!control->Visible()) continue;
      EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
          << form->Name() << " " << control->Name();
      if (dynamic_cast<Button*>(control)) {
        EXPECT_GE(control->height(), 56);
      }
    }
  }
  const char* folder = std::getenv("TORVANE_PICTURES");
  if (!folder) return;
  const std::string size = std::to_string(GetParam().Width);
  controls.Screen.Hide();
  EXPECT_TRUE(desk.SavePicture(std::string(folder) + "/main-" + size + ".png"));
  controls.Screen.Show();
  PressAt(controls.Plain, 20, 20);
  EXPECT_TRUE(desk.SavePicture(std::string(folder) + "/controls-" + size + ".png"));
  ReleaseAt(controls.Plain, 20, 20);
  controls.Pick.SetFocus();
  controls.Pick.OpenList();
  EXPECT_TRUE(desk.SavePicture(std::string(folder) + "/list-" + size + ".png"));
}

INSTANTIATE_TEST_SUITE_P(Desks, EverySize,
                         ::testing::Values(DeskSize{1024, 768}, DeskSize{1280, 1024},
                                           DeskSize{1920, 1080}),
                         [](const auto& desk) { return "W" + std::to_string(desk.param.Width); });

TEST(Look, TypeGrowsWithTheDesk) {
  const Metrics low = Metrics::For(1024, 768);
  const Metrics high = Metrics::For(1920, 1080);
  for (int style = 0; style < static_cast<int>(TypeStyle::Count); ++style) {
    EXPECT_LT(low.TypeSize(static_cast<TypeStyle>(style)),
              high.TypeSize(static_cast<TypeStyle>(style)));
  }
}

TEST(Look, FiguresHaveOneWidthWhateverTheyShow) {
  const QFont font = FontOf(Metrics::For(1280, 1024), TypeStyle::Figure);
  EXPECT_EQ(FiguresWidth(font, "1111.1"), FiguresWidth(font, "8888.8"));
  EXPECT_EQ(FiguresWidth(font, "-000.0"), FiguresWidth(font, "1234.5"));
}

TEST(Look, TextIsSetInTheProportionalCut) {
  const QFontInfo used(FontOf(Metrics::For(1280, 1024), TypeStyle::Body));
  if (!used.family().endsWith("612")) GTEST_SKIP() << "B612 is not installed";
  const QFontMetrics font(FontOf(Metrics::For(1280, 1024), TypeStyle::Body));
  EXPECT_LT(font.horizontalAdvance('I'), font.horizontalAdvance('W'));
  EXPECT_LT(font.horizontalAdvance('.'), font.horizontalAdvance('0'));
}

TEST(Look, EdgesComeFromTheFace) {
  EXPECT_GT(LightEdge(0xC08000) & 0xFF, 0u);
  EXPECT_EQ(Mix(0x000000, 0xFFFFFF, 1.0), 0xFFFFFFu);
  EXPECT_EQ(Mix(0x123456, 0xFFFFFF, 0.0), 0x123456u);
  EXPECT_EQ(ToQColor(0x0000FF), QColor(255, 0, 0));
  EXPECT_NE(Rim(0x400000), 0x400000u);
}

}  // namespace
}  // namespace torvane::tests

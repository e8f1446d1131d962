// What the operator reads at a glance: the mark on the message key, figures that share their
// column, the text of the end, an empty plot, a trace that outlives a change of the window's size.
#include "ConsoleFixture.h"
#include "toolkit/PlotCanvas.h"

namespace torvane::tests {
namespace {

using core::ColourName;
using toolkit::Key;
using toolkit::KeyMark;

class Looks : public ConsoleFixture {
 protected:
  Looks() { Start(); }

  [[nodiscard]] KeyMark Mark() {
    return Control<toolkit::Button>("FrontEnd", "MessageButton")->Mark();
  }
  /// How many pixels of the active slot's canvas have a colour.
  [[nodiscard]] int Pixels(ColourName name) {
    const auto& canvas = Main().PlotBox(System.ActiveSlot).Canvas();
    int count = 0;
    for (int y = 0; y < canvas.PixelHeight(); ++y) {
      for (int x = 0; x < canvas.PixelWidth(); ++x)
        count += canvas.PixelAt(x, y) == System.Colours[name] ? 1 : 0;
    }
    return count;
  }
};

TEST_F(Looks, TheMessageKeyTellsItsStateByShape) {
  RunFor(100);
  EXPECT_EQ(Mark(), KeyMark::Good);
  Machine().RaiseError(2);
  RunFor(100);
  EXPECT_EQ(Mark(), KeyMark::Warning);
  Machine().FeedHold();
  RunFor(100);
  EXPECT_EQ(Mark(), KeyMark::Hold);
  Machine().ClearMessages();
  Machine().Release();
  RunFor(200);
  EXPECT_EQ(Mark(), KeyMark::Good);
}

TEST_F(Looks, TheFiguresShareTheirColumn) {
  const auto* box = Control<toolkit::Panel>("FrontEnd", "PositionBox");
  std::vector<int> tops;
  for (const char* index : {"1", "2", "3", "6"}) {
    const std::string end = "(" + std::string(index) + ")";
    const auto* label = Control<toolkit::Label>("FrontEnd", "PositionLabel" + end);
    const auto* text = Control<toolkit::Label>("FrontEnd", "PositionText" + end);
    EXPECT_EQ(text->width(), label->width()) << "the figure has the whole width";
    EXPECT_GE(text->y(), label->geometry().bottom()) << "below its letter";
    EXPECT_TRUE(box->rect().contains(text->geometry()));
    tops.push_back(label->y());
  }
  for (std::size_t i = 2; i < tops.size(); ++i)
    EXPECT_NEAR(tops[i] - tops[i - 1], tops[1] - tops[0], 1) << "equal shares";
  EXPECT_GT(tops.back(), box->height() / 2);
}

TEST_F(Looks, TheEndSaysSoInItsOwnColourAndEveryKeyIsDead) {
  std::string text;
  std::uint32_t ink = 0;
  bool enabled = true;
  bool answered = false;
  Controller->OnLine([&](std::string_view) {
    if (answered || !Shows("ShutdownForm")) return;
    auto* label = Control<toolkit::Label>("ShutdownForm", "ShutdownLabel");
    if (label->Text() != "SHUTTING DOWN !") return;
    answered = true;
    text = label->Text();
    ink = label->Foreground();
    enabled = Control<toolkit::Button>("ShutdownForm", "CancelButton")->Enabled();
    Type(Key::C);
    EXPECT_TRUE(Shows("ShutdownForm")) << "no way back";
  });
  ThenType(Key::O);
  TypeF(12);
  EXPECT_TRUE(answered);
  EXPECT_EQ(text, "SHUTTING DOWN !");
  EXPECT_EQ(ink, System.Colours[ColourName::BoldPanelText]);
  EXPECT_FALSE(enabled);
  EXPECT_FALSE(Session.Events.empty());
}

TEST_F(Looks, AnEmptySlotShowsAnEmptyCanvasInThePlotsBackground) {
  const auto& canvas = Main().PlotBox(1).Canvas();
  EXPECT_EQ(Pixels(ColourName::PlotBackground), canvas.PixelWidth() * canvas.PixelHeight());
  EXPECT_EQ(canvas.Background(), System.Colours[ColourName::PlotBackground]);
}

TEST_F(Looks, AChangeOfTheWindowsSizeKeepsTheTrace) {
  Select("STAR");
  Machine().CycleStart();
  RunFor(4000);
  Machine().FeedHold();
  RunFor(500);
  const int before = Pixels(ColourName::RealTimeProfiling);
  ASSERT_GT(before, 0);
  Desk->resize(1600, 1200);
  QCoreApplication::processEvents();
  EXPECT_GT(Pixels(ColourName::RealTimeProfiling), before) << "larger, and still there";
  Desk->resize(1280, 1024);
  QCoreApplication::processEvents();
  EXPECT_NEAR(Pixels(ColourName::RealTimeProfiling), before, before / 20.0);
}

TEST_F(Looks, ARedrawWipesTheTraceForGood) {
  Select("STAR");
  Machine().CycleStart();
  RunFor(4000);
  Machine().Stop();
  RunFor(500);
  TypeF(7);
  Type(Key::R);
  EXPECT_EQ(Pixels(ColourName::RealTimeProfiling), 0);
  Desk->resize(1600, 1200);
  QCoreApplication::processEvents();
  EXPECT_EQ(Pixels(ColourName::RealTimeProfiling), 0);
}

TEST_F(Looks, AKeyWithoutItsScreenIsDisabled) {
  for (const auto& [key, screen] :
       std::vector<std::pair<std::string, std::string>>{{"MainButton(1)", "ProgramForm"},
                                                        {"MainButton(2)", "LaserStatusForm"},
                                                        {"MainButton(3)", "MachineForm"},
                                                        {"MainButton(4)", "StatusMenuForm"},
                                                        {"MainButton(5)", "UserForm"},
                                                        {"MainButton(6)", "FileHandleForm"}}) {
    EXPECT_EQ(Control<toolkit::Button>("FrontEnd", key)->Enabled(), Screens().Known(screen)) << key;
  }
}

TEST_F(Looks, AnOpenListStaysInsideThePlotAreaWithRowsThatAFingerHits) {
  for (const QSize size : {QSize(1024, 768), QSize(1280, 1024), QSize(1920, 1080)}) {
    Desk->resize(size);
    QCoreApplication::processEvents();
    TypeF(1);
    for (const char* name : {"DirectoryCombo", "ProgramCombo"}) {
      auto* box = Control<toolkit::PickBox>("ProgramForm", name);
      box->OpenList();
      ASSERT_TRUE(box->ListOpen());
      const toolkit::ListBox& list = box->List();
      const toolkit::Area room = Desk->WorkArea();
      EXPECT_TRUE(QRect(room.X, room.Y, room.Width, room.Height).contains(list.geometry()))
          << name << " " << size.width();
      EXPECT_GE(list.height() / list.VisibleLines(), 48);
      box->CloseList();
    }
    Type(Key::X);
  }
}

TEST_F(Looks, TheWindowHasALeastSize) {
  Desk->resize(400, 300);
  EXPECT_GE(Desk->width(), 1024);
  EXPECT_GE(Desk->height(), 768);
}

}  // namespace
}  // namespace torvane::tests

// Every screen at every size: nothing cut, nothing over anything else, keys that a finger hits, the
// state of the machine in sight.
#include <array>

#include "ConsoleFixture.h"
#include "console/MainAreas.h"
#include "toolkit/PlotCanvas.h"

namespace torvane::tests {
namespace {

struct DeskSize {
  int Width;
  int Height;
};

constexpr int LowestKey = 56;

class Layouts : public ConsoleFixture, public ::testing::WithParamInterface<DeskSize> {
 protected:
  /// The main screen at the size of the parameter.
  void Open() {
    Start();
    Desk->resize(GetParam().Width, GetParam().Height);
    QCoreApplication::processEvents();
    ASSERT_EQ(Desk->Measures().DeskWidth, GetParam().Width);
  }
  static void Check(toolkit::Form& form) {
    EXPECT_TRUE(form.parentWidget()->rect().contains(form.geometry())) << form.Name();
    const auto controls = form.Controls();
    for (const toolkit::Control* control : controls) {
      if (!control->OnShow()) continue;
      const std::string name = form.Name() + ": " + control->Name();
      EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << name;
      EXPECT_GT(control->width(), 0) << name;
      EXPECT_GT(control->height(), 0) << name;
      if (dynamic_cast<const toolkit::Button*>(control) != nullptr) {
        EXPECT_GE(control->height(), LowestKey) << name;
      }
      for (const toolkit::Control* other : controls) CheckApart(*control, *other, name);
    }
  }
  static void CheckApart(const toolkit::Control& control, const toolkit::Control& other,
                         const std::string& name) {
    if (&other == &control || !other.OnShow()) return;
    if (other.parentWidget() != control.parentWidget()) return;
    // An empty field stands behind the figures, for the time that they are hidden.
    if (control.Name() == "FigureField" || other.Name() == "FigureField") return;
    EXPECT_FALSE(control.geometry().intersects(other.geometry())) << name << ", " << other.Name();
  }
};

TEST_P(Layouts, TheMainScreenFits) {
  Open();
  Check(Main().Window());
  TypeF(7);
  ASSERT_TRUE(System.Console.PlotKeysActive);
  Check(Main().Window());
}

TEST_P(Layouts, EveryScreenFitsAndLeavesFiguresAndKeysInSight) {
  Open();
  const toolkit::Area plot = console::PlotArea(Desk->Measures());
  const QRect figures(plot.Right(), 0, Desk->width() - plot.Right(), Desk->height());
  const QRect keys(0, plot.Bottom(), Desk->width(), Desk->height() - plot.Bottom());
  for (const char* name :
       {"ProgramForm",    "StatusMenuForm", "XYPositionForm", "AuxPositionForm", "ViewProgForm",
        "SetupForm",      "BatchForm",      "UserForm",       "LaserStatusForm", "MachineForm",
        "LoadForm",       "MoveForm",       "XYJogForm",      "MessageForm",     "NumberForm",
        "KeyboardForm",   "SendForm",       "ProgListForm",   "SearchForm",      "EditProgForm",
        "FileHandleForm", "FileForm",       "DirectoryForm"}) {
    ASSERT_TRUE(Screens().Show(name)) << name;
    toolkit::Form& form = Screens().Find(name)->Window();
    Check(form);
    EXPECT_FALSE(form.geometry().intersects(figures)) << name;
    EXPECT_FALSE(form.geometry().intersects(keys))
        << name << " ends at " << form.geometry().bottom() << " of " << plot.Bottom();
    Screens().Unload(name);
  }
}

/// A point of the plot, pixels of the desk.
QPoint OnDesk(toolkit::PlotCanvas& plot, const platform::UserPoint& point) {
  return plot.mapTo(plot.window(), QPoint(static_cast<int>(plot.Canvas().ToPixelX(point.X)),
                                          static_cast<int>(plot.Canvas().ToPixelY(point.Y))));
}

TEST_P(Layouts, TheScreensOfARestartFitAndLeaveTheEntryInSight) {
  constexpr int Places = 9;  // three by three over the sheet
  std::string program = "! SHEET : X900 Y700\r\nG71 G90 G31 T2=3\r\n";
  for (int i = 0; i < Places; ++i) {
    program += "G01 X" + std::to_string(100 + i % 3 * 350) + " Y" +
               std::to_string(100 + i / 3 * 250) + " F3000\r\n";
  }
  Directory.Put("Programs/SHOP/PLACES.prg", program + "G01 X10 Y10\r\nM30\r\n");
  Open();
  ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "PLACES"));
  Screens().Unload("SetupForm");
  const toolkit::Area plot = console::PlotArea(Desk->Measures());
  const QRect room(plot.X, plot.Y, plot.Width, plot.Height);
  int inSight = 0;
  for (int place = 0; place < Places; ++place) {
    Then([this] { Check(Screens().Find("BlockStartForm")->Window()); });
    for (int row = 0; row < place + 3; ++row) ThenType(toolkit::Key::Down);
    ThenType(toolkit::Key::S);
    TypeF(1);
    Type(toolkit::Key::B);
    RunFor(100);
    ASSERT_TRUE(Shows("RestartForm"));
    toolkit::Form& form = Screens().Find("RestartForm")->Window();
    Check(form);
    EXPECT_TRUE(room.contains(form.geometry()));
    auto& box = Main().PlotBox(1);
    const auto cross = box.Canvas().GetOverlay(platform::Overlay::EntryLine1);
    ASSERT_TRUE(cross.Visible);
    const platform::UserPoint entry{(cross.From.X + cross.To.X) / 2,
                                    (cross.From.Y + cross.To.Y) / 2};
    inSight += form.geometry().contains(OnDesk(box, entry)) ? 0 : 1;
    Type(toolkit::Key::C);
    RunFor(100);
  }
  // A form that is half as high as the plot may cover its middle; it can be slid by its title.
  EXPECT_GE(inSight, Places - 3);
}

TEST_P(Layouts, AScreenOverAnotherLeavesItsTitleInSight) {
  Open();
  TypeF(4);
  toolkit::Form& below = Screens().Find("StatusMenuForm")->Window();
  Type(toolkit::Key::P);
  toolkit::Form& above = Screens().Find("XYPositionForm")->Window();
  EXPECT_EQ(above.Left(), below.Left() + Desk->Measures().Margin);
  EXPECT_EQ(above.Top(), below.Top() + Desk->Measures().TitleHeight);
  Check(above);
  EXPECT_GE(above.Top() + above.height(), below.Top() + below.height()) << "covers its foot";
  EXPECT_GE(above.Left() + above.width(), below.Left() + below.width());
}

TEST_P(Layouts, DialogsFit) {
  Open();
  for (const char* screen : {"WarningForm", "ShutdownForm"}) {
    Then([this, screen] {
      ASSERT_TRUE(Shows(screen));
      Check(Screens().Find(screen)->Window());
      Type(toolkit::Key::C);
    });
    if (std::string(screen) == "ShutdownForm") {
      TypeF(12);
    } else {
      EXPECT_FALSE(TheConsole->Screens().ShowWarning("\none\n\ntwo\n\nthree\n\nfour\n\n",
                                                     link::WarningMode::OkCancel,
                                                     link::WarningStyle::Warning));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Layouts,
                         ::testing::Values(DeskSize{1024, 768}, DeskSize{1280, 1024},
                                           DeskSize{1920, 1080}),
                         [](const auto& size) {
                           return std::to_string(size.param.Width) + "x" +
                                  std::to_string(size.param.Height);
                         });

TEST_P(Layouts, CirclesAreRoundWhateverSizeTheWindowHadBefore) {
  Start();
  ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "STAR"));
  for (const DeskSize size : {DeskSize{1024, 1400}, GetParam()}) {
    Desk->resize(size.Width, size.Height);
    QCoreApplication::processEvents();
    const auto& canvas = Main().PlotBox(1).Canvas();
    const double unitX = std::abs(canvas.ScaleWidth()) / canvas.PixelWidth();
    const double unitY = std::abs(canvas.ScaleHeight()) / canvas.PixelHeight();
    EXPECT_NEAR(unitX, unitY, 1e-6 * unitX) << size.Width;
  }
}

class ProgramLine : public ConsoleFixture {
 protected:
  std::string TextLine() {
    auto* panel = Control<toolkit::Panel>("FrontEnd", "TextPanel");
    return panel == nullptr ? "(no line)" : panel->Caption();
  }
};

TEST_F(ProgramLine, NamesTheActiveProgramAndItsDirectory) {
  Start();
  EXPECT_EQ(TextLine(), "");
  ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "STAR"));
  EXPECT_EQ(TextLine(), "STAR SHOP");
  Screens().Unload("SetupForm");
  TypeF(11);
  EXPECT_EQ(TextLine(), "");
  TypeF(10);
  EXPECT_EQ(TextLine(), "STAR SHOP");
}

TEST_F(ProgramLine, GivesWayToTheTitleOfTheGraphicsState) {
  Start();
  ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "STAR"));
  Screens().Unload("SetupForm");
  TypeF(7);
  EXPECT_EQ(TextLine(), "GRAPHICS");
  TheConsole->Screens().PressProgramButton(1);
  EXPECT_EQ(TextLine(), "GRAPHICS");
  Type(toolkit::Key::X);
  EXPECT_EQ(TextLine(), "");
}

}  // namespace
}  // namespace torvane::tests

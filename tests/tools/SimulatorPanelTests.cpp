// The simulated machine's panel: its keys, lamps and switches, worked as a person works them.
#include <gtest/gtest.h>

#include "support/QtEnvironment.h"
#include "tools/SimulatorPanel.h"

namespace torvane::tools {
namespace {

using toolkit::Key;

class SimulatorPanelTest : public ::testing::Test {
 protected:
  SimulatorPanelTest() : Controller({}), Panel(Loop, Controller, core::ColourTable()) {
    Panel.OpenAlone([this] { ++Closed; });
  }

  void Send(std::string_view line) {
    Controller.Receive(std::string(line) + "\r");
    Controller.Advance(0.01);
    (void)Controller.TakeOutput();
  }
  template <class Kind>
  Kind& Find(const std::string& name) {
    auto* control = dynamic_cast<Kind*>(Panel.Window().Find(name));
    if (control == nullptr) throw std::runtime_error("no control " + name);
    return *control;
  }
  void Press(const std::string& name) { tests::Click(Find<toolkit::Button>(name)); }
  bool Lit(const std::string& name) {
    Controller.Advance(0.01);
    Panel.Refresh();
    return Find<PanelLamp>(name).Lit();
  }
  simulator::Machine& Machine() { return Controller.TheMachine(); }

  toolkit::QtLoop Loop;
  simulator::SimulatedController Controller;
  SimulatorPanel Panel;
  int Closed = 0;
};

TEST_F(SimulatorPanelTest, FeedHoldHoldsAndASecondPressReleases) {
  EXPECT_FALSE(Lit("HoldLamp"));
  Press("HoldButton");
  EXPECT_TRUE(Machine().Held());
  EXPECT_TRUE(Lit("HoldLamp"));
  EXPECT_TRUE(Find<toolkit::TwoStateButton>("HoldButton").Down());
  Press("HoldButton");
  EXPECT_FALSE(Machine().Held());
  EXPECT_FALSE(Lit("HoldLamp"));
}

TEST_F(SimulatorPanelTest, AHoldFromElsewhereShowsOnTheKeyWithoutHoldingAgain) {
  Machine().FeedHold();
  EXPECT_TRUE(Lit("HoldLamp"));
  EXPECT_TRUE(Find<toolkit::TwoStateButton>("HoldButton").Down());
  Machine().Release();
  EXPECT_FALSE(Lit("HoldLamp"));
  EXPECT_FALSE(Find<toolkit::TwoStateButton>("HoldButton").Down());
  EXPECT_FALSE(Machine().Held());
}

TEST_F(SimulatorPanelTest, TheLettersOfTheCaptionsPressTheKeys) {
  Panel.Desk().TypeKey(toolkit::KeyStroke(Key::H));
  EXPECT_TRUE(Machine().Held());
  Panel.Desk().TypeKey(toolkit::KeyStroke(Key::B));
  EXPECT_FALSE(Machine().BeamAllowed());
  Panel.Desk().TypeKey(toolkit::KeyStroke(Key::E));
  EXPECT_EQ(Controller.Memory().Variable(simulator::Vr::IoMessage), 2);
  Panel.Desk().TypeKey(toolkit::KeyStroke(Key::C));
  EXPECT_EQ(Controller.Memory().Variable(simulator::Vr::IoMessage), 0);
  Panel.Desk().TypeKey(toolkit::KeyStroke(Key::Q));
  EXPECT_TRUE(Machine().Held());
}

TEST_F(SimulatorPanelTest, CycleStartRunsAndStopEnds) {
  Send("TABLE(500,0,100,0,0,0,0,0)");
  Send("TABLE(507,-999)");
  Send("VR(91)=1");
  EXPECT_FALSE(Lit("RunningLamp"));
  Press("StartButton");
  EXPECT_EQ(Machine().Mode(), simulator::MachineMode::Running);
  EXPECT_TRUE(Lit("RunningLamp"));
  Press("StopButton");
  EXPECT_EQ(Machine().Mode(), simulator::MachineMode::Idle);
  EXPECT_FALSE(Lit("RunningLamp"));
}

TEST_F(SimulatorPanelTest, TheChosenErrorIsRaisedLitAndCleared) {
  Press("ErrorMore");
  Press("ErrorMore");
  Press("ErrorLess");
  EXPECT_EQ(Find<toolkit::Label>("ErrorNumber").Text(), "3");
  Press("ErrorButton");
  EXPECT_EQ(Controller.Memory().Variable(simulator::Vr::IoMessage), 3);
  EXPECT_TRUE(Lit("ErrorLamp"));
  Press("ClearButton");
  EXPECT_EQ(Controller.Memory().Variable(simulator::Vr::IoMessage), 0);
  EXPECT_FALSE(Lit("ErrorLamp"));
}

TEST_F(SimulatorPanelTest, NumbersGoRoundAtTheirEnds) {
  Press("BitLess");
  EXPECT_EQ(Find<toolkit::Label>("BitNumber").Text(), "30");
  Press("BitButton");
  EXPECT_EQ(Controller.Memory().Variable(simulator::Vr::LogicMessages), 1 << 30);
  Press("BitMore");
  EXPECT_EQ(Find<toolkit::Label>("BitNumber").Text(), "0");
  Press("ErrorLess");
  Press("ErrorLess");
  EXPECT_EQ(Find<toolkit::Label>("ErrorNumber").Text(), "64");
}

TEST_F(SimulatorPanelTest, TheSliderShowsTheSpeedInForceAndSetsAnother) {
  auto& slider = Find<toolkit::Slider>("SpeedSlider");
  EXPECT_EQ(SimulatorPanel::Speeds[static_cast<std::size_t>(slider.Value())], Controller.Speed());
  EXPECT_EQ(Find<toolkit::Label>("SpeedLabel").Text(), "1x");
  tests::PressAt(slider, slider.width() - 1, slider.height() / 2.0);
  EXPECT_EQ(Controller.Speed(), 20);
  EXPECT_EQ(Find<toolkit::Label>("SpeedLabel").Text(), "20x");
  tests::DragTo(slider, 1, slider.height() / 2.0);
  tests::ReleaseAt(slider, 1, slider.height() / 2.0);
  EXPECT_EQ(Controller.Speed(), 0.5);
  slider.KeyDown(toolkit::KeyStroke(toolkit::Key::Right));
  EXPECT_EQ(Controller.Speed(), 1);
}

TEST_F(SimulatorPanelTest, ClosingTheWindowTellsItsOwner) {
  Panel.Desk().close();
  EXPECT_EQ(Closed, 1);
}

TEST_F(SimulatorPanelTest, NothingIsCutOrOverlaps) {
  const auto controls = Panel.Window().Controls();
  for (const auto* control : controls) {
    if (!control->OnShow()) continue;
    const auto* parent = control->parentWidget();
    EXPECT_TRUE(parent->rect().contains(control->geometry())) << control->Name();
    for (const auto* other : controls) {
      if (other == control || !other->OnShow() || other->parentWidget() != parent) continue;
      EXPECT_FALSE(control->geometry().intersects(other->geometry()))
          << control->Name() << " and " << other->Name();
    }
  }
}

class SimulatorPanelDocked : public ::testing::TestWithParam<std::pair<int, int>> {
 protected:
  SimulatorPanelDocked() {
    Console.OpenWindow(GetParam().first, GetParam().second);
    Main.SetBackdrop(true);
    Main.Show();
    Panel.DockAt(Console);
  }
  void FindNothingCut() {
    for (const auto* control : Panel.Window().Controls()) {
      if (!control->OnShow()) continue;
      EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << control->Name();
      if (dynamic_cast<const toolkit::Button*>(control) != nullptr) {
        EXPECT_GE(control->height(), 56) << control->Name();
        EXPECT_GE(control->width(), 48) << control->Name();
      }
    }
  }

  toolkit::QtLoop Loop;
  toolkit::Desk Console{Loop};
  toolkit::Form Main{Console, "FrontEnd"};
  simulator::SimulatedController Controller{{}};
  SimulatorPanel Panel{Loop, Controller, core::ColourTable()};
};

TEST_P(SimulatorPanelDocked, HasAStripOfItsOwnAndTheConsoleTheRest) {
  const QRect room = Console.Room();
  EXPECT_EQ(Main.geometry(), room);
  EXPECT_EQ(Panel.Desk().geometry(),
            QRect(0, room.height(), Console.width(), Console.height() - room.height()));
  EXPECT_EQ(Console.Measures(), toolkit::Metrics::For(room.width(), room.height()));
  EXPECT_EQ(Panel.Desk().Measures().Scale, Console.Measures().Scale);
  FindNothingCut();
}

TEST_P(SimulatorPanelDocked, OpensASecondRowForTheFaultsAndClosesIt) {
  const int before = Console.Room().height();
  auto* faults = dynamic_cast<toolkit::Button*>(Panel.Window().Find("FaultsButton"));
  EXPECT_FALSE(Panel.Window().Find("ErrorButton")->Visible());
  faults->Press();
  EXPECT_LT(Console.Room().height(), before);
  EXPECT_EQ(Main.geometry(), Console.Room());
  EXPECT_TRUE(Panel.Window().Find("ErrorButton")->Visible());
  FindNothingCut();
  faults->Press();
  EXPECT_EQ(Console.Room().height(), before);
}

TEST_P(SimulatorPanelDocked, NeverTakesTheKeyboard) {
  EXPECT_EQ(Panel.Desk().focusPolicy(), Qt::NoFocus);
  tests::Click(*Panel.Window().Find("HoldButton"));
  EXPECT_TRUE(Controller.TheMachine().Held());
  EXPECT_FALSE(Panel.Desk().hasFocus());
}

INSTANTIATE_TEST_SUITE_P(Sizes, SimulatorPanelDocked,
                         ::testing::Values(std::pair{1024, 768}, std::pair{1280, 1024},
                                           std::pair{1920, 1080}),
                         [](const auto& size) { return "W" + std::to_string(size.param.first); });

TEST(SimulatorPanelUndocked, TheConsoleHasItsRoomBack) {
  toolkit::QtLoop loop;
  toolkit::Desk console(loop);
  console.OpenWindow(1280, 1024);
  simulator::SimulatedController controller({});
  {
    SimulatorPanel panel(loop, controller, core::ColourTable());
    panel.DockAt(console);
    EXPECT_LT(console.Room().height(), 1024);
  }
  EXPECT_EQ(console.Room(), console.rect());
}

}  // namespace
}  // namespace torvane::tools

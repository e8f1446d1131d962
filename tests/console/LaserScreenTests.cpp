// The laser screen, by keys and by touch: what it shows, what its keys ask the controller for.
#include <set>

#include "ConsoleFixture.h"
#include "core/General.h"
#include "simulator/ControllerMemory.h"

namespace torvane::tests {
namespace {

using toolkit::Key;
using Words = std::vector<std::string>;

class LaserScreen : public ConsoleFixture {
 protected:
  LaserScreen() { Start(); }

  void Open() {
    TypeF(2);
    RunFor(200);
    Lines.clear();
  }
  [[nodiscard]] std::string Box(const std::string& name) {
    return LabelText("LaserStatusForm", name);
  }
  [[nodiscard]] std::string FrameCaption(const std::string& name) {
    return Control<toolkit::Frame>("LaserStatusForm", name)->Caption();
  }
  void Press(const std::string& name) {
    auto* button = Control<toolkit::Button>("LaserStatusForm", name);
    ASSERT_NE(button, nullptr) << name;
    Click(*button);
  }
};

TEST_F(LaserScreen, CaptionsToTheLetter) {
  Open();
  EXPECT_EQ(CurrentForm(), "LaserStatusForm");
  EXPECT_EQ(Control<toolkit::Panel>("LaserStatusForm", "StatusPanel(0)")->Caption(), "LASER");
  EXPECT_EQ(FrameCaption("FeedFrame(0)"), "FEED RATE");
  EXPECT_EQ(FrameCaption("PowerFrame(0)"), "LASER POWER");
  EXPECT_EQ(FrameCaption("StatusFrame"), "LASER STATUS");
  EXPECT_EQ(Box("FeedLabel"), "( mm / min )");
  EXPECT_EQ(Box("PowerLabel"), "( % )");
  const Words frames{"PROGRAMMED", "ACTUAL", "OVERIDE (%)"};
  for (int i = 1; i <= 3; ++i) {
    const auto index = static_cast<std::size_t>(i - 1);
    EXPECT_EQ(FrameCaption("FeedFrame(" + std::to_string(i) + ")"), frames[index]);
    EXPECT_EQ(FrameCaption("PowerFrame(" + std::to_string(i) + ")"), frames[index]);
  }
  const Words captions{"- 20 (&1)", "- 5 (&2)", "+ 5 (&3)", "+ 20 (&4)",
                       "- 20 (&5)", "- 5 (&6)", "+ 5 (&7)", "+ 20 (&8)"};
  for (int i = 1; i <= 4; ++i) {
    const std::string index = "(" + std::to_string(i) + ")";
    EXPECT_EQ(Caption("LaserStatusForm", "FeedButton" + index),
              captions[static_cast<std::size_t>(i - 1)]);
    EXPECT_EQ(Caption("LaserStatusForm", "PowerButton" + index),
              captions[static_cast<std::size_t>(i + 3)]);
  }
  const Words labels{
      "LASER MODE :",     "LASER DUTY (%) :", "LASER FREQUENCY (Hz) :", "ASSIST GAS :",
      "RAMPING MODE :",   "RAMP UP VALUE :",  "RAMP DOWN VALUE :",      "RAMP MINIMUM POWER (%) :",
      "AUTO HEAD COMP :", "TIP HEIGHT (mm) :"};
  for (int i = 1; i <= 10; ++i) {
    EXPECT_EQ(Box("StatusLabel(" + std::to_string(i) + ")"),
              labels[static_cast<std::size_t>(i - 1)]);
  }
  EXPECT_EQ(Caption("LaserStatusForm", "ExitButton"), "E&XIT");
  EXPECT_EQ(Focus("LaserStatusForm"), "ExitButton");
}

TEST_F(LaserScreen, EveryBoxShowsItsVariable) {
  const std::pair<int, double> values[] = {{70, 81.4}, {69, 90}, {71, 1}, {72, 55.6},
                                           {73, 500},  {78, 4},  {74, 5}, {75, 0.125},
                                           {76, 7.5},  {77, 8},  {30, 9}, {31, 1.255}};
  for (const auto& [number, value] : values) SetVariable(number, value);
  Open();
  RunFor(500);
  EXPECT_EQ(Box("PowerBox(1)"), "81");
  EXPECT_EQ(Box("PowerBox(2)"), "0") << "no beam";
  EXPECT_EQ(Box("PowerBox(3)"), "90");
  EXPECT_EQ(Box("FeedBox(3)"), "100");
  const Words shown{"1", "56", "500", "4", "5", "0.12", "7.50", "8", "9", "1.25"};
  for (int i = 1; i <= 10; ++i) {
    EXPECT_EQ(Box("StatusBox(" + std::to_string(i) + ")"), shown[static_cast<std::size_t>(i - 1)])
        << i;
  }
}

TEST_F(LaserScreen, ProgrammedAndActualFeedAreTheSameVariable) {
  Select("GASKET");
  Machine().CycleStart();
  Open();
  RunFor(1000);
  ASSERT_TRUE(System.State.MachineRunning);
  EXPECT_NE(Box("FeedBox(1)"), "0");
  EXPECT_EQ(Times("? VR(25)") > 0, true);
  EXPECT_EQ(Box("FeedBox(2)"), core::NumberText(System.State.FeedRate, 0));
}

TEST_F(LaserScreen, AtTheFrontTheOverrideIsReadBeforeTheFigures) {
  TypeF(2);
  RunFor(1);
  Words queries;
  for (const auto& line : Lines) {
    if (line.starts_with("? ")) queries.push_back(line);
  }
  const Words expected{"? VR(69)", "? VR(25)", "? VR(70)", "? VR(65)", "? VR(69)",
                       "? VR(71)", "? VR(72)", "? VR(73)", "? VR(78)", "? VR(74)",
                       "? VR(75)", "? VR(76)", "? VR(77)", "? VR(30)", "? VR(31)"};
  ASSERT_GE(queries.size(), expected.size());
  queries.resize(expected.size());
  EXPECT_EQ(queries, expected);
}

TEST_F(LaserScreen, TheFeedKeysSendWhatTheyMakeOfIt) {
  Open();
  TypeText("1");
  TypeText("2");
  TypeText("3");
  TypeText("4");
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=80", "VR(68)=75", "VR(68)=80", "VR(68)=100"}));
  EXPECT_EQ(Focus("LaserStatusForm"), "ExitButton");
}

TEST_F(LaserScreen, ArrowsAndPageKeysWorkTheFeedOnly) {
  Open();
  Type(Key::PageDown);
  Type(Key::Down);
  Type(Key::Up);
  Type(Key::PageUp);
  Type(Key::Left);
  Type(Key::Right);
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=80", "VR(68)=75", "VR(68)=80", "VR(68)=100"}));
}

TEST_F(LaserScreen, FromAHundredTheFeedJumpsToTwoHundred) {
  Open();
  TypeText("3");
  EXPECT_EQ(TakeCommands(), Words{"VR(68)=200"});
  TypeText("1");
  TypeText("2");
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=180", "VR(68)=175"}));
  RunFor(500);
  EXPECT_EQ(Box("FeedBox(3)"), "175") << "the machine follows";
}

TEST_F(LaserScreen, ThePowerStopsAtAHundredAndAtZero) {
  SetVariable(69, 95);
  Open();
  TypeText("8");
  EXPECT_EQ(TakeCommands(), Words{"VR(69)=100"});
  for (int i = 0; i < 6; ++i) TypeText("5");
  EXPECT_EQ(TakeCommands(),
            (Words{"VR(69)=80", "VR(69)=60", "VR(69)=40", "VR(69)=20", "VR(69)=0", "VR(69)=0"}));
  TypeText("7");
  TypeText("6");
  EXPECT_EQ(TakeCommands(), (Words{"VR(69)=5", "VR(69)=0"}));
}

TEST_F(LaserScreen, TheBoxesChangeWithTheNextUpdateAndTheAskedForAtOnce) {
  Open();
  EXPECT_EQ(Box("PowerWanted"), "100");
  TypeText("5");
  EXPECT_EQ(Box("PowerWanted"), "80");
  EXPECT_EQ(Box("PowerBox(3)"), "100");
  RunFor(200);
  EXPECT_EQ(Box("PowerBox(3)"), "80");
}

TEST_F(LaserScreen, TheWorkingValuesAreTakenAtTheFrontOnly) {
  Open();
  SetVariable(69, 40);
  SetVariable(68, 30);
  RunFor(1000);
  EXPECT_EQ(Box("PowerBox(3)"), "40");
  TypeText("6");
  TypeText("2");
  EXPECT_EQ(TakeCommands(), (Words{"VR(69)=95", "VR(68)=95"})) << "not what the poll has seen";
  SetVariable(69, 40);
  SetVariable(68, 30);
  RunFor(1000);
  Type(Key::X);
  TypeF(2);
  RunFor(200);
  Lines.clear();
  TypeText("6");
  TypeText("2");
  EXPECT_EQ(TakeCommands(), (Words{"VR(69)=35", "VR(68)=25"}));
}

TEST_F(LaserScreen, ByTouchTheKeysSendTheSame) {
  Open();
  for (int i = 1; i <= 4; ++i) Press("FeedButton(" + std::to_string(i) + ")");
  for (int i = 1; i <= 4; ++i) Press("PowerButton(" + std::to_string(i) + ")");
  RunFor(100);
  EXPECT_EQ(TakeCommands(), (Words{"VR(68)=80", "VR(68)=75", "VR(68)=80", "VR(68)=100", "VR(69)=80",
                                   "VR(69)=75", "VR(69)=80", "VR(69)=100"}));
  Press("ExitButton");
  EXPECT_FALSE(Shows("LaserStatusForm"));
}

TEST_F(LaserScreen, AClickOnABoxOnlyGivesTheFocusBack) {
  Open();
  for (const char* name : {"FeedBox(1)", "FeedBox(3)", "PowerBox(2)", "StatusBox(10)"}) {
    Click(*Control<toolkit::Label>("LaserStatusForm", name));
    EXPECT_EQ(Focus("LaserStatusForm"), "ExitButton") << name;
  }
  EXPECT_EQ(TakeCommands(), Words{});
}

TEST_F(LaserScreen, GlobalKeysButForTheSlots) {
  Select("STAR");
  Open();
  TypeF(10);
  TypeF(11);
  RunFor(200);
  EXPECT_EQ(System.ActiveSlot, 1) << "a slot is not changed from here";
  TypeF(9);
  EXPECT_EQ(Front(), "MessageForm");
  Type(Key::X);
  TypeF(4);
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
}

TEST_F(LaserScreen, TheMainKeyOpensItAsF2Does) {
  Click(*Control<toolkit::Button>("FrontEnd", "MainButton(2)"));
  EXPECT_TRUE(Shows("LaserStatusForm"));
  EXPECT_EQ(CurrentForm(), "LaserStatusForm");
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(LaserScreen, LockedScreensDoNotOpenIt) {
  System.Console.FormsLocked = true;
  TypeF(2);
  EXPECT_FALSE(Shows("LaserStatusForm"));
  System.Console.FormsLocked = false;
}

TEST_F(LaserScreen, OpenedTwiceItIsOneScreen) {
  Open();
  TypeF(2);
  RunFor(200);
  Type(Key::X);
  EXPECT_FALSE(Shows("LaserStatusForm"));
  Open();
  EXPECT_TRUE(Shows("LaserStatusForm"));
}

TEST_F(LaserScreen, OnlyWhileItShowsThePollAsksForIt) {
  RunFor(500);
  EXPECT_EQ(Times("? VR(31)"), 0);
  Open();
  RunFor(500);
  EXPECT_GT(Times("? VR(31)"), 2);
  Type(Key::X);
  RunFor(100);
  Lines.clear();
  RunFor(500);
  EXPECT_EQ(Times("? VR(31)"), 0);
}

TEST_F(LaserScreen, DuringACutTheValuesLive) {
  Select("GASKET");
  Machine().CycleStart();
  Open();
  std::set<std::string> seen;
  for (int i = 0; i < 100; ++i) {
    RunFor(100);
    if (Machine().BeamOn()) seen.insert(Box("PowerBox(2)"));
  }
  EXPECT_GT(seen.size(), 0U);
  EXPECT_TRUE(seen.count("0") == 0 || seen.size() > 1);
}

TEST_F(LaserScreen, WithTheLinkOffEverythingIsZeroAndNothingIsSent) {
  System.Link.TrioLinkEnabled = false;
  TypeF(2);
  RunFor(500);
  for (const char* name : {"FeedBox(1)", "PowerBox(1)", "PowerBox(3)", "StatusBox(1)"}) {
    EXPECT_EQ(Box(name), "0") << name;
  }
  EXPECT_EQ(Box("StatusBox(10)"), "0.00");
  TypeText("8");
  EXPECT_EQ(TakeCommands(), Words{});
}

/// A line with the pace of a real one: an answer takes its time.
class SlowLaserScreen : public ConsoleFixture {
 protected:
  SlowLaserScreen() : ConsoleFixture({.Baud = 9600}) { Start(); }
};

TEST_F(SlowLaserScreen, APowerKeyBeforeTheFirstAnswerStepsFromTheTrueValue) {
  TypeF(2);
  TypeText("6");
  TypeText("6");
  RunFor(3000);
  EXPECT_EQ(TakeCommands(), (Words{"VR(69)=95", "VR(69)=90"}));
}

TEST_F(SlowLaserScreen, ClosedInTheMiddleOfItsFiguresItIsGone) {
  for (int wait = 0; wait < 400; wait += 37) {
    TypeF(2);
    RunFor(wait);
    Type(Key::X);
    RunFor(5);
    EXPECT_FALSE(Shows("LaserStatusForm")) << wait;
  }
  RunFor(3000);
  EXPECT_EQ(CurrentForm(), "");
}

}  // namespace
}  // namespace torvane::tests

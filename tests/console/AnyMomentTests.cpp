// The screens of the machine, each opened in the middle of a tick, on a dead line, while the
// machine cuts, and twice: whatever the line does, the operator gets in, and out again at once.
#include <string>
#include <vector>

#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using simulator::FaultKind;
using toolkit::Key;

/// The way to a screen from the main screen, and out of it.
struct Way {
  const char* Screen;
  std::vector<Key> Keys;
  Key Leaves;
  const char* Home;  ///< where the focus rests
};

const std::vector<Way>& Ways() {
  static const std::vector<Way> ways = {
      {"MachineForm", {Key::F3}, Key::E, "ReferenceButton(0)"},
      {"LoadForm", {Key::F3, Key::L}, Key::X, "ExitButton"},
      {"MoveForm", {Key::F3, Key::M}, Key::X, "MoveButton"},
      {"XYJogForm", {Key::F3, Key::J}, Key::X, "PositionBox"},
      {"LaserStatusForm", {Key::F2}, Key::X, "ExitButton"},
      {"BatchForm", {Key::F4, Key::B}, Key::X, "ExitButton"},
      {"UserForm", {Key::F5}, Key::X, "ExitButton"},
  };
  return ways;
}

/// The line of the shop: 9,600 baud, where a tick takes some 200 ms.
class AnyMoment : public ConsoleFixture, public ::testing::WithParamInterface<std::size_t> {
 protected:
  AnyMoment() : ConsoleFixture(simulator::PortOptions{.Baud = 9600, .HeartbeatMs = 0}) { Start(); }

  [[nodiscard]] static const Way& TheWay() { return Ways()[GetParam()]; }

  /// As the window system would press it: nobody waits for what comes of it.
  void Tap(Key key) {
    Loop.Start([this, key] { Type(key); });
  }
  void GoIn() {
    for (const Key key : TheWay().Keys) {
      Tap(key);
      RunFor(1);
    }
  }
  /// The jog screen asks for attention first while the machine runs.
  void GoOut() {
    Tap(TheWay().Leaves);
    RunFor(1);
    if (Warning() == "\nCan Not Jog\nWhile Machine Is Running Or In Feedhold !") Tap(Key::O);
    RunFor(1);
  }
  void CloseTheRest() {
    for (const char* screen : {"MachineForm", "StatusMenuForm"}) Screens().Unload(screen);
  }
  void ExpectThePollLives() {
    RunFor(8000);  // what was asked for by the screens that have gone
    Lines.clear();
    RunFor(2500);
    EXPECT_GE(Times("? VR(19)"), 3);
    EXPECT_LE(Loop.ActivitiesUnderWay(), 1U) << "a tick at most";
  }
};

TEST_P(AnyMoment, OpensAndClosesAtEveryMomentOfATick) {
  for (int moment = 0; moment < 240; moment += 15) {
    SCOPED_TRACE(moment);
    RunFor(moment);
    GoIn();
    ASSERT_TRUE(Shows(TheWay().Screen));
    EXPECT_EQ(CurrentForm(), TheWay().Screen);
    RunFor(moment);
    GoOut();
    EXPECT_FALSE(Shows(TheWay().Screen)) << "also in the middle of its first figures";
    CloseTheRest();
  }
  ExpectThePollLives();
  EXPECT_EQ(CurrentForm(), "");
}

TEST_P(AnyMoment, OnADeadLineItOpensAndClosesAtOnce) {
  System.Link.ReplyTimeoutMs = 2000;
  simulator::FaultSettings silent;
  silent.Rate(FaultKind::Silence) = 1;
  Controller->SetFaults(silent);
  GoIn();
  ASSERT_TRUE(Shows(TheWay().Screen));
  GoOut();
  EXPECT_FALSE(Shows(TheWay().Screen));
  GoIn();
  EXPECT_TRUE(Shows(TheWay().Screen));
  // The failures are told one after the other; none leads out of the screen.
  for (int round = 0; round < 20; ++round) {
    RunFor(1500);
    if (Shows("WarningForm")) Tap(Key::C);
  }
  EXPECT_TRUE(Shows(TheWay().Screen));
  Controller->SetFaults({});
  for (int round = 0; round < 10; ++round) {
    RunFor(1500);
    if (Shows("WarningForm")) Tap(Key::C);
  }
  EXPECT_EQ(Focus(TheWay().Screen), TheWay().Home);
  GoOut();
  EXPECT_FALSE(Shows(TheWay().Screen));
  ExpectThePollLives();
}

TEST_P(AnyMoment, WhileTheMachineCutsTheTableIsFedAndThePollGoesOn) {
  Select("NEST");
  Machine().CycleStart();
  RunFor(2000);
  ASSERT_TRUE(System.State.MachineRunning);
  const auto sent = System.TableSent;
  GoIn();
  ASSERT_TRUE(Shows(TheWay().Screen));
  Lines.clear();
  RunFor(60000);
  EXPECT_TRUE(Shows(TheWay().Screen));
  EXPECT_GE(Times("? VR(19)"), 40) << "a refill is part of a tick";
  EXPECT_GT(System.TableSent, sent);
  EXPECT_FALSE(Shows("WarningForm"));
  GoOut();
  EXPECT_FALSE(Shows(TheWay().Screen));
  for (int i = 0; i < 6000 && System.State.MachineRunning; ++i) RunFor(100);
  EXPECT_EQ(System.TableSent, System.Active().TableLines);
}

TEST_P(AnyMoment, OpenedTwiceItIsTheSameScreenAndAfterItsEndAFreshOne) {
  for (int round = 0; round < 3; ++round) {
    GoIn();
    RunFor(3000);
    EXPECT_EQ(Front(), TheWay().Screen);
    EXPECT_EQ(CurrentForm(), TheWay().Screen);
    EXPECT_EQ(Focus(TheWay().Screen), TheWay().Home);
    GoIn();  // once more over itself
    RunFor(3000);
    EXPECT_EQ(Front(), TheWay().Screen);
    const auto names = Screens().VisibleNames();
    EXPECT_EQ(std::count(names.begin(), names.end(), TheWay().Screen), 1);
    GoOut();
    EXPECT_FALSE(Shows(TheWay().Screen));
    CloseTheRest();
    EXPECT_EQ(CurrentForm(), "");
  }
  ExpectThePollLives();
}

TEST_P(AnyMoment, ClosedByTouch) {
  GoIn();
  RunFor(2000);
  Click(*Control<toolkit::Button>(TheWay().Screen, "ExitButton"));
  RunFor(10);
  EXPECT_FALSE(Shows(TheWay().Screen));
  ExpectThePollLives();
}

INSTANTIATE_TEST_SUITE_P(Screens, AnyMoment, ::testing::Range<std::size_t>(0, Ways().size()),
                         [](const auto& row) { return std::string(Ways()[row.param].Screen); });

}  // namespace
}  // namespace torvane::tests

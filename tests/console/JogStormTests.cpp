// A storm over the jog screen: keys and fingers down and up, repeats, other screens, dialogs,
// locks, slot keys, feed holds, and a line that fails. Whatever has happened, once nobody holds
// anything and the line works again, the machine stands and the last word was the stop.
#include <algorithm>
#include <array>
#include <set>

#include <rapidcheck/gtest.h>

#include "JogFixture.h"

namespace torvane::tests {
namespace {

using simulator::FaultKind;
using toolkit::Key;

constexpr std::array Arrows = {Key::Right, Key::Up, Key::Left, Key::Down};
/// Options, ways to other screens and back, slots, answers to dialogs.
constexpr std::array OtherKeys = {
    Key::A,  Key::D,  Key::G, Key::H,   Key::K,   Key::N,   Key::X, Key::F2, Key::F3,  Key::F4,
    Key::F5, Key::F9, Key::J, Key::F10, Key::F11, Key::F12, Key::C, Key::O,  Key::Tab, Key::Enter};
constexpr std::array Faults = {FaultKind::Silence, FaultKind::Percent, FaultKind::Late,
                               FaultKind::Pieces, FaultKind::Lose};

struct Step {
  int PauseMs = 0;
  int What = 0;
  std::size_t Which = 0;
};

void showValue(const Step& step, std::ostream& out) {
  out << step.PauseMs << " ms: " << step.What << "/" << step.Which;
}

class JogStorm : public JogFixture {
 protected:
  explicit JogStorm(simulator::PortOptions wire = {}) : JogFixture(wire) {
    Start();
    System.Link.ReplyTimeoutMs = 400;
  }

  /// A finger is on at most one key of the screen.
  void Touch(std::size_t which) {
    if (finger_ != nullptr || !Shows("XYJogForm")) return;
    finger_ = &Arrow(static_cast<int>(which) + 1);
    PressAt(*finger_, 20, 20);
  }
  void LiftFinger() {
    if (toolkit::Button* key = std::exchange(finger_, nullptr); key != nullptr && Stands(key))
      ReleaseAt(*key, 20, 20);
  }
  /// The screen may have gone from under the finger, and its keys with it.
  bool Stands(const toolkit::Button* key) {
    if (Screens().Find("XYJogForm") == nullptr) return false;
    for (int i = 1; i <= 4; ++i)
      if (&Arrow(i) == key) return true;
    return false;
  }

  void Do(const Step& step) {
    const Key arrow = Arrows[step.Which % Arrows.size()];
    switch (step.What) {
      case 0:
      case 1:
        return Hold(arrow);
      case 2:
        return Repeat(arrow);
      case 3:
        return Let(arrow);
      case 4:
        return Touch(step.Which % Arrows.size());
      case 5:
        return LiftFinger();
      case 6:
        if (finger_ != nullptr && Stands(finger_)) DragTo(*finger_, -20, 20);
        return;
      case 7:
      case 8:
        return TypeOther(OtherKeys[step.Which % OtherKeys.size()]);
      case 9:
        return LoseTheWindow();
      case 10:
        return Lock(step.Which % 2 == 0);
      case 11:
        return step.Which % 2 == 0 ? Machine().FeedHold() : Machine().Release();
      case 12:
        return ShowADialog();
      case 13:
        System.Link.CommandDelayMs = step.Which % 2 == 0 ? 20 : 0;
        return;
      case 14:
        return SetFault(Faults[step.Which % Faults.size()], 1);
      default:
        return Controller->SetFaults({});
    }
  }
  static constexpr int Kinds = 17;

  /// OK on the failure of an exchange or on the shutdown question would end the program.
  void TypeOther(Key key) {
    const bool ends = key == Key::O || key == Key::Enter;
    if (ends && Shows("ShutdownForm")) key = Key::C;
    if (ends && Shows("WarningForm")) key = Key::C;
    Press(key);
  }

  /// One of the ways in which a hold ends; the keys and the finger stay where they are.
  void EndHold(int way) {
    switch (way) {
      case 0:
        for (const Key key : Arrows) Let(key);
        return LiftFinger();
      case 1:
        return LoseTheWindow();
      case 2:
        return Lock(true);
      case 3:
        return ShowADialog();
      case 4:
        return UnloadIt();
      default:
        Lock(false);
        return Press(Key::F12);
    }
  }
  static constexpr int EndWays = 6;

  /// The line works again, dialogs are answered, and nobody touches anything.
  void LetItRest() {
    Controller->SetFaults({});
    System.Link.CommandDelayMs = 0;
    for (int round = 0; round < 24; ++round) {
      RunFor(500);
      if (Shows("WarningForm") || Shows("ShutdownForm")) Press(Key::C);
    }
  }

  /// As before the storm, for the next one.
  void TidyUp() {
    Lock(false);
    Machine().Release();
    for (const Key key : Arrows) Let(key);
    LiftFinger();
    for (const char* screen : {"WarningForm", "ShutdownForm", "XYJogForm", "MachineForm",
                               "StatusMenuForm", "MessageForm", "LaserStatusForm", "UserForm"})
      Screens().Unload(screen);
    RunFor(1000);
    for (int i = 0; i < 200 && Jogging(); ++i) RunFor(500);  // a long step at the least speed
    RC_ASSERT(!Jogging());
    Lines.clear();
  }

  void ExpectTheStopLast() {
    const auto word = std::find_if(Lines.rbegin(), Lines.rend(), IsJogWord);
    const auto stop = std::find(Lines.rbegin(), Lines.rend(), "VR(48)=0");
    RC_ASSERT(word == Lines.rend() || stop < word);
    // A step goes on to its end by itself, also when the operator chooses to jog on afterwards.
    RC_ASSERT(!Jogging() || StepsAt(word) != 0);
  }

  /// VR(11) when the word came: 0 while the machine jogs on until the stop.
  double StepsAt(std::vector<std::string>::reverse_iterator word) {
    const auto set = std::find_if(
        word, Lines.rend(), [](const std::string& line) { return line.starts_with("VR(11)="); });
    return set == Lines.rend() ? stepsAtFirst_ : std::stod(set->substr(7));
  }

  void Storm() {
    const auto storm = *rc::gen::container<std::vector<Step>>(rc::gen::build<Step>(
        rc::gen::set(&Step::PauseMs, rc::gen::weightedOneOf<int>({{3, rc::gen::inRange(0, 20)},
                                                                  {2, rc::gen::inRange(0, 600)}})),
        rc::gen::set(&Step::What, rc::gen::inRange(0, Kinds)),
        rc::gen::set(&Step::Which, rc::gen::inRange<std::size_t>(0, 20))));
    const int way = *rc::gen::inRange(0, EndWays);
    TidyUp();
    TypeF(3);
    Type(Key::J);
    RunFor(300);
    stepsAtFirst_ = Controller->Memory().Variable(11);
    for (const Step& step : storm) {
      RunFor(step.PauseMs);
      Do(step);
    }
    RC_ASSERT(Session.Events.empty());
    EndHold(way);
    LetItRest();
    ExpectTheStopLast();
  }

  toolkit::Button* finger_ = nullptr;
  double stepsAtFirst_ = 0;
};

TEST_F(JogStorm, LeavesTheMachineStanding) {
  EXPECT_TRUE(rc::check([this] { Storm(); }));
}

class SlowJogStorm : public JogStorm {
 protected:
  SlowJogStorm() : JogStorm(simulator::PortOptions{.Baud = 9600, .HeartbeatMs = 0}) {}
};

TEST_F(SlowJogStorm, AFingerLiftedWhileTheScreenComesToTheFrontLeavesTheMachineStanding) {
  for (int ms = 0; ms < 400; ms += 23) {
    SCOPED_TRACE(ms);
    TidyUp();
    TypeF(3);
    Type(Key::J);
    RunFor(1000);
    Press(Key::F2);
    RunFor(ms);
    Lines.clear();
    Touch(0);  // the jog screen stands below, and reads the controller when it is touched
    RunFor(ms % 50);
    LiftFinger();
    RunFor(3000);
    const auto word = std::find_if(Lines.rbegin(), Lines.rend(), IsJogWord);
    const auto stop = std::find(Lines.rbegin(), Lines.rend(), "VR(48)=0");
    EXPECT_TRUE(word == Lines.rend() || stop < word);
    EXPECT_FALSE(Jogging());
  }
}

TEST_F(SlowJogStorm, LeavesTheMachineStanding) {
  EXPECT_TRUE(rc::check([this] { Storm(); }));
}

}  // namespace
}  // namespace torvane::tests

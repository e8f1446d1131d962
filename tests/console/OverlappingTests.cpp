// Whatever stands open, whatever is pressed and whatever the line does: each wait ends with its own
// condition, the machine is fed, and the program can be ended.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <rapidcheck/gtest.h>

#include "ConsoleFixture.h"
#include "core/ScreenNames.h"

namespace torvane::tests {
namespace {

using simulator::FaultKind;
using simulator::FaultSettings;
using toolkit::Key;

/// The line of the shop: 9,600 baud, where a tick takes some 200 ms.
class SlowLine : public ConsoleFixture {
 protected:
  SlowLine() : ConsoleFixture(simulator::PortOptions{.Baud = 9600, .HeartbeatMs = 0}) { Start(); }

  /// As the window system would press it: nobody waits for what comes of it.
  void Tap(Key key) {
    Loop.Start([this, key] { Type(key); });
  }
  void SetFault(FaultKind kind, double rate) {
    FaultSettings faults;
    faults.Rate(kind) = rate;
    Controller->SetFaults(faults);
  }
  /// The longest pause between two polls of the status from now on, ms.
  void WatchPoll() {
    lastPollMs_ = Loop.NowMs();
    longestPauseMs_ = 0;
    Controller->OnLine([this](std::string_view line) {
      Lines.emplace_back(line);
      if (line != "? VR(19)") return;
      longestPauseMs_ = std::max(longestPauseMs_, Loop.NowMs() - lastPollMs_);
      lastPollMs_ = Loop.NowMs();
    });
  }

  std::int64_t lastPollMs_ = 0;
  std::int64_t longestPauseMs_ = 0;
};

// ---- a modal form at every moment of a tick, under a running program ----

/// How a modal form comes up; another one is one more row.
struct ModalRow {
  const char* Form;
  std::function<void(ConsoleFixture&, console::Console&)> Open;
};

const std::vector<ModalRow>& ModalRows() {
  static const std::vector<ModalRow> rows = {
      {core::ScreenNames::WarningForm,
       [](ConsoleFixture&, console::Console& console) {
         console.Screens().Warn("Can Not Jog", "While Machine Is Running Or In Feedhold !");
       }},
      {core::ScreenNames::NumberForm,
       [](ConsoleFixture&, console::Console& console) {
         (void)console.Screens().EntryPads().EnterNumber("12", 1);
       }},
      {core::ScreenNames::KeyboardForm,
       [](ConsoleFixture&, console::Console& console) {
         (void)console.Screens().EntryPads().EnterText("STAR", 80);
       }},
      {core::ScreenNames::ShutdownForm,
       [](ConsoleFixture&, console::Console& console) { console.HandleFunctionKey(Key::F12); }},
  };
  return rows;
}

class UnderAModalForm : public SlowLine, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(UnderAModalForm, ThePollGoesOnAndTheMachineEndsItsRun) {
  const ModalRow& row = ModalRows()[GetParam()];
  for (int moment = 0; moment < 220; moment += 20) {
    SCOPED_TRACE(moment);
    ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "NEST"));
    ASSERT_GE(System.Active().TableLines, 100);
    Screens().Unload("SetupForm");
    RunFor(300);
    Machine().CycleStart();
    RunFor(2000 + moment);
    ASSERT_TRUE(System.State.MachineRunning);
    Loop.Start([&] { row.Open(*this, *TheConsole); });
    ASSERT_TRUE(Shows(row.Form));
    WatchPoll();
    for (int i = 0; i < 6000 && System.State.MachineRunning; ++i) RunFor(100);
    EXPECT_FALSE(System.State.MachineRunning);
    EXPECT_EQ(System.TableSent, System.Active().TableLines);
    EXPECT_TRUE(Shows(row.Form)) << "it stood all the time";
    EXPECT_LE(longestPauseMs_, 1500) << "no tick was held up; a refill is part of one";
    Screens().Unload(row.Form);
    RunFor(1000);
    EXPECT_LE(Loop.ActivitiesUnderWay(), 1U) << "a tick at most";
  }
}

INSTANTIATE_TEST_SUITE_P(Forms, UnderAModalForm,
                         ::testing::Range<std::size_t>(0, ModalRows().size()),
                         [](const auto& row) { return std::string(ModalRows()[row.param].Form); });

TEST_F(SlowLine, CancelOnTheShutdownQuestionInTheMiddleOfATickLeavesThePollRunning) {
  for (int moment = 0; moment < 220; moment += 10) {
    SCOPED_TRACE(moment);
    RunFor(moment);
    Tap(Key::F12);
    RunFor(400);
    ASSERT_TRUE(Shows("ShutdownForm"));
    Tap(Key::C);
    EXPECT_FALSE(Shows("ShutdownForm"));
    Lines.clear();
    RunFor(600);
    EXPECT_GE(Times("? VR(19)"), 2);
    EXPECT_TRUE(System.Link.PollingWanted);
    EXPECT_TRUE(Session.Events.empty());
  }
}

TEST_F(SlowLine, LetterKeysWorkAtOnceAfterAModalFormHasGone) {
  TypeF(4);
  RunFor(500);
  Tap(Key::F12);
  Tap(Key::C);
  Tap(Key::P);
  EXPECT_EQ(Front(), "XYPositionForm");
}

TEST_F(SlowLine, ASecondPadThatComesBeforeTheFirstCallHasGoneOnLeavesItsEntryAlone) {
  std::string first;
  std::string second;
  Loop.Start([&] { first = TheConsole->Screens().EntryPads().EnterText("ONE", 80); });
  Loop.Start([&] {
    Screens().Unload(core::ScreenNames::KeyboardForm);
    second = TheConsole->Screens().EntryPads().EnterText("TWO", 80);
  });
  RunFor(10);
  EXPECT_EQ(first, "ONE");
  EXPECT_TRUE(Shows(core::ScreenNames::KeyboardForm));
  Screens().Unload(core::ScreenNames::KeyboardForm);
  RunFor(10);
  EXPECT_EQ(second, "TWO");
}

// ---- a line that goes dead ----

class DeadLine : public SlowLine {
 protected:
  DeadLine() { System.Link.ReplyTimeoutMs = 2000; }

  /// Silence begins at the given line, whatever is pressed meanwhile.
  void GoDeadAt(const std::string& wanted) {
    Controller->OnLine([this, wanted](std::string_view line) {
      Lines.emplace_back(line);
      if (dead_ || line != wanted) return;
      dead_ = true;
      diedMs_ = Loop.NowMs();
      SetFault(FaultKind::Silence, 1);
    });
    for (int i = 0; i < 2000 && !dead_; ++i) RunFor(1);
  }

  bool dead_ = false;
  std::int64_t diedMs_ = 0;
};

TEST_F(DeadLine, TheFirstDialogStandsWithinATimeOutWhateverIsPressedAndOkEndsWithinOneMore) {
  TypeF(4);
  GoDeadAt("? MPOS AXIS(1)");
  ASSERT_TRUE(dead_);
  const std::vector<Key> keys = {Key::F3, Key::F4, static_cast<Key>('1'), Key::F5,
                                 Key::F9, Key::F4, static_cast<Key>('2')};
  for (const Key key : keys) {
    Tap(key);
    RunFor(150);
  }
  while (!Shows("WarningForm") && Loop.NowMs() < diedMs_ + 60000) RunFor(10);
  EXPECT_LE(Loop.NowMs() - diedMs_, System.Link.ReplyTimeoutMs + 100);
  RunFor(30);
  const std::int64_t answered = Loop.NowMs();
  Tap(Key::O);
  while (Session.Events.empty() && Loop.NowMs() < answered + 60000) RunFor(10);
  EXPECT_LE(Loop.NowMs() - answered, System.Link.ReplyTimeoutMs + 20);
  EXPECT_EQ(Session.Events, std::vector<std::string>{"end process"});
  EXPECT_FALSE(Port->IsOpen());
}

TEST_F(DeadLine, AButtonsOwnFailureHasItsDialogAtItsTimeOutToo) {
  TypeF(4);
  RunFor(1000);
  GoDeadAt("? VR(25)");
  RunFor(10);
  Tap(static_cast<Key>('1'));
  while (!Shows("WarningForm") && Loop.NowMs() < diedMs_ + 60000) RunFor(10);
  EXPECT_LE(Loop.NowMs() - diedMs_, System.Link.ReplyTimeoutMs + 100);
}

TEST_F(DeadLine, CancelGoesOnAndTheNextDialogComesAtTheNextFailure) {
  GoDeadAt("? VR(19)");
  RunFor(2100);
  ASSERT_TRUE(Shows("WarningForm"));
  Tap(Key::C);
  EXPECT_FALSE(Shows("WarningForm"));
  RunFor(10000);
  EXPECT_TRUE(Shows("WarningForm"));
  SetFault(FaultKind::Silence, 0);
  Tap(Key::C);
  RunFor(8000);
  Lines.clear();
  RunFor(1000);
  EXPECT_GE(Times("? VR(19)"), 3);
}

// ---- anything at any time ----

/// One thing that happens.
struct Happening {
  int PauseMs = 0;
  int What = 0;
};

class AnyStorm : public SlowLine {
 protected:
  void Do(int what) {
    static const std::vector<Key> keys = {Key::F1,
                                          Key::F2,
                                          Key::F3,
                                          Key::F4,
                                          Key::F6,
                                          Key::F7,
                                          Key::F9,
                                          Key::F10,
                                          Key::F11,
                                          Key::F12,
                                          Key::X,
                                          Key::P,
                                          Key::V,
                                          Key::I,
                                          Key::S,
                                          Key::C,
                                          Key::N,
                                          Key::E,
                                          static_cast<Key>('1'),
                                          static_cast<Key>('2'),
                                          Key::Tab};
    const auto index = static_cast<std::size_t>(what);
    if (index < keys.size()) {
      // The service key of the shutdown question would end the program.
      if (keys[index] == Key::S && Shows("ShutdownForm")) return;
      return Tap(keys[index]);
    }
    switch (index - keys.size()) {
      case 0:
        return SetFault(FaultKind::Silence, 1);
      case 1:
        return SetFault(FaultKind::Percent, 1);
      case 2:
        return SetFault(FaultKind::Late, 1);
      case 3:
        return SetFault(FaultKind::Pieces, 1);
      default:
        return Controller->SetFaults({});
    }
  }
  static constexpr int Kinds = 27;

  /// Closes whatever stands and lets the line rest: then nothing but the poll may be under way.
  void Settle() {
    Controller->SetFaults({});
    for (int round = 0; round < 60; ++round) {
      RunFor(500);
      if (Shows("WarningForm")) Tap(Key::C);
      for (const char* form : {"ShutdownForm", "KeyboardForm", "NumberForm"}) {
        if (Shows(form)) Screens().Unload(form);
      }
    }
  }
};

TEST_F(AnyStorm, EveryWaitEndsAndNoneIsLeft) {
  System.Link.ReplyTimeoutMs = 400;
  EXPECT_TRUE(rc::check([this] {
    const auto storm = *rc::gen::container<std::vector<Happening>>(
        rc::gen::build<Happening>(rc::gen::set(&Happening::PauseMs, rc::gen::inRange(0, 300)),
                                  rc::gen::set(&Happening::What, rc::gen::inRange(0, Kinds))));
    for (const Happening& happening : storm) {
      RunFor(happening.PauseMs);
      Do(happening.What);
    }
    RC_ASSERT(Session.Events.empty());
    Settle();
    TheConsole->Trio().StopPolling(true);
    RunFor(2000);
    RC_ASSERT(Loop.ActivitiesUnderWay() == 0U);
    RC_ASSERT(!TheConsole->Poll().Changes().Held());
    TheConsole->Trio().StartPolling(true);
    Lines.clear();
    RunFor(2500);  // a tick of a full screen takes most of a second at this speed
    RC_ASSERT(Times("? VR(19)") >= 3);
  }));
}

}  // namespace
}  // namespace torvane::tests

// Who holds a jog key: its word, the stop that ends every hold, and what a hold that has ended may
// still do.
#include <algorithm>

#include <rapidcheck/gtest.h>

#include "Bench.h"
#include "supervision/JogControl.h"

namespace torvane::supervision {

using namespace tests;

namespace {

constexpr const char* StopLine = "VR(48)=0";
constexpr const char* XPlus = "VR(48)=19";
constexpr const char* XMinus = "VR(48)=20";
constexpr const char* YPlus = "VR(48)=21";
constexpr const char* YMinus = "VR(48)=22";

struct JogBench : Bench {
  JogBench() {
    Controller.OnLine = {};
    Controller.ByteDelayMs = 1;
    System.Machine.YDirection = 1;
    System.Link.ReplyTimeoutMs = 200;
  }
  /// A key goes down, or repeats; nobody waits for what comes of it.
  void Press(JogDirection direction) {
    Jog.Hold(direction);
    Go(direction, false);
  }
  void Go(JogDirection direction, bool repeat) {
    Loop.Start([this, direction, repeat] { Jog.Go(direction, repeat); });
  }
  /// What went out until the line came to rest.
  Lines Settled() {
    Loop.RunFor(100);
    return Sent();
  }

  link::JogLine Line{Trio};
  JogControl Jog{Line, System.Machine};
};

class Jogs : public ::testing::Test, protected JogBench {};

TEST_F(Jogs, TheWordsOfYFollowTheDirectionOfTheMachine) {
  struct Row {
    std::int16_t YDirection;
    const char* Up;
    const char* Down;
  };
  // Any direction but 1 reverses.
  for (const Row& row : {Row{1, YPlus, YMinus}, Row{0, YMinus, YPlus}, Row{-1, YMinus, YPlus},
                         Row{2, YMinus, YPlus}}) {
    System.Machine.YDirection = row.YDirection;
    const std::pair<JogDirection, const char*> words[] = {{JogDirection::Right, XPlus},
                                                          {JogDirection::Left, XMinus},
                                                          {JogDirection::Up, row.Up},
                                                          {JogDirection::Down, row.Down}};
    for (const auto& [direction, word] : words) {
      Press(direction);
      EXPECT_EQ(Settled(), Lines{word});
      Jog.Release(direction);
      EXPECT_EQ(Settled(), Lines{StopLine});
    }
  }
}

TEST(JogLabels, FollowTheDirectionOfTheMachine) {
  using Labels = std::array<std::string, 2>;
  const auto labels = [](std::int16_t direction) {
    const auto texts = JogLabelsOfY(direction);
    return Labels{texts[0], texts[1]};
  };
  EXPECT_EQ(labels(1), (Labels{"Y+", "Y-"}));
  EXPECT_EQ(labels(0), (Labels{"Y-", "Y+"}));
  EXPECT_EQ(labels(-1), (Labels{"Y-", "Y+"}));
}

TEST_F(Jogs, AHoldAloneSendsNothing) {
  Jog.Hold(JogDirection::Right);
  EXPECT_TRUE(Jog.Held(JogDirection::Right));
  EXPECT_EQ(Settled(), Lines{});
  Jog.EndHolds();
  EXPECT_FALSE(Jog.Held(JogDirection::Right));
  EXPECT_EQ(Settled(), Lines{}) << "there is no motion to stop";
}

TEST_F(Jogs, ARepeatSendsTheWordAgain) {
  Press(JogDirection::Left);
  Loop.RunFor(50);
  Go(JogDirection::Left, true);
  Loop.RunFor(50);
  Go(JogDirection::Left, true);
  Loop.RunFor(50);
  Jog.Release(JogDirection::Left);
  EXPECT_EQ(Settled(), (Lines{XMinus, XMinus, XMinus, StopLine}));
}

TEST_F(Jogs, AReleaseStopsEvenWhileAnotherKeyIsHeldWhoseRepeatJogsAgain) {
  Press(JogDirection::Right);
  Loop.RunFor(50);
  Press(JogDirection::Up);
  Loop.RunFor(50);
  Jog.Release(JogDirection::Right);
  EXPECT_EQ(Settled(), (Lines{XPlus, YPlus, StopLine}));
  EXPECT_TRUE(Jog.Held(JogDirection::Up));
  Go(JogDirection::Up, true);
  EXPECT_EQ(Settled(), Lines{YPlus});
  Jog.Release(JogDirection::Up);
  EXPECT_EQ(Settled(), Lines{StopLine});
}

TEST_F(Jogs, AWordWhoseKeyIsNoLongerHeldIsStoppedAtOnceAndItsRepeatsAreNothing) {
  Jog.Hold(JogDirection::Down);
  Jog.EndHolds();  // a dialog came up
  Go(JogDirection::Down, false);
  EXPECT_EQ(Settled(), (Lines{YMinus, StopLine}));
  Go(JogDirection::Down, true);
  EXPECT_EQ(Settled(), Lines{});
}

TEST_F(Jogs, AKeyLetGoWhileTheDialogStoodLeavesItsStopLast) {
  Jog.Hold(JogDirection::Right);
  Jog.EndHolds();
  Jog.Release(JogDirection::Right);
  Go(JogDirection::Right, false);
  EXPECT_EQ(Settled(), (Lines{StopLine, XPlus, StopLine}));
}

TEST_F(Jogs, TheEndOfTheHoldsStopsOnce) {
  Press(JogDirection::Right);
  Loop.RunFor(50);
  Jog.EndHolds();
  Jog.EndHolds();
  EXPECT_EQ(Settled(), (Lines{XPlus, StopLine}));
  Go(JogDirection::Right, true);
  EXPECT_EQ(Settled(), Lines{}) << "the key repeats on, and moves nothing";
  Jog.Release(JogDirection::Right);
  EXPECT_EQ(Settled(), Lines{StopLine});
}

TEST_F(Jogs, AWordThatStillWaitsGoesWithItsHold) {
  Loop.Start([this] { Trio.Download("A=1", link::Asker::Poll); });
  Press(JogDirection::Right);
  Jog.EndHolds();
  EXPECT_EQ(Settled(), (Lines{"A=1", StopLine}));
}

TEST_F(Jogs, AWordThatFailsEndsItsHold) {
  Controller.Silent = true;
  Press(JogDirection::Right);
  Loop.RunFor(300);
  EXPECT_FALSE(Jog.Held(JogDirection::Right));
  EXPECT_EQ(Sent(), (Lines{XPlus, StopLine})) << "at its time-out, ahead of the recovery";
  Go(JogDirection::Right, true);
  Loop.RunFor(1000);
  const Lines later = Sent();
  EXPECT_EQ(std::count(later.begin(), later.end(), XPlus), 0)
      << "a word is never repeated, and the repeat of its key is dead";
  Controller.Silent = false;
  Loop.Start([this] { Trio.Download("A=1", link::Asker::Poll); });
  EXPECT_EQ(Settled(), (Lines{"A=1", StopLine}));
}

TEST_F(Jogs, AKeyThatGoesDownAgainBeforeItsStopIsThroughJogsAgain) {
  Press(JogDirection::Right);
  Loop.RunFor(3);
  Jog.Release(JogDirection::Right);
  Press(JogDirection::Right);
  EXPECT_EQ(Settled(), (Lines{XPlus, StopLine, XPlus}));
  Jog.Release(JogDirection::Right);
  EXPECT_EQ(Settled(), Lines{StopLine});
}

TEST_F(Jogs, WithTheLinkOffNothingIsSentAndNothingIsOwed) {
  System.Link.TrioLinkEnabled = false;
  Press(JogDirection::Right);
  Jog.Release(JogDirection::Right);
  EXPECT_EQ(Settled(), Lines{});
  EXPECT_FALSE(Line.Stopping());
}

/// Keys pressed, repeated and let go in any order at any time, dialogs, and a line that fails: once
/// nothing is held, the last word is the stop.
RC_GTEST_PROP(JogsProperty, NoWordIsEverTheLastWord, ()) {
  struct Step {
    int PauseMs;
    int What;
    std::size_t Direction;
  };
  const auto storm = *rc::gen::container<std::vector<Step>>(rc::gen::build<Step>(
      rc::gen::set(&Step::PauseMs, rc::gen::inRange(0, 120)),
      rc::gen::set(&Step::What, rc::gen::inRange(0, 7)),
      rc::gen::set(&Step::Direction, rc::gen::inRange<std::size_t>(0, JogDirections))));
  const bool letGo = *rc::gen::arbitrary<bool>();
  JogBench bench;
  for (const Step& step : storm) {
    bench.Loop.RunFor(step.PauseMs);
    const auto direction = static_cast<JogDirection>(step.Direction);
    switch (step.What) {
      case 0:
        bench.Press(direction);
        break;
      case 1:
        bench.Go(direction, true);
        break;
      case 2:
        bench.Go(direction, false);  // its warning has been answered
        break;
      case 3:
        bench.Jog.Release(direction);
        break;
      case 4:
        bench.Jog.EndHolds();
        break;
      default:
        bench.Controller.Silent = step.What == 5;
    }
  }
  if (letGo) {
    for (std::size_t i = 0; i < JogDirections; ++i)
      if (bench.Jog.Held(static_cast<JogDirection>(i)))
        bench.Jog.Release(static_cast<JogDirection>(i));
  } else {
    bench.Jog.EndHolds();
  }
  bench.Controller.Silent = false;
  for (int poll = 0; poll < 12; ++poll) {
    bench.Loop.RunFor(500);
    bench.Loop.Start([&bench] { bench.Trio.Download("A=1", link::Asker::Poll); });
  }
  bench.Loop.RunFor(1000);
  RC_ASSERT(!bench.Line.Stopping());
  const Lines sent = bench.Sent();
  const auto lastWord = std::find_if(sent.rbegin(), sent.rend(), [](const std::string& line) {
    return line.starts_with("VR(48)=") && line != StopLine;
  });
  const auto lastStop = std::find(sent.rbegin(), sent.rend(), StopLine);
  RC_ASSERT(lastWord == sent.rend() || lastStop < lastWord);
}

}  // namespace
}  // namespace torvane::supervision

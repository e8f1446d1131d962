// Waits that end in any order, timers beside them, posted jobs, faults and the end.
#include <stdexcept>

#include "support/QtEnvironment.h"
#include "toolkit/QtLoop.h"

namespace torvane::tests {
namespace {

using toolkit::QtLoop;

TEST(Loop, AWaitThatIsOverReturnsWithoutHandlingAnything) {
  QtLoop loop;
  bool ran = false;
  loop.Post([&] { ran = true; });
  loop.WaitUntil([] { return true; });
  EXPECT_FALSE(ran);
  loop.WaitUntil([&] { return ran; });
}

TEST(Loop, JobsRunInTheirOrder) {
  QtLoop loop;
  std::vector<int> ran;
  for (int i = 0; i < 4; ++i) loop.Post([&ran, i] { ran.push_back(i); });
  loop.WaitUntil([&] { return ran.size() == 4; });
  EXPECT_EQ(ran, (std::vector<int>{0, 1, 2, 3}));
}

TEST(Loop, AHandlerThatWaitsGoesOnAfterTheVeryEventThatItWaitedFor) {
  QtLoop loop;
  std::vector<std::string> order;
  bool open = false;
  loop.Post([&] {
    loop.WaitUntil([&] { return open; });
    order.push_back("waited");
  });
  loop.Post([&] {
    open = true;
    order.push_back("opened");
  });
  loop.Post([&] { order.push_back("next"); });
  loop.WaitUntil([&] { return order.size() == 3; });
  EXPECT_EQ(order, (std::vector<std::string>{"opened", "waited", "next"}));
}

TEST(Loop, WaitsEndInAnyOrder) {
  QtLoop loop;
  std::vector<std::string> order;
  bool first = false;
  bool second = false;
  loop.Post([&] {
    loop.WaitUntil([&] { return first; });
    order.push_back("first");
  });
  loop.Post([&] {
    loop.WaitUntil([&] { return second; });
    order.push_back("second");
  });
  loop.Post([&] {
    first = true;
    loop.Post([&] { second = true; });
  });
  loop.WaitUntil([&] { return order.size() == 2; });
  EXPECT_EQ(order, (std::vector<std::string>{"first", "second"}));
}

TEST(Loop, WhatAnEventOfQtDidIsSeenBeforeTheLoopSleeps) {
  QtLoop loop;
  struct Watched : QObject {
    bool& Flag;
    explicit Watched(bool& flag) : Flag(flag) {}
    bool event(QEvent*) override {
      Flag = true;
      return true;
    }
  };
  bool open = false;
  bool waited = false;
  Watched watched(open);
  loop.Post([&] {
    loop.WaitUntil([&] { return open; });
    waited = true;
  });
  Pump(loop);
  // Nothing but this one event comes: a loop that slept after it would sleep for ever.
  QCoreApplication::postEvent(&watched, new QEvent(QEvent::User));
  loop.WaitUntil([&] { return waited; });
}

TEST(Loop, AWaitInsideAnEventWithoutAnActivityIsTold) {
  QtLoop loop;
  struct Waits : QObject {
    QtLoop& Of;
    bool Told = false;
    explicit Waits(QtLoop& loop) : Of(loop) {}
    bool event(QEvent*) override {
      try {
        Of.WaitUntil([] { return false; });
      } catch (const std::logic_error&) {
        Told = true;
      }
      return true;
    }
  };
  Waits outside(loop);
  QEvent event(QEvent::User);
  QCoreApplication::sendEvent(&outside, &event);
  EXPECT_TRUE(outside.Told);
  Waits inside(loop);
  loop.Start([&] { QCoreApplication::sendEvent(&inside, &event); });
  EXPECT_TRUE(inside.Told) << "Qt stands between the start and the wait";
}

TEST(Loop, ATimerFiresWhileOthersWaitButNotWhileItsOwnTickIsUnderWay) {
  QtLoop loop;
  int poll = 0;
  int other = 0;
  int depth = 0;
  bool reentered = false;
  const auto second = loop.MakeTimer([&] { ++other; });
  const auto first = loop.MakeTimer([&] {
    reentered = reentered || depth > 0;
    ++depth;
    const int before = other;
    loop.WaitUntil([&] { return other >= before + 3; });
    --depth;
    ++poll;
  });
  first->Start(2);
  second->Start(3);
  loop.WaitUntil([&] { return poll >= 2; });
  EXPECT_FALSE(reentered);
  EXPECT_GE(other, 6);
}

TEST(Loop, ATimerCanBeStoppedStartedAndAsked) {
  QtLoop loop;
  int fired = 0;
  const auto timer = loop.MakeTimer([&] { ++fired; });
  EXPECT_FALSE(timer->Active());
  timer->Start(5);
  EXPECT_TRUE(timer->Active());
  EXPECT_EQ(timer->IntervalMs(), 5);
  loop.WaitUntil([&] { return fired == 2; });
  timer->Stop();
  EXPECT_EQ(timer->IntervalMs(), 0);
  Pump(loop, 30);
  EXPECT_EQ(fired, 2);
  timer->Start(0);
  EXPECT_FALSE(timer->Active());
}

TEST(Loop, ATimerMayGoInItsOwnHandler) {
  QtLoop loop;
  bool fired = false;
  std::unique_ptr<platform::Timer> timer;
  timer = loop.MakeTimer([&] {
    timer.reset();
    fired = true;
  });
  timer->Start(1);
  loop.WaitUntil([&] { return fired; });
}

TEST(Loop, AWaitSleepsBetweenEvents) {
  QtLoop loop;
  int asked = 0;
  bool over = false;
  const auto timer = loop.MakeTimer([&] { over = true; });
  timer->Start(200);
  loop.WaitUntil([&] {
    ++asked;
    return over;
  });
  EXPECT_LT(asked, 20);
}

TEST(Loop, TheClockGoesForward) {
  QtLoop loop;
  const auto before = loop.NowMs();
  Pump(loop, 20);
  EXPECT_GE(loop.NowMs(), before + 15);
}

TEST(Loop, AFaultOfAHandlerComesOutOfTheLoopAndNotOutOfAnothersWait) {
  QtLoop loop;
  bool disturbed = false;
  loop.Post([&] {
    try {
      loop.WaitUntil([] { return false; });
    } catch (const std::runtime_error&) {
      disturbed = true;
    }
  });
  loop.Post([] { throw std::runtime_error("Machine.dat: missing"); });
  try {
    loop.WaitUntil([] { return false; });
    FAIL();
  } catch (const std::runtime_error& fault) {
    EXPECT_STREQ(fault.what(), "Machine.dat: missing");
  }
  EXPECT_FALSE(disturbed);
}

TEST(Loop, AFaultAfterAWaitComesOutOfTheLoopToo) {
  QtLoop loop;
  bool open = false;
  loop.Post([&] {
    loop.WaitUntil([&] { return open; });
    throw std::runtime_error("Machine.dat: missing");
  });
  loop.Post([&] { open = true; });
  EXPECT_THROW(loop.Run(), std::runtime_error);
}

TEST(Loop, AFaultOfATimerComesOutOfRun) {
  QtLoop loop;
  const auto timer = loop.MakeTimer([] { throw std::logic_error("tick"); });
  timer->Start(1);
  EXPECT_THROW(loop.Run(), std::logic_error);
}

TEST(Loop, EndGivesUpTheWaitsUnderWay) {
  QtLoop loop;
  bool unwound = false;
  bool after = false;
  struct Mark {
    bool& Flag;
    ~Mark() { Flag = true; }
  };
  loop.Post([&] {
    const Mark mark{unwound};
    loop.Post([&] { loop.End(3); });
    loop.WaitUntil([] { return false; });
    after = true;
  });
  EXPECT_EQ(loop.Run(), 3);
  EXPECT_TRUE(unwound);
  EXPECT_FALSE(after);
}

TEST(Loop, EndBeforeRunEndsIt) {
  QtLoop loop;
  loop.End(0);
  EXPECT_EQ(loop.Run(), 0);
}

}  // namespace
}  // namespace torvane::tests

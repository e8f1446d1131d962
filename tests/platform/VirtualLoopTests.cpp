// The loop with virtual time: order, waits, timers.
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/VirtualLoop.h"

namespace torvane::platform {
namespace {

TEST(VirtualLoop, StartsAtZeroAndStandsStillWithoutAWait) {
  VirtualLoop loop;
  EXPECT_EQ(loop.NowMs(), 0);
  loop.After(10, [] {});
  EXPECT_EQ(loop.NowMs(), 0);
}

TEST(VirtualLoop, RunsEventsInTheOrderOfTheirTimeThenOfTheirMaking) {
  VirtualLoop loop;
  std::string order;
  loop.After(20, [&] { order += 'd'; });
  loop.After(10, [&] { order += 'b'; });
  loop.After(10, [&] { order += 'c'; });
  loop.Post([&] { order += 'a'; });
  loop.RunFor(15);
  EXPECT_EQ(order, "abc");
  EXPECT_EQ(loop.NowMs(), 15);
  loop.RunFor(5);
  EXPECT_EQ(order, "abcd");
}

TEST(VirtualLoop, AnEventSeesTheTimeItFallsDueAt) {
  VirtualLoop loop;
  std::int64_t seen = -1;
  loop.After(4000, [&] { seen = loop.NowMs(); });
  loop.RunFor(10000);
  EXPECT_EQ(seen, 4000);
  EXPECT_EQ(loop.NowMs(), 10000);
}

TEST(VirtualLoop, AWaitJumpsToTheEventThatEndsIt) {
  VirtualLoop loop;
  bool done = false;
  loop.After(10000, [&] { done = true; });
  loop.WaitUntil([&] { return done; });
  EXPECT_EQ(loop.NowMs(), 10000);
  EXPECT_EQ(loop.EventsHandled(), 1u);
}

TEST(VirtualLoop, AWaitThatIsDoneAlreadyHandlesNothing) {
  VirtualLoop loop;
  bool ran = false;
  loop.Post([&] { ran = true; });
  loop.WaitUntil([] { return true; });
  EXPECT_FALSE(ran);
}

TEST(VirtualLoop, AWaitThatNothingCanEndIsTold) {
  VirtualLoop loop;
  EXPECT_THROW(loop.WaitUntil([] { return false; }), std::logic_error);
}

TEST(VirtualLoop, AWaitThatOnlyATimerKeepsAliveIsToldInTheEnd) {
  VirtualLoop loop;
  auto timer = loop.MakeTimer([] {});
  timer->Start(60000);
  EXPECT_THROW(loop.WaitUntil([] { return false; }), std::logic_error);
}

TEST(VirtualLoop, AHandlerThatWaitsIsPutAsideUntilItsConditionHolds) {
  VirtualLoop loop;
  std::vector<std::string> order;
  bool open = false;
  loop.After(5, [&] {
    order.push_back("begins");
    loop.WaitUntil([&] { return open; });
    order.push_back("ends");
  });
  loop.After(7, [&] { order.push_back("between"); });
  loop.After(9, [&] { open = true; });
  loop.RunFor(6);
  EXPECT_EQ(order, (std::vector<std::string>{"begins"}));
  EXPECT_EQ(loop.NowMs(), 6) << "the run around it takes no longer than it was told";
  EXPECT_EQ(loop.ActivitiesUnderWay(), 1U);
  loop.RunFor(3);
  EXPECT_EQ(order, (std::vector<std::string>{"begins", "between", "ends"}));
  EXPECT_EQ(loop.ActivitiesUnderWay(), 0U);
}

TEST(VirtualLoop, TwoWaitsEndInTheOrderOfTheirConditions) {
  VirtualLoop loop;
  std::string order;
  for (const int ms : {30, 20}) {
    loop.Post([&loop, &order, ms] {
      loop.WaitUntil([&loop, ms] { return loop.NowMs() >= ms; });
      order += ms == 30 ? 'a' : 'b';
    });
    loop.After(ms, [] {});
  }
  loop.RunFor(100);
  EXPECT_EQ(order, "ba");
}

TEST(VirtualLoop, ARunInsideAHandlerWaitsForAsLong) {
  VirtualLoop loop;
  std::vector<std::int64_t> times;
  loop.Post([&] {
    loop.RunFor(50);
    times.push_back(loop.NowMs());
  });
  loop.After(20, [&] { times.push_back(loop.NowMs()); });
  loop.RunFor(100);
  EXPECT_EQ(times, (std::vector<std::int64_t>{20, 50}));
}

TEST(VirtualLoop, WaitsThatAreGivenUpLeaveTheirHandlers) {
  VirtualLoop loop;
  bool left = false;
  bool after = false;
  struct Leaves {
    bool& Flag;
    ~Leaves() { Flag = true; }
  };
  loop.Post([&] {
    const Leaves leaves{left};
    loop.WaitUntil([] { return false; });
    after = true;
  });
  loop.RunFor(1);
  loop.GiveUpWaits();
  EXPECT_TRUE(left);
  EXPECT_FALSE(after);
}

TEST(VirtualLoop, ATimerFiresEveryPeriodUntilItIsStopped) {
  VirtualLoop loop;
  std::vector<std::int64_t> ticks;
  auto timer = loop.MakeTimer([&] { ticks.push_back(loop.NowMs()); });
  EXPECT_FALSE(timer->Active());
  timer->Start(50);
  EXPECT_TRUE(timer->Active());
  EXPECT_EQ(timer->IntervalMs(), 50);
  loop.RunFor(170);
  timer->Stop();
  EXPECT_EQ(timer->IntervalMs(), 0);
  loop.RunFor(500);
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{50, 100, 150}));
}

TEST(VirtualLoop, StartingAgainBeginsTheWaitAfresh) {
  VirtualLoop loop;
  std::vector<std::int64_t> ticks;
  auto timer = loop.MakeTimer([&] { ticks.push_back(loop.NowMs()); });
  timer->Start(50);
  loop.RunFor(40);
  timer->Start(50);
  loop.RunFor(60);
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{90}));
}

TEST(VirtualLoop, APeriodOfNothingStopsTheTimer) {
  VirtualLoop loop;
  int ticks = 0;
  auto timer = loop.MakeTimer([&] { ++ticks; });
  for (const int period : {0, -1}) {
    timer->Start(10);
    timer->Start(period);
    EXPECT_FALSE(timer->Active());
  }
  loop.RunFor(100);
  EXPECT_EQ(ticks, 0);
}

TEST(VirtualLoop, ATimerDoesNotEnterItsOwnHandlerAgain) {
  VirtualLoop loop;
  int depth = 0;
  int deepest = 0;
  std::vector<std::int64_t> ticks;
  auto timer = loop.MakeTimer([&] {
    deepest = std::max(deepest, ++depth);
    ticks.push_back(loop.NowMs());
    const auto end = loop.NowMs() + 120;
    loop.After(120, [] {});
    loop.WaitUntil([&] { return loop.NowMs() >= end; });
    --depth;
  });
  timer->Start(50);
  loop.RunFor(400);
  EXPECT_EQ(deepest, 1);
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{50, 200, 350})) << "the next tick keeps the step";
}

TEST(VirtualLoop, OtherTimersFireWhileAHandlerWaits) {
  VirtualLoop loop;
  int others = 0;
  bool seen = false;
  auto other = loop.MakeTimer([&] { ++others; });
  auto timer = loop.MakeTimer([&] {
    loop.WaitUntil([&] { return others >= 3; });
    seen = true;
  });
  other->Start(10);
  timer->Start(5);
  loop.RunFor(29);
  EXPECT_FALSE(seen);
  loop.RunFor(1);
  EXPECT_TRUE(seen);
}

TEST(VirtualLoop, ATimerMayBeStoppedStartedOrDestroyedInItsOwnHandler) {
  VirtualLoop loop;
  int ticks = 0;
  std::unique_ptr<Timer> stops = loop.MakeTimer([&] {
    ++ticks;
    stops->Stop();
  });
  std::unique_ptr<Timer> slows = loop.MakeTimer([&] {
    ++ticks;
    slows->Start(1000);
  });
  std::unique_ptr<Timer> dies = loop.MakeTimer([&] {
    ++ticks;
    dies.reset();
  });
  stops->Start(10);
  slows->Start(10);
  dies->Start(10);
  loop.RunFor(900);
  EXPECT_EQ(ticks, 3);
  loop.RunFor(200);
  EXPECT_EQ(ticks, 4);
}

TEST(VirtualLoop, ATimerGoesOnAfterAHandlerThatThrew) {
  VirtualLoop loop;
  int ticks = 0;
  auto timer = loop.MakeTimer([&] {
    if (++ticks == 1) throw std::runtime_error("a fault in an event");
  });
  timer->Start(10);
  EXPECT_THROW(loop.RunFor(10), std::runtime_error);
  loop.RunFor(10);
  EXPECT_EQ(ticks, 2);
}

TEST(VirtualLoop, ATimerMayOutliveTheLoop) {
  auto loop = std::make_unique<VirtualLoop>();
  auto timer = loop->MakeTimer([] {});
  timer->Start(10);
  loop.reset();
  timer->Start(20);
  timer->Stop();
  EXPECT_FALSE(timer->Active());
}

RC_GTEST_PROP(VirtualLoop, WhateverIsPlannedRunsOnceAndInOrder,
              (std::vector<std::uint8_t> delays)) {
  VirtualLoop loop;
  std::vector<std::pair<std::int64_t, std::size_t>> ran;
  for (std::size_t i = 0; i < delays.size(); ++i) {
    loop.After(delays[i], [&, i] { ran.emplace_back(loop.NowMs(), i); });
  }
  loop.RunFor(255);
  RC_ASSERT(ran.size() == delays.size());
  RC_ASSERT(std::is_sorted(ran.begin(), ran.end()));
  for (const auto& [time, i] : ran) RC_ASSERT(time == delays[i]);
}

}  // namespace
}  // namespace torvane::platform

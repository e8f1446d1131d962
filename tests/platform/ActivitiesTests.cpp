// Handlers on stacks of their own: order, faults, catch blocks, giving up.
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/Activities.h"

namespace torvane::platform {
namespace {

using Words = std::vector<std::string>;

/// Leaves a word behind when it goes.
struct Mark {
  Words& Log;
  std::string Word;
  ~Mark() { Log.push_back(Word); }
};

class ActivitiesTest : public ::testing::Test {
 protected:
  Words Log;
  Activities All;
};

TEST_F(ActivitiesTest, AHandlerThatDoesNotWaitRunsAtOnce) {
  All.Start([&] {
    EXPECT_TRUE(All.Inside());
    Log.emplace_back("ran");
  });
  EXPECT_EQ(Log, Words{"ran"});
  EXPECT_FALSE(All.Inside());
  EXPECT_EQ(All.UnderWay(), 0U);
}

TEST_F(ActivitiesTest, AHandlerThatWaitsGivesTheThreadBackAndEndsWhenItsConditionHolds) {
  bool open = false;
  All.Start([&] {
    Log.emplace_back("begins");
    All.Wait([&] { return open; });
    Log.emplace_back("ends");
  });
  Log.emplace_back("outside");
  EXPECT_FALSE(All.GoOn());
  open = true;
  EXPECT_TRUE(All.Ready());
  EXPECT_TRUE(All.GoOn());
  EXPECT_EQ(Log, (Words{"begins", "outside", "ends"}));
  EXPECT_EQ(All.UnderWay(), 0U);
}

TEST_F(ActivitiesTest, TheFirstToBeginMayBeTheFirstToEnd) {
  bool first = false;
  bool second = false;
  All.Start([&] {
    All.Wait([&] { return first; });
    Log.emplace_back("first");
  });
  All.Start([&] {
    All.Wait([&] { return second; });
    Log.emplace_back("second");
  });
  first = true;
  All.GoOn();
  EXPECT_EQ(Log, Words{"first"});
  second = true;
  All.GoOn();
  EXPECT_EQ(Log, (Words{"first", "second"}));
}

TEST_F(ActivitiesTest, WhereTwoCouldGoOnTheOlderDoes) {
  bool open = false;
  for (const char* name : {"a", "b", "c"}) {
    All.Start([&, name] {
      All.Wait([&] { return open; });
      Log.emplace_back(name);
    });
  }
  open = true;
  All.GoOn();
  EXPECT_EQ(Log, (Words{"a", "b", "c"}));
}

TEST_F(ActivitiesTest, OneThatGoesOnMayLetAnotherGoOn) {
  bool one = false;
  bool two = false;
  All.Start([&] {
    All.Wait([&] { return two; });
    Log.emplace_back("older");
  });
  All.Start([&] {
    All.Wait([&] { return one; });
    two = true;
    Log.emplace_back("younger");
  });
  one = true;
  All.GoOn();
  EXPECT_EQ(Log, (Words{"younger", "older"}));
}

TEST_F(ActivitiesTest, OneStartedInsideAnotherIsGoneOnWithFromOutside) {
  bool open = false;
  All.Start([&] {
    All.Start([&] {
      All.Wait([&] { return open; });
      Log.emplace_back("inner");
    });
    Log.emplace_back("outer ends");
  });
  EXPECT_EQ(All.UnderWay(), 1U);
  open = true;
  All.GoOn();
  EXPECT_EQ(Log, (Words{"outer ends", "inner"}));
}

TEST_F(ActivitiesTest, GoingOnInsideAnActivityDoesNothing) {
  bool open = true;
  All.Start([&] { All.Wait([&] { return open; }); });
  open = false;
  All.Start([&] {
    All.Wait([&] { return open; });
    Log.emplace_back("waited");
  });
  All.Start([&] {
    open = true;
    EXPECT_FALSE(All.GoOn());
  });
  EXPECT_TRUE(Log.empty());
  All.GoOn();
  EXPECT_EQ(Log, Words{"waited"});
}

TEST_F(ActivitiesTest, AFaultBeforeTheFirstWaitLeavesTheStart) {
  EXPECT_THROW(All.Start([] { throw std::runtime_error("now"); }), std::runtime_error);
  EXPECT_EQ(All.UnderWay(), 0U);
}

TEST_F(ActivitiesTest, ALaterFaultLeavesTheLoopAndTouchesNoOther) {
  bool open = false;
  All.Start([&] {
    All.Wait([&] { return open; });
    throw std::runtime_error("later");
  });
  All.Start([&] {
    All.Wait([&] { return open; });
    Log.emplace_back("whole");
  });
  open = true;
  EXPECT_THROW(All.GoOn(), std::runtime_error);
  All.GoOn();
  EXPECT_EQ(Log, Words{"whole"});
}

TEST_F(ActivitiesTest, AWaitInsideACatchBlockKeepsItsOwnException) {
  int gate = 0;
  const auto handler = [&](const char* word, int mine) {
    try {
      throw std::runtime_error(word);
    } catch (const std::exception&) {
      All.Wait([&gate, mine] { return gate == mine; });
      try {
        throw;  // the one that this handler caught, whatever others have caught meanwhile
      } catch (const std::exception& again) {
        Log.emplace_back(again.what());
      }
    }
    EXPECT_EQ(std::uncaught_exceptions(), 0);
  };
  All.Start([&] { handler("one", 1); });
  All.Start([&] { handler("two", 2); });
  for (const int next : {1, 2}) {
    gate = next;
    All.GoOn();
  }
  EXPECT_EQ(Log, (Words{"one", "two"}));
  EXPECT_EQ(std::current_exception(), nullptr);
}

TEST_F(ActivitiesTest, GivingUpLeavesEachHandlerByItsDestructorsTheNewestFirst) {
  for (const char* name : {"a", "b", "c"}) {
    All.Start([&, name] {
      const Mark mark{Log, name};
      All.Wait([] { return false; });
      Log.emplace_back("never");
    });
  }
  All.Unwind();
  EXPECT_EQ(Log, (Words{"c", "b", "a"}));
  EXPECT_EQ(All.UnderWay(), 0U);
}

TEST_F(ActivitiesTest, OneThatIsGivenUpDoesNotWaitAgain) {
  struct WaitsInItsDestructor {
    Activities& In;
    Words& Log;
    ~WaitsInItsDestructor() {
      In.Wait([] { return false; });
      Log.emplace_back("destructor through");
    }
  };
  All.Start([&] {
    const WaitsInItsDestructor last{All, Log};
    try {
      All.Wait([] { return false; });
    } catch (...) {
      const Mark mark{Log, "caught"};
      All.Wait([] { return false; });
      Log.emplace_back("never");
    }
  });
  All.Unwind();
  EXPECT_EQ(Log, (Words{"caught", "destructor through"}));
}

TEST_F(ActivitiesTest, OneThatBeginsWhileOthersAreGivenUpDoesNotWaitEither) {
  struct StartsAnother {
    Activities& In;
    Words& Log;
    ~StartsAnother() {
      In.Start([this] {
        const Mark mark{Log, "the other"};
        In.Wait([] { return false; });
        Log.emplace_back("never");
      });
    }
  };
  All.Start([&] {
    const StartsAnother last{All, Log};
    All.Wait([] { return false; });
  });
  All.Unwind();
  EXPECT_EQ(Log, Words{"the other"});
  EXPECT_EQ(All.UnderWay(), 0U);
}

TEST_F(ActivitiesTest, AfterGivingUpAllGoesOnAsBefore) {
  All.Start([&] { All.Wait([] { return false; }); });
  All.Unwind();
  bool open = false;
  All.Start([&] {
    All.Wait([&] { return open; });
    Log.emplace_back("again");
  });
  open = true;
  All.GoOn();
  EXPECT_EQ(Log, Words{"again"});
}

TEST_F(ActivitiesTest, TheEndGivesUpWhatIsLeft) {
  {
    Activities mine;
    mine.Start([&] {
      const Mark mark{Log, "gone"};
      mine.Wait([] { return false; });
    });
  }
  EXPECT_EQ(Log, Words{"gone"});
}

TEST_F(ActivitiesTest, AHandlerLivesAsLongAsItsActivity) {
  bool open = false;
  const auto held = std::make_shared<std::string>("kept");
  std::function<void()> handler = [&, held] {
    All.Wait([&] { return open; });
    Log.push_back(*held);
  };
  All.Start(std::move(handler));
  handler = nullptr;
  EXPECT_EQ(held.use_count(), 2);
  open = true;
  All.GoOn();
  EXPECT_EQ(Log, Words{"kept"});
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(ActivitiesTest, ADeepHandlerHasRoom) {
  std::function<int(int)> deep = [&](int depth) {
    volatile char room[4096] = {};
    room[depth % 4096] = 1;
    return depth == 0 ? room[0] : deep(depth - 1) + room[depth % 4096];
  };
  int depth = 0;
  All.Start([&] { depth = deep(100); });
  EXPECT_GE(depth, 100);
}

/// Any number of handlers, each with gates to wait for in turn; gates opened in any order. Each
/// passes its gates in its own order, and as soon as they are open.
RC_GTEST_PROP(ActivitiesProperty, EveryWaitEndsWithItsOwnConditionAndNotBefore, ()) {
  const auto plans = *rc::gen::container<std::vector<std::vector<int>>>(
      rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 8)));
  const auto openings = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 8));
  Activities all;
  std::vector<bool> open(8, false);
  std::vector<std::size_t> passed(plans.size(), 0);
  const auto expect = [&] {
    for (std::size_t i = 0; i < plans.size(); ++i) {
      std::size_t wanted = 0;
      while (wanted < plans[i].size() && open[static_cast<std::size_t>(plans[i][wanted])]) ++wanted;
      RC_ASSERT(passed[i] == wanted);
    }
  };
  for (std::size_t i = 0; i < plans.size(); ++i) {
    all.Start([&, i] {
      for (const int gate : plans[i]) {
        all.Wait([&open, gate] { return open[static_cast<std::size_t>(gate)]; });
        ++passed[i];
      }
    });
  }
  expect();
  for (const int gate : openings) {
    open[static_cast<std::size_t>(gate)] = true;
    all.GoOn();
    expect();
  }
  open.assign(8, true);
  all.GoOn();
  RC_ASSERT(all.UnderWay() == 0U);
}

}  // namespace
}  // namespace torvane::platform

// What the keys of the overrides make of a value.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "supervision/Overrides.h"

namespace torvane::supervision {
namespace {

TEST(Overrides, AnOrdinaryOneStaysBetweenZeroAndAHundred) {
  EXPECT_EQ(StepOverride(95, 4), 100);
  EXPECT_EQ(StepOverride(10, 1), 0);
  EXPECT_EQ(StepOverride(50, 1), 30);
  EXPECT_EQ(StepOverride(50, 2), 45);
  EXPECT_EQ(StepOverride(50, 3), 55);
  EXPECT_EQ(StepOverride(50, 4), 70);
  EXPECT_EQ(StepOverride(100, 3), 100);
  EXPECT_EQ(StepOverride(0, 2), 0);
  EXPECT_EQ(StepOverride(180, 2), 100) << "what stands too high comes down to the limit";
}

TEST(Overrides, TheLasersFeedJumpsFromAHundredToTwoHundred) {
  EXPECT_EQ(StepLaserFeed(100, 3), 200);
  EXPECT_EQ(StepLaserFeed(85, 4), 200);
  EXPECT_EQ(StepLaserFeed(80, 4), 100) << "exactly a hundred is no jump";
  EXPECT_EQ(StepLaserFeed(95, 3), 100);
  EXPECT_EQ(StepLaserFeed(200, 4), 200);
}

TEST(Overrides, TheKeysThatTakeAwayHaveNoJump) {
  EXPECT_EQ(StepLaserFeed(200, 1), 180);
  EXPECT_EQ(StepLaserFeed(200, 2), 195);
  EXPECT_EQ(StepLaserFeed(110, 2), 105);
  EXPECT_EQ(StepLaserFeed(15, 1), 0);
}

TEST(Overrides, AKeyThatIsNoneChangesNothing) {
  for (const int key : {-1, 0, 5, 99}) {
    EXPECT_EQ(StepLaserFeed(150, key), 150) << key;
    EXPECT_EQ(StepOverride(150, key), 150) << key;
  }
}

RC_GTEST_PROP(OverrideProperty, NoKeysLeadOutOfTheRange, ()) {
  double feed = *rc::gen::inRange(0, 201);
  double power = *rc::gen::inRange(0, 101);
  for (const int key : *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 5))) {
    feed = StepLaserFeed(feed, key);
    power = StepOverride(power, key);
    RC_ASSERT(feed >= 0 && feed <= 200);
    RC_ASSERT(power >= 0 && power <= 100);
  }
}

}  // namespace
}  // namespace torvane::supervision

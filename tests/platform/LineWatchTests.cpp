// Events of a serial line, from the looks at it.
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/LineWatch.h"

namespace torvane::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(LineWatch, EachChangeOfALineIsAnEvent) {
  LineWatch watch;
  watch.Begin({{true, false, false}});
  EXPECT_THAT(watch.Look({{true, false, false}}), IsEmpty());
  EXPECT_THAT(watch.Look({{false, true, false}}),
              ElementsAre(LineEvent::CtsChanged, LineEvent::DsrChanged));
  EXPECT_THAT(watch.Look({{false, true, true}}), ElementsAre(LineEvent::CarrierChanged));
  EXPECT_THAT(watch.Look({{false, true, true}, 1}), ElementsAre(LineEvent::Break));
  EXPECT_THAT(watch.Look({{false, true, true}, 1}), IsEmpty()) << "a break is told once";
}

TEST(LineWatch, BytesThatWaitTooLongForCtsAreToldOnce) {
  LineWatch watch;
  watch.Begin({});
  EXPECT_THAT(watch.Look({{}, 0, true, false, 1000}), IsEmpty());
  EXPECT_THAT(watch.Look({{}, 0, true, false, 1000 + LineTimeoutMs - 1}), IsEmpty());
  EXPECT_THAT(watch.Look({{}, 0, true, false, 1000 + LineTimeoutMs}),
              ElementsAre(LineEvent::CtsTimeout));
  EXPECT_THAT(watch.Look({{}, 0, true, false, 1000 + 3 * LineTimeoutMs}), IsEmpty());
}

TEST(LineWatch, AWaitForCtsBeginsAnewWhenTheBytesHaveGone) {
  LineWatch watch;
  watch.Begin({});
  (void)watch.Look({{}, 0, true, false, 0});
  (void)watch.Look({{}, 0, false, false, LineTimeoutMs - 1});
  EXPECT_THAT(watch.Look({{}, 0, true, false, LineTimeoutMs}), IsEmpty());
  EXPECT_THAT(watch.Look({{}, 0, true, false, 2 * LineTimeoutMs}),
              ElementsAre(LineEvent::CtsTimeout));
}

TEST(LineWatch, DsrIsTimedOutOnlyWhereItHoldsTheBytes) {
  LineWatch watch;
  watch.Begin({});
  (void)watch.Look({{true, false, false}, 0, true, true, 0});
  EXPECT_THAT(watch.Look({{true, false, false}, 0, true, true, LineTimeoutMs}),
              ElementsAre(LineEvent::DsrTimeout));
}

}  // namespace
}  // namespace torvane::platform

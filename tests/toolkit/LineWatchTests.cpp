// Events of a serial line, from the looks at it.
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "toolkit/LineWatch.h"

namespace torvane::toolkit {
namespace {

using platform::LineEvent;
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
  EXPECT_THAT(watch.Look({{}, 0, true, 1000}), IsEmpty());
  EXPECT_THAT(watch.Look({{}, 0, true, 1000 + CtsTimeoutMs - 1}), IsEmpty());
  EXPECT_THAT(watch.Look({{}, 0, true, 1000 + CtsTimeoutMs}), ElementsAre(LineEvent::CtsTimeout));
  EXPECT_THAT(watch.Look({{}, 0, true, 1000 + 3 * CtsTimeoutMs}), IsEmpty());
}

TEST(LineWatch, AWaitForCtsBeginsAnewWhenTheBytesHaveGone) {
  LineWatch watch;
  watch.Begin({});
  (void)watch.Look({{}, 0, true, 0});
  (void)watch.Look({{}, 0, false, CtsTimeoutMs - 1});
  EXPECT_THAT(watch.Look({{}, 0, true, CtsTimeoutMs}), IsEmpty());
  EXPECT_THAT(watch.Look({{}, 0, true, 2 * CtsTimeoutMs}), ElementsAre(LineEvent::CtsTimeout));
}

}  // namespace
}  // namespace torvane::toolkit

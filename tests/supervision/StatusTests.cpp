#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "supervision/MachineStatus.h"
#include "supervision/MessageButton.h"
#include "supervision/RunTime.h"

namespace torvane::supervision {
namespace {

using core::ColourName;

TEST(DecodeStatus, TakesTheWordApart) {
  core::MachineState state;
  DecodeStatus(state, 2048, 0);
  EXPECT_TRUE(state.MachineFeedhold);
  DecodeStatus(state, 4096, 0);
  EXPECT_FALSE(state.MachineFeedhold);
  EXPECT_EQ(state.MachineInError, 4096);
  DecodeStatus(state, 8192, 0);
  EXPECT_EQ(state.MachineInError, 0);
  EXPECT_TRUE(state.MachineCycleBit);
  EXPECT_FALSE(state.MachineRunning);
  DecodeStatus(state, 16384, 0);
  EXPECT_TRUE(state.MachineRunning);
  EXPECT_FALSE(state.MachineWasRunning);
  DecodeStatus(state, 0, 0);
  EXPECT_TRUE(state.MachineWasRunning);
  EXPECT_TRUE(RunEnded(state));
  DecodeStatus(state, 0, 0);
  EXPECT_FALSE(RunEnded(state));
}

TEST(DecodeStatus, LooksAtTheBeamOnlyOnAMachineThatHasOne) {
  core::MachineState state;
  DecodeStatus(state, 2097152, 0);
  EXPECT_FALSE(state.BeamOn);
  DecodeStatus(state, 2097152, 1);
  EXPECT_TRUE(state.BeamOn);
  EXPECT_FALSE(state.BeamWasOn);
  DecodeStatus(state, 0, 1);
  EXPECT_FALSE(state.BeamOn);
  EXPECT_TRUE(state.BeamWasOn);
}

RC_GTEST_PROP(DecodeStatus, EveryFlagIsItsBit, (std::int32_t before, std::int32_t word)) {
  core::MachineState state;
  DecodeStatus(state, before, 2);
  DecodeStatus(state, word, 2);
  RC_ASSERT(state.StatusWord == word);
  RC_ASSERT(state.MachineRunning == ((word & 16384) != 0));
  RC_ASSERT(state.MachineWasRunning == ((before & 16384) != 0));
  RC_ASSERT(state.MachineFeedhold == ((word & 2048) != 0));
  RC_ASSERT(state.MachineCycleBit == ((word & 8192) != 0));
  RC_ASSERT(state.MachineInError == (word & 4096));
  RC_ASSERT(state.BeamOn == ((word & 2097152) != 0));
  RC_ASSERT(state.BeamWasOn == ((before & 2097152) != 0));
}

TEST(MessageButton, TellsTheStateByItsColours) {
  const auto background = [](std::int32_t word, bool received) {
    return MessageButtonColours(MessageStateOf(word, received)).Background;
  };
  EXPECT_EQ(background(0, false), ColourName::OkMessageButton);
  EXPECT_EQ(background(~(2048 | 4096), false), ColourName::OkMessageButton);
  EXPECT_EQ(background(0, true), ColourName::WarningMessageButton);
  EXPECT_EQ(background(4096, false), ColourName::WarningMessageButton);
  EXPECT_EQ(background(2048, false), ColourName::CriticalMessageButton);
  EXPECT_EQ(background(2048, true), ColourName::CriticalMessageButton);
  EXPECT_EQ(background(2048 | 4096, false), ColourName::CriticalMessageButton)
      << "with both bits the critical colours win";
  EXPECT_EQ(MessageButtonColours(MessageStateOf(2048, false)).Text,
            ColourName::CriticalMessageButtonText);
  EXPECT_EQ(MessageButtonColours(MessageStateOf(4096, false)).Text,
            ColourName::WarningMessageButtonText);
  EXPECT_EQ(MessageButtonColours(MessageStateOf(0, false)).Text, ColourName::OkMessageButtonText);
}

TEST(RunTimeText, RoundsBehindTheTestForAMinute) {
  EXPECT_EQ(RunTimeText(59.7F), "0:60");
  EXPECT_EQ(RunTimeText(59.4F), "0:59");
}

TEST(RunTimeText, ShowsMinutesAndTwoDigitsOfSeconds) {
  EXPECT_EQ(RunTimeText(0), "0:00");
  EXPECT_EQ(RunTimeText(7), "0:07");
  EXPECT_EQ(RunTimeText(60), "1:00");
  EXPECT_EQ(RunTimeText(65.2F), "1:05");
  EXPECT_EQ(RunTimeText(3600), "60:00");
}

}  // namespace
}  // namespace torvane::supervision

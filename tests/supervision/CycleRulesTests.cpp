#include <map>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "RecordingScreens.h"
#include "supervision/CycleRules.h"

namespace torvane::supervision {

using namespace tests;
namespace {

core::MachineState StateOf(bool running, bool hold, bool cycle, bool error) {
  core::MachineState state;
  state.MachineRunning = running;
  state.MachineFeedhold = hold;
  state.MachineCycleBit = cycle;
  state.MachineInError = error ? 4096 : 0;
  return state;
}

/// R running, H held, C cycle, E error: the letters whose bit forbids the action.
const std::map<CycleAction, std::string> Forbidden = {
    {CycleAction::ChangeProgram, "R"},
    {CycleAction::SelectProgram, "R"},
    {CycleAction::Jog, "RH"},
    {CycleAction::Reference, "RHC"},
    {CycleAction::LoadPosition, "RHCE"},
    {CycleAction::Move, "RHCE"},
    {CycleAction::Restart, "RCE"},
};

TEST(CycleRules, EachActionLooksAtExactlyItsOwnBits) {
  for (const auto& [action, letters] : Forbidden) {
    for (int bits = 0; bits < 16; ++bits) {
      const bool r = (bits & 1) != 0;
      const bool h = (bits & 2) != 0;
      const bool c = (bits & 4) != 0;
      const bool e = (bits & 8) != 0;
      const auto holds = [&](char letter) { return letters.find(letter) != std::string::npos; };
      const bool wanted =
          (r && holds('R')) || (h && holds('H')) || (c && holds('C')) || (e && holds('E'));
      EXPECT_EQ(ActionRefused(action, StateOf(r, h, c, e)), wanted)
          << static_cast<int>(action) << " " << bits;
    }
  }
}

TEST(CycleRules, TheJogDoesNotLookAtTheCycleBit) {
  EXPECT_FALSE(ActionRefused(CycleAction::Jog, StateOf(false, false, true, true)));
}

TEST(CycleRules, TheRestartDoesNotLookAtTheFeedHold) {
  EXPECT_FALSE(ActionRefused(CycleAction::Restart, StateOf(false, true, false, false)));
}

TEST(CycleRules, RefusalsAreTwoLinesToTheLetter) {
  const std::map<CycleAction, std::string> texts = {
      {CycleAction::ChangeProgram, "\nCan Not Change Program\nWhile Machine Is Running !"},
      {CycleAction::SelectProgram, "\nCan Not Select New Program\nWhile Machine Is Running !"},
      {CycleAction::Jog, "\nCan Not Jog\nWhile Machine Is Running Or In Feedhold !"},
      {CycleAction::Reference, "\nCan Not Reference\nWhile Machine Is Running Or In Feedhold !"},
      {CycleAction::LoadPosition, "\nCan Not Move\nWhile Machine Is Running Or In Feedhold !"},
      {CycleAction::Move, "\nCan Not Move\nWhile Machine Is Running Or In Feedhold !"},
      {CycleAction::Restart, "\nCan Not Restart\nWhile Machine Is Running or In Error !"},
  };
  for (const auto& [action, text] : texts) {
    Events events;
    RecordingDialogs dialogs(events);
    EXPECT_TRUE(RefuseAction(action, StateOf(true, false, false, false), dialogs));
    EXPECT_EQ(events, (Events{"warning 1 1 " + text}));
  }
}

TEST(CycleRules, AnAllowedActionSaysNothing) {
  Events events;
  RecordingDialogs dialogs(events);
  for (const auto& rule : CycleRules()) EXPECT_FALSE(RefuseAction(rule.Action, {}, dialogs));
  EXPECT_TRUE(events.empty());
}

TEST(UserKeyAllowed, AMaskOfOneStopsDuringFeedHoldAndWorksAgainBehindIt) {
  EXPECT_TRUE(UserKeyAllowed(1, StateOf(false, false, false, false)));
  EXPECT_FALSE(UserKeyAllowed(1, StateOf(false, true, false, false)));
  EXPECT_TRUE(UserKeyAllowed(1, StateOf(false, false, false, false)));
}

TEST(UserKeyAllowed, AMaskOfThreeWorksIdleAndHeld) {
  EXPECT_TRUE(UserKeyAllowed(3, StateOf(false, false, false, false)));
  EXPECT_TRUE(UserKeyAllowed(3, StateOf(false, true, false, false)));
  EXPECT_FALSE(UserKeyAllowed(3, StateOf(true, false, false, false)));
  EXPECT_FALSE(UserKeyAllowed(3, StateOf(true, true, false, false)));
}

TEST(UserKeyAllowed, AnOpenCycleCountsAsRunning) {
  EXPECT_TRUE(UserKeyAllowed(4, StateOf(false, false, true, false)));
  EXPECT_FALSE(UserKeyAllowed(1, StateOf(false, false, true, false)));
  EXPECT_TRUE(UserKeyAllowed(8, StateOf(false, true, true, false)));
}

RC_GTEST_PROP(UserKeyAllowed, EveryStateHasExactlyOneBitAndZeroAllowsAll, ()) {
  const auto state = StateOf(*rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>(),
                             *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>());
  int allowedBits = 0;
  for (const std::int16_t bit : {1, 2, 4, 8}) allowedBits += UserKeyAllowed(bit, state) ? 1 : 0;
  RC_ASSERT(allowedBits == 1);
  RC_ASSERT(UserKeyAllowed(0, state));
  RC_ASSERT(UserKeyAllowed(15, state));
  // A mask is the union of its bits.
  const auto mask = static_cast<std::int16_t>(*rc::gen::inRange(1, 16));
  bool any = false;
  for (const std::int16_t bit : {1, 2, 4, 8}) {
    any = any || ((mask & bit) != 0 && UserKeyAllowed(bit, state));
  }
  RC_ASSERT(UserKeyAllowed(mask, state) == any);
}

}  // namespace
}  // namespace torvane::supervision

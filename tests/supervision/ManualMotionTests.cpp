// Reference, rollers, feed override, load positions and the direct move: the lines to the
// controller, and what is refused.
#include "Bench.h"
#include "core/General.h"
#include "supervision/JogSettings.h"
#include "supervision/ManualMotion.h"

namespace torvane::supervision {

using namespace tests;
namespace {

class ManualMotions : public ::testing::Test, protected Bench {
 protected:
  ManualMotions() { Controller.OnLine = {}; }

  /// The texts of the warnings since the last call.
  Lines Warnings() {
    Lines texts;
    for (const std::string& event : Happened()) {
      if (event.starts_with("warning ")) texts.push_back(event.substr(event.find('\n')));
    }
    return texts;
  }

  ManualMotion Motion{System, Trio, Dialogs};
  JogSettings Jog{Trio, System.Link};
};

TEST_F(ManualMotions, EachReferenceKeySendsItsWord) {
  for (std::size_t axes = 0; axes < 4; ++axes) Motion.Reference(axes);
  EXPECT_EQ(Sent(), (Lines{"VR(48)=10", "VR(48)=11", "VR(48)=12", "VR(48)=13"}));
}

TEST_F(ManualMotions, AReferenceIsRefusedInACycleARunAndAFeedHold) {
  for (bool core::MachineState::*bit :
       {&core::MachineState::MachineRunning, &core::MachineState::MachineFeedhold,
        &core::MachineState::MachineCycleBit}) {
    System.State.*bit = true;
    Motion.Reference(0);
    System.State.*bit = false;
    EXPECT_EQ(Sent(), Lines{});
    EXPECT_EQ(Warnings(), Lines{"\nCan Not Reference\nWhile Machine Is Running Or In Feedhold !"});
  }
}

TEST_F(ManualMotions, AnErrorOfTheMachineDoesNotKeepItFromReferencing) {
  System.State.MachineInError = 4096;
  Motion.Reference(1);
  EXPECT_EQ(Sent(), Lines{"VR(48)=11"});
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(ManualMotions, RollersGoOnByThreeLinesAndOffByOneThatSubtracts) {
  Motion.SwitchRollers(true);
  EXPECT_EQ(Sent(), (Lines{"VR(19)=VR(19) OR 131072", "VR(17)=VR(17) OR 32", "OP(8,VR(9))"}));
  Motion.SwitchRollers(false);
  EXPECT_EQ(Sent(), Lines{"VR(17)=VR(17)-32"});
}

TEST(FeedOverride, IsHeldWithinNothingAndTheWhole) {
  struct Row {
    float InForce;
    int Key;
    int Asked;
  };
  constexpr Row Rows[] = {{95, 4, 100}, {10, 1, 0},  {50, 1, 30},   {50, 2, 45},
                          {50, 3, 55},  {50, 4, 70}, {150, 2, 100}, {-5, 3, 0}};
  for (const Row& row : Rows) {
    FeedOverrideKeys keys;
    keys.Take(row.InForce);
    EXPECT_EQ(keys.Press(row.Key), row.Asked) << row.InForce << ", key " << row.Key;
  }
}

TEST(FeedOverride, PressesAddUpWithoutThePoll) {
  FeedOverrideKeys keys;
  keys.Take(100);
  EXPECT_EQ(keys.Press(1), 80);
  EXPECT_EQ(keys.Press(1), 60);
  EXPECT_EQ(keys.Press(3), 65);
  EXPECT_EQ(keys.Value(), 65);
}

TEST_F(ManualMotions, TheOverrideAskedForGoesOutAsAWholeNumberEvenInARun) {
  System.State.MachineRunning = true;
  Motion.RequestFeedOverride(75);
  EXPECT_EQ(Sent(), Lines{"VR(68)=75"});
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(ManualMotions, LoadPositionsAreReadInTheirOrder) {
  Controller.Values = {{"VR(86)", "1.5"}, {"VR(87)", "2"}, {"VR(88)", "-3.25"}, {"VR(89)", "4"}};
  EXPECT_EQ(Motion.ReadLoadPositions(), (LoadPositions{1.5F, 2, -3.25F, 4}));
  EXPECT_EQ(Sent(), (Lines{"? VR(86)", "? VR(87)", "? VR(88)", "? VR(89)"}));
}

TEST_F(ManualMotions, ALoadKeySendsItsTwoValuesAndItsWord) {
  const LoadPositions values = {12.3F, 100, -7.25F, 0};
  Motion.GoToLoadPosition(0, values);
  EXPECT_EQ(Sent(), (Lines{"VR(86)=12.3", "VR(87)=100", "VR(48)=17"}));
  Motion.GoToLoadPosition(1, values);
  EXPECT_EQ(Sent(), (Lines{"VR(88)=-7.25", "VR(89)=0", "VR(48)=18"}));
}

TEST_F(ManualMotions, ALoadKeyInARunSendsItsValuesAndWarnsButMovesNothing) {
  System.State.MachineRunning = true;
  Motion.GoToLoadPosition(0, {1, 2, 3, 4});
  EXPECT_EQ(Sent(), (Lines{"VR(86)=1", "VR(87)=2"}));
  EXPECT_EQ(Warnings(), Lines{"\nCan Not Move\nWhile Machine Is Running Or In Feedhold !"});
}

TEST_F(ManualMotions, AnErrorOfTheMachineKeepsItFromMoving) {
  System.State.MachineInError = 4096;
  Motion.GoToLoadPosition(1, {1, 2, 3, 4});
  EXPECT_EQ(Sent(), (Lines{"VR(88)=3", "VR(89)=4"}));
  Motion.MoveTo({1, 2, 3});
  EXPECT_EQ(Sent(), Lines{});
  EXPECT_EQ(Warnings().size(), 2U);
}

TEST_F(ManualMotions, AMoveSendsItsTargetAndItsWord) {
  Motion.MoveTo({675.25, -0.5, 12});
  EXPECT_EQ(Sent(), (Lines{"VR(22)=675.25", "VR(23)=-0.5", "VR(95)=12", "VR(48)=15"}));
}

TEST_F(ManualMotions, ARefusedMoveSendsNothing) {
  System.State.MachineRunning = true;
  Motion.MoveTo({1, 2, 3});
  EXPECT_EQ(Sent(), Lines{});
  EXPECT_EQ(Warnings(), Lines{"\nCan Not Move\nWhile Machine Is Running Or In Feedhold !"});
}

// ---- what the jog screen offers ----

TEST_F(ManualMotions, EachDistanceSendsItsCaptionsNumber) {
  const std::array<const char*, 6> numbers = {"0.01", "0.1", "1", "10", "50", "100"};
  for (int option = 1; option <= 6; ++option) {
    Jog.SendDistance(option);
    EXPECT_EQ(Sent(), (Lines{"VR(11)=1", std::string("VR(12)=") +
                                             numbers[static_cast<std::size_t>(option - 1)]}));
  }
  Jog.SendDistance(ContinuousJog);
  EXPECT_EQ(Sent(), Lines{"VR(11)=0"});
}

TEST_F(ManualMotions, ASpeedIsAPercentageOfTheFullJogSpeed) {
  System.Link.JogMaxSpeed = 15000;
  Jog.SendSpeed(1);
  Jog.SendSpeed(4);
  Jog.SendSpeed(7);
  EXPECT_EQ(Sent(), (Lines{"VR(10)=150.00", "VR(10)=3750.00", "VR(10)=15000.00"}));
}

TEST_F(ManualMotions, AMissingFullJogSpeedIsTwentyThousandEverywhere) {
  System.Link.JogMaxSpeed = 0;
  EXPECT_EQ(JogSpeedLimit(0), 20000);
  EXPECT_EQ(JogSpeedLimit(-1), 20000);
  Jog.SendSpeed(5);
  EXPECT_EQ(Sent(), Lines{"VR(10)=10000.00"});
  Controller.Values["VR(10)"] = "1600";
  EXPECT_DOUBLE_EQ(Jog.Read().Percent, 8);
}

TEST(JogSpeeds, TheEndOfABandBelongsToTheLowerSpeed) {
  struct Row {
    double Percent;
    int Option;
  };
  constexpr Row Rows[] = {{-3, 1},    {0, 1},  {4, 1},    {4.01, 2}, {8, 2},
                          {8.01, 3},  {20, 3}, {20.5, 4}, {40, 4},   {60, 5},
                          {60.01, 6}, {80, 6}, {80.1, 7}, {100, 7},  {1e6, 7}};
  for (const Row& row : Rows) EXPECT_EQ(JogSpeedOption(row.Percent), row.Option) << row.Percent;
}

TEST_F(ManualMotions, AControllerThatJogsByStepsSelectsContinuous) {
  EXPECT_EQ(Jog.DistanceOptionFor({.BySteps = true, .Distance = 3, .Percent = 0}), ContinuousJog);
  EXPECT_EQ(Sent(), Lines{});
}

TEST_F(ManualMotions, AStoredDistanceOfOneToSixIsTheIndexOfAnOption) {
  for (int distance = 1; distance <= 6; ++distance)
    EXPECT_EQ(Jog.DistanceOptionFor({.BySteps = false, .Distance = distance, .Percent = 0}),
              distance);
  EXPECT_EQ(Sent(), Lines{});
}

TEST_F(ManualMotions, AnyOtherStoredDistanceIsResetByTwoLines) {
  for (const int distance : {0, 7, 50, -1}) {
    EXPECT_EQ(Jog.DistanceOptionFor({.BySteps = false, .Distance = distance, .Percent = 0}),
              ContinuousJog);
    EXPECT_EQ(Sent(), (Lines{"VR(11)=0", "VR(12)=10"}));
  }
}

}  // namespace
}  // namespace torvane::supervision

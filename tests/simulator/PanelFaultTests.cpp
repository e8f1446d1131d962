// What can be made to go wrong from the panel, and what the machine tells of it.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/MachineState.h"
#include "simulator/OperatorCommands.h"
#include "support/SimulatedMachine.h"

namespace torvane::simulator {
namespace {

namespace StatusBit = core::StatusBit;
using torvane::tests::SimulatedMachine;

std::string Say(SimulatedMachine& machine, std::string_view line) {
  return CarryOutOperatorCommand(line, machine.Controller).Text;
}

/// A cut of 100 s with settings of the laser in front.
void StartCut(SimulatedMachine& machine) {
  machine.Exchange("TABLE(500,5,80,1,60,500,2,1)");
  machine.Exchange("TABLE(507,1.5,0.5,0.25,20,3,0)");
  machine.Exchange("TABLE(513,1,1000,0,0,0,600,0)");
  machine.Exchange("TABLE(520,-999)");
  Say(machine, "start");
  machine.Run(0.1);
}

TEST(LaserValues, LiveDuringACutAndStandStillOutsideIt) {
  SimulatedMachine machine;
  StartCut(machine);
  ASSERT_NE(machine.Status() & StatusBit::Beam, 0);
  std::map<int, std::pair<double, double>> range;
  const int numbers[] = {70, 71, 72, 73, 74, 75, 76, 77, 78, 30, 31};
  for (const int n : numbers) range[n] = {1e9, -1e9};
  for (int i = 0; i < 200; ++i) {
    machine.Run(0.05);
    for (const int n : numbers) {
      range[n].first = std::min(range[n].first, machine.Variable(n));
      range[n].second = std::max(range[n].second, machine.Variable(n));
    }
  }
  for (const int n : {72, 73, 77, 31}) EXPECT_LT(range[n].first, range[n].second) << n;
  for (const int n : {70, 71, 74, 78}) EXPECT_EQ(range[n].first, range[n].second) << n;
  Say(machine, "stop");
  EXPECT_EQ(machine.Variable(70), 80);
  EXPECT_EQ(machine.Variable(72), 60);
  EXPECT_EQ(machine.Variable(73), 500);
}

TEST(LaserValues, WhatALineWritesDuringACutStays) {
  SimulatedMachine machine;
  StartCut(machine);
  machine.Exchange("VR(72)=33");
  machine.Run(3);
  EXPECT_NEAR(machine.Variable(72), 33, 3.1);
  Say(machine, "stop");
  EXPECT_EQ(machine.Variable(72), 33);
}

TEST(Panel, VariablesAreSetAndToldAtRunTime) {
  SimulatedMachine machine;
  EXPECT_EQ(Say(machine, "set 69 90.5"), "");
  EXPECT_EQ(Say(machine, "get 69"), "VR(69) = 90.5");
  for (const char* bad : {"set", "set 69", "set 69 x", "set x 1", "set 1024 1", "set -1 1",
                          "set 1.5 1", "set 69 1 2", "get", "get x", "get 1024", "get -1"}) {
    EXPECT_NE(Say(machine, bad), "") << bad;
  }
  EXPECT_EQ(machine.Variable(69), 90.5);
}

TEST(Panel, AVariableIsSetAsIfALineHadWrittenIt) {
  SimulatedMachine machine;
  Say(machine, "set 48 10");
  EXPECT_EQ(machine.Machine().Mode(), MachineMode::Manual);
}

TEST(Panel, TheCycleBitStandsAlone) {
  SimulatedMachine machine;
  Say(machine, "cycle on");
  EXPECT_EQ(machine.Status() & (StatusBit::Cycle | StatusBit::Running), StatusBit::Cycle);
  EXPECT_EQ(machine.Exchange("? VR(19)"), "? VR(19)\r\n8192\r\n>>");
  Say(machine, "cycle off");
  EXPECT_EQ(machine.Status(), 0);
  EXPECT_NE(Say(machine, "cycle"), "");
}

TEST(Panel, SilenceIsADeadLine) {
  SimulatedMachine machine;
  machine.Port.Open({});
  Say(machine, "silence on");
  machine.Port.Write("VR(5)=7\r");
  machine.Run(60);
  EXPECT_EQ(machine.Port.BytesWaiting(), 0U);
  EXPECT_EQ(machine.Variable(5), 0) << "it was not carried out either";
  Say(machine, "silence off");
  EXPECT_EQ(machine.Exchange("? VR(5)"), "? VR(5)\r\n0\r\n>>");
  EXPECT_NE(Say(machine, "silence maybe"), "");
}

TEST(Panel, ThePercentComesForTheChosenLineOnce) {
  SimulatedMachine machine;
  Say(machine, "percent VR(69)=");
  EXPECT_EQ(machine.Exchange("VR(68)=50"), "VR(68)=50\r\n>>");
  EXPECT_EQ(machine.Exchange("vr(69)=50"), "vr(69)=50\r\n%\r\n>>");
  EXPECT_EQ(machine.Variable(69), 100) << "a refused line is not carried out";
  EXPECT_EQ(machine.Exchange("VR(69)=50"), "VR(69)=50\r\n>>");
  EXPECT_NE(Say(machine, "percent"), "");
}

TEST(Panel, AVariableOfTheKeypadChangesByItself) {
  SimulatedMachine machine;
  machine.Exchange("VR(120)=1");
  EXPECT_EQ(Say(machine, "later 120 0 3"), "");
  machine.Run(2.9);
  EXPECT_EQ(machine.Variable(120), 1);
  machine.Run(0.2);
  EXPECT_EQ(machine.Variable(120), 0);
  EXPECT_EQ(machine.Count(EventKind::ChangedByItself), 1);
  EXPECT_EQ(EventText(machine.Events.back()), "changed by itself: VR 120 now 0.00");
  for (const char* bad : {"later", "later 120 0", "later 120 0 -1", "later 2000 0 1"}) {
    EXPECT_NE(Say(machine, bad), "") << bad;
  }
}

TEST(Panel, TheSuctionFollowsTheBeamAndRunsOn) {
  SimulatedMachine machine;
  StartCut(machine);
  EXPECT_EQ(machine.Variable(121), 1);
  Say(machine, "stop");
  machine.Run(9.5);
  EXPECT_EQ(machine.Variable(121), 1);
  machine.Run(1);
  EXPECT_EQ(machine.Variable(121), 0);
}

TEST(Jog, EveryWordEveryStopAndTheTravelAreTold) {
  SimulatedMachine machine;
  machine.Exchange("VR(10)=6000");
  machine.Exchange("VR(48)=19");
  machine.Run(0.2);
  machine.Exchange("VR(48)=19");
  machine.Run(0.3);
  machine.Exchange("VR(48)=0");
  EXPECT_EQ(machine.Count(EventKind::JogWord), 2);
  EXPECT_EQ(machine.Count(EventKind::JogStopWord), 1);
  ASSERT_EQ(machine.Count(EventKind::JogEnded), 1);
  for (const auto& event : machine.Events) {
    if (event.Kind != EventKind::JogEnded) continue;
    EXPECT_EQ(EventText(event), "jog ended: VR(48) 19 after mm 50.00");
  }
  machine.Exchange("VR(48)=0");
  EXPECT_EQ(machine.Count(EventKind::JogStopWord), 2) << "also where nothing jogs";
  EXPECT_EQ(machine.Count(EventKind::JogEnded), 1);
}

TEST(Jog, AJogThatNobodyWatchesIsTold) {
  SimulatedMachine machine;
  machine.Exchange("VR(48)=21");
  for (int i = 0; i < 20; ++i) {
    machine.Run(0.5);
    machine.Exchange("? VR(19)");
  }
  EXPECT_EQ(machine.Count(EventKind::JogUnwatched), 0) << "the line is alive";
  machine.Run(1.5);
  EXPECT_EQ(machine.Count(EventKind::JogUnwatched), 1);
  machine.Run(10);
  EXPECT_EQ(machine.Count(EventKind::JogUnwatched), 1) << "told once";
  machine.Exchange("VR(48)=0");
  machine.Run(10);
  machine.Exchange("VR(48)=10");
  machine.Run(0.9);
  machine.Run(5);
  EXPECT_EQ(machine.Count(EventKind::JogUnwatched), 1) << "a reference ends by itself";
}

TEST(Reference, OneThatFailsEndsHalfWayWithAMessage) {
  SimulatedMachine machine;
  machine.Exchange("VR(22)=100");
  machine.Exchange("VR(48)=15");
  machine.Run(10);
  Say(machine, "reference fail");
  machine.Exchange("VR(48)=11");
  machine.Run(60);
  EXPECT_NEAR(machine.Machine().At().X, 50, 1e-9);
  EXPECT_EQ(machine.Count(EventKind::ReferenceFailed), 1);
  EXPECT_NE(machine.Status() & StatusBit::InError, 0);
  EXPECT_EQ(machine.Variable(Vr::LogicMessages), 1);
  EXPECT_EQ(machine.Machine().Mode(), MachineMode::Idle);
  Say(machine, "reference good");
  Say(machine, "clear");
  machine.Exchange("VR(48)=11");
  machine.Run(60);
  EXPECT_EQ(machine.Machine().At().X, 0);
  EXPECT_EQ(machine.Count(EventKind::ReferenceFailed), 1);
  EXPECT_NE(Say(machine, "reference"), "");
}

TEST(Rollers, ASecondOffSpoilsTheWordAndIsTold) {
  SimulatedMachine machine;
  machine.Exchange("VR(17)=VR(17)-32");
  EXPECT_EQ(machine.Count(EventKind::RollersSpoilt), 1);
  EXPECT_EQ(machine.Variable(Vr::LogicMessages), -32);
  EXPECT_EQ(machine.Count(EventKind::RollersOff), 0);
}

TEST(Rollers, OnAgainBeforeTheyAreDownTheyStayUp) {
  SimulatedMachine machine;
  const auto on = [&] {
    machine.Exchange("VR(19)=VR(19) OR 131072");
    machine.Exchange("VR(17)=VR(17) OR 32");
  };
  on();
  machine.Exchange("VR(17)=VR(17)-32");
  machine.Run(0.3);
  on();
  machine.Run(5);
  EXPECT_NE(machine.Status() & StatusBit::RollersOn, 0);
  EXPECT_EQ(machine.Count(EventKind::RollersOff), 0);
}

RC_GTEST_PROP(PanelProperty, AnyWordsLeaveTheMachineAlive, ()) {
  SimulatedMachine machine;
  const std::vector<std::string> words{"start",         "stop",           "hold",
                                       "release",       "clear",          "cycle on",
                                       "cycle off",     "percent ? VR",   "get 31",
                                       "set 72 5",      "set 48 19",      "set 48 0",
                                       "later 120 1 2", "later 5 3 0",    "reference fail",
                                       "set 48 10",     "reference good", "power-cycle",
                                       "stop-at 2 1",   "error 3",        "storage gone",
                                       "storage good",  "set 17 32",      "set 17 0",
                                       "set 91 3",      "set 91 1",       "beam"};
  const auto script = *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(words));
  for (const auto& word : script) {
    Say(machine, word);
    machine.Run(*rc::gen::inRange(0, 30) / 10.0);
  }
  Say(machine, "clear");
  Say(machine, "release");
  Say(machine, "stop");
  Say(machine, "set 91 1");
  Say(machine, "set 48 0");
  machine.Run(2000);
  RC_ASSERT(machine.Machine().Mode() == MachineMode::Idle);
  RC_ASSERT((machine.Status() & StatusBit::Running) == 0);
}

}  // namespace
}  // namespace torvane::simulator

// What the monitoring says of the records that the poll has read.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "monitoring/MonitorValues.h"

namespace torvane::monitoring {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string ValueOf(const MonitorSnapshot& snapshot, std::string_view key) {
  for (std::size_t i = 0; i < MonitorItems.size(); ++i) {
    if (MonitorItems[i].Key == key) return snapshot.Values[i];
  }
  return "(no such item)";
}

struct MonitorValues : ::testing::Test {
  MonitorValues() {
    auto& program = System.Programs[System.ActiveSlot];
    program.Selected = true;
    program.DirectoryName = "SHOP";
    program.ProgramName = "STAR";
    program.TableLines = 40;
    program.BatchCounters = {6, 120, 20, 3, 17};
  }
  std::string Value(std::string_view key) { return ValueOf(Reader.Read(System, {}), key); }
  /// Status of a tick: running, feed hold, cycle, and the line reached.
  std::string Execution(bool running, bool hold, bool cycle, std::int16_t line) {
    System.State.MachineRunning = running;
    System.State.MachineFeedhold = hold;
    System.State.MachineCycleBit = cycle;
    System.State.RunningBlock = line;
    return Value("execution");
  }

  core::System System;
  MonitorReader Reader;
};

TEST_F(MonitorValues, FiguresAreAsTheMainScreenHasThem) {
  System.State.XPosition = 12.3F;
  System.State.YPosition = -0.0004F;
  System.State.ZPosition = 1500;
  System.State.FeedRate = 6000;
  System.State.FeedOverride = 110;
  System.State.RunningBlock = 7;
  EXPECT_EQ(Value("avail"), "AVAILABLE");
  EXPECT_EQ(Value("program"), "SHOP/STAR");
  EXPECT_EQ(Value("line"), "7");
  EXPECT_EQ(Value("Xact"), "12.300");
  EXPECT_EQ(Value("Zact"), "1500.000");
  EXPECT_EQ(Value("path_feedrate"), "6000");
  EXPECT_EQ(Value("feed_override"), "110");
}

TEST_F(MonitorValues, PartsAreThoseOfTheSheetsThatAreDone) {
  EXPECT_EQ(Value("part_count"), "18");
  EXPECT_EQ(Value("part_target"), "120");
  EXPECT_EQ(Value("sheet_count"), "3");
  EXPECT_EQ(Value("sheet_target"), "20");
  EXPECT_EQ(Value("sheet_remaining"), "17");
  System.Programs[System.ActiveSlot].BatchCounters = {2'000'000'000, 0, 0, 2'000'000'000, -5};
  EXPECT_EQ(Value("part_count"), "4000000000000000000");
}

TEST_F(MonitorValues, AProgramRunsToItsEnd) {
  EXPECT_EQ(Execution(false, false, false, 0), "READY");
  EXPECT_EQ(Execution(true, false, true, 3), "ACTIVE");
  EXPECT_EQ(Execution(true, true, true, 9), "FEED_HOLD");
  EXPECT_EQ(Execution(true, false, true, 30), "ACTIVE");
  EXPECT_EQ(Execution(false, false, false, 40), "PROGRAM_COMPLETED");
  EXPECT_EQ(Execution(false, false, false, 40), "PROGRAM_COMPLETED") << "until another is in force";
}

TEST_F(MonitorValues, AProgramIsStopped) {
  Execution(true, false, true, 3);
  EXPECT_EQ(Execution(false, false, false, 12), "STOPPED");
  EXPECT_EQ(Execution(true, false, true, 12), "ACTIVE");
  EXPECT_EQ(Execution(false, false, true, 13), "INTERRUPTED") << "its cycle stands open";
  EXPECT_EQ(Execution(false, false, false, 13), "STOPPED");
}

TEST_F(MonitorValues, AnotherProgramIsReady) {
  Execution(true, false, true, 3);
  EXPECT_EQ(Execution(false, false, false, 40), "PROGRAM_COMPLETED");
  System.Programs[System.ActiveSlot].ProgramName = "GASKET";
  EXPECT_EQ(Value("execution"), "READY");
  System.ActiveSlot = 2;
  EXPECT_EQ(Value("program"), "") << "a slot without a program";
  EXPECT_EQ(Value("execution"), "READY");
}

TEST_F(MonitorValues, TheScreensThatMoveTheMachineByHandAreTheManualMode) {
  for (const char* form : {"MachineForm", "XYJogForm", "MoveForm", "LoadForm"}) {
    System.Console.CurrentForm = form;
    EXPECT_EQ(Value("mode"), "MANUAL") << form;
  }
  System.State.MachineRunning = true;
  EXPECT_EQ(Value("mode"), "AUTOMATIC");
  System.State.MachineRunning = false;
  System.Console.CurrentForm = "ProgramForm";
  EXPECT_EQ(Value("mode"), "AUTOMATIC");
}

TEST_F(MonitorValues, MessagesGoByNameWhereTheyAreListed) {
  EXPECT_THAT(Reader.Read(System, {}).Messages, IsEmpty());
  System.State.MachineInError = 4096;
  ASSERT_EQ(Reader.Read(System, {}).Messages.size(), 1U);
  EXPECT_EQ(Reader.Read(System, {}).Messages[0].Code, "message");
  const std::vector<ActiveMessage> listed = {{"IO.5", "Gas pressure low"}};
  EXPECT_EQ(Reader.Read(System, listed).Messages, listed);
  EXPECT_EQ(Reader.Read(System, std::vector<ActiveMessage>{}).Messages[0].Code, "message")
      << "the bit is older or newer than the list";
}

}  // namespace
}  // namespace torvane::monitoring

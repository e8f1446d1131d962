// A console's Polling.txt, recorded with the simulated machine and replayed by torvane-sim to a
// second console: real processes on a pseudo-terminal.
#include <filesystem>

#include <gmock/gmock.h>

#include "Programs.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;
namespace fs = std::filesystem;

constexpr int LongMs = 60000;

struct ReplayProcesses : EndToEnd {
  /// A console that starts and polls for a moment; how many ticks that is nobody knows, so it is
  /// killed in the middle of them, as a trace of trouble may end.
  void Record() {
    TurnTraceOn();
    StartMachine(1);
    StartIdleConsole(Console);
    Console.Kill();
    Machine.Kill();
    fs::rename(Place("installation/Service/Polling.txt"), Place("Polling.txt"));
  }
  void TurnTraceOn() const {
    Directory.Put("installation/Control.cnc", "Trio Link : TRUE\r\nPoll Log : TRUE\r\n");
  }
  void StartIdleConsole(RunningProgram& console) {
    Directory.Put("keys.txt",
                  "patience 20000\nwait-form FrontEnd\npause 300\nsay READY\npause 600000\n");
    console.Start(TORVANE_PROGRAM, {"--device", "1=" + Place("line"), "--window", "1024x768",
                                    "--keys", Place("keys.txt"), Place("installation")});
    ASSERT_TRUE(console.WaitFor("READY", LongMs));
  }
  void StartReplay() {
    Player.Start(TORVANE_SIM_PROGRAM, {"--pty", Place("line"), "--replay", Place("Polling.txt")});
    ASSERT_TRUE(Player.WaitFor("listening", LongMs));
  }

  RunningProgram Second{"the second torvane"};
  RunningProgram Player{"torvane-sim --replay"};
};

TEST_F(ReplayProcesses, AStartAndItsPollGoAsRecorded) {
  Record();
  StartReplay();
  StartIdleConsole(Second);
  // It polls on for longer than the recorded one did.
  for (int i = 0; i < 600; ++i) {
    Player.Type("state");
    if (Player.WaitForQuietly("after its end", 100)) break;
  }
  Second.Kill();
  EXPECT_EQ(Player.WaitForEnd(LongMs), 0) << Player.Output();
  EXPECT_THAT(Player.Output(), HasSubstr(" 0 lines different"));
}

TEST_F(ReplayProcesses, AnotherParameterOfTheMachineIsNamed) {
  Record();
  const std::string parameters = File("Data/Machine.prm");
  Directory.Put("installation/Data/Machine.prm", parameters + "\r\nVR(7)=77\r\n");
  StartReplay();
  StartIdleConsole(Second);
  Second.Kill();
  EXPECT_EQ(Player.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Player.Output(), HasSubstr("  recorded: ? VR(59)\n  came:     VR(7)=77\n"));
}

}  // namespace
}  // namespace torvane::tests

// The console as a process: signals, a second one, a line that dies while it ends.
#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>

#include "Programs.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;

constexpr int LongMs = 60000;

struct Processes : EndToEnd {
  /// A console whose machine has cut one sheet; it stays at the main screen.
  void CutOneSheet() {
    StartMachine(20);
    Directory.Put("keys.txt",
                  "patience 20000\n"
                  "wait-form SetupForm\n"
                  "key X\n"
                  "wait-closed SetupForm\n"
                  "say READY\n"
                  "wait-running\n"
                  "wait-stopped\n"
                  "pause 300\n"
                  "no-warning\n"
                  "say CUT\n"
                  "pause 600000\n");
    StartConsoleWith({"--select", "SHOP/STAR", "--keys", Place("keys.txt")});
    ASSERT_TRUE(Console.WaitFor("READY", LongMs));
    Machine.Type("start");
    ASSERT_TRUE(Console.WaitFor("CUT", LongMs));
  }

  RunningProgram Second{"the second torvane"};
};

TEST_F(Processes, ASignalEndsTheConsoleInOrderWithItsCountersSaved) {
  CutOneSheet();
  // The machine's own counter moved after the console last read it.
  const std::string before = File("Actvprg1.btc");
  Console.Signal(SIGTERM);
  // The script has not been played to its end, which is no fault of the signal.
  EXPECT_EQ(Console.WaitForEnd(LongMs), 4);
  EXPECT_EQ(File("Actvprg1.btc"), "0\r\n0\r\n0\r\n1\r\n0\r\n******\r\n");
  EXPECT_NE(before, File("Actvprg1.btc"));
  EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
}

TEST_F(Processes, EverySignalOfASessionsEndDoesTheSame) {
  for (const int number : {SIGINT, SIGHUP, SIGTERM}) {
    RunningProgram console("torvane");
    Directory.Put("keys.txt", "patience 20000\nwait-form FrontEnd\nsay READY\n");
    console.Start(TORVANE_PROGRAM, {"--simulate", "--window", "1024x768", "--keys",
                                    Place("keys.txt"), Place("installation")});
    ASSERT_TRUE(console.WaitFor("READY", LongMs));
    console.Signal(number);
    EXPECT_EQ(console.WaitForEnd(LongMs), 0) << number;
  }
}

TEST_F(Processes, ASignalInTheSplashLeavesTheCountersOfTheLastSession) {
  CutOneSheet();
  Console.Signal(SIGTERM);
  EXPECT_EQ(Console.WaitForEnd(LongMs), 4);
  const std::string counters = File("Actvprg1.btc");
  ASSERT_THAT(counters, HasSubstr("******"));
  Directory.Put("keys.txt", "wait-form SplashForm\nsay SPLASH\n");
  Second.Start(TORVANE_PROGRAM, {"--simulate", "--window", "1024x768", "--keys", Place("keys.txt"),
                                 Place("installation")});
  ASSERT_TRUE(Second.WaitFor("SPLASH", LongMs));
  Second.Signal(SIGTERM);
  EXPECT_EQ(Second.WaitForEnd(LongMs), 0);
  EXPECT_EQ(File("Actvprg1.btc"), counters);
}

TEST_F(Processes, ADeadLineDoesNotHoldASignalUp) {
  CutOneSheet();
  Machine.Freeze();
  Console.Signal(SIGTERM);
  EXPECT_EQ(Console.WaitForEnd(15000), 4);
  EXPECT_THAT(File("Actvprg1.btc"), HasSubstr("******")) << "the counters as they were last read";
}

/// A jog key is held while the program is asked to end: the stop is the first of its last lines.
TEST_F(Processes, ASignalUnderAHeldJogKeyStopsTheMachine) {
  StartMachine(1);
  Directory.Put("keys.txt",
                "patience 20000\n"
                "wait-form FrontEnd\n"
                "key F3\n"
                "key J\n"
                "wait-form XYJogForm\n"
                "pause 1000\n"
                "press Right\n"
                "pause 300\n"
                "say HELD\n"
                "pause 600000\n");
  StartConsoleWith({"--keys", Place("keys.txt")});
  ASSERT_TRUE(Console.WaitFor("HELD", LongMs));
  ASSERT_TRUE(Machine.WaitFor("jog word", LongMs));
  Console.Signal(SIGTERM);
  EXPECT_EQ(Console.WaitForEnd(LongMs), 4);
  EXPECT_TRUE(Machine.WaitFor("jog stop word", 5000));
  EXPECT_TRUE(Machine.WaitFor("jog ended", 5000));
}

TEST_F(Processes, ASecondConsoleOnTheInstallationEndsWithOneSentence) {
  Directory.Put("keys.txt", "patience 20000\nwait-form FrontEnd\nsay READY\npause 60000\n");
  Console.Start(TORVANE_PROGRAM, {"--simulate", "--window", "1024x768", "--keys", Place("keys.txt"),
                                  Place("installation")});
  ASSERT_TRUE(Console.WaitFor("READY", LongMs));
  const std::string control = File("Control.cfg");
  Second.Start(TORVANE_PROGRAM,
               {"--simulate", "--select", "SHOP/STAR", "--exit-after-run", Place("installation")});
  EXPECT_EQ(Second.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Second.Errors(),
              HasSubstr("torvane: .\\Torvane.lock: another console works on this installation\n"));
  EXPECT_EQ(File("Actvprg1.cfg"), "(missing)") << "it has written nothing";
  EXPECT_EQ(File("Control.cfg"), control);
  EXPECT_TRUE(Console.Runs());
  Console.Signal(SIGTERM);
  EXPECT_EQ(Console.WaitForEnd(LongMs), 4);
}

TEST_F(Processes, AConsoleWaitsForOneThatIsEnding) {
  Directory.Put("keys.txt", "patience 20000\nwait-form FrontEnd\nsay READY\npause 1500\nend\n");
  Console.Start(TORVANE_PROGRAM, {"--simulate", "--window", "1024x768", "--keys", Place("keys.txt"),
                                  Place("installation")});
  ASSERT_TRUE(Console.WaitFor("READY", LongMs));
  Second.Start(TORVANE_PROGRAM, {"--simulate", "--exit-after-run", Place("installation")});
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_EQ(Second.WaitForEnd(LongMs), 0);
}

TEST_F(Processes, ALineThatDiesEndsAnUnattendedRunWithAStatus) {
  StartMachine(5);
  StartConsoleWith({"--select", "SHOP/STAR", "--exit-after-run"});
  ASSERT_TRUE(Machine.Runs());
  // Its first status line comes once the machine runs.
  bool running = false;
  for (int tries = 0; tries < 60 && !running; ++tries) {
    Machine.Type("start");
    running = Console.WaitForQuietly("running", 500);
  }
  ASSERT_TRUE(running);
  Machine.Kill();
  EXPECT_EQ(Console.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Console.Errors(), HasSubstr("GetTrio Timeout"));
}

TEST_F(Processes, TheFileOfAMissingMachineIsNotedOnTheSimulatedMachineToo) {
  std::filesystem::remove(Place("installation/Data/Machine.dat"));
  Console.Start(TORVANE_PROGRAM, {"--simulate", "--exit-after-run", Place("installation")});
  EXPECT_EQ(Console.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Console.Errors(), HasSubstr("Machine.dat"));
  EXPECT_THAT(File("Service/LastFile.txt"), HasSubstr("Machine.dat"));
}

}  // namespace
}  // namespace torvane::tests

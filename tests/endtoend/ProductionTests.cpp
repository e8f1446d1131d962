// From the splash to the shutdown with the real programs and a real line between them.
#include <algorithm>

#include "Programs.h"

namespace torvane::tests {
namespace {

constexpr int LongMs = 60000;

/// "Real Time Profiling" of the example installation, red in the high byte.
constexpr unsigned TraceColour = 0xFFFF00;

/// The program is named on the pads and selected; SetupForm stands.
const std::string SelectStar =
    "patience 20000\n"
    "wait-form SplashForm\n"
    "wait-closed SplashForm\n"
    "wait-form FrontEnd\n"
    "key F1\n"
    "wait-form ProgramForm\n"
    "key D\n"
    "wait-form KeyboardForm\n"
    "text shop\n"
    "key Enter\n"
    "wait-closed KeyboardForm\n"
    "key P\n"
    "wait-form KeyboardForm\n"
    "text star\n"
    "key Enter\n"
    "wait-closed KeyboardForm\n"
    "key S\n"
    "wait-form SetupForm\n"
    "wait-closed ProgramForm\n"
    "wait-label SetupForm MaterialDescription Brass 1.5 mm\n";

/// SetupForm closed, so that the plot shows; the machine is told to start.
const std::string StartRun =
    "key X\n"
    "wait-closed SetupForm\n"
    "say READY\n"
    "wait-running\n";

const std::string ShutDown =
    "no-warning\n"
    "key F12\n"
    "wait-form ShutdownForm\n"
    "key O\n";

int CountText(const std::string& text, const std::string& part) {
  int count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

TEST_F(EndToEnd, AProgramIsSelectedRunAndCountedAndTheConsoleShutDown) {
  StartMachine(6);
  StartConsole(SelectStar + StartRun + "pause 300\npicture " + Place("early.png") +
               "\npause 1000\npicture " + Place("later.png") +
               "\nwait-stopped\npause 500\npicture " + Place("ended.png") + "\n" + ShutDown);
  ASSERT_TRUE(Console.WaitFor("READY", LongMs));
  Machine.Type("start");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);

  const int early = CountPixels(Place("early.png"), TraceColour);
  const int later = CountPixels(Place("later.png"), TraceColour);
  const int ended = CountPixels(Place("ended.png"), TraceColour);
  EXPECT_LT(early, later);
  EXPECT_LT(later, ended);
  // Parts per sheet, parts and sheets required, sheets completed, sheets to go: one was counted.
  EXPECT_EQ(File("Actvprg1.btc"), "0\r\n0\r\n0\r\n1\r\n0\r\n******\r\n");
  EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
  EXPECT_TRUE(Machine.Runs());
}

TEST_F(EndToEnd, RepliesInPiecesChangeNothing) {
  StartMachine(20, {"pieces=1"});
  StartConsole(SelectStar + StartRun + "wait-stopped\npause 500\n" + ShutDown);
  ASSERT_TRUE(Console.WaitFor("READY", LongMs));
  Machine.Type("start");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
}

TEST_F(EndToEnd, ASilentLineGivesOneQuestionAndCancelGoesOn) {
  StartMachine(20);
  StartConsole(SelectStar + StartRun +
               "pause 300\n"
               "say SILENCE\n"
               "wait-warning GetTrio Timeout\n"
               "say ASKED\n"
               "pause 500\n"
               "key C\n"
               "wait-closed WarningForm\n"
               "pause 1000\n"
               "no-warning\n"
               "wait-stopped\n"
               "pause 300\n" +
               ShutDown);
  ASSERT_TRUE(Console.WaitFor("READY", LongMs));
  Machine.Type("start");
  ASSERT_TRUE(Console.WaitFor("SILENCE", LongMs));
  Machine.Freeze();
  const bool asked = Console.WaitFor("ASKED", LongMs);
  Machine.Thaw();
  ASSERT_TRUE(asked);
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_EQ(CountText(File("Service/Errors.txt"), "*** ERROR ***"), 1);
}

TEST_F(EndToEnd, APulledCableLeavesTheConsoleAliveAndOkEndsIt) {
  StartMachine(20);
  StartConsole(SelectStar + StartRun +
               "pause 300\n"
               "say PULL\n"
               "wait-warning GetTrio Timeout\n"
               "picture " +
               Place("asked.png") +
               "\n"
               "pause 1000\n"
               "wait-warning GetTrio Timeout\n"
               "answer O\n");
  ASSERT_TRUE(Console.WaitFor("READY", LongMs));
  Machine.Type("start");
  ASSERT_TRUE(Console.WaitFor("PULL", LongMs));
  Machine.Kill();
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_GE(CountText(File("Service/Errors.txt"), "*** ERROR ***"), 1);
}

}  // namespace
}  // namespace torvane::tests

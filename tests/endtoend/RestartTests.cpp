// A run that is stopped inside an arc, a console that ends by F12 or is killed, and a second one
// that goes on in the run: real programs on a real line.
#include <string>

#include <gmock/gmock.h>

#include "Programs.h"
#include "platform/DiskFileSystem.h"
#include "simulator/PathFile.h"
#include "support/SheetPrograms.h"
#include "support/SheetStops.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;

constexpr int LongMs = 60000;

/// The arc of the square: its record in ".krw" and ".drw", and where the first run stops in it, mm.
constexpr int Arc = 7;
constexpr double StopAlong = 12;

std::string Times(int count, const std::string& step) {
  std::string steps;
  for (int i = 0; i < count; ++i) steps += step;
  return steps;
}

class RestartOfProcesses : public EndToEnd {
 protected:
  /// The program is selected, cut once as a whole, and stopped in its second run.
  void CutAndStop(const std::string& then) {
    Directory.Put("installation/Programs/SHOP/SHEET.prg", Square("G41 K0.2"));
    StartMachine(30);
    Directory.Put("keys.txt",
                  "patience 30000\nwait-form SetupForm\nkey X\nwait-closed SetupForm\nsay READY\n"
                  "wait-running\nwait-stopped\nsay CUT\nwait-running\nwait-stopped\n"
                  "no-warning\nsay STOPPED\n" +
                      then);
    StartConsoleWith({"--select", "SHOP/SHEET", "--keys", Place("keys.txt")});
    ASSERT_TRUE(Console.WaitFor("READY", LongMs));
    Machine.Type("start");
    ASSERT_TRUE(Console.WaitFor("CUT", LongMs));
    Whole = NewPieces();
    Machine.Type("stop-at " + std::to_string(Arc) + " " + std::to_string(StopAlong));
    Machine.Type("start");
    ASSERT_TRUE(Console.WaitFor("STOPPED", LongMs));
    First = NewPieces();
  }

  /// A second console finds the run as it is and goes on in it.
  void GoOn() {
    const auto at = [&](const char* file) {
      simulator::PathFile path;
      path.Load(platform::DiskFileSystem(Place("installation")), file);
      return path.OfRecord(Arc)->Path();
    };
    const auto programmed = at("Actvprg1.drw");
    const auto compensated = at("Actvprg1.krw");
    const double step = SplitStep(programmed.Length());
    const int presses =
        static_cast<int>(programmed.NearestDistance(compensated.At(StopAlong)) / step);
    // Every record from 2 on is in view, and the first one is marked.
    Directory.Put("keys2.txt",
                  "patience 30000\nwait-form SplashForm\nwait-closed SplashForm\n"
                  "wait-form FrontEnd\nkey F1\nwait-form ProgramForm\nkey V\nwait-mode 5\n" +
                      Times(Arc - 2, "key N\n") + "dump " + Place("marked.json") +
                      "\nkey T\nwait-mode 8\n" + Times(presses, "key N\n") +
                      "key S\nwait-form RestartForm\nwait-sent VR(91)=3\nsay WAITING\n"
                      "wait-closed RestartForm\nwait-running\nwait-stopped\npause 500\nno-warning\n"
                      "key F12\nwait-form ShutdownForm\nkey O\n");
    Second.Start(TORVANE_PROGRAM, {"--device", "1=" + Place("line"), "--window", "1024x768",
                                   "--keys", Place("keys2.txt"), Place("installation")});
    ASSERT_TRUE(Second.WaitFor("WAITING", LongMs)) << Second.Errors();
    Machine.Type("start");
    EXPECT_EQ(Second.WaitForEnd(LongMs), 0) << Second.Errors();
    EXPECT_THAT(Directory.Get("marked.json"), HasSubstr("\"marked\": " + std::to_string(Arc)));
    ExpectWholeSheet(Whole, First, NewPieces(),
                     {Arc, compensated.NearestDistance(programmed.At(presses * step)),
                      programmed.Length(), compensated.Length()});
    EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
  }

  /// What the machine has run since the last call.
  [[nodiscard]] Pieces NewPieces() {
    const Pieces all = ReadPathFile(Directory.Get("path.json"));
    Pieces fresh(all.begin() + static_cast<std::ptrdiff_t>(known_), all.end());
    known_ = all.size();
    return fresh;
  }

  RunningProgram Second{"the second torvane"};
  Pieces Whole;
  Pieces First;

 private:
  std::size_t known_ = 0;
};

TEST_F(RestartOfProcesses, AfterAConsoleThatWasKilled) {
  CutAndStop("pause 600000\n");
  Console.Kill();
  GoOn();
}

TEST_F(RestartOfProcesses, AfterAConsoleThatWasShutDown) {
  CutAndStop("key F12\nwait-form ShutdownForm\nkey O\n");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  GoOn();
}

TEST_F(RestartOfProcesses, AfterTheControllerWasSwitchedOffTooAndTheConsoleKilled) {
  CutAndStop("pause 600000\n");
  Console.Kill();
  Machine.Type("power-cycle");
  GoOn();
}

}  // namespace
}  // namespace torvane::tests

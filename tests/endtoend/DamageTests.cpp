// Kills, names that lead elsewhere, and a disk that refuses: what the installation is left with.
#include <chrono>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>

#include "Programs.h"

namespace torvane::tests {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

constexpr int LongMs = 60000;
constexpr const char* SlotEndings[] = {"cfg", "prg", "rnd", "drw", "krw", "tbl"};

struct Damage : EndToEnd {
  /// The console on the simulated machine with these arguments before its root.
  void StartSimulated(RunningProgram& console, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--simulate", "--window", "1024x768"});
    arguments.push_back(Place("installation"));
    console.Start(TORVANE_PROGRAM, arguments);
  }

  /// Endings of slot 1 that are there.
  [[nodiscard]] int SlotFiles() const {
    int there = 0;
    for (const char* ending : SlotEndings) {
      there += fs::exists(Place("installation/Actvprg1.") + ending) ? 1 : 0;
    }
    return there;
  }

  /// A quiet start on what there is: it ends well, and the slot is whole or empty.
  void ExpectAGoodStart() {
    RunningProgram next("the next torvane");
    StartSimulated(next, {"--exit-after-run"});
    EXPECT_EQ(next.WaitForEnd(LongMs), 0) << next.Errors();
    EXPECT_THAT(SlotFiles(), ::testing::AnyOf(0, static_cast<int>(std::size(SlotEndings))));
    for (const auto& entry : fs::directory_iterator(Place("installation"))) {
      EXPECT_FALSE(entry.path().native().ends_with(".new~")) << entry.path();
    }
  }
};

TEST_F(Damage, AConsoleKilledInASelectionLeavesASlotWholeOrEmpty) {
  Directory.Put("keys.txt", "patience 20000\nwait-form FrontEnd\nsay MAIN\npause 60000\n");
  for (const int afterMs : {20, 60, 120}) {
    RunningProgram console("torvane");
    StartSimulated(console, {"--select", "SHOP/NEST", "--keys", Place("keys.txt")});
    ASSERT_TRUE(console.WaitFor("MAIN", LongMs));
    std::this_thread::sleep_for(std::chrono::milliseconds(afterMs));
    console.Kill();
    ExpectAGoodStart();
  }
}

TEST_F(Damage, NamesThatLeadOutsideTheProgramsRootAreRefused) {
  Directory.Put("outside/SECRET.prg",
                "! SECRET\r\n! SHEET : X500 Y500\r\nN10 G00 X1 Y1\r\nN20 M30\r\n");
  for (const char* name : {"../outside/SECRET", "SHOP/../../../outside/SECRET", "C:/SECRET"}) {
    RunningProgram console("torvane");
    StartSimulated(console, {"--select", name, "--exit-after-run"});
    EXPECT_EQ(console.WaitForEnd(LongMs), 1) << name;
    EXPECT_THAT(File("Actvprg1.prg"), ::testing::Not(HasSubstr("SECRET"))) << name;
    EXPECT_EQ(std::distance(fs::directory_iterator(Place("outside")), {}), 1) << name;
  }
}

TEST_F(Damage, AFileInPlaceOfAFolderEndsTheStartWithItsName) {
  Directory.Put("installation/Service", "x");
  StartSimulated(Console, {"--exit-after-run"});
  EXPECT_EQ(Console.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Console.Errors(), HasSubstr("torvane: "));
  EXPECT_THAT(Console.Errors(), HasSubstr("Service"));
}

TEST_F(Damage, AParameterFileThatTheControllerRefusesIsNamedAndTheRunEnds) {
  std::string refused;
  for (int i = 0; i < 100000; ++i) refused += "G01 X1 Y1 F1\r\n";
  Directory.Put("installation/Data/Machine.prm", refused);
  StartSimulated(Console, {"--exit-after-run"});
  EXPECT_EQ(Console.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Console.Errors(), HasSubstr("torvane: the last file was .\\Data\\Machine.prm"));
}

TEST_F(Damage, AParameterFileWithAByteZeroEndsTheStartWithItsName) {
  Directory.Put("installation/Data/Machine.prm", std::string("VR(89)=750\0\r\n", 13));
  StartSimulated(Console, {"--exit-after-run"});
  EXPECT_EQ(Console.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Console.Errors(), HasSubstr("Machine.prm: holds a byte 0 and is no text"));
}

}  // namespace
}  // namespace torvane::tests

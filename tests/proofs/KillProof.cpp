// The console killed at any moment of selections and changes of program, many times over: what
// lies in the installation then is whole, of one selection, and the next start is a good one.
#include <array>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Scale.h"
#include "support/QtEnvironment.h"
#include "support/RunningProgram.h"
#include "support/SourceTree.h"
#include "support/TempDirectory.h"

namespace torvane::tests {
namespace {

namespace fs = std::filesystem;

constexpr int LongMs = 120'000;
constexpr std::array Programs{"BRACKET-40", "GASKET", "STAR", "NEST"};
/// What a selection writes and nothing else changes.
constexpr std::array Endings{"cfg", "prg", "rnd", "drw", "krw", "tbl",
                             "tbx", "bdy", "cnv", "sts", "lsr"};
/// Without all of these a slot is empty.
constexpr std::array Required{"cfg", "prg", "rnd", "drw", "krw", "tbl"};

std::string SelectByKeys(const std::string& program) {
  return "key F1\nwait-form ProgramForm\nkey P\nwait-form KeyboardForm\ntext " + program +
         "\nkey Enter\nwait-closed KeyboardForm\nkey S\nwait-form SetupForm\n"
         "wait-closed ProgramForm\nkey X\nwait-closed SetupForm\n";
}

class Kills : public ::testing::Test {
 protected:
  Kills() { MakeInstallation(); }

  void MakeInstallation() {
    fs::remove_all(Place("installation"));
    fs::copy(SourceTree() / "examples" / "installation", Place("installation"),
             fs::copy_options::recursive);
    Directory.Put("installation/Control.cms", "Program transfer port\r\nPort : 0\r\n");
  }
  [[nodiscard]] std::string Place(const std::string& name) const {
    return Directory.Path() + "/" + name;
  }
  [[nodiscard]] static std::string SlotFile(int slot, const std::string& ending) {
    return "Actvprg" + std::to_string(slot) + "." + ending;
  }

  void Start(RunningProgram& console, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--simulate", "--window", "1024x768"});
    arguments.push_back(Place("installation"));
    console.Start(TORVANE_PROGRAM, arguments);
  }
  void StartScript(RunningProgram& console, const std::string& script) {
    Directory.Put("keys.txt",
                  "patience 60000\nwait-closed SplashForm\nwait-form FrontEnd\n"
                  "say MAIN\n" +
                      script);
    Start(console, {"--keys", Place("keys.txt")});
  }

  /// The files that each program leaves in each slot when nobody disturbs its selection.
  void TakeReferences() {
    std::string script;
    for (const int slot : {1, 2}) {
      if (slot == 2) script += "key F11\npause 500\n";
      for (const char* program : Programs) {
        script += SelectByKeys(program) + "pause 100\nsay TAKE\npause 1000\n";
      }
    }
    RunningProgram console("torvane");
    StartScript(console, script + "end\n");
    for (const int slot : {1, 2}) {
      for (const char* program : Programs) {
        ASSERT_TRUE(console.WaitFor("TAKE", LongMs)) << program << console.Errors();
        for (const char* ending : Endings) {
          const std::string text = Directory.Get("installation/" + SlotFile(slot, ending));
          References[{slot, ending}].emplace(text, program);
        }
      }
    }
    ASSERT_EQ(console.WaitForEnd(LongMs), 0) << console.Errors();
  }

  /// Selections and changes of program one after the other, in an order of their own.
  std::string Work() {
    std::string script;
    for (int i = 0; i < 20; ++i) {
      if (Random() % 3 == 0) {
        script += "key F" + std::to_string(10 + Random() % 2) + "\npause " +
                  std::to_string(Random() % 300) + "\n";
      }
      script += SelectByKeys(Programs[Random() % Programs.size()]);
    }
    return script;
  }

  /// What is wrong with the slots as they lie, nothing when each file is one that a selection
  /// left, and those of a slot that is full are of one selection.
  [[nodiscard]] std::string Torn() const {
    std::string wrong;
    for (const int slot : {1, 2}) {
      std::set<std::string> common(Programs.begin(), Programs.end());
      bool full = true;
      for (const char* ending : Required) full = full && Has(slot, ending);
      for (const char* ending : Endings) {
        if (!Has(slot, ending)) continue;
        const auto owners = Owners(slot, ending);
        if (owners.empty()) wrong += SlotFile(slot, ending) + " is of no selection; ";
        std::erase_if(common, [&](const auto& program) { return !owners.contains(program); });
      }
      if (full && common.empty()) {
        wrong += "slot " + std::to_string(slot) + " is full, of several selections; ";
      }
    }
    return wrong;
  }
  [[nodiscard]] bool Has(int slot, const std::string& ending) const {
    return Directory.Has("installation/" + SlotFile(slot, ending));
  }
  /// The kill came between the files of a selection.
  [[nodiscard]] bool BetweenFiles() const {
    for (const auto& entry : fs::directory_iterator(Place("installation"))) {
      if (entry.path().native().ends_with(".new~")) return true;
    }
    for (const int slot : {1, 2}) {
      std::size_t there = 0;
      for (const char* ending : Required) there += Has(slot, ending) ? 1 : 0;
      if (there != 0 && there != Required.size()) return true;
    }
    return false;
  }
  [[nodiscard]] std::set<std::string> Owners(int slot, const std::string& ending) const {
    const std::string text = Directory.Get("installation/" + SlotFile(slot, ending));
    std::set<std::string> owners;
    const auto [first, last] = References.at({slot, ending}).equal_range(text);
    for (auto it = first; it != last; ++it) owners.insert(it->second);
    return owners;
  }

  /// Nothing half is left after a quiet start, and each slot is whole or empty.
  void ExpectAGoodStart() {
    RunningProgram next("the next torvane");
    Start(next, {"--exit-after-run"});
    ASSERT_EQ(next.WaitForEnd(LongMs), 0) << next.Errors();
    EXPECT_EQ(Torn(), "");
    for (const int slot : {1, 2}) {
      int there = 0;
      for (const char* ending : Required) there += Has(slot, ending) ? 1 : 0;
      EXPECT_TRUE(there == 0 || there == static_cast<int>(Required.size())) << "slot " << slot;
    }
    for (const auto& entry : fs::directory_iterator(Place("installation"))) {
      EXPECT_FALSE(entry.path().native().ends_with(".new~")) << entry.path();
    }
  }

  TempDirectory Directory;
  std::map<std::pair<int, std::string>, std::multimap<std::string, std::string>> References;
  std::mt19937 Random{Seed()};
};

TEST_F(Kills, LeaveSlotsWholeOrEmptyAndTheNextStartIsGood) {
  ASSERT_NO_FATAL_FAILURE(TakeReferences());
  MakeInstallation();
  const int rounds = Count(1);
  int between = 0;
  for (int round = 0; round < rounds; ++round) {
    SCOPED_TRACE("round " + std::to_string(round) + ", seed " + std::to_string(Seed()));
    RunningProgram console("torvane");
    StartScript(console, Work());
    ASSERT_TRUE(console.WaitFor("MAIN", LongMs));
    std::this_thread::sleep_for(std::chrono::milliseconds(Random() % 2500));
    ASSERT_TRUE(console.Runs()) << console.Errors();
    console.Kill();
    between += BetweenFiles() ? 1 : 0;
    EXPECT_EQ(Torn(), "");
    ASSERT_NO_FATAL_FAILURE(ExpectAGoodStart());
  }
  std::cout << rounds << " kills, " << between << " between the files of a selection\n";
}

}  // namespace
}  // namespace torvane::tests

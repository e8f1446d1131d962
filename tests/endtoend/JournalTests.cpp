// A console that is killed in the middle of a run, and the next one that tells of it: real
// programs.
#include <optional>
#include <string>

#include <gmock/gmock.h>

#include "Programs.h"
#include "core/General.h"
#include "supervision/JournalText.h"
#include "supervision/ProgramDigest.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;

constexpr int LongMs = 60000;

using JournalOfProcesses = EndToEnd;

/// The run of a journal that holds one; nothing of any other.
std::optional<supervision::RunLine> OnlyRunOf(const std::string& journal) {
  const auto lines = core::SplitLines(journal);
  return lines.size() == 2 ? supervision::ReadJournalLine(lines[1]) : std::nullopt;
}

TEST_F(JournalOfProcesses, AKillInARunIsToldAtTheNextStartAndTheListMarksThePlace) {
  StartMachine(4);
  Directory.Put("keys.txt",
                "patience 30000\nwait-form SetupForm\nkey X\nwait-closed SetupForm\nsay READY\n"
                "wait-running\npause 2500\nsay RUNS\npause 600000\n");
  StartConsoleWith({"--select", "SHOP/STAR", "--keys", Place("keys.txt")});
  ASSERT_TRUE(Console.WaitFor("READY", LongMs));
  Machine.Type("start");
  ASSERT_TRUE(Console.WaitFor("RUNS", LongMs));
  Console.Kill();
  EXPECT_EQ(File("Service/Journal.csv"), "(missing)");
  Machine.Type("power-cycle");

  Directory.Put("keys2.txt",
                "patience 30000\nwait-form SplashForm\nwait-closed SplashForm\n"
                "wait-form FrontEnd\npause 300\nkey F1\nwait-form ProgramForm\nkey B\n"
                "wait-form BlockStartForm\ndump " +
                    Place("list.json") +
                    "\nkey X\nwait-closed BlockStartForm\nno-warning\n"
                    "key F12\nwait-form ShutdownForm\nkey O\n");
  RunningProgram second{"the second torvane"};
  second.Start(TORVANE_PROGRAM, {"--device", "1=" + Place("line"), "--window", "1024x768", "--keys",
                                 Place("keys2.txt"), Place("installation")});
  EXPECT_EQ(second.WaitForEnd(LongMs), 0) << second.Errors();

  const std::string journal = File("Service/Journal.csv");
  const auto read = OnlyRunOf(journal);
  ASSERT_TRUE(read) << journal;
  const supervision::RunLine& run = *read;
  EXPECT_EQ(run.Ended, supervision::RunEnd::ConsoleEnded);
  EXPECT_EQ(run.Program, "STAR");
  EXPECT_EQ(run.Digest, supervision::Sha256(File("Actvprg1.prg")));
  ASSERT_GT(run.Last.Block, 0);

  const std::string dump = Directory.Get("list.json");
  EXPECT_THAT(dump, HasSubstr("\"detail\": \"RAN LAST\""));
  // Of the rows before the marked one none has anything beside it.
  const std::string listing = File("Actvprg1.rnd");
  const std::string row(core::Trim(
      std::string_view(listing).substr(static_cast<std::size_t>(run.Last.Block - 1) * 80, 80)));
  const auto marked = dump.find("RAN LAST");
  EXPECT_LT(dump.find(row, marked) - marked, 200U) << row;
  EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
}

TEST_F(JournalOfProcesses, ARunWithoutAnOperatorIsALineAsOfAnyOther) {
  Console.Start(TORVANE_PROGRAM,
                {"--simulate", "--speed", "20", "--window", "1024x768", "--select", "SHOP/STAR",
                 "--start", "--exit-after-run", Place("installation")});
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0) << Console.Errors();
  const std::string journal = File("Service/Journal.csv");
  const auto run = OnlyRunOf(journal);
  ASSERT_TRUE(run) << journal;
  EXPECT_EQ(run->Begin, supervision::RunBegin::Start);
  EXPECT_EQ(run->Ended, supervision::RunEnd::End);
  EXPECT_EQ(run->Sheets, 1);
  EXPECT_EQ(run->StopCount, 0);
  EXPECT_GT(run->Seconds, 26);
}

}  // namespace
}  // namespace torvane::tests

#include <algorithm>
#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

#include "supervision/JournalText.h"
#include "support/TempDirectory.h"
#include "tools/JournalCommand.h"
#include "tools/JournalSums.h"

namespace torvane::tools {
namespace {

using supervision::RunEnd;
using supervision::RunLine;

struct Told {
  int Status = 0;
  std::string Out;
  std::string Errors;
};

Told Journal(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream errors;
  const int status = JournalMain(arguments, out, errors);
  return {status, out.str(), errors.str()};
}

RunLine RunOn(int number, int day, const std::string& program, RunEnd ended) {
  RunLine run;
  run.Number = number;
  run.Start = run.End = {2026, 3, day, 8, 0, 0};
  run.Directory = "SHOP";
  run.Program = program;
  run.Slot = 1;
  run.Ended = ended;
  run.Seconds = 1800.25;
  run.Length = 12345.6;
  if (ended == RunEnd::End) run.Sheets = 1;
  if (ended == RunEnd::Stop) {
    run.StopCount = 1;
    run.Stops = {{run.End, {3, 4, 5, 6}, "stop"}};
  }
  return run;
}

class JournalCommand : public ::testing::Test {
 protected:
  JournalCommand() {
    Text = supervision::JournalHeader() +
           supervision::JournalText(RunOn(1, 4, "STAR", RunEnd::End)) +
           supervision::JournalText(RunOn(2, 4, "STAR", RunEnd::Stop)) +
           supervision::JournalText(RunOn(3, 4, "M\xFCNZE,2", RunEnd::End)) +
           supervision::JournalText(RunOn(4, 5, "STAR", RunEnd::End));
    Put();
  }
  void Put() { Directory.Put("Service/Journal.csv", Text); }
  Told Sums(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), Directory.Path());
    return Journal(arguments);
  }

  tests::TempDirectory Directory;
  std::string Text;
};

TEST_F(JournalCommand, TextForAPerson) {
  const Told told = Sums({});
  EXPECT_EQ(told.Status, 0) << told.Errors;
  EXPECT_EQ(told.Out,
            "Day         Directory  Program  Runs  Ended  Stops  Sheets     Time  Cut m\n"
            "2026-03-04  SHOP       M\u00FCNZE,2     1      1      0       1  0:30:00  12.35\n"
            "2026-03-04  SHOP       STAR        2      1      1       1  1:00:00  24.69\n"
            "2026-03-05  SHOP       STAR        1      1      0       1  0:30:00  12.35\n"
            "Total                              4      3      1       3  2:00:01  49.38\n");
  EXPECT_EQ(told.Errors, "");
}

TEST_F(JournalCommand, ByDayAndByProgram) {
  EXPECT_EQ(Sums({"--by", "day", "--format", "csv"}).Out,
            "Day,Runs,Ended,Stops,Sheets,Seconds,Length mm\r\n"
            "2026-03-04,3,2,1,2,5400.75,37036.8\r\n"
            "2026-03-05,1,1,0,1,1800.25,12345.6\r\n");
  EXPECT_EQ(Sums({"--by", "program", "--format", "csv"}).Out,
            "Directory,Program,Runs,Ended,Stops,Sheets,Seconds,Length mm\r\n"
            "SHOP,\"M\xFCNZE,2\",1,1,0,1,1800.25,12345.6\r\n"
            "SHOP,STAR,3,2,1,2,5400.75,37036.8\r\n");
}

TEST_F(JournalCommand, JsonForAnotherProgram) {
  EXPECT_EQ(Sums({"--by", "day", "--format", "json", "--from", "2026-03-05"}).Out,
            "{\n"
            "    \"damagedLines\": [\n"
            "    ],\n"
            "    \"sums\": [\n"
            "        {\n"
            "            \"cutMm\": 12345.6,\n"
            "            \"day\": \"2026-03-05\",\n"
            "            \"ended\": 1,\n"
            "            \"runs\": 1,\n"
            "            \"seconds\": 1800.25,\n"
            "            \"sheets\": 1,\n"
            "            \"stops\": 0\n"
            "        }\n"
            "    ],\n"
            "    \"total\": {\n"
            "        \"cutMm\": 12345.6,\n"
            "        \"ended\": 1,\n"
            "        \"runs\": 1,\n"
            "        \"seconds\": 1800.25,\n"
            "        \"sheets\": 1,\n"
            "        \"stops\": 0\n"
            "    }\n"
            "}\n");
  EXPECT_NE(Sums({"--format", "json"}).Out.find("\"program\": \"M\u00FCNZE,2\""),
            std::string::npos);
}

TEST_F(JournalCommand, DaysAreThoseOfTheStartAndCountThemselves) {
  const auto rows = [this](const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {"--by", "day", "--format", "csv"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const std::string out = Sums(all).Out;
    return std::count(out.begin(), out.end(), '\n') - 1;
  };
  EXPECT_EQ(rows({"--from", "2026-03-04", "--to", "2026-03-05"}), 2);
  EXPECT_EQ(rows({"--from", "2026-03-05"}), 1);
  EXPECT_EQ(rows({"--to", "2026-03-04"}), 1);
  EXPECT_EQ(rows({"--from", "2026-03-06"}), 0);
}

TEST_F(JournalCommand, TheFileItselfMayBeNamed) {
  const std::string whole = Sums({}).Out;
  EXPECT_EQ(Journal({Directory.Path() + "/Service/Journal.csv"}).Out, whole);
  EXPECT_EQ(Journal({Directory.Path() + "/service/JOURNAL.CSV"}).Status, 1)
      << "a path of this machine is that of this machine";
}

TEST_F(JournalCommand, DamagedLinesAreNamedAndLeftOut) {
  const std::string whole = Sums({}).Out;
  Text.insert(Text.find("2,2026"), "scribble\r\n");
  Text += "4,5,6\r\n";
  Put();
  const Told told = Sums({});
  EXPECT_EQ(told.Status, 1);
  EXPECT_EQ(told.Out, whole);
  EXPECT_EQ(told.Errors, "torvane-journal: 2 damaged lines are left out: lines 3, 7\n");
}

TEST_F(JournalCommand, AJournalThatAnotherProgramHasSavedIsNotDamaged) {
  const std::string whole = Sums({}).Out;
  std::string unix = Text;
  std::erase(unix, '\r');
  for (const std::string& saved : {unix, "\xEF\xBB\xBF" + Text, "\xEF\xBB\xBF" + unix,
                                   Text + "\r\n\n", "\r\n" + Text, "\"Run\"" + Text.substr(3)}) {
    Text = saved;
    Put();
    const Told told = Sums({});
    EXPECT_EQ(told.Status, 0) << told.Errors;
    EXPECT_EQ(told.Out, whole);
  }
}

TEST_F(JournalCommand, LinesOfImpossibleFiguresAreDamaged) {
  const std::string whole = Sums({}).Out;
  const auto add = [this](int stops, int sheets, double seconds) {
    RunLine run = RunOn(9, 4, "STAR", RunEnd::End);
    run.StopCount = stops;
    run.Sheets = sheets;
    run.Seconds = seconds;
    Text += supervision::JournalText(run);
  };
  add(-5, 1, 1);
  add(0, -2147483647, 1);
  add(0, 1, -3.5);
  add(0, 1, 1e15);
  Put();
  const Told told = Sums({});
  EXPECT_EQ(told.Out, whole);
  EXPECT_EQ(told.Errors, "torvane-journal: 4 damaged lines are left out: lines 6, 7, 8, 9\n");
}

TEST_F(JournalCommand, TheLargestFiguresSumUpToNumbers) {
  Text = supervision::JournalHeader();
  for (int number = 1; number <= 200; ++number) {
    RunLine run = RunOn(number, 4, "STAR", RunEnd::End);
    run.Seconds = run.Length = supervision::MostOfAFigure;
    run.Sheets = supervision::MostOfAFigure;
    Text += supervision::JournalText(run);
  }
  Put();
  EXPECT_EQ(Sums({"--by", "day", "--format", "csv"}).Out,
            "Day,Runs,Ended,Stops,Sheets,Seconds,Length mm\r\n"
            "2026-03-04,200,200,0,200000000000,200000000000.00,200000000000.0\r\n");
  EXPECT_NE(Sums({}).Out.find(" 55555555:33:20 "), std::string::npos) << Sums({}).Out;
  EXPECT_EQ(Sums({"--format", "json"}).Out.find("null"), std::string::npos);
}

TEST_F(JournalCommand, ALineThatIsJustBeingWrittenIsNoDamage) {
  const std::string whole = Sums({}).Out;
  const std::string next = supervision::JournalText(RunOn(5, 6, "STAR", RunEnd::End));
  const std::string before = Text;
  for (std::size_t size = 0; size < next.size(); ++size) {
    const JournalRuns read = ReadJournal(before + next.substr(0, size));
    EXPECT_EQ(read.Runs.size(), 4U);
    EXPECT_TRUE(read.Damaged.empty()) << size;
  }
  Text += next.substr(0, 40);
  Put();
  EXPECT_EQ(Sums({}).Status, 0);
  EXPECT_EQ(Sums({}).Out, whole);
}

TEST_F(JournalCommand, WithoutAJournalItSaysWhichFileIsMissing) {
  tests::TempDirectory empty;
  const Told told = Journal({empty.Path()});
  EXPECT_EQ(told.Status, 1);
  EXPECT_EQ(told.Out, "");
  EXPECT_NE(told.Errors.find("Journal.csv: not found"), std::string::npos) << told.Errors;
}

TEST_F(JournalCommand, APlaceThatCannotBeLookedAtIsToldByItsName) {
  const std::string loop = Directory.Path() + "/loop";
  std::filesystem::create_symlink("loop", loop);
  for (const std::string& place : {loop, loop + "/Journal.csv", std::string(5000, 'n')}) {
    const Told told = Journal({place});
    EXPECT_EQ(told.Status, 1);
    EXPECT_EQ(told.Out, "");
    EXPECT_EQ(told.Errors.find("torvane-journal: " + place + ": "), 0U) << told.Errors;
    EXPECT_EQ(std::count(told.Errors.begin(), told.Errors.end(), '\n'), 1);
  }
}

TEST_F(JournalCommand, APlaceInAFolderThatIsGoneIsToldByItsName) {
  const auto before = std::filesystem::current_path();
  Directory.MakeDirectory("gone");
  std::filesystem::current_path(Directory.Path() + "/gone");
  std::filesystem::remove(Directory.Path() + "/gone");
  const Told told = Journal({"Journal.csv"});
  std::filesystem::current_path(before);
  EXPECT_EQ(told.Status, 1);
  EXPECT_EQ(told.Errors, "torvane-journal: Journal.csv: the working directory is not there\n");
}

TEST_F(JournalCommand, WrongUseIsRefused) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"--by", "week"},
                                             {"--from", "4.3.2026"},
                                             {"--to", "2026-3-4"},
                                             {"--format", "xml"},
                                             {"--unknown"}}) {
    const Told told = Sums(arguments);
    EXPECT_EQ(told.Status, 2) << arguments.front();
    EXPECT_NE(told.Errors.find("torvane-journal: "), std::string::npos);
    EXPECT_EQ(told.Out, "");
  }
  EXPECT_EQ(Journal({""}).Status, 2) << "the variable of a script that was never set";
  const Told help = Journal({"--help"});
  EXPECT_EQ(help.Status, 0);
  EXPECT_NE(help.Out.find("--by"), std::string::npos);
}

}  // namespace
}  // namespace torvane::tools

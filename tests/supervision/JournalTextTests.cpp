#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "JournalRuns.h"
#include "core/General.h"
#include "supervision/CsvFields.h"
#include "supervision/JournalText.h"

namespace torvane::supervision {

using namespace tests;
namespace {

TEST(JournalText, TheHeaderNamesTheColumns) {
  EXPECT_EQ(JournalHeader(),
            "Run,Start,End,Begin,From block,Directory,Program,SHA-256,Slot,Material,Sheets,Seconds,"
            "Length mm,Ended,Block,Record,X,Y,Stops,Stop list\r\n");
}

TEST(JournalText, ALineAsASpreadsheetOpensIt) {
  EXPECT_EQ(JournalText(AnyRun()),
            "7,2026-03-04 05:06:07,2026-03-04 05:36:00,restart,12,SHOP,STAR," + Digest('a') +
                ",2,Brass 1.5 mm,1,1793.05,20417.5,stop,31,88,123.40,-5.00,2,"
                "2026-03-04 05:10:00 block 12 record 40 X100.00 Y55.25 feed hold; "
                "2026-03-04 05:36:00 block 31 record 88 X123.40 Y-5.00 stop\r\n");
}

TEST(JournalText, NamesWithCommasQuotesAndBlanksAreQuoted) {
  RunLine run = AnyRun();
  run.Directory = "A,B";
  run.Program = "5\" PIPE";
  run.Material = " steel ";
  const std::string line = JournalText(run);
  EXPECT_NE(line.find(",\"A,B\",\"5\"\" PIPE\","), std::string::npos) << line;
  EXPECT_NE(line.find(",\" steel \","), std::string::npos) << line;
  const auto read = ReadJournalLine(line.substr(0, line.size() - 2));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->Directory, run.Directory);
  EXPECT_EQ(read->Program, run.Program);
  EXPECT_EQ(read->Material, run.Material);
}

TEST(JournalText, ANameThatLooksLikeAFormulaIsNone) {
  for (const char* name : {"=1+2", "+1", "-PLATE", "@SUM(A1)", "'x", "'=1"}) {
    RunLine run = AnyRun();
    run.Program = name;
    const std::string line = JournalText(run);
    EXPECT_NE(line.find(std::string(",'") + name + ","), std::string::npos) << line;
    const auto read = ReadJournalLine(line.substr(0, line.size() - 2));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Program, name);
  }
}

TEST(JournalText, LineEndsAndOtherControlBytesInANameLeaveOneLine) {
  RunLine run = AnyRun();
  run.Program = std::string("A\r\nB\0C\x7F\xE4", 8);
  const std::string line = JournalText(run);
  EXPECT_EQ(line.find('\n'), line.size() - 1);
  EXPECT_NE(line.find(",A??B?C?\xE4,"), std::string::npos) << line;
}

TEST(JournalText, ASemicolonInACauseDividesNoStops) {
  RunLine run = AnyRun();
  run.Stops[0].Cause = "error: door open; close it";
  const auto read = ReadJournalLine(JournalText(run).substr(0, JournalText(run).size() - 2));
  ASSERT_TRUE(read);
  ASSERT_EQ(read->Stops.size(), 2U);
  EXPECT_EQ(read->Stops[0].Cause, "error: door open, close it");
}

TEST(JournalText, NumbersThatAreNoneAreZero) {
  RunLine run = AnyRun();
  run.Seconds = std::numeric_limits<double>::quiet_NaN();
  run.Last.X = std::numeric_limits<double>::infinity();
  const auto read = ReadJournalLine(JournalText(run).substr(0, JournalText(run).size() - 2));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->Seconds, 0);
  EXPECT_EQ(read->Last.X, 0);
}

TEST(JournalText, WhatIsNoLineOfTheJournalIsNotRead) {
  const std::string good = JournalText(AnyRun()).substr(0, JournalText(AnyRun()).size() - 2);
  ASSERT_TRUE(ReadJournalLine(good));
  EXPECT_TRUE(ReadJournalLine(good + "\r"));
  EXPECT_FALSE(ReadJournalLine(""));
  EXPECT_FALSE(ReadJournalLine(JournalHeader().substr(0, JournalHeader().size() - 2)));
  EXPECT_FALSE(ReadJournalLine(good + ",1"));
  for (const auto& [part, by] :
       std::vector<std::pair<std::string, std::string>>{{"7,2026", "0,2026"},
                                                        {"7,2026", "1000000001,2026"},
                                                        {"7,2026", "2147483647,2026"},
                                                        {"7,2026", "2147483648,2026"},
                                                        {"7,2026", "x,2026"},
                                                        {"05:06:07", "05:66:07"},
                                                        {"2026-03-04 05:06", "2026-13-04 05:06"},
                                                        {"restart", "restarted"},
                                                        {Digest('a'), "abc"},
                                                        {"1793.05", "1793,05"},
                                                        {",stop,", ",stopped,"},
                                                        {"block 12 ", "block twelve "},
                                                        {"X100.00", "100.00"},
                                                        {"SHOP", "\"SHOP"},
                                                        {"SHOP", "SH\"OP"}}) {
    std::string damaged = good;
    damaged.replace(damaged.find(part), part.size(), by);
    EXPECT_FALSE(ReadJournalLine(damaged)) << damaged;
  }
}

TEST(JournalText, FiguresThatCannotBeAreDamage) {
  const std::string good = JournalText(AnyRun()).substr(0, JournalText(AnyRun()).size() - 2);
  for (const auto& [part, by] :
       std::vector<std::pair<std::string, std::string>>{{",12,SHOP", ",-12,SHOP"},
                                                        {",2,Brass", ",-2,Brass"},
                                                        {",1,1793.05", ",-1,1793.05"},
                                                        {",1,1793.05", ",1000000001,1793.05"},
                                                        {",1,1793.05", ",-2147483648,1793.05"},
                                                        {"1793.05", "-3.5"},
                                                        {"1793.05", "1e25"},
                                                        {"1793.05", "1e308"},
                                                        {"1793.05", "1000000000.01"},
                                                        {"20417.5", "-0.1"},
                                                        {"20417.5", "1e10"},
                                                        {",31,88,", ",-31,88,"},
                                                        {",31,88,", ",31,-88,"},
                                                        {",-5.00,2,", ",-5.00,-5,"}}) {
    std::string damaged = good;
    damaged.replace(damaged.find(part), part.size(), by);
    EXPECT_FALSE(ReadJournalLine(damaged)) << damaged;
  }
}

TEST(JournalText, TheLargestFiguresAreRead) {
  RunLine run = AnyRun();
  run.Number = MostRuns;
  run.Sheets = MostOfAFigure;
  run.Seconds = run.Length = MostOfAFigure;
  const std::string line = JournalText(run);
  const auto read = ReadJournalLine(line.substr(0, line.size() - 2));
  ASSERT_TRUE(read);
  EXPECT_EQ(JournalText(*read), line);
}

TEST(JournalText, AHeaderIsOneHoweverASpreadsheetHasSavedIt) {
  const std::string header = JournalHeader().substr(0, JournalHeader().size() - 2);
  EXPECT_TRUE(IsJournalHeader(header));
  EXPECT_TRUE(IsJournalHeader(header + "\r"));
  EXPECT_TRUE(IsJournalHeader("\"Run\"" + header.substr(3)));
  EXPECT_FALSE(IsJournalHeader(header + ",More"));
  EXPECT_FALSE(IsJournalHeader(header.substr(0, header.size() - 1)));
  EXPECT_FALSE(IsJournalHeader(""));
}

TEST(JournalText, EveryPieceOfALineIsNoLine) {
  const std::string good = JournalText(AnyRun()).substr(0, JournalText(AnyRun()).size() - 2);
  std::size_t read = 0;
  for (std::size_t size = 0; size < good.size(); ++size) {
    if (ReadJournalLine(std::string_view(good).substr(0, size))) ++read;
  }
  // Only the cause of the last stop may be shorter and still be one; without its line end it counts
  // for nothing all the same.
  EXPECT_LE(read, std::string(" stop").size());
}

/// Bytes as somebody might name a file, control bytes left out.
rc::Gen<std::string> Names() {
  return rc::gen::container<std::string>(rc::gen::map(rc::gen::inRange(32, 255), [](int code) {
    return static_cast<char>(code == 127 ? 65 : code);
  }));
}

RC_GTEST_PROP(JournalText, WhatIsWrittenIsReadAgain, ()) {
  RunLine run = AnyRun();
  run.Number = *rc::gen::inRange(1, MostRuns + 1);
  run.Directory = *Names();
  run.Program = *Names();
  run.Material = *Names();
  run.Digest = *rc::gen::element(std::string(), Digest('0'), Digest('f'));
  run.Begin = *rc::gen::element(RunBegin::Start, RunBegin::Restart, RunBegin::Found);
  run.Ended = *rc::gen::element(RunEnd::End, RunEnd::Stop, RunEnd::LinkLost, RunEnd::ConsoleEnded);
  run.Sheets = *rc::gen::inRange(0, 1000);
  run.Seconds = *rc::gen::inRange(0, 10000000) / 100.0;
  run.Last.X = *rc::gen::inRange(-1000000, 1000000) / 100.0;
  run.Stops.resize(*rc::gen::inRange<std::size_t>(0, 5), run.Stops[0]);
  run.StopCount = static_cast<int>(run.Stops.size());
  const std::string line = JournalText(run);
  RC_ASSERT(line.find('\n') == line.size() - 1);
  const auto read = ReadJournalLine(std::string_view(line).substr(0, line.size() - 2));
  RC_ASSERT(read.has_value());
  RC_ASSERT(read->Directory == run.Directory);
  RC_ASSERT(read->Program == run.Program);
  RC_ASSERT(read->Material == run.Material);
  RC_ASSERT(read->Stops.size() == run.Stops.size());
  RC_ASSERT(JournalText(*read) == line);
}

RC_GTEST_PROP(JournalText, AnyBytesAreReadOrNot, ()) {
  const auto bytes = *rc::gen::container<std::string>(rc::gen::arbitrary<char>());
  static_cast<void>(ReadJournalLine(bytes));
  static_cast<void>(SplitFields(bytes));
}

}  // namespace
}  // namespace torvane::supervision

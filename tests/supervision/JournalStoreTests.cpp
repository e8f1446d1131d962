#include <gtest/gtest.h>

#include "JournalRuns.h"
#include "supervision/JournalStore.h"
#include "supervision/JournalText.h"
#include "supervision/ProgramDigest.h"
#include "support/MemoryFiles.h"
#include "support/RecordingFiles.h"

namespace torvane::supervision {

using namespace tests;
namespace {

const std::string Journal = "C:\\Service\\Journal.csv";
const std::string RunFile = "C:\\Service\\Journal.run";
const std::string Errors = "C:\\Service\\Errors.txt";

/// A disk that fills up in the middle of an append.
class FillingFiles final : public MemoryFiles {
 public:
  std::size_t Room = std::string::npos;
  void AppendFile(std::string_view path, std::string_view bytes) override {
    MemoryFiles::AppendFile(path, bytes.substr(0, Room));
    if (Room < bytes.size()) throw platform::RuntimeFault(std::string(path), "the disk is full");
  }
  void ReplaceFile(std::string_view path, std::string_view bytes) override {
    if (Room != std::string::npos) throw platform::RuntimeFault(std::string(path), "full");
    MemoryFiles::ReplaceFile(path, bytes);
  }
};

class JournalStoreTest : public ::testing::Test {
 protected:
  JournalStoreTest() { Directories.ServiceDirectory = "C:\\Service\\"; }

  /// A console on these files from its start on.
  [[nodiscard]] JournalStore Console(platform::FileSystem& files) const {
    JournalStore store(files, Directories);
    store.TakeUp();
    return store;
  }
  /// A whole run.
  static void RunOnce(JournalStore& store) {
    RunLine run = AnyRun(store.NextNumber());
    run.Ended = RunEnd::ConsoleEnded;
    store.NoteRun(run);
    run.Ended = RunEnd::End;
    store.EndRun(run);
  }
  [[nodiscard]] static std::vector<int> Numbers(const std::string& text) {
    std::vector<int> numbers;
    for (const RunLine& run : RunsOf(text)) numbers.push_back(run.Number);
    return numbers;
  }

  core::DirectorySet Directories;
  FillingFiles Files;
};

TEST_F(JournalStoreTest, AFirstRunMakesTheFileWithItsHeader) {
  JournalStore store = Console(Files);
  EXPECT_EQ(store.NextNumber(), 1);
  EXPECT_FALSE(Files.FileExists(Journal)) << "nothing has run";
  RunOnce(store);
  RunLine run = AnyRun(1);
  run.Ended = RunEnd::End;
  EXPECT_EQ(Files.Text(Journal), JournalHeader() + JournalText(run));
  EXPECT_EQ(store.NextNumber(), 2);
  EXPECT_FALSE(Files.FileExists(Errors));
}

TEST_F(JournalStoreTest, NumbersGoOnAtTheNextStart) {
  for (int start = 0; start < 3; ++start) {
    JournalStore store = Console(Files);
    RunOnce(store);
    RunOnce(store);
  }
  EXPECT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

TEST_F(JournalStoreTest, ARunThatWasUnderWayIsToldAtTheNextStartOnce) {
  {
    JournalStore store = Console(Files);
    RunOnce(store);
    RunLine run = AnyRun(2);
    run.Ended = RunEnd::ConsoleEnded;
    store.NoteRun(run);
  }
  static_cast<void>(Console(Files));
  EXPECT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{1, 2}));
  EXPECT_EQ(RunsOf(Files.Text(Journal))[1].Ended, RunEnd::ConsoleEnded);
  JournalStore store = Console(Files);
  EXPECT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{1, 2}));
  EXPECT_EQ(store.NextNumber(), 3);
}

TEST_F(JournalStoreTest, EveryTruncationLosesOnlyTheLineThatItCuts) {
  {
    JournalStore store = Console(Files);
    for (int i = 0; i < 3; ++i) RunOnce(store);
  }
  const std::string whole = Files.Text(Journal);
  const std::size_t header = JournalHeader().size();
  const std::size_t line = (whole.size() - header) / 3;
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    FillingFiles cut;
    cut.Put(Journal, whole.substr(0, size));
    JournalStore store = Console(cut);
    const int kept = size < header ? 0 : static_cast<int>((size - header) / line);
    EXPECT_EQ(store.NextNumber(), kept + 1) << size;
    RunOnce(store);
    int damaged = 0;
    const auto runs = RunsOf(cut.Text(Journal), &damaged);
    ASSERT_EQ(runs.size(), static_cast<std::size_t>(kept) + 1) << size;
    EXPECT_EQ(damaged, 0) << size;
    EXPECT_TRUE(cut.Text(Journal).starts_with(JournalHeader())) << size;
    EXPECT_TRUE(cut.Text(Journal).ends_with("\r\n")) << size;
  }
}

TEST_F(JournalStoreTest, WhatAPowerCutTakesBackIsAppendedAgain) {
  {
    JournalStore store = Console(Files);
    for (int i = 0; i < 12; ++i) RunOnce(store);
  }
  const std::string whole = Files.Text(Journal);
  for (std::size_t size = whole.size() - 300; size < whole.size(); ++size) {
    FillingFiles cut;
    cut.Put(Journal, whole.substr(0, size));
    cut.Put(RunFile, Files.Text(RunFile));
    static_cast<void>(Console(cut));
    EXPECT_EQ(cut.Text(Journal), whole) << size;
  }
}

TEST_F(JournalStoreTest, AJournalThatWasSortedStaysAsItIs) {
  {
    JournalStore store = Console(Files);
    for (int i = 0; i < 20; ++i) RunOnce(store);
  }
  std::string sorted = JournalHeader();
  for (int number = 20; number >= 1; --number) {
    RunLine run = AnyRun(number);
    run.Ended = RunEnd::End;
    sorted += JournalText(run);
  }
  Files.Put(Journal, sorted);
  JournalStore store = Console(Files);
  EXPECT_EQ(Files.Text(Journal), sorted);
  EXPECT_EQ(store.NextNumber(), 21);
  RunOnce(store);
  EXPECT_EQ(RunsOf(Files.Text(Journal)).size(), 21U);
}

TEST_F(JournalStoreTest, RowsThatWereDeletedInASpreadsheetStayDeleted) {
  {
    JournalStore store = Console(Files);
    for (int i = 0; i < 9; ++i) RunOnce(store);
  }
  std::string saved = Files.Text(Journal);
  const std::size_t line = (saved.size() - JournalHeader().size()) / 9;
  saved.resize(saved.size() - 3 * line);
  // As spreadsheets save numbers.
  for (auto at = saved.find(",123.40,"); at != std::string::npos; at = saved.find(",123.40,"))
    saved.replace(at, 8, ",123.4,");
  Files.Put(Journal, saved);
  JournalStore store = Console(Files);
  EXPECT_EQ(Files.Text(Journal), saved);
  EXPECT_EQ(store.NextNumber(), 10) << "no number is given twice";
}

TEST_F(JournalStoreTest, ALineThatNeverGotIntoASortedJournalIsAppended) {
  {
    JournalStore store = Console(Files);
    for (int i = 0; i < 3; ++i) RunOnce(store);
    RunLine run = AnyRun(store.NextNumber());
    run.Ended = RunEnd::ConsoleEnded;
    store.NoteRun(run);
  }
  std::string sorted = JournalHeader();
  for (const int number : {2, 3, 1}) {
    RunLine run = AnyRun(number);
    run.Ended = RunEnd::End;
    sorted += JournalText(run);
  }
  Files.Put(Journal, sorted);
  static_cast<void>(Console(Files));
  EXPECT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{2, 3, 1, 4}));
}

TEST_F(JournalStoreTest, TheLastRunOfASortedJournalIsTheOneWithTheHighestNumber) {
  std::string sorted = JournalHeader();
  for (const int number : {30, 10, 20}) sorted += JournalText(AnyRun(number));
  Files.Put(Journal, sorted);
  EXPECT_EQ(Console(Files).LastRunOf(2, Digest('a'))->Number, 30);
}

TEST_F(JournalStoreTest, AJournalThatWasPutAsideBeginsANewOne) {
  {
    JournalStore store = Console(Files);
    RunOnce(store);
    RunOnce(store);
  }
  Files.DeleteFile(Journal);
  JournalStore store = Console(Files);
  EXPECT_FALSE(Files.FileExists(Journal)) << "its runs are where it was put";
  RunOnce(store);
  EXPECT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{3}));
}

TEST_F(JournalStoreTest, WhatAStartHasAppendedIsNotAppendedToTheNextJournalToo) {
  {
    JournalStore store = Console(Files);
    RunOnce(store);
    RunLine run = AnyRun(store.NextNumber());
    run.Ended = RunEnd::ConsoleEnded;
    store.NoteRun(run);
  }
  static_cast<void>(Console(Files));
  ASSERT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{1, 2}));
  Files.DeleteFile(Journal);
  JournalStore store = Console(Files);
  EXPECT_FALSE(Files.FileExists(Journal)) << "its runs are where it was put";
  RunOnce(store);
  EXPECT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{3}));
}

TEST_F(JournalStoreTest, AKillAtEveryWriteOfAStartLosesNothingAndWritesNothingTwice) {
  struct Killed {};
  std::size_t writes = 1;
  for (std::size_t at = 0; at < writes; ++at) {
    MemoryFiles disk;
    {
      JournalStore store = Console(disk);
      RunOnce(store);
      RunLine run = AnyRun(store.NextNumber());
      run.Ended = RunEnd::ConsoleEnded;
      store.NoteRun(run);
    }
    std::vector<std::string> events;
    RecordingFiles files(disk, events);
    files.Before = [&](const std::string&) {
      if (events.size() == at + 1) throw Killed();
    };
    try {
      static_cast<void>(Console(files));
    } catch (const Killed&) {
      writes = at + 2;
    }
    static_cast<void>(Console(disk));
    EXPECT_EQ(Numbers(disk.Text(Journal)), (std::vector<int>{1, 2})) << at;
    EXPECT_EQ(disk.Text(RunFile).find('*'), std::string::npos) << at;
  }
  EXPECT_GE(writes, 3U) << "the line, and its star";
}

TEST_F(JournalStoreTest, AKillAtEveryWriteLosesNothingAndWritesNothingTwice) {
  struct Killed {};
  // The events of one whole run, with the start before it.
  std::vector<std::string> all;
  {
    MemoryFiles disk;
    RecordingFiles files(disk, all);
    JournalStore store = Console(files);
    RunOnce(store);
  }
  ASSERT_GE(all.size(), 4U);
  for (std::size_t at = 0; at < all.size(); ++at) {
    MemoryFiles disk;
    {
      JournalStore store = Console(disk);
      RunOnce(store);
    }
    const std::size_t before = RunsOf(disk.Text(Journal)).size();
    std::vector<std::string> events;
    RecordingFiles files(disk, events);
    files.Before = [&](const std::string&) {
      if (events.size() == at + 1) throw Killed();
    };
    bool begun = false;
    try {
      JournalStore store = Console(files);
      RunLine run = AnyRun(store.NextNumber());
      run.Ended = RunEnd::ConsoleEnded;
      store.NoteRun(run);
      begun = true;
      run.Ended = RunEnd::End;
      store.EndRun(run);
    } catch (const Killed&) {
    }
    static_cast<void>(Console(disk));
    const std::vector<int> wanted = begun ? std::vector<int>{1, 2} : std::vector<int>{1};
    EXPECT_EQ(before, 1U);
    EXPECT_EQ(Numbers(disk.Text(Journal)), wanted) << all[at];
    EXPECT_TRUE(disk.Text(Journal).ends_with("\r\n")) << all[at];
  }
}

TEST_F(JournalStoreTest, AFullDiskLeavesNoHalfLineAndTheRunIsWrittenLater) {
  JournalStore store = Console(Files);
  RunOnce(store);
  Files.Room = 17;
  RunOnce(store);
  RunOnce(store);
  EXPECT_NE(Files.Text(Errors).find("*** ERROR ***"), std::string::npos);
  const std::string noted = Files.Text(Errors);
  Files.Room = std::string::npos;
  RunOnce(store);
  int damaged = 0;
  EXPECT_EQ(RunsOf(Files.Text(Journal), &damaged).size(), 4U);
  EXPECT_EQ(damaged, 0);
  EXPECT_EQ(Numbers(Files.Text(Journal)), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(Files.Text(Errors), noted) << "the fault is noted once";
}

TEST_F(JournalStoreTest, OfSeveralLinesThatADiskTakesInPartNoneIsWrittenTwice) {
  const std::size_t line = JournalText(AnyRun(1)).size();
  for (const std::size_t room : {line - 3, line + 17, 2 * line, 2 * line + 17}) {
    FillingFiles files;
    JournalStore store = Console(files);
    RunOnce(store);
    for (const std::size_t now : {std::size_t{0}, std::size_t{0}, room, std::string::npos}) {
      files.Room = now;
      RunOnce(store);
    }
    int damaged = 0;
    static_cast<void>(RunsOf(files.Text(Journal), &damaged));
    EXPECT_EQ(damaged, 0) << room;
    EXPECT_EQ(Numbers(files.Text(Journal)), (std::vector<int>{1, 2, 3, 4, 5})) << room;
    EXPECT_EQ(files.Text(RunFile).find('*'), std::string::npos) << room;
  }
}

TEST_F(JournalStoreTest, ARootThatCannotBeWrittenIsBorneInSilence) {
  Files.ReadOnly = true;
  JournalStore store = Console(Files);
  for (int i = 0; i < 500; ++i) RunOnce(store);
  EXPECT_EQ(store.NextNumber(), 501);
  Files.ReadOnly = false;
  RunOnce(store);
  const auto numbers = Numbers(Files.Text(Journal));
  ASSERT_FALSE(numbers.empty());
  EXPECT_EQ(numbers.back(), 501);
  EXPECT_LE(numbers.size(), 201U) << "memory is not filled with lines that no disk takes";
}

TEST_F(JournalStoreTest, ThereIsANextNumberWhateverTheJournalHolds) {
  for (const std::int32_t number : {MostRuns, MostRuns + 1, 2147483646, 2147483647}) {
    FillingFiles files;
    files.Put(Journal, JournalHeader() + JournalText(AnyRun(3)) + JournalText(AnyRun(number)));
    JournalStore store = Console(files);
    EXPECT_EQ(store.NextNumber(), number == MostRuns ? MostRuns + 1 : 4) << number;
    for (int i = 0; i < 2; ++i) RunOnce(store);
    EXPECT_GT(Console(files).NextNumber(), 0) << number;
  }
}

TEST_F(JournalStoreTest, AJournalOfYearsIsTakenUpByItsEnd) {
  std::string years = JournalHeader();
  int number = 0;
  while (years.size() < 1'000'000) {
    RunLine run = AnyRun(++number);
    run.Digest = Digest(number == 1 ? 'b' : number % 500 == 0 ? 'c' : 'a');
    years += JournalText(run);
  }
  // Wherever the first line begins that is still read.
  const std::string torn = JournalText(AnyRun(1));
  for (std::size_t half = 0; half < torn.size(); half += 7) {
    FillingFiles files;
    files.Put(Journal, years + torn.substr(0, half));
    JournalStore store = Console(files);
    ASSERT_EQ(store.NextNumber(), number + 1) << half;
    EXPECT_EQ(store.LastRunOf(2, Digest('a'))->Number, number) << half;
    EXPECT_EQ(store.LastRunOf(2, Digest('c'))->Number, number / 500 * 500) << half;
    EXPECT_FALSE(store.LastRunOf(2, Digest('b'))) << "too long ago";
    RunOnce(store);
    RunLine next = AnyRun(number + 1);
    next.Ended = RunEnd::End;
    ASSERT_EQ(files.Text(Journal), years + JournalText(next)) << half;
  }
}

TEST_F(JournalStoreTest, TheLastRunOfATextIsFoundByItsSlotAndDigest) {
  JournalStore store = Console(Files);
  RunLine run = AnyRun(1);
  store.EndRun(run);
  run.Number = 2;
  run.Slot = 1;
  run.Last.Block = 5;
  store.EndRun(run);
  run.Number = 3;
  run.Digest = Digest('b');
  run.Last.Block = 6;
  store.EndRun(run);
  for (int i = 4; i < 30; ++i) store.EndRun(AnyRun(i));
  EXPECT_EQ(store.LastRunOf(1, Digest('a'))->Number, 2);
  EXPECT_EQ(store.LastRunOf(1, Digest('b'))->Last.Block, 6);
  EXPECT_EQ(store.LastRunOf(2, Digest('a'))->Number, 29);
  EXPECT_FALSE(store.LastRunOf(2, Digest('b')));
  EXPECT_FALSE(store.LastRunOf(2, ""));
}

TEST(ProgramDigest, IsThatOfOtherTools) {
  EXPECT_EQ(Sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

}  // namespace
}  // namespace torvane::supervision

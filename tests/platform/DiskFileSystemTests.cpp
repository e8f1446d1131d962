// The system's paths on this machine's disk.
#include <array>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "support/TempDirectory.h"

namespace torvane::platform {
namespace {

using Names = std::vector<std::string>;

struct DiskFiles : ::testing::Test {
  tests::TempDirectory Temp;
  DiskFileSystem Files{Temp.Path(), {{'A', Temp.Path() + "/stick"}}};

  /// What the fault says, empty without one.
  template <typename Call>
  static std::string FaultOf(Call&& call) {
    try {
      call();
    } catch (const RuntimeFault& fault) {
      return fault.what();
    }
    return {};
  }
};

TEST_F(DiskFiles, TheEndOfAFileIsReadWithoutTheRest) {
  Temp.Put("Journal.csv", "one two three");
  EXPECT_EQ(Files.ReadFileEnd("Journal.csv", 5), "three");
  EXPECT_EQ(Files.ReadFileEnd("Journal.csv", 13), "one two three");
  EXPECT_EQ(Files.ReadFileEnd("Journal.csv", 1000), "one two three");
  EXPECT_EQ(Files.ReadFileEnd("Journal.csv", 0), "");
  EXPECT_NE(FaultOf([&] { static_cast<void>(Files.ReadFileEnd("None.csv", 5)); }).find("None.csv"),
            std::string::npos);
}

TEST_F(DiskFiles, ARelativePathStandsUnderTheWorkingDirectory) {
  Temp.Put("Control.cfg", "here");
  EXPECT_EQ(Files.ReadFile("Control.cfg"), "here");
  EXPECT_EQ(Files.ReadFile(".\\Control.cfg"), "here");
  Temp.Put("Data/Machine.dat", "there");
  EXPECT_EQ(Files.ReadFile("Data\\Machine.dat"), "there");
  EXPECT_EQ(Files.ReadFile("Data/Machine.dat"), "there");
  EXPECT_EQ(Files.ReadFile("Data\\..\\Control.cfg"), "here");
}

TEST_F(DiskFiles, ARootedPathAndDriveCLeadToTheSameFile) {
  Temp.Put("x.txt", "same");
  const std::string rooted = DiskFileSystem::ToSystemPath(Temp.Path()) + "\\x.txt";
  EXPECT_EQ(rooted[0], '\\');
  EXPECT_EQ(rooted.find('/'), std::string::npos);
  EXPECT_EQ(Files.ReadFile(rooted), "same");
  EXPECT_EQ(Files.ReadFile("C:" + rooted), "same");
  EXPECT_EQ(Files.ReadFile("c:" + rooted), "same");
}

TEST_F(DiskFiles, DrivesComeAndGo) {
  Temp.Put("stick/PART.prg", "G01");
  EXPECT_EQ(Files.ReadFile("A:\\part.prg"), "G01");
  EXPECT_EQ(Files.ReadFile("a:PART.prg"), "G01");
  EXPECT_TRUE(Files.DirectoryExists("A:\\"));
  EXPECT_TRUE(Files.DirectoryExists("A:"));
  EXPECT_FALSE(Files.FileExists("B:\\PART.prg"));
  EXPECT_EQ(FaultOf([&] { static_cast<void>(Files.ReadFile("B:\\PART.prg")); }),
            "B:\\PART.prg: there is no such drive");
  Files.SetDrive('A', "");
  EXPECT_FALSE(Files.FileExists("A:\\PART.prg"));
  EXPECT_EQ(Files.ListFiles("A:\\*.prg"), Names());
}

TEST_F(DiskFiles, NamesAreFoundWithoutMindingTheirCaseInEveryComponent) {
  Temp.Put("Messages/Help/IO/5.hlp", "help");
  EXPECT_EQ(Files.ReadFile("MESSAGES\\help\\io\\5.HLP"), "help");
  EXPECT_TRUE(Files.DirectoryExists("messages\\HELP"));
  Files.ReplaceFile("messages\\help\\New.txt", "n");
  EXPECT_EQ(Temp.Get("Messages/Help/New.txt"), "n") << "a new file goes where the old ones are";
  Files.ReplaceFile("MESSAGES\\HELP\\NEW.TXT", "m");
  EXPECT_EQ(Temp.Get("Messages/Help/New.txt"), "m");
  EXPECT_FALSE(Temp.Has("MESSAGES"));
}

TEST_F(DiskFiles, TheCaseAsWrittenComesFirst) {
  Temp.Put("part.prg", "small");
  Temp.Put("PART.prg", "large");
  EXPECT_EQ(Files.ReadFile("PART.prg"), "large");
  EXPECT_EQ(Files.ReadFile("part.prg"), "small");
  EXPECT_EQ(Files.ReadFile("Part.prg"), "large") << "else the first by name";
}

TEST_F(DiskFiles, NamesAreLatin1InTheSystemAndUtf8OnTheDisk) {
  Files.ReplaceFile("PL\xC4TTE.prg", "x");
  EXPECT_TRUE(Temp.Has("PL\xC3\x84TTE.prg"));
  EXPECT_EQ(Files.ListFiles("*.prg"), Names{"PL\xC4TTE.prg"});
  EXPECT_EQ(Files.ReadFile("pl\xE4tte.PRG"), "x") << "case is not minded beyond ASCII either";
  EXPECT_EQ(DiskFileSystem::ToSystemPath("/home/K\xC3\xA4the"), "\\home\\K\xE4the");
}

TEST_F(DiskFiles, NamesThatLatin1CannotSayStayReachable) {
  Temp.Put("\xE2\x82\xAC.prg", "euro");
  Temp.Put("\xC4.prg", "raw byte");
  const auto names = Files.ListFiles("*.prg");
  ASSERT_EQ(names.size(), 2u);
  for (const auto& name : names) EXPECT_FALSE(Files.ReadFile(name).empty()) << name;
}

TEST_F(DiskFiles, TestsOfExistenceNeverFault) {
  const std::string nul("a\0b", 3);
  for (const std::string& path :
       {std::string(), nul, std::string("Q:\\x"), std::string("a\\b\\c"), std::string(5000, 'x'),
        std::string("x\\") + std::string(300, 'y')}) {
    EXPECT_FALSE(Files.FileExists(path));
    EXPECT_FALSE(Files.DirectoryExists(path));
  }
  Temp.Put("file", "");
  EXPECT_FALSE(Files.DirectoryExists("file"));
  EXPECT_FALSE(Files.FileExists("."));
  EXPECT_FALSE(Files.FileExists("file\\below"));
}

TEST_F(DiskFiles, FaultsNameThePathAsTheSystemWritesItAndTheReason) {
  Temp.MakeDirectory("Data");
  Temp.Put("file", "");
  EXPECT_EQ(FaultOf([&] { static_cast<void>(Files.ReadFile("Data\\Machine.dat")); }),
            "Data\\Machine.dat: not found");
  EXPECT_EQ(FaultOf([&] { static_cast<void>(Files.ReadFile("Data")); }), "Data: is a directory");
  EXPECT_EQ(FaultOf([&] { Files.ReplaceFile("Data", "x"); }), "Data: is a directory");
  EXPECT_EQ(FaultOf([&] { Files.ReplaceFile("None\\x", "x"); }), "None\\x: not found");
  EXPECT_EQ(FaultOf([&] { static_cast<void>(Files.FileSize("None")); }), "None: not found");
  EXPECT_EQ(FaultOf([&] { static_cast<void>(Files.OpenRecords("None", 80)); }), "None: not found");
  EXPECT_EQ(FaultOf([&] { Files.MakeDirectory("Data"); }), "Data: is there already");
  EXPECT_EQ(FaultOf([&] { Files.MakeDirectory("No\\Such"); }), "No\\Such: not found");
  EXPECT_EQ(FaultOf([&] { Files.RenameFile("None", "Other"); }), "None: not found");
  EXPECT_EQ(FaultOf([&] { Files.CopyFile("None", "Other"); }), "None: not found");
  EXPECT_EQ(FaultOf([&] { static_cast<void>(Files.ReadFile("file\\x")); }),
            "file\\x: not found, a part of its path is no directory");
  EXPECT_EQ(FaultOf([&] { static_cast<void>(Files.ReadFile("")); }),
            "a file without a name was asked for");
}

TEST_F(DiskFiles, AFileIsReadByteForByte) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  Files.ReplaceFile("all", bytes);
  EXPECT_EQ(Files.ReadFile("all"), bytes);
  EXPECT_EQ(Files.FileSize("all"), 256u);
  Files.ReplaceFile("all", "");
  EXPECT_EQ(Files.ReadFile("all"), "");
}

TEST_F(DiskFiles, ReplaceLeavesNothingBesideAndTheOldReaderTheOldFile) {
  Files.ReplaceFile("Actvprg1.tbl", "old old old old old old old old old old");
  const auto reader = Files.OpenRecords("Actvprg1.tbl", 3);
  Files.ReplaceFile("Actvprg1.tbl", "new");
  std::array<char, 3> record{};
  ASSERT_TRUE(reader->Read(1, record));
  EXPECT_EQ(std::string(record.data(), 3), "old") << "a reader never sees half of both";
  EXPECT_EQ(Files.ReadFile("Actvprg1.tbl"), "new");
  EXPECT_EQ(Files.ListFiles("*"), Names{"Actvprg1.tbl"});
}

TEST_F(DiskFiles, WhatAPowerCutLeftBesideAFileIsPassedOver) {
  Temp.Put("Control.cfg", "old");
  Temp.Put("Control.cfg.new~", "half a fi");
  Files.ReplaceFile("Control.cfg", "new");
  EXPECT_EQ(Files.ReadFile("Control.cfg"), "new");
  EXPECT_EQ(Temp.Get("Control.cfg.new~"), "half a fi");
}

TEST_F(DiskFiles, TwoWhoReplaceAtOnceLeaveTheWholeFileOfOneOfThem) {
  const std::string a(100000, 'a');
  const std::string b(100000, 'b');
  std::thread other([&] {
    for (int i = 0; i < 50; ++i) Files.ReplaceFile("Reverse.txt", b);
  });
  for (int i = 0; i < 50; ++i) Files.ReplaceFile("Reverse.txt", a);
  other.join();
  const std::string left = Files.ReadFile("Reverse.txt");
  EXPECT_TRUE(left == a || left == b);
  EXPECT_EQ(Files.ListFiles("*"), Names{"Reverse.txt"});
}

TEST_F(DiskFiles, AReplaceThatFailsLeavesTheOldFile) {
  if (::geteuid() == 0) {
    // Root may write anywhere; a name too long for the file beside fails for everybody.
    const std::string name(253, 'n');
    Temp.Put(name, "old");
    EXPECT_NE(FaultOf([&] { Files.ReplaceFile(name, "new"); }), "");
    EXPECT_EQ(Files.ReadFile(name), "old");
    return;
  }
  Temp.Put("locked/file", "old");
  ASSERT_EQ(::chmod((Temp.Path() + "/locked").c_str(), 0555), 0);
  EXPECT_EQ(FaultOf([&] { Files.ReplaceFile("locked\\file", "new"); }),
            "locked\\file: access denied");
  ::chmod((Temp.Path() + "/locked").c_str(), 0755);
  EXPECT_EQ(Files.ReadFile("locked\\file"), "old");
}

TEST_F(DiskFiles, AFileMayBeReplacedPartByPart) {
  Temp.Put("Actvprg1.drw", "old");
  int parts = 0;
  Files.ReplaceFileByParts("Actvprg1.drw", [&](std::string& part) {
    part = ++parts <= 3 ? std::string(1000, static_cast<char>('0' + parts)) : std::string();
  });
  EXPECT_EQ(Files.ReadFile("Actvprg1.drw"),
            std::string(1000, '1') + std::string(1000, '2') + std::string(1000, '3'));
  EXPECT_THROW(Files.ReplaceFileByParts("Actvprg1.drw",
                                        [&](std::string& part) {
                                          if (++parts > 6) throw std::runtime_error("no more");
                                          part = "half";
                                        }),
               std::runtime_error);
  EXPECT_EQ(Files.FileSize("Actvprg1.drw"), 3000u) << "the old file stays";
  EXPECT_EQ(Files.ListFiles("*"), Names{"Actvprg1.drw"});
}

TEST_F(DiskFiles, AFullDiskIsTold) {
  if (::access("/dev/full", W_OK) != 0) GTEST_SKIP() << "no /dev/full here";
  EXPECT_NE(FaultOf([&] { Files.OverwriteFile("\\dev\\full", "x"); }), "") << "it is no plain file";
}

TEST_F(DiskFiles, ReplaceKeepsPermissionsAndLinks) {
  Temp.Put("real/Control.cfg", "old");
  const std::string real = Temp.Path() + "/real/Control.cfg";
  ASSERT_EQ(::chmod(real.c_str(), 0640), 0);
  std::filesystem::create_symlink(real, Temp.Path() + "/Control.cfg");
  Files.ReplaceFile("Control.cfg", "new");
  EXPECT_TRUE(std::filesystem::is_symlink(Temp.Path() + "/Control.cfg"));
  EXPECT_EQ(Temp.Get("real/Control.cfg"), "new");
  struct stat status {};
  ASSERT_EQ(::stat(real.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640u);
}

TEST_F(DiskFiles, AppendAddsAndMakesTheFile) {
  Files.AppendFile("Polling.txt", "one");
  Files.AppendFile("polling.TXT", "two");
  EXPECT_EQ(Files.ReadFile("Polling.txt"), "onetwo");
  Files.OverwriteFile("Polling.txt", "3");
  EXPECT_EQ(Files.ReadFile("Polling.txt"), "3");
}

TEST_F(DiskFiles, DeleteIsQuietAboutWhatIsNotThere) {
  Temp.Put("x", "");
  Files.DeleteFile("X");
  EXPECT_FALSE(Temp.Has("x"));
  Files.DeleteFile("x");
  Files.DeleteFile("no\\such\\file");
  Temp.MakeDirectory("d");
  EXPECT_NE(FaultOf([&] { Files.DeleteFile("d"); }), "");
}

TEST_F(DiskFiles, CopyAndRename) {
  Temp.Put("a", "bytes");
  Files.CopyFile("a", "b");
  EXPECT_EQ(Files.ReadFile("b"), "bytes");
  Files.CopyFile("a", "A");
  EXPECT_EQ(Files.ReadFile("a"), "bytes") << "onto itself, by another case: it stays";
  Files.RenameFile("b", "c");
  EXPECT_FALSE(Files.FileExists("b"));
  EXPECT_EQ(Files.ReadFile("c"), "bytes");
  Files.RenameFile("c", "C");
  EXPECT_TRUE(Temp.Has("C")) << "a change of case alone is a change of name";
  EXPECT_FALSE(Temp.Has("c"));
}

TEST_F(DiskFiles, DirectoriesAreMadeAndOnlyEmptyOnesGo) {
  Files.MakeDirectory("D");
  EXPECT_TRUE(Files.DirectoryExists("d\\"));
  Files.MakeDirectory("d\\E");
  EXPECT_EQ(FaultOf([&] { Files.RemoveDirectory("D"); }), "D: is not empty");
  Files.RemoveDirectory("D\\e");
  Files.RemoveDirectory("D");
  EXPECT_FALSE(Temp.Has("D"));
}

TEST_F(DiskFiles, ListingsAreSortedWithoutMindingCase) {
  for (const char* name : {"b.prm", "A.prm", "c.PRM", "d.txt", "prm", "x.prm.bak"}) {
    Temp.Put(std::string("Data/") + name, "");
  }
  Temp.MakeDirectory("Data/dir.prm");
  Temp.MakeDirectory("Data/Beta");
  Temp.MakeDirectory("Data/alpha");
  EXPECT_EQ(Files.ListFiles("Data\\*.prm"), (Names{"A.prm", "b.prm", "c.PRM"}));
  EXPECT_EQ(Files.ListFiles("data\\?.P?M"), (Names{"A.prm", "b.prm", "c.PRM"}));
  EXPECT_EQ(Files.ListDirectories("Data"), (Names{"alpha", "Beta", "dir.prm"}));
  EXPECT_EQ(Files.ListFiles("Nowhere\\*.prm"), Names());
  EXPECT_EQ(Files.ListDirectories("Nowhere"), Names());
  EXPECT_EQ(Files.ListFiles("Data\\*.*").size(), 6u) << "a name without an extension counts too";
}

TEST(Patterns, MatchTheWholeNameWithoutCase) {
  EXPECT_TRUE(MatchesPattern("Actvprg1.tbl", "actvprg1.*"));
  EXPECT_TRUE(MatchesPattern("Actvprg1", "Actvprg1.*"));
  EXPECT_FALSE(MatchesPattern("Actvprg12.tbl", "Actvprg1.*"));
  EXPECT_FALSE(MatchesPattern("Actvprg1.tbl.x", "*.tbl"));
  EXPECT_TRUE(MatchesPattern("aXbXc", "a*b*c"));
  EXPECT_FALSE(MatchesPattern("aXbX", "a*b*c"));
  EXPECT_TRUE(MatchesPattern("", "*"));
  EXPECT_FALSE(MatchesPattern("", "?"));
  EXPECT_FALSE(MatchesPattern(std::string(200, 'a'), "*a*a*a*a*a*a*a*a*a*a*b")) << "and at once";
}

TEST_F(DiskFiles, RecordsAreReadByNumberFromOne) {
  std::string bytes;
  for (char c = 'a'; c <= 'e'; ++c) bytes += std::string(80, c);
  Files.ReplaceFile("Actvprg1.tbl", bytes + "short");
  const auto records = Files.OpenRecords("Actvprg1.tbl", 80);
  std::array<char, 80> record{};
  for (const std::uint32_t number : {3u, 1u, 5u, 2u}) {
    ASSERT_TRUE(records->Read(number, record)) << number;
    EXPECT_EQ(record[79], static_cast<char>('a' + number - 1));
  }
  EXPECT_FALSE(records->Read(6, record)) << "a short last record is past the end";
  EXPECT_FALSE(records->Read(0, record));
  EXPECT_FALSE(records->Read(0xFFFFFFFFu, record));
  ASSERT_TRUE(records->Read(5, record)) << "and the file is still good";
}

RC_GTEST_PROP(Records, AnyOrderOfReadsGivesTheRecordsOfTheFile, ()) {
  const tests::TempDirectory temp;
  DiskFileSystem files(temp.Path());
  const std::size_t size = *rc::gen::inRange<std::size_t>(1, 700);
  const std::size_t count = *rc::gen::inRange<std::size_t>(0, 400);
  std::string bytes(size * count, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
  temp.Put("r", bytes);
  const auto records = files.OpenRecords("r", size);
  std::vector<char> record(size);
  for (const auto number :
       *rc::gen::container<std::vector<std::uint16_t>>(rc::gen::inRange<std::uint16_t>(0, 450))) {
    const bool there = number >= 1 && number <= count;
    RC_ASSERT(records->Read(number, record) == there);
    if (there)
      RC_ASSERT(std::string(record.begin(), record.end()) ==
                bytes.substr((number - 1) * size, size));
    const auto seen = records->Look(number, record);
    RC_ASSERT(std::string(seen.begin(), seen.end()) ==
              (there ? bytes.substr((number - 1) * size, size) : std::string()));
  }
}

RC_GTEST_PROP(Paths, AnyTextIsAPathThatFaultsPlainlyOrWorks, (const std::string& path)) {
  const tests::TempDirectory temp;
  DiskFileSystem files(temp.Path() + "/root");
  temp.MakeDirectory("root");
  static_cast<void>(files.ListFiles(path));
  static_cast<void>(files.ListDirectories(path));
  RC_ASSERT(!files.FileExists(path));
  try {
    static_cast<void>(files.ReadFile(path));
    RC_FAIL("there is no file to read");
  } catch (const RuntimeFault& fault) {
    RC_ASSERT(!std::string(fault.what()).empty());
  }
}

RC_GTEST_PROP(Names, EveryLatin1NameComesBackFromItsNativeForm, ()) {
  const auto name = *rc::gen::container<std::string>(
      rc::gen::map(rc::gen::inRange(1, 256), [](int c) { return static_cast<char>(c); }));
  RC_ASSERT(ToSystemName(ToNativeName(name)) == name);
}

}  // namespace
}  // namespace torvane::platform

// Control.cfg and the directories of an installation.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>

#include "core/Directories.h"
#include "core/SlotFiles.h"
#include "platform/DiskFileSystem.h"
#include "support/Faults.h"
#include "support/RecordingFiles.h"
#include "support/TempDirectory.h"

namespace torvane::core {
namespace {

struct DirectoriesTest : ::testing::Test {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Disk{Temp.Path()};
  std::vector<std::string> Events;
  tests::RecordingFiles Files{Disk, Events};
  DirectorySet Directories;
  core::Slot ActiveSlot;

  DirectoriesTest() {
    Temp.MakeDirectory("Service");
    Temp.MakeDirectory("Programs/SHOP");
  }

  void Load(const std::string& control) {
    Temp.Put("Control.cfg", control);
    Events.clear();
    LoadDirectories(Files, Directories, ActiveSlot);
  }
};

TEST_F(DirectoriesTest, EveryPathStandsUnderItsRoot) {
  Load(".\r\n.\\Programs\r\nSHOP\r\n2\r\n******\r\n");
  EXPECT_EQ(Directories.RootDirectory, ".\\") << "a backslash is added";
  EXPECT_EQ(Directories.TrioDirectory, ".\\Trio\\");
  EXPECT_EQ(Directories.DataDirectory, ".\\Data\\");
  EXPECT_EQ(Directories.SettingsDirectory, ".\\Settings\\");
  EXPECT_EQ(Directories.ServiceDirectory, ".\\Service\\");
  EXPECT_EQ(Directories.ToolsDirectory, ".\\Tools\\");
  EXPECT_EQ(Directories.MessageDirectory, ".\\Messages\\");
  EXPECT_EQ(Directories.MessageHelpDirectory, ".\\Messages\\Help\\");
  EXPECT_EQ(Directories.SubsDirectory[1], ".\\Subs\\One\\");
  EXPECT_EQ(Directories.SubsDirectory[2], ".\\Subs\\Two\\");
  EXPECT_EQ(Directories.ProgramRoot, ".\\Programs\\");
  EXPECT_EQ(Directories.ProgramDirectoryName, "SHOP");
  EXPECT_EQ(Directories.ProgramDirectory, ".\\Programs\\SHOP\\");
  EXPECT_EQ(ActiveSlot, 2);
}

TEST_F(DirectoriesTest, NotesAndReadsThenMakesWhatIsMissingInOrderThenWritesTheFileBack) {
  Load(".\\\r\n.\\Other\r\nGONE\r\n1\r\n******\r\n");
  EXPECT_EQ(Events, (std::vector<std::string>{
                        "note Control.cfg", "read Control.cfg", "make .\\Trio", "make .\\Messages",
                        "make .\\Messages\\Help", "make .\\Data", "make .\\Settings",
                        "make .\\RevSubs", "make .\\Tools", "make .\\Subs", "make .\\Subs\\One",
                        "make .\\Subs\\Two", "make .\\Other", "replace .\\Control.cfg"}));
  Load(".\\\r\n.\\Other\r\nGONE\r\n1\r\n******\r\n");
  EXPECT_EQ(Events, (std::vector<std::string>{"note Control.cfg", "read Control.cfg",
                                              "replace .\\Control.cfg"}));
}

TEST_F(DirectoriesTest, TheSlotIsOneUnlessTheFileSaysTwo) {
  const std::string three = ".\r\nPrograms\r\nSHOP\r\n";
  for (const char* line : {"", "3\r\n******\r\n", "0\r\n******\r\n", "-2\r\n", "two\r\n",
                           "******\r\n", "1.9\r\n", "22\r\n", "\r\n"}) {
    Load(three + line);
    EXPECT_EQ(ActiveSlot, 1) << line;
  }
  Load(three + " 2.7 \r\n******\r\n");
  EXPECT_EQ(ActiveSlot, 2) << "its integer part";
  Load(three + "2");
  EXPECT_EQ(ActiveSlot, 2) << "without a line end behind it";
}

TEST_F(DirectoriesTest, ADriveIsNotKeptAcrossARestart) {
  Load(".\r\nPrograms\r\nA:\r\n1\r\n******\r\n");
  EXPECT_EQ(Directories.ProgramDirectoryName, "SHOP") << "the recovery runs";
  EXPECT_EQ(Temp.Get("Control.cfg"), ".\\\r\nPrograms\\\r\nSHOP\r\n1\r\n******\r\n");
}

TEST_F(DirectoriesTest, ADirectoryThatIsGoneGivesWayToTheFallback) {
  Temp.MakeDirectory("Programs/AAA");
  Temp.MakeDirectory("Programs/Quendrel");
  Load(".\r\nPrograms\r\nGONE\r\n1\r\n******\r\n");
  EXPECT_EQ(Directories.ProgramDirectoryName, "Quendrel");
  EXPECT_EQ(Directories.ProgramDirectory, "Programs\\Quendrel\\");
  EXPECT_EQ(Temp.Get("Control.cfg"), ".\\\r\nPrograms\\\r\nQuendrel\r\n1\r\n******\r\n");
}

TEST_F(DirectoriesTest, WithoutTheFallbackTheFirstDirectoryIsTaken) {
  Temp.MakeDirectory("Programs/BENCH");
  Temp.Put("Programs/A.prg", "a file is no directory");
  Load(".\r\nPrograms\r\nGONE\r\n1\r\n******\r\n");
  EXPECT_EQ(Directories.ProgramDirectoryName, "BENCH");
}

TEST_F(DirectoriesTest, WithoutAnyDirectoryTheProgramRootStands) {
  Load(".\r\nEmpty\r\nGONE\r\n1\r\n******\r\n");
  EXPECT_EQ(Directories.ProgramDirectoryName, "");
  EXPECT_EQ(Directories.ProgramDirectory, "Empty\\");
  EXPECT_TRUE(Temp.Has("Empty"));
}

TEST_F(DirectoriesTest, ANameThatLeadsOutOfTheProgramRootIsNotTaken) {
  Temp.MakeDirectory("Secret");
  for (const char* name : {"..\\Secret", "..", ".", "", "SHOP\\..\\..\\Secret"}) {
    Load(std::string(".\r\nPrograms\r\n") + name + "\r\n1\r\n******\r\n");
    EXPECT_EQ(Directories.ProgramDirectoryName, "SHOP") << name;
  }
}

TEST_F(DirectoriesTest, TheRootMayStandAnywhere) {
  tests::TempDirectory other;
  const std::string root = platform::DiskFileSystem::ToSystemPath(other.Path());
  Load(root + "\r\n" + root + "\\Jobs\r\nX\r\n1\r\n******\r\n");
  EXPECT_TRUE(other.Has("Subs/Two"));
  EXPECT_TRUE(other.Has("Jobs"));
  EXPECT_EQ(other.Get("Control.cfg"), root + "\\\r\n" + root + "\\Jobs\\\r\n\r\n1\r\n******\r\n");
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), "Control.cfg\r\n");
}

TEST_F(DirectoriesTest, ARootThatCannotBeMadeIsBlamedOnTheFileThatNamesIt) {
  const std::string fault =
      tests::FaultOf([&] { Load("Not\\There\r\nPrograms\r\nSHOP\r\n1\r\n******\r\n"); });
  EXPECT_TRUE(fault.starts_with("Control.cfg: a directory of it cannot be made, Not\\There\\"))
      << fault;
}

TEST_F(DirectoriesTest, AnEmptyFolderInThePlaceOfASlotsFileGoesWithThem) {
  Temp.MakeDirectory("Actvprg1.cfg");
  Temp.MakeDirectory("Actvprg2.cfg");
  Temp.Put("Actvprg1.prg", "M30\r\n");
  Load(".\r\nPrograms\r\nSHOP\r\n1\r\n******\r\n");
  DeleteSlotFiles(Disk, Directories, 1);
  EXPECT_FALSE(Temp.Has("Actvprg1.cfg"));
  EXPECT_FALSE(Temp.Has("Actvprg1.prg"));
  EXPECT_TRUE(Temp.Has("Actvprg2.cfg"));
  Temp.Put("Actvprg2.cfg/Kept.txt", "not the slot's");
  EXPECT_TRUE(tests::FaultOf([&] {
                DeleteSlotFiles(Disk, Directories, 2);
              }).starts_with(".\\Actvprg2.cfg: "));
  EXPECT_TRUE(Temp.Has("Actvprg2.cfg/Kept.txt"));
}

TEST_F(DirectoriesTest, WhatIsNoFileButHasTheNameOfOneGoesWithTheSlot) {
  namespace fs = std::filesystem;
  const fs::path root = Temp.Path();
  Temp.Put("Kept/Kept.txt", "not the slot's");
  fs::create_symlink("nowhere", root / "Actvprg1.cfg");
  fs::create_symlink("Actvprg1.drw", root / "Actvprg1.drw");
  fs::create_symlink("/dev/full", root / "Actvprg1.tbl");
  fs::create_symlink("Kept", root / "Actvprg1.krw");
  ASSERT_EQ(mkfifo((root / "Actvprg1.rnd").c_str(), 0600), 0);
  Load(".\r\nPrograms\r\nSHOP\r\n1\r\n******\r\n");
  DeleteSlotFiles(Disk, Directories, 1);
  for (const auto& entry : fs::directory_iterator(root)) {
    EXPECT_FALSE(entry.path().filename().string().starts_with("Actvprg1")) << entry.path();
  }
  EXPECT_TRUE(Temp.Has("Kept/Kept.txt"));
}

TEST_F(DirectoriesTest, AMissingOrShortFileIsAFaultThatNamesIt) {
  EXPECT_EQ(tests::FaultOf([&] { LoadDirectories(Files, Directories, ActiveSlot); }),
            "Control.cfg: not found");
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), "Control.cfg\r\n");
  EXPECT_EQ(tests::FaultOf([&] { Load(".\r\nPrograms\r\n"); }),
            "Control.cfg: ends too soon, line 3 is missing");
  EXPECT_EQ(tests::FaultOf([&] { Load("\r\nPrograms\r\nSHOP\r\n1\r\n"); }),
            "Control.cfg: line 1 names no directory");
  EXPECT_EQ(tests::FaultOf(
                [&] { Load(".\r\n.\\" + std::string(10'000'000, 'X') + "\r\nSHOP\r\n1\r\n"); }),
            "Control.cfg: line 2 is too long for a directory");
}

TEST_F(DirectoriesTest, ADirectoryThatCannotBeMadeIsAFault) {
  Temp.Put("Trio", "a file stands in its place");
  EXPECT_EQ(tests::FaultOf([&] { Load(".\r\nPrograms\r\nSHOP\r\n1\r\n"); }),
            "Control.cfg: a directory of it cannot be made, .\\Trio: is there already");
}

TEST(ProgramDirectory, ADriveEntryIsItsRoot) {
  DirectorySet directories;
  directories.ProgramRoot = "C:\\P\\";
  EXPECT_EQ(ProgramDirectoryPath(directories, " A: "), "A:\\");
  EXPECT_EQ(ProgramDirectoryPath(directories, "A:\\JOBS"), "A:\\");
  EXPECT_EQ(ProgramDirectoryPath(directories, " SHOP "), "C:\\P\\SHOP\\");
  SetProgramDirectory(directories, "B:");
  EXPECT_EQ(directories.ProgramDirectoryName, "B:");
  EXPECT_EQ(directories.ProgramDirectory, "B:\\");
}

RC_GTEST_PROP(ControlFile, WhatIsWrittenIsRead, ()) {
  ControlFile control;
  control.RootDirectory = "C:\\ROOT\\";
  control.ProgramRoot = "C:\\PROG\\";
  control.ProgramDirectoryName = *rc::gen::container<std::string>(rc::gen::inRange('A', 'Z'));
  control.ActiveSlot = *rc::gen::element<int>(1, 2);
  const ControlFile read = ReadControlFile(ControlFileText(control), "Control.cfg");
  RC_ASSERT(read.RootDirectory == control.RootDirectory);
  RC_ASSERT(read.ProgramRoot == control.ProgramRoot);
  RC_ASSERT(read.ProgramDirectoryName == control.ProgramDirectoryName);
  RC_ASSERT(read.ActiveSlot == control.ActiveSlot);
}

RC_GTEST_PROP(ControlFile, AnyTextIsReadOrIsAFault, (const std::string& text)) {
  const auto fault = tests::FaultOf([&] {
    const auto control = ReadControlFile(text, "Control.cfg");
    RC_ASSERT(control.ActiveSlot == 1 || control.ActiveSlot == 2);
    RC_ASSERT(control.RootDirectory.back() == '\\' && control.ProgramRoot.back() == '\\');
    RC_ASSERT(control.ProgramDirectoryName.find(':') == std::string::npos);
  });
  RC_ASSERT(fault.empty() || fault.starts_with("Control.cfg: "));
}

}  // namespace
}  // namespace torvane::core

// What stands in the lists of programs and directories.
#include "Workshop.h"
#include "files/Lists.h"

namespace torvane::files {

using namespace tests;
namespace {

class Lists : public ::testing::Test, public Workshop {};

TEST_F(Lists, AProgramListHoldsNamesWithoutExtensionInTheOrderOfTheFileSystem) {
  for (const char* name : {"b.prg", "A.B.PRG", "C.lsr", "D.prg.bak"})
    Temp.Put(std::string("Programs/SHOP/") + name, "x");
  const ProgramList list = FillProgramList(Parts, "SHOP", "", SelectMode::First);
  EXPECT_EQ(list.Items, (Names{"A.B", "b"}));
  EXPECT_EQ(list.Index, 0);
  EXPECT_EQ(list.Files[0].Name, "A.B.PRG");
  EXPECT_EQ(list.Files[0].Size, 1U);
  EXPECT_GT(list.Files[0].Written.Year, 2020);
  EXPECT_EQ(Dialogs.Busy, 0);
  EXPECT_EQ(Dialogs.Spells, 1) << "the busy pointer shows while it runs";
}

TEST_F(Lists, TheSelectModeOfAProgramListSaysWhichLine) {
  PutFamily("Programs/SHOP", "ONE", {"prg"});
  PutFamily("Programs/SHOP", "TWO", {"prg"});
  EXPECT_EQ(FillProgramList(Parts, "SHOP", "two", SelectMode::None).Index, -1);
  EXPECT_EQ(FillProgramList(Parts, "SHOP", "two", SelectMode::First).Index, 0);
  EXPECT_EQ(FillProgramList(Parts, "SHOP", "two", SelectMode::Named).Index, 1);
  EXPECT_EQ(FillProgramList(Parts, "SHOP", "THREE", SelectMode::Named).Index, -1);
  EXPECT_EQ(FillProgramList(Parts, "NEST", "", SelectMode::First).Index, -1);
  EXPECT_EQ(FillProgramList(Parts, "NOWHERE", "", SelectMode::First).Items, Names{});
}

TEST_F(Lists, ExsubsInAnyCaseIsMissingFromEveryList) {
  for (const char* name : {"EXSUBS", "ExSubs", "exsubs"}) {
    Temp.MakeDirectory(std::string("Programs/") + name);
    EXPECT_EQ(FillDirectoryList(Parts, "", true, true, SelectMode::First).Items,
              (Names{"NEST", "SHOP"}));
  }
}

TEST_F(Lists, TheCurrentDirectoryIsListedOnlyWhereItIsWanted) {
  const ListContent with = FillDirectoryList(Parts, "shop", false, true, SelectMode::Named);
  EXPECT_EQ(with.Items, (Names{"NEST", "SHOP"}));
  EXPECT_EQ(with.Index, 1);
  const ListContent without = FillDirectoryList(Parts, "shop", false, false, SelectMode::First);
  EXPECT_EQ(without.Items, Names{"NEST"});
  EXPECT_EQ(without.Index, 0);
}

TEST_F(Lists, WithoutTheCurrentDirectoryNothingCanBeSelectedByItsName) {
  EXPECT_EQ(FillDirectoryList(Parts, "SHOP", true, false, SelectMode::Named).Index, -1);
}

TEST_F(Lists, NoDirectoriesAndNoDrivesGiveAnEmptyList) {
  System.Directories.ProgramRoot = "C:\\Nowhere\\";
  const ListContent list = FillDirectoryList(Parts, "SHOP", false, true, SelectMode::First);
  EXPECT_TRUE(list.Items.empty());
  EXPECT_EQ(list.Index, -1);
}

TEST_F(Lists, DrivesComeAfterTheDirectoriesWithTheirKinds) {
  Drives.Present = {"A:", "b:", "C:", "E:", "F:", "1:"};
  Drives.ReadyAt = {{"C:", 1}, {"E:", 1}};
  const ListContent list = FillDirectoryList(Parts, "SHOP", true, true, SelectMode::Named);
  EXPECT_EQ(list.Items,
            (Names{"NEST", "SHOP", "A: [Floppy Disk]", "b: [Floppy Disk]", "E: [Removable Drive]"}))
      << "not the drive of the root, and no removable drive that does not answer";
}

TEST_F(Lists, ADriveIsCurrentByItsFirstTwoCharacters) {
  Drives.Present = {"A:", "E:"};
  Drives.ReadyAt = {{"E:", 1}};
  EXPECT_EQ(FillDirectoryList(Parts, "e:", true, true, SelectMode::Named).Index, 3);
  EXPECT_EQ(FillDirectoryList(Parts, "E: [Removable Drive]", true, false, SelectMode::First).Items,
            (Names{"NEST", "SHOP", "A: [Floppy Disk]"}));
  EXPECT_EQ(FillDirectoryList(Parts, "E", true, false, SelectMode::First).Items.size(), 4U);
}

TEST_F(Lists, ThePathOfAnEntryIsADriveRootOrADirectoryBelowTheProgramsRoot) {
  EXPECT_EQ(DirectoryPath(System.Directories, " SHOP "), "C:\\Programs\\SHOP\\");
  EXPECT_EQ(DirectoryPath(System.Directories, "A: [Floppy Disk]"), "A:\\");
}

TEST_F(Lists, AnExistingDirectoryIsFoundInAnyCaseAndAFileOfThatNameToo) {
  Temp.Put("Programs/Template.prg", "");
  EXPECT_TRUE(DirectoryExists(Parts, "shop"));
  EXPECT_TRUE(DirectoryExists(Parts, "TEMPLATE.PRG"));
  EXPECT_FALSE(DirectoryExists(Parts, "PLATES"));
}

TEST_F(Lists, AnUnreadyDriveIsToldAndTestedOnceMore) {
  Drives.ReadyAt["A:"] = 2;
  EXPECT_EQ(DirectoryToShow(Parts, "A: [Floppy Disk]"), "A: [Floppy Disk]");
  EXPECT_EQ(Dialogs.Shown(), Shown{"tell \nDisc Not Ready !"});
  EXPECT_EQ(Drives.Tests["A:"], 2);
  EXPECT_EQ(DirectoryToShow(Parts, "A: [Floppy Disk]"), "A: [Floppy Disk]") << "ready at once now";
  EXPECT_TRUE(Dialogs.Shown().empty());
}

TEST_F(Lists, ADriveThatStaysUnreadyGivesTheCurrentDirectory) {
  EXPECT_EQ(DirectoryToShow(Parts, "A: [Floppy Disk]"), "SHOP");
  EXPECT_EQ(Dialogs.Shown(), Shown{"tell \nDisc Not Ready !"}) << "told once, whatever follows";
  EXPECT_EQ(DirectoryToShow(Parts, "NEST"), "NEST") << "a directory is no drive";
}

TEST_F(Lists, TheWayBackToADirectoryPassesOverNamesThatNoListHolds) {
  const Names items = {"..", "EXSUBS", "nest", "SHOP"};
  EXPECT_EQ(IndexOfDirectory(items, "NEST"), 2);
  EXPECT_EQ(IndexOfDirectory(items, "ExSubs"), -1);
  EXPECT_EQ(IndexOfDirectory(items, ".."), -1);
  EXPECT_EQ(IndexOfDirectory(items, "PLATES"), -1);
}

}  // namespace
}  // namespace torvane::files

// Creating, deleting and renaming program directories.
#include "Workshop.h"
#include "files/DirectoryActions.h"
#include "platform/RuntimeFault.h"

namespace torvane::files {

using namespace tests;
namespace {

using enum DirectoryAction;

class DirectoryActionsTest : public ::testing::Test, public Workshop {
 protected:
  Ending Do(DirectoryAction action, const std::optional<std::string>& selected,
            const std::string& name = {}) {
    return DirectoryActions(Parts).CarryOut(action, selected, name);
  }
  [[nodiscard]] std::vector<std::string> Directories() const {
    return Disk.ListDirectories("C:\\Programs");
  }
};

const std::string Longest(32, 'D');

TEST_F(DirectoryActionsTest, ANewDirectoryIsMadeWithoutAWord) {
  EXPECT_EQ(Do(Create, std::nullopt, "  PLATES "), Ending::Closes);
  EXPECT_EQ(Do(Create, std::nullopt, Longest), Ending::Closes);
  EXPECT_EQ(Directories(), (Names{Longest, "NEST", "PLATES", "SHOP"}));
  EXPECT_TRUE(Dialogs.Shown().empty());
}

TEST_F(DirectoryActionsTest, NamesThatAreNoneAreRefusedByCreateAndRename) {
  for (const std::string& name : {std::string(), std::string("   "), Longest + "D",
                                  std::string("..."), std::string("A:"), std::string("X\\Y")}) {
    EXPECT_EQ(Do(Create, std::nullopt, name), Ending::StaysOpen);
    EXPECT_EQ(Do(Rename, "NEST", name), Ending::StaysOpen);
    EXPECT_EQ(Dialogs.Shown(),
              (Shown{"tell \n\nInvalid Directory Name !", "tell \n\nInvalid Directory Name !"}));
  }
  EXPECT_EQ(Directories(), (Names{"NEST", "SHOP"}));
}

TEST_F(DirectoryActionsTest, AnExistingNameInAnotherCaseIsReportedAsExisting) {
  for (const std::string name : {"SHOP", "shop", ".", ".."}) {
    const std::string told = "tell \n\nDirectory \"" + name + "\" Already Exists !";
    EXPECT_EQ(Do(Create, std::nullopt, name), Ending::StaysOpen);
    EXPECT_EQ(Do(Rename, "NEST", name), Ending::StaysOpen);
    EXPECT_EQ(Dialogs.Shown(), (Shown{told, told}));
  }
}

TEST_F(DirectoryActionsTest, DeletingAnEmptyDirectoryAsksOnce) {
  EXPECT_EQ(Do(Delete, "NEST"), Ending::Closes);
  EXPECT_EQ(Directories(), Names{"SHOP"});
  EXPECT_EQ(Dialogs.Shown(), Shown{"ask \n\nDelete \"NEST\" !"});
}

TEST_F(DirectoryActionsTest, DeletingADirectoryWithFilesAsksTwice) {
  for (const char* name : {"A.prg", "noextension", ".hidden"})
    Temp.Put(std::string("Programs/NEST/") + name, "");
  EXPECT_EQ(Do(Delete, "NEST"), Ending::Closes);
  EXPECT_EQ(Directories(), Names{"SHOP"});
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"ask \n\nDelete \"NEST\" !",
                   "ask \nDirectory \"NEST\" Is Not Empty !\nDelete it Anyway ?"}));
}

TEST_F(DirectoryActionsTest, ANoToEitherQuestionKeepsTheDirectoryAndCloses) {
  Temp.Put("Programs/NEST/A.prg", "");
  Dialogs.Answers = {false};
  EXPECT_EQ(Do(Delete, "NEST"), Ending::Closes);
  Dialogs.Answers = {true, false};
  EXPECT_EQ(Do(Delete, "NEST"), Ending::Closes);
  Dialogs.Answers = {false};
  EXPECT_EQ(Do(Rename, "NEST", "PLATES"), Ending::Closes);
  EXPECT_TRUE(Temp.Has("Programs/NEST/A.prg"));
}

TEST_F(DirectoryActionsTest, NothingSelectedIsRefused) {
  EXPECT_EQ(Do(Delete, std::nullopt), Ending::StaysOpen);
  EXPECT_EQ(Do(Rename, std::nullopt, ""), Ending::StaysOpen) << "before the name is looked at";
  EXPECT_EQ(Dialogs.Shown(),
            (Shown{"tell \n\nNo Directory Selected !", "tell \n\nNo Directory Selected !"}));
}

TEST_F(DirectoryActionsTest, TheDirectoriesOfBothSlotsAreProtectedWhicheverIsActive) {
  System.Programs[1].DirectoryName = "SHOP";
  System.Programs[2].DirectoryName = "nest";
  for (const std::int16_t slot : {1, 2}) {
    System.ActiveSlot = slot;
    for (const char* name : {"SHOP", "NEST"}) {
      EXPECT_EQ(Do(Delete, name), Ending::StaysOpen);
      EXPECT_EQ(Do(Rename, name, ""), Ending::StaysOpen) << "before the name is looked at";
      EXPECT_EQ(Dialogs.Shown(), (Shown{"tell \n\nCan Not Delete Directory !\n"
                                        "It Contains Currently Selected Program.",
                                        "tell \n\nCan Not Rename Directory !\n"
                                        "It Contains Currently Selected Program."}));
    }
  }
}

TEST_F(DirectoryActionsTest, ARenameIsDoneInPlace) {
  Temp.Put("Programs/NEST/A.prg", "a");
  EXPECT_EQ(Do(Rename, "NEST", " PLATES "), Ending::Closes);
  EXPECT_EQ(Directories(), (Names{"PLATES", "SHOP"}));
  EXPECT_EQ(Temp.Get("Programs/PLATES/A.prg"), "a");
  EXPECT_EQ(Dialogs.Shown(), Shown{"ask \nRename\n\"NEST\"\nAs\n\"PLATES\" ?"});
}

TEST_F(DirectoryActionsTest, ASubdirectoryEndsTheProgramAfterTheFilesHaveGone) {
  Temp.Put("Programs/NEST/A.prg", "");
  Temp.MakeDirectory("Programs/NEST/DEEPER");
  EXPECT_THROW(static_cast<void>(Do(Delete, "NEST")), platform::RuntimeFault);
  EXPECT_FALSE(Temp.Has("Programs/NEST/A.prg"));
  EXPECT_TRUE(Temp.Has("Programs/NEST/DEEPER"));
  EXPECT_EQ(Dialogs.Busy, 0);
}

TEST_F(DirectoryActionsTest, ASubdirectoryIsAWarningWhileTheMachineRuns) {
  Temp.MakeDirectory("Programs/NEST/DEEPER");
  System.State.MachineRunning = true;
  EXPECT_EQ(Do(Delete, "NEST"), Ending::Closes);
  EXPECT_EQ(Dialogs.Shown().back(), "tell \nC:\\Programs\\NEST\nis not empty");
}

TEST_F(DirectoryActionsTest, ADirectoryThatCannotBeMadeIsToldAndNothingEnds) {
  System.Directories.ProgramRoot = "C:\\Nowhere\\";
  EXPECT_EQ(Do(Create, std::nullopt, "PLATES"), Ending::Closes);
  EXPECT_EQ(Dialogs.Shown(), Shown{"tell \nC:\\Nowhere\\PLATES\nnot found"});
}

TEST_F(DirectoryActionsTest, AProgramSelectedWhileTheQuestionStandsKeepsItsDirectory) {
  Temp.Put("Programs/NEST/A.prg", "");
  Dialogs.WhileItStands = [this] { System.Programs[2].DirectoryName = "NEST"; };
  EXPECT_EQ(Do(Delete, "NEST"), Ending::StaysOpen);
  EXPECT_TRUE(Temp.Has("Programs/NEST/A.prg"));
}

TEST_F(DirectoryActionsTest, AProgramThatArrivesAfterTheFirstQuestionIsNotLostUnasked) {
  Dialogs.WhileItStands = [this] { Temp.Put("Programs/NEST/NEW.prg", "new"); };
  Dialogs.Answers = {true, false};
  EXPECT_EQ(Do(Delete, "NEST"), Ending::Closes);
  EXPECT_TRUE(Temp.Has("Programs/NEST/NEW.prg"));
}

}  // namespace
}  // namespace torvane::files

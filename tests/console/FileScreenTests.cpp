// The file menu and its screens for programs and directories, by keys alone and by touch.
#include "FileScreens.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class FileMenu : public FileScreens {
 protected:
  FileMenu() {
    TypeF(6);
    RunFor(20);
  }
};

TEST_F(FileMenu, CaptionsToTheLetter) {
  EXPECT_EQ(CurrentForm(), "FileHandleForm");
  EXPECT_EQ(ScreenTitle("FileHandleForm"), "FILE HANDLING");
  EXPECT_EQ(FrameCaption("FileHandleForm", "ProgramFrame"), "PROGRAMS");
  EXPECT_EQ(FrameCaption("FileHandleForm", "DirectoryFrame"), "DIRECTORIES");
  EXPECT_EQ(FrameCaption("FileHandleForm", "CommsFrame"), "RS232 COMMS");
  const std::vector<std::pair<std::string, std::string>> captions = {
      {"ProgramButton(1)", "DELETE  (&1)"},
      {"ProgramButton(2)", "RENAME (&2)"},
      {"ProgramButton(3)", "COPY AS (&3)"},
      {"ProgramButton(4)", "MOVE TO (&4)"},
      {"ProgramButton(5)", "COPY TO (&5)"},
      {"DirectoryButton(1)", "CREATE  (&6)"},
      {"DirectoryButton(2)", "DELETE  (&7)"},
      {"DirectoryButton(3)", "RENAME (&8)"},
      {"CommsButton(1)", "&SEND"},
      {"CommsButton(2)", "SET&UP"}};
  for (const auto& [name, caption] : captions) EXPECT_EQ(Caption("FileHandleForm", name), caption);
  EXPECT_EQ(Focus("FileHandleForm"), "ExitButton");
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(FileMenu, EachNumberOpensItsActionAndCancelLeavesEverything) {
  struct Row {
    char Number;
    const char* Screen;
    const char* Title;
  };
  const std::vector<Row> rows = {
      {'1', "FileForm", "DELETE PROGRAM(S)"},     {'2', "FileForm", "RENAME PROGRAM"},
      {'3', "FileForm", "COPY PROGRAM"},          {'4', "FileForm", "MOVE PROGRAM(S)"},
      {'5', "FileForm", "COPY PROGRAM(S)"},       {'6', "DirectoryForm", "CREATE NEW DIRECTORY"},
      {'7', "DirectoryForm", "DELETE DIRECTORY"}, {'8', "DirectoryForm", "RENAME DIRECTORY"}};
  const Tree before = AllPrograms();
  for (int round = 0; round < 2; ++round) {
    for (const Row& row : rows) {
      Type(KeyFor(row.Number));
      EXPECT_EQ(CurrentForm(), row.Screen) << row.Number;
      EXPECT_EQ(ScreenTitle(row.Screen), row.Title);
      Type(Key::C);
      EXPECT_EQ(CurrentForm(), "FileHandleForm");
      EXPECT_EQ(Focus("FileHandleForm"), "ExitButton");
      RunFor(20);
    }
  }
  EXPECT_EQ(AllPrograms(), before);
}

TEST_F(FileMenu, TheSetupOpensTheEditorOnTheSettingsOfTheLine) {
  Type(Key::U);
  EXPECT_EQ(CurrentForm(), "EditProgForm");
  EXPECT_EQ(LabelText("EditProgForm", "ProgLabel"), "RS232 Communication Settings");
  EXPECT_EQ(LabelText("EditProgForm", "DirectoryLabel"), "");
  EXPECT_GT(List("EditProgForm", "ProgList").Count(), 10);
  Type(Key::C);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_EQ(Front(), "FileHandleForm") << "its parent, the program screen, is not there";
  EXPECT_EQ(CurrentForm(), "FileHandleForm");
}

TEST_F(FileMenu, TheEditorGoesBackToTheProgramScreenIfThatShows) {
  Type(Key::X);
  TypeF(1);
  TypeF(6);
  Type(Key::U);
  Type(Key::C);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Front(), "ProgramForm");
}

// ---- programs ----

TEST_F(FileMenu, DeletingTwoProgramsByKeys) {
  Type(KeyFor('1'));
  EXPECT_EQ(LabelText("FileForm", "DirListLabel(1)"), "FROM DIRECTORY");
  EXPECT_EQ(LabelText("FileForm", "ListLabel"), "DELETE PROGRAM(S)");
  EXPECT_EQ(Focus("FileForm"), "FileList(2)");
  EXPECT_EQ(List("FileForm", "FileList(2)").Current(), 0);
  EXPECT_TRUE(List("FileForm", "FileList(2)").SelectedIndices().empty()) << "framed, not marked";
  EXPECT_EQ(Answers({Key::O}, Key::O), Texts{"\n\nNo Programs Selected !"});
  EXPECT_EQ(CurrentForm(), "FileForm") << "a refusal leaves it open";
  Type(Key::Space);
  Type(Key::Down);
  Type(Key::Space);
  EXPECT_EQ(LabelText("FileForm", "CountLabel"), "2 OF 9 MARKED");
  Tree expected = AllPrograms();
  expected.erase("SHOP/BRACKET-40.prg");
  expected.erase("SHOP/GASKET.prg");
  EXPECT_EQ(Answers({Key::O, Key::O}, Key::O),
            (Texts{"\n\nDelete 2 Programs !", "\n\n2 Programs Deleted !"}));
  EXPECT_EQ(AllPrograms(), expected);
  EXPECT_EQ(CurrentForm(), "FileHandleForm");
}

TEST_F(FileMenu, DeletingByTouch) {
  Touch("FileHandleForm", "ProgramButton(1)");
  TouchLine(List("FileForm", "FileList(2)"), 2);
  const Tree before = AllPrograms();
  const auto press = [this] { Touch("FileForm", "OkButton"); };
  EXPECT_EQ(Answers({Key::C}, press), Texts{"\n\nDelete \"GRID\" !"});
  EXPECT_EQ(AllPrograms(), before);
  EXPECT_FALSE(Shows("FileForm")) << "an answer of no closes it too";
}

TEST_F(FileMenu, RenamingByKeys) {
  Type(KeyFor('2'));
  EXPECT_EQ(LabelText("FileForm", "DirListLabel(1)"), "IN DIRECTORY");
  EXPECT_EQ(LabelText("FileForm", "BoxLabel"), "AS");
  EXPECT_EQ(BoxText("FileForm", "FileBox"), "BRACKET-40") << "the first name";
  Type(Key::Down);
  EXPECT_EQ(BoxText("FileForm", "FileBox"), "GASKET");
  Enter(Key::Tab, "RING");
  EXPECT_EQ(BoxText("FileForm", "FileBox"), "RING");
  Tree expected = AllPrograms();
  expected["SHOP/RING.prg"] = expected["SHOP/GASKET.prg"];
  expected.erase("SHOP/GASKET.prg");
  EXPECT_EQ(Answers({Key::O, Key::O}, Key::O),
            (Texts{"\nRename \"GASKET\"\nAs \"RING\" ?", "\n\n1 Program Renamed !"}));
  EXPECT_EQ(AllPrograms(), expected);
}

TEST_F(FileMenu, CopyingAsByTouchIsRefusedUnderTheSameName) {
  Touch("FileHandleForm", "ProgramButton(3)");
  TouchLine(List("FileForm", "FileList(1)"), 1);
  const auto press = [this] { Touch("FileForm", "OkButton"); };
  EXPECT_EQ(Answers({Key::O}, press), Texts{"\n\nInvalid Program Name !"});
  EXPECT_TRUE(Shows("FileForm"));
  ThenTypeText("RING");
  ThenType(Key::Enter);
  Touch("FileForm", "FileBox");
  RunFor(60);
  EXPECT_EQ(Focus("FileForm"), "FileList(1)");
  Tree expected = AllPrograms();
  expected["SHOP/RING.prg"] = expected["SHOP/GASKET.prg"];
  EXPECT_EQ(Answers({Key::O, Key::O}, press),
            (Texts{"\nCopy \"GASKET\"\nAs \"RING\" ?", "\n\n1 Program Copied !"}));
  EXPECT_EQ(AllPrograms(), expected);
}

TEST_F(FileMenu, ThePadsCancelLeavesTheName) {
  Type(KeyFor('3'));
  EnterAndCancel(Key::Tab, "RING");
  EXPECT_EQ(BoxText("FileForm", "FileBox"), "BRACKET-40");
}

TEST_F(FileMenu, MovingToAnotherDirectoryByKeys) {
  Type(KeyFor('4'));
  EXPECT_EQ(LabelText("FileForm", "DirListLabel(2)"), "TO");
  EXPECT_EQ(List("FileForm", "DirectoryList(2)").Items(), Texts{"FAULTS"})
      << "never the source itself";
  EXPECT_EQ(List("FileForm", "DirectoryList(2)").Current(), 0);
  Type(Key::Space);
  Tree expected = AllPrograms();
  expected["FAULTS/BRACKET-40.prg"] = expected["SHOP/BRACKET-40.prg"];
  expected.erase("SHOP/BRACKET-40.prg");
  EXPECT_EQ(Answers({Key::O, Key::O}, Key::O),
            (Texts{"\nMove \"BRACKET-40\"\nTo \"FAULTS\" !", "\n\n1 Program Moved !"}));
  EXPECT_EQ(AllPrograms(), expected);
}

TEST_F(FileMenu, TabGoesThroughTheListsAndAnotherSourceFillsThem) {
  Type(KeyFor('5'));
  Texts order;
  for (int step = 0; step < 4; ++step) {
    order.push_back(Focus("FileForm"));
    Type(Key::Tab);
  }
  EXPECT_EQ(order, (Texts{"FileList(2)", "DirectoryList(2)", "DirectoryList(1)", "FileList(2)"}));
  Type(Key::Tab);
  EXPECT_EQ(Focus("FileForm"), "DirectoryList(1)");
  Type(Key::Up);
  EXPECT_EQ(List("FileForm", "FileList(2)").Text(0), "ARC-CENTRE");
  EXPECT_EQ(List("FileForm", "FileList(2)").Current(), 0);
  EXPECT_EQ(List("FileForm", "DirectoryList(2)").Items(), Texts{"SHOP"});
  Type(Key::Tab);
  Type(Key::Space);
  EXPECT_EQ(Answers({Key::O, Key::O}, Key::O),
            (Texts{"\nCopy \"ARC-CENTRE\"\nTo \"SHOP\" !", "\n\n1 Program Copied !"}));
  EXPECT_EQ(AllPrograms().at("SHOP/ARC-CENTRE.prg"), AllPrograms().at("FAULTS/ARC-CENTRE.prg"));
}

TEST_F(FileMenu, ADriveWithoutADiscGivesWayToTheCurrentDirectory) {
  Drives.Present = {"A:"};
  Type(KeyFor('5'));
  EXPECT_EQ(List("FileForm", "DirectoryList(1)").Items(),
            (Texts{"FAULTS", "SHOP", "A: [Floppy Disk]"}));
  Type(Key::Tab);
  Type(Key::Tab);
  EXPECT_EQ(Answers({Key::O}, Key::Down), Texts{"\nDisc Not Ready !"});
  EXPECT_EQ(List("FileForm", "DirectoryList(1)").Current(), 1);
  EXPECT_EQ(List("FileForm", "FileList(2)").Count(), 9);
}

TEST_F(FileMenu, ADriveAsDestinationThatStaysEmptyIsRefused) {
  Drives.Present = {"A:"};
  Drives.ReadyAt["A:"] = 99;
  Type(KeyFor('4'));
  Type(Key::Space);
  Type(Key::Tab);
  Type(Key::Down);
  const Tree before = AllPrograms();
  EXPECT_EQ(Answers({Key::O, Key::O}, Key::O),
            (Texts{"\nMove \"BRACKET-40\"\nTo \"A: [Floppy Disk]\" !", "\n\nDisc Not Ready !"}));
  EXPECT_TRUE(Shows("FileForm"));
  EXPECT_EQ(AllPrograms(), before);
  EXPECT_EQ(Drives.Tests["A:"], 2);
}

TEST_F(FileMenu, AnEmptyDirectoryGivesTheFocusToCancel) {
  Type(Key::X);
  std::filesystem::create_directory(Programs() / "EMPTY");
  System.Directories.ProgramDirectoryName = "EMPTY";
  TypeF(6);
  Type(KeyFor('2'));
  EXPECT_EQ(Focus("FileForm"), "ExitButton");
  EXPECT_EQ(BoxText("FileForm", "FileBox"), "");
  EXPECT_EQ(Answers({Key::O}, Key::O), Texts{"\n\nNo Programs Selected !"});
}

TEST_F(FileMenu, AChildThatOutlivesTheMenuLeavesNoCurrentForm) {
  Type(KeyFor('1'));
  Screens().Unload("FileHandleForm");
  Type(Key::C);
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(FileMenu, OkCarriesOutWhatTheTitleSays) {
  Type(KeyFor('2'));
  // The menu stays in reach of a finger beside its child.
  Touch("FileHandleForm", "ProgramButton(1)");
  EXPECT_EQ(ScreenTitle("FileForm"), "RENAME PROGRAM");
  Type(Key::Down);
  EXPECT_EQ(Answers({Key::C}, Key::O), Texts{"\nRename \"GASKET\"\nAs \"GASKET\" ?"});
}

TEST_F(FileMenu, ThePollGoesOnWhileTheQuestionStands) {
  Type(KeyFor('1'));
  Type(Key::Space);
  Then([this] { Lines.clear(); });
  for (int i = 0; i < 50; ++i) Then([] {});
  long polls = 0;
  Then([this, &polls] {
    polls = Times("? VR(19)");
    Type(Key::C);
  });
  Type(Key::O);
  RunFor(700);
  EXPECT_GT(polls, 5);
}

TEST_F(FileMenu, AFaultWhileTheMachineRunsIsAWarningAndTheConsoleStays) {
  Select("GASKET");
  Machine().CycleStart();
  RunFor(2000);
  ASSERT_TRUE(System.State.MachineRunning);
  Type(KeyFor('3'));
  std::filesystem::remove(Programs() / "SHOP" / "BRACKET-40.prg");
  Enter(Key::Tab, "RING");
  const Texts texts = Answers({Key::O, Key::O}, Key::O);
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[1], "\n.\\Programs\\SHOP\\BRACKET-40.prg\nnot found");
  EXPECT_TRUE(Session.Events.empty());
  EXPECT_TRUE(System.State.MachineRunning);
}

// ---- directories ----

TEST_F(FileMenu, CreatingADirectoryByKeys) {
  Type(KeyFor('6'));
  EXPECT_EQ(LabelText("DirectoryForm", "BoxLabel"), "DIRECTORY &NAME");
  EXPECT_EQ(Focus("DirectoryForm"), "ExitButton");
  EXPECT_EQ(Answers({Key::O}, Key::O), Texts{"\n\nInvalid Directory Name !"});
  Enter(Key::N, "SHOP");
  EXPECT_EQ(Answers({Key::O}, Key::O), Texts{"\n\nDirectory \"SHOP\" Already Exists !"});
  EXPECT_TRUE(Shows("DirectoryForm"));
  Enter(Key::A, "PLANES");
  Enter(Key::Tab, "PLATES");
  EXPECT_EQ(BoxText("DirectoryForm", "DirectoryBox"), "PLATES");
  Type(Key::O);
  EXPECT_TRUE(std::filesystem::is_directory(Programs() / "PLATES"));
  EXPECT_EQ(CurrentForm(), "FileHandleForm");
}

TEST_F(FileMenu, DeletingADirectoryByKeysAndItsBoxKeysAreDead) {
  Put("OLD/A.prg", "a");
  Type(KeyFor('7'));
  EXPECT_EQ(LabelText("DirectoryForm", "ListLabel"), "DELETE DIRECTORY");
  EXPECT_EQ(List("DirectoryForm", "DirectoryList").Items(), (Texts{"FAULTS", "OLD"}))
      << "never the directory in use";
  EXPECT_EQ(Focus("DirectoryForm"), "DirectoryList");
  Type(Key::N);
  Type(Key::A);
  EXPECT_FALSE(Shows("KeyboardForm"));
  Type(Key::Down);
  EXPECT_EQ(
      Answers({Key::O, Key::O}, Key::O),
      (Texts{"\n\nDelete \"OLD\" !", "\nDirectory \"OLD\" Is Not Empty !\nDelete it Anyway ?"}));
  EXPECT_FALSE(std::filesystem::exists(Programs() / "OLD"));
}

TEST_F(FileMenu, RenamingADirectoryByTouch) {
  std::filesystem::create_directory(Programs() / "OLD");
  Touch("FileHandleForm", "DirectoryButton(3)");
  EXPECT_EQ(LabelText("DirectoryForm", "BoxLabel"), "&AS");
  TouchLine(List("DirectoryForm", "DirectoryList"), 1);
  ThenTypeText("PLATES");
  ThenType(Key::Enter);
  Touch("DirectoryForm", "DirectoryBox");
  RunFor(60);
  const auto press = [this] { Touch("DirectoryForm", "OkButton"); };
  EXPECT_EQ(Answers({Key::O}, press), Texts{"\nRename\n\"OLD\"\nAs\n\"PLATES\" ?"});
  EXPECT_TRUE(std::filesystem::is_directory(Programs() / "PLATES"));
  EXPECT_FALSE(std::filesystem::exists(Programs() / "OLD"));
}

TEST_F(FileMenu, TheDirectoryOfASlotIsProtected) {
  System.Programs[2].DirectoryName = "FAULTS";
  for (const char number : {'7', '8'}) {
    Type(KeyFor(number));
    const std::string verb = number == '7' ? "Delete" : "Rename";
    EXPECT_EQ(
        Answers({Key::O}, Key::O),
        Texts{"\n\nCan Not " + verb + " Directory !\nIt Contains Currently Selected Program."});
    EXPECT_TRUE(Shows("DirectoryForm"));
    Type(Key::C);
    RunFor(20);
  }
}

}  // namespace
}  // namespace torvane::tests

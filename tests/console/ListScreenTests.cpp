// The lists and the search of the program screen, by keys alone and by touch.
#include "FileScreens.h"
#include "toolkit/ScrollBar.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class ProgramScreens : public FileScreens {
 protected:
  ProgramScreens() {
    TypeF(1);
    RunFor(20);
  }
  [[nodiscard]] std::string Combo(const std::string& name) {
    return Control<toolkit::PickBox>("ProgramForm", name)->Text();
  }
  void SetWords(const std::string& directory, const std::string& program) {
    Control<toolkit::PickBox>("ProgramForm", "DirectoryCombo")->SetText(directory);
    Control<toolkit::PickBox>("ProgramForm", "ProgramCombo")->SetText(program);
  }
  /// Opens the search for two words.
  void SearchFor(const std::string& directory, const std::string& program) {
    SetWords(directory, program);
    Type(Key::R);
    RunFor(50);
  }
  toolkit::ListBox& Found(int list) {
    return List("SearchForm", "SearchList(" + std::to_string(list) + ")");
  }
};

// ---- the lists ----

TEST_F(ProgramScreens, TheListsOpenOnTheCurrentDirectoryAndLockTheRest) {
  Type(Key::L);
  EXPECT_EQ(CurrentForm(), "ProgListForm");
  EXPECT_EQ(ScreenTitle("ProgListForm"), "PROGRAMS");
  EXPECT_EQ(LabelText("ProgListForm", "DirectoryLabel"), "&DIRECTORIES");
  EXPECT_EQ(LabelText("ProgListForm", "ProgramLabel"), "&PROGRAMS");
  EXPECT_EQ(List("ProgListForm", "DirectoryList").Items(), (Texts{"FAULTS", "SHOP"}));
  EXPECT_EQ(List("ProgListForm", "DirectoryList").Current(), 1);
  EXPECT_TRUE(System.Console.FormsLocked);
  for (const int key : {2, 3, 4, 5, 6, 7, 10, 11}) TypeF(key);
  Type(Key::K);
  EXPECT_EQ(CurrentForm(), "ProgListForm");
  TypeF(9);
  EXPECT_EQ(CurrentForm(), "MessageForm");
  Type(Key::X);
  EXPECT_EQ(Front(), "ProgListForm");
  Type(Key::C);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Focus("ProgramForm"), "ExitButton");
}

TEST_F(ProgramScreens, TheListsHaveNoDrives) {
  Drives.Present = {"A:"};
  Type(Key::L);
  EXPECT_EQ(List("ProgListForm", "DirectoryList").Items(), (Texts{"FAULTS", "SHOP"}));
}

TEST_F(ProgramScreens, TheListsStartAtTheProgramOfTheSlot) {
  Select("GRID");
  System.Directories.ProgramDirectoryName = "FAULTS";
  TypeF(1);
  Type(Key::L);
  EXPECT_EQ(List("ProgListForm", "DirectoryList").Text(1), "SHOP");
  EXPECT_EQ(List("ProgListForm", "DirectoryList").Current(), 1);
  auto& programs = List("ProgListForm", "ProgramList");
  EXPECT_EQ(programs.Text(programs.Current()), "GRID");
}

TEST_F(ProgramScreens, AChosenProgramGoesToTheProgramScreen) {
  Type(Key::L);
  Type(Key::D);
  EXPECT_EQ(Focus("ProgListForm"), "DirectoryList");
  Type(Key::Up);
  EXPECT_EQ(List("ProgListForm", "ProgramList").Text(0), "ARC-CENTRE");
  Type(Key::P);
  EXPECT_EQ(Focus("ProgListForm"), "ProgramList");
  Type(Key::End);
  Type(Key::Up);
  Type(Key::O);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Combo("DirectoryCombo"), "FAULTS");
  EXPECT_EQ(Combo("ProgramCombo"), "RETURN");
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "FAULTS");
  EXPECT_NE(Files->ReadFile(".\\Control.cfg").find("\r\nFAULTS\r\n"), std::string::npos);
  Type(Key::Down);
  EXPECT_EQ(Combo("ProgramCombo"), "TOO-LONG") << "the list goes on from there";
}

TEST_F(ProgramScreens, TheListsByTouch) {
  Touch("ProgramForm", "ListsButton");
  TouchLine(List("ProgListForm", "DirectoryList"), 0);
  TouchLine(List("ProgListForm", "ProgramList"), 2);
  Touch("ProgListForm", "OkButton");
  EXPECT_EQ(Combo("DirectoryCombo"), "FAULTS");
  EXPECT_EQ(Combo("ProgramCombo"), "BACKOFF");
}

TEST_F(ProgramScreens, TheListsRefuseInTheirOrder) {
  const std::string longName(33, 'X');
  std::filesystem::create_directory(Programs() / longName);
  std::filesystem::create_directory(Programs() / "EMPTY");
  Put(longName + "/A.prg", "");
  Put("SHOP/" + longName + ".prg", "");
  Type(Key::L);
  auto& directories = List("ProgListForm", "DirectoryList");
  auto& programs = List("ProgListForm", "ProgramList");
  for (const Key key : {Key::O, Key::V}) {
    const auto refusal = [&] { return Answers({Key::O}, key).front(); };
    directories.SetCurrent(-1);
    EXPECT_EQ(refusal(), "\n\nNo Directory Selected !");
    directories.PressLine(0);
    EXPECT_EQ(directories.Text(0), "EMPTY");
    EXPECT_EQ(refusal(), "\n\nNo Program Selected !");
    directories.PressLine(3);
    EXPECT_EQ(refusal(), "\n\nInvalid Directory !");
    directories.PressLine(2);
    programs.SetCurrent(programs.Count() - 1);
    EXPECT_EQ(refusal(), "\n\nInvalid Program !");
  }
  EXPECT_EQ(CurrentForm(), "ProgListForm");
  EXPECT_EQ(Combo("ProgramCombo"), "");
}

TEST_F(ProgramScreens, ADiskThatCannotKeepTheDirectoryIsAWarningAndTheNamesAreTaken) {
  std::filesystem::remove(std::filesystem::path(Directory.Path()) / "Control.cfg");
  std::filesystem::create_directory(std::filesystem::path(Directory.Path()) / "Control.cfg");
  Type(Key::L);
  const Texts texts = Answers({Key::O}, Key::O);
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_EQ(texts[0], "\n.\\Control.cfg\nis a directory");
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Combo("ProgramCombo"), "BRACKET-40");
}

TEST_F(ProgramScreens, TypedLettersNeverLandInAList) {
  Type(Key::L);
  TypeText("xyz");
  EXPECT_EQ(CurrentForm(), "ProgListForm");
}

// ---- the view ----

TEST_F(ProgramScreens, TheViewShowsTheTextAndOnlyItsKeysAct) {
  std::string text;
  for (int line = 0; line < 100; ++line) text += " N" + std::to_string(line) + "\r\n";
  Put("SHOP/AAA.prg", text);
  Type(Key::L);
  Type(Key::V);
  EXPECT_EQ(FrameCaption("ProgListForm", "ViewFrame"), " AAA ");
  EXPECT_EQ(Focus("ProgListForm"), "ViewOkButton");
  EXPECT_FALSE(Control<toolkit::Frame>("ProgListForm", "ListsFrame")->Visible());
  auto& view = List("ProgListForm", "ViewBox");
  EXPECT_EQ(view.Count(), 100);
  EXPECT_EQ(view.Text(7), " N7") << "as it stands in the file";
  EXPECT_EQ(Files->ReadFile(".\\Service\\LastFile.txt"), ".\\Programs\\SHOP\\AAA.prg\r\n");
  Type(Key::Down);
  EXPECT_EQ(view.TopLine(), 1);
  Type(Key::End);
  EXPECT_EQ(view.TopLine(), 100 - view.VisibleLines());
  Type(Key::PageUp);
  Type(Key::Up);
  Type(Key::Home);
  EXPECT_EQ(view.TopLine(), 0);
  for (const Key key : {Key::C, Key::V, Key::D, Key::P, Key::Enter, Key::Tab}) Type(key);
  EXPECT_TRUE(view.OnShow()) << "no other key acts";
  TypeF(9);
  EXPECT_EQ(Front(), "MessageForm") << "but the global ones do";
  Type(Key::X);
  Type(Key::O);
  EXPECT_FALSE(view.OnShow());
  EXPECT_EQ(CurrentForm(), "ProgListForm") << "O closed the view and nothing else";
  EXPECT_EQ(Focus("ProgListForm"), "ProgramList");
  Type(Key::C);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
}

TEST_F(ProgramScreens, AProgramThatHasGoneCannotBeViewed) {
  Type(Key::L);
  std::filesystem::remove(Programs() / "SHOP" / "BRACKET-40.prg");
  EXPECT_EQ(Answers({Key::O}, Key::V), Texts{"\n\nInvalid Program !"});
  EXPECT_EQ(Focus("ProgListForm"), "ProgramList");
}

TEST_F(ProgramScreens, TheViewClosesByTouch) {
  Type(Key::L);
  Touch("ProgListForm", "ViewButton");
  Touch("ProgListForm", "ViewOkButton");
  EXPECT_FALSE(List("ProgListForm", "ViewBox").OnShow());
  EXPECT_TRUE(List("ProgListForm", "ProgramList").OnShow());
}

// ---- the search ----

TEST_F(ProgramScreens, BothListsOfTheSearchGoInStep) {
  for (int i = 10; i < 60; ++i) Put("SHOP/RING-" + std::to_string(i) + ".prg", "");
  SearchFor("", "ring");
  EXPECT_EQ(CurrentForm(), "SearchForm");
  EXPECT_EQ(ScreenTitle("SearchForm"), "SEARCH");
  EXPECT_EQ(LabelText("SearchForm", "ListLabel(1)"), "DIRECTORY");
  EXPECT_EQ(LabelText("SearchForm", "ListLabel(2)"), "PROGRAM");
  EXPECT_EQ(LabelText("SearchForm", "SearchLabel"), " \"ring\" ");
  EXPECT_TRUE(System.Console.FormsLocked);
  EXPECT_EQ(Found(1).Count(), 50);
  EXPECT_EQ(Found(2).Text(0), "RING-10");
  EXPECT_EQ(Found(1).Current(), 0);
  EXPECT_EQ(Found(2).Current(), 0);
  Type(Key::End);
  EXPECT_EQ(Found(1).Current(), 49);
  EXPECT_EQ(Found(2).Current(), 49);
  EXPECT_EQ(Found(1).TopLine(), Found(2).TopLine());
  EXPECT_GT(Found(1).TopLine(), 0);
  auto* bar = Control<toolkit::ScrollBar>("SearchForm", "SearchBar");
  EXPECT_EQ(bar->Value(), Found(1).TopLine());
  ClickAt(*bar, bar->width() / 2.0, 5);
  EXPECT_EQ(Found(1).TopLine(), bar->Value());
  EXPECT_EQ(Found(2).TopLine(), bar->Value());
  Type(Key::Home);
  TouchLine(Found(1), 3);
  EXPECT_EQ(Found(2).Current(), 3);
  PressAt(Found(2), 20, 300);
  DragTo(Found(2), 20, 100);
  ReleaseAt(Found(2), 20, 100);
  EXPECT_GT(Found(2).TopLine(), 0);
  EXPECT_EQ(Found(1).TopLine(), Found(2).TopLine());
}

TEST_F(ProgramScreens, AFindGoesToTheProgramScreen) {
  SearchFor("hop", "as");
  EXPECT_EQ(LabelText("SearchForm", "SearchLabel"), " \"hop\" \n \"as\" ");
  EXPECT_EQ(Found(2).Items(), (Texts{"GASKET"}));
  Type(Key::O);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Combo("DirectoryCombo"), "SHOP");
  EXPECT_EQ(Combo("ProgramCombo"), "GASKET");
}

TEST_F(ProgramScreens, AFindInTheReservedDirectoryIsTakenThoughNoListShowsIt) {
  Put("EXSUBS/SUB1.prg", "G00");
  SearchFor("", "sub1");
  Type(Key::O);
  EXPECT_EQ(Combo("DirectoryCombo"), "EXSUBS");
  EXPECT_EQ(Combo("ProgramCombo"), "SUB1");
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "EXSUBS");
  EXPECT_EQ(Control<toolkit::PickBox>("ProgramForm", "DirectoryCombo")->Count(), 2);
}

TEST_F(ProgramScreens, NothingFoundIsToldAndTheScreenCloses) {
  EXPECT_EQ(Answers({Key::O}, [this] { SearchFor("", "zzz"); }),
            Texts{"\n\nNo Matching Programs Found !"});
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_FALSE(System.Console.FormsLocked);
}

TEST_F(ProgramScreens, ASearchThatIsCancelledInTheMiddleEnds) {
  for (int i = 0; i < 40; ++i) Put("D" + std::to_string(i) + "/RING.prg", "");
  SetWords("", "ring");
  Loop.Post([this] { Loop.Post([this] { Screens().Unload("SearchForm"); }); });
  Type(Key::R);
  RunFor(100);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_FALSE(Shows("WarningForm"));
}

TEST_F(ProgramScreens, TheConsoleLivesWhileASearchRuns) {
  for (int i = 0; i < 40; ++i) Put("D" + std::to_string(i) + "/RING.prg", "");
  SetWords("", "ring");
  std::string seen;
  Loop.Post([this, &seen] {
    Loop.Post([this, &seen] { seen = LabelText("SearchForm", "CountLabel"); });
  });
  Type(Key::R);
  RunFor(100);
  EXPECT_NE(seen.find(" OF 42 DIRECTORIES"), std::string::npos) << seen;
  EXPECT_EQ(LabelText("SearchForm", "CountLabel"), "40 FOUND");
}

TEST_F(ProgramScreens, TheSearchHasAViewOfItsOwn) {
  SearchFor("", "gasket");
  Type(Key::V);
  EXPECT_EQ(FrameCaption("SearchForm", "ViewFrame"), " GASKET ");
  Type(Key::O);
  EXPECT_EQ(CurrentForm(), "SearchForm");
  std::filesystem::remove(Programs() / "SHOP" / "GASKET.prg");
  EXPECT_EQ(Answers({Key::O}, Key::V), Texts{"\n\nInvalid Program !"});
  Type(Key::C);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
}

}  // namespace
}  // namespace torvane::tests

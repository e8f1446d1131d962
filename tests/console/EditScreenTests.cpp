// The line editor, by keys alone and by touch.
#include "FileScreens.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class Editor : public FileScreens {
 protected:
  Editor() {
    TypeF(1);
    RunFor(20);
  }
  void Open(const std::string& program, const std::string& directory = "SHOP") {
    Control<toolkit::PickBox>("ProgramForm", "DirectoryCombo")->SetText(directory);
    Control<toolkit::PickBox>("ProgramForm", "ProgramCombo")->SetText(program);
    Type(Key::E);
    RunFor(20);
  }
  [[nodiscard]] toolkit::ListBox& Lines() { return List("EditProgForm", "ProgList"); }
  [[nodiscard]] std::string Place() { return LabelText("EditProgForm", "LineLabel"); }
  [[nodiscard]] std::string Text(const std::string& path) {
    return AllPrograms().count(path) != 0 ? AllPrograms().at(path) : "(missing)";
  }
  void PutLines(const std::string& path, int count) {
    std::string text;
    for (int line = 0; line < count; ++line) text += "N" + std::to_string(line) + "\r\n";
    Put(path, text);
  }
};

TEST_F(Editor, CaptionsToTheLetter) {
  Put("SHOP/AAA.prg", "  G00 X1  \r\n\r\nM30\r\n");
  Open("AAA");
  EXPECT_EQ(CurrentForm(), "EditProgForm");
  EXPECT_EQ(ScreenTitle("EditProgForm"), "PROGRAM EDIT");
  EXPECT_EQ(LabelText("EditProgForm", "ProgLabel"), "AAA");
  EXPECT_EQ(LabelText("EditProgForm", "DirectoryLabel"), "SHOP");
  const std::vector<std::pair<std::string, std::string>> captions = {
      {"EditButton(1)", "&INSERT LINE"}, {"EditButton(2)", "  &EDIT    LINE"},
      {"EditButton(3)", "&DELETE LINE"}, {"PageButton(1)", "&HOME"},
      {"PageButton(2)", "  PAGE   &UP"}, {"PageButton(3)", "PAGE DO&WN"},
      {"PageButton(4)", "E&ND"},         {"OkButton", "&OK"},
      {"ExitButton", "&CANCEL"}};
  for (const auto& [name, caption] : captions) EXPECT_EQ(Caption("EditProgForm", name), caption);
  EXPECT_EQ(Lines().Items(), (Texts{"G00 X1", "", "M30"})) << "trimmed, empty lines stay";
  EXPECT_EQ(Lines().Current(), 0);
  EXPECT_EQ(Place(), "1 OF 3");
  EXPECT_EQ(LabelText("EditProgForm", "ChangedLabel"), "");
  EXPECT_TRUE(System.Console.FormsLocked);
}

TEST_F(Editor, InsertEditAndDeleteByKeysAndOkWritesTheFile) {
  Put("SHOP/AAA.prg", "G00 X1   \r\n\r\nM30");
  Open("AAA");
  Enter(Key::I, "G01X5");
  EXPECT_EQ(Lines().Items(), (Texts{"G00 X1", "G01X5", "", "M30"}));
  EXPECT_EQ(Lines().Current(), 1);
  EXPECT_EQ(Place(), "2 OF 4");
  EXPECT_EQ(LabelText("EditProgForm", "ChangedLabel"), "CHANGED");
  Enter(Key::E, "G01X7");
  EXPECT_EQ(Lines().Text(1), "G01X7");
  Type(Key::N);
  EXPECT_EQ(Lines().Current(), 3);
  Type(Key::D);
  EXPECT_EQ(Lines().Items(), (Texts{"G00 X1", "G01X7", ""}));
  EXPECT_EQ(Lines().Current(), 2) << "the new last line";
  EXPECT_EQ(Text("SHOP/AAA.prg"), "G00 X1   \r\n\r\nM30") << "not before OK";
  Type(Key::O);
  EXPECT_EQ(Text("SHOP/AAA.prg"), "G00 X1\r\nG01X7\r\n\r\n");
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Focus("ProgramForm"), "ExitButton");
  EXPECT_FALSE(System.Console.FormsLocked);
}

TEST_F(Editor, CancelWritesNothingAndAsksNothing) {
  Put("SHOP/AAA.prg", "G00");
  Open("AAA");
  Type(Key::D);
  Type(Key::C);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Text("SHOP/AAA.prg"), "G00");
}

TEST_F(Editor, ThePadsCancelInsertsNothingAndItsOkOnNothingAnEmptyLine) {
  Put("SHOP/AAA.prg", "G00");
  Open("AAA");
  EnterAndCancel(Key::I, "M30");
  EXPECT_EQ(Lines().Count(), 1);
  Enter(Key::I, "");
  EXPECT_EQ(Lines().Items(), (Texts{"G00", ""}));
  EnterAndCancel(Key::E, "M30");
  EXPECT_EQ(Lines().Items(), (Texts{"G00", ""}));
}

TEST_F(Editor, ALineOfMoreThanEightyCharactersIsKeptAndTakesNoFurtherOne) {
  const std::string line(100, 'X');
  Put("SHOP/AAA.prg", line + "\r\nM30\r\n");
  Open("AAA");
  ThenType(Key::End);
  ThenTypeText("Y");
  ThenType(Key::Enter);
  Type(Key::E);
  RunFor(60);
  EXPECT_EQ(Lines().Text(0), line);
  Type(Key::O);
  EXPECT_EQ(Text("SHOP/AAA.prg"), line + "\r\nM30\r\n");
}

TEST_F(Editor, WithoutALineEditAndDeleteBeep) {
  Put("SHOP/AAA.prg", "");
  Open("AAA");
  EXPECT_EQ(Place(), "0 OF 0");
  const int beeps = Desk->Beeps();
  Type(Key::E);
  Type(Key::D);
  EXPECT_EQ(Desk->Beeps(), beeps + 2);
  Enter(Key::I, "G00");
  EXPECT_EQ(Lines().Items(), Texts{"G00"});
  EXPECT_EQ(Place(), "1 OF 1");
}

TEST_F(Editor, PagesMoveSelectionAndViewByTwenty) {
  PutLines("SHOP/AAA.prg", 100);
  Open("AAA");
  EXPECT_EQ(Lines().VisibleLines(), 21);
  Type(Key::W);
  EXPECT_EQ(Lines().Current(), 20);
  EXPECT_EQ(Lines().TopLine(), 20);
  Type(Key::N);
  EXPECT_EQ(Lines().Current(), 99);
  EXPECT_EQ(Lines().TopLine(), 79);
  Type(Key::U);
  EXPECT_EQ(Lines().Current(), 79);
  EXPECT_EQ(Lines().TopLine(), 59);
  Type(Key::H);
  EXPECT_EQ(Lines().Current(), 0);
  EXPECT_EQ(Lines().TopLine(), 0);
}

TEST_F(Editor, AfterAnEditTheSelectedLineIsTheTopLine) {
  PutLines("SHOP/AAA.prg", 100);
  Open("AAA");
  TouchLine(Lines(), 15);
  Enter(Key::E, "X");
  EXPECT_EQ(Lines().Current(), 15);
  EXPECT_EQ(Lines().TopLine(), 15);
}

TEST_F(Editor, TheArrowsMoveTheSelectionInTheList) {
  PutLines("SHOP/AAA.prg", 30);
  Open("AAA");
  EXPECT_EQ(Focus("EditProgForm"), "ProgList");
  for (int i = 0; i < 25; ++i) Type(Key::Down);
  EXPECT_EQ(Place(), "26 OF 30");
  Type(Key::W);
  EXPECT_EQ(Lines().Current(), 29);
}

TEST_F(Editor, ByTouchADoublePressEditsTheLine) {
  Put("SHOP/AAA.prg", "G00\r\nM30\r\n");
  Open("AAA");
  ThenTypeText("M02");
  ThenType(Key::Enter);
  DoubleClickAt(Lines(), 30, 1 + (Lines().height() - 2) / 21.0 * 1.5);
  RunFor(80);
  EXPECT_EQ(Lines().Items(), (Texts{"G00", "M02"}));
  Touch("EditProgForm", "PageButton(1)");
  Touch("EditProgForm", "EditButton(3)");
  Touch("EditProgForm", "OkButton");
  EXPECT_EQ(Text("SHOP/AAA.prg"), "M02\r\n");
}

TEST_F(Editor, ANewProgramStartsFromTheTemplateWhichStaysAfterCancel) {
  Open("FRESH");
  EXPECT_EQ(Lines().Text(3), "N10 G71 G90");
  Type(Key::C);
  EXPECT_EQ(Text("SHOP/FRESH.prg"), Text("Template.prg"));
}

TEST_F(Editor, WithoutATemplateTheFileComesWithOk) {
  std::filesystem::remove(Programs() / "Template.prg");
  Open("FRESH");
  EXPECT_EQ(Lines().Count(), 0);
  EXPECT_EQ(Text("SHOP/FRESH.prg"), "(missing)");
  Type(Key::O);
  EXPECT_EQ(Text("SHOP/FRESH.prg"), "");
}

TEST_F(Editor, ANewDirectoryRefusedStopsTheEdit) {
  EXPECT_EQ(Answers({Key::C}, [this] { Open("FIRST", "NEWDIR"); }),
            Texts{"Directory\nNEWDIR\nDoes Not Exist !\n\nCreate It ?"});
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_FALSE(std::filesystem::exists(Programs() / "NEWDIR"));
}

TEST_F(Editor, TheKeysOfTheProgramScreensAreDead) {
  Put("SHOP/AAA.prg", "G00");
  Open("AAA");
  for (const int key : {1, 5, 8, 10, 11, 2, 3, 4, 6, 7}) TypeF(key);
  EXPECT_EQ(CurrentForm(), "EditProgForm");
  TypeF(9);
  EXPECT_EQ(CurrentForm(), "MessageForm");
  Type(Key::X);
  Then([this] {
    EXPECT_TRUE(Shows("ShutdownForm"));
    Type(Key::C);
  });
  TypeF(12);
  RunFor(50);
  EXPECT_EQ(Front(), "EditProgForm");
}

TEST_F(Editor, AProgramThatCannotBeKeptStaysInTheEditor) {
  Put("SHOP/AAA.prg", "G00");
  Open("AAA");
  Enter(Key::I, "M30");
  std::filesystem::remove_all(Programs() / "SHOP");
  EXPECT_EQ(Answers({Key::O}, Key::O), Texts{"\n.\\Programs\\SHOP\\AAA.prg\nnot found"});
  EXPECT_EQ(CurrentForm(), "EditProgForm");
  EXPECT_EQ(Lines().Count(), 2);
  std::filesystem::create_directory(Programs() / "SHOP");
  Type(Key::O);
  EXPECT_EQ(Text("SHOP/AAA.prg"), "G00\r\nM30\r\n");
}

TEST_F(Editor, AnEditOfTheSelectedProgramCountsFromItsNextSelection) {
  Type(Key::X);
  Select("GASKET");
  const std::string slot = Files->ReadFile(".\\Actvprg1.prg");
  TypeF(1);
  Open("GASKET");
  Type(Key::D);
  Type(Key::O);
  EXPECT_EQ(Files->ReadFile(".\\Actvprg1.prg"), slot);
  EXPECT_TRUE(System.Programs[1].Selected);
}

}  // namespace
}  // namespace torvane::tests

// The program screen: its lists, its pads, SELECT with all its answers, the ways to other screens.
#include <fstream>

#include "ConsoleFixture.h"
#include "TrialScreen.h"
#include "toolkit/PickBox.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class ProgramScreen : public ConsoleFixture {
 protected:
  ProgramScreen() {
    Start();
    TypeF(1);
  }

  toolkit::PickBox& DirectoryCombo() {
    return *Control<toolkit::PickBox>("ProgramForm", "DirectoryCombo");
  }
  toolkit::PickBox& ProgramCombo() {
    return *Control<toolkit::PickBox>("ProgramForm", "ProgramCombo");
  }
  /// A name on the key pad, by the pad's key in front of the box.
  void EnterName(Key pad, const std::string& name) {
    if (name.empty()) {
      Then([this] { Control<toolkit::Button>("KeyboardForm", "DeleteButton(0)")->Press(); });
    } else {
      ThenTypeText(name);
    }
    ThenType(Key::Enter);
    Type(pad);
  }
  std::vector<std::string> Items(toolkit::PickBox& box) {
    std::vector<std::string> items;
    for (int i = 0; i < box.Count(); ++i) items.push_back(box.Item(i));
    return items;
  }
  void PutProgram(const std::string& path, const std::string& text) {
    std::ofstream file(std::filesystem::path(Directory.Path()) / "Programs" / path,
                       std::ios::binary);
    file << text;
  }
};

TEST_F(ProgramScreen, CaptionsAndLists) {
  EXPECT_EQ(Control<toolkit::Panel>("ProgramForm", "ProgramPanel(0)")->Caption(), "PROGRAM");
  EXPECT_EQ(Caption("ProgramForm", "SelectButton"), "&SELECT");
  EXPECT_EQ(Caption("ProgramForm", "ExitButton"), "E&XIT");
  EXPECT_EQ(Caption("ProgramForm", "RestartButton(1)"), "&BLOCK RESTART");
  EXPECT_EQ(Caption("ProgramForm", "RestartButton(2)"), "&VISUAL RESTART");
  EXPECT_EQ(Items(DirectoryCombo()), (std::vector<std::string>{"FAULTS", "SHOP"}));
  EXPECT_EQ(DirectoryCombo().Text(), "SHOP");
  EXPECT_EQ(ProgramCombo().Item(0), "BRACKET-40");
  EXPECT_EQ(Focus("ProgramForm"), "SelectButton");
}

TEST_F(ProgramScreen, TheReservedDirectoryNeverShows) {
  Type(Key::X);
  std::filesystem::create_directory(std::filesystem::path(Directory.Path()) / "Programs" /
                                    "EXSUBS");
  TypeF(1);
  EXPECT_EQ(Items(DirectoryCombo()), (std::vector<std::string>{"FAULTS", "SHOP"}));
}

TEST_F(ProgramScreen, AnotherDirectoryFillsTheProgramList) {
  EnterName(Key::D, "FAULTS");
  EXPECT_EQ(DirectoryCombo().Text(), "FAULTS");
  EXPECT_EQ(ProgramCombo().Text(), "");
  EXPECT_EQ(ProgramCombo().Item(0), "ARC-CENTRE");
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "FAULTS");
}

TEST_F(ProgramScreen, CancelOnAPadLeavesBothNames) {
  EnterName(Key::P, "STAR");
  ThenTypeText("FAULTS");
  Then([this] { Control<toolkit::Button>("KeyboardForm", "ExitButton")->Press(); });
  Type(Key::D);
  EXPECT_EQ(DirectoryCombo().Text(), "SHOP");
  EXPECT_EQ(ProgramCombo().Text(), "STAR");
}

TEST_F(ProgramScreen, NamesComeFromThePadsAndTheListsAlone) {
  EnterName(Key::P, "STAR");
  ProgramCombo().SetFocus();
  for (const char* text : {"a", "7", "-", " "}) TypeText(text);
  Type(Key::Backspace);
  Type(Key::Delete);
  EXPECT_EQ(ProgramCombo().Text(), "STAR");
}

TEST_F(ProgramScreen, ArrowsStepThroughTheProgramsAndPageKeysThroughTheDirectories) {
  Type(Key::Down);
  EXPECT_EQ(ProgramCombo().Text(), "BRACKET-40");
  Type(Key::Down);
  EXPECT_EQ(ProgramCombo().Text(), "GASKET");
  Type(Key::Up);
  EXPECT_EQ(ProgramCombo().Text(), "BRACKET-40");
  Type(Key::PageDown);
  EXPECT_EQ(DirectoryCombo().Text(), "FAULTS");
  EXPECT_EQ(ProgramCombo().Item(0), "ARC-CENTRE");
}

TEST_F(ProgramScreen, SelectRefusesNamesInTheirOrder) {
  const auto answer = [this] { return Answered(Key::O, [this] { Type(Key::S); }); };
  EXPECT_EQ(answer(), "\n\nInvalid Program Name !");
  EnterName(Key::D, "");
  EXPECT_EQ(answer(), "\n\nInvalid Directory Name !");
  EnterName(Key::P, "NONE");
  EnterName(Key::D, "NOWHERE");
  EXPECT_EQ(answer(), "\n\nDirectory Does Not Exist !");
  EnterName(Key::D, "SHOP");
  EnterName(Key::P, "NONE");
  EXPECT_EQ(answer(), "\n\nProgram Does Not Exist !");
  EXPECT_EQ(Front(), "ProgramForm");
  EXPECT_TRUE(TakeCommands().empty());
}

TEST_F(ProgramScreen, NamesOfThirtyTwoCharactersPassAndOfThirtyThreeDoNot) {
  const std::string name(32, 'N');
  const auto star = Files->ReadFile(".\\Programs\\SHOP\\STAR.prg");
  PutProgram("SHOP/" + name + ".prg", star);
  PutProgram("SHOP/" + name + "N.prg", star);
  ProgramCombo().SetText(name + "N");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::S); }), "\n\nInvalid Program Name !");
  DirectoryCombo().SetText(name + "N");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::S); }), "\n\nInvalid Directory Name !");
  DirectoryCombo().SetText("SHOP");
  ProgramCombo().SetText(name);
  Type(Key::S);
  EXPECT_TRUE(Shows("SetupForm"));
  EXPECT_EQ(System.Active().ProgramName, name);
}

TEST_F(ProgramScreen, SelectFillsTheSlotAndLeavesTheInformationInFront) {
  EnterName(Key::P, "STAR");
  Lines.clear();
  Type(Key::S);
  EXPECT_FALSE(Shows("ProgramForm"));
  EXPECT_EQ(CurrentForm(), "SetupForm");
  EXPECT_EQ(Front(), "SetupForm");
  EXPECT_EQ(Caption("FrontEnd", "ProgramButton(1)"), "STAR   F10");
  const auto lines = TakeCommands();
  const auto behind = std::find(lines.begin(), lines.end(), "VR(91)=1");
  ASSERT_NE(behind, lines.end());
  ASSERT_NE(behind + 1, lines.end());
  EXPECT_EQ(*(behind + 1), "VR(87)=0.00");
  for (auto line = lines.begin(); line != behind; ++line)
    EXPECT_TRUE(line->starts_with("TABLE(")) << *line;
  EXPECT_FALSE(System.Console.FormsLocked);
  RunFor(100);
  EXPECT_GE(Times("? VR(19)"), 1) << "the poll goes on";
}

TEST_F(ProgramScreen, WhileRunningTheEarlierProgramStays) {
  Select("STAR");
  Machine().CycleStart();
  RunFor(200);
  ASSERT_TRUE(System.State.MachineRunning);
  TypeF(1);
  EnterName(Key::P, "GRID");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::S); }),
            "\nCan Not Select New Program\nWhile Machine Is Running !");
  EXPECT_EQ(System.Active().ProgramName, "STAR");
  EXPECT_TRUE(System.Active().Selected);
  EXPECT_TRUE(Files->FileExists("Actvprg1.krw"));
  EXPECT_EQ(Front(), "ProgramForm");
}

TEST_F(ProgramScreen, AProgramWithErrorsLeavesTheSlotEmpty) {
  Select("STAR");
  TypeF(1);
  EnterName(Key::D, "FAULTS");
  EnterName(Key::P, "ARC-CENTRE");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::S); }),
            "\nARC-CENTRE\nCan Not Be Selected Due To Errors in Code !");
  EXPECT_FALSE(System.Active().Selected);
  EXPECT_EQ(System.Active().ProgramName, "");
  EXPECT_FALSE(Files->FileExists("Actvprg1.krw"));
  EXPECT_EQ(Caption("FrontEnd", "ProgramButton(1)"), "PROGRAM 1   F10");
  EXPECT_EQ(Front(), "ProgramForm");
}

TEST_F(ProgramScreen, AnIllegalKerfLeavesTheSlotEmpty) {
  EnterName(Key::D, "FAULTS");
  EnterName(Key::P, "KERF-WIDTH");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::S); }),
            "\nKERF-WIDTH\nCan Not Be Selected Due To Illegal Kerf Width !");
  EXPECT_FALSE(System.Active().Selected);
}

TEST_F(ProgramScreen, WithoutAnyLaserSettingsAProgramStillSelects) {
  Files->DeleteFile(".\\Settings\\Default.lsr");
  Files->DeleteFile(".\\Settings\\Stainless.lsr");
  EnterName(Key::P, "STAR");
  Type(Key::S);
  EXPECT_TRUE(System.Active().Selected);
  EXPECT_FALSE(Files->FileExists("Actvprg1.lsr"));
}

TEST_F(ProgramScreen, EditAsksBeforeItMakesADirectory) {
  Screens().Register(
      TrialRow({.Name = "EditProgForm", .Title = "PROGRAM EDIT", .Parent = "ProgramForm"}));
  Type(Key::X);
  TypeF(1);  // whose key is live now
  EnterName(Key::D, "NEWDIR");
  EnterName(Key::P, "FIRST");
  const std::string question = "Directory\nNEWDIR\nDoes Not Exist !\n\nCreate It ?";
  EXPECT_EQ(Answered(Key::C, [this] { Type(Key::E); }), question);
  EXPECT_FALSE(Shows("EditProgForm"));
  EXPECT_FALSE(Files->DirectoryExists(".\\Programs\\NEWDIR"));
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::E); }), question);
  EXPECT_EQ(CurrentForm(), "EditProgForm");
  EXPECT_EQ(Files->ReadFile(".\\Programs\\NEWDIR\\FIRST.prg"),
            Files->ReadFile(".\\Programs\\Template.prg"));
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "ProgramForm");
  EXPECT_EQ(Front(), "ProgramForm");
  EXPECT_EQ(Focus("ProgramForm"), "ExitButton") << "where a sub-screen hands over";
}

TEST_F(ProgramScreen, SearchRefusesTwoEmptyWords) {
  Screens().Register(TrialRow({.Name = "SearchForm", .Parent = "ProgramForm"}));
  Type(Key::X);
  TypeF(1);  // whose key is live now
  EnterName(Key::D, "");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::R); }), "\n\nInvalid Directory Search Criteria !");
}

TEST_F(ProgramScreen, ARestartWithoutItsFilesBeeps) {
  const int beeps = Desk->Beeps();
  Type(Key::B);
  Type(Key::V);
  EXPECT_EQ(Desk->Beeps(), beeps + 2);
  EXPECT_EQ(Front(), "ProgramForm");
}

TEST_F(ProgramScreen, ItComesUpWithTheProgramOfTheSlot) {
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "");
  Select("GRID");
  TypeF(1);
  EXPECT_EQ(ProgramCombo().Text(), "GRID");
}

}  // namespace
}  // namespace torvane::tests

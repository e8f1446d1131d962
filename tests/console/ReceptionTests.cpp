// Programs that arrive while the operator does something else.
#include "FileScreens.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class Reception : public FileScreens {
 protected:
  /// SHOP/AAA, "G00 X1", in the editor.
  void EditAProgramOfOneLine() {
    Put("SHOP/AAA.prg", "G00 X1\r\n");
    TypeF(1);
    RunFor(20);
    Control<toolkit::PickBox>("ProgramForm", "ProgramCombo")->SetText("AAA");
    Type(Key::E);
    RunFor(20);
  }

  /// The office sends a program of the shop under another name.
  void Send(const std::string& program, const std::string& name, const std::string& directory) {
    Office->Obey("directory " + directory);
    Office->Obey("name " + name);
    Office->Obey("send Programs\\SHOP\\" + program + ".prg");
  }
  [[nodiscard]] std::string Program(const std::string& path) const {
    const Tree tree = AllPrograms();
    const auto found = tree.find(path);
    return found == tree.end() ? "(missing)" : found->second;
  }
  [[nodiscard]] std::string Note() const { return Directory.Get("Messages/Receive.hlp"); }
  /// Ticks of the poll in so many ms.
  long Ticks(int ms) {
    Lines.clear();
    RunFor(ms);
    return Times("? VR(19)");
  }
};

class PacedReception : public ConsoleFixture {
 protected:
  PacedReception() : ConsoleFixture({.Baud = 38400}) {}
  long Ticks(int ms) {
    Lines.clear();
    RunFor(ms);
    return Times("? VR(19)");
  }
};

TEST_F(Reception, ThePollKeepsItsPeriodAtTheFastestRate) {
  constexpr int Ms = 20000;
  const long quiet = Ticks(Ms);
  ASSERT_GT(quiet, 300);
  Office->Obey("baud 115200");
  Office->Obey("postamble off");
  Office->Obey("endless Programs\\SHOP\\NEST.prg");
  EXPECT_NEAR(static_cast<double>(Ticks(Ms)), static_cast<double>(quiet), 0.05 * quiet);
  EXPECT_GT(Comms->Reception().CharactersReceived(), 200000U);
}

TEST_F(PacedReception, ThePollKeepsItsPeriodOnARealLineWhileTheMachineCuts) {
  constexpr int Ms = 5000;
  Start();
  Select("LONG-SHEET");
  Machine().CycleStart();
  RunFor(1000);
  ASSERT_TRUE(System.State.MachineRunning);
  const long quiet = Ticks(Ms);
  ASSERT_GT(quiet, 20);
  Office->Obey("baud 115200");
  Office->Obey("endless Programs\\SHOP\\NEST.prg");
  EXPECT_NEAR(static_cast<double>(Ticks(Ms)), static_cast<double>(quiet), 0.05 * quiet);
  EXPECT_TRUE(System.State.MachineRunning);
}

TEST_F(Reception, TwoProgramsAfterEachOtherAreTwoFilesAndOneMessage) {
  Send("STAR", "FIRST", "OFFICE");
  RunFor(5000);
  Send("GASKET", "SECOND", "OFFICE");
  RunFor(5000);
  EXPECT_EQ(Program("OFFICE/FIRST.prg"), Program("SHOP/STAR.prg"));
  EXPECT_EQ(Program("OFFICE/SECOND.prg"), Program("SHOP/GASKET.prg"));
  EXPECT_EQ(Note(), "FIRST : OFFICE\r\nSECOND : OFFICE\r\n");
  TypeF(9);
  RunFor(200);
  EXPECT_TRUE(LabelText("MessageForm", "Message(1)").starts_with(" New Program(s) Received"));
  Type(Key::H);
  EXPECT_EQ(List("MessageForm", "HelpBox").Items(), (Texts{"FIRST : OFFICE", "SECOND : OFFICE"}));
  Type(Key::A);
  RunFor(200);
  EXPECT_EQ(Note(), "(missing)");
}

/// Nobody asks: what is written last counts, whole.
TEST_F(Reception, AProgramThatArrivesWhileItIsEditedGivesWayToTheEditorsOk) {
  EditAProgramOfOneLine();
  Enter(Key::I, "M30");
  Send("STAR", "AAA", "SHOP");
  RunFor(5000);
  EXPECT_EQ(Program("SHOP/AAA.prg"), Program("SHOP/STAR.prg"));
  EXPECT_EQ(List("EditProgForm", "ProgList").Items(), (Texts{"G00 X1", "M30"}));
  Type(Key::O);
  EXPECT_EQ(Program("SHOP/AAA.prg"), "G00 X1\r\nM30\r\n");
}

TEST_F(Reception, AProgramThatArrivesWhileItIsEditedStaysAfterCancel) {
  EditAProgramOfOneLine();
  Type(Key::D);
  Send("STAR", "AAA", "SHOP");
  RunFor(5000);
  Type(Key::C);
  EXPECT_EQ(Program("SHOP/AAA.prg"), Program("SHOP/STAR.prg"));
}

TEST_F(Reception, AProgramThatArrivesOverTheSelectedOneLeavesTheRunAlone) {
  Select("GASKET");
  const std::string slot = Files->ReadFile(".\\Actvprg1.prg");
  Machine().CycleStart();
  RunFor(500);
  ASSERT_TRUE(System.State.MachineRunning);
  Send("STAR", "GASKET", "SHOP");
  RunFor(5000);
  EXPECT_EQ(Program("SHOP/GASKET.prg"), Program("SHOP/STAR.prg"));
  EXPECT_EQ(Files->ReadFile(".\\Actvprg1.prg"), slot);
  EXPECT_FALSE(Shows("WarningForm"));
}

TEST_F(Reception, AProgramThatArrivesWhileADialogStandsIsStored) {
  TypeF(6);
  RunFor(20);
  Type(KeyFor('1'));
  Type(Key::Space);
  Then([this] { Send("STAR", "CAME", "OFFICE"); });
  Loop.After(4000, [this] {
    EXPECT_EQ(Warning(), "\n\nDelete \"BRACKET-40\" !");
    Type(Key::C);
  });
  Type(Key::O);
  RunFor(5000);
  EXPECT_EQ(Program("OFFICE/CAME.prg"), Program("SHOP/STAR.prg"));
}

TEST_F(Reception, WhereReceiveTmpCannotBeWrittenTheConsoleLivesAndTakesTheNextProgram) {
  std::filesystem::create_directory(std::filesystem::path(Directory.Path()) / "Receive.tmp");
  Send("STAR", "LOST", "OFFICE");
  RunFor(5000);
  EXPECT_EQ(Program("OFFICE/LOST.prg"), "(missing)");
  EXPECT_NE(Directory.Get("Service/Errors.txt").find("Receive.tmp"), std::string::npos);
  std::filesystem::remove_all(std::filesystem::path(Directory.Path()) / "Receive.tmp");
  Send("STAR", "CAME", "OFFICE");
  RunFor(5000);
  EXPECT_EQ(Program("OFFICE/CAME.prg"), Program("SHOP/STAR.prg"));
  EXPECT_GT(Ticks(1000), 15);
}

TEST_F(Reception, ChangedSettingsOfTheLineCountFromTheNextStart) {
  const auto before = System.Comms;
  TypeF(6);
  RunFor(20);
  Type(Key::U);
  RunFor(20);
  Type(Key::Down);
  Enter(Key::E, "0");
  Type(Key::O);
  RunFor(20);
  EXPECT_EQ(Directory.Get("Control.cms").find("Program transfer port\r\n0\r\nBaud"), 0U);
  EXPECT_EQ(System.Comms.CommsPort, before.CommsPort);
  EXPECT_TRUE(Control<toolkit::Button>("FileHandleForm", "CommsButton(1)")->Enabled());
  Send("STAR", "CAME", "OFFICE");
  RunFor(5000);
  EXPECT_EQ(Program("OFFICE/CAME.prg"), Program("SHOP/STAR.prg"));
}

TEST_F(Reception, EachFileScreenOpensASecondTimeAsTheFirst) {
  TypeF(1);
  RunFor(20);
  Control<toolkit::PickBox>("ProgramForm", "ProgramCombo")->SetText("STAR");
  const std::vector<std::pair<Key, const char*>> screens = {
      {Key::L, "ProgListForm"}, {Key::R, "SearchForm"}, {Key::E, "EditProgForm"}};
  for (int round = 0; round < 2; ++round) {
    for (const auto& [key, screen] : screens) {
      Type(key);
      RunFor(100);
      EXPECT_EQ(CurrentForm(), screen) << round;
      EXPECT_TRUE(System.Console.FormsLocked);
      Type(Key::C);
      RunFor(20);
      EXPECT_EQ(CurrentForm(), "ProgramForm");
      EXPECT_FALSE(System.Console.FormsLocked);
    }
  }
}

}  // namespace
}  // namespace torvane::tests

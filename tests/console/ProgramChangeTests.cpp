// The change between the two programs by F10, F11 and the program buttons, line by line.
#include "ConsoleFixture.h"
#include "TrialScreen.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class ProgramKeys : public ConsoleFixture {
 protected:
  ProgramKeys() { Start(); }

  std::string SlotShown() {
    return std::string(Down("FrontEnd", "ProgramButton(1)") ? "1" : "") +
           (Down("FrontEnd", "ProgramButton(2)") ? "2" : "");
  }
  void StartRun() {
    Select("STAR");
    Machine().CycleStart();
    RunFor(200);
    ASSERT_TRUE(System.State.MachineRunning);
    Lines.clear();
  }
};

/// The lines behind the table lines.
std::vector<std::string> BehindTable(const std::vector<std::string>& lines) {
  const auto table = [](const std::string& line) { return line.starts_with("TABLE("); };
  const auto last = std::find_if(lines.rbegin(), lines.rend(), table);
  return {last.base(), lines.end()};
}

TEST_F(ProgramKeys, F11SendsWhatBelongsToTheOtherSlotInItsOrder) {
  TypeF(11);
  EXPECT_EQ(System.ActiveSlot, 2);
  EXPECT_EQ(SlotShown(), "2");
  const auto lines = TakeCommands();
  ASSERT_GE(lines.size(), 2U);
  const auto rest = BehindTable(lines);
  ASSERT_GE(rest.size(), 6U);
  EXPECT_EQ(rest[0], "VR(91)=2");
  EXPECT_EQ(rest[1], "VR(87)=0.00");
  const std::vector<std::string> batch(rest.end() - 4, rest.end());
  EXPECT_EQ(batch, (std::vector<std::string>{"VR(82)=0", "VR(83)=0", "VR(84)=0", "VR(85)=0"}));
  EXPECT_EQ(Files->ReadFile("Control.cfg").substr(0, 26), ".\\\r\n.\\Programs\\\r\nSHOP\r\n2\r\n");
}

TEST_F(ProgramKeys, F10WithSlotOneInForceGoesThroughTheWholeChange) {
  Select("STAR");
  System.Active().BatchCounters = {};
  SetVariable(85, 7);
  TypeF(10);
  EXPECT_EQ(System.ActiveSlot, 1);
  EXPECT_EQ(SlotShown(), "1");
  const auto lines = TakeCommands();
  EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                          [](const std::string& line) { return line.starts_with("TABLE("); }),
            System.TableSent);
  EXPECT_GE(System.TableSent, 20);
  EXPECT_EQ(BehindTable(lines).front(), "VR(91)=1");
  EXPECT_EQ(System.Active().BatchCounters.SheetsCompleted, 7) << "read";
  EXPECT_NE(Files->ReadFile("Actvprg1.btc").find("7"), std::string::npos) << "and saved";
}

TEST_F(ProgramKeys, BothButtonsDoWhatTheirKeysDo) {
  Control<toolkit::Button>("FrontEnd", "ProgramButton(2)")->Press();
  EXPECT_EQ(System.ActiveSlot, 2);
  EXPECT_EQ(SlotShown(), "2");
  Control<toolkit::Button>("FrontEnd", "ProgramButton(2)")->Press();
  EXPECT_EQ(SlotShown(), "2") << "pressed again it stays down";
  Control<toolkit::Button>("FrontEnd", "ProgramButton(1)")->Press();
  EXPECT_EQ(System.ActiveSlot, 1);
  EXPECT_EQ(SlotShown(), "1");
}

TEST_F(ProgramKeys, WhileRunningTheChangeIsRefusedAndTheButtonsSnapBack) {
  StartRun();
  const std::string refusal = "\nCan Not Change Program\nWhile Machine Is Running !";
  EXPECT_EQ(Answered(Key::O, [this] { TypeF(11); }), refusal);
  EXPECT_EQ(SlotShown(), "1");
  EXPECT_EQ(Answered(Key::O,
                     [this] { Control<toolkit::Button>("FrontEnd", "ProgramButton(2)")->Press(); }),
            refusal);
  EXPECT_EQ(SlotShown(), "1");
  EXPECT_EQ(System.ActiveSlot, 1);
  for (const auto& line : TakeCommands()) EXPECT_TRUE(line.starts_with("TABLE(")) << line;
}

TEST_F(ProgramKeys, WithTheProgramInformationOpenNothingIsSaidEvenWhileRunning) {
  StartRun();
  TypeF(4);
  Type(Key::I);
  ASSERT_TRUE(Shows("SetupForm"));
  TypeF(11);
  Control<toolkit::Button>("FrontEnd", "ProgramButton(2)")->Press();
  TheConsole->HandleFunctionKey(Key::F11);
  EXPECT_FALSE(Shows("WarningForm"));
  EXPECT_EQ(System.ActiveSlot, 1);
  EXPECT_EQ(SlotShown(), "1");
}

TEST_F(ProgramKeys, EachScreenOfTheListForbidsItSilentlyAndTheOthersDoNot) {
  for (const char* name : {"ProgramForm", "ViewProgForm", "SetupForm"}) {
    Screens().Open(name);
    RunFor(100);
    TheConsole->HandleFunctionKey(Key::F11);
    EXPECT_EQ(System.ActiveSlot, 1) << name;
    EXPECT_EQ(SlotShown(), "1") << name;
    Screens().Unload(name);
  }
  for (const char* name : {"StatusMenuForm", "XYPositionForm", "AuxPositionForm", "MessageForm"}) {
    Screens().Open(name);
    RunFor(100);
    TypeF(11);
    EXPECT_EQ(System.ActiveSlot, 2) << name;
    TypeF(10);
    EXPECT_EQ(System.ActiveSlot, 1) << name;
    Screens().Unload(name);
  }
  EXPECT_FALSE(Shows("WarningForm"));
}

TEST_F(ProgramKeys, AScreenOfThatNameWhateverItIsForbidsIt) {
  for (const char* name : {"EditProgForm", "BlockStartForm", "RestartForm", "ProgListForm",
                           "SearchForm", "LaserSettingsForm", "MachineStatusForm", "BatchForm"}) {
    Screens().Register(TrialRow({.Name = name}));
    Screens().Show(name);
    TypeF(11);
    EXPECT_EQ(System.ActiveSlot, 1) << name;
    EXPECT_EQ(SlotShown(), "1") << name;
    Screens().Unload(name);
  }
}

TEST_F(ProgramKeys, TheCaptionsCarryTheProgramsNames) {
  Select("STAR");
  EXPECT_EQ(Caption("FrontEnd", "ProgramButton(1)"), "STAR   F10");
  EXPECT_EQ(Caption("FrontEnd", "ProgramButton(2)"), "PROGRAM 2   F11");
  TypeF(11);
  Select("GRID");
  EXPECT_EQ(Caption("FrontEnd", "ProgramButton(2)"), "GRID   F11");
}

TEST_F(ProgramKeys, TheChangeTakesTheDirectoryOfTheSlotWithIt) {
  Select("STAR");
  System.Programs[2].DirectoryName = "FAULTS";
  TypeF(11);
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "FAULTS");
  EXPECT_EQ(System.Directories.ProgramDirectory, ".\\Programs\\FAULTS\\");
  TypeF(10);
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "SHOP");
}

TEST_F(ProgramKeys, InTheGraphicsStateNothingChanges) {
  TypeF(7);
  TheConsole->HandleFunctionKey(Key::F11);
  Control<toolkit::Button>("FrontEnd", "ProgramButton(2)")->Press();
  EXPECT_EQ(System.ActiveSlot, 1);
  System.Console.PlotKeysActive = false;
  System.Console.PlotKeyMode = 1;
  TypeF(11);
  EXPECT_EQ(System.ActiveSlot, 1);
}

}  // namespace
}  // namespace torvane::tests

// The batch counter, by keys and by touch.
#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using core::ColourName;
using toolkit::Key;
using Words = std::vector<std::string>;

class BatchScreen : public ConsoleFixture {
 protected:
  BatchScreen() { Start(); }

  void Open() {
    TypeF(4);
    Type(Key::B);
    RunFor(200);
    Lines.clear();
  }
  [[nodiscard]] toolkit::EntryBox& Box(int index) {
    return *Control<toolkit::EntryBox>("BatchForm", "BatchBox(" + std::to_string(index) + ")");
  }
  [[nodiscard]] Words Boxes() {
    Words texts;
    for (int index = 1; index <= 5; ++index) texts.push_back(Box(index).Text());
    return texts;
  }
  [[nodiscard]] std::string SetCaption() { return Caption("BatchForm", "SetButton"); }
  /// Types a number into the box of a digit key.
  void Enter(char key, const std::string& number) {
    ThenTypeText(number);
    ThenType(Key::Enter);
    Type(static_cast<Key>(key));
    RunFor(100);
  }
  void Press(const std::string& name) {
    Click(*Control<toolkit::Button>("BatchForm", name));
    RunFor(50);
  }
};

TEST_F(BatchScreen, CaptionsToTheLetter) {
  Open();
  EXPECT_EQ(CurrentForm(), "BatchForm");
  EXPECT_EQ(Control<toolkit::Panel>("BatchForm", "BatchPanel(0)")->Caption(), "BATCH");
  const Words labels{"PARTS PER SHEET : &1", "PARTS REQUIRED : &2",
                     "SHEETS REQUIRED :", "COMPLETED SHEETS : &3", "SHEETS TO GO :"};
  for (int index = 1; index <= 5; ++index) {
    EXPECT_EQ(LabelText("BatchForm", "BatchLabel(" + std::to_string(index) + ")"),
              labels[static_cast<std::size_t>(index - 1)]);
  }
  EXPECT_EQ(SetCaption(), "&SET");
  EXPECT_EQ(Caption("BatchForm", "ClearButton"), "&CLEAR");
  EXPECT_EQ(Caption("BatchForm", "ExitButton"), "E&XIT");
  EXPECT_EQ(Focus("BatchForm"), "ExitButton");
}

TEST_F(BatchScreen, AtTheFrontItShowsWhatTheControllerCounts) {
  SetVariable(82, 5);
  SetVariable(83, 20);
  SetVariable(84, 4);
  SetVariable(85, 1);
  Open();
  EXPECT_EQ(Boxes(), (Words{"5", "20", "4", "1", "3"}));
  SetVariable(85, 4);
  RunFor(200);
  EXPECT_EQ(Boxes(), (Words{"5", "20", "4", "4", "0"})) << "with every tick";
}

TEST_F(BatchScreen, TheSettingsGoToTheFileAndTheControllerByKeysAlone) {
  Open();
  Type(Key::S);
  EXPECT_EQ(SetCaption(), "&OK");
  EXPECT_EQ(Caption("BatchForm", "ClearButton"), "&CANCEL");
  EXPECT_EQ(Focus("BatchForm"), "SetButton");
  EXPECT_TRUE(System.Console.BatchEditing);
  Enter('1', "7");
  Enter('2', "20");
  Enter('3', "1");
  EXPECT_EQ(Boxes(), (Words{"7", "20", "0", "1", "0"})) << "one entry does not undo another";
  EXPECT_EQ(Focus("BatchForm"), "SetButton");
  EXPECT_TRUE(TakeCommands().empty());
  Type(Key::O);
  RunFor(200);
  EXPECT_EQ(TakeCommands(), (Words{"VR(82)=7", "VR(83)=20", "VR(84)=3", "VR(85)=1"}));
  EXPECT_EQ(Boxes(), (Words{"7", "20", "3", "1", "2"}));
  EXPECT_EQ(Directory.Get("Actvprg1.btc"), "7\r\n20\r\n3\r\n1\r\n2\r\n******\r\n");
  EXPECT_EQ(SetCaption(), "&SET");
  EXPECT_EQ(Focus("BatchForm"), "ExitButton");
  EXPECT_FALSE(System.Console.BatchEditing);
  Type(Key::X);
  EXPECT_FALSE(Shows("BatchForm"));
}

TEST_F(BatchScreen, TheSameByTouch) {
  Open();
  Press("SetButton");
  ThenTypeText("5");
  ThenType(Key::Enter);
  Click(Box(1));
  RunFor(100);
  ThenTypeText("20");
  ThenType(Key::Enter);
  Click(Box(2));
  RunFor(100);
  Press("SetButton");
  RunFor(200);
  EXPECT_EQ(Boxes(), (Words{"5", "20", "4", "0", "4"}));
  Press("ClearButton");
  RunFor(200);
  EXPECT_EQ(Boxes(), (Words{"0", "0", "0", "0", "0"}));
  Press("ExitButton");
  EXPECT_FALSE(Shows("BatchForm"));
}

TEST_F(BatchScreen, LessThanOnePartASheetIsRefusedAndTheEditingGoesOn) {
  Open();
  Type(Key::S);
  Enter('2', "20");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::O); }), "\n\nInvalid Batch Settings !");
  RunFor(100);
  EXPECT_EQ(SetCaption(), "&OK");
  EXPECT_EQ(Box(2).Text(), "20");
  EXPECT_TRUE(TakeCommands().empty());
  EXPECT_EQ(System.Programs[1].BatchCounters.PartsRequired, 0);
}

TEST_F(BatchScreen, WhileEditingNoOtherKeyActsNotEvenMessagesAndShutdown) {
  Open();
  Type(Key::S);
  for (int key = 1; key <= 12; ++key) TypeF(key);
  Type(Key::K);
  Type(Key::X);
  Type(Key::S);
  TypeText("459");
  RunFor(100);
  EXPECT_EQ(Front(), "BatchForm");
  EXPECT_EQ(SetCaption(), "&OK");
  EXPECT_FALSE(Shows("MessageForm"));
  EXPECT_FALSE(Shows("ShutdownForm"));
  EXPECT_FALSE(Control<toolkit::Button>("BatchForm", "ExitButton")->Enabled());
  Type(Key::C);
  TypeF(9);
  EXPECT_EQ(Front(), "MessageForm") << "the global keys are back";
}

TEST_F(BatchScreen, BoxesOpenOnlyWhileEditingAndOnlyThreeOfThem) {
  Open();
  TypeText("123");
  for (int index = 1; index <= 5; ++index) Click(Box(index));
  RunFor(100);
  EXPECT_FALSE(Shows("NumberForm"));
  Type(Key::S);
  Click(Box(3));
  Click(Box(5));
  RunFor(100);
  EXPECT_FALSE(Shows("NumberForm"));
}

TEST_F(BatchScreen, CancelShowsTheRecordAgain) {
  SetVariable(82, 5);
  SetVariable(83, 20);
  SetVariable(84, 4);
  Open();
  Type(Key::S);
  Enter('1', "9");
  SetVariable(85, 2);
  RunFor(200);
  EXPECT_EQ(Boxes(), (Words{"9", "20", "4", "0", "4"})) << "what is entered is left alone";
  Type(Key::C);
  RunFor(200);
  EXPECT_EQ(Boxes(), (Words{"5", "20", "4", "2", "2"}));
  EXPECT_TRUE(TakeCommands().empty());
}

TEST_F(BatchScreen, ClearAsksNothing) {
  SetVariable(82, 5);
  SetVariable(83, 20);
  SetVariable(84, 4);
  SetVariable(85, 3);
  Open();
  Type(Key::C);
  RunFor(200);
  EXPECT_FALSE(Shows("WarningForm"));
  EXPECT_EQ(Boxes(), (Words{"0", "0", "0", "0", "0"}));
  EXPECT_EQ(TakeCommands(), (Words{"VR(82)=0", "VR(83)=0", "VR(84)=0", "VR(85)=0"}));
  EXPECT_EQ(Directory.Get("Actvprg1.btc"), "0\r\n0\r\n0\r\n0\r\n0\r\n******\r\n");
}

TEST_F(BatchScreen, AFileThatCanNotBeWrittenIsAWarningThatNamesIt) {
  Open();
  Directory.MakeDirectory("Actvprg1.btc");
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::C); }),
            "\nBatch Counters Are Not Saved !\n.\\Actvprg1.btc");
  RunFor(100);
  EXPECT_TRUE(Shows("BatchForm"));
  EXPECT_EQ(TakeCommands(), (Words{"VR(82)=0", "VR(83)=0", "VR(84)=0", "VR(85)=0"}));
}

TEST_F(BatchScreen, SheetsToGoChangesItsColourAtZeroAndBelow) {
  SetVariable(82, 5);
  SetVariable(83, 20);
  SetVariable(84, 4);
  Open();
  const auto plain = System.Colours[ColourName::TextBackground];
  EXPECT_EQ(Box(5).Background(), plain);
  for (const int completed : {4, 6}) {
    SetVariable(85, completed);
    RunFor(200);
    EXPECT_EQ(Box(5).Text(), std::to_string(4 - completed));
    EXPECT_EQ(Box(5).Background(), System.Colours[ColourName::WarningMessageButton]);
  }
  SetVariable(85, 1);
  RunFor(200);
  EXPECT_EQ(Box(5).Background(), plain);
}

TEST_F(BatchScreen, TheSlotCanNotBeChangedUnderIt) {
  Open();
  TypeF(11);
  RunFor(100);
  EXPECT_EQ(System.ActiveSlot, 1);
  EXPECT_FALSE(Shows("WarningForm"));
}

TEST_F(BatchScreen, TheEndOfTheProgramLeavesWhatIsBeingEnteredAlone) {
  SetVariable(82, 5);
  Open();
  Type(Key::S);
  SetVariable(82, 9);
  Lines.clear();
  TheConsole->Poll().RefreshBatch(link::Asker::Operator);
  EXPECT_EQ(Times("? VR(82)"), 0);
  EXPECT_EQ(System.Programs[1].BatchCounters.PartsPerSheet, 5);
}

/// A line with the pace of a real one: the counters are read while the operator presses.
class SlowBatchScreen : public ConsoleFixture {
 protected:
  SlowBatchScreen() : ConsoleFixture({.Baud = 9600}) { Start(); }
};

TEST_F(SlowBatchScreen, RepliesOlderThanAClearNeverBringTheOldCountsBack) {
  for (const char* query : {"? VR(82)", "? VR(83)", "? VR(84)", "? VR(85)"}) {
    SCOPED_TRACE(query);
    for (int number = 82; number <= 85; ++number) SetVariable(number, number);
    Loop.Start([this] { TypeF(4); });
    Loop.Start([this] { Type(Key::B); });
    RunFor(3000);
    const auto& counters = System.Programs[1].BatchCounters;
    ASSERT_EQ(counters.PartsRequired, 83);
    Lines.clear();
    for (int i = 0; i < 3000 && Times(query) == 0; ++i) RunFor(1);
    ASSERT_EQ(Times(query), 1);
    Loop.Start([this] { Type(Key::C); });
    for (int i = 0; i < 2000; ++i) {
      RunFor(1);
      ASSERT_EQ(counters.PartsRequired + counters.PartsPerSheet + counters.SheetsCompleted, 0) << i;
    }
    Screens().Unload("BatchForm");
    Screens().Unload("StatusMenuForm");
    RunFor(500);
  }
}

TEST_F(BatchScreen, OpenedTwiceItBeginsByViewing) {
  Open();
  Type(Key::S);
  Screens().Unload("BatchForm");
  EXPECT_FALSE(System.Console.BatchEditing);
  Screens().Unload("StatusMenuForm");
  Open();
  EXPECT_EQ(SetCaption(), "&SET");
}

}  // namespace
}  // namespace torvane::tests

// The messages: what stands, the help behind it, its paging, and the button that tells of it.
#include <fstream>

#include "ConsoleFixture.h"
#include "simulator/ControllerMemory.h"

namespace torvane::tests {
namespace {

using core::ColourName;
using toolkit::Key;

class MessageScreen : public ConsoleFixture {
 protected:
  MessageScreen() { Start(); }

  void Open() {
    TypeF(9);
    RunFor(150);
  }
  [[nodiscard]] std::string Row(int row) {
    return LabelText("MessageForm", "Message(" + std::to_string(row) + ")");
  }
  [[nodiscard]] bool Inverse(int row) {
    auto* label = Control<toolkit::Label>("MessageForm", "Message(" + std::to_string(row) + ")");
    return label->Background() == System.Colours[ColourName::Text] &&
           label->Foreground() == System.Colours[ColourName::TextBackground];
  }
  [[nodiscard]] toolkit::ListBox& Help() {
    return *Control<toolkit::ListBox>("MessageForm", "HelpBox");
  }
  [[nodiscard]] bool ListShows() {
    return Control<toolkit::Panel>("MessageForm", "MessageBox")->Visible() && !Help().Visible();
  }
  void PutFile(const std::string& path, int lines) {
    std::ofstream file(std::filesystem::path(Directory.Path()) / path, std::ios::binary);
    for (int i = 0; i < lines; ++i) file << "line " << i << "\r\n";
  }
  [[nodiscard]] std::uint32_t ButtonColour() {
    return Control<toolkit::Button>("FrontEnd", "MessageButton")->Background();
  }
};

TEST_F(MessageScreen, NothingStandsAndHelpBeepsAndOpensAnEmptyBox) {
  Open();
  EXPECT_EQ(CurrentForm(), "MessageForm");
  for (int row = 1; row <= 18; ++row) {
    EXPECT_EQ(Row(row), std::string(80, ' '));
    EXPECT_FALSE(Inverse(row));
  }
  EXPECT_EQ(Control<toolkit::Label>("MessageForm", "Message(19)"), nullptr);
  EXPECT_EQ(Focus("MessageForm"), "HelpButton");
  const int beeps = Desk->Beeps();
  Type(Key::H);
  EXPECT_EQ(Desk->Beeps(), beeps + 1);
  EXPECT_FALSE(ListShows());
  EXPECT_EQ(Help().Count(), 0);
  EXPECT_EQ(Caption("MessageForm", "HelpButton"), "&MESSAGES");
  Type(Key::M);
  EXPECT_TRUE(ListShows());
  EXPECT_EQ(Caption("MessageForm", "HelpButton"), "&HELP");
}

TEST_F(MessageScreen, TheCodeStandsFirstThenTheBitsInRisingOrder) {
  Machine().RaiseError(4);
  Machine().RaiseBit(8);
  Machine().RaiseBit(0);
  Open();
  EXPECT_EQ(Row(1), " Assist gas pressure low");
  EXPECT_EQ(Row(2), " Machine not referenced");
  EXPECT_EQ(Row(3), " Programmed stop: press cycle start");
  EXPECT_EQ(Row(4), std::string(80, ' '));
  EXPECT_TRUE(Inverse(1));
  EXPECT_FALSE(Inverse(2));
}

TEST_F(MessageScreen, BitsZeroAndThirtyOneTogetherShowNothing) {
  SetVariable(simulator::Vr::LogicMessages, -2147483647.0);
  Open();
  EXPECT_EQ(Row(1), std::string(80, ' '));
  EXPECT_FALSE(Inverse(1));
}

TEST_F(MessageScreen, TwentyFiveBitsStopAtEighteenRowsAndABitWithoutATextGivesAnEmptyRow) {
  SetVariable(simulator::Vr::LogicMessages, (1 << 25) - 1);
  Open();
  EXPECT_EQ(Row(13), " Restart block not found");
  EXPECT_EQ(Row(14), " ");
  EXPECT_EQ(Row(18), " ");
  for (int i = 0; i < 20; ++i) {
    Type(Key::Down);
    RunFor(60);
  }
  EXPECT_TRUE(Inverse(18));
}

TEST_F(MessageScreen, ArrowsAndPressesChooseARowAndTheFocusStaysOnHelp) {
  Machine().RaiseError(4);
  Machine().RaiseBit(0);
  Machine().RaiseBit(5);
  Open();
  Type(Key::Down);
  RunFor(60);
  EXPECT_TRUE(Inverse(2));
  EXPECT_FALSE(Inverse(1));
  for (int i = 0; i < 5; ++i) {
    Type(Key::Down);
    RunFor(60);
  }
  EXPECT_TRUE(Inverse(3));
  for (int i = 0; i < 5; ++i) {
    Type(Key::Up);
    RunFor(60);
  }
  EXPECT_TRUE(Inverse(1));
  Click(*Control<toolkit::Label>("MessageForm", "Message(3)"));
  EXPECT_EQ(Focus("MessageForm"), "HelpButton");
  RunFor(60);
  EXPECT_TRUE(Inverse(3));
  Type(Key::H);
  EXPECT_GT(Help().Count(), 0);
  EXPECT_EQ(Files->ReadFile("Service\\LastFile.txt"), ".\\Messages\\Help\\Logic\\5.hlp\r\n");
  Click(Help());
  EXPECT_EQ(Focus("MessageForm"), "HelpButton");
}

TEST_F(MessageScreen, TheHelpPagesByTwentySevenOfTwentyEightLines) {
  PutFile("Messages/Help/IO/4.hlp", 100);
  Machine().RaiseError(4);
  Open();
  Type(Key::H);
  ASSERT_EQ(Help().Count(), 100);
  EXPECT_EQ(Help().TopLine(), 0);
  Type(Key::Up);
  EXPECT_EQ(Help().TopLine(), 0);
  Type(Key::Down);
  EXPECT_EQ(Help().TopLine(), 1);
  Type(Key::PageDown);
  EXPECT_EQ(Help().TopLine(), 28);
  Type(Key::PageUp);
  EXPECT_EQ(Help().TopLine(), 1);
  Type(Key::End);
  EXPECT_EQ(Help().TopLine(), 72);
  Type(Key::PageDown);
  EXPECT_EQ(Help().TopLine(), 72);
  Type(Key::Down);
  EXPECT_EQ(Help().TopLine(), 72);
  Type(Key::Home);
  EXPECT_EQ(Help().TopLine(), 0);
  EXPECT_EQ(Help().VisibleLines(), 28);
}

TEST_F(MessageScreen, AShortHelpStaysWhereItIs) {
  PutFile("Messages/Help/IO/4.hlp", 28);
  Machine().RaiseError(4);
  Open();
  Type(Key::H);
  for (const Key key : {Key::Down, Key::PageDown, Key::End, Key::Up, Key::PageUp, Key::Home}) {
    Type(key);
    EXPECT_EQ(Help().TopLine(), 0);
  }
}

TEST_F(MessageScreen, HMAndBPressHelpAndXLeaves) {
  Open();
  bool list = true;
  for (const Key key : {Key::H, Key::B, Key::M, Key::H, Key::B}) {
    Type(key);
    list = !list;
    EXPECT_EQ(ListShows(), list);
  }
  Type(Key::X);
  EXPECT_FALSE(Shows("MessageForm"));
  EXPECT_EQ(CurrentForm(), "");
}

TEST_F(MessageScreen, ItComesBackOnItsListWithNothingChosen) {
  Machine().RaiseError(4);
  Machine().RaiseBit(0);
  Open();
  Type(Key::Down);
  RunFor(60);
  Type(Key::H);
  Type(Key::X);
  Open();
  EXPECT_TRUE(ListShows());
  EXPECT_EQ(Caption("MessageForm", "HelpButton"), "&HELP");
  EXPECT_TRUE(Inverse(1));
}

TEST_F(MessageScreen, OnlyReceivedProgramsAreAcknowledged) {
  PutFile("Messages/Receive.hlp", 2);
  System.Console.NewProgramsReceived = true;
  Machine().RaiseBit(0);
  Open();
  EXPECT_EQ(Row(1), " Machine not referenced");
  EXPECT_EQ(Row(2), " New Program(s) Received");
  Type(Key::Down);
  RunFor(60);
  Type(Key::H);
  EXPECT_EQ(Help().Count(), 2);
  Type(Key::M);
  Type(Key::A);
  RunFor(60);
  EXPECT_FALSE(System.Console.NewProgramsReceived);
  EXPECT_FALSE(Files->FileExists(".\\Messages\\Receive.hlp"));
  EXPECT_EQ(Row(1), " Machine not referenced") << "the controller's own conditions stay";
  EXPECT_EQ(Row(2), std::string(80, ' '));
}

TEST_F(MessageScreen, HandsOnTheGlobalKeys) {
  Open();
  TypeF(4);
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
  Type(Key::X);
  EXPECT_EQ(CurrentForm(), "MessageForm");
  TypeF(9);
  EXPECT_EQ(Front(), "MessageForm");
}

TEST_F(MessageScreen, CaptionsToTheLetter) {
  Open();
  EXPECT_EQ(Control<toolkit::Panel>("MessageForm", "MessagePanel(0)")->Caption(), "MESSAGES");
  EXPECT_EQ(Caption("MessageForm", "ExitButton"), "E&XIT");
  EXPECT_EQ(Caption("MessageForm", "ClearButton"), "&ACKNOWLEDGE");
}

TEST_F(MessageScreen, TheButtonTellsWhatStandsWhileTheListIsClosed) {
  EXPECT_EQ(ButtonColour(), System.Colours[ColourName::OkMessageButton]);
  System.Console.NewProgramsReceived = true;
  RunFor(60);
  EXPECT_EQ(ButtonColour(), System.Colours[ColourName::WarningMessageButton]);
  System.Console.NewProgramsReceived = false;
  RunFor(60);
  EXPECT_EQ(ButtonColour(), System.Colours[ColourName::OkMessageButton]);
  Machine().RaiseError(1);
  RunFor(60);
  EXPECT_EQ(ButtonColour(), System.Colours[ColourName::WarningMessageButton]);
  Machine().FeedHold();
  RunFor(60);
  EXPECT_EQ(ButtonColour(), System.Colours[ColourName::CriticalMessageButton]) << "both bits";
  EXPECT_EQ(Times("? VR(16)"), 0) << "a closed list costs no exchange";
}

TEST_F(MessageScreen, ACodeWithoutAnEntryEndsTheProgramWithASentence) {
  SetVariable(simulator::Vr::IoMessage, 70);
  try {
    Open();
    FAIL() << "nothing was thrown";
  } catch (const platform::RuntimeFault& fault) {
    EXPECT_NE(std::string(fault.what()).find("IO.msg"), std::string::npos) << fault.what();
    EXPECT_NE(std::string(fault.what()).find("70"), std::string::npos) << fault.what();
  }
}

}  // namespace
}  // namespace torvane::tests

// The sending screen and the lamp of the receiver, by keys alone and by touch.
#include <fstream>
#include <iterator>
#include <map>

#include <gmock/gmock.h>

#include "ConsoleFixture.h"
#include "core/ScreenNames.h"
#include "toolkit/ListBox.h"
#include "toolkit/ProgressBar.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

using Texts = std::vector<std::string>;

class SendScreen : public ConsoleFixture {
 protected:
  SendScreen() {
    Start();
    std::filesystem::remove_all(Programs());
    Put("SHOP/ALPHA.prg", "G00 X1\r\nM02\r\n");
    Put("SHOP/BETA.prg", std::string(2000, 'B'));
    Put("SHOP/GAMMA.prg", "G01\r\n");
    Put("NEST/DELTA.prg", "G02\r\n");
    System.Comms.CommsStartMode = core::StartMode::Never;
    TypeF(6);
    RunFor(20);
  }
  void Open() {
    Type(Key::S);
    RunFor(20);
  }
  [[nodiscard]] std::filesystem::path Programs() const {
    return std::filesystem::path(Directory.Path()) / "Programs";
  }
  void Put(const std::string& path, const std::string& text) {
    std::filesystem::create_directories((Programs() / path).parent_path());
    std::ofstream(Programs() / path, std::ios::binary) << text;
  }
  /// "(missing)" where there is none.
  [[nodiscard]] std::string Program(const std::string& path) const {
    std::ifstream in(Programs() / path, std::ios::binary);
    if (!in) return "(missing)";
    return {std::istreambuf_iterator<char>(in), {}};
  }
  [[nodiscard]] toolkit::ListBox& List(const std::string& name) {
    return *Control<toolkit::ListBox>("SendForm", name);
  }
  /// Marks the program at that line of the list.
  void Mark(int line) {
    List("FileList").PressLine(line);
    RunFor(10);
  }
  [[nodiscard]] bool OnShow(const std::string& name) {
    auto* control = Control<toolkit::Control>("SendForm", name);
    return control != nullptr && control->OnShow();
  }
  [[nodiscard]] const std::string& Sent() { return Office->Peer().Log(); }
  /// A key that comes `ms` from now, whether the key before has returned or not.
  void Later(int ms, Key key) {
    Loop.After(ms, [this, key] { Type(key); });
  }
};

const std::string Leader(30, '\0');

TEST_F(SendScreen, OpensFromTheFileMenuAndCancelGoesBackToIt) {
  Open();
  EXPECT_EQ(CurrentForm(), "SendForm");
  EXPECT_EQ(Control<toolkit::Panel>("SendForm", "SendPanel(0)")->Caption(),
            "RS232 COMMS - SEND PROGRAM");
  EXPECT_EQ(LabelText("SendForm", "FileLabel"), "SEND PROGRAM(S)");
  EXPECT_EQ(LabelText("SendForm", "DirectoryLabel"), "FROM DIRECTORY");
  EXPECT_EQ(Caption("SendForm", "OkButton"), "&OK");
  EXPECT_EQ(Caption("SendForm", "ExitButton"), "&CANCEL");
  EXPECT_EQ(List("FileList").Items(), (Texts{"ALPHA", "BETA", "GAMMA"}));
  EXPECT_EQ(LabelText("SendForm", "CountLabel"), "0 OF 3 MARKED");
  Type(Key::C);
  EXPECT_FALSE(Shows("SendForm"));
  EXPECT_EQ(CurrentForm(), "FileHandleForm");
}

TEST_F(SendScreen, TheMenusKeyIsDeadWithoutAPortAndOnTheControllersPort) {
  for (const std::int16_t port : {std::int16_t{0}, System.Link.CommPort}) {
    Screens().Unload("FileHandleForm");
    RunFor(20);
    System.Comms.CommsPort = port;
    TypeF(6);
    RunFor(20);
    EXPECT_FALSE(Control<toolkit::Button>("FileHandleForm", "CommsButton(1)")->Enabled());
    Type(Key::S);
    RunFor(20);
    EXPECT_FALSE(Shows("SendForm"));
  }
}

TEST_F(SendScreen, NothingMarkedIsRefused) {
  Open();
  EXPECT_EQ(Answered(Key::O, [this] { Type(Key::O); }), "\n\nNo Programs Selected !");
  RunFor(50);
  EXPECT_TRUE(Shows("SendForm"));
  EXPECT_TRUE(OnShow("FileList"));
}

TEST_F(SendScreen, ForceSendsWhatIsMarkedInTheOrderOfTheList) {
  Open();
  Mark(2);
  Mark(0);
  EXPECT_EQ(LabelText("SendForm", "CountLabel"), "2 OF 3 MARKED");
  Loop.After(50, [this] {
    EXPECT_FALSE(OnShow("FileList"));
    EXPECT_FALSE(OnShow("OkButton"));
    EXPECT_EQ(LabelText("SendForm", "SendLabel"), "ALPHA\n\n13 Characters");
    EXPECT_TRUE(OnShow("ForceButton"));
    EXPECT_FALSE(OnShow("FloodBar"));
    EXPECT_EQ(Focus("SendForm"), "ForceButton");
    Type(Key::O);  // not its key any more
    Type(Key::C);
    EXPECT_TRUE(Shows("SendForm"));
    Type(Key::F);
  });
  Later(1000, Key::Enter);  // the default key: FORCE for the second one
  Type(Key::O);
  RunFor(3000);
  EXPECT_FALSE(Shows("SendForm"));
  EXPECT_EQ(CurrentForm(), "FileHandleForm");
  EXPECT_EQ(Sent(), Leader + "G00 X1\r\nM02\r\n\x04" + Leader + "G01\r\n\x04");
}

TEST_F(SendScreen, EnterIsTheDefaultKeyInTheListAndWhileAProgramWaits) {
  Open();
  Mark(2);
  Later(50, Key::Enter);  // FORCE
  Type(Key::Enter);       // OK
  RunFor(2000);
  EXPECT_EQ(Sent(), Leader + "G01\r\n\x04");
  EXPECT_FALSE(Shows("SendForm"));
}

TEST_F(SendScreen, EnterOnAbortForcesNothingAndNothingIsTheDefaultWhileItSends) {
  Open();
  Mark(1);
  Loop.After(50, [this] {
    Type(Key::Tab);
    EXPECT_EQ(Focus("SendForm"), "AbortButton");
    Type(Key::Enter);
  });
  Loop.After(500, [this] {
    EXPECT_TRUE(OnShow("ForceButton")) << "it still waits";
    Type(Key::F);
  });
  Later(1000, Key::Enter);  // neither aborts nor forces
  Type(Key::O);
  RunFor(4000);
  EXPECT_EQ(Sent(), Leader + std::string(2000, 'B') + "\x04");
}

TEST_F(SendScreen, TheBarAndTheRestAreShownWhileItGoesOut) {
  Open();
  Mark(1);
  Later(50, Key::F);
  Loop.After(1050, [this] {
    EXPECT_FALSE(OnShow("ForceButton"));
    EXPECT_TRUE(OnShow("FloodBar"));
    const auto* bar = Control<toolkit::ProgressBar>("SendForm", "FloodBar");
    EXPECT_EQ(bar->Maximum(), 2000);
    EXPECT_NEAR(bar->Value(), 960, 100);
    EXPECT_THAT(LabelText("SendForm", "RemainingLabel"),
                ::testing::MatchesRegex("[34][0-9] %     0:0[0-9]"));
    Type(Key::F);  // hidden: nothing
  });
  Type(Key::O);
  RunFor(4000);
  EXPECT_EQ(Sent(), Leader + std::string(2000, 'B') + "\x04");
}

TEST_F(SendScreen, AbortEndsOneProgramAndTheNextIsOffered) {
  Open();
  for (int line = 0; line < 3; ++line) Mark(line);
  std::vector<std::string> offered;
  for (const int ms : {50, 250, 1450}) {
    Loop.After(ms, [&, this] { offered.push_back(LabelText("SendForm", "SendLabel")); });
  }
  Later(100, Key::A);   // ALPHA in the waiting phase
  Later(300, Key::F);   // BETA starts
  Later(1300, Key::A);  // and is aborted
  Later(1500, Key::A);
  Type(Key::O);
  RunFor(3000);
  EXPECT_EQ(offered,
            (Texts{"ALPHA\n\n13 Characters", "BETA\n\n2000 Characters", "GAMMA\n\n5 Characters"}));
  EXPECT_FALSE(Shows("SendForm"));
  EXPECT_TRUE(Sent().starts_with(Leader + "BBB"));
  EXPECT_LT(Sent().size(), 1200U);
  EXPECT_EQ(Sent().find('\x04'), std::string::npos) << "no postamble after an abort";
}

TEST_F(SendScreen, ByKeysAloneFromTheMarksToTheLastAbort) {
  Open();
  EXPECT_EQ(Focus("SendForm"), "FileList");
  Type(Key::Space);
  Type(Key::Down);
  Type(Key::Space);
  EXPECT_EQ(List("FileList").SelectedTexts(), (Texts{"ALPHA", "BETA"}));
  Later(100, Key::Enter);   // FORCE is the default button now
  Later(900, Key::Escape);  // nothing
  Later(1000, Key::A);      // BETA is left out
  Type(Key::Enter);         // OK
  RunFor(2000);
  EXPECT_FALSE(Shows("SendForm"));
  EXPECT_EQ(Sent(), Leader + "G00 X1\r\nM02\r\n\x04");
}

TEST_F(SendScreen, AnotherDirectoryFillsTheList) {
  Open();
  auto& directories = List("DirectoryList");
  ASSERT_EQ(directories.Items(), (Texts{"NEST", "SHOP"}));
  EXPECT_EQ(directories.Current(), 1);
  directories.PressLine(0);
  RunFor(20);
  EXPECT_EQ(List("FileList").Items(), (Texts{"DELTA"}));
  Mark(0);
  Later(50, Key::F);
  Type(Key::O);
  RunFor(2000);
  EXPECT_EQ(Sent(), Leader + "G02\r\n\x04");
}

TEST_F(SendScreen, TypedCharactersNeverReachTheLists) {
  Open();
  const auto before = List("FileList").SelectedIndices();
  TypeText("zq5");
  EXPECT_EQ(List("FileList").SelectedIndices(), before);
  EXPECT_TRUE(Shows("SendForm"));
}

TEST_F(SendScreen, NothingIsReceivedWhileItStandsAndAfterItTheReceiverListens) {
  Office->Obey("send Programs\\SHOP\\BETA.prg");
  RunFor(300);
  EXPECT_TRUE(System.Transfer.ReceiveOpen);
  Open();
  EXPECT_FALSE(System.Transfer.ReceiveOpen) << "half a program was dropped";
  Office->Obey("send Programs\\SHOP\\GAMMA.prg");
  RunFor(4000);
  Type(Key::C);
  RunFor(1000);
  EXPECT_EQ(Program("SHOP/New Program 1.prg"), "(missing)");
  Office->Obey("send Programs\\SHOP\\GAMMA.prg");
  RunFor(1000);
  EXPECT_EQ(Program("SHOP/New Program 1.prg"), "G01\r\n");
}

TEST_F(SendScreen, OtherScreensAndTheTickGoOnWhileItSends) {
  Open();
  Mark(1);
  static_cast<void>(TakeCommands());
  Later(50, Key::F);
  Loop.After(300, [this] {
    Lines.clear();
    TypeF(9);
    EXPECT_TRUE(Shows("MessageForm"));
  });
  Loop.After(1300, [this] {
    EXPECT_NEAR(static_cast<double>(Times("? VR(19)")), 20, 1);
    Type(Key::X);
  });
  Type(Key::O);
  RunFor(4000);
  EXPECT_EQ(Sent(), Leader + std::string(2000, 'B') + "\x04");
  EXPECT_FALSE(Shows("SendForm"));
}

TEST_F(SendScreen, TheEndOfASendBringsItsMenuUpAndEndsAJogThatIsHeld) {
  Open();
  Mark(1);
  Later(50, Key::F);
  Loop.After(300, [this] { Screens().Open(core::ScreenNames::XYJogForm); });
  Loop.After(500, [this] {
    Lines.clear();
    Desk->PressKey(toolkit::KeyStroke(Key::Right));
  });
  Loop.After(1000, [this] { EXPECT_EQ(TakeCommands(), Texts{"VR(48)=19"}); });
  Type(Key::O);
  RunFor(4000);
  EXPECT_EQ(Sent(), Leader + std::string(2000, 'B') + "\x04");
  EXPECT_EQ(Front(), "FileHandleForm");
  EXPECT_EQ(TakeCommands(), Texts{"VR(48)=0"});
}

TEST_F(SendScreen, ShutdownWhileItSendsAbortsAndCloses) {
  Open();
  Mark(1);
  Mark(2);
  Later(50, Key::F);
  Loop.After(500, [this] { End->ShutdownSystem(true); });
  Type(Key::O);
  RunFor(2000);
  EXPECT_FALSE(Office->Port().IsOpen());
  EXPECT_LT(Sent().size(), 700U);
  EXPECT_EQ(Session.Events.back(), "end process");
}

TEST_F(SendScreen, AProgramThatWentMeanwhileIsToldAndTheRestGoesOut) {
  Open();
  Mark(0);
  Mark(2);
  std::filesystem::remove(Programs() / "SHOP/ALPHA.prg");
  Later(50, Key::F);
  std::string told;
  Loop.After(200, [&, this] {
    told = Warning();
    Type(Key::O);
  });
  Later(300, Key::F);
  Type(Key::O);
  RunFor(3000);
  EXPECT_EQ(told, "\nCan Not Send\n\"ALPHA\" !");
  EXPECT_EQ(Sent(), Leader + "G01\r\n\x04");
}

TEST_F(SendScreen, ByTouch) {
  Open();
  Mark(0);
  EXPECT_EQ(LabelText("SendForm", "CountLabel"), "1 OF 3 MARKED");
  Loop.After(100, [this] { Click(*Control<toolkit::Button>("SendForm", "ForceButton")); });
  Click(*Control<toolkit::Button>("SendForm", "OkButton"));
  RunFor(2000);
  EXPECT_EQ(Sent(), Leader + "G00 X1\r\nM02\r\n\x04");
}

TEST_F(SendScreen, OpenedTwiceItSendsTwice) {
  for (int round = 0; round < 2; ++round) {
    Open();
    Mark(2);
    Later(50, Key::F);
    Type(Key::O);
    RunFor(2000);
    EXPECT_EQ(CurrentForm(), "FileHandleForm");
  }
  EXPECT_EQ(Sent(), Leader + "G01\r\n\x04" + Leader + "G01\r\n\x04");
}

TEST_F(SendScreen, TheLampOfTheReceiverShowsTheBytesWhileTheyArrive) {
  EXPECT_FALSE(Main().Window().Find("ReceiveLamp")->Visible());
  Office->Obey("name LONG");
  Office->Obey("send Programs\\SHOP\\BETA.prg");
  RunFor(1000);
  EXPECT_TRUE(Main().Window().Find("ReceiveLamp")->Visible());
  EXPECT_THAT(LabelText("FrontEnd", "ReceiveLamp"), ::testing::MatchesRegex("RECEIVING   [0-9]+"));
  RunFor(1600);
  EXPECT_EQ(LabelText("FrontEnd", "ReceiveLamp"), "RECEIVED");
  RunFor(4000);
  EXPECT_FALSE(Main().Window().Find("ReceiveLamp")->Visible());
  EXPECT_EQ(Program("SHOP/LONG.prg"), std::string(2000, 'B') + "\r\n");
}

}  // namespace
}  // namespace torvane::tests

// A line that fails while screens are open: the dialog, what each answer leads to.
#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using simulator::FaultKind;
using simulator::FaultSettings;
using toolkit::Key;

class LinkFailure : public ConsoleFixture {
 protected:
  LinkFailure() { Start(); }

  void Fail(FaultKind kind, double rate) {
    FaultSettings faults;
    faults.Rate(kind) = rate;
    Controller->SetFaults(faults);
  }
  /// Answers each warning that comes up, a second after it was seen first, until the test ends.
  void AnswerAll(Key key) {
    answer_ = Loop.MakeTimer([this, key] {
      if (!Shows("WarningForm")) return;
      Dialogs.push_back(Warning());
      Type(key);
    });
    answer_->Start(1000);
  }

  std::vector<std::string> Dialogs;

 private:
  std::unique_ptr<platform::Timer> answer_;
};

TEST_F(LinkFailure, ASilentLineGivesItsDialogOverTheOpenScreens) {
  TypeF(4);
  RunFor(100);
  Fail(FaultKind::Silence, 1);
  std::string seen;
  Loop.After(12000, [this, &seen] {
    seen = Warning();
    EXPECT_EQ(Screens().VisibleNames(),
              (std::vector<std::string>{"FrontEnd", "StatusMenuForm", "WarningForm"}));
    EXPECT_EQ(Caption("WarningForm", "WarningButton(0)"), "&CANCEL");
    EXPECT_EQ(Caption("WarningForm", "WarningButton(2)"), "&OK");
    Fail(FaultKind::Silence, 0);
    Type(Key::C);
  });
  RunFor(13000);
  EXPECT_TRUE(seen.starts_with("An error occurred while talking to TRIO !\n\nLast Comms :  ? "))
      << seen;
  EXPECT_NE(seen.find("\n\nGetTrio Timeout : \n\nShutdown Torvane ?"), std::string::npos) << seen;
  RunFor(11000);
  EXPECT_FALSE(Shows("WarningForm")) << "&CANCEL goes on";
  EXPECT_EQ(Front(), "StatusMenuForm");
  EXPECT_TRUE(Session.Events.empty());
  Lines.clear();
  RunFor(200);
  EXPECT_GE(Times("? VR(19)"), 2) << "and the poll too";
  TypeText("1");
  EXPECT_EQ(Times("VR(92)=1"), 1);
}

TEST_F(LinkFailure, OkShutsDownToServiceWithoutEndingTheSession) {
  TypeF(4);
  RunFor(100);
  Fail(FaultKind::Silence, 1);
  Loop.After(12000, [this] {
    EXPECT_TRUE(Shows("WarningForm"));
    Fail(FaultKind::Silence, 0);
    Type(Key::O);
  });
  RunFor(30000);
  EXPECT_EQ(Session.Events, std::vector<std::string>{"end process"});
  EXPECT_FALSE(Port->IsOpen());
  EXPECT_FALSE(Shows("FrontEnd"));
  const std::string errors = Files->ReadFile("Service\\Errors.txt");
  EXPECT_EQ(errors.substr(0, 15), "*** ERROR ***\r\n");
}

TEST_F(LinkFailure, OkOnADeadLineEndsOnceThoughTheLastReadingsFailToo) {
  Fail(FaultKind::Silence, 1);
  AnswerAll(Key::O);
  RunFor(300000);
  EXPECT_EQ(Session.Events, std::vector<std::string>{"end process"});
  EXPECT_EQ(Dialogs.size(), 1U) << "the failure; the last readings fail without a question";
  EXPECT_FALSE(Port->IsOpen());
}

TEST_F(LinkFailure, AFailingExchangeOfAButtonHasItsDialogAndItsScreenStays) {
  TypeF(4);
  RunFor(100);
  TheConsole->Trio().StopPolling(true);
  RunFor(200);
  Fail(FaultKind::Percent, 1);
  const std::string seen = Answered(Key::C, [this] { TypeText("1"); });
  EXPECT_EQ(seen.find("An error occurred while talking to TRIO !\n\nLast Comms :  VR(92)=1\n\n"
                      "GetTrio Error : "),
            0U)
      << seen;
  EXPECT_TRUE(Down("StatusMenuForm", "SkipButton(1)"));
  EXPECT_EQ(Front(), "StatusMenuForm");
  EXPECT_EQ(CurrentForm(), "StatusMenuForm");
}

TEST_F(LinkFailure, ADeadLineAsksAgainAndAgainUntilItComesBack) {
  Fail(FaultKind::Silence, 1);
  AnswerAll(Key::C);
  Loop.After(70000, [this] { Fail(FaultKind::Silence, 0); });
  RunFor(69000);
  EXPECT_GE(Dialogs.size(), 3U);
  RunFor(30000);
  const auto dialogs = Dialogs.size();
  Lines.clear();
  RunFor(30000);
  EXPECT_EQ(Dialogs.size(), dialogs);
  EXPECT_GT(Times("? VR(19)"), 100);
  EXPECT_TRUE(System.Link.TrioLinkEnabled) << "never marked dead";
}

TEST_F(LinkFailure, RepliesInPiecesAreNoFailure) {
  FaultSettings faults;
  faults.Rate(FaultKind::Pieces) = 1;
  Controller->SetFaults(faults);
  TypeF(4);
  TypeText("1");
  TypeText("2");
  RunFor(5000);
  EXPECT_FALSE(Shows("WarningForm"));
  EXPECT_EQ(Times("VR(92)=1"), 1);
  EXPECT_EQ(Times("VR(93)=1"), 1);
  ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", "STAR"));
  EXPECT_FALSE(Files->FileExists("Service\\Errors.txt"));
}

class DamagedInstallation : public ConsoleFixture {
 protected:
  std::string StartFault() {
    try {
      Start();
    } catch (const platform::RuntimeFault& fault) {
      return fault.what();
    }
    return "(it started)";
  }
  void Remove(const std::string& path) {
    std::filesystem::remove(std::filesystem::path(Directory.Path()) / path);
  }
};

TEST_F(DamagedInstallation, AMissingRequiredFileIsNamedInOneSentence) {
  const std::string path = "Messages/IO.msg";
  Remove(path);
  const std::string sentence = StartFault();
  EXPECT_NE(sentence.find("IO.msg"), std::string::npos) << sentence;
  EXPECT_EQ(sentence.find('\n'), std::string::npos) << sentence;
  EXPECT_EQ(Files->ReadFile("Service\\LastFile.txt"), ".\\Messages\\IO.msg\r\n");
  EXPECT_FALSE(Shows("FrontEnd"));
}

TEST_F(DamagedInstallation, ADamagedStoreStartsWithTwoEmptySlots) {
  Start();
  Select("STAR");
  Files->ReplaceFile("Actvprg1.drw", "short");
  TheConsole->Store().LoadActivePrograms();
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_FALSE(System.Programs[2].Selected);
  EXPECT_EQ(System.ActiveSlot, 1);
  EXPECT_FALSE(Files->FileExists("Actvprg1.krw"));
  EXPECT_EQ(Caption("FrontEnd", "ProgramButton(1)"), "PROGRAM 1   F10");
  EXPECT_FALSE(Shows("WarningForm")) << "without a word";
}

}  // namespace
}  // namespace torvane::tests

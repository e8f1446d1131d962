// What the controller still owes: replies that miss their time are taken by nobody.
#include <algorithm>
#include <random>
#include <string>

#include <gmock/gmock.h>

#include "LinkFixture.h"

namespace torvane::link {

using namespace tests;
namespace {

using ::testing::ElementsAre;

class LateReplies : public LinkTest {
 protected:
  LateReplies() {
    Settings.ReplyTimeoutMs = 400;
    Controller.Values = {{"VR(25)", "3000"}, {"VR(81)", "7"}, {"VR(98)", "100"}};
    Controller.OnLine = [this](const std::string& line) { Controller.Silent = line == silent_; };
  }
  /// The reply to a line that was not answered then comes after so many ms.
  void Later(int ms, const std::string& line) {
    Loop.After(ms, [this, line] { Port.Deliver(Controller.Reply(line)); });
  }

  std::string silent_ = "none";
};

TEST_F(LateReplies, OneThatComesIntoTheRequestForAPromptIsDropped) {
  silent_ = "? VR(25)";
  Controller.Replies[""] = "";  // the prompt is late, too
  Later(410, "? VR(25)");
  Loop.After(420, [this] { Port.Deliver("\r\n>>"); });
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 0);
  EXPECT_EQ(Link.GetRspnsInt("VR(81)", Asker::Poll), 7);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
}

TEST_F(LateReplies, OneThatComesIntoTheNextQueryIsDroppedAndTheWaitGoesOn) {
  silent_ = "? VR(25)";
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 0);
  Controller.OnLine = [this](const std::string& line) {
    Controller.Silent = true;
    Later(10, "? VR(25)");
    Later(20, line);
  };
  EXPECT_EQ(Link.GetRspnsInt("VR(81)", Asker::Poll), 7);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
}

TEST_F(LateReplies, OneToTheVerySameQuerySettlesNothingTheSecondDoes) {
  silent_ = "? VR(25)";
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 0);
  Controller.OnLine = [this](const std::string&) {
    Controller.Silent = true;
    Later(10, "? VR(25)");
  };
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 3000) << "the late one fits";
  Controller.OnLine = [this](const std::string& line) {
    Controller.Silent = true;
    Later(10, "? VR(25)");
    Later(20, line);
  };
  EXPECT_EQ(Link.GetRspnsInt("VR(81)", Asker::Poll), 7) << "the other one is dropped";
}

TEST_F(LateReplies, OneThatIsDroppedBetweenTwoExchangesIsSettledToo) {
  silent_ = "? VR(25)";
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 0);
  Port.Deliver(Controller.Reply("? VR(25)"));
  silent_ = "none";
  EXPECT_EQ(Link.GetRspnsInt("VR(81)", Asker::Poll), 7);
  // Nothing is owed any more: a reply without its echo is taken, and cannot be cut.
  Controller.Replies["? VR(98)"] = "XX VR(98)\r\n100\r\n>>";
  EXPECT_EQ(Link.GetRspnsSngl("VR(98)", 0, Asker::Poll), 0);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
}

TEST_F(LateReplies, ADebtThatWasNoneDelaysNoRequestForAPrompt) {
  // The controller leaves a byte out of the echo: its own reply may still come, for all we know.
  Controller.Replies["\x0BVR(87)=0"] = "VR(87)=0\r\n>>";
  Link.Download("\x0BVR(87)=0", Asker::Poll);
  for (int i = 0; i < 3; ++i) {
    Controller.Replies["VR(10)=x"] = "VR(10)=x\r\n%\r\n>>";
    Link.Download("VR(10)=x", Asker::Poll);
    Loop.RunFor(1);
    EXPECT_EQ(Link.GetRspnsInt("VR(81)", Asker::Poll), 7);
  }
  EXPECT_LT(Loop.NowMs(), 100) << "no wait for a prompt that has come";
}

TEST_F(LateReplies, APromptThatComesInTwoHalvesAroundTheTimeOutIsOne) {
  Controller.Replies["? VR(25)"] = "? VR(25)\r\n3000\r\n>";
  Controller.Replies[""] = "";  // the prompt is late, too
  Loop.After(410, [this] { Port.Deliver(">"); });
  Loop.After(420, [this] { Port.Deliver("\r\n>>"); });
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 0);
  EXPECT_EQ(Link.GetRspnsInt("VR(81)", Asker::Poll), 7);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
}

TEST_F(LateReplies, ACommandTakesNoLateReplyForItsPrompt) {
  silent_ = "? VR(25)";
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 0);
  Port.Deliver(Controller.Reply("? VR(25)"));
  silent_ = "VR(1)=1";
  Loop.Start([this] { Link.Download("VR(1)=1", Asker::Poll); });
  Loop.RunFor(399);
  EXPECT_EQ(Screens.Warnings.size(), 1U);
  Loop.RunFor(1);
  EXPECT_EQ(Screens.Warnings.size(), 2U) << "its own reply has not come";
}

TEST_F(LateReplies, OpeningThePortForgetsWhatWasOwed) {
  silent_ = "? VR(25)";
  EXPECT_EQ(Link.GetRspnsSngl("VR(25)", 0, Asker::Poll), 0);
  Link.CloseTrioPort();
  silent_ = "none";
  Link.OpenTrioPort(Settings.TrioLinkEnabled);
  Controller.Replies["VR(1)=1"] = "whatever>>";
  Link.Download("VR(1)=1");
  EXPECT_EQ(Loop.NowMs(), 400);
}

// ---- a bad cable ----

/// Bytes come in order, but replies are late, and bytes are lost and doubled on their way back. The
/// value of a name is one digit many times over, so that it is known whose a value is.
class BadCable {
 public:
  explicit BadCable(unsigned seed) : rng_(seed) {
    link_.Settings.ReplyTimeoutMs = 100;
    link_.Port.SetPeer([this](std::string_view bytes) { Receive(bytes); });
  }

  /// False when a query took the value of another.
  bool Ask() {
    const int digit = 1 + Below(9);
    const std::string value =
        std::to_string(link_.Link.GetRspnsLng("VR(" + std::to_string(digit) + ")", Asker::Silent));
    const char own = static_cast<char>('0' + digit);
    const bool mine =
        std::all_of(value.begin(), value.end(), [own](char each) { return each == own; });
    if (mine) ++answered_;
    return mine || value == "0";
  }
  [[nodiscard]] int Answered() const { return answered_; }

 private:
  int Below(int limit) { return static_cast<int>(rng_() % static_cast<unsigned>(limit)); }

  void Receive(std::string_view bytes) {
    for (const char byte : bytes) {
      if (byte != '\r') {
        line_ += byte;
        continue;
      }
      std::string reply = line_ + "\r\n";
      if (line_.starts_with("? ")) reply += std::string(5, line_[5]) + "\r\n";
      Send(reply + ">>");
      line_.clear();
    }
  }
  void Send(const std::string& reply) {
    freeMs_ = std::max(freeMs_, link_.Loop.NowMs());
    if (Below(25) == 0) freeMs_ += Below(300);
    for (const char byte : reply) {
      if (Below(8) == 0) freeMs_ += Below(3);
      const int fate = Below(400);
      if (fate == 0) continue;
      const std::string piece(fate == 1 ? 2 : 1, byte);
      link_.Loop.After(freeMs_ - link_.Loop.NowMs(), [this, piece] { link_.Port.Deliver(piece); });
    }
  }

  LinkFixture link_;
  std::mt19937 rng_;
  std::string line_;
  std::int64_t freeMs_ = 0;
  int answered_ = 0;
};

TEST(BadCableTest, NoReplyIsTakenByAStranger) {
  constexpr int Exchanges = 20'000;
  int strangers = 0;
  int answered = 0;
  constexpr int Each = 2'000;
  for (int done = 0; done < Exchanges; done += Each) {
    BadCable cable(static_cast<unsigned>(done + 1));
    for (int i = 0; i < Each; ++i) strangers += cable.Ask() ? 0 : 1;
    answered += cable.Answered();
  }
  EXPECT_EQ(strangers, 0);
  EXPECT_GT(answered, Exchanges * 7 / 10) << "the line is bad, but most of it comes through";
}

}  // namespace
}  // namespace torvane::link

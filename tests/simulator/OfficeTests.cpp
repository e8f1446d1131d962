// The office and its line, without a console.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/TransferFile.h"
#include "platform/DiskFileSystem.h"
#include "platform/VirtualLoop.h"
#include "simulator/OfficeCommands.h"
#include "simulator/OfficePort.h"
#include "support/TempDirectory.h"

namespace torvane::simulator {
namespace {

using namespace std::string_literals;
using platform::Handshake;
using platform::LineEvent;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

core::TransferSettings Frame() {
  core::TransferSettings frame;
  frame.CommsPreamble = "<";
  frame.CommsEndOfLine = "\r\n";
  frame.CommsPostamble = ">";
  frame.CommsStartChar = "*";
  return frame;
}

struct OfficeTest : ::testing::Test {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Files{Temp.Path()};
  platform::VirtualLoop Loop;
  OfficePeer Office{Frame()};
  std::vector<std::string> Events;
  double Baud = 0;

  OfficeTest() {
    Office.OnEvent([this](const std::string& text) { Events.push_back(text); });
    Temp.Put("A.prg", "G00\nM02\n");
    Temp.Put("B.prg", "G01\r\n");
  }
  std::string Obey(std::string_view line) {
    return CarryOutOfficeCommand(line, Office, Files).Text;
  }
  /// What goes out within `ms`.
  std::string Out(int ms = 100000) {
    std::string bytes;
    for (int at = 0; at <= ms; ++at) {
      bytes += Office.TakeOutput();
      Office.Advance(1);
    }
    return bytes;
  }
};

TEST_F(OfficeTest, SendsProgramsInTheFrameOfThePortFile) {
  EXPECT_EQ(Obey("send A.prg"), "");
  EXPECT_EQ(Out(), "<G00\r\nM02\r\n>");
  EXPECT_THAT(Events, ElementsAre("sent, 12 bytes in all"));
}

TEST_F(OfficeTest, TwoProgramsGoOutInOneWrite) {
  Obey("send A.prg B.prg");
  EXPECT_EQ(Office.TakeOutput(), "<G00\r\nM02\r\n><G01\r\n>");
}

TEST_F(OfficeTest, WithAHeaderWithoutAFrameWithNulsAndStoppingHalfWay) {
  Obey("directory ..\\Data");
  Obey("name evil:name");
  Obey("send B.prg");
  EXPECT_EQ(Out(),
            "<\x18..\\Data\r\n\x19"
            "evil:name\r\nG01\r\n>");
  Obey("directory");
  Obey("name");
  Obey("preamble off");
  Obey("postamble off");
  Obey("nuls 2");
  Obey("send B.prg");
  EXPECT_EQ(Out(),
            "G0\0"
            "1\r\0\n"s);
  Obey("nuls 0");
  Obey("stop-after 3");
  Obey("send A.prg");
  EXPECT_EQ(Out(), "G00");
}

TEST_F(OfficeTest, InChunksWithPauses) {
  Obey("preamble off");
  Obey("chunk 4 50");
  Obey("send A.prg");
  EXPECT_EQ(Out(49), "G00\r");
  EXPECT_EQ(Out(0), "\nM02");
  EXPECT_EQ(Out(), "\r\n>");
}

TEST_F(OfficeTest, AtTheRateOfItsLine) {
  Obey("baud 9600");
  Office.SendRaw(std::string(960, 'x'));
  EXPECT_NEAR(static_cast<double>(Out(499).size()), 480, 2);
  EXPECT_NEAR(static_cast<double>(Out(600).size()), 480, 2);
}

TEST_F(OfficeTest, AnEndlessProgramEndsAtHalt) {
  Obey("baud 9600");
  Obey("endless A.prg");
  const std::string bytes = Out(1000);
  EXPECT_GT(bytes.size(), 900U);
  EXPECT_TRUE(bytes.starts_with("<G00\r\nM02\r\nG00\r\nM02\r\n"));
  EXPECT_EQ(bytes.find('>'), std::string::npos);
  Obey("halt");
  EXPECT_EQ(Out(1000), "");
}

TEST_F(OfficeTest, WritesDownWhatComesAndSendsItBack) {
  Office.Receive("<G0");
  Office.Receive("0\r\n><half");
  EXPECT_EQ(Office.Log(), "<G00\r\n><half");
  EXPECT_THAT(Events, ElementsAre("program of 7 bytes received"));
  Obey("return");
  EXPECT_EQ(Out(), "<G00\r\n><half");
  EXPECT_THAT(Obey("state"), HasSubstr("12 bytes sent, 0 wait, 12 received"));
}

TEST_F(OfficeTest, AProgramIsWrittenDownWholeBeforeItIsTold) {
  std::string written, atEvent;
  Office.OnBytes([&](std::string_view bytes) { written += bytes; });
  Office.OnEvent([&](const std::string&) { atEvent = written; });
  Office.Receive("<G00\r\n");
  Office.Receive("M02\r\n>");
  EXPECT_EQ(atEvent, "<G00\r\nM02\r\n>");
}

TEST_F(OfficeTest, StartCharacterHoldAndCodes) {
  Obey("ready");
  Obey("hold");
  Obey("go");
  Obey("codes 2,65,1,0");
  EXPECT_EQ(Out(),
            "*\x13\x11"
            "AA\0"s);
}

TEST_F(OfficeTest, WrongWordsChangeNothingAndAreAnswered) {
  EXPECT_THAT(Obey("send gone.prg"), HasSubstr("gone.prg: not found"));
  EXPECT_THAT(Obey("send"), HasSubstr("one file"));
  EXPECT_THAT(Obey("chunk x"), HasSubstr("chunk takes"));
  EXPECT_THAT(Obey("cts maybe"), HasSubstr("on or off"));
  EXPECT_THAT(Obey("nuls -1"), HasSubstr("number"));
  EXPECT_THAT(Obey("dance"), HasSubstr("stop-after"));
  EXPECT_EQ(Obey(""), "");
  EXPECT_TRUE(CarryOutOfficeCommand("quit", Office, Files).Quit);
  EXPECT_EQ(Out(), "");
}

/// The office behind its line, and what the console's end sees.
struct OfficeLine : OfficeTest {
  OfficePort Port{Loop, Office, Baud};
  std::string Got;
  std::vector<LineEvent> Happened;

  OfficeLine() {
    Port.OnReceived([this] { Got += Port.ReadAll(); });
    Port.OnLineEvent([this](LineEvent event) { Happened.push_back(event); });
    Open(Handshake::None);
  }
  void Open(Handshake handshake, bool discardNulls = true) {
    EXPECT_TRUE(Port.Open({.Number = 2, .Handshaking = handshake, .DiscardNulls = discardNulls}));
  }
  void Do(std::string_view line, int ms = 100) {
    EXPECT_EQ(Obey(line), "");
    Port.Wake();
    Loop.RunFor(ms);
  }
};

TEST_F(OfficeLine, CarriesBothWays) {
  Do("send B.prg");
  EXPECT_EQ(Got, "<G01\r\n>");
  Port.Write("abc");
  EXPECT_EQ(Port.BytesQueued(), 3U);
  Loop.RunFor(10);
  EXPECT_EQ(Port.BytesQueued(), 0U);
  EXPECT_EQ(Office.Log(), "abc");
}

TEST_F(OfficeLine, TheStartCharacterOfAHandshakeNeverReachesTheConsole) {
  Open(Handshake::XonXoff);
  Do("codes 1,17,1,65");
  EXPECT_EQ(Got, "A");
  Open(Handshake::RtsCts);
  Do("codes 1,17");
  EXPECT_EQ(Got, "A\x11");
}

TEST_F(OfficeLine, NullsAreDiscardedOnlyWhereThePortWasOpenedSo) {
  Do("codes 1,65,1,0,1,66");
  Open(Handshake::None, false);
  Do("codes 1,65,1,0,1,66");
  EXPECT_EQ(Got, "ABA\0B"s);
}

TEST_F(OfficeLine, XoffHoldsTheConsoleUntilXon) {
  Open(Handshake::XonXoff);
  Do("hold");
  Port.Write("abc");
  Loop.RunFor(60000);
  EXPECT_EQ(Port.BytesQueued(), 3U);
  Do("go");
  EXPECT_EQ(Office.Log(), "abc");
  EXPECT_THAT(Happened, ElementsAre()) << "no modem line was waited for";
}

TEST_F(OfficeLine, CtsHoldsTheConsoleAndIsTimedOut) {
  Open(Handshake::RtsCts);
  Do("cts off");
  Port.Write("abc");
  Loop.RunFor(29000);
  EXPECT_THAT(Happened, ElementsAre(LineEvent::CtsChanged));
  Loop.RunFor(2000);
  EXPECT_THAT(Happened, ElementsAre(LineEvent::CtsChanged, LineEvent::CtsTimeout));
  Do("cts on");
  EXPECT_EQ(Office.Log(), "abc");
}

TEST_F(OfficeLine, DsrLikewise) {
  Open(Handshake::Both);
  Do("dsr off");
  Port.Write("abc");
  Loop.RunFor(31000);
  EXPECT_THAT(Happened, ElementsAre(LineEvent::DsrChanged, LineEvent::DsrTimeout));
}

TEST_F(OfficeLine, ABreakAndTheCarrierAreTold) {
  Do("break");
  Do("carrier off");
  EXPECT_THAT(Happened, ElementsAre(LineEvent::Break, LineEvent::CarrierChanged));
}

TEST_F(OfficeLine, ADeafOfficeHoldsTheWiresAndLosesWhatComesWithoutThem) {
  Open(Handshake::RtsCts);
  Do("deaf on");
  Port.Write("abc");
  Loop.RunFor(1000);
  EXPECT_EQ(Port.BytesQueued(), 3U);
  Open(Handshake::None);
  Port.Write("def");
  Do("deaf off");
  EXPECT_EQ(Office.Log(), "def") << "the queue of the first opening went with it";
}

TEST_F(OfficeLine, SurvivesThatTheConsoleClosesInMidSend) {
  Do("chunk 1 10", 0);
  Do("send A.prg", 35);
  Port.Close();
  Loop.RunFor(30);
  Got += '|';
  Open(Handshake::None);
  Loop.RunFor(1000);
  EXPECT_THAT(Got, ::testing::MatchesRegex("<G0+\\|.*\r\n>"));
  EXPECT_LT(Got.size(), 13U) << "what came while it was closed is lost";
  Do("send B.prg", 1000);
  EXPECT_TRUE(Got.ends_with("<G01\r\n>"));
}

TEST_F(OfficeLine, SleepsWhileNothingHappens) {
  Port.OnLineEvent({});
  Loop.RunFor(1000);
  const auto before = Loop.EventsHandled();
  Loop.RunFor(100000);
  EXPECT_EQ(Loop.EventsHandled(), before);
}

struct SlowLine : OfficeTest {
  OfficePort Port{Loop, Office, 9600};
};

TEST_F(SlowLine, TheQueueLeavesAtTheRateOfTheLine) {
  Port.Open({.Number = 2});
  Port.Write(std::string(960, 'x'));
  Loop.RunFor(500);
  EXPECT_NEAR(static_cast<double>(Port.BytesQueued()), 480, 10);
  Loop.RunFor(510);
  EXPECT_EQ(Port.BytesQueued(), 0U);
}

}  // namespace
}  // namespace torvane::simulator

// Programs that go out over the second port.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TransferRig.h"
#include "files/SendProgress.h"

namespace torvane::files {

using namespace tests;
namespace {

using namespace std::string_literals;
using core::SendPhase;
using core::StartMode;
using platform::LineEvent;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Sending : public ::testing::Test, public TransferRig {
 protected:
  Sending() { Listen(); }

  /// What a program looks like on the line, started at once.
  std::string Sent(std::string_view text) {
    Loop.After(10, [this] { Comms.Force(); });
    const auto before = Port.Written().size();
    Send({Item("A", text)});
    return Port.Written().substr(before);
  }
  /// True when the program goes out by itself in this start mode, `happens` being all that happens.
  bool StartsBy(StartMode mode, const std::function<void()>& happens, int handshake = 0) {
    System.Comms.CommsStartMode = mode;
    System.Comms.CommsHandshake = static_cast<std::int16_t>(handshake);
    bool started = false;
    Loop.After(10, happens);
    Loop.After(50, [&] {
      started = System.Transfer.SendPhase != SendPhase::WaitingForStart;
      Comms.Abort();
    });
    Send({Item("A", "G00\r\n")});
    Loop.RunFor(100);
    return started;
  }
};

TEST_F(Sending, FrameEndOfLineAndBodyAsControlCmsSays) {
  System.Comms.CommsPreamble = "\0\0%\r"s;
  System.Comms.CommsEndOfLine = "\r\r\n";
  System.Comms.CommsPostamble = "\n\x04";
  EXPECT_EQ(Sent("G00\r\nM02\r\n"), "\0\0%\rG00\r\r\nM02\r\r\n\n\x04"s);
}

TEST_F(Sending, LineFeedsAreDroppedAndTheFilterTouchesTheBodyAlone) {
  System.Comms.CommsPreamble = "%";
  System.Comms.CommsSendFilter = core::ReadCodeList("37,13,10,65");
  EXPECT_EQ(Sent("A%B\n\nC\r\n%"), "%BC\r\n%");
}

TEST_F(Sending, TheHeaderIsNeverSentAndStandsReadyForACounterpartThatAsks) {
  EXPECT_EQ(Sent("G00\r\n"), "G00\r\n%");
  System.Transfer.SendHeader = true;
  EXPECT_EQ(Sent("G00\r\n"),
            "\x18SHOP\r\n\x19"
            "A\r\nG00\r\n%");
}

TEST_F(Sending, AnEmptyProgramIsItsFrame) { EXPECT_EQ(Sent(""), "%"); }

TEST_F(Sending, ThePortIsOpenedWithNullsAndOpenedAgainWithoutThem) {
  std::vector<bool> discards;
  Loop.After(5, [&] { discards.push_back(Port.Setup().DiscardNulls); });
  Loop.After(10, [&] { Comms.Force(); });
  Send({Item("A", "G00\r\n")});
  discards.push_back(Port.Setup().DiscardNulls);
  EXPECT_THAT(discards, ElementsAre(false, true));
  EXPECT_EQ(Port.OpenCalls(), 3) << "the receiver's, then two";
  EXPECT_FALSE(Port.IsOpen());
  EXPECT_TRUE(Port.Setup().Dtr && Port.Setup().Rts);
}

TEST_F(Sending, WhatTheScreenShows) {
  Loop.After(10, [&] { Comms.Force(); });
  Send({Item("PLATE", "G00\r\n")});
  EXPECT_THAT(Screen.Log,
              ElementsAre("text PLATE\n\n5 Characters", "wait", "send 5", "text ", "hide"));
  EXPECT_THAT(Screen.Values, ElementsAre(1, 2, 3, 4, 5)) << "dropped characters count";
  EXPECT_EQ(Screen.LastPercent, 100);
}

TEST_F(Sending, PhasesAsTheyFollow) {
  EXPECT_EQ(System.Transfer.SendPhase, SendPhase::Idle);
  std::vector<SendPhase> phases;
  Port.SetPeer([&](std::string_view) { phases.push_back(System.Transfer.SendPhase); });
  Loop.After(5, [&] { phases.push_back(System.Transfer.SendPhase); });
  Loop.After(10, [&] { Comms.Force(); });
  Send({Item("A", "G")});
  EXPECT_THAT(phases,
              ElementsAre(SendPhase::WaitingForStart, SendPhase::Sending, SendPhase::Postamble));
  EXPECT_EQ(System.Transfer.SendPhase, SendPhase::Postamble) << "until the screen loads again";
  Comms.BeginSending();
  EXPECT_EQ(System.Transfer.SendPhase, SendPhase::Idle);
}

TEST_F(Sending, TheStartCharacterStartsModeOne) {
  EXPECT_FALSE(StartsBy(StartMode::Character, [&] { Port.Deliver("abc"); }));
  EXPECT_TRUE(StartsBy(StartMode::Character, [&] { Port.Deliver("ab*c"); }));
  System.Comms.CommsStartChar.clear();
  EXPECT_FALSE(StartsBy(StartMode::Character, [&] { Port.Deliver("ab*c"); }));
}

TEST_F(Sending, EachModeStartsByItsOwnEvent) {
  const auto data = [&] { Port.Deliver("x"); };
  const auto cts = [&] { Port.Raise(LineEvent::CtsChanged); };
  const auto dsr = [&] { Port.Raise(LineEvent::DsrChanged); };
  const auto carrier = [&] { Port.Raise(LineEvent::CarrierChanged); };
  const auto nothing = [] {};
  EXPECT_TRUE(StartsBy(StartMode::AnyData, data));
  EXPECT_FALSE(StartsBy(StartMode::AnyData, cts));
  EXPECT_TRUE(StartsBy(StartMode::Cts, cts));
  EXPECT_FALSE(StartsBy(StartMode::Cts, dsr));
  EXPECT_FALSE(StartsBy(StartMode::Cts, data));
  EXPECT_TRUE(StartsBy(StartMode::Dsr, dsr));
  EXPECT_FALSE(StartsBy(StartMode::Dsr, cts));
  for (const StartMode mode : {StartMode::Event, StartMode::Force}) {
    EXPECT_TRUE(StartsBy(mode, data));
    EXPECT_TRUE(StartsBy(mode, carrier));
    EXPECT_FALSE(StartsBy(mode, nothing));
  }
  EXPECT_FALSE(StartsBy(StartMode::Never, data));
  EXPECT_FALSE(StartsBy(StartMode::Never, cts));
  EXPECT_TRUE(StartsBy(StartMode::Never, [&] { Comms.Force(); })) << "ForceButton always does";
}

TEST_F(Sending, ForceStartsAtOnceOnlyWithAHardwareHandshake) {
  const auto nothing = [] {};
  EXPECT_FALSE(StartsBy(StartMode::Force, nothing, 1));
  EXPECT_TRUE(StartsBy(StartMode::Force, nothing, 2));
  EXPECT_TRUE(StartsBy(StartMode::Force, nothing, 3));
  EXPECT_FALSE(StartsBy(StartMode::Event, nothing, 2));
}

TEST_F(Sending, AbortInTheWaitingPhaseClosesThePortAndOffersTheNext) {
  std::vector<std::string> offered;
  Loop.After(10, [&] {
    Comms.Abort();
    Loop.After(10, [&] {
      EXPECT_TRUE(Port.IsOpen());
      Comms.Force();
    });
  });
  Send({Item("A", "first"), Item("B", "second")});
  EXPECT_EQ(Port.Written(), "second%");
  EXPECT_THAT(Screen.Log, ElementsAre("text A\n\n5 Characters", "wait", "text ",
                                      "text B\n\n6 Characters", "wait", "send 6", "text ", "hide"));
}

TEST_F(Sending, AbortInTheBodyStopsAtOnceAndTheNextIsOffered) {
  Port.HoldOutput(true);
  Loop.After(10, [&] { Comms.Force(); });
  Loop.After(500, [&] {
    EXPECT_EQ(Port.Written().size(), SendQueueLimit);
    Comms.Abort();
    Loop.After(100, [&] {
      EXPECT_EQ(System.Transfer.SendPhase, SendPhase::WaitingForStart);
      EXPECT_EQ(Port.Written().size(), SendQueueLimit) << "no postamble goes out";
      Port.HoldOutput(false);
      Comms.Force();
    });
  });
  Send({Item("A", std::string(1000, 'A')), Item("B", "B")});
  EXPECT_EQ(Port.Written(), std::string(SendQueueLimit, 'A') + "B%");
}

TEST_F(Sending, TheQueueIsNeverLongerThanSixtyFour) {
  Port.HoldOutput(true);
  std::size_t most = 0;
  const auto drain = Loop.MakeTimer([&] {
    most = std::max(most, Port.BytesQueued());
    Port.Drain(7);
  });
  drain->Start(5);
  const std::string text(5000, 'X');
  EXPECT_EQ(Sent(text), text + "%");
  EXPECT_EQ(most, SendQueueLimit);
}

TEST_F(Sending, ThePortClosesOnlyWhenTheOutputHasLeft) {
  Port.HoldOutput(true);
  Loop.After(10, [&] { Comms.Force(); });
  Loop.After(5000, [&] {
    EXPECT_TRUE(Port.IsOpen());
    EXPECT_EQ(Port.Written(), "G00%");
    Port.Drain(4);
  });
  Send({Item("A", "G00")});
  EXPECT_FALSE(Port.IsOpen());
  EXPECT_GE(Loop.NowMs(), 5000);
}

TEST_F(Sending, ABreakOrATimeOutEndsThePostambleOnly) {
  for (const LineEvent event : {LineEvent::Break, LineEvent::CtsTimeout, LineEvent::DsrTimeout}) {
    Port.HoldOutput(true);
    const auto start = Loop.NowMs();
    Loop.After(10, [&] { Comms.Force(); });
    Loop.After(100, [&] { Port.Raise(event); });
    Loop.After(200, [&] { Port.HoldOutput(false), Port.HoldOutput(true); });
    Loop.After(300, [&] {
      EXPECT_EQ(System.Transfer.SendPhase, SendPhase::Postamble) << "it did nothing in the body";
      Port.Raise(LineEvent::CtsChanged);
    });
    Loop.After(400, [&] {
      EXPECT_TRUE(Port.IsOpen());
      Port.Raise(event);
    });
    Send({Item("A", std::string(70, 'A'))});
    EXPECT_EQ(Loop.NowMs() - start, 400);
    Port.HoldOutput(false);
  }
}

TEST_F(Sending, WhatComesWhileSendingIsDropped) {
  Port.HoldOutput(true);
  Loop.After(10, [&] { Comms.Force(); });
  Loop.After(50, [&] { Port.Deliver("G00 from the office\r\n%"); });
  Loop.After(60, [&] {
    EXPECT_EQ(Port.BytesWaiting(), 0U);
    Port.HoldOutput(false);
  });
  Send({Item("A", std::string(100, 'A'))});
  Comms.EndSending();
  Loop.RunFor(100);
  EXPECT_EQ(Programs().size(), 1U);
  EXPECT_TRUE(Port.IsOpen()) << "the receiver listens again";
}

TEST_F(Sending, ClosingTheScreenAbortsTheRestOfTheList) {
  Loop.After(10, [&] { Comms.EndSending(); });
  Send({Item("A", "A"), Item("B", "B")});
  EXPECT_EQ(Port.Written(), "");
  EXPECT_TRUE(Port.IsOpen()) << "for receiving";
  Come("G00\r\n%");
  EXPECT_EQ(Program("SHOP/New Program 1"), "G00\r\n");
}

TEST_F(Sending, ShutdownWhileSendingAbortsAndCloses) {
  Port.HoldOutput(true);
  Loop.After(10, [&] { Comms.Force(); });
  Loop.After(100, [&] { Comms.Close(); });
  Send({Item("A", std::string(100, 'A')), Item("B", "B")});
  EXPECT_EQ(Loop.NowMs(), 100);
  EXPECT_FALSE(Port.IsOpen());
  EXPECT_EQ(Port.OpenCalls(), 3) << "nothing is opened after the end";
}

TEST_F(Sending, APortThatDoesNotOpenIsNotReportedButNoted) {
  Port.FailOpens(-1);
  EXPECT_EQ(Sent("G00"), "");
  EXPECT_THAT(Errors(), HasSubstr("port 2 cannot be opened for sending"));
  EXPECT_EQ(Screen.Log.back(), "hide");
}

TEST_F(Sending, AProgramThatHasGoneIsToldAndTheNextGoesOut) {
  const SendItem gone = Item("GONE", "G00");
  std::filesystem::remove(Temp.Path() + "/Programs/SHOP/GONE.prg");
  System.Comms.CommsStartMode = StartMode::Force;
  System.Comms.CommsHandshake = 2;
  Send({gone, Item("B", "B")});
  EXPECT_EQ(Port.Written(), "B%");
  EXPECT_THAT(Screen.Log, ::testing::Contains("cannot send GONE"));
  EXPECT_THAT(Errors(), HasSubstr("GONE.prg: not found"));
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), ".\\Programs\\SHOP\\B.prg\r\n");
}

TEST_F(Sending, ALineWithoutLimitStillLetsTheConsoleLive) {
  int ticks = 0;
  const auto timer = Loop.MakeTimer([&] { ++ticks; });
  System.Comms.CommsStartMode = StartMode::Force;
  System.Comms.CommsHandshake = 2;
  const SendItem item = Item("A", std::string(100000, '\n'));
  timer->Start(50);
  const auto before = Loop.EventsHandled();
  Send({item});
  EXPECT_GE(Loop.EventsHandled() - before, 1000U) << "even where nothing goes out";
}

TEST(SendProgressTest, TheBarCountsCharactersOrThousands) {
  EXPECT_EQ(SendProgress(30000).Maximum(), 30000);
  EXPECT_EQ(SendProgress(30001).Maximum(), 30);
  EXPECT_EQ(SendProgress(0).Maximum(), 0);
  SendProgress large(30999);
  int moves = 0;
  int value = 0;
  for (int count = 1; count <= 30999; ++count) {
    if (const auto moved = large.Count(count == 30999)) {
      value = *moved;
      ++moves;
    }
  }
  EXPECT_EQ(value, 30) << "never above its maximum";
  EXPECT_EQ(moves, 30) << "the last character would make 31";
}

TEST(SendProgressTest, AFileThatHasGrownSinceStaysWithinTheBar) {
  SendProgress progress(2);
  EXPECT_EQ(progress.Count(false), 1);
  EXPECT_EQ(progress.Count(false), 2);
  EXPECT_EQ(progress.Count(true), std::nullopt);
  EXPECT_EQ(progress.Percent(), 100);
}

TEST(SendProgressTest, SecondsLeftFollowThePaceSoFar) {
  SendProgress progress(1000, 5000);
  EXPECT_EQ(progress.SecondsLeft(9000), std::nullopt) << "nothing has gone";
  for (int count = 0; count < 250; ++count) (void)progress.Count(false);
  EXPECT_EQ(progress.Percent(), 25);
  EXPECT_EQ(progress.SecondsLeft(5100), std::nullopt) << "too soon to tell";
  EXPECT_EQ(progress.SecondsLeft(7000), 6);
  for (int count = 0; count < 750; ++count) (void)progress.Count(false);
  EXPECT_EQ(progress.SecondsLeft(13000), 0);
}

}  // namespace
}  // namespace torvane::files

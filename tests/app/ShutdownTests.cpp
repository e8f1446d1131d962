// The two ways out.
#include "AppFixture.h"

namespace torvane::app {

using namespace tests;
namespace {

struct ShutdownTest : AppFixture {
  /// A console that runs, with the link on and batch counters at the controller.
  void Run() {
    Values = {{"VR(82)", "10"}, {"VR(83)", "20"}, {"VR(84)", "30"}, {"VR(85)", "12"}};
    Temp.Put("Trio.cfg", "50\r\n50\r\n100\r\n");
    PutProgram(1, "GASKET", 2);
    Start();
    Trio.StartPolling(true);
    Log.clear();
  }
};

TEST_F(ShutdownTest, ReadsAndSavesTheBatchThenClosesAndEndsTheSession) {
  Run();
  End.ShutdownSystem(true);
  EXPECT_EQ(WithoutNotes(),
            (Events{"send ? VR(82)", "send ? VR(83)", "send ? VR(84)", "send ? VR(85)",
                    "show batch", "replace .\\Actvprg1.btc", "delete .\\Receive.tmp",
                    "unload FrontEnd", "end session", "end process"}));
  EXPECT_EQ(Temp.Get("Actvprg1.btc"), "10\r\n20\r\n30\r\n12\r\n18\r\n******\r\n");
  EXPECT_TRUE(System.ShuttingDown);
  EXPECT_FALSE(System.Link.PollingWanted);
  EXPECT_FALSE(Port.IsOpen());
}

TEST_F(ShutdownTest, WithoutClosingWindowsOnlyTheProgramEnds) {
  Run();
  End.ShutdownSystem(false);
  EXPECT_FALSE(Happened("end session"));
  EXPECT_EQ(Log.back(), "end process");
}

TEST_F(ShutdownTest, ThePollIsStoppedBeforeThePortIsClosed) {
  int ticks = 0;
  Run();
  Trio.SetPollTick([&] { ++ticks; });
  End.ShutdownSystem(true);
  Loop.RunFor(10000);
  EXPECT_EQ(ticks, 0);
}

TEST_F(ShutdownTest, TheServiceProgramIsReadFirstAndStartedLast) {
  Temp.Put("Tools/service", "");
  Temp.Put("Service.cfg", "Tools\\service\r\n");
  Run();
  End.ShutdownToService();
  const Events events = WithoutNotes();
  EXPECT_EQ(events.front(), "read .\\Service.cfg");
  EXPECT_EQ(events[events.size() - 2], "start Tools\\service");
  EXPECT_EQ(events.back(), "end process");
  EXPECT_FALSE(Happened("end session"));
}

TEST_F(ShutdownTest, WithoutAServiceProgramItSimplyEnds) {
  Run();
  for (const char* text : {"", "******\r\n", "Tools\\gone\r\n"}) {
    Log.clear();
    Temp.Put("Service.cfg", text);
    Shutdown end{{System, Files, Trio, Poll, Comms, Screens, Screens}};
    end.ShutdownToService();
    EXPECT_EQ(Log.back(), "end process");
    for (const auto& event : Log) EXPECT_FALSE(event.starts_with("start ")) << event;
  }
}

TEST_F(ShutdownTest, AMainScreenThatIsNotVisibleIsNotUnloaded) {
  Run();
  Screens.FrontEndUp = false;
  End.ShutdownSystem(true);
  EXPECT_FALSE(Happened("unload FrontEnd"));
}

TEST_F(ShutdownTest, OfflineTheCountersAreSavedAsTheyStand) {
  Temp.Put("Control.cnc", "FALSE\r\n");
  Run();
  System.Programs[1].BatchCounters = {5, 4, 3, 2, 1};
  End.ShutdownSystem(true);
  EXPECT_EQ(Temp.Get("Actvprg1.btc"), "5\r\n4\r\n3\r\n2\r\n1\r\n******\r\n");
  EXPECT_EQ(Sent(), Events());
}

TEST_F(ShutdownTest, AFailureOfTheLinkLeadsToTheServiceProgramNotToTheSessionsEnd) {
  Run();
  Silent = true;
  Screens.WarningAnswer = true;
  Trio.Download("VR(48)=0");
  EXPECT_FALSE(Happened("end session"));
  EXPECT_EQ(Log.back(), "end process");
}

TEST_F(ShutdownTest, FailuresOfTheLastExchangesDoNotEndItASecondTime) {
  Run();
  Silent = true;
  Screens.WarningAnswer = true;
  End.ShutdownSystem(true);
  EXPECT_EQ(std::count(Log.begin(), Log.end(), "end process"), 1);
  EXPECT_EQ(std::count(Log.begin(), Log.end(), "end session"), 1);
  EXPECT_EQ(std::count(Log.begin(), Log.end(), "replace .\\Actvprg1.btc"), 1);
}

TEST_F(ShutdownTest, TheSecondPortIsClosedBeforeTheControllersAndItsNotesStay) {
  Run();
  Temp.Put("Receive.tmp", "half a program");
  Temp.Put("Messages/Receive.hlp", "A : SHOP\r\n");
  EXPECT_TRUE(SecondPort.IsOpen());
  End.ShutdownSystem(true);
  EXPECT_FALSE(SecondPort.IsOpen());
  EXPECT_FALSE(Temp.Has("Receive.tmp"));
  EXPECT_EQ(Temp.Get("Messages/Receive.hlp"), "A : SHOP\r\n");
}

TEST_F(ShutdownTest, ASecondCallDoesNothing) {
  Run();
  End.ShutdownSystem(true);
  Log.clear();
  End.ShutdownSystem(true);
  End.ShutdownToService();
  EXPECT_EQ(Log, Events());
}

TEST_F(ShutdownTest, EndingAtOnceSavesTheCountersAsTheyWereLastRead) {
  Run();
  System.Programs[1].BatchCounters = {5, 4, 3, 2, 1};
  End.EndAtOnce();
  EXPECT_EQ(Temp.Get("Actvprg1.btc"), "5\r\n4\r\n3\r\n2\r\n1\r\n******\r\n");
  EXPECT_EQ(Sent(), Events()) << "nothing is asked any more";
  EXPECT_TRUE(System.ShuttingDown);
  EXPECT_FALSE(Port.IsOpen());
  EXPECT_EQ(Log.back(), "end process");
  Log.clear();
  End.EndAtOnce();
  EXPECT_EQ(Log, Events());
}

TEST_F(ShutdownTest, AnEndThatHangsOnADeadLineCanBeOvertaken) {
  Run();
  System.Link.ReplyTimeoutMs = 0;  // a dead line would hold it up for ever
  System.Programs[1].BatchCounters = {5, 4, 3, 2, 1};
  Silent = true;
  Loop.After(500, [this] { End.EndAtOnce(); });
  Loop.After(1000, [this] { Port.Deliver("? VR(82)\r\n7\r\n>>"); });
  Loop.After(1500, [this] { Silent = false; });
  Loop.Post([this] { End.ShutdownSystem(true); });
  Loop.RunFor(3000);
  EXPECT_EQ(Temp.Get("Actvprg1.btc"), "5\r\n4\r\n3\r\n2\r\n1\r\n******\r\n");
  EXPECT_EQ(std::count(Log.begin(), Log.end(), "end process"), 1);
  EXPECT_FALSE(Happened("end session"));
}

TEST_F(ShutdownTest, AStartThatIsGivenUpLeavesTheCountersOfTheLastSession) {
  Run();  // for a slot with counters on the disk
  const std::string before = Temp.Get("Actvprg1.btc");
  Screens.FrontEndUp = false;
  System.Programs[1].BatchCounters = {};
  Log.clear();
  End.ShutdownToService();
  EXPECT_EQ(Temp.Get("Actvprg1.btc"), before);
  EXPECT_EQ(Sent(), Events());
  EXPECT_EQ(Log.back(), "end process");
}

}  // namespace
}  // namespace torvane::app

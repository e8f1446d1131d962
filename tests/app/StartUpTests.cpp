// The order of the start, with a controller, without one, and with a broken line.
#include "AppFixture.h"

namespace torvane::app {

using namespace tests;
namespace {

using StartUpTest = AppFixture;

/// Every file that may stand in an installation, and two programs, the second in force.
struct FullStartUp : AppFixture {
  FullStartUp() {
    Temp.Put("Control.cfg", ".\\\r\n.\\Programs\\\r\nSHOP\r\n2\r\n******\r\n");
    Temp.Put("Data/Profiler.cfg", "N\r\nN\r\n");
    Temp.Put("Data/Laser.dat", "MILD\r\n******\r\n");
    Temp.Put("Control.cnc", "TRUE\r\nFALSE\r\n");
    Temp.Put("Trio.cfg", "50\r\n50\r\n10000\r\n0\r\n0\r\n0\r\n0\r\n3\r\n2\r\n");
    Temp.Put("Plot.cfg", "2\r\nY\r\nD\r\n");
    for (const char* directory : {"Service", "Trio", "Settings", "Messages/Help", "RevSubs",
                                  "Tools", "Subs/One", "Subs/Two"}) {
      Temp.MakeDirectory(directory);
    }
    PutProgram(1, "GASKET", 2, 11.0F);
    PutProgram(2, "BRACKET", 9, 22.25F);
    Temp.Put("Actvprg2.lsr", "T\r\n1,2,3,4,5,6,7,8,9,1\r\n");
    Values["VR(59)"] = "999.99949";
    Values["VR(86)"] = "12.34567";
    Values["VR(87)"] = "-5.5";
  }
};

TEST_F(FullStartUp, RunsEveryStageInItsOrder) {
  // On a first start Colour.cfg is written; from then on it is read.
  core::LoadColours(Disk, System.Directories, System.Colours);
  EXPECT_TRUE(Start());
  const Events expected = {
      "read Colour.cfg",
      "show SplashForm",
      "read Control.cfg",
      "replace .\\Control.cfg",
      "read .\\Data\\Machine.dat",
      "read .\\Data\\Profiler.cfg",
      "read .\\Data\\Laser.dat",
      "read .\\Data\\Machine.stn",
      "read .\\Messages\\IO.msg",
      "read .\\Messages\\Logic.msg",
      "read .\\Control.cnc",
      "read .\\Trio.cfg",
      "read .\\Trio.cms",
      "send ",
      "lock",
      "read .\\Data\\Machine.prm",
      "send VR(59)=1000",
      "unlock",
      "send ? VR(59)",
      "send ? VR(86)",
      "send ? VR(87)",
      "read .\\Plot.cfg",
      "busy",
      // Slot 1: its two table lines go out, though it is not the one in force.
      "read .\\Actvprg1.cfg",
      "records .\\Actvprg1.drw",
      "records .\\Actvprg1.krw",
      "read .\\Actvprg1.tbl",
      "read .\\Actvprg1.btc",
      "plot 1",
      "records .\\Actvprg1.tbl",
      "send TABLE(1,1)",
      "send TABLE(1,2)",
      "caption GASKET   F10",
      // Slot 2: what is left below the fill of three, as a continuation of the same count.
      "read .\\Actvprg2.cfg",
      "read .\\Actvprg2.lsr",
      "records .\\Actvprg2.drw",
      "records .\\Actvprg2.krw",
      "read .\\Actvprg2.tbl",
      "read .\\Actvprg2.btc",
      "plot 2",
      "records .\\Actvprg2.tbl",
      "send TABLE(2,3)",
      "caption BRACKET   F11",
      "send VR(91)=2",
      "send VR(90)=0",
      "send VR(87)=22.25",
      "lock",
      "send M848=1.5",
      "send M849=2.5",
      "send M850=12.5",
      "unlock",
      "lock",
      "send VR(82)=1",
      "send VR(83)=2",
      "send VR(84)=3",
      "send VR(85)=4",
      "unlock",
      "press program 2",
      "ready",
      "replace .\\Control.cfg",
      "send VR(91)=2",
      "read .\\Control.cms",
      "send VR(18)=VR(18) OR 1",
      "show FrontEnd",
  };
  EXPECT_EQ(WithoutNotes(), expected);
}

TEST_F(FullStartUp, EveryFileIsNotedJustBeforeItIsOpened) {
  Start();
  int opened = 0;
  for (std::size_t i = 0; i < Log.size(); ++i) {
    for (const std::string_view kind : {"read ", "records "}) {
      if (!Log[i].starts_with(kind)) continue;
      ++opened;
      ASSERT_GT(i, 0u);
      EXPECT_EQ(Log[i - 1], "note " + Log[i].substr(kind.size()));
    }
  }
  EXPECT_GE(opened, 20);
}

TEST_F(FullStartUp, ReadsTheScaleOnceForBothAxesAndTheLoadPositionUnrounded) {
  EXPECT_TRUE(Start());
  EXPECT_EQ(System.State.XScale, 999.999F) << "three decimals";
  EXPECT_EQ(System.State.YScale, 999.999F);
  EXPECT_EQ(System.State.ZScale, 1.0F);
  EXPECT_EQ(System.Machine.LoadPositionX, 12.34567F);
  EXPECT_EQ(System.Machine.LoadPositionY, -5.5F) << "in place of Machine.dat's 77";
  EXPECT_EQ(System.Link.JogMaxSpeed, 20000);
}

TEST_F(FullStartUp, StartsWithItsFlagsAsTheyBelong) {
  System.ShuttingDown = System.ImperialUnits = System.SplashDone = true;
  System.Link.PollingWanted = true;
  System.Link.ReportCommsErrors = false;
  System.Console.FormsLocked = true;
  System.Console.CurrentForm = "X";
  System.State.BeamOn = System.State.BeamWasOn = true;
  EXPECT_TRUE(Start());
  EXPECT_FALSE(System.ShuttingDown);
  EXPECT_FALSE(System.ImperialUnits);
  EXPECT_FALSE(System.Link.PollingWanted) << "only the main screen's activation starts the poll";
  EXPECT_TRUE(System.Link.ReportCommsErrors);
  EXPECT_FALSE(System.Console.FormsLocked);
  EXPECT_EQ(System.Console.CurrentForm, "");
  EXPECT_FALSE(System.State.BeamOn || System.State.BeamWasOn);
  EXPECT_TRUE(System.SplashDone);
}

TEST_F(FullStartUp, TheSlotAndTheDirectoryOfTheProgramInForceAreWrittenBack) {
  Temp.MakeDirectory("Programs/AAA");
  Temp.Put("Control.cfg", ".\r\n.\\Programs\r\nAAA\r\n2\r\n******\r\n");
  EXPECT_TRUE(Start());
  EXPECT_EQ(Temp.Get("Control.cfg"), ".\\\r\n.\\Programs\\\r\nSHOP\r\n2\r\n******\r\n");
}

TEST_F(StartUpTest, TheFirstStartMakesWhatIsMissing) {
  EXPECT_TRUE(Start());
  EXPECT_TRUE(Temp.Has("Service/LastFile.txt"));
  EXPECT_TRUE(Temp.Has("Colour.cfg"));
  EXPECT_TRUE(Temp.Has("Subs/Two"));
  EXPECT_EQ(WithoutNotes().front(), "make Service") << "before anything is noted";
  EXPECT_EQ(Screens.Captions[1], "PROGRAM 1   F10");
  EXPECT_EQ(Screens.Captions[2], "PROGRAM 2   F11");
}

TEST_F(StartUpTest, AQuickStartStillShowsTheSplashForFourSeconds) {
  EXPECT_TRUE(Start());
  EXPECT_EQ(Loop.NowMs(), 4000);
}

TEST_F(StartUpTest, AControllerThatAnswersAfterThreeSecondsChangesNothingOfThat) {
  bool first = true;
  Port.SetPeer([&](std::string_view bytes) {
    const std::int64_t delay = std::exchange(first, false) ? 3000 : 0;
    for (const char byte : bytes) Line += byte;
    if (!Line.ends_with('\r')) return;
    const std::string line = std::exchange(Line, {});
    Loop.After(delay, [this, line] { Port.Deliver(line + "\n0\r\n>>"); });
  });
  EXPECT_TRUE(Start());
  EXPECT_EQ(Loop.NowMs(), 4000);
  EXPECT_FALSE(Happened("box Torvane 32 | Initialisation Failure !"));
}

TEST_F(StartUpTest, ASlowStartShowsTheMainScreenAsSoonAsItIsThrough) {
  ReplyMs = 400;
  EXPECT_TRUE(Start());
  EXPECT_EQ(Loop.NowMs(), static_cast<std::int64_t>(Sent().size()) * 400);
  EXPECT_GT(Loop.NowMs(), 4000);
}

TEST_F(StartUpTest, TheControllerIsToldLastAndOnlyAfterTheSplash) {
  Screens.OnSplash = [this] { Loop.After(3999, [this] { Log.push_back("just before"); }); };
  EXPECT_TRUE(Start());
  const auto told = std::find(Log.begin(), Log.end(), "send VR(18)=VR(18) OR 1");
  EXPECT_GT(told, std::find(Log.begin(), Log.end(), "just before"));
  EXPECT_EQ(Sent().back(), "VR(18)=VR(18) OR 1");
}

TEST_F(StartUpTest, WithTheLinkSwitchedOffTheMainScreenComesUpWithoutAWord) {
  Temp.Put("Control.cnc", "FALSE\r\n");
  EXPECT_TRUE(Start());
  EXPECT_EQ(Port.OpenCalls(), 0);
  EXPECT_EQ(Sent(), Events());
  EXPECT_FALSE(Happened("box Torvane 32 | Initialisation Failure !"));
  EXPECT_EQ(System.State.XScale, 1.0F);
  EXPECT_EQ(System.State.YScale, 1.0F);
  EXPECT_EQ(System.Machine.LoadPositionX, 0.0F);
  EXPECT_EQ(System.Machine.LoadPositionY, 0.0F) << "Machine.dat's 77 does not stay";
  EXPECT_EQ(Log.back(), "show FrontEnd");
}

TEST_F(StartUpTest, APortNumberBelowOneIsTheSame) {
  Temp.Put("Trio.cms", "Controller\r\n0\r\n9600\r\nN\r\n8\r\n1\r\nNONE\r\n");
  EXPECT_TRUE(Start());
  EXPECT_EQ(Port.OpenCalls(), 0);
  EXPECT_FALSE(Happened("box Torvane 32 | Initialisation Failure !"));
}

TEST_F(StartUpTest, APortThatDoesNotOpenIsToldOnceAndTheProgramGoesOnOffline) {
  Port.FailOpens(-1);
  EXPECT_TRUE(Start());
  EXPECT_EQ(Port.OpenCalls(), 3);
  EXPECT_EQ(std::count(Log.begin(), Log.end(), "box Torvane 32 | Initialisation Failure !"), 1);
  EXPECT_FALSE(System.Link.TrioLinkEnabled);
  EXPECT_EQ(Sent(), Events());
  EXPECT_EQ(System.State.XScale, 1.0F);
  EXPECT_EQ(Log.back(), "show FrontEnd");
  EXPECT_EQ(Loop.NowMs(), 4000);
}

TEST_F(StartUpTest, AControllerWithoutAPromptIsTheSameAfterItsTime) {
  Silent = true;
  EXPECT_TRUE(Start());
  EXPECT_TRUE(Happened("box Torvane 32 | Initialisation Failure !"));
  EXPECT_EQ(Sent(), Events{""});
  EXPECT_EQ(Loop.NowMs(), 10000);
  EXPECT_EQ(Log.back(), "show FrontEnd");
}

TEST_F(StartUpTest, OfTwoParameterFilesOnlyTheFirstByNameIsSent) {
  Temp.Put("Data/B.prm", "VR(1)=2\r\n");
  Temp.Put("Data/a.PRM", "VR(1)=1\r\n");
  EXPECT_TRUE(Start());
  EXPECT_TRUE(Happened("send VR(1)=1"));
  EXPECT_FALSE(Happened("send VR(1)=2"));
  EXPECT_FALSE(Happened("send VR(59)=1000"));
}

TEST_F(StartUpTest, WithTheLinkOffNoParameterFileIsRead) {
  Temp.Put("Control.cnc", "FALSE\r\n");
  EXPECT_TRUE(Start());
  EXPECT_FALSE(Happened("read .\\Data\\Machine.prm"));
}

TEST_F(StartUpTest, WithoutAParameterFileTheStartGoesOn) {
  std::filesystem::remove(Temp.Path() + "/Data/Machine.prm");
  EXPECT_TRUE(Start());
  EXPECT_EQ(Sent()[1], "? VR(59)");
}

TEST_F(StartUpTest, ADriveInControlCfgIsNotKept) {
  Temp.Put("Control.cfg", ".\r\n.\\Programs\r\nA:\r\n7\r\n******\r\n");
  EXPECT_TRUE(Start());
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "SHOP");
  EXPECT_EQ(Temp.Get("Control.cfg"), ".\\\r\n.\\Programs\\\r\nSHOP\r\n1\r\n******\r\n");
}

TEST_F(StartUpTest, EachMissingRequiredFileEndsTheStartAndIsNamedTwice) {
  const std::vector<std::pair<std::string, std::string>> required = {
      {"Control.cfg", "Control.cfg"},
      {"Data/Machine.dat", ".\\Data\\Machine.dat"},
      {"Data/Machine.stn", ".\\Data\\Machine.stn"},
      {"Messages/IO.msg", ".\\Messages\\IO.msg"},
      {"Messages/Logic.msg", ".\\Messages\\Logic.msg"},
      {"Trio.cms", ".\\Trio.cms"},
      {"Control.cms", ".\\Control.cms"}};
  for (const auto& [native, path] : required) {
    PutInstallation();
    std::filesystem::remove(Temp.Path() + "/" + native);
    EXPECT_EQ(tests::FaultOf([&] { Start(); }), path + ": not found");
    EXPECT_EQ(Temp.Get("Service/LastFile.txt"), path + "\r\n");
  }
}

TEST_F(FullStartUp, ASlotThatLacksAFileComesUpEmptyAndTheOtherIsUntouched) {
  std::filesystem::remove(Temp.Path() + "/Actvprg2.krw");
  EXPECT_TRUE(Start());
  EXPECT_FALSE(System.Programs[2].Selected);
  EXPECT_EQ(Disk.ListFiles("Actvprg2.*"), Events());
  EXPECT_TRUE(System.Programs[1].Selected);
  EXPECT_EQ(Disk.ListFiles("Actvprg1.*").size(), 7u);
  EXPECT_EQ(Screens.Captions[2], "PROGRAM 2   F11");
}

TEST_F(FullStartUp, WithOnlySlotTwoItsLinesGoOutFromTheFirst) {
  std::filesystem::remove(Temp.Path() + "/Actvprg1.cfg");
  EXPECT_TRUE(Start());
  EXPECT_TRUE(Happened("send TABLE(2,1)"));
  EXPECT_TRUE(Happened("send TABLE(2,3)"));
  EXPECT_EQ(System.TableSent, 3);
}

TEST_F(FullStartUp, ATextInPlaceOfACountClearsBothSlotsWithoutAMessage) {
  Temp.Put("Actvprg2.cfg", "BRACKET\r\nSHOP\r\nX\r\nmany\r\n9\r\n0\r\n******\r\n");
  EXPECT_TRUE(Start());
  EXPECT_FALSE(System.Programs[1].Selected || System.Programs[2].Selected);
  EXPECT_EQ(Disk.ListFiles("Actvprg*"), Events());
  EXPECT_EQ(System.ActiveSlot, 1);
  EXPECT_EQ(Screens.PressedSlot, 1);
  for (const auto& event : Log) EXPECT_FALSE(event.starts_with("warning")) << event;
  EXPECT_TRUE(Happened("send VR(87)=-5.50")) << "the machine's load position";
}

TEST_F(StartUpTest, ALineThatGoesDeadIsReportedAndTheStartGoesOn) {
  SilentFrom = "? VR(59)";
  Temp.Put("Trio.cfg", "50\r\n50\r\n100\r\n");
  EXPECT_TRUE(Start());
  EXPECT_EQ(System.State.XScale, 1.0F);
  EXPECT_TRUE(Happened("warning An error occurred while talking to TRIO !"));
  EXPECT_EQ(Log.back(), "show FrontEnd");
}

TEST_F(StartUpTest, AShutdownFromTheFailureDialogEndsTheStartWithoutTheMainScreen) {
  SilentFrom = "? VR(59)";
  Temp.Put("Trio.cfg", "50\r\n50\r\n100\r\n");
  Screens.WarningAnswer = true;
  EXPECT_FALSE(Start());
  EXPECT_TRUE(System.ShuttingDown);
  EXPECT_FALSE(Happened("show FrontEnd"));
  EXPECT_EQ(std::count(Log.begin(), Log.end(), "end process"), 1);
  EXPECT_FALSE(Happened("send VR(18)=VR(18) OR 1"));
}

TEST_F(StartUpTest, NothingIsPolledBeforeTheMainScreenAsksForIt) {
  int ticks = 0;
  Trio.SetPollTick([&] { ++ticks; });
  EXPECT_TRUE(Start());
  Loop.RunFor(1000);
  EXPECT_EQ(ticks, 0) << "nothing is polled before the main screen has come up";
  Trio.StartPolling(true);
  EXPECT_TRUE(System.Link.PollingWanted);
  Loop.RunFor(1000);
  EXPECT_EQ(ticks, 20) << "every 50 ms";
}

}  // namespace
}  // namespace torvane::app

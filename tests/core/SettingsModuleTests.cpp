// The configuration files with the disk: which are read, in what order, and what is required.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/ConfigText.h"
#include "core/General.h"
#include "core/LastFile.h"
#include "core/SettingsModule.h"
#include "platform/DiskFileSystem.h"
#include "support/Faults.h"
#include "support/RecordingFiles.h"
#include "support/TempDirectory.h"

namespace torvane::core {
namespace {

using Events = std::vector<std::string>;

struct Settings : ::testing::Test {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Disk{Temp.Path()};
  Events Log;
  tests::RecordingFiles Files{Disk, Log};
  System Shared;

  Settings() {
    Temp.MakeDirectory("Service");
    Shared.Directories.DataDirectory = "Data\\";
    Shared.Directories.MessageDirectory = "Messages\\";
  }
  void PutMachine() const {
    std::string text = "NAME\r\n";
    for (int line = 2; line <= 18; ++line) text += "1\r\n";
    Temp.Put("Data/Machine.dat", text);
  }
  std::string Fault(const std::function<void()>& call) { return tests::FaultOf(call); }
};

TEST_F(Settings, LastFileHoldsOneLineTheLatest) {
  NoteLastFile(Disk, Shared.Directories, "C:\\A\\LONG\\NAME.cfg");
  NoteLastFile(Disk, Shared.Directories, "B");
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), "B\r\n");
}

TEST_F(Settings, ANoteThatCannotBeWrittenStopsNothing) {
  Shared.Directories.ServiceDirectory = "Nowhere\\";
  NoteLastFile(Disk, Shared.Directories, "B");
  EXPECT_FALSE(Temp.Has("Nowhere"));
}

TEST_F(Settings, TheMachineFilesAreReadInTheirOrder) {
  PutMachine();
  Temp.Put("Data/Profiler.cfg", "Y\r\n");
  Temp.Put("Data/Laser.dat", "A\r\n******\r\n");
  Temp.Put("Data/Machine.stn", "1,LASER,1,0,0,0,0\r\n******\r\n");
  Shared.Machine.CornerLimitFactor = 3;
  LoadMachineData(Files, Shared);
  EXPECT_EQ(Log,
            (Events{"note Data\\Machine.dat", "read Data\\Machine.dat", "note Data\\Profiler.cfg",
                    "read Data\\Profiler.cfg", "note Data\\Laser.dat", "read Data\\Laser.dat",
                    "note Data\\Machine.stn", "read Data\\Machine.stn"}));
  EXPECT_EQ(Shared.Machine.MachineName, "NAME");
  EXPECT_TRUE(Shared.Machine.SwapArcWords);
  EXPECT_EQ(Shared.Machine.CornerLimitFactor, 10.0F) << "the record is cleared first";
  EXPECT_EQ(Shared.ActiveStation.Name, "LASER");
  EXPECT_EQ(Shared.LaserNames, (LaserNameList{"LASER", "A"}));
}

TEST_F(Settings, OnlyTheMachineAndTheStationsAreRequired) {
  EXPECT_EQ(Fault([&] { LoadMachineData(Files, Shared); }), "Data\\Machine.dat: not found");
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), "Data\\Machine.dat\r\n");
  PutMachine();
  EXPECT_EQ(Fault([&] { LoadMachineData(Files, Shared); }), "Data\\Machine.stn: not found");
  Temp.Put("Data/Machine.stn", "1,LASER,1,0,0,0,0\r\n******\r\n");
  LoadMachineData(Files, Shared);
  EXPECT_EQ(Shared.LaserNames, (LaserNameList{"LASER", "LASER"}));
}

TEST_F(Settings, TheImperialFlagConvertsTheLengths) {
  PutMachine();
  Temp.Put("Data/Machine.stn", "******\r\n");
  LoadMachineData(Files, Shared);
  EXPECT_EQ(Shared.Machine.TravelMaxX, 1.0F);
  Shared.ImperialUnits = true;
  LoadMachineData(Files, Shared);
  EXPECT_EQ(Shared.Machine.TravelMaxX, 25.4F);
}

TEST_F(Settings, MessagesAreIoThenLogicAndBothRequired) {
  EXPECT_EQ(Fault([&] { LoadMessageTables(Files, Shared.Directories, Shared.Messages); }),
            "Messages\\IO.msg: not found");
  Temp.Put("Messages/IO.msg", "1,One\r\n******\r\n");
  EXPECT_EQ(Fault([&] { LoadMessageTables(Files, Shared.Directories, Shared.Messages); }),
            "Messages\\Logic.msg: not found");
  Temp.Put("Messages/Logic.msg", "0,Zero,\r\n******\r\n");
  LoadMessageTables(Files, Shared.Directories, Shared.Messages);
  EXPECT_EQ(Shared.Messages.IoMessages[1], "One");
  EXPECT_EQ(Shared.Messages.LogicMessages[0], "Zero");
}

TEST_F(Settings, TheLinkRunsWithoutItsOptionFiles) {
  bool link = false;
  bool log = true;
  Shared.Link.PollPeriodMs = 7;
  LoadLinkOptions(Files, Shared.Directories, link, log, Shared.Link);
  EXPECT_TRUE(link);
  EXPECT_FALSE(log);
  EXPECT_EQ(Shared.Link.PollPeriodMs, 50);
  EXPECT_EQ(Shared.Link.PollResumeMs, 50) << "raised after the step of the file";
  EXPECT_EQ(Log, Events());
  Temp.Put("Control.cnc", "FALSE\r\n");
  Temp.Put("Trio.cfg", "200\r\n100\r\n");
  LoadLinkOptions(Files, Shared.Directories, link, log, Shared.Link);
  EXPECT_FALSE(link);
  EXPECT_EQ(Shared.Link.PollResumeMs, 200);
  EXPECT_EQ(Log,
            (Events{"note Control.cnc", "read Control.cnc", "note Trio.cfg", "read Trio.cfg"}));
}

TEST_F(Settings, ThePortFileIsRequired) {
  bool link = true;
  EXPECT_EQ(Fault([&] { LoadPortSettings(Files, Shared.Directories, link, Shared.Link); }),
            "Trio.cms: not found");
  Temp.Put("Trio.cms", "T\r\n0\r\n9600\r\nN\r\n8\r\n1\r\nNONE\r\n");
  LoadPortSettings(Files, Shared.Directories, link, Shared.Link);
  EXPECT_FALSE(link) << "a port number below 1";
}

TEST_F(Settings, TheColoursOfAFirstStartAreWritten) {
  Shared.Colours.Set(ColourName::Text, 1);
  LoadColours(Files, Shared.Directories, Shared.Colours);
  EXPECT_EQ(Shared.Colours[ColourName::Text], 65535u);
  EXPECT_EQ(Log, Events{"replace Colour.cfg"});
  const std::string text = Temp.Get("Colour.cfg");
  EXPECT_EQ(SplitLines(text).size(), 44u);
  EXPECT_EQ(SplitLines(text).back(), "******");
  Log.clear();
  LoadColours(Files, Shared.Directories, Shared.Colours);
  EXPECT_EQ(Log, (Events{"note Colour.cfg", "read Colour.cfg"}));
}

TEST_F(Settings, ThePlotStartsWithItsSwitchesOff) {
  Shared.Plot.KerfShown = Shared.Plot.LimitsShown = true;
  Shared.Plot.RealTimeWidth = 9;
  Shared.Console.PlotKeysActive = true;
  Shared.Console.PlotKeyMode = 4;
  LoadPlotConfig(Files, Shared.Directories, Shared.Plot, Shared.Console);
  EXPECT_FALSE(Shared.Plot.KerfShown || Shared.Plot.LimitsShown);
  EXPECT_FALSE(Shared.Console.PlotKeysActive);
  EXPECT_EQ(Shared.Console.PlotKeyMode, 0);
  EXPECT_EQ(Shared.Plot.RealTimeWidth, 1.0F);
  Temp.Put("Plot.cfg", "5\r\nY\r\nS\r\n");
  LoadPlotConfig(Files, Shared.Directories, Shared.Plot, Shared.Console);
  EXPECT_EQ(Shared.Plot.RealTimeWidth, 5.0F);
  EXPECT_EQ(Shared.Plot.MovementStyle, 0);
}

TEST_F(Settings, AMissingLaserFileLeavesTheSetting) {
  LaserSetting setting;
  setting.Integer7 = 42;
  LoadLaserFile(Files, Shared.Directories, "Actvprg1.lsr", {"a", "b"}, setting);
  EXPECT_EQ(setting.Integer7, 42);
  EXPECT_EQ(Log, Events());
  Temp.Put("Actvprg1.lsr", "T\r\n1,2,3,4,5,6,7,8,9,1\r\n");
  LoadLaserFile(Files, Shared.Directories, "Actvprg1.lsr", {"a", "b"}, setting);
  EXPECT_EQ(setting.Integer7, 7);
}

TEST_F(Settings, TheServiceProgramMustExist) {
  EXPECT_EQ(LoadServiceProgram(Files, Shared.Directories), "");
  Temp.Put("service tool", "");
  for (const char* text : {"", "******\r\n", "\r\nservice tool\r\n", "none\r\n"}) {
    Temp.Put("Service.cfg", text);
    EXPECT_EQ(LoadServiceProgram(Files, Shared.Directories), "") << text;
  }
  Temp.Put("Service.cfg", " service tool \r\n");
  EXPECT_EQ(LoadServiceProgram(Files, Shared.Directories), "service tool");
}

TEST(ConfigText, FieldsAreDividedByCommasAndLineEndsAlike) {
  FieldReader fields("a, b ,\"c, d\" x,\"\",,e\r\nf\n\n g");
  std::vector<std::string> read;
  while (const auto field = fields.Next()) read.emplace_back(*field);
  EXPECT_EQ(read, (std::vector<std::string>{"a", "b", "c, d", "", "", "e", "f", "", "g"}));
}

TEST(ConfigText, AQuoteThatIsNotClosedEndsWithItsLine) {
  FieldReader fields("\"open\r\nnext");
  EXPECT_EQ(fields.Next(), "open");
  EXPECT_EQ(fields.Next(), "next");
  EXPECT_TRUE(fields.AtEnd());
}

TEST(ConfigText, ASingleHoldsWhatItCan) {
  EXPECT_EQ(ToSingle(12.3), 12.3F);
  EXPECT_EQ(ToSingle(1e300), std::numeric_limits<float>::max());
  EXPECT_EQ(ToSingle(-1e300), std::numeric_limits<float>::lowest());
}

}  // namespace
}  // namespace torvane::core

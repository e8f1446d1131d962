// The gather pass with its files.
#include <gtest/gtest.h>

#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "restart/GatherModule.h"
#include "support/TempDirectory.h"

namespace torvane::restart {
namespace {

struct GatherFiles : testing::Test {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Files{Temp.Path(), {{'C', Temp.Path()}}};
  core::DirectorySet Directories;
  core::MachineData Machine;
  platform::FixedClock Clock{{2026, 3, 7, 9, 5, 0}};
  GatherModule Module{Files, Directories, Machine, Clock};
  GatherState State;

  GatherFiles() {
    for (const char* name : {"Service", "Subs/One", "Subs/Two"}) Temp.MakeDirectory(name);
    Directories.RootDirectory = "C:\\";
    Directories.ServiceDirectory = "C:\\Service\\";
    Directories.SubsDirectory = {"C:\\Subs\\One\\", "C:\\Subs\\Two\\"};
    Machine.LoadPositionX = 2500;
    Machine.TravelMaxX = 3000;
    Machine.TravelMaxY = 1500;
  }
};

TEST_F(GatherFiles, TheReportIsToTheLetter) {
  Temp.Put("Actvprg1.cnv",
           "G70\r\nG91 M04\r\nG56 X-1 Y0.5\r\nG41 M11\r\nG00 X200 Y1\r\nN123 G01 X2\r\n");
  Module.GatherToBlock(" PLATE ", " SHOP ", 1, {"N123 G01 X2", 6, 0}, State);
  EXPECT_EQ(Temp.Get("Service/Gather.txt"),
            "PROGRAM   :  PLATE\r\n"
            "DIRECTORY :  SHOP\r\n"
            "TIME      :  07/03/26 09:05\r\n"
            "\r\n"
            "****** WARNING ERROR ******\r\n"
            "G00 X200 Y1\r\n"
            "Out of limits in X\r\n"
            "******\r\n"
            "\r\n"
            "Gathered     : True\r\n"
            "Block No.    :  123 \r\n"
            "Measurement  : Imperial\r\n"
            "Coordinates  : Incremental\r\n"
            "G92 Offset X :  0 \r\n"
            "G92 Offset Y :  0 \r\n"
            "G56 Offset X : -25.4 \r\n"
            "G56 Offset Y :  12.7 \r\n"
            "Mirror Code  :  1 \r\n"
            "Profiler     : On\r\n"
            "X Position   : -2580 \r\n"
            "Y Position   :  25.4 \r\n"
            "Z Position   : -999 \r\n"
            "\r\n"
            "******\r\n");
  EXPECT_EQ(Temp.Get("Gather.rep"), "******\r\n");
  EXPECT_EQ(State.Gathered, GatherMark::Reached);
  EXPECT_EQ(State.KerfSide, 1);
}

TEST_F(GatherFiles, EachWalkStartsFromNothing) {
  Temp.Put("Actvprg2.cnv", "M04 P101=7\r\nG00 X5\r\n");
  Module.GatherToBlock("A", "B", 2, {"", 3, 0}, State);
  const GatherState first = State;
  Module.GatherToBlock("A", "B", 2, {"", 3, 0}, State);
  EXPECT_EQ(State, first);
  Module.GatherToBlock("A", "B", 2, {"", 1, 0}, State);
  EXPECT_FALSE(State.ProfilerOn);
  EXPECT_EQ(State.ParameterValues[0], -999);
  EXPECT_EQ(State.XPosition, 2500);
}

TEST_F(GatherFiles, TheSlotsOwnSubroutinesAreWalked) {
  Temp.Put("Actvprg2.cnv", "G00 X0 Y0\r\nG98 S5 A0\r\nG90\r\n");
  Temp.Put("Subs/One/5.sub", "S5\r\nG00 X1\r\nM02\r\n");
  Temp.Put("Subs/Two/5.sub", "S5\r\nG00 X2\r\nM02\r\n");
  Module.GatherToBlock("A", "B", 2, {"", 3, 0}, State);
  EXPECT_EQ(State.XPosition, 2);
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), "C:\\Subs\\Two\\5.sub\r\n");
}

TEST_F(GatherFiles, TheFileOfAllBodiesIsReadWhereItExists) {
  Temp.Put("Actvprg1.cnv", "G00 X0 Y0\r\nG98 S5 A0\r\nG90\r\n");
  Temp.Put("Subs/One/5.sub", "S5\r\nG00 X1\r\nM02\r\n");
  Temp.Put("Actvprg1.M2", "N5000 G00 X3\r\nRETURN\r\n");
  Module.GatherToBlock("A", "B", 1, {"", 3, 0}, State);
  EXPECT_EQ(State.XPosition, 3);
}

TEST_F(GatherFiles, AMissingFileIsAFaultThatNamesIt) {
  EXPECT_THROW(Module.GatherToBlock("A", "B", 1, {"", 1, 0}, State), platform::RuntimeFault);
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), "C:\\Actvprg1.cnv\r\n");
  Temp.Put("Actvprg1.cnv", "G00 X9999 Y0\r\nG98 S5 A0\r\nG90\r\n");
  EXPECT_THROW(Module.GatherToBlock("A", "B", 1, {"", 3, 0}, State), platform::RuntimeFault);
  EXPECT_NE(Temp.Get("Service/Gather.txt").find("Out of limits in X"), std::string::npos);
  EXPECT_EQ(State.Gathered, GatherMark::No);
}

}  // namespace
}  // namespace torvane::restart

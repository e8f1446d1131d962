// What the machine takes from an installation, and how it does without.
#include <gtest/gtest.h>

#include "ReadOnlyFiles.h"
#include "RunRig.h"
#include "simulator/Installation.h"

namespace torvane::simulator {

using namespace tests;
namespace {

std::string MachineText(const char* minX, const char* maxX) {
  std::string text = "Name : TEST\r\n";
  for (int line = 2; line <= 18; ++line) {
    const char* value = line == 9 ? minX : (line == 10 ? maxX : "0");
    text += "Value : " + std::string(value) + "\r\n";
  }
  return text;
}

TEST(Installation, ItsRootIsThatOfControlCfg) {
  ReadOnlyFiles files;
  files.Put("Control.cfg", "D:\\SHOP\\\r\nD:\\SHOP\\Programs\\\r\nA\r\n1\r\n******\r\n");
  files.Put("D:\\SHOP\\Data\\Machine.dat", MachineText("0", "0"));
  MachineOptions options;
  FollowInstallation(files, options);
  EXPECT_EQ(options.RootDirectory, "D:\\SHOP\\");
  EXPECT_EQ(options.Files, &files);
}

TEST(Installation, TravelThatIsNoneLeavesTheJogsFree) {
  ReadOnlyFiles files;
  MachineOptions options;
  core::MachineData machine;
  FollowInstallation(files, "R\\", machine, options);
  EXPECT_EQ(options.TravelMaxX, MachineOptions{}.TravelMaxX);
  machine.TravelMinX = -5;
  machine.TravelMaxX = 1250;
  machine.TravelMaxY = 2500;
  FollowInstallation(files, "R\\", machine, options);
  EXPECT_EQ(options.TravelMinX, -5);
  EXPECT_EQ(options.TravelMaxX, 1250);
  EXPECT_EQ(options.TravelMinY, 0);
  EXPECT_EQ(options.TravelMaxY, 2500);
}

TEST(Installation, ThatIsNoneIsAFault) {
  ReadOnlyFiles files;
  MachineOptions options;
  EXPECT_THROW(FollowInstallation(files, options), platform::RuntimeFault);
  EXPECT_EQ(options.Files, nullptr);
}

TEST(Installation, WithoutTheSlotsRecordsTheMachineSaysSoAndGoesByTheRows) {
  ReadOnlyFiles files;
  MachineOptions options;
  options.RootDirectory = "R\\";
  options.Files = &files;
  RunRig rig(options);
  rig.Move(10, 20);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(1);
  EXPECT_EQ(rig.Count(EventKind::PathMissing), 1);
  EXPECT_EQ(rig.Y(), 20);
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
}

TEST(Installation, ARestartWhoseFilesHaveGoneIsReported) {
  ReadOnlyFiles files;
  files.Put("R\\Restart.tbx", "G00 X1 Y1 G40\r\n");
  MachineOptions options;
  options.RootDirectory = "R\\";
  options.Files = &files;
  RunRig rig(options);
  rig.Send("VR(91)=3");
  rig.Run.CycleStart();
  EXPECT_EQ(rig.Send("B1R"), ">>");
  EXPECT_EQ(rig.Count(EventKind::RestartUnknown), 1);
  EXPECT_FALSE(rig.Running());
}

}  // namespace
}  // namespace torvane::simulator

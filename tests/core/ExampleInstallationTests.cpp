// The installation that comes with the program reads whole.
#include <filesystem>

#include <gtest/gtest.h>

#include "core/Directories.h"
#include "core/SettingsModule.h"
#include "platform/DiskFileSystem.h"
#include "support/SourceTree.h"
#include "support/TempDirectory.h"

namespace torvane::core {
namespace {

TEST(ExampleInstallation, ReadsWhole) {
  const tests::TempDirectory temp;
  std::filesystem::copy(torvane::tests::SourceTree() / "examples/installation", temp.Path(),
                        std::filesystem::copy_options::recursive);
  platform::DiskFileSystem files(temp.Path());
  System system;
  LoadColours(files, system.Directories, system.Colours);
  LoadDirectories(files, system.Directories, system.ActiveSlot);
  LoadMachineData(files, system);
  LoadMessageTables(files, system.Directories, system.Messages);
  LoadLinkOptions(files, system.Directories, system.Link.TrioLinkEnabled,
                  system.Link.PollLogEnabled, system.Link);
  LoadPortSettings(files, system.Directories, system.Link.TrioLinkEnabled, system.Link);
  LoadPlotConfig(files, system.Directories, system.Plot, system.Console);

  EXPECT_TRUE(files.DirectoryExists(system.Directories.ProgramDirectory));
  EXPECT_GT(files.ListFiles(system.Directories.ProgramDirectory + "*.prg").size(), 0u);
  EXPECT_GT(system.Machine.TravelMaxX, system.Machine.TravelMinX);
  EXPECT_GT(system.Machine.TravelMaxY, system.Machine.TravelMinY);
  EXPECT_FALSE(system.ActiveStation.Name.empty());
  EXPECT_GT(system.LaserNames.size(), 2u);
  EXPECT_FALSE(system.Messages.IoMessages[1].empty());
  EXPECT_FALSE(system.Messages.LogicMessages[0].empty());
  EXPECT_TRUE(system.Link.TrioLinkEnabled);
  EXPECT_EQ(files.ListFiles(system.Directories.DataDirectory + "*.prm").size(), 1u);
  LaserSetting setting;
  LoadLaserFile(files, system.Directories, system.Directories.SettingsDirectory + "Default.lsr",
                system.LaserNames, setting);
  EXPECT_GE(setting.NameIndex, 1);
  LoadTransferSettings(files, system.Directories, system.Comms);
  EXPECT_GE(system.Comms.CommsPort, 1);
  EXPECT_NE(system.Comms.CommsPort, system.Link.CommPort);
  EXPECT_FALSE(system.Comms.CommsPostamble.empty());
}

}  // namespace
}  // namespace torvane::core

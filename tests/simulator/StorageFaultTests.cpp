// Faults of disks and drives on demand.
#include <gtest/gtest.h>

#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "simulator/OperatorCommands.h"
#include "simulator/StorageFaults.h"
#include "support/SimulatedMachine.h"
#include "support/TempDirectory.h"

namespace torvane::simulator {
namespace {

using platform::RuntimeFault;

class FaultyDisk : public ::testing::Test {
 protected:
  tests::TempDirectory Folder;
  platform::DiskFileSystem Disk{Folder.Path()};
  StorageFaults Faults;
  FaultyFiles Files{Disk, Faults};
};

TEST_F(FaultyDisk, WithoutAFaultEverythingIsPassedOn) {
  Files.MakeDirectory("D");
  Files.ReplaceFile("D\\a.txt", "one");
  Files.AppendFile("D\\a.txt", " two");
  Files.CopyFile("D\\a.txt", "D\\b.txt");
  Files.RenameFile("D\\b.txt", "D\\c.txt");
  EXPECT_EQ(Files.ReadFile("D\\c.txt"), "one two");
  EXPECT_EQ(Files.FileSize("D\\c.txt"), 7U);
  EXPECT_EQ(Files.ListFiles("D\\*.txt").size(), 2U);
  Files.DeleteFile("D\\c.txt");
  EXPECT_FALSE(Files.FileExists("D\\c.txt"));
}

TEST_F(FaultyDisk, AListingHasSizesAndDatesAsTheDiskHasThem) {
  Files.ReplaceFile("a.txt", "old");
  const auto entries = Files.ListEntries("*.txt");
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].Size, 3U);
  EXPECT_GT(entries[0].Written.Year, 2000);
  Faults.Gone();
  EXPECT_TRUE(Files.ListEntries("*.txt").empty());
}

TEST_F(FaultyDisk, AFullDiskTakesWhatFitsOfAnEndAndNothingOfAWholeFile) {
  Files.ReplaceFile("a.txt", "old");
  Faults.FullAfter(5);
  EXPECT_THROW(Files.ReplaceFile("a.txt", "much too long"), RuntimeFault);
  EXPECT_EQ(Files.ReadFile("a.txt"), "old");
  EXPECT_THROW(Files.AppendFile("a.txt", " and more"), RuntimeFault);
  EXPECT_EQ(Files.ReadFile("a.txt"), "old and ");
  EXPECT_THROW(Files.AppendFile("a.txt", "x"), RuntimeFault);
  Faults.Clear();
  Files.AppendFile("a.txt", "x");
}

TEST_F(FaultyDisk, AFileMadeByPartsIsRefusedInTheMiddleAndTheOldOneStays) {
  Files.ReplaceFile("a.txt", "old");
  Faults.FullAfter(10);
  int parts = 0;
  EXPECT_THROW(Files.ReplaceFileByParts(
                   "a.txt", [&](std::string& part) { part = ++parts < 5 ? "1234" : ""; }),
               RuntimeFault);
  EXPECT_EQ(Files.ReadFile("a.txt"), "old");
}

TEST_F(FaultyDisk, AWriteProtectedPathIsReadAndNotWritten) {
  Files.ReplaceFile("a.txt", "old");
  Files.MakeDirectory("D");
  Faults.ReadOnly("d\\");
  EXPECT_THROW(Files.ReplaceFile("D\\b.txt", ""), RuntimeFault);
  EXPECT_THROW(Files.OverwriteFile("D\\b.txt", ""), RuntimeFault);
  EXPECT_THROW(Files.CopyFile("a.txt", "D\\b.txt"), RuntimeFault);
  EXPECT_THROW(Files.RenameFile("a.txt", "D\\b.txt"), RuntimeFault);
  EXPECT_THROW(Files.DeleteFile("D\\b.txt"), RuntimeFault);
  EXPECT_EQ(Files.ReadFile("a.txt"), "old");
  Files.ReplaceFile("a.txt", "new");
}

TEST_F(FaultyDisk, ADriveThatIsGoneHoldsNothing) {
  Files.ReplaceFile("a.txt", "old");
  Faults.Gone();
  EXPECT_FALSE(Files.FileExists("a.txt"));
  EXPECT_THROW(static_cast<void>(Files.ReadFile("a.txt")), RuntimeFault);
  EXPECT_THROW(static_cast<void>(Files.FileSize("a.txt")), RuntimeFault);
  EXPECT_TRUE(Files.ListFiles("*.txt").empty());
  EXPECT_THROW(Files.AppendFile("a.txt", "x"), RuntimeFault);
}

class OneDrive final : public platform::Drives {
 public:
  [[nodiscard]] std::vector<std::string> List() const override { return {"A:"}; }
  [[nodiscard]] bool Ready(std::string_view) const override { return true; }
};

TEST(FaultyDrive, AnswersAtTheSecondTest) {
  OneDrive drive;
  StorageFaults faults;
  const FaultyDrives drives(drive, faults);
  faults.ReadyAt("a:", 2);
  EXPECT_FALSE(drives.Ready("A:"));
  EXPECT_TRUE(drives.Ready("A:"));
  EXPECT_TRUE(drives.Ready("A:"));
  faults.Gone("A:");
  EXPECT_FALSE(drives.Ready("A:"));
}

TEST(FaultyDrive, WordsOfThePanel) {
  torvane::tests::SimulatedMachine machine;
  const auto say = [&](std::string_view line) {
    return CarryOutOperatorCommand(line, machine.Controller).Text;
  };
  EXPECT_EQ(say("storage full-after 100 C:\\X"), "");
  EXPECT_EQ(machine.Controller.Storage().Room("c:\\x\\y"), 100U);
  EXPECT_EQ(say("storage good"), "");
  EXPECT_GT(machine.Controller.Storage().Room("c:\\x\\y"), 100U);
  EXPECT_EQ(say("storage read-only"), "");
  EXPECT_THROW(machine.Controller.Storage().Write("a", 0), RuntimeFault);
  EXPECT_EQ(say("storage ready-at 2 A:"), "");
  EXPECT_FALSE(machine.Controller.Storage().TestDrive("A:"));
  for (const char* bad : {"storage", "storage bad", "storage full-after", "storage full-after x",
                          "storage ready-at 2", "storage ready-at 0 A:", "storage good now"}) {
    EXPECT_NE(say(bad), "") << bad;
  }
}

}  // namespace
}  // namespace torvane::simulator

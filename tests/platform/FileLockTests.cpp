// One process at a time, and what is left of the ones that were killed.
#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/DiskFileSystem.h"
#include "platform/DiskFiles.h"
#include "platform/RuntimeFault.h"
#include "support/TempDirectory.h"

namespace torvane::platform {
namespace {

struct Locks : ::testing::Test {
  tests::TempDirectory Temp;
  DiskFileSystem Files{Temp.Path()};
};

TEST_F(Locks, OneHolderAtATime) {
  auto first = Files.LockFile("Torvane.lock");
  ASSERT_TRUE(first);
  EXPECT_FALSE(Files.LockFile("Torvane.lock"));
  EXPECT_FALSE(Files.LockFile("TORVANE.LOCK")) << "by another case";
  first.reset();
  EXPECT_TRUE(Files.LockFile("Torvane.lock"));
}

TEST_F(Locks, ALockMovesWithItsOwner) {
  auto first = Files.LockFile("Torvane.lock");
  ASSERT_TRUE(first);
  {
    const FileLock second = std::move(*first);
    first.reset();
    EXPECT_FALSE(Files.LockFile("Torvane.lock"));
  }
  EXPECT_TRUE(Files.LockFile("Torvane.lock"));
}

TEST_F(Locks, TheFileTellsWhoHoldsIt) {
  Temp.Put("Torvane.lock", "a longer text than any number of a process\r\n");
  const auto held = Files.LockFile("Torvane.lock");
  EXPECT_EQ(Temp.Get("Torvane.lock"), std::to_string(::getpid()) + "\r\n");
}

TEST_F(Locks, AKilledProcessHoldsNothing) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    const auto held = FileLock::Take("Torvane.lock", Temp.Path() + "/Torvane.lock");
    static_cast<void>(!::write(ready[1], held ? "y" : "n", 1));
    for (;;) ::pause();
  }
  char said = 0;
  ASSERT_EQ(::read(ready[0], &said, 1), 1);
  EXPECT_EQ(said, 'y');
  EXPECT_FALSE(Files.LockFile("Torvane.lock"));
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_TRUE(Files.LockFile("Torvane.lock"));
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST_F(Locks, AFileThatCannotBeMadeIsAFaultThatNamesIt) {
  try {
    static_cast<void>(Files.LockFile("nowhere\\Torvane.lock"));
    FAIL() << "no fault";
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Path(), "nowhere\\Torvane.lock");
  }
  Temp.MakeDirectory("Torvane.lock");
  EXPECT_THROW(static_cast<void>(Files.LockFile("Torvane.lock")), RuntimeFault);
}

struct Leftovers : Locks {};

TEST_F(Leftovers, AreTakenAwayAndNothingElse) {
  Temp.Put("Control.cfg.new~", "half");
  Temp.Put("Control.cfg.7.new~", "half");
  Temp.Put("Control.cfg", "whole");
  Temp.Put("x.new~y", "");
  Temp.Put("deeper/x.new~", "");
  Temp.MakeDirectory("folder.new~");
  std::filesystem::create_symlink(Temp.Path() + "/Control.cfg", Temp.Path() + "/link.new~");
  Files.RemoveLeftovers("");
  Files.RemoveLeftovers(".\\");
  EXPECT_FALSE(Temp.Has("Control.cfg.new~"));
  EXPECT_FALSE(Temp.Has("Control.cfg.7.new~"));
  EXPECT_EQ(Temp.Get("Control.cfg"), "whole");
  for (const char* name : {"x.new~y", "deeper/x.new~", "folder.new~", "link.new~"}) {
    EXPECT_TRUE(Temp.Has(name)) << name;
  }
  Files.RemoveLeftovers("no such directory");
}

TEST_F(Leftovers, AFileThatIsBeingWrittenStays) {
  Files.ReplaceFileByParts("Actvprg1.tbl", [&, first = true](std::string& part) mutable {
    part = first ? "TABLE" : "";
    first = false;
    Files.RemoveLeftovers(".\\");
  });
  EXPECT_EQ(Temp.Get("Actvprg1.tbl"), "TABLE");
}

TEST_F(Leftovers, AHundredOfThemDoNotStopAReplacement) {
  for (int i = 0; i < 100; ++i) {
    Temp.Put("Control.cfg" + (i == 0 ? "" : "." + std::to_string(i)) + ".new~", "");
  }
  EXPECT_THROW(Files.ReplaceFile("Control.cfg", "new"), RuntimeFault);
  Files.RemoveLeftovers(".\\");
  Files.ReplaceFile("Control.cfg", "new");
  EXPECT_EQ(Temp.Get("Control.cfg"), "new");
}

struct Replacing : Locks {};

TEST_F(Replacing, ATraceIsReplacedWholeToo) {
  Temp.Put("LastFile.txt", "old\r\n");
  const int old = ::open((Temp.Path() + "/LastFile.txt").c_str(), O_RDONLY);
  ASSERT_GE(old, 0);
  Files.OverwriteFile("LastFile.txt", "new\r\n");
  char bytes[16] = {};
  EXPECT_EQ(::read(old, bytes, sizeof bytes), 5) << "who reads the old one reads it to its end";
  EXPECT_EQ(std::string(bytes), "old\r\n");
  ::close(old);
  EXPECT_EQ(Temp.Get("LastFile.txt"), "new\r\n");
  EXPECT_EQ(Files.ListFiles("*"), std::vector<std::string>{"LastFile.txt"});
}

TEST_F(Replacing, APipeOrADeviceIsNeverPutAwayForAFile) {
  const std::string pipe = Temp.Path() + "/Control.cfg";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THROW(Files.ReplaceFile("Control.cfg", "x"), RuntimeFault);
  EXPECT_THROW(Files.OverwriteFile("Control.cfg", "x"), RuntimeFault);
  std::filesystem::create_symlink(pipe, Temp.Path() + "/link");
  EXPECT_THROW(Files.ReplaceFile("link", "x"), RuntimeFault);
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
  EXPECT_EQ(Files.ListFiles("*.new~"), std::vector<std::string>());
}

}  // namespace
}  // namespace torvane::platform

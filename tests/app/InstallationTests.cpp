// An installation belongs to one console at a time.
#include <gmock/gmock.h>

#include "app/Installation.h"
#include "platform/RuntimeFault.h"
#include "support/TempDirectory.h"

namespace torvane::app {
namespace {

struct InstallationTest : ::testing::Test {
  InstallationTest() { Temp.Put("Control.cfg", ".\\\r\n.\\Programs\\\r\nSHOP\r\n1\r\n"); }

  std::string SecondOne() {
    try {
      const HeldInstallation second(Files, 0);
      return "(held)";
    } catch (const platform::RuntimeFault& fault) {
      return fault.what();
    }
  }

  tests::TempDirectory Temp;
  platform::DiskFileSystem Files{Temp.Path()};
};

TEST_F(InstallationTest, ASecondConsoleIsRefusedInOneSentence) {
  const HeldInstallation first(Files);
  EXPECT_EQ(SecondOne(), ".\\Torvane.lock: another console works on this installation");
}

TEST_F(InstallationTest, TheNextConsoleMayHaveItWhenTheFirstHasEnded) {
  { const HeldInstallation first(Files); }
  EXPECT_EQ(SecondOne(), "(held)");
}

TEST_F(InstallationTest, TheRootCountsAndNotTheWorkingDirectory) {
  Temp.Put("other/Control.cfg", Files.ToSystemPath(Temp.Path()) + "\r\n.\\P\\\r\n\r\n1\r\n");
  const platform::DiskFileSystem other(Temp.Path() + "/other");
  const HeldInstallation first(other);
  EXPECT_THAT(SecondOne(), ::testing::HasSubstr("another console"));
}

TEST_F(InstallationTest, TwoInstallationsDoNotMeet) {
  tests::TempDirectory another;
  another.Put("Control.cfg", ".\\\r\n.\\Programs\\\r\n\r\n");
  const platform::DiskFileSystem files(another.Path());
  const HeldInstallation first(Files);
  const HeldInstallation second(files, 0);
  EXPECT_TRUE(another.Has("Torvane.lock"));
}

TEST_F(InstallationTest, AFolderThatIsNoInstallationIsLeftAsItIs) {
  tests::TempDirectory empty;
  const platform::DiskFileSystem files(empty.Path());
  const HeldInstallation held(files);
  EXPECT_FALSE(empty.Has("Torvane.lock"));
  empty.Put("Control.cfg", ".\\Gone\\\r\n.\\Programs\\\r\n\r\n");
  const HeldInstallation gone(files);
  EXPECT_FALSE(empty.Has("Gone")) << "the start-up has the words for a root that is not there";
}

TEST_F(InstallationTest, ClearsAwayWhatAKilledConsoleLeft) {
  for (const char* name :
       {"Actvprg1.tbl.new~", "Service/LastFile.txt.new~", "Settings/Default.lsr.new~",
        "Programs/SHOP/STAR.lsr.3.new~", "Subs/One/1.sub.new~", "Subs/Two/9999.sub.7.new~"}) {
    Temp.Put(name, "half");
  }
  Temp.Put("Data/kept.new~", "");
  const HeldInstallation held(Files);
  EXPECT_FALSE(Temp.Has("Actvprg1.tbl.new~"));
  EXPECT_FALSE(Temp.Has("Service/LastFile.txt.new~"));
  EXPECT_FALSE(Temp.Has("Settings/Default.lsr.new~"));
  EXPECT_FALSE(Temp.Has("Programs/SHOP/STAR.lsr.3.new~"));
  EXPECT_FALSE(Temp.Has("Subs/One/1.sub.new~"));
  EXPECT_FALSE(Temp.Has("Subs/Two/9999.sub.7.new~"));
  EXPECT_TRUE(Temp.Has("Data/kept.new~")) << "the console writes nothing there";
}

TEST_F(InstallationTest, WhoIsRefusedClearsNothingAway) {
  const HeldInstallation first(Files);
  Temp.Put("Actvprg1.tbl.new~", "half");
  EXPECT_NE(SecondOne(), "(held)");
  EXPECT_TRUE(Temp.Has("Actvprg1.tbl.new~"));
}

}  // namespace
}  // namespace torvane::app

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "platform/DiskFileSystem.h"
#include "supervision/MessageHelp.h"
#include "support/TempDirectory.h"

namespace torvane::supervision {
namespace {

struct Bench {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Files{Temp.Path(), {{'C', Temp.Path()}}};
  core::DirectorySet Directories;

  Bench() {
    Temp.MakeDirectory("Service");
    Directories.ServiceDirectory = "C:\\Service\\";
    Directories.MessageDirectory = "C:\\Messages\\";
  }
};

TEST(MessageHelp, ReadsEveryLineAndNotesTheFile) {
  Bench bench;
  bench.Temp.Put("Help/IO/5.hlp", "one\r\n\r\n three\r\n");
  const auto help = ReadHelpText(bench.Files, bench.Directories, "C:\\HELP\\IO\\5.HLP");
  EXPECT_TRUE(help.Found) << "names are compared without minding case";
  EXPECT_EQ(help.Lines, (std::vector<std::string>{"one", "", " three"}));
  EXPECT_EQ(bench.Temp.Get("Service/LastFile.txt"), "C:\\HELP\\IO\\5.HLP\r\n");
}

TEST(MessageHelp, AMessageWithoutHelpIsToldApart) {
  Bench bench;
  EXPECT_FALSE(ReadHelpText(bench.Files, bench.Directories, "C:\\Help\\IO\\6.hlp").Found);
  EXPECT_FALSE(ReadHelpText(bench.Files, bench.Directories, "").Found);
  EXPECT_FALSE(bench.Temp.Has("Service/LastFile.txt"));
}

TEST(MessageHelp, PagesByItsKeys) {
  EXPECT_EQ(HelpTopLine(0, 100, HelpKey::Down), 1);
  EXPECT_EQ(HelpTopLine(0, 100, HelpKey::Up), 0);
  EXPECT_EQ(HelpTopLine(5, 100, HelpKey::Up), 4);
  EXPECT_EQ(HelpTopLine(0, 100, HelpKey::PageDown), 27);
  EXPECT_EQ(HelpTopLine(60, 100, HelpKey::PageDown), 72) << "not beyond the last page";
  EXPECT_EQ(HelpTopLine(20, 100, HelpKey::PageUp), 0);
  EXPECT_EQ(HelpTopLine(40, 100, HelpKey::PageUp), 13);
  EXPECT_EQ(HelpTopLine(40, 100, HelpKey::Home), 0);
  EXPECT_EQ(HelpTopLine(0, 100, HelpKey::End), 72);
  EXPECT_EQ(HelpTopLine(0, 28, HelpKey::End), 0);
  EXPECT_EQ(HelpTopLine(0, 3, HelpKey::Down), 0) << "a text of one page does not move";
}

RC_GTEST_PROP(MessageHelp, TheTopLineStaysWithinTheText, (int top, int count)) {
  const int lines = count < 0 ? 0 : count;
  for (const auto key : {HelpKey::Up, HelpKey::Down, HelpKey::PageUp, HelpKey::PageDown,
                         HelpKey::Home, HelpKey::End}) {
    const int next = HelpTopLine(top, lines, key);
    RC_ASSERT(next >= 0);
    RC_ASSERT(next <= std::max(0, lines - HelpPageLines));
  }
}

TEST(MessageHelp, TheAcknowledgementTakesTheNoteOnReceivedProgramsAway) {
  Bench bench;
  bench.Temp.Put("Messages/Receive.hlp", "PART : SHOP\r\n");
  bool received = true;
  AcknowledgeReceived(bench.Files, bench.Directories, received);
  EXPECT_FALSE(received);
  EXPECT_FALSE(bench.Temp.Has("Messages/Receive.hlp"));
  AcknowledgeReceived(bench.Files, bench.Directories, received);
  EXPECT_FALSE(received) << "without a note there is nothing to do";
}

}  // namespace
}  // namespace torvane::supervision

#include <gtest/gtest.h>

#include "RecordingScreens.h"
#include "SlotMaker.h"
#include "supervision/ProgramEntries.h"

namespace torvane::supervision {

using namespace tests;
namespace {

class FakeDrives final : public platform::Drives {
 public:
  bool Answers = false;
  [[nodiscard]] std::vector<std::string> List() const override { return {"A:"}; }
  [[nodiscard]] bool Ready(std::string_view drive) const override {
    return Answers && drive == "A:";
  }
};

class ProgramEntriesTest : public ::testing::Test, public SlotMaker {
 protected:
  ProgramEntriesTest() { SetDirectories(System.Directories); }

  void ExpectRefused(const std::string& text) {
    EXPECT_EQ(Log, (Events{"warning 1 1 \n\n" + text}));
    Log.clear();
  }

  Events Log;
  core::System System;
  FakeDrives Drives;
  RecordingDialogs Dialogs{Log};
  ProgramEntries Entries{System, Files, Drives, Dialogs};
};

using Names = std::vector<std::string>;
const std::string TooLong(33, 'N');

TEST_F(ProgramEntriesTest, TheDirectoryListLeavesTheReservedNameOut) {
  Temp.MakeDirectory("Programs/ExSubs");
  Temp.MakeDirectory("Programs/alpha");
  EXPECT_EQ(Entries.Directories(), (Names{"alpha", "SHOP"}));
}

TEST_F(ProgramEntriesTest, TheProgramListHoldsNamesWithoutExtension) {
  Temp.Put("Programs/SHOP/B.prg", "");
  Temp.Put("Programs/SHOP/a.b.PRG", "");
  Temp.Put("Programs/SHOP/C.lsr", "");
  EXPECT_EQ(Entries.Programs("SHOP"), (Names{"a.b", "B"}));
  EXPECT_EQ(Entries.Programs("NOWHERE"), Names{});
}

TEST_F(ProgramEntriesTest, AChangeOfDirectoryMakesItCurrentAndKeepsIt) {
  Temp.Put("Programs/NEST/N1.prg", "");
  const auto programs = Entries.ChangeDirectory(" NEST ");
  ASSERT_TRUE(programs.has_value());
  EXPECT_EQ(*programs, Names{"N1"});
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "NEST");
  EXPECT_EQ(System.Directories.ProgramDirectory, "C:\\Programs\\NEST\\");
  EXPECT_EQ(Temp.Get("Control.cfg"), "C:\\\r\nC:\\Programs\\\r\nNEST\r\n1\r\n******\r\n");
}

TEST_F(ProgramEntriesTest, ATextThatNamesNoDirectoryChangesNothing) {
  for (const char* name : {"", "NEW", "..", "SHOP\\.."}) {
    EXPECT_FALSE(Entries.ChangeDirectory(name).has_value()) << name;
  }
  EXPECT_TRUE(Log.empty());
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "SHOP");
  EXPECT_FALSE(Temp.Has("Control.cfg"));
}

TEST_F(ProgramEntriesTest, ADriveThatDoesNotAnswerIsNotReady) {
  EXPECT_FALSE(Entries.ChangeDirectory("A: [Floppy Disk]").has_value());
  ExpectRefused("Disc Not Ready !");
  Drives.Answers = true;
  Temp.Put("Floppy/DISC.prg", "");
  Files.SetDrive('A', Temp.Path() + "/Floppy");
  const auto programs = Entries.ChangeDirectory("A: [Floppy Disk]");
  ASSERT_TRUE(programs.has_value());
  EXPECT_EQ(*programs, Names{"DISC"});
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "A:");
}

TEST_F(ProgramEntriesTest, TheEditorOpensOnAProgramThatExists) {
  Temp.Put("Programs/SHOP/PART.prg", "G00\r\n");
  Temp.Put("Programs/Template.prg", "TEMPLATE\r\n");
  const auto target = Entries.PrepareEdit(" SHOP", "PART ");
  ASSERT_TRUE(target.has_value());
  EXPECT_EQ(target->Title, "PART");
  EXPECT_EQ(target->Directory, "SHOP");
  EXPECT_EQ(target->Path, "C:\\Programs\\SHOP\\PART.prg");
  EXPECT_EQ(Temp.Get("Programs/SHOP/PART.prg"), "G00\r\n");
  EXPECT_TRUE(Log.empty());
}

TEST_F(ProgramEntriesTest, ANewProgramStartsFromTheTemplate) {
  Temp.Put("Programs/Template.prg", "TEMPLATE\r\n");
  EXPECT_TRUE(Entries.PrepareEdit("SHOP", "NEW").has_value());
  EXPECT_EQ(Temp.Get("Programs/SHOP/NEW.prg"), "TEMPLATE\r\n");
  Files.DeleteFile("C:\\Programs\\Template.prg");
  EXPECT_TRUE(Entries.PrepareEdit("SHOP", "OTHER").has_value());
  EXPECT_FALSE(Temp.Has("Programs/SHOP/OTHER.prg")) << "without a template there is no file yet";
}

TEST_F(ProgramEntriesTest, AMissingDirectoryIsMadeOnlyIfTheOperatorWantsIt) {
  EXPECT_FALSE(Entries.PrepareEdit("NEST", "PART").has_value());
  EXPECT_EQ(Log, (Events{"warning 2 1 Directory\nNEST\nDoes Not Exist !\n\nCreate It ?"}));
  EXPECT_FALSE(Temp.Has("Programs/NEST"));
  Dialogs.Answer = true;
  EXPECT_TRUE(Entries.PrepareEdit("NEST", "PART").has_value());
  EXPECT_TRUE(Temp.Has("Programs/NEST"));
}

TEST_F(ProgramEntriesTest, TheEditorRefusesNamesThatAreNone) {
  const std::vector<std::string> names = {"", "  ", TooLong, "..", "A:", "X\\Y", "A*"};
  for (const auto& name : names) {
    EXPECT_FALSE(Entries.PrepareEdit(name, "PART").has_value());
    ExpectRefused("Invalid Directory Name !");
    EXPECT_FALSE(Entries.PrepareEdit("SHOP", name).has_value());
    ExpectRefused("Invalid Program Name !");
  }
}

TEST_F(ProgramEntriesTest, TheSearchRefusesTwoEmptyWordsAndOverlongOnes) {
  EXPECT_FALSE(Entries.PrepareSearch(" ", "").has_value());
  ExpectRefused("Invalid Directory Search Criteria !");
  EXPECT_FALSE(Entries.PrepareSearch(TooLong, "ab").has_value());
  ExpectRefused("Invalid Directory Search Criteria !");
  EXPECT_FALSE(Entries.PrepareSearch("SH", TooLong).has_value());
  ExpectRefused("Invalid Program Search Criteria !");
}

TEST_F(ProgramEntriesTest, OneOfTheSearchWordsMayBeEmpty) {
  const auto programs = Entries.PrepareSearch(" SH ", " ");
  ASSERT_TRUE(programs.has_value());
  EXPECT_EQ(programs->Directory, "SH");
  EXPECT_EQ(programs->Program, "");
  const auto words = Entries.PrepareSearch("", " ab ");
  ASSERT_TRUE(words.has_value());
  EXPECT_EQ(words->Directory, "");
  EXPECT_EQ(words->Program, "ab");
  EXPECT_TRUE(Log.empty());
}

TEST_F(ProgramEntriesTest, ARestartNeedsFourFilesOfTheSlot) {
  EXPECT_FALSE(Entries.RestartAvailable(1));
  PutSlot(1, "ONE", 1);
  EXPECT_FALSE(Entries.RestartAvailable(1)) << "no normalised text";
  Temp.Put("Actvprg1.cnv", "x");
  EXPECT_TRUE(Entries.RestartAvailable(1));
  EXPECT_FALSE(Entries.RestartAvailable(2));
  Files.DeleteFile("C:\\Actvprg1.tbl");
  EXPECT_FALSE(Entries.RestartAvailable(1));
}

}  // namespace
}  // namespace torvane::supervision

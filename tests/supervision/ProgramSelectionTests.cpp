#include <set>

#include <gtest/gtest.h>

#include "Bench.h"
#include "core/General.h"
#include "supervision/ProgramSelection.h"
#include "support/RecordingFiles.h"

namespace torvane::supervision {

using namespace tests;
namespace {

const char* const Good =
    "! MATERIAL : Zintec\r\n"
    "! SHEET : X400 Y300\r\n"
    "! CLAMP : L50 R250\r\n"
    "\r\n"
    "G71 G90\r\n"
    "   \r\n"
    "  G00 X10 Y10\r\n"
    "G31 T2=3\r\n"
    "G01 X60 Y10 F2000\r\n"
    "G31 T2=1\r\n"
    "M50 X0 Y88.5\r\n"
    "M30\r\n";

/// Slots of nine lines of ".lsr".
const char* const Laser = "TITLE\r\n1,2,3,4\r\n5.5,6.5\r\n7\r\n8.5,9.5\r\n1\r\n";

class ProgramSelectionTest : public ::testing::Test, public Bench {
 protected:
  ProgramSelectionTest() {
    System.Machine.TravelMaxX = 1000;
    System.Machine.TravelMaxY = 1000;
    System.Machine.ClampCount = 2;
    System.Machine.YDirection = 1;
    Temp.Put("Programs/SHOP/PART.prg", Good);
  }
  bool SelectProgram(const std::string& directory, const std::string& program) {
    return Selection.SelectProgram(directory, program);
  }
  /// Refused with one dialog, with the slot as it was.
  void ExpectRefused(const std::string& directory, const std::string& program,
                     const std::string& text) {
    Happened();
    EXPECT_FALSE(SelectProgram(directory, program));
    EXPECT_EQ(Happened(), (Events{"warning 1 1 " + text})) << directory << " " << program;
    EXPECT_EQ(Sent(), Lines{});
  }

  partprogram::SplitCycle Split;
  platform::FixedClock Clock{{2024, 3, 9, 8, 7, 0}};
  ProgramSelection Selection{Parts, Store, Split, Clock};
};

TEST_F(ProgramSelectionTest, NamesAreTestedInTheirOrder) {
  const std::string longest(32, 'N');
  const std::string tooLong(33, 'N');
  ExpectRefused("", "PART", "\n\nInvalid Directory Name !");
  ExpectRefused("   ", "", "\n\nInvalid Directory Name !");
  ExpectRefused(tooLong, "PART", "\n\nInvalid Directory Name !");
  ExpectRefused("SHOP", "", "\n\nInvalid Program Name !");
  ExpectRefused("SHOP", tooLong, "\n\nInvalid Program Name !");
  ExpectRefused("NOWHERE", "PART", "\n\nDirectory Does Not Exist !");
  ExpectRefused("SHOP", "NOTHING", "\n\nProgram Does Not Exist !");
  ExpectRefused(longest, "PART", "\n\nDirectory Does Not Exist !");
}

TEST_F(ProgramSelectionTest, ANameOfThirtyTwoCharactersIsAccepted) {
  const std::string longest(32, 'N');
  Temp.Put("Programs/SHOP/" + longest + ".prg", Good);
  EXPECT_TRUE(SelectProgram("SHOP", "  " + longest + " "));
  EXPECT_EQ(System.Programs[1].ProgramName, longest);
}

TEST_F(ProgramSelectionTest, NamesNeverLeadOutsideTheProgramsRoot) {
  Temp.Put("PART.prg", Good);
  ExpectRefused("..", "PART", "\n\nDirectory Does Not Exist !");
  ExpectRefused("C:", "PART", "\n\nDirectory Does Not Exist !");
  ExpectRefused("SHOP\\..", "PART", "\n\nDirectory Does Not Exist !");
  ExpectRefused("SHOP", "..\\..\\PART", "\n\nProgram Does Not Exist !");
  EXPECT_TRUE(Temp.Has("PART.prg"));
}

TEST_F(ProgramSelectionTest, WhileRunningTheEarlierProgramStays) {
  Select(1, "EARLIER", 3);
  System.State.MachineRunning = true;
  ExpectRefused("SHOP", "PART", "\nCan Not Select New Program\nWhile Machine Is Running !");
  EXPECT_TRUE(System.Programs[1].Selected);
  EXPECT_EQ(System.Programs[1].ProgramName, "EARLIER");
  EXPECT_EQ(SlotFiles(1).size(), 6U);
}

TEST_F(ProgramSelectionTest, ARefusalOfTheNamesComesBeforeThatOfTheMachine) {
  System.State.MachineRunning = true;
  ExpectRefused("SHOP", "NOTHING", "\n\nProgram Does Not Exist !");
}

TEST_F(ProgramSelectionTest, LeavesEveryFileOfTheSlot) {
  Temp.Put("Programs/SHOP/PART.lsr", Laser);
  Select(1, "EARLIER", 30);
  Temp.Put("Actvprg1.old", "x");
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_EQ(SlotFiles(1), (std::vector<std::string>{
                              "Actvprg1.bdy", "Actvprg1.btc", "Actvprg1.cfg", "Actvprg1.cnv",
                              "Actvprg1.drw", "Actvprg1.krw", "Actvprg1.lsr", "Actvprg1.prg",
                              "Actvprg1.rnd", "Actvprg1.sts", "Actvprg1.tbl", "Actvprg1.tbx"}));
  EXPECT_EQ(Temp.Get("Actvprg1.btc"), "0\r\n0\r\n0\r\n0\r\n0\r\n******\r\n");
  EXPECT_EQ(Temp.Get("Actvprg1.lsr"), Laser);
  EXPECT_EQ(Temp.Get("Service/Reverse.txt").substr(0, 19), "PROGRAM   :  PART\r\n");
}

TEST_F(ProgramSelectionTest, TheCopyHasNoBlankLinesSoThatTheyDoNotCount) {
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_EQ(Temp.Get("Actvprg1.prg"),
            "! MATERIAL : Zintec\r\n! SHEET : X400 Y300\r\n! CLAMP : L50 R250\r\nG71 G90\r\n"
            "G00 X10 Y10\r\nG31 T2=3\r\nG01 X60 Y10 F2000\r\nG31 T2=1\r\nM50 X0 Y88.5\r\nM30\r\n");
  EXPECT_EQ(System.Programs[1].BodyLines, 10);
  EXPECT_EQ(Temp.Get("Actvprg1.rnd").size(), 800U);
  EXPECT_FALSE(Temp.Has("Temp.prg"));
}

TEST_F(ProgramSelectionTest, FillsTheSlot) {
  System.LaserNames = {"HEAD", "STEEL"};
  Temp.Put("Programs/SHOP/PART.lsr", Laser);
  ASSERT_TRUE(SelectProgram(" SHOP ", "PART"));
  const auto& slot = System.Programs[1];
  EXPECT_TRUE(slot.Selected);
  EXPECT_EQ(slot.ProgramName, "PART");
  EXPECT_EQ(slot.DirectoryName, "SHOP");
  EXPECT_EQ(slot.SourcePath, "C:\\Programs\\SHOP\\PART");
  EXPECT_EQ(slot.Marker, "!");
  EXPECT_EQ(slot.Material, "Zintec");
  EXPECT_EQ(slot.SheetX, 400);
  EXPECT_EQ(slot.SheetY, 300);
  EXPECT_EQ(slot.Clamps[0], 50);
  EXPECT_EQ(slot.Clamps[1], 250);
  EXPECT_EQ(slot.LoadY, 88.5F);
  EXPECT_FALSE(slot.Imperial);
  EXPECT_EQ(slot.DrawRecords, static_cast<std::int16_t>(Temp.Get("Actvprg1.drw").size() / 516));
  EXPECT_EQ(slot.KerfRecords, static_cast<std::int16_t>(Temp.Get("Actvprg1.krw").size() / 516));
  EXPECT_EQ(slot.TableLines, static_cast<std::int16_t>(Temp.Get("Actvprg1.tbl").size() / 80));
  EXPECT_EQ(slot.Totals.ProfileLength, 50);
  EXPECT_EQ(slot.LaserSettings.Integers[1], 2);
  EXPECT_EQ(slot.LaserSettings.NameIndex, 1);
  EXPECT_EQ(Temp.Get("Actvprg1.cfg"), "PART\r\nSHOP\r\nC:\\Programs\\SHOP\\PART\r\n10\r\n" +
                                          std::to_string(slot.TableLines) +
                                          "\r\n88.5\r\n******\r\n");
}

TEST_F(ProgramSelectionTest, WhatIsSelectedIsWhatTheNextStartFinds) {
  Temp.Put("Programs/SHOP/PART.lsr", Laser);
  System.LaserNames = {"HEAD", "STEEL"};
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  const core::ActiveProgram selected = System.Programs[1];
  System.Programs[1] = {};
  Store.LoadActivePrograms();
  const auto& found = System.Programs[1];
  EXPECT_TRUE(found.Selected);
  EXPECT_EQ(found.SourcePath, selected.SourcePath);
  EXPECT_EQ(found.Material, selected.Material);
  EXPECT_EQ(found.Clamps, selected.Clamps);
  EXPECT_EQ(found.KerfWidth, selected.KerfWidth);
  EXPECT_EQ(found.BodyLines, selected.BodyLines);
  EXPECT_EQ(found.DrawRecords, selected.DrawRecords);
  EXPECT_EQ(found.KerfRecords, selected.KerfRecords);
  EXPECT_EQ(found.TableLines, selected.TableLines);
  EXPECT_EQ(found.LoadY, selected.LoadY);
  EXPECT_EQ(found.Totals.MoveLength, selected.Totals.MoveLength);
  EXPECT_EQ(found.LaserSettings.Floats, selected.LaserSettings.Floats);
}

TEST_F(ProgramSelectionTest, SendsTheFirstLinesAndThenTheValuesOfTheSlot) {
  System.ActiveSlot = 2;
  System.TableSent = 19;
  System.Link.TableFillLines = 3;
  System.Machine.MachineVariant = 1;
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  const std::string table = Temp.Get("Actvprg2.tbx");
  Lines wanted;
  for (const auto line : core::SplitLines(table)) wanted.emplace_back(line);
  ASSERT_GT(wanted.size(), 3U);
  wanted.resize(3);
  EXPECT_EQ(wanted[0].substr(0, 10), "TABLE(750,");
  const Lines values = {"VR(91)=2", "VR(87)=88.50", "M848=0",   "M849=0",  "M850=0",
                        "VR(82)=0", "VR(83)=0",     "VR(84)=0", "VR(85)=0"};
  EXPECT_EQ(Sent(), Join({wanted, values}));
  EXPECT_EQ(System.TableSent, 3);
}

TEST_F(ProgramSelectionTest, TellsTheScreensInTheirOrder) {
  System.Views[1].ViewZoomed = true;
  System.State.RunSeconds = 50;
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  Events shown;
  for (const auto& event : Happened()) {
    if (event[0] != '>') shown.push_back(event);
  }
  EXPECT_EQ(shown, (Events{"plot 1", "caption 1 PROGRAM 1   F10", "caption 1 PART   F10", "plot 1",
                           "open SetupForm", "unload ProgramForm"}));
  EXPECT_FALSE(System.Views[1].ViewZoomed);
  EXPECT_EQ(System.State.RunSeconds, 0);
  EXPECT_EQ(System.State.RunningBlockShown, -1);
}

TEST_F(ProgramSelectionTest, WithoutLaserSettingsTheDefaultIsCopiedBesideTheProgram) {
  Temp.Put("Settings/Another.lsr", "A\r\n");
  Temp.Put("Settings/Default.lsr", Laser);
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_EQ(Temp.Get("Programs/SHOP/PART.lsr"), Laser);
  EXPECT_EQ(Temp.Get("Actvprg1.lsr"), Laser);
}

TEST_F(ProgramSelectionTest, WithoutADefaultTheFirstSettingsFoundAreCopied) {
  Temp.Put("Settings/Zinc.lsr", "Z\r\n");
  Temp.Put("Settings/Brass.lsr", Laser);
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_EQ(Temp.Get("Programs/SHOP/PART.lsr"), Laser);
}

TEST_F(ProgramSelectionTest, SettingsOfTheProgramItselfAreLeftAlone) {
  Temp.Put("Settings/Default.lsr", "D\r\n");
  Temp.Put("Programs/SHOP/PART.lsr", Laser);
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_EQ(Temp.Get("Programs/SHOP/PART.lsr"), Laser);
}

TEST_F(ProgramSelectionTest, WithoutAnySettingsTheProgramIsSelectedWithoutThem) {
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_FALSE(Temp.Has("Programs/SHOP/PART.lsr"));
  EXPECT_FALSE(Temp.Has("Actvprg1.lsr"));
  EXPECT_EQ(System.Programs[1].LaserSettings.Integers[0], 0);
}

TEST_F(ProgramSelectionTest, ErrorsInTheCodeLeaveAnEmptySlotAndTheReport) {
  Select(1, "EARLIER", 30);
  Temp.Put("Programs/SHOP/BAD.prg", "G00 X10 Y10\r\nG31 T2=3\r\nG02 X20 Y10 I3 J0\r\nM30\r\n");
  EXPECT_FALSE(SelectProgram("SHOP", "BAD"));
  EXPECT_EQ(Happened(), (Events{"plot 1", "caption 1 PROGRAM 1   F10",
                                "warning 1 1 \nBAD\nCan Not Be Selected Due To Errors in Code !",
                                "plot 1", "caption 1 PROGRAM 1   F10"}));
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_EQ(System.Programs[1].ProgramName, "") << "the old program does not come back";
  EXPECT_EQ(SlotFiles(1), std::vector<std::string>{});
  EXPECT_NE(Temp.Get("Service/Reverse.txt").find("CRITICAL ERROR"), std::string::npos);
  EXPECT_EQ(Sent(), Lines{});
}

TEST_F(ProgramSelectionTest, AnIllegalKerfWidthLeavesAnEmptySlot) {
  Temp.Put("Programs/SHOP/WIDE.prg",
           "G00 X100 Y100\r\nG31 T2=3 G41 K50\r\nG01 X110 Y100\r\n"
           "G03 X110 Y100 I5 J0\r\nG31 T2=1 G40\r\nM30\r\n");
  EXPECT_FALSE(SelectProgram("SHOP", "WIDE"));
  EXPECT_EQ(Happened()[2], "warning 1 1 \nWIDE\nCan Not Be Selected Due To Illegal Kerf Width !");
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_EQ(SlotFiles(1), std::vector<std::string>{});
}

TEST_F(ProgramSelectionTest, WarningsDoNotStopASelection) {
  Temp.Put("Programs/SHOP/FAR.prg", "G00 X5000 Y10\r\nM30\r\n");
  EXPECT_TRUE(SelectProgram("SHOP", "FAR"));
  EXPECT_NE(Temp.Get("Service/Reverse.txt").find("Out of limits in X"), std::string::npos);
}

TEST_F(ProgramSelectionTest, TheSplitOfAnEarlierRestartGoes) {
  Temp.Put("SplitCyc.drw", "x");
  Split.SplitCurrent = 4;
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_FALSE(Temp.Has("SplitCyc.drw"));
  EXPECT_EQ(Split.SplitCurrent, 1);
}

TEST_F(ProgramSelectionTest, TheOtherSlotIsNotTouched) {
  Select(2, "OTHER", 3);
  ASSERT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_EQ(System.Programs[2].ProgramName, "OTHER");
  EXPECT_EQ(SlotFiles(2).size(), 6U);
  EXPECT_EQ(System.ActiveSlot, 1);
}

TEST_F(ProgramSelectionTest, AFaultOfTheDiskLeavesTheSlotEmptyAndGoesOn) {
  Select(1, "EARLIER", 3);
  Temp.MakeDirectory("Service/Reverse.txt");  // no file can stand there
  EXPECT_THROW(SelectProgram("SHOP", "PART"), platform::RuntimeFault);
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_EQ(System.Programs[1].ProgramName, "");
  EXPECT_FALSE(Temp.Has("Actvprg1.prg"));
  EXPECT_FALSE(Poll.Changes().Held());
}

TEST_F(ProgramSelectionTest, ASecondSelectionWhileTheLinesGoOutIsRefused) {
  bool pressed = false;
  Controller.OnLine = [&](const std::string&) {
    if (std::exchange(pressed, true)) return;
    EXPECT_FALSE(SelectProgram("SHOP", "PART"));
    EXPECT_TRUE(System.Programs[1].Selected);
  };
  EXPECT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_TRUE(pressed);
}

TEST_F(ProgramSelectionTest, ASelectionInTheMiddleOfARefillEndsTheRefillAfterItsLine) {
  Bench::Select(1, "EARLIER", 60);
  System.TableSent = 20;
  System.State.RunningBlock = 10;
  bool selected = false;
  Controller.OnLine = [&](const std::string& line) {
    if (line != "TABLE(1,22)") return;
    Loop.Start([&] { selected = SelectProgram("SHOP", "PART"); });
  };
  Poll.TopUpTable();
  Loop.RunFor(100);
  EXPECT_TRUE(selected);
  EXPECT_EQ(System.Programs[1].ProgramName, "PART");
  EXPECT_EQ(System.TableSent, System.Programs[1].TableLines);
  const auto sent = Sent();
  EXPECT_EQ(Lines(sent.begin(), sent.begin() + 2), Table(1, 21, 22));
  EXPECT_EQ(sent[2].substr(0, 10), "TABLE(500,");
}

TEST_F(ProgramSelectionTest, ATickAtAnyMomentOfASelectionSendsNoLineBetweenItsLines) {
  Controller.ByteDelayMs = 1;
  Controller.Values["VR(81)"] = "40";
  System.Link.PollPeriodMs = 5;
  System.Link.PollResumeMs = 5;
  Trio.SetPollTick([&] { Poll.PollTrio(); });
  Trio.StartPolling(true);
  Loop.RunFor(100);
  Sent();
  Loop.Start([&] { EXPECT_TRUE(SelectProgram("SHOP", "PART")); });
  Loop.RunFor(3000);
  Trio.StopPolling(true);
  Loop.RunFor(1000);
  Lines table;
  for (const std::string& line : Sent()) {
    if (line.starts_with("TABLE(")) table.push_back(line);
  }
  ASSERT_GE(table.size(), 2U);
  EXPECT_EQ(std::set<std::string>(table.begin(), table.end()).size(), table.size())
      << "each line once";
}

TEST_F(ProgramSelectionTest, ThePollGoesOnWhileTheRefusalOfAProgramStands) {
  Temp.Put("Programs/SHOP/BAD.prg", "G00 X10 Y10\r\nG31 T2=3\r\nG02 X20 Y10 I3 J0\r\nM30\r\n");
  bool held = true;
  Dialogs.DuringWarning = [&] { held = Poll.Changes().Held(); };
  EXPECT_FALSE(SelectProgram("SHOP", "BAD"));
  EXPECT_FALSE(held);
}

TEST_F(ProgramSelectionTest, OfflineAProgramIsSelectedAllTheSame) {
  System.Link.TrioLinkEnabled = false;
  EXPECT_TRUE(SelectProgram("SHOP", "PART"));
  EXPECT_TRUE(System.Programs[1].Selected);
  EXPECT_EQ(Sent(), Lines{});
}

TEST_F(ProgramSelectionTest, FilesAreWrittenInTheOrderOfThePasses) {
  Temp.Put("Programs/SHOP/PART.lsr", Laser);
  std::vector<std::string> done;
  tests::RecordingFiles files(Files, done);
  const ProgramParts parts{System, Trio, Downloads, files, Dialogs, ProgramScreens, Plot, Poll};
  ActiveStore store(parts);
  ProgramSelection selection(parts, store, Split, Clock);
  ASSERT_TRUE(selection.SelectProgram("SHOP", "PART"));
  Events writes;
  for (const auto& event : done) {
    if (event.rfind("replace C:\\Actvprg1.", 0) == 0) writes.push_back(event.substr(20));
    if (event.rfind("copy ", 0) == 0) writes.push_back(event.substr(event.size() - 3));
  }
  EXPECT_EQ(writes, (Events{"prg", "lsr", "bdy", "cnv", "drw", "krw", "tbx", "tbl", "rnd", "sts",
                            "btc", "cfg"}))
      << "the slot counts as whole with its .cfg";
}

}  // namespace
}  // namespace torvane::supervision

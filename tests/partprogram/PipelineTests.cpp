#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "partprogram/Conversion.h"
#include "partprogram/FixedLines.h"
#include "partprogram/SlotWriter.h"
#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "support/ProgramGenerator.h"
#include "support/RecordingFiles.h"
#include "support/TempDirectory.h"

using namespace torvane;
using namespace torvane::partprogram;
using torvane::tests::Join;

namespace {

struct Selection {
  core::MachineData Machine = torvane::tests::LargeMachine();
  core::Station Station{1, 1, "Laser", 3, 0, 0, 0, 0};

  PassResult Run(std::string_view program, std::int16_t slot = 1) {
    return RunPasses(SqueezeProgram(program),
                     {"PLATE", "SHOP", slot, &Machine, &Station, {2026, 3, 7, 9, 5, 0}});
  }

  PassResult Make(platform::FileSystem& files, const core::DirectorySet& directories,
                  std::string_view program,
                  SlotWriter::Threads threads = SlotWriter::Threads::Two) {
    return MakeSlotFiles(files, directories, SqueezeProgram(program),
                         {"PLATE", "SHOP", 2, &Machine, &Station, {2026, 3, 7, 9, 5, 0}}, threads);
  }
};

const std::string Square = Join({"! MATERIAL : Steel ", "! SHEET : X500 Y300", "! CLAMP : L80 R380",
                                 "G71 G90", "G00 X10 Y10", "G31 T2=3", "G41 K0.5", "G01 X60 F900",
                                 "G01 Y60", "G01 X10", "G01 Y10", "G40", "M50 Y25", "M30"});

TEST(Pipeline, AGoodProgramGoesThroughAllPasses) {
  const PassResult result = Selection().Run(Square);
  EXPECT_EQ(result.Outcome, PassOutcome::Good);
  EXPECT_EQ(result.Conversion.Records.size(), 8U);
  EXPECT_GE(result.Kerf.size(), 8U);
  EXPECT_GT(result.Table.Lines, 0);
  EXPECT_EQ(result.BodyLines, 14);
}

TEST(Pipeline, FillsTheSlot) {
  core::ActiveProgram slot;
  slot.ProgramName = "PLATE";
  FillSlot(Selection().Run(Square), slot);
  EXPECT_EQ(slot.ProgramName, "PLATE");
  EXPECT_EQ(slot.Material, "Steel");
  EXPECT_EQ(slot.SheetX, 500);
  EXPECT_EQ(slot.Clamps[1], 380);
  EXPECT_EQ(slot.KerfWidth, 0.5F);
  EXPECT_EQ(slot.LoadY, 25);
  EXPECT_EQ(slot.BodyLines, 14);
  EXPECT_EQ(slot.DrawRecords, 8);
  EXPECT_FALSE(slot.Imperial);
  EXPECT_GT(slot.Totals.ProfileLength, 199);
}

/// A root on the disk for the files of slot 2.
struct Root {
  tests::TempDirectory Directory;
  platform::DiskFileSystem Files{Directory.Path()};
  core::DirectorySet Directories;

  Root() {
    for (const char* name : {"Service", "Subs", "Subs/Two"}) Directory.MakeDirectory(name);
    Directories.RootDirectory = Directory.Path() + "\\";
    Directories.ServiceDirectory = Directory.Path() + "\\Service\\";
    Directories.SubsDirectory[2] = Directory.Path() + "\\Subs\\Two\\";
  }
};

TEST(Pipeline, WritesTheFilesOfTheSlot) {
  Root root;
  const tests::TempDirectory& directory = root.Directory;
  const PassResult result =
      Selection().Make(root.Files, root.Directories, Square + "S7\r\nG01 X1\r\nM02\r\n");
  EXPECT_EQ(directory.Get("Actvprg2.drw"), EncodeRecords(result.Conversion.Records));
  EXPECT_EQ(directory.Get("Actvprg2.krw"), EncodeRecords(result.Kerf));
  EXPECT_EQ(directory.Get("Actvprg2.tbx"), result.Table.Text);
  EXPECT_EQ(directory.Get("Actvprg2.tbl"), MakeFixedLines(result.Table.Text, false).Bytes);
  EXPECT_EQ(directory.Get("Actvprg2.rnd"), MakeFixedLines(result.Text.Body, true).Bytes);
  EXPECT_EQ(directory.Get("Actvprg2.cnv"), result.Text.Converted);
  EXPECT_EQ(directory.Get("Actvprg2.bdy"), result.Text.Body);
  EXPECT_EQ(directory.Get("Subs/Two/7.sub"), "S7 \r\nG01 X1 \r\nM02 \r\n");
  EXPECT_EQ(directory.Get("Service/Reverse.txt"), result.Conversion.Report);
}

TEST(Pipeline, PutsTheFilesInPlaceInTheSameOrderWithOneThreadAndTwo) {
  const std::string program = Square + "S7\r\nG01 X1\r\nM02\r\n";
  for (const auto threads : {SlotWriter::Threads::One, SlotWriter::Threads::Two}) {
    Root root;
    std::vector<std::string> events;
    tests::RecordingFiles files(root.Files, events);
    static_cast<void>(Selection().Make(files, root.Directories, program, threads));
    const std::string base = "replace " + root.Directories.RootDirectory + "Actvprg2.";
    EXPECT_EQ(events, (std::vector<std::string>{
                          base + "bdy", base + "cnv",
                          "replace " + root.Directories.SubsDirectory[2] + "7.sub",
                          "overwrite " + root.Directories.ServiceDirectory + "Reverse.txt",
                          base + "drw", base + "krw", base + "tbx", base + "tbl", base + "rnd"}));
  }
}

TEST(Pipeline, AProgramThatIsRefusedLeavesNoFileOfALaterPass) {
  Root root;
  const PassResult result = Selection().Make(root.Files, root.Directories, "G02 X10 Y0 I1\r\n");
  EXPECT_EQ(result.Outcome, PassOutcome::ErrorsInCode);
  EXPECT_EQ(root.Files.ListFiles(root.Directories.RootDirectory + "*"),
            (std::vector<std::string>{"Actvprg2.bdy", "Actvprg2.cnv", "Actvprg2.drw"}));
  EXPECT_EQ(root.Directory.Get("Actvprg2.drw"), EncodeRecords(result.Conversion.Records));
}

TEST(Pipeline, AKerfThatIsRefusedLeavesTheProgrammedRecords) {
  Root root;
  const PassResult result = Selection().Make(
      root.Files, root.Directories, Join({"G31 T2=3", "G41 K5", "G01 X5 Y0", "G03 X5 Y0 I-5 J0"}));
  EXPECT_EQ(result.Outcome, PassOutcome::IllegalKerf);
  EXPECT_EQ(root.Files.ListFiles(root.Directories.RootDirectory + "*"),
            (std::vector<std::string>{"Actvprg2.bdy", "Actvprg2.cnv", "Actvprg2.drw"}));
}

TEST(Pipeline, AFileThatCannotBeWrittenIsToldAndThoseAfterItStayAsTheyWere) {
  Root root;
  root.Directory.MakeDirectory("Actvprg2.krw");
  root.Directory.Put("Actvprg2.tbl", "old");
  try {
    static_cast<void>(Selection().Make(root.Files, root.Directories, Square));
    FAIL() << "nothing was told";
  } catch (const platform::RuntimeFault& fault) {
    EXPECT_NE(std::string(fault.what()).find("Actvprg2.krw"), std::string::npos) << fault.what();
  }
  EXPECT_EQ(root.Directory.Get("Actvprg2.tbl"), "old");
  EXPECT_GT(root.Directory.Get("Actvprg2.drw").size(), DrawRecordSize);
  EXPECT_EQ(
      root.Files.ListFiles(root.Directories.RootDirectory + "*"),
      (std::vector<std::string>{"Actvprg2.bdy", "Actvprg2.cnv", "Actvprg2.drw", "Actvprg2.tbl"}));
}

TEST(Pipeline, ACriticalErrorEndsTheRoadBehindTheWalk) {
  const PassResult result = Selection().Run("G02 X10 Y0 I1\r\n");
  EXPECT_EQ(result.Outcome, PassOutcome::ErrorsInCode);
  EXPECT_TRUE(result.Kerf.empty());
  EXPECT_TRUE(result.Table.Text.empty());
}

TEST(Pipeline, AWarningDoesNotRefuse) {
  EXPECT_EQ(Selection().Run("G00 X99999 Y0\r\n").Outcome, PassOutcome::Good);
}

TEST(Pipeline, AKerfThatSwallowsAnArcIsRefused) {
  const PassResult result =
      Selection().Run(Join({"G31 T2=3", "G41 K5", "G01 X5 Y0", "G03 X5 Y0 I-5 J0"}));
  EXPECT_EQ(result.Outcome, PassOutcome::IllegalKerf);
}

TEST(Pipeline, MoreTableLinesThanTheCountHoldsAreReportedInFrontOfTheEndMark) {
  std::string program;
  for (int i = 0; i < 17000; ++i) program += "G32 1=" + std::to_string(i) + "\r\n";
  const PassResult result = Selection().Run(program);
  EXPECT_EQ(result.Outcome, PassOutcome::ErrorsInCode);
  EXPECT_EQ(result.Conversion.CriticalErrors, 1);
  EXPECT_TRUE(result.Conversion.Report.ends_with(
      "\r\n****** CRITICAL ERROR ******\r\nToo Many Table Lines in Program\r\n\r\n******\r\n"))
      << result.Conversion.Report;
}

TEST(Pipeline, ATableLineThatWouldBeCutIsReportedWithItsBlock) {
  std::string block = "G32 ";
  for (int i = 1; i <= 6; ++i) block += std::to_string(i) + "=-1000000000,";
  const PassResult result = Selection().Run("M10\r\n" + block + "\r\n");
  EXPECT_EQ(result.Outcome, PassOutcome::ErrorsInCode);
  ASSERT_EQ(result.Conversion.Errors.size(), 1U);
  EXPECT_EQ(result.Conversion.Errors[0].BlockNumber, 2);
  EXPECT_TRUE(result.Conversion.Errors[0].Block.starts_with("G32 1=-1000000000"));
}

TEST(Pipeline, AGeneratedSheetNearTheCountsIsGood) {
  core::MachineData machine = torvane::tests::LargeMachine();
  torvane::tests::GeneratorOptions options;
  options.Profiles = 3000;
  const PassResult result = Selection{machine}.Run(torvane::tests::GenerateProgram(options));
  EXPECT_EQ(result.Outcome, PassOutcome::Good);
  EXPECT_EQ(result.Conversion.Errors.size(), 0U);
  EXPECT_EQ(result.Conversion.Records.size(), 24001U);
}

TEST(Pipeline, ExpressionsGiveTheRecordsOfPlainNumbers) {
  torvane::tests::GeneratorOptions plain;
  plain.Profiles = 200;
  torvane::tests::GeneratorOptions expressions = plain;
  expressions.Expressions = true;
  const auto left = Selection().Run(torvane::tests::GenerateProgram(plain));
  const auto right = Selection().Run(torvane::tests::GenerateProgram(expressions));
  EXPECT_EQ(EncodeRecords(left.Kerf), EncodeRecords(right.Kerf));
  EXPECT_EQ(left.Table.Text, right.Table.Text);
}

RC_GTEST_PROP(Pipeline, AnyBytesAreReadWithoutAFault, ()) {
  const auto program = *rc::gen::arbitrary<std::string>();
  const auto result = Selection().Run(program);
  RC_ASSERT(result.Conversion.Report.ends_with("******\r\n"));
}

RC_GTEST_PROP(Pipeline, AnyWordsAreReadWithoutAFault, ()) {
  const auto words = *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(
      std::vector<std::string>{"G00",   "G01",    "G02",     "G03",   "G04",  "G30",
                               "G31",   "G32",    "G41",     "G42",   "G53",  "G56",
                               "G70",   "G91",    "G92",     "G95",   "G98",  "M00",
                               "M02",   "M11",    "M12",     "M30",   "M50",  "M55",
                               "M87",   "IF",     "GOTO",    "ABORT", "S1",   "S2",
                               "Q1",    "Q2",     "A30",     "X10",   "Y-5",  "I3",
                               "J-4",   "R7",     "R-7",     "K0.2",  "F100", "P1=3",
                               "XP1",   "YP1+2",  "N1",      "GOTO1", "T2=3", "1=5",
                               "24=-1", "/",      "//",      "<",     "(",    ")",
                               "XP",    "ROUND(", "\n",      "\n",    "\n",   "\n",
                               "!",     "-999",   "P1=P1+1", "X1E9",  "P99=", "X999999999999999999",
                               "Y1/0",  "\r"}));
  std::string program;
  for (const auto& word : words) program += word;
  const auto result = Selection().Run(program);
  RC_ASSERT(!result.Conversion.Records.empty());
  RC_ASSERT((result.Outcome == PassOutcome::ErrorsInCode) ==
            (result.Conversion.CriticalErrors > 0));
}

}  // namespace

// The files of the two slots.
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/SlotFiles.h"
#include "platform/DiskFileSystem.h"
#include "support/Faults.h"
#include "support/TempDirectory.h"

namespace torvane::core {
namespace {

struct SlotFiles : ::testing::Test {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Files{Temp.Path()};
  DirectorySet Directories;

  SlotFiles() {
    Directories.RootDirectory = ".\\";
    Temp.MakeDirectory("Service");
  }
};

constexpr const char* ConfigText =
    "GASKET\r\nSHOP\r\n.\\Programs\\SHOP\\GASKET\r\n77\r\n120\r\n-12.3\r\n******\r\n";

TEST_F(SlotFiles, AreNamedByTheSlot) {
  EXPECT_EQ(SlotFile(Directories, 1, "tbl"), ".\\Actvprg1.tbl");
  EXPECT_EQ(SlotFile(Directories, 2, "cfg"), ".\\Actvprg2.cfg");
}

TEST_F(SlotFiles, ASlotStandsOnAllSixOfThem) {
  for (const auto extension : RequiredSlotFiles) {
    EXPECT_FALSE(SlotFilesExist(Files, Directories, 1));
    Temp.Put("Actvprg1." + std::string(extension), "");
  }
  EXPECT_TRUE(SlotFilesExist(Files, Directories, 1));
  EXPECT_FALSE(SlotFilesExist(Files, Directories, 2));
}

TEST_F(SlotFiles, AllOfASlotGoWhateverTheirExtensionAndNoneOfTheOther) {
  for (const char* name : {"Actvprg1.cfg", "ACTVPRG1.TBX", "Actvprg1.cnv", "Actvprg2.cfg",
                           "Actvprg12.cfg", "Control.cfg"}) {
    Temp.Put(name, "");
  }
  DeleteSlotFiles(Files, Directories, 1);
  EXPECT_EQ(Files.ListFiles("*"),
            (std::vector<std::string>{"Actvprg12.cfg", "Actvprg2.cfg", "Control.cfg"}));
  DeleteSlotFiles(Files, Directories, 1);
}

TEST_F(SlotFiles, TheConfigIsWrittenAndReadBack) {
  ActiveProgram program;
  program.ProgramName = "GASKET";
  program.DirectoryName = "SHOP";
  program.SourcePath = ".\\Programs\\SHOP\\GASKET";
  program.BodyLines = 77;
  program.TableLines = 120;
  program.LoadY = -12.3F;
  SaveSlotConfig(Files, Directories, 1, program);
  EXPECT_EQ(Temp.Get("Actvprg1.cfg"), ConfigText);
  ActiveProgram read;
  LoadSlotConfig(Files, Directories, 1, read);
  EXPECT_EQ(read.ProgramName, "GASKET");
  EXPECT_EQ(read.DirectoryName, "SHOP");
  EXPECT_EQ(read.SourcePath, ".\\Programs\\SHOP\\GASKET");
  EXPECT_EQ(read.BodyLines, 77);
  EXPECT_EQ(read.TableLines, 120);
  EXPECT_EQ(read.LoadY, -12.3F);
  EXPECT_EQ(Temp.Get("Service/LastFile.txt"), ".\\Actvprg1.cfg\r\n");
}

TEST_F(SlotFiles, ATextInPlaceOfACountIsAFault) {
  Temp.Put("Actvprg1.cfg", "A\r\nB\r\nC\r\nmany\r\n1\r\n0\r\n******\r\n");
  ActiveProgram program;
  EXPECT_EQ(tests::FaultOf([&] { LoadSlotConfig(Files, Directories, 1, program); }),
            ".\\Actvprg1.cfg: \"many\" stands in place of a number");
}

TEST_F(SlotFiles, ADamagedConfigIsAFaultThatNamesIt) {
  ActiveProgram program;
  for (const char* text :
       {"", "A\r\n", "A\r\nB\r\nC\r\n1\r\n1\r\n", "A\r\nB\r\nC\r\n1\r\n******\r\n0\r\n",
        "A\r\nB\r\nC\r\n40000\r\n1\r\n0\r\n", "A\r\nB\r\nC\r\n-1\r\n1\r\n0\r\n",
        "A\r\nB\r\nC\r\n1\r\n1\r\n12 mm\r\n", "A\r\nB\r\nC\r\n1\r\n1\r\nnan\r\n",
        "A\r\nB\r\nC\r\n1\r\n1\r\n1e99\r\n", "A\r\nB\r\nC\r\n\r\n1\r\n0\r\n",
        "A\r\nB\r\nC\r\n1\r\n1\r\n0\r\n", "A\r\nB\r\nC\r\n1\r\n1\r\n0\r\nend\r\n"}) {
    const auto fault = tests::FaultOf([&] { ReadSlotConfig(text, "Actvprg1.cfg", program); });
    EXPECT_EQ(fault.substr(0, 14), "Actvprg1.cfg: ") << text;
  }
  EXPECT_EQ(tests::FaultOf([&] { LoadSlotConfig(Files, Directories, 2, program); }),
            ".\\Actvprg2.cfg: not found");
}

TEST_F(SlotFiles, ANameThatIsNoPlainNameIsDamage) {
  ActiveProgram program;
  for (const char* name : {"", "..", "A\\B", "A/B", "C:", "A*"}) {
    const std::string rest = "\r\n.\\P\r\n1\r\n1\r\n0\r\n******\r\n";
    const std::string fault = "Actvprg1.cfg: \"" + std::string(name) + "\" is no plain name";
    EXPECT_EQ(tests::FaultOf([&] {
                ReadSlotConfig(name + std::string("\r\nSHOP") + rest, "Actvprg1.cfg", program);
              }),
              fault);
    EXPECT_EQ(tests::FaultOf([&] {
                ReadSlotConfig(std::string("PART\r\n") + name + rest, "Actvprg1.cfg", program);
              }),
              fault);
  }
}

TEST_F(SlotFiles, ARecordFileHasTheSizeThatItsCountSays) {
  Temp.Put("a.rnd", std::string(160, ' '));
  EXPECT_EQ(tests::FaultOf([&] { HoldSize(Files, "a.rnd", 2, LineRecordSize); }), "");
  for (const int count : {0, 1, 3}) {
    EXPECT_EQ(tests::FaultOf([&] { HoldSize(Files, "a.rnd", count, LineRecordSize); }),
              "a.rnd: its size is 160 bytes in place of " + std::to_string(count * 80));
  }
}

TEST_F(SlotFiles, ATableHoldsTableLinesAndNothingElse) {
  const auto record = [](std::string line) {
    line.resize(LineRecordSize, ' ');
    return line;
  };
  Temp.Put("a.tbl", record("TABLE(500,1)") + record("TABLE(507,-999)"));
  EXPECT_EQ(tests::FaultOf([&] { HoldTableLines(Files, "a.tbl"); }), "");
  for (const char* line : {"VR(48)=5", "", "table(500,1)", " TABLE(500,1)", "TABLE 500"}) {
    Temp.Put("a.tbl", record("TABLE(500,1)") + record(line));
    EXPECT_EQ(tests::FaultOf([&] { HoldTableLines(Files, "a.tbl"); }),
              "a.tbl: record 2 is no table line");
  }
}

TEST_F(SlotFiles, StatusAndBatchAreWrittenAndReadBack) {
  SaveProgramStatus(Files, Directories, 2, {-3, 1234.5F, 0.25F});
  EXPECT_EQ(Temp.Get("Actvprg2.sts"), "-3\r\n1234.5\r\n0.25\r\n******\r\n");
  RunTotals totals;
  LoadProgramStatus(Files, Directories, 2, totals);
  EXPECT_EQ(totals.ProgramTime, -3);
  EXPECT_EQ(totals.MoveLength, 1234.5F);
  EXPECT_EQ(totals.ProfileLength, 0.25F);

  SaveBatch(Files, Directories, 2, {1, 2, 3, 4, 2000000000});
  EXPECT_EQ(Temp.Get("Actvprg2.btc"), "1\r\n2\r\n3\r\n4\r\n2000000000\r\n******\r\n");
  Batch batch;
  LoadBatch(Files, Directories, 2, batch);
  EXPECT_EQ(batch.PartsPerSheet, 1);
  EXPECT_EQ(batch.PartsRequired, 2);
  EXPECT_EQ(batch.SheetsRequired, 3);
  EXPECT_EQ(batch.SheetsCompleted, 4);
  EXPECT_EQ(batch.SheetsToGo, 2000000000);
}

TEST_F(SlotFiles, WithoutTheirFilesStatusAndBatchAreZero) {
  RunTotals totals{1, 2, 3};
  Batch batch{1, 2, 3, 4, 5};
  LoadProgramStatus(Files, Directories, 1, totals);
  LoadBatch(Files, Directories, 1, batch);
  EXPECT_EQ(totals.ProgramTime, 0);
  EXPECT_EQ(totals.MoveLength, 0);
  EXPECT_EQ(totals.ProfileLength, 0);
  EXPECT_EQ(batch.PartsPerSheet + batch.SheetsToGo + batch.SheetsRequired, 0);
}

TEST(SlotTexts, ABlankBeforeANumberIsAllowed) {
  const Batch batch = ReadBatch(" 1\r\n 2\r\n 3\r\n 4\r\n 5\r\n******\r\n", "x");
  EXPECT_EQ(batch.PartsPerSheet, 1);
  EXPECT_EQ(batch.SheetsToGo, 5);
}

TEST(SlotTexts, DamagedStatusAndBatchAreFaults) {
  EXPECT_EQ(tests::FaultOf([] { static_cast<void>(ReadBatch("1\r\n2\r\n3\r\n4\r\n", "a.btc")); }),
            "a.btc: ends too soon, line 5 is missing");
  EXPECT_EQ(
      tests::FaultOf([] { static_cast<void>(ReadBatch("1\n2\n3\n4\n3000000000\n", "a.btc")); }),
      "a.btc: the number 3000000000 is out of range");
  EXPECT_EQ(tests::FaultOf([] { static_cast<void>(ReadProgramStatus("1\n******\n", "a.sts")); }),
            "a.sts: \"******\" stands in place of a number");
  EXPECT_EQ(tests::FaultOf([] { static_cast<void>(ReadProgramStatus("1\n2\n3\n4\n", "a.sts")); }),
            "a.sts: the end mark is missing");
  EXPECT_EQ(tests::FaultOf([] { static_cast<void>(ReadBatch("1\n2\n3\n4\n5\n*****\n", "a.btc")); }),
            "a.btc: the end mark is missing");
}

TEST(SlotTexts, AnEmptySlotHasItsMarkAndTheLoadPosition) {
  ActiveProgram program;
  program.Selected = true;
  program.ProgramName = "X";
  program.Marker = "?";
  program.Note = "n";
  program.Clamps = {1, 2, 3, 4};
  program.KerfWidth = 1;
  program.Imperial = true;
  program.BodyLines = 9;
  program.BatchCounters.PartsRequired = 3;
  program.LaserSettings.NameIndex = 2;
  EmptySlot(program, 7.5F);
  EXPECT_FALSE(program.Selected);
  EXPECT_EQ(program.ProgramName, "");
  EXPECT_EQ(program.Marker, "!");
  EXPECT_EQ(program.Note, "");
  EXPECT_EQ(program.Clamps[3], 0);
  EXPECT_EQ(program.KerfWidth, 0);
  EXPECT_FALSE(program.Imperial);
  EXPECT_EQ(program.BodyLines, 0);
  EXPECT_EQ(program.BatchCounters.PartsRequired, 0);
  EXPECT_EQ(program.LaserSettings.NameIndex, 0);
  EXPECT_EQ(program.LoadY, 7.5F);
}

RC_GTEST_PROP(SlotTexts, WhatIsWrittenIsRead, ()) {
  const auto single = rc::gen::map(rc::gen::inRange(-100000000, 100000000),
                                   [](int n) { return static_cast<float>(n) / 1000.0F; });
  ActiveProgram program;
  program.ProgramName = "P";
  program.DirectoryName = "D";
  program.BodyLines = *rc::gen::inRange<std::int16_t>(0, 32767);
  program.TableLines = *rc::gen::inRange<std::int16_t>(0, 32767);
  program.LoadY = *single;
  ActiveProgram read;
  ReadSlotConfig(SlotConfigText(program), "x", read);
  RC_ASSERT(read.BodyLines == program.BodyLines);
  RC_ASSERT(read.TableLines == program.TableLines);
  RC_ASSERT(read.LoadY == program.LoadY);
  const RunTotals totals{*rc::gen::arbitrary<std::int32_t>(), *single, *single};
  const RunTotals back = ReadProgramStatus(ProgramStatusText(totals), "x");
  RC_ASSERT(back.ProgramTime == totals.ProgramTime);
  RC_ASSERT(back.MoveLength == totals.MoveLength && back.ProfileLength == totals.ProfileLength);
  Batch batch;
  batch.PartsPerSheet = *rc::gen::arbitrary<std::int32_t>();
  batch.SheetsToGo = *rc::gen::arbitrary<std::int32_t>();
  const Batch again = ReadBatch(BatchText(batch), "x");
  RC_ASSERT(again.PartsPerSheet == batch.PartsPerSheet && again.SheetsToGo == batch.SheetsToGo);
}

RC_GTEST_PROP(SlotTexts, AnyTextIsReadOrIsAFaultThatNamesTheFile, (const std::string& text)) {
  ActiveProgram program;
  for (const auto& fault :
       {tests::FaultOf([&] { ReadSlotConfig(text, "f", program); }),
        tests::FaultOf([&] { static_cast<void>(ReadBatch(text, "f")); }),
        tests::FaultOf([&] { static_cast<void>(ReadProgramStatus(text, "f")); })}) {
    RC_ASSERT(fault.empty() || fault.substr(0, 3) == "f: ");
  }
}

}  // namespace
}  // namespace torvane::core

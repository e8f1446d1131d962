#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "Bench.h"

namespace torvane::supervision {

using namespace tests;
namespace {

class ActiveStoreTest : public ::testing::Test, public Bench {
 protected:
  ActiveStoreTest() { System.Link.TableFillLines = 20; }
};

const Lines NoBatch = {"VR(82)=0", "VR(83)=0", "VR(84)=0", "VR(85)=0"};

TEST(ProgramCaption, NamesTheProgramAndItsKey) {
  EXPECT_EQ(ProgramCaption("", 1), "PROGRAM 1   F10");
  EXPECT_EQ(ProgramCaption("", 2), "PROGRAM 2   F11");
  EXPECT_EQ(ProgramCaption("BRACKET", 1), "BRACKET   F10");
  EXPECT_EQ(ProgramCaption("BRACKET", 2), "BRACKET   F11");
}

TEST_F(ActiveStoreTest, BothSlotsShareOneCountOfTableLines) {
  PutSlot(1, "ONE", 12);
  PutSlot(2, "TWO", 40);
  System.ActiveSlot = 2;
  Store.LoadActivePrograms();
  EXPECT_EQ(
      Sent(),
      Join({Table(1, 1, 12), Table(2, 13, 20), {"VR(91)=2", "VR(90)=0", "VR(87)=125.50"}, NoBatch}))
      << "slot 2 goes on with the count of slot 1";
  EXPECT_EQ(System.TableSent, 20);
}

TEST_F(ActiveStoreTest, AFullFirstSlotLeavesNothingToSendForTheSecond) {
  PutSlot(1, "ONE", 40);
  PutSlot(2, "TWO", 40);
  System.ActiveSlot = 2;
  Store.LoadActivePrograms();
  EXPECT_EQ(Sent(), Join({Table(1, 1, 20), {"VR(91)=2", "VR(90)=0", "VR(87)=125.50"}, NoBatch}));
}

TEST_F(ActiveStoreTest, WithOnlyTheSecondSlotItsRecordsGoOutFromTheFirst) {
  PutSlot(2, "TWO", 6);
  System.ActiveSlot = 2;
  Store.LoadActivePrograms();
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_EQ(Sent(), Join({Table(2, 1, 6), {"VR(91)=2", "VR(90)=0", "VR(87)=125.50"}, NoBatch}));
}

TEST_F(ActiveStoreTest, RebuildsASlotFromItsFiles) {
  PutSlot(1, "ONE", 3);
  Temp.Put("Actvprg1.sts", "0\r\n1200.5\r\n345.25\r\n******\r\n");
  Temp.Put("Actvprg1.btc", " 2\r\n 20\r\n 10\r\n 4\r\n 6\r\n******\r\n");
  Store.LoadActivePrograms();
  const auto& program = System.Programs[1];
  EXPECT_TRUE(program.Selected);
  EXPECT_EQ(program.ProgramName, "ONE");
  EXPECT_EQ(program.DirectoryName, "SHOP");
  EXPECT_EQ(program.SourcePath, "C:\\Programs\\SHOP\\ONE");
  EXPECT_EQ(program.Marker, "!");
  EXPECT_EQ(program.Note, "");
  EXPECT_EQ(program.Material, "Mild steel");
  EXPECT_EQ(program.SheetX, 1000);
  EXPECT_EQ(program.SheetY, 500);
  EXPECT_EQ(program.Clamps, (std::array<float, 4>{10, 20, 30, 40}));
  EXPECT_EQ(program.KerfWidth, 0.2F);
  EXPECT_EQ(program.BodyLines, 2);
  EXPECT_EQ(program.TableLines, 3);
  EXPECT_EQ(program.DrawRecords, 3);
  EXPECT_EQ(program.KerfRecords, 4);
  EXPECT_TRUE(program.Imperial);
  EXPECT_EQ(program.LoadY, 125.5F);
  EXPECT_EQ(program.Totals.MoveLength, 1200.5F);
  EXPECT_EQ(program.BatchCounters.SheetsToGo, 6);
  EXPECT_EQ(Sent(), Join({Table(1, 1, 3),
                          {"VR(91)=1", "VR(90)=0", "VR(87)=125.50", "VR(82)=2", "VR(83)=20",
                           "VR(84)=10", "VR(85)=4"}}));
}

TEST_F(ActiveStoreTest, ShowsCaptionsPlotsAndTheButtonUnderItsGuard) {
  PutSlot(2, "TWO", 1);
  System.ActiveSlot = 2;
  System.State.RunSeconds = 12;
  bool guarded = false;
  ProgramScreens.OnPress = [&](core::Slot slot) {
    guarded = Store.ProgramChangeGuard();
    Change.ChangeActiveProgram(slot);
  };
  Store.LoadActivePrograms();
  Events shown;
  for (const auto& event : Happened()) {
    if (event[0] != '>') shown.push_back(event);
  }
  EXPECT_EQ(shown,
            (Events{"busy", "plot 1", "caption 1 PROGRAM 1   F10", "caption 1 PROGRAM 1   F10",
                    "plot 2", "caption 2 TWO   F11", "press 2", "idle"}));
  EXPECT_TRUE(guarded) << "the button's own change of program returns at once";
  EXPECT_FALSE(Store.ProgramChangeGuard());
  EXPECT_EQ(System.State.RunSeconds, 0);
  EXPECT_EQ(System.State.RunningBlockShown, -1);
  EXPECT_EQ(System.State.RunningSlotShown, -1);
  EXPECT_EQ(System.Directories.ProgramDirectoryName, "SHOP");
}

TEST_F(ActiveStoreTest, ASlotThatLacksAFileIsClearedWithWhatRemains) {
  PutSlot(1, "ONE", 2);
  PutSlot(2, "TWO", 2);
  Temp.Put("Actvprg2.cnv", "x");
  Files.DeleteFile("C:\\Actvprg2.krw");
  Store.LoadActivePrograms();
  EXPECT_TRUE(System.Programs[1].Selected);
  EXPECT_EQ(SlotFiles(1).size(), 6U);
  EXPECT_FALSE(System.Programs[2].Selected);
  EXPECT_EQ(SlotFiles(2), std::vector<std::string>{});
}

TEST_F(ActiveStoreTest, ATextInPlaceOfACountEmptiesTheWholeStore) {
  PutSlot(1, "ONE", 2);
  PutSlot(2, "TWO", 2);
  System.ActiveSlot = 2;
  Temp.Put("Actvprg2.cfg", "TWO\r\nSHOP\r\nC:\\X\r\nMANY\r\n2\r\n0\r\n******\r\n");
  Store.LoadActivePrograms();
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_FALSE(System.Programs[2].Selected);
  EXPECT_EQ(SlotFiles(1), std::vector<std::string>{});
  EXPECT_EQ(SlotFiles(2), std::vector<std::string>{});
  EXPECT_EQ(System.ActiveSlot, 1);
  EXPECT_EQ(Sent(), Join({Table(1, 1, 2), {"VR(91)=1", "VR(87)=77.25"}, NoBatch}));
  const auto happened = Happened();
  EXPECT_EQ(happened.back(), "idle");
  for (const auto& event : happened) EXPECT_NE(event.rfind("warning", 0), 0U) << event;
}

TEST_F(ActiveStoreTest, ADamagedRecordFileEmptiesTheWholeStore) {
  for (const std::string extension : {"drw", "krw"}) {
    for (const std::string& bytes : {std::string("short"), std::string(516, '\0'), std::string()}) {
      PutSlot(1, "ONE", 2);
      PutSlot(2, "TWO", 2);
      Temp.Put("Actvprg1." + extension, bytes);
      Store.LoadActivePrograms();
      EXPECT_FALSE(System.Programs[1].Selected);
      EXPECT_FALSE(System.Programs[2].Selected);
      EXPECT_EQ(SlotFiles(2), std::vector<std::string>{});
    }
  }
}

TEST_F(ActiveStoreTest, ATableThatEndsEarlyEmptiesTheWholeStore) {
  PutSlot(1, "ONE", 5);
  Temp.Put("Actvprg1.tbl", Padded("TABLE(1,1)"));
  Store.LoadActivePrograms();
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_EQ(SlotFiles(1), std::vector<std::string>{});
}

TEST_F(ActiveStoreTest, AFileOfAnotherSizeThanTheCountsSayEmptiesTheWholeStore) {
  for (const std::string extension : {"rnd", "drw", "krw", "tbl"}) {
    for (const bool longer : {false, true}) {
      PutSlot(1, "ONE", 30);
      PutSlot(2, "TWO", 30);
      const auto name = Name(1, extension);
      std::string bytes = Temp.Get(name);
      bytes.resize(longer ? bytes.size() + 80 : bytes.size() - 1, ' ');
      Temp.Put(name, bytes);
      Store.LoadActivePrograms();
      EXPECT_FALSE(System.Programs[1].Selected) << extension << longer;
      EXPECT_FALSE(System.Programs[2].Selected);
      EXPECT_EQ(SlotFiles(1), std::vector<std::string>{});
    }
  }
}

TEST_F(ActiveStoreTest, ALineThatIsNoTableLineEmptiesTheStoreBeforeAnythingOfItGoesOut) {
  PutSlot(1, "ONE", 30);
  std::string table = Temp.Get("Actvprg1.tbl");
  table.replace(29 * 80, 80, Padded("VR(48)=5"));
  Temp.Put("Actvprg1.tbl", table);
  Store.LoadActivePrograms();
  EXPECT_FALSE(System.Programs[1].Selected);
  EXPECT_EQ(Sent(), Join({{"VR(91)=1", "VR(87)=77.25"}, NoBatch}));
}

TEST_F(ActiveStoreTest, AFileWithoutItsEndMarkOrWithANameThatLeadsElsewhereEmptiesTheStore) {
  const std::pair<const char*, const char*> damages[] = {
      {"cfg", "ONE\r\nSHOP\r\nC:\\X\r\n2\r\n3\r\n0\r\n"},
      {"cfg", "ONE\r\n..\r\nC:\\X\r\n2\r\n3\r\n0\r\n******\r\n"},
      {"cfg", "..\\ONE\r\nSHOP\r\nC:\\X\r\n2\r\n3\r\n0\r\n******\r\n"},
      {"sts", "0\r\n1\r\n2\r\n"},
      {"btc", "1\r\n2\r\n3\r\n4\r\n5\r\n"},
  };
  for (const auto& [extension, text] : damages) {
    PutSlot(1, "ONE", 3);
    Temp.Put(Name(1, extension), text);
    Store.LoadActivePrograms();
    EXPECT_FALSE(System.Programs[1].Selected) << extension;
    EXPECT_EQ(SlotFiles(1), std::vector<std::string>{});
  }
}

TEST_F(ActiveStoreTest, ToolOffsetsGoOutOnlyOnAMachineThatHasThem) {
  System.Machine.MachineVariant = 1;
  System.ActiveStation.OffsetX = 12.5F;
  Store.LoadActivePrograms();
  EXPECT_EQ(Sent(), Join({{"VR(91)=1", "VR(90)=0", "VR(87)=77.25", "M848=12.5", "M849=0", "M850=0"},
                          NoBatch}));
}

TEST_F(ActiveStoreTest, AnActiveSlotThatIsNoneBecomesTheFirst) {
  System.ActiveSlot = 7;
  Store.LoadActivePrograms();
  EXPECT_EQ(System.ActiveSlot, 1);
}

TEST_F(ActiveStoreTest, OfflineTheStoreIsRebuiltAndNothingGoesOut) {
  System.Link.TrioLinkEnabled = false;
  PutSlot(1, "ONE", 2);
  Store.LoadActivePrograms();
  EXPECT_TRUE(System.Programs[1].Selected);
  EXPECT_EQ(Sent(), Lines{});
  EXPECT_EQ(System.TableSent, 0);
}

TEST_F(ActiveStoreTest, ClearSlotEmptiesRecordFilesPlotAndCaption) {
  Select(2, "TWO", 4);
  System.Programs[2].BatchCounters.PartsRequired = 9;
  System.Programs[2].Marker = "?";
  System.State.RunSeconds = 9;
  Temp.Put("Actvprg2.cnv", "x");
  Temp.Put("Actvprg1.cnv", "x");
  Store.ClearSlot(2);
  const auto& program = System.Programs[2];
  EXPECT_FALSE(program.Selected);
  EXPECT_EQ(program.ProgramName, "");
  EXPECT_EQ(program.Marker, "!");
  EXPECT_EQ(program.LoadY, 77.25F) << "the machine's own load position";
  EXPECT_EQ(program.TableLines, 0);
  EXPECT_EQ(program.BatchCounters.PartsRequired, 0);
  EXPECT_EQ(SlotFiles(2), std::vector<std::string>{});
  EXPECT_EQ(SlotFiles(1), std::vector<std::string>{"Actvprg1.cnv"});
  EXPECT_EQ(System.State.RunSeconds, 0);
  EXPECT_EQ(Happened(), (Events{"plot 2", "caption 2 PROGRAM 2   F11"}));
}

RC_GTEST_PROP(ActiveStore, DamagedFilesGiveAWholeStoreOrAnEmptyOne, ()) {
  static const std::vector<std::string> extensions = {"cfg", "rnd", "drw", "krw",
                                                      "tbl", "lsr", "sts", "btc"};
  Bench bench;
  bench.System.LaserNames = {"HEAD"};
  bench.PutSlot(1, "ONE", 3);
  bench.PutSlot(2, "TWO", 3);
  const auto name = SlotMaker::Name(*rc::gen::inRange(1, 3), *rc::gen::elementOf(extensions));
  std::string bytes = bench.Temp.Has(name) ? bench.Temp.Get(name) : std::string("1\r\n2\r\n3\r\n");
  for (int change = *rc::gen::inRange(0, 6); change > 0 && !bytes.empty(); --change) {
    bytes[*rc::gen::inRange<std::size_t>(0, bytes.size())] = *rc::gen::arbitrary<char>();
  }
  bytes.resize(*rc::gen::inRange<std::size_t>(0, bytes.size() + 1));
  bench.Temp.Put(name, bytes);
  bench.Store.LoadActivePrograms();
  const bool first = bench.System.Programs[1].Selected;
  RC_ASSERT(first == bench.System.Programs[2].Selected);
  RC_ASSERT(bench.SlotFiles(1).empty() == !first);
  RC_ASSERT(bench.SlotFiles(2).empty() == !first);
  RC_ASSERT(!bench.Sent().empty());
  // Whatever was taken over can be shown.
  for (int block = -1; block < 4; ++block) (void)bench.Poll.Listing(1, block);
}

}  // namespace
}  // namespace torvane::supervision

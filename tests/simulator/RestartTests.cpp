// The restart table, the blinking lamp and the start line, with and without the slot's files.
#include <map>
#include <memory>
#include <span>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "ReadOnlyFiles.h"
#include "RunRig.h"

namespace torvane::simulator {

using namespace tests;
namespace {

/// A run of eight moves, stopped in the fourth.
void StopInTheFourth(RunRig& rig) {
  for (int i = 1; i <= 8; ++i) rig.Move(100 * i, 0);
  rig.End();
  rig.Select();
  rig.Run.CycleStart();
  rig.Run.Advance(0.7);
  rig.Run.Stop();
  ASSERT_EQ(rig.Vr(Vr::RunningLine), 4);
  rig.Events.clear();
}

TEST(Restart, TheLampBlinksWhileTheRestartTableIsInForce) {
  RunRig rig;
  StopInTheFourth(rig);
  EXPECT_EQ(rig.Send("TABLE (9,-999)"), ">>");
  EXPECT_EQ(rig.Send("VR(91)=3"), ">>");
  EXPECT_EQ(rig.Run.Mode(), MachineMode::RestartWait);
  int changes = 0;
  bool last = rig.Bit(StatusBit::RestartReady);
  for (int i = 0; i < 100; ++i) {
    rig.Run.Advance(0.1);
    const bool lamp = rig.Bit(StatusBit::RestartReady);
    changes += lamp != last ? 1 : 0;
    last = lamp;
    EXPECT_FALSE(rig.Running());
  }
  EXPECT_NEAR(changes, 20, 1);
}

TEST(Restart, TheLampGoesOnBlinkingUntilTheStartLineHasCome) {
  RunRig rig;
  StopInTheFourth(rig);
  rig.Send("VR(91)=3");
  rig.Run.CycleStart();
  bool on = false;
  bool off = false;
  for (int i = 0; i < 20; ++i) {
    rig.Run.Advance(0.1);
    EXPECT_TRUE(rig.Running());
    (rig.Bit(StatusBit::RestartReady) ? on : off) = true;
  }
  EXPECT_TRUE(on && off) << "a front end that looks now and then sees it go on and out";
  rig.Send("VR(91)=1");
  EXPECT_EQ(rig.Send("B1R"), ">>");
  rig.Run.Advance(0.1);
  EXPECT_FALSE(rig.Bit(StatusBit::RestartReady));
}

TEST(Restart, WithoutFilesTheLineThatWasStoppedIsRunAgain) {
  RunRig rig;
  StopInTheFourth(rig);
  rig.Send("VR(91)=3");
  rig.Run.CycleStart();
  rig.Send("VR(91)=1");
  rig.Send("B1R");
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 4);
  rig.Run.Advance(10);
  EXPECT_EQ(rig.X(), 800);
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 9);
}

TEST(Restart, CancelPutsTheSlotsTableInForceAgain) {
  RunRig rig;
  StopInTheFourth(rig);
  rig.Send("VR(91)=3");
  rig.Send("VR(91)=1");
  EXPECT_EQ(rig.Run.Mode(), MachineMode::Idle);
  rig.Run.Advance(3);
  EXPECT_FALSE(rig.Bit(StatusBit::RestartReady));
  rig.Run.CycleStart();
  EXPECT_EQ(rig.Vr(Vr::RunningLine), 1) << "the program itself runs, from its beginning";
}

TEST(Restart, AStartLineOutOfPlaceIsAFault) {
  RunRig rig;
  EXPECT_EQ(rig.Send("B1R"), "%\r\n>>");
  StopInTheFourth(rig);
  rig.Send("VR(91)=3");
  EXPECT_EQ(rig.Send("B1R"), "%\r\n>>") << "before the cycle start";
  rig.Run.CycleStart();
  for (const char* bad : {"B3R", "BR", "B1", "B1.R", "B1.5", "B1.5RR", "B12R", "B1 .5 X"}) {
    EXPECT_EQ(rig.Send(bad), "%\r\n>>") << bad;
  }
  EXPECT_EQ(rig.Send("b1.00123r"), ">>");
}

TEST(Restart, ManualActionsAreRefusedWhileItWaits) {
  RunRig rig;
  StopInTheFourth(rig);
  rig.Send("VR(91)=3");
  rig.Send("VR(48)=15");
  EXPECT_EQ(rig.Count(EventKind::ActionRefused), 1);
}

TEST(Restart, StopDuringTheRestartGoesBackToWaiting) {
  RunRig rig;
  StopInTheFourth(rig);
  rig.Send("VR(91)=3");
  rig.Run.CycleStart();
  rig.Run.Stop();
  EXPECT_FALSE(rig.Running());
  EXPECT_EQ(rig.Run.Mode(), MachineMode::RestartWait);
}

TEST(Restart, TheEndMarkOfTheRestartTableLeavesTheProgramAlone) {
  // The mark stands at the count of lines sent, which may fall into the ring itself.
  RunRig rig;
  StopInTheFourth(rig);
  EXPECT_EQ(rig.Send("TABLE (514,-999)"), ">>");
  rig.Run.CycleStart();
  rig.Run.Advance(10);
  EXPECT_EQ(rig.X(), 800);
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
}

TEST(Restart, AMarkInTheRingIsNoRowWhereverItStands) {
  for (const int index : {500, 503, 556, 563, 700}) {
    RunRig rig;
    StopInTheFourth(rig);
    rig.Send("TABLE (" + std::to_string(index) + ",-999)");
    rig.Run.CycleStart();
    rig.Run.Advance(10);
    EXPECT_EQ(rig.X(), 800) << index;
    EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1) << index;
  }
}

TEST(Restart, AnEndRowWithoutABlankIsARowOfTheProgram) {
  RunRig rig;
  StopInTheFourth(rig);
  rig.Send("TABLE(500,-999)");
  rig.Run.CycleStart();
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1) << "a program of nothing but its end";
  EXPECT_NEAR(rig.X(), 350, 1e-9);
}

TEST(Restart, AMarkOutsideTheTableIsRefused) {
  RunRig rig;
  EXPECT_EQ(rig.Send("TABLE (65536,-999)"), "%\r\n>>");
  EXPECT_EQ(rig.Send("TABLE (-1,-999)"), "%\r\n>>");
  EXPECT_EQ(rig.Send("TABLE (65535,-999)"), ">>");
}

// ---- with the files of the slot ----

/// Eight blocks N10 to N80, each a cut of 100 mm along X at 10 mm/s.
class RestartWithFiles : public ::testing::Test {
 protected:
  RestartWithFiles() {
    std::string program;
    std::vector<partprogram::DrawRecord> records(1);
    std::string table;
    for (int i = 1; i <= 8; ++i) {
      program += Padded("N" + std::to_string(i * 10) + " G01 X" + std::to_string(i * 100));
      partprogram::DrawRecord record;
      record.Code = partprogram::RecordCode::LineProfile;
      record.BlockNumber = static_cast<std::int16_t>(i);
      record.RecordIndex = static_cast<std::int16_t>(i + 1);
      record.TableLine = static_cast<std::int16_t>(i);
      record.StartPoint.X = static_cast<float>(100 * (i - 1));
      record.EndPoint.X = static_cast<float>(100 * i);
      records.push_back(record);
      table += Padded("TABLE(" + std::to_string(493 + 7 * i) + "," + RowOf(i) + ")");
    }
    Files.Put("R\\Actvprg1.rnd", program);
    Files.Put("R\\Actvprg1.drw", EncodeAll(records));
    Files.Put("R\\Actvprg1.krw", EncodeAll(records));
    Files.Put("R\\Actvprg1.tbl", table);
    MachineOptions options;
    options.RootDirectory = "R\\";
    options.Files = &Files;
    Rig = std::make_unique<RunRig>(options);
    for (int i = 1; i <= 8; ++i) Rig->Row(RowOf(i));
    Rig->End();
    Rig->Select();
    Rig->Run.CycleStart();
    Rig->Run.Advance(35);
    Rig->Run.Stop();
    Rig->Events.clear();
  }

  static std::string Padded(std::string line) {
    line.resize(80, ' ');
    return line;
  }
  static std::string RowOf(int i) { return "1," + std::to_string(100 * (i - 1)) + ",0,0,0,600,0"; }

  void Start(const std::string& text, const std::string& line) {
    Files.Put("R\\Restart.tbx", text);
    Rig->Send("VR(91)=3");
    Rig->Run.CycleStart();
    Rig->Run.Advance(2);
    Rig->Send("VR(91)=1");
    EXPECT_EQ(Rig->Send(line), ">>");
  }

  ReadOnlyFiles Files;
  std::unique_ptr<RunRig> Rig;
};

TEST_F(RestartWithFiles, TheStoppedRunStandsInTheFourthCut) {
  EXPECT_EQ(Rig->Vr(Vr::RunningLine), 4);
  EXPECT_NEAR(Rig->X(), 350, 1e-9);
}

TEST_F(RestartWithFiles, OneWayWithTheBeamOffLeadsToTheRestartPosition) {
  Start("M100\r\nG00 X100 Y0 G40\r\n P101=-999\r\nTABLE (9,-999)\r\n", "B1.00020R");
  EXPECT_NEAR(Rig->X(), 350, 1e-9) << "it stands until the start line has come";
  EXPECT_EQ(Rig->Vr(Vr::RunningLine), 2);
  EXPECT_FALSE(Rig->Bit(StatusBit::Beam));
  Rig->Run.Advance(0.5);
  EXPECT_NEAR(Rig->X(), 100, 1e-6);
  Rig->Run.Advance(5);
  EXPECT_NEAR(Rig->X(), 150, 1e-6);
  EXPECT_TRUE(Rig->Bit(StatusBit::Beam));
  Rig->Run.Advance(1000);
  EXPECT_EQ(Rig->X(), 800);
  EXPECT_EQ(Rig->Count(EventKind::CycleFinished), 1);
}

TEST_F(RestartWithFiles, WithoutABlockNumberThePositionTellsTheBlock) {
  Start("G00 X500 Y0 G40\r\n", "B1R");
  EXPECT_EQ(Rig->Vr(Vr::RunningLine), 6);
}

TEST_F(RestartWithFiles, ASplitBlockIsCutFromItsSplitPointOn) {
  // The number is that of the block behind the split one.
  Start("G00 X240 Y0 G40\r\nM04\r\nG01 X300.00 Y0.00\r\n", "B1.00040R");
  EXPECT_EQ(Rig->Vr(Vr::RunningLine), 3);
  Rig->Run.Advance(110 / 500.0);
  EXPECT_NEAR(Rig->X(), 240, 1e-6);
  Rig->Run.Advance(1);
  EXPECT_NEAR(Rig->X(), 250, 1e-6);
  EXPECT_TRUE(Rig->Bit(StatusBit::Beam));
  Rig->Run.Advance(6);
  EXPECT_NEAR(Rig->X(), 310, 1e-6);
}

TEST_F(RestartWithFiles, ABlockThatTheProgramHasNotIsReported) {
  Start("G00 X100 Y0 G40\r\n", "B1.00123R");
  EXPECT_FALSE(Rig->Running());
  EXPECT_TRUE(Rig->Message(LogicBit::RestartUnknown));
  EXPECT_EQ(Rig->Count(EventKind::RestartUnknown), 1);
}

TEST_F(RestartWithFiles, LinesThatTheRingNoLongerHoldsComeFromTheFile) {
  // Thirty more rows go over the whole program; only then is it restarted at its second block.
  Rig->Events.clear();
  for (int i = 0; i < 21; ++i) Rig->Row("1,0,0,0,0,600,0");
  Start("G00 X100 Y0 G40\r\n", "B1.00020R");
  Rig->Run.Advance(5.5);
  EXPECT_NEAR(Rig->X(), 150, 1e-6);
  EXPECT_EQ(Rig->Vr(Vr::RunningLine), 2);
  EXPECT_EQ(Rig->Count(EventKind::TableIncomplete), 0);
}

TEST_F(RestartWithFiles, ALineNotYetSentIsWaitedForAtItsNumber) {
  partprogram::DrawRecord record;
  std::vector<partprogram::DrawRecord> records(1);
  for (int i = 1; i <= 60; ++i) {
    record.Code = partprogram::RecordCode::LineProfile;
    record.BlockNumber = record.TableLine = static_cast<std::int16_t>(i);
    record.RecordIndex = static_cast<std::int16_t>(i + 1);
    record.StartPoint.X = static_cast<float>(100 * (i - 1));
    record.EndPoint.X = static_cast<float>(100 * i);
    records.push_back(record);
  }
  Files.Put("R\\Actvprg1.drw", EncodeAll(records));
  Files.Put("R\\Actvprg1.krw", EncodeAll(records));
  Rig->Begin();
  for (int i = 1; i <= 20; ++i) Rig->Row(RowOf(i));
  Start("G00 X4900 Y0 G40\r\n", "B1R");
  Rig->Run.Advance(10);
  EXPECT_EQ(Rig->Vr(Vr::RunningLine), 50) << "so that the front end sends up to there";
  EXPECT_TRUE(Rig->Running());
  for (int i = 21; i <= 60; ++i) Rig->Row(RowOf(i));
  Rig->End();
  Rig->Run.Advance(5 + 4550 / 500.0);
  EXPECT_NEAR(Rig->X(), 4950, 1e-6);
  Rig->Run.Advance(1000);
  EXPECT_EQ(Rig->X(), 6000);
  EXPECT_FALSE(Rig->Running());
}

TEST_F(RestartWithFiles, TheNumberOfABlockIsReadWithoutItsComment) {
  std::string program;
  for (int i = 1; i <= 8; ++i) {
    program += Padded("N" + std::to_string(i * 10) + " G01 X" + std::to_string(i * 100) +
                      " ! IN N" + std::to_string(90 - i * 10));
  }
  Files.Put("R\\Actvprg1.rnd", program);
  Start("G00 X500 Y0 G40\r\n", "B1.0006R");
  EXPECT_EQ(Rig->Vr(Vr::RunningLine), 6);
}

RC_GTEST_PROP(RestartProperty, AnyFilesAndAnyTextLeadSomewhereOrNowhere, ()) {
  const auto bytes = [] { return *rc::gen::container<std::string>(rc::gen::arbitrary<char>()); };
  ReadOnlyFiles files;
  std::vector<partprogram::DrawRecord> records(1);
  const int count = *rc::gen::inRange(0, 6);
  for (int i = 0; i < count; ++i) {
    std::array<char, partprogram::DrawRecordSize> raw{};
    for (auto& c : raw) c = *rc::gen::arbitrary<char>();
    auto record = partprogram::DecodeRecord(raw);
    if (*rc::gen::arbitrary<bool>()) record.Code = partprogram::RecordCode::LineProfile;
    if (*rc::gen::arbitrary<bool>()) {
      record.StartPoint = {10, 20, 0};
      record.EndPoint = {40, 20, 0};
      record.RecordIndex = static_cast<std::int16_t>(i + 2);
    }
    records.push_back(record);
  }
  files.Put("R\\Actvprg1.drw", EncodeAll(records));
  files.Put("R\\Actvprg1.krw", EncodeAll(records));
  files.Put("R\\Actvprg1.rnd", bytes());
  files.Put("R\\Actvprg1.tbl", bytes());
  const bool sound = *rc::gen::arbitrary<bool>();
  files.Put("R\\Restart.tbx", sound ? "G00 X20 Y20\r\nG01 X40.00 Y20.00\r\n" : bytes());
  MachineOptions options;
  options.RootDirectory = "R\\";
  options.Files = &files;
  RunRig rig(options);
  rig.Send("TABLE (" + std::to_string(*rc::gen::inRange(0, 70000)) + ",-999)");
  rig.Send("VR(91)=3");
  rig.Run.CycleStart();
  rig.Run.Advance(2);
  rig.Send("VR(91)=1");
  rig.Send("B1" + *rc::gen::element<std::string>("", ".0001", ".32767", ".5") + "R");
  rig.Run.Advance(1000);
  rig.Run.Stop();
  RC_ASSERT(!rig.Running());
}

TEST_F(RestartWithFiles, DamagedRestartTextsLeadNowhere) {
  for (const char* text : {"", "M100", "G00", "G00 X Y", "G00 X1", "X1 Y1", "\xff\xfe"}) {
    Files.Put("R\\Restart.tbx", text);
    EXPECT_NO_THROW(static_cast<void>(ReadRestartText(Files, "R\\")));
  }
  EXPECT_FALSE(ReadRestartText(Files, "S\\"));
}

}  // namespace
}  // namespace torvane::simulator

// Machine.dat and Profiler.cfg.
#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/MachineFiles.h"
#include "support/Faults.h"

namespace torvane::core {
namespace {

const std::string MachineText =
    "Name : Laser 3015\r\nType : 21\r\nY Direction : 1\r\nOption 1 : 7\r\nOption 2 : yes\r\n"
    "Option 3 : no\r\nX Load Position : 125.5\r\nY Load : -12.3\r\nXMin : -10\r\nXMax : 3060\r\n"
    "YMin : -5\r\nYMax : 1560\r\nV1 : 1.5\r\nV2 : 2.5\r\nV3 : 3.5\r\nClamps : 4\r\nC1 : 90\r\n"
    "C2 : 45\r\n";

MachineData ReadMachine(std::string_view text, bool imperial = false) {
  MachineData machine;
  ReadMachineFile(text, "Machine.dat", imperial, machine);
  return machine;
}

MachineData ReadProfiler(std::string_view text) {
  MachineData machine;
  ReadProfilerFile(text, machine);
  return machine;
}

/// Profiler.cfg with one line in its place and plain values elsewhere.
MachineData ReadProfilerLine(int line, const std::string& value) {
  std::string text;
  for (int i = 1; i <= 7; ++i) text += (i == line ? value : "1") + "\r\n";
  return ReadProfiler(text);
}

TEST(MachineFile, FillsEveryFieldInItsOrder) {
  const MachineData machine = ReadMachine(MachineText);
  EXPECT_EQ(machine.MachineName, "LASER 3015");
  EXPECT_EQ(machine.MachineType, 21);
  EXPECT_EQ(machine.YDirection, 1);
  EXPECT_EQ(machine.MachineOption1, 7);
  EXPECT_TRUE(machine.MachineOption2);
  EXPECT_FALSE(machine.MachineOption3);
  EXPECT_EQ(machine.LoadPositionX, 125.5F);
  EXPECT_EQ(machine.LoadPositionY, -12.3F);
  EXPECT_EQ(machine.TravelMinX, -10);
  EXPECT_EQ(machine.TravelMaxX, 3060);
  EXPECT_EQ(machine.TravelMinY, -5);
  EXPECT_EQ(machine.TravelMaxY, 1560);
  EXPECT_EQ(machine.MachineValue1, 1.5F);
  EXPECT_EQ(machine.MachineValue2, 2.5F);
  EXPECT_EQ(machine.MachineValue3, 3.5F);
  EXPECT_EQ(machine.ClampCount, 4);
  EXPECT_EQ(machine.ClampValue1, 90);
  EXPECT_EQ(machine.ClampValue2, 45);
}

TEST(MachineFile, TheVariantIsTheLastDigitOfTheType) {
  EXPECT_EQ(ReadMachine(MachineText).MachineVariant, 1);
  std::string text = MachineText;
  text.replace(text.find("Type : 21"), 9, "Type : 20");
  EXPECT_EQ(ReadMachine(text).MachineVariant, 0);
}

TEST(MachineFile, OnlyTheTextBehindTheFirstColonCounts) {
  std::string text = MachineText;
  text.replace(text.find("Name : Laser 3015"), 17, "a: B:12 ");
  EXPECT_EQ(ReadMachine(text).MachineName, "B:12");
}

TEST(MachineFile, AWrongValueGivesZeroAndAnIntegerIsCutTowardZero) {
  std::string text = MachineText;
  text.replace(text.find("125.5"), 5, "wide");
  text.replace(text.find("Clamps : 4"), 10, "Clamps : 3.9");
  const MachineData machine = ReadMachine(text);
  EXPECT_EQ(machine.LoadPositionX, 0);
  EXPECT_EQ(machine.ClampCount, 3);
}

TEST(MachineFile, InInchesEveryLengthIsConvertedAndNothingElse) {
  const MachineData machine = ReadMachine(MachineText, true);
  EXPECT_EQ(machine.LoadPositionX, static_cast<float>(3187.7));
  EXPECT_EQ(machine.LoadPositionY, static_cast<float>(-312.42));
  EXPECT_EQ(machine.TravelMaxX, static_cast<float>(77724.0));
  EXPECT_EQ(machine.MachineValue3, static_cast<float>(88.9));
  EXPECT_EQ(machine.ClampValue2, static_cast<float>(1143.0));
  EXPECT_EQ(machine.ClampCount, 4);
  EXPECT_EQ(machine.MachineOption1, 7);
}

TEST(MachineFile, OneLineShortIsAFaultThatNamesTheFile) {
  const std::string shorter = MachineText.substr(0, MachineText.rfind("C2"));
  EXPECT_EQ(tests::FaultOf([&] { ReadMachine(shorter); }),
            "Machine.dat: ends too soon, line 18 is missing");
  EXPECT_EQ(tests::FaultOf([&] { ReadMachine(""); }),
            "Machine.dat: ends too soon, line 1 is missing");
}

TEST(MachineFile, TheDefaultsAreThoseOfAMachineWithoutProfilerFile) {
  const MachineData machine;
  EXPECT_FALSE(machine.SwapArcWords);
  EXPECT_FALSE(machine.NegateArcCentre);
  EXPECT_EQ(machine.ArcChordsPerDegree, 10);
  EXPECT_EQ(machine.CornerLimitFactor, 10.0F);
  EXPECT_EQ(machine.CornerFeedPercent, 100.0F);
  EXPECT_EQ(machine.BlendAngle, 45.0F);
  EXPECT_EQ(machine.BlendMinRadius, 0.0F);
}

TEST(ProfilerFile, FillsEveryFieldInItsOrder) {
  const MachineData machine = ReadProfiler(
      "Swap : Y\r\nNegate : maybe\r\nChords : 12\r\nLimit : 2.5\r\nFeed : 60\r\n"
      "Angle : 15\r\nRadius : 0.5\r\n");
  EXPECT_TRUE(machine.SwapArcWords);
  EXPECT_TRUE(machine.NegateArcCentre) << "a Y anywhere says yes";
  EXPECT_EQ(machine.ArcChordsPerDegree, 12);
  EXPECT_EQ(machine.CornerLimitFactor, 2.5F);
  EXPECT_EQ(machine.CornerFeedPercent, 60.0F);
  EXPECT_EQ(machine.BlendAngle, 15.0F);
  EXPECT_EQ(machine.BlendMinRadius, 0.5F);
}

TEST(ProfilerFile, ChordsBelowOneAndFeedsOfNothingAreCorrected) {
  EXPECT_EQ(ReadProfilerLine(3, "0").ArcChordsPerDegree, 10);
  EXPECT_EQ(ReadProfilerLine(3, "-5").ArcChordsPerDegree, 10);
  EXPECT_EQ(ReadProfilerLine(3, "1").ArcChordsPerDegree, 1);
  EXPECT_EQ(ReadProfilerLine(5, "0").CornerFeedPercent, 100.0F);
  EXPECT_EQ(ReadProfilerLine(5, "-1").CornerFeedPercent, 100.0F);
  EXPECT_EQ(ReadProfilerLine(5, "0.5").CornerFeedPercent, 0.5F);
}

TEST(ProfilerFile, TheBlendAngleIsTakenWithoutSignIntoOneTurn) {
  EXPECT_EQ(ReadProfilerLine(6, "-45").BlendAngle, 45.0F);
  EXPECT_EQ(ReadProfilerLine(6, "400").BlendAngle, 40.0F);
  EXPECT_EQ(ReadProfilerLine(6, "360").BlendAngle, 0.0F);
  EXPECT_EQ(ReadProfilerLine(6, "-720.5").BlendAngle, 0.5F);
}

TEST(ProfilerFile, AShorterFileLeavesTheLaterDefaults) {
  const MachineData machine = ReadProfiler("YES\r\nNO\r\n20\r\n");
  EXPECT_EQ(machine.ArcChordsPerDegree, 20);
  EXPECT_EQ(machine.CornerLimitFactor, 10.0F);
  EXPECT_EQ(machine.BlendAngle, 45.0F);
}

RC_GTEST_PROP(ProfilerFile, AnyTextLeavesValuesThePassesCanWorkWith, (const std::string& text)) {
  const MachineData machine = ReadProfiler(text);
  RC_ASSERT(machine.ArcChordsPerDegree >= 1);
  RC_ASSERT(machine.CornerFeedPercent > 0);
  RC_ASSERT(machine.BlendAngle >= 0 && machine.BlendAngle < 360);
}

RC_GTEST_PROP(ProfilerFile, AnyAngleEndsWithinOneTurn, (double angle)) {
  const float stored = ReadProfilerLine(6, std::to_string(angle)).BlendAngle;
  RC_ASSERT(stored >= 0 && stored < 360);
}

}  // namespace
}  // namespace torvane::core

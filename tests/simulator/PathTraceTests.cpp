// The path that was run, piece by piece.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "RunRig.h"
#include "support/SheetCoverage.h"
#include "support/SheetRun.h"

namespace torvane::simulator {

using namespace tests;
namespace {

using torvane::tests::CompareSheet;
using torvane::tests::Pieces;
using torvane::tests::ReadPathFile;
using torvane::tests::SheetRun;

const char* const Corner =
    "! SHEET : X300 Y200\r\nN10 G71 G90\r\nN20 G00 X20 Y30\r\nN30 G31 T2=3\r\n"
    "N40 G01 X50 Y70 F2400\r\nN50 G03 X50 Y70 I-10 J0\r\n/N60 G01 X80 Y70\r\nN70 M30\r\n";

Pieces RunInSteps(double step) {
  SheetRun sheet(Corner);
  sheet.Select();
  sheet.Machine().CycleStart();
  while (sheet.Machine().Mode() == MachineMode::Running) sheet.Machine().Advance(step);
  return sheet.AllPieces();
}

TEST(PathTrace, EveryPieceNamesItsRecordAndItsStretch) {
  const Pieces pieces = RunInSteps(0.05);
  ASSERT_EQ(pieces.size(), 4U);
  EXPECT_FALSE(pieces[0].Cut);
  EXPECT_EQ(pieces[0].To.X, 20);
  EXPECT_TRUE(pieces[1].Cut);
  EXPECT_TRUE(pieces[1].Beam);
  EXPECT_EQ(pieces[1].From.X, 20);
  EXPECT_EQ(pieces[1].To.Y, 70);
  EXPECT_EQ(pieces[1].S0, 0);
  EXPECT_NEAR(pieces[1].S1, 50, 1e-4);
  EXPECT_NEAR(pieces[2].S1, 62.8319, 1e-3);
  EXPECT_EQ(pieces[2].Place.Skip, 0);
  EXPECT_EQ(pieces[3].Place.Skip, 1);
  EXPECT_LT(pieces[1].Place.Record, pieces[2].Place.Record);
  EXPECT_EQ(pieces[1].Place.Run, 1);
}

TEST(PathTrace, ItDoesNotDependOnHowTimeIsCut) {
  const Pieces fine = RunInSteps(0.001);
  const Pieces coarse = RunInSteps(10);
  ASSERT_EQ(fine.size(), coarse.size());
  for (std::size_t i = 0; i < fine.size(); ++i) {
    EXPECT_NEAR(fine[i].S1, coarse[i].S1, 1e-6);
    EXPECT_EQ(fine[i].Place, coarse[i].Place);
  }
}

TEST(PathTrace, APieceIsToldAtAHoldAndAtAStop) {
  SheetRun sheet(Corner);
  sheet.Select();
  sheet.Machine().CycleStart();
  sheet.Machine().Advance(0.7);
  EXPECT_EQ(sheet.AllPieces().size(), 1U) << "the cut in hand has not been told";
  sheet.Machine().FeedHold();
  ASSERT_EQ(sheet.AllPieces().size(), 2U);
  const double held = sheet.AllPieces().back().S1;
  sheet.Machine().Release();
  sheet.Machine().Advance(0.1);
  sheet.Machine().Stop();
  ASSERT_EQ(sheet.AllPieces().size(), 3U);
  EXPECT_EQ(sheet.AllPieces().back().S0, held);
}

TEST(PathTrace, ABeamThatIsNotAllowedCutsNothing) {
  SheetRun sheet(Corner);
  sheet.Select();
  sheet.Machine().CycleStart();
  sheet.Machine().Advance(0.7);
  sheet.Machine().AllowBeam(false);
  sheet.RunOn();
  const auto cover = CompareSheet(RunInSteps(0.05), {sheet.AllPieces()});
  EXPECT_GT(cover.Missing(), 60);
  EXPECT_EQ(cover.Foreign(), 0);
}

TEST(PathTrace, AStopPointStopsThereToTheLastDigit) {
  for (const double along : {0.0, 0.001, 12.345, 49.999, 50.0, 1000.0}) {
    SheetRun sheet(Corner);
    sheet.Select();
    const int record = RunInSteps(0.05)[1].Place.Record;
    sheet.StopAt(record, along);
    sheet.Start();
    EXPECT_EQ(sheet.Count(EventKind::StopPointReached), 1) << along;
    EXPECT_EQ(sheet.Count(EventKind::CycleStopped), 1) << along;
    const Pieces pieces = sheet.AllPieces();
    const double reached = pieces.back().Place.Record == record ? pieces.back().S1 : 0.0;
    EXPECT_NEAR(reached, std::min(along, 50.0), 1e-4) << along;
  }
}

TEST(PathTrace, AStopPointInALeftOutRecordIsMissed) {
  SheetRun sheet(Corner);
  sheet.Select();
  sheet.Send("VR(92)=1");
  sheet.StopAt(RunInSteps(0.05)[3].Place.Record, 5);
  sheet.Start();
  EXPECT_EQ(sheet.Count(EventKind::CycleFinished), 1);
  EXPECT_EQ(sheet.Count(EventKind::StopPointMissed), 1);
}

TEST(PathTrace, WithoutRecordsTheRowsHaveNoNumber) {
  RunRig rig;
  Pieces pieces;
  rig.Run.OnPath([&](const PathPiece& piece) { pieces.push_back(piece); });
  rig.Move(10, 0);
  rig.Cut(20, 0);
  rig.End();
  rig.Run.CycleStart();
  rig.Run.Advance(60);
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_EQ(pieces[1].Place.Record, 0);
  EXPECT_EQ(pieces[1].Place.Line, 2);
}

TEST(PathTrace, ActionsOutsideACycleAreNoPath) {
  RunRig rig;
  Pieces pieces;
  rig.Run.OnPath([&](const PathPiece& piece) { pieces.push_back(piece); });
  rig.Send("VR(22)=100");
  rig.Send("VR(48)=15");
  rig.Run.Advance(60);
  EXPECT_EQ(rig.X(), 100);
  EXPECT_TRUE(pieces.empty());
}

TEST(PathTrace, TheLineOfAPieceToTheLetter) {
  PathPiece piece;
  piece.Place = {2, 31, 17, 1};
  piece.Cut = true;
  piece.From = {12.5, -3, 0};
  piece.To = {0.25, 100, 0};
  piece.S0 = 0;
  piece.S1 = 33.3333;
  piece.Beam = true;
  EXPECT_EQ(PathPieceJson(piece),
            "{\"run\":2,\"line\":31,\"record\":17,\"kind\":\"cut\",\"from\":[12.5,-3,0],"
            "\"to\":[0.25,100,0],\"s0\":0,\"s1\":33.3333,\"beam\":true,\"skip\":1}");
}

RC_GTEST_PROP(PathTraceProperty, WhatIsWrittenReadsBack, ()) {
  const auto number = [] { return *rc::gen::inRange(-9'000'000, 9'000'000) / 1000.0; };
  PathPiece piece;
  piece.Place = {*rc::gen::inRange(1, 99), *rc::gen::inRange(1, 32767), *rc::gen::inRange(0, 32767),
                 *rc::gen::inRange(0, 3)};
  piece.Cut = *rc::gen::arbitrary<bool>();
  piece.Approach = !piece.Cut && *rc::gen::arbitrary<bool>();
  piece.From = {number(), number(), number()};
  piece.To = {number(), number(), number()};
  piece.S0 = std::abs(number());
  piece.S1 = std::abs(number());
  piece.Beam = *rc::gen::arbitrary<bool>();
  const auto read = ReadPathFile(PathPieceJson(piece) + "\n" + PathPieceJson(piece).substr(0, 30));
  RC_ASSERT(read.size() == 1U);
  RC_ASSERT(PathPieceJson(read[0]) == PathPieceJson(piece));
}

TEST(SheetCoverage, SeesWhatIsMissingTwiceAndForeign) {
  const auto cut = [](int record, double from, double to) {
    PathPiece piece;
    piece.Place.Record = record;
    piece.Cut = piece.Beam = true;
    piece.S0 = from;
    piece.S1 = to;
    return piece;
  };
  const Pieces whole{cut(2, 0, 10), cut(3, 0, 10)};
  const auto cover =
      CompareSheet(whole, {{cut(2, 0, 6)}, {cut(2, 5, 9.5), cut(3, 0, 10), cut(4, 1, 3)}});
  EXPECT_NEAR(cover.Missing(), 0.5, 1e-12);
  EXPECT_NEAR(cover.Twice(2), 1, 1e-12);
  EXPECT_NEAR(cover.Foreign(), 2, 1e-12);
  EXPECT_EQ(cover.RecordsCutTwice(0.01), std::vector<int>{2});
  EXPECT_EQ(CompareSheet(whole, {whole}).Missing(), 0);
  EXPECT_EQ(CompareSheet(whole, {whole}).Twice(2), 0);
}

}  // namespace
}  // namespace torvane::simulator

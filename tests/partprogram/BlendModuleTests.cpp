// Which elements continue the one before them.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "KerfRecords.h"
#include "partprogram/BlendModule.h"
#include "partprogram/Tangent.h"

namespace torvane::partprogram {
namespace {

using namespace torvane::tests;

core::MachineData Machine(float angle, float radius = 0) {
  core::MachineData machine;
  machine.BlendAngle = angle;
  machine.BlendMinRadius = radius;
  return machine;
}

/// `Blended` of the records behind the header.
std::vector<int> Marks(const std::vector<DrawRecord>& records, const core::MachineData& machine) {
  auto kerf = Numbered(records);
  for (DrawRecord& record : kerf) record.Blended = 7;  // whatever stood there
  MarkBlends(kerf, machine);
  EXPECT_EQ(kerf.front().Blended, 7);  // the header stays
  std::vector<int> marks;
  for (std::size_t i = 1; i < kerf.size(); ++i) marks.push_back(kerf[i].Blended);
  return marks;
}

/// A line in a direction, its angle as it stands in the record.
DrawRecord Towards(float angle, std::int16_t side = 0) {
  DrawRecord line = Line({0, 0, 0}, {10, 0, 0}, side);
  line[Figure::Angle] = angle;
  return line;
}

TEST(Blend, TheFirstElementBehindAMoveHasNoPredecessor) {
  EXPECT_EQ(Marks({Towards(0), Move({0, 0, 0}, {5, 0, 0}), Towards(0), Towards(0)}, Machine(5)),
            (std::vector<int>{0, 0, 0, -1}));
}

TEST(Blend, TheRangeGoesOverTheSeamAt0Degrees) {
  EXPECT_EQ(Marks({Towards(1), Towards(359)}, Machine(5)), (std::vector<int>{0, -1}));
  EXPECT_EQ(Marks({Towards(359), Towards(1)}, Machine(5)), (std::vector<int>{0, -1}));
  EXPECT_EQ(Marks({Towards(1), Towards(350)}, Machine(5)), (std::vector<int>{0, 0}));
}

TEST(Blend, TheEdgesOfTheRangeAreInside) {
  EXPECT_EQ(Marks({Towards(90), Towards(95), Towards(90), Towards(95.5F)}, Machine(5)),
            (std::vector<int>{0, -1, -1, 0}));
}

TEST(Blend, ADwellOrAStopBetweenCollinearLinesBreaks) {
  for (const std::int16_t code :
       {RecordCode::Dwell, RecordCode::ProgramStop, RecordCode::FlipRotate,
        RecordCode::LoadPosition, RecordCode::OpenClamps, RecordCode::Reposition}) {
    EXPECT_EQ(Marks({Towards(0), Other(code), Towards(0)}, Machine(5)), (std::vector<int>{0, 0, 0}))
        << code;
  }
}

TEST(Blend, ASettingsRecordBetweenIsNoBreak) {
  for (const std::int16_t code : {RecordCode::Settings, RecordCode::CancelOffsets}) {
    EXPECT_EQ(Marks({Towards(0), Other(code), Towards(0)}, Machine(5)),
              (std::vector<int>{0, 0, -1}))
        << code;
  }
}

TEST(Blend, DifferentKerfSidesDoNotBlend) {
  EXPECT_EQ(Marks({Towards(0, 1), Towards(0, 1), Towards(0, 2), Towards(0, 0)}, Machine(5)),
            (std::vector<int>{0, -1, 0, 0}));
}

TEST(Blend, ALineThatMeetsItsArcAtATangentContinuesIt) {
  const DrawRecord arc = Arc({10, 5, 0}, 5, 270, 90);  // enters at 0 and leaves at 90 degrees
  EXPECT_EQ(Marks({Towards(0), arc, Towards(90), Towards(0)}, Machine(5)),
            (std::vector<int>{0, -1, -1, 0}));
  const DrawRecord negative = Arc({10, -5, 0}, 5, 90, -90);  // enters at 0, leaves at 270
  EXPECT_EQ(Marks({Towards(0), negative, Towards(270)}, Machine(5)), (std::vector<int>{0, -1, -1}));
  EXPECT_EQ(Marks({arc, Arc({10, 5, 0}, 5, 0, 90), Arc({10, 5, 0}, 5, 90, -90)}, Machine(5)),
            (std::vector<int>{0, -1, 0}));
}

TEST(Blend, AnArcOfSweepZeroCountsAsPositive) {
  EXPECT_EQ(Marks({Towards(90), Arc({0, 0, 0}, 5, 0, 0), Towards(90)}, Machine(5)),
            (std::vector<int>{0, -1, -1}));
}

TEST(Blend, ASmallArcIsNeverBlendedButWhatFollowsMayBe) {
  const DrawRecord arc = Arc({10, 5, 0}, 5, 270, 90);
  EXPECT_EQ(Marks({Towards(0), arc, Towards(90)}, Machine(5, 5.001F)),
            (std::vector<int>{0, 0, -1}));
  EXPECT_EQ(Marks({Towards(0), arc, Towards(90)}, Machine(5, 5)), (std::vector<int>{0, -1, -1}));
}

TEST(Blend, ASmallKerfLeavesASharpCornerUnblended) {
  auto draw = Numbered({Line({0, 0, 0}, {10, 0, 0}, 2), Line({10, 0, 0}, {10, 10, 0}, 2)});
  core::MachineData machine = Machine(5, 0.5F);
  machine.YDirection = 1;
  machine.CornerLimitFactor = 1;
  for (const double width : {0.2, 0.7}) {
    auto copy = draw;
    auto kerf = MakeKerfFile(copy, width, machine).Records;
    MarkBlends(kerf, machine);
    ASSERT_EQ(kerf.size(), 4U);
    EXPECT_EQ(kerf[2].Blended, width < 0.5 ? 0 : -1);
    EXPECT_EQ(kerf[3].Blended, -1);
  }
}

RC_GTEST_PROP(Blend, ARoundPathOfTangentsBlendsEverywhereAndATurnNowhere, ()) {
  const double turn = *rc::gen::inRange(-179, 180);
  const double start = *rc::gen::inRange(0, 360);
  const auto width = static_cast<float>(*rc::gen::inRange(0, 60));
  const auto marks = Marks({Towards(static_cast<float>(start)),
                            Towards(static_cast<float>(core::NormaliseAngle(start + turn)))},
                           Machine(width));
  RC_ASSERT((marks[1] == -1) == (std::abs(turn) <= width));
}

}  // namespace
}  // namespace torvane::partprogram

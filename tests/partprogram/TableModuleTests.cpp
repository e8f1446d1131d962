// Records as command lines of the controller.
#include <limits>

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include "KerfRecords.h"
#include "core/General.h"
#include "partprogram/FixedLines.h"
#include "partprogram/TableModule.h"

namespace torvane::partprogram {
namespace {

using namespace torvane::tests;
using ::testing::ElementsAre;

std::vector<std::string> Lines(std::vector<DrawRecord> kerf, std::int16_t slot = 1) {
  const TableResult table = MakeTables(slot, kerf);
  const auto lines = core::SplitLines(table.Text);
  EXPECT_EQ(static_cast<std::size_t>(table.Lines), lines.size());
  return {lines.begin(), lines.end()};
}

/// The one line of a record that follows a Move to (10, 20).
std::string RowOf(const DrawRecord& record) {
  return Lines(Numbered({Move({0, 0, 0}, {10, 20, 0}), record}))[1];
}

DrawRecord Settings(std::int16_t mode, const std::vector<float>& values) {
  DrawRecord record = Other(RecordCode::Settings);
  record[Mark::SettingsMode] = mode;
  std::copy(values.begin(), values.end(), record.ChangeCommon().Settings.begin());
  return record;
}

TEST(Table, AProgramWithoutMotionIsItsEndRow) {
  EXPECT_THAT(Lines(Numbered({})), ElementsAre("TABLE(500,-999)"));
  EXPECT_THAT(Lines(Numbered({}), 2), ElementsAre("TABLE(750,-999)"));
  EXPECT_THAT(Lines(Numbered({}), 7), ElementsAre("TABLE(500,-999)"));
}

TEST(Table, AMoveHoldsItsEndAndALineItsStart) {
  DrawRecord line = Line({10, 20, 0}, {30.5F, 20, 0});
  line.Blended = -1;
  line.SkipLevel = 2;
  EXPECT_THAT(Lines(Numbered({Move({0, 0, 0}, {10, 20, 0}), line})),
              ElementsAre("TABLE(500,0,10,20,0,0,2000,0)", "TABLE(507,1,10,20,0,-1,2000,2)",
                          "TABLE(514,-999)"));
}

TEST(Table, ARowBehindALineCarriesItsEnd) {
  const auto lines =
      Lines(Numbered({Line({10, 20, 0}, {30.5F, 21, 0}), Other(RecordCode::ProgramStop)}));
  EXPECT_EQ(lines[1], "TABLE(507,0,30.5,21,0,-1,2000,0)");
}

TEST(Table, AnArcIsRelativeToItsStart) {
  const auto lines = Lines(Numbered({Arc({10, 5, 0}, 5, 270, 90), Arc({10, 5, 0}, 5, 0, -90)}));
  EXPECT_EQ(lines[0], "TABLE(500,3,5,5,0,5,0,2000,0)");
  EXPECT_EQ(lines[1], "TABLE(508,2,-5,-5,-5,0,0,2000,0)");
}

TEST(Table, AnArcTakesItsTypeFromTheRoundedSweep) {
  EXPECT_EQ(Lines(Numbered({Arc({0, 0, 0}, 5, 0, -0.0004)}))[0].substr(0, 12), "TABLE(500,3,");
  EXPECT_EQ(Lines(Numbered({Arc({0, 0, 0}, 5, 0, -0.0006)}))[0].substr(0, 12), "TABLE(500,2,");
}

TEST(Table, TheCentreOfAnArcPassesThroughASingle) {
  DrawRecord arc = Arc({100.123F, 79.579F, 0}, 20.421, 90, 90);
  arc.StartPoint = {100.123F, 100, 0};
  arc.EndPoint = {79.702F, 79.579F, 0};
  EXPECT_EQ(Lines(Numbered({arc}))[0], "TABLE(500,3,-20.421,-20.421,0,-20.421,0,2000,0)");
}

TEST(Table, APositionBehindAnArcIsItsIncrement) {
  const auto lines = Lines(Numbered({Move({0, 0, 0}, {10, 0, 0}), Arc({10, 5, 0}, 5, 270, 90),
                                     Other(RecordCode::Dwell), Other(RecordCode::CancelOffsets)}));
  EXPECT_EQ(lines[2], "TABLE(515,0,5,5,0,0,2000,0)");
  EXPECT_EQ(lines[3], "TABLE(522,9,5,5,0,99,2000,0)");
}

TEST(Table, ADwellHoldsItsTimeWithTwoPlaces) {
  DrawRecord dwell = Other(RecordCode::Dwell);
  dwell[Figure::DwellTime] = 1.257F;
  EXPECT_EQ(RowOf(dwell), "TABLE(507,0,10,20,0,1.26,2000,0)");
}

TEST(Table, TheFifthNumberTellsWhatHappensAtThePoint) {
  EXPECT_EQ(RowOf(Other(RecordCode::ProgramStop)), "TABLE(507,0,10,20,0,-1,2000,0)");
  DrawRecord clamps = Other(RecordCode::OpenClamps);
  EXPECT_EQ(RowOf(clamps), "TABLE(507,0,10,20,0,-2,2000,0)");
  clamps[Mark::OpensClamps] = -1;
  EXPECT_EQ(RowOf(clamps), "TABLE(507,0,10,20,0,-3,2000,0)");
}

TEST(Table, AnyOtherRecordIsARowOf99AtTheLastPosition) {
  for (const std::int16_t code : {RecordCode::Reposition, RecordCode::FlipRotate,
                                  RecordCode::CancelOffsets, std::int16_t{999}}) {
    EXPECT_EQ(RowOf(Other(code, {77, 88, 0})), "TABLE(507,9,10,20,0,99,2000,0)") << code;
  }
}

TEST(Table, ALoadPositionShowsThreePlacesAndStaysUnrounded) {
  const auto lines = Lines(Numbered(
      {Other(RecordCode::LoadPosition, {1.23456F, 7.65432F, 0}), Other(RecordCode::ProgramStop)}));
  EXPECT_EQ(lines[0], "TABLE(500,0,1.235,7.654,0,0,0,0)");
  EXPECT_EQ(lines[1], "TABLE(507,0,1.23456,7.65432,0,-1,0,0)");
}

TEST(Table, PositionsAreRoundedToFourPlaces) {
  EXPECT_EQ(Lines(Numbered({Move({0, 0, 0}, {1.234567F, -0.00001F, 0})}))[0],
            "TABLE(500,0,1.2346,0,0,0,2000,0)");
}

TEST(Table, AFeedOfZeroKeepsTheLastFeed) {
  DrawRecord slow = Move({0, 0, 0}, {1, 1, 0});
  slow.Feed = 0;
  DrawRecord negative = slow;
  negative.Feed = -5;
  EXPECT_THAT(
      Lines(Numbered({slow, Move({0, 0, 0}, {2, 2, 0}), slow, negative})),
      ElementsAre("TABLE(500,0,1,1,0,0,0,0)", "TABLE(507,0,2,2,0,0,2000,0)",
                  "TABLE(514,0,1,1,0,0,2000,0)", "TABLE(521,0,1,1,0,0,2000,0)", "TABLE(528,-999)"));
}

TEST(Table, TheSettingsOfG30DoNotGoOut) {
  DrawRecord off = Settings(0, {1, 2, 3});
  off.SkipLevel = 1;
  EXPECT_THAT(Lines(Numbered({off, Other(RecordCode::ProgramStop)})),
              ElementsAre("TABLE(500,4,1)", "TABLE(502,0,0,0,0,-1,0,0)", "TABLE(509,-999)"));
}

TEST(Table, OtherSettingsAreTwoLinesWithoutTheSeventh) {
  const std::vector<float> values = {1.12345F, 2,  3,  4,  5,  6,  77, 8,  99, 10.12345F,
                                     11,       12, 13, 14, 15, 16, 17, 18, 19, 20};
  EXPECT_THAT(Lines(Numbered({Settings(1, values)})),
              ElementsAre("TABLE(500,5,1.1235,2,3,4,5,6)",  // the single lies above the half
                          "TABLE(507,8,10.12345,11,12,14,0)", "TABLE(513,-999)"));
}

TEST(Table, TheThirteenthSettingChoosesTheSecondLine) {
  std::vector<float> values = {1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 11, 12, 0.1F, 14, 15, 16};
  EXPECT_EQ(Lines(Numbered({Settings(2, values)}))[1], "TABLE(507,8,6.1,14,15,16,0)");
  values[12] = 0;
  EXPECT_EQ(Lines(Numbered({Settings(2, values)}))[1], "TABLE(507,8,0,11,12,14,0)");
  values[12] = -1;
  EXPECT_EQ(Lines(Numbered({Settings(2, values)}))[1], "TABLE(507,8,0,11,12,14,0)");
  values[12] = 3;
  values[9] = 0.5F;
  EXPECT_EQ(Lines(Numbered({Settings(2, values)}))[1], "TABLE(507,8,0.5,11,12,14,0)");
}

TEST(Table, ASettingThatWasNotGivenGoesOutAsTheMarker) {
  EXPECT_THAT(Lines(Numbered({Settings(1, {})})),
              ElementsAre("TABLE(500,5,-999,-999,-999,-999,-999,-999)",
                          "TABLE(507,-999,-999,-999,-999,-999,0)", "TABLE(513,-999)"));
}

TEST(Table, TheRingIsCheckedBeforeALineOnly) {
  // 24 rows of 8 reach 692, one of 8 reaches 700: a row still stands there, the next at 500.
  std::vector<DrawRecord> records(25, Arc({0, 0, 0}, 5, 0, 90));
  records.push_back(Move({0, 0, 0}, {1, 1, 0}));
  records.push_back(Move({0, 0, 0}, {1, 1, 0}));
  const auto lines = Lines(Numbered(records));
  EXPECT_EQ(lines[24].substr(0, 10), "TABLE(692,");
  EXPECT_EQ(lines[25].substr(0, 10), "TABLE(700,");
  EXPECT_EQ(lines[26].substr(0, 10), "TABLE(500,");
  EXPECT_EQ(lines[27], "TABLE(507,-999)");
}

TEST(Table, ARecordHoldsTheLinesWrittenUpToIt) {
  auto kerf = Numbered({Move({0, 0, 0}, {1, 1, 0}), Settings(1, {}), Other(RecordCode::Dwell)});
  EXPECT_EQ(MakeTables(1, kerf).Lines, 5);
  EXPECT_EQ(kerf[0].TableLine, 0);
  EXPECT_EQ(kerf[1].TableLine, 1);
  EXPECT_EQ(kerf[2].TableLine, 3);
  EXPECT_EQ(kerf[3].TableLine, 4);
}

TEST(Table, MoreLinesThanTheCountHoldsAreRefused) {
  auto most = Numbered(std::vector<DrawRecord>(16383, Settings(1, {})));
  const TableResult fits = MakeTables(1, most);
  EXPECT_FALSE(fits.TooManyLines);
  EXPECT_EQ(fits.Lines, 32767);
  auto more = Numbered(std::vector<DrawRecord>(16384, Settings(1, {})));
  EXPECT_TRUE(MakeTables(1, more).TooManyLines);
}

TEST(Table, TheFirstRecordWhoseLineWouldBeCutIsTold) {
  DrawRecord huge = Settings(1, {});
  huge.ChangeCommon().Settings.fill(-1e15F);
  auto kerf = Numbered({Move({0, 0, 0}, {1, 1, 0}), huge, huge});
  EXPECT_EQ(MakeTables(1, kerf).CutLineRecord, 3);
  auto good = Numbered({Settings(1, {})});
  EXPECT_EQ(MakeTables(1, good).CutLineRecord, 0);
}

TEST(Table, ALineOf80CharactersIsNotCut) {
  // "TABLE(500,5," and six numbers with a comma or bracket behind each.
  const auto lengthOf = [](const std::vector<float>& values) {
    return Lines(Numbered({Settings(1, values)}))[0].size();
  };
  const std::vector<float> longest(6, 1234567936.0F);  // ten digits
  std::vector<float> values = longest;
  ASSERT_EQ(lengthOf(values), 78U);
  values[0] = -1.2345679e10F;
  ASSERT_EQ(lengthOf(values), 80U);
  auto fits = Numbered({Settings(1, values)});
  EXPECT_EQ(MakeTables(1, fits).CutLineRecord, 0);
  values[1] = -values[1];
  auto cut = Numbered({Settings(1, values)});
  EXPECT_EQ(MakeTables(1, cut).CutLineRecord, 2);
}

TEST(Table, NumbersThatAreNoneNeverReachTheController) {
  const float none = std::numeric_limits<float>::quiet_NaN();
  DrawRecord move = Move({0, 0, 0}, {1, 1, 0});
  move.EndPoint = {none, std::numeric_limits<float>::infinity(), 0};
  EXPECT_EQ(Lines(Numbered({move}))[0], "TABLE(500,0,0,0,0,0,2000,0)");
}

// ---- properties ----

std::vector<DrawRecord> AnyRecords() {
  const auto count = *rc::gen::inRange(0, 300);
  std::vector<DrawRecord> records;
  const std::vector<std::int16_t> codes = {110, 120, 130, 311, 321, 350, 355, 360, 365, 370, 400};
  for (int i = 0; i < count; ++i) {
    DrawRecord record = Other(*rc::gen::elementOf(codes));
    record.EndPoint.X = static_cast<float>(*rc::gen::inRange(-3000000, 3000000) / 1000.0);
    record.ProfileStart.Y = static_cast<float>(*rc::gen::inRange(-3000000, 3000000) / 1000.0);
    record[Mark::SettingsMode] = static_cast<std::int16_t>(*rc::gen::inRange(-1, 2));
    record.Feed = static_cast<float>(*rc::gen::inRange(0, 5000));
    records.push_back(record);
  }
  return Numbered(std::move(records));
}

RC_GTEST_PROP(Table, IndicesFollowTheRingRule, ()) {
  const auto slot = static_cast<std::int16_t>(*rc::gen::inRange(1, 3));
  const int first = slot == 2 ? 750 : 500;
  int pointer = first;
  for (const std::string& line : Lines(AnyRecords(), slot)) {
    RC_ASSERT(line.starts_with("TABLE(") && line.ends_with(")"));
    RC_ASSERT(line.size() <= 80U);
    RC_ASSERT(line.find(' ') == std::string::npos);
    if (pointer > first + 200) pointer = first;
    RC_ASSERT(core::LeadingNumber(std::string_view(line).substr(6)) == pointer);
    pointer += static_cast<int>(std::count(line.begin(), line.end(), ','));
  }
}

RC_GTEST_PROP(Table, TheFixedRecordsHoldTheLinesOfTheText, ()) {
  auto kerf = AnyRecords();
  const TableResult table = MakeTables(1, kerf);
  const FixedLines fixed = MakeFixedLines(table.Text, false);
  const auto lines = core::SplitLines(table.Text);
  RC_ASSERT(fixed.Count == table.Lines);
  RC_ASSERT(fixed.Bytes.size() == lines.size() * 80);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string record = fixed.Bytes.substr(i * 80, 80);
    RC_ASSERT(record.substr(0, lines[i].size()) == lines[i]);
    RC_ASSERT(record.find_first_not_of(' ', lines[i].size()) == std::string::npos);
  }
  RC_ASSERT(kerf.size() == 1 || kerf.back().TableLine == table.Lines - 1);
}

RC_GTEST_PROP(Table, ALastPositionIsWhatTheRowBeforeLeft, ()) {
  // Whatever stands between, a stop carries the end of the last move or line, or an arc's way.
  const auto x = static_cast<float>(*rc::gen::inRange(-100000, 100000) / 100.0);
  const auto y = static_cast<float>(*rc::gen::inRange(-100000, 100000) / 100.0);
  const auto between =
      Other(*rc::gen::element(RecordCode::Dwell, RecordCode::OpenClamps, RecordCode::Reposition));
  const auto lines =
      Lines(Numbered({Line({0, 0, 0}, {x, y, 0}), between, Other(RecordCode::ProgramStop)}));
  RC_ASSERT(lines[2] == "TABLE(514,0," + core::NumberText(x, -1) + "," + core::NumberText(y, -1) +
                            ",0,-1,2000,0)");
}

}  // namespace
}  // namespace torvane::partprogram

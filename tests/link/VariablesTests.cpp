#include <set>

#include <gtest/gtest.h>

#include "LinkFixture.h"
#include "link/Variables.h"

namespace torvane::link {

using namespace tests;
namespace {

TEST(Variables, TheRollersGoOnByThreeLinesAndOffByASubtraction) {
  EXPECT_EQ(Sequence::RollersOn[0], "VR(19)=VR(19) OR 131072");
  EXPECT_EQ(Sequence::RollersOn[1], "VR(17)=VR(17) OR 32");
  EXPECT_EQ(Sequence::RollersOn[2], "OP(8,VR(9))");
  EXPECT_EQ(Sequence::RollersOff[0], "VR(17)=VR(17)-32");
}

TEST(Variables, TheCommandWordNeverTakesFourteenOrSixteen) {
  std::set<std::string_view> lines = {CommandLine::StopJog,       CommandLine::Move,
                                      CommandLine::LoadPositionA, CommandLine::JogXPlus,
                                      CommandLine::JogXMinus,     CommandLine::LoadPositionB,
                                      CommandLine::JogYPlus,      CommandLine::JogYMinus};
  lines.insert(CommandLine::Reference.begin(), CommandLine::Reference.end());
  const std::set<std::string_view> expected = {"VR(48)=0",  "VR(48)=10", "VR(48)=11", "VR(48)=12",
                                               "VR(48)=13", "VR(48)=15", "VR(48)=17", "VR(48)=18",
                                               "VR(48)=19", "VR(48)=20", "VR(48)=21", "VR(48)=22"};
  EXPECT_EQ(lines, expected);
}

TEST(Variables, TheLaserBoxesStandInTheirOwnOrder) {
  std::string order;
  for (const auto& value : LaserStatusValues) order += std::string(value.Name) + " ";
  EXPECT_EQ(order, "VR(71) VR(72) VR(73) VR(78) VR(74) VR(75) VR(76) VR(77) VR(30) VR(31) ");
}

TEST(Variables, NoLineHoldsThePromptOrTheErrorMark) {
  for (const auto line : Sequence::RollersOn) {
    EXPECT_EQ(line.find(">>"), std::string_view::npos);
    EXPECT_EQ(line.find('%'), std::string_view::npos);
  }
}

TEST(Variables, AnAssignmentIsNameEqualsNumber) {
  EXPECT_EQ(Assignment(Variable::LoadPositionAY, "12.50"), "VR(87)=12.50");
  EXPECT_EQ(Assignment(Variable::HeadOffsetX, "12.5"), "M848=12.5");
}

using OfflineVariables = LinkTest;

TEST_F(OfflineVariables, EveryReadGivesZeroWithTheLinkOff) {
  Settings.TrioLinkEnabled = false;
  Controller.Values[std::string(Variable::PositionDivisor)] = "1000";
  EXPECT_EQ(Link.GetRspnsSngl(Variable::PositionDivisor, 3), 0.0F);
  EXPECT_EQ(Link.GetRspnsSngl(Variable::LoadPositionAX), 0.0F);
}

}  // namespace
}  // namespace torvane::link

// torvane-check --estimate: its options, its rows, its JSON, and that nothing changes without it.
#include <string>

#include <gtest/gtest.h>

#include "CheckShop.h"
#include "tools/CheckEstimate.h"

namespace torvane::tools {
namespace {

TEST(CheckEstimate, WithoutTheOptionNothingIsSaidOfTime) {
  Shop shop;
  ASSERT_EQ(shop.Run({"JOBS", "PLAIN"}), ExitStatus::Good);
  EXPECT_FALSE(shop.Says("run time"));
  EXPECT_FALSE(shop.Says("contours"));
  const std::string text = shop.Out.str();
  ASSERT_EQ(shop.Run({"JOBS", "PLAIN", "--json"}), ExitStatus::Good);
  EXPECT_FALSE(shop.Says("estimate"));
  const std::string json = shop.Out.str();
  // With it everything else stays as it was.
  ASSERT_EQ(shop.Run({"JOBS", "PLAIN", "--estimate"}), ExitStatus::Good);
  const auto rows = shop.Out.str();
  const auto from = rows.find("  run time");
  ASSERT_NE(from, std::string::npos);
  EXPECT_EQ(rows.substr(0, from), text.substr(0, from));
  EXPECT_TRUE(rows.ends_with(text.substr(from)));
}

TEST(CheckEstimate, TheReportNamesTimesAndTheLongestContours) {
  Shop shop;
  ASSERT_EQ(shop.Run({"JOBS", "PLAIN", "--estimate"}), ExitStatus::Good);
  // 70 mm of lines and 31.4 mm of an arc at 1000 mm/min, 14.1 mm of moves at 30000.
  EXPECT_TRUE(shop.Says("run time        6.1 s at 100 %, block skips off\n")) << shop.Out.str();
  EXPECT_TRUE(shop.Says("contours        1\n"));
  EXPECT_TRUE(shop.Says("6.1 s, 101.4 mm, from block 7, record 4\n")) << shop.Out.str();
}

TEST(CheckEstimate, TheJsonHoldsTheSame) {
  Shop shop;
  ASSERT_EQ(
      shop.Run({"--estimate", "--json", "--override", "50", "--skip", "1,2", "JOBS", "PLAIN"}),
      ExitStatus::Good);
  EXPECT_TRUE(shop.Says("\"override\": 50")) << shop.Out.str();
  EXPECT_TRUE(shop.Says("\"skip1\": true"));
  EXPECT_TRUE(shop.Says("\"skip2\": true"));
  EXPECT_TRUE(shop.Says("\"seconds\": 12.1"));
  EXPECT_TRUE(shop.Says("\"longestContours\""));
}

TEST(CheckEstimate, SoManyContoursAreListed) {
  Shop shop;
  ASSERT_EQ(shop.Run({"--estimate", "--contours", "2", "SHOP", "BRACKET-40"}), ExitStatus::Good);
  const auto text = shop.Out.str();
  std::size_t listed = 0;
  for (auto at = text.find(", from block"); at != std::string::npos;
       at = text.find(", from block", at + 1)) {
    ++listed;
  }
  EXPECT_EQ(listed, 2U);
  ASSERT_EQ(shop.Run({"--estimate", "--contours", "0", "SHOP", "BRACKET-40"}), ExitStatus::Good);
  EXPECT_FALSE(shop.Says(", from block"));
}

TEST(CheckEstimate, SkipsAndStopsAreNamed) {
  Shop shop;
  ASSERT_EQ(shop.Run({"--estimate", "--skip", "2", "SHOP", "SKIP-TEST"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Says("block skip 2 on"));
  EXPECT_TRUE(shop.Says("rows skipped    6"));
  EXPECT_TRUE(shop.Says("program stops   2"));
}

TEST(CheckEstimate, ARefusedProgramHasNone) {
  Shop shop;
  ASSERT_EQ(shop.Run({"--estimate", "FAULTS", "NO-SUB"}), ExitStatus::Refused);
  EXPECT_FALSE(shop.Says("run time"));
}

TEST(CheckEstimate, TheFiguresOfAnotherMachine) {
  Shop shop;
  shop.Home.Put("slow.fig", "Rapid Rate : 600\r\nPierce Time : 2\r\n");
  ASSERT_EQ(shop.Run({"--estimate", "--machine", shop.Home.Path() + "/slow.fig", "JOBS", "PLAIN"}),
            ExitStatus::Good);
  EXPECT_TRUE(shop.Says("moving 1.4 s, dwelling 0.0 s, machine 2.0 s")) << shop.Out.str();
}

TEST(CheckEstimate, AFileOfFiguresAtFaultEndsTheCommand) {
  Shop shop;
  shop.Home.Put("bad.fig", "Speed : 5\r\n");
  EXPECT_EQ(shop.Run({"--estimate", "--machine", shop.Home.Path() + "/bad.fig", "JOBS", "PLAIN"}),
            ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Complains("bad.fig: no figure of a machine, Speed"));
  EXPECT_EQ(shop.Run({"--estimate", "--machine", "/nowhere.fig", "JOBS", "PLAIN"}),
            ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Complains("nowhere.fig: not found")) << shop.Errors.str();
  EXPECT_EQ(shop.Run({"--estimate", "--machine", shop.Home.Path(), "JOBS", "PLAIN"}),
            ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Complains("is a directory")) << shop.Errors.str();
}

TEST(CheckEstimate, AFileOfFiguresKeepsItsLettersInTheComplaint) {
  Shop shop;
  for (const char* line : {"L\xC3\xA4nge : 5\r\n", "L\xE4nge : 5\r\n"}) {
    shop.Home.Put("b\xC3\xB6se.fig", line);
    EXPECT_EQ(shop.Run({"--estimate", "--machine", shop.Home.Path() + "/b\xC3\xB6se.fig", "JOBS",
                        "PLAIN"}),
              ExitStatus::WrongUse);
    EXPECT_TRUE(shop.Complains("b\xC3\xB6se.fig: no figure of a machine, L\xC3\xA4nge"))
        << shop.Errors.str();
  }
}

TEST(CheckEstimate, AMachineThatNeverComesOnTakesLongerThanAnyClock) {
  Shop shop;
  shop.Home.Put("still.fig", "Cut Acceleration : 1e-300\r\n");
  ASSERT_EQ(shop.Run({"--estimate", "--machine", shop.Home.Path() + "/still.fig", "JOBS", "PLAIN"}),
            ExitStatus::Good);
  EXPECT_TRUE(shop.Says("over 1000000000 s")) << shop.Out.str();
}

TEST(CheckEstimate, WrongUsesAreSaidSo) {
  Shop shop;
  const std::vector<std::vector<std::string>> uses = {
      {"--override", "50", "JOBS", "PLAIN"},
      {"--skip", "1", "JOBS", "PLAIN"},
      {"--machine", "x", "JOBS", "PLAIN"},
      {"--estimate", "--override", "0", "JOBS", "PLAIN"},
      {"--estimate", "--override", "201", "JOBS", "PLAIN"},
      {"--estimate", "--override", "nan", "JOBS", "PLAIN"},
      {"--estimate", "--override", "-NaN", "JOBS", "PLAIN"},
      {"--estimate", "--machine", "", "JOBS", "PLAIN"},
      {"--estimate", "--skip", "", "JOBS", "PLAIN"},
      {"--estimate", "--skip", "3", "JOBS", "PLAIN"},
      {"--estimate", "--skip", "1,1", "JOBS", "PLAIN"},
      {"--estimate", "--skip", "1,3", "JOBS", "PLAIN"},
      {"--estimate", "--skip", "x", "JOBS", "PLAIN"},
      {"--estimate", "--contours", "-1", "JOBS", "PLAIN"},
      {"--estimate", "--restart", "all", "JOBS", "PLAIN"}};
  for (const auto& use : uses) {
    EXPECT_EQ(shop.Run(use), ExitStatus::WrongUse) << use[0] << ' ' << use[1] << ' ' << use[2];
    EXPECT_FALSE(shop.Errors.str().empty());
  }
}

TEST(CheckEstimate, DurationsReadAsAClockDoes) {
  EXPECT_EQ(DurationText(0), "0.0 s");
  EXPECT_EQ(DurationText(4.56), "4.6 s");
  EXPECT_EQ(DurationText(59.96), "1:00.0") << "rounded before it is cut into minutes";
  EXPECT_EQ(DurationText(724.6), "12:04.6");
  EXPECT_EQ(DurationText(3724.6), "1:02:04.6");
  EXPECT_EQ(DurationText(40000), "11:06:40.0");
  EXPECT_EQ(DurationText(1e300), "over 1000000000 s");
  EXPECT_EQ(DurationText(std::numeric_limits<double>::quiet_NaN()), "over 1000000000 s");
}

}  // namespace
}  // namespace torvane::tools

#include <gtest/gtest.h>

#include "tools/CheckOptions.h"

namespace torvane::tools {
namespace {

CheckOptions Read(std::vector<std::string> arguments) {
  std::string help;
  auto options = ReadCheckOptions(std::move(arguments), help);
  EXPECT_EQ(help, "");
  return options;
}

TEST(CheckArguments, DirectoryAloneMeansAllItsPrograms) {
  const auto options = Read({"SHOP"});
  EXPECT_EQ(options.Directory, "SHOP");
  EXPECT_TRUE(options.Programs.empty());
  EXPECT_EQ(options.Root, ".");
  EXPECT_EQ(options.Slot, 1);
  EXPECT_FALSE(options.Load.has_value());
  EXPECT_FALSE(options.Json);
}

TEST(CheckArguments, ProgramsKeepTheirOrderAndLoseTheirExtension) {
  const auto options = Read({"SHOP", "B.prg", "a.PRG", "C.v2", ".prg"});
  EXPECT_EQ(options.Programs, (std::vector<std::string>{"B", "a", "C.v2", ".prg"}));
}

TEST(CheckArguments, NamesBecomeSingleBytes) {
  const auto options = Read({"T\xC3\x9CR", "BL\xC3\x84TTER.prg"});
  EXPECT_EQ(options.Directory, "T\xDCR");
  EXPECT_EQ(options.Programs, (std::vector<std::string>{"BL\xC4TTER"}));
}

TEST(CheckArguments, OptionsStandAnywhere) {
  const auto options =
      Read({"--slot", "2", "SHOP", "--out", "/tmp/o", "A", "--json", "--load", "12.5,-3", "--plot",
            "p.SVG", "--size", "640x480", "--kerf", "--report", "--jobs", "3", "--root", "/r"});
  EXPECT_EQ(options.Slot, 2);
  EXPECT_EQ(options.Out, "/tmp/o");
  EXPECT_TRUE(options.Json);
  ASSERT_TRUE(options.Load.has_value());
  EXPECT_EQ(options.Load->X, 12.5F);
  EXPECT_EQ(options.Load->Y, -3.0F);
  EXPECT_EQ(options.Plot, "p.SVG");
  EXPECT_EQ(options.PlotWidth, 640);
  EXPECT_EQ(options.PlotHeight, 480);
  EXPECT_TRUE(options.PlotKerf);
  EXPECT_TRUE(options.Report);
  EXPECT_EQ(options.Jobs, 3U);
  EXPECT_EQ(options.Root, "/r");
  EXPECT_EQ(options.Programs, (std::vector<std::string>{"A"}));
}

TEST(CheckArguments, LoadPositionMayBeginWithAMinus) {
  EXPECT_EQ(Read({"SHOP", "--load=-5,-6.25"}).Load->X, -5.0F);
  EXPECT_EQ(Read({"SHOP", "--load", "-5,-6.25"}).Load->Y, -6.25F);
}

TEST(CheckArguments, HelpIsATextAndNoMistake) {
  std::string help;
  static_cast<void>(ReadCheckOptions({"--help"}, help));
  for (const char* word : {"DIRECTORY", "PROGRAM", "--root", "--slot", "--out", "--plot", "--json",
                           "--load", "Exit status"}) {
    EXPECT_NE(help.find(word), std::string::npos) << word;
  }
}

class WrongArguments : public ::testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongArguments, AreWrongUse) {
  std::string help;
  EXPECT_THROW(static_cast<void>(ReadCheckOptions(GetParam(), help)), WrongUse);
}

INSTANTIATE_TEST_SUITE_P(Each, WrongArguments,
                         ::testing::Values(std::vector<std::string>{},
                                           std::vector<std::string>{"--json"},
                                           std::vector<std::string>{"SHOP", "--slot", "3"},
                                           std::vector<std::string>{"SHOP", "--slot", "0"},
                                           std::vector<std::string>{"SHOP", "--slot", "one"},
                                           std::vector<std::string>{"SHOP", "--jobs", "-1"},
                                           std::vector<std::string>{"SHOP", "--colour"},
                                           std::vector<std::string>{"SHOP", "--load", "5"},
                                           std::vector<std::string>{"SHOP", "--load", "5;6"},
                                           std::vector<std::string>{"SHOP", "--load", "5,"},
                                           std::vector<std::string>{"SHOP", "--load", "nan,1"},
                                           std::vector<std::string>{"SHOP", "--load", "1e99,1"},
                                           std::vector<std::string>{"SHOP", "--load", "1,2,3"},
                                           std::vector<std::string>{"SHOP", "--plot", "p.jpg"},
                                           std::vector<std::string>{"SHOP", "--plot", "png"},
                                           std::vector<std::string>{"SHOP", "--size", "640"},
                                           std::vector<std::string>{"SHOP", "--size", "0x480"},
                                           std::vector<std::string>{"SHOP", "--size", "640x999999"},
                                           std::vector<std::string>{"SHOP", "--out"},
                                           std::vector<std::string>{"SHOP", "--out", ""},
                                           std::vector<std::string>{"SHOP", "--plot", ""},
                                           std::vector<std::string>{"SHOP", "--size", ""},
                                           std::vector<std::string>{"SHOP", "--load", ""},
                                           std::vector<std::string>{"SHOP", "--root", ""}));

}  // namespace
}  // namespace torvane::tools

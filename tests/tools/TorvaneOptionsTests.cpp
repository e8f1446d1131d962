// The command line of the console.
#include <vector>

#include <gtest/gtest.h>

#include "tools/TorvaneOptions.h"

namespace torvane::tools {
namespace {

std::optional<TorvaneOptions> Read(std::vector<const char*> arguments, int& status) {
  arguments.insert(arguments.begin(), "torvane");
  status = 0;
  return ReadTorvaneOptions(static_cast<int>(arguments.size()), arguments.data(), status);
}

TorvaneOptions Good(const std::vector<const char*>& arguments) {
  int status = 0;
  const auto options = Read(arguments, status);
  EXPECT_TRUE(options.has_value());
  return options.value_or(TorvaneOptions());
}

int StatusOf(const std::vector<const char*>& arguments) {
  int status = -1;
  EXPECT_FALSE(Read(arguments, status).has_value());
  return status;
}

TEST(TorvaneArguments, TheRootMayFollowADeviceOrADrive) {
  const auto options = Good({"--device", "1=/tmp/machine", "build/installation"});
  EXPECT_EQ(options.Devices.at(1), "/tmp/machine");
  EXPECT_EQ(options.Root, "build/installation");
  EXPECT_EQ(Good({"--drive", "a=/media/stick", "/r"}).Root, "/r");
  EXPECT_EQ(Good({"--drive", "a=/media/stick", "/r"}).Drives.at('A'), "/media/stick");
}

TEST(TorvaneArguments, DevicesAndDrivesAreNamedOneAnOption) {
  const auto options = Good(
      {"--device", "1=/dev/a", "--device=2=/dev/b", "--drive", "A=/x", "root", "--drive", "B=/y"});
  EXPECT_EQ(options.Devices.size(), 2U);
  EXPECT_EQ(options.Devices.at(2), "/dev/b");
  EXPECT_EQ(options.Drives.at('B'), "/y");
  EXPECT_EQ(options.Root, "root");
}

TEST(TorvaneArguments, TheRootMayFollowAVariableToo) {
  const auto options = Good({"--simulate", "--set", "59=1000", "--set", "81=3", "/r"});
  EXPECT_EQ(options.Presets.size(), 2U);
  EXPECT_EQ(options.Root, "/r");
}

TEST(TorvaneArguments, WrongUseEndsWithTwo) {
  for (const auto& arguments : std::vector<std::vector<const char*>>{
           {"--device", "1"},
           {"--device", "0=/dev/a"},
           {"--device", "x=/dev/a"},
           {"--device", "1="},
           {"--drive", "AB=/x"},
           {"--drive", "1=/x"},
           {"--select", "STAR"},
           {"--window", "wide"},
           {"--window", "0x100"},
           {"--start"},
           {"--panel"},
           {"--no-such-option"},
           {"root", "another"},
       }) {
    EXPECT_EQ(StatusOf(arguments), 2) << arguments.front();
  }
}

TEST(TorvaneArguments, HelpEndsWithZero) { EXPECT_EQ(StatusOf({"--help"}), 0); }

TEST(TorvaneArguments, ASelectionIsADirectoryAndAProgram) {
  const auto options = Good({"--select", "SHOP/STAR", "--window", "800x600"});
  EXPECT_EQ(options.SelectDirectory, "SHOP");
  EXPECT_EQ(options.SelectProgram, "STAR");
  ASSERT_TRUE(options.Window.has_value());
  EXPECT_EQ(options.Window->Width, 800);
  EXPECT_EQ(options.Window->Height, 600);
}

}  // namespace
}  // namespace torvane::tools

// The file of a machine's figures.
#include <string>

#include <gtest/gtest.h>

#include "core/RunFigures.h"
#include "platform/RuntimeFault.h"

namespace torvane::core {
namespace {

std::string FaultOf(std::string_view text) {
  try {
    (void)ReadRunFigures(text, "laser.fig");
  } catch (const platform::RuntimeFault& fault) {
    return fault.what();
  }
  return "none";
}

TEST(RunFigures, EveryLineHasItsName) {
  const auto figures = ReadRunFigures(
      "; the big one\r\nRapid Rate : 60000\r\nDefault Feed: 2000\nrapid acceleration : 8000\r\n"
      "CUT ACCELERATION : 3000 ; with the small head\r\nPierce Time : 0.4\r\nClamp Time : 2\r\n"
      "Reposition Time : 12.5\r\nStart X : -10\r\nStart Y : 1500\r\n",
      "laser.fig");
  EXPECT_EQ(figures.RapidRate, 60000);
  EXPECT_EQ(figures.DefaultFeed, 2000);
  EXPECT_EQ(figures.RapidAcceleration, 8000);
  EXPECT_EQ(figures.CutAcceleration, 3000);
  EXPECT_EQ(figures.PierceSeconds, 0.4);
  EXPECT_EQ(figures.ClampSeconds, 2);
  EXPECT_EQ(figures.RepositionSeconds, 12.5);
  EXPECT_EQ(figures.StartX, -10);
  EXPECT_EQ(figures.StartY, 1500);
}

TEST(RunFigures, WhatIsNotGivenIsTheSimulatedMachines) {
  const auto figures = ReadRunFigures("\r\n\r\n  \r\nPierce Time : 1\r\n", "laser.fig");
  EXPECT_EQ(figures.PierceSeconds, 1);
  EXPECT_EQ(figures.RapidRate, RunFigures().RapidRate);
  EXPECT_EQ(figures.CutAcceleration, 0);
}

TEST(RunFigures, AFaultNamesTheFileAndTheLine) {
  EXPECT_EQ(FaultOf("Rapid Rate 60000"), "laser.fig: a line without a colon, Rapid Rate 60000");
  EXPECT_EQ(FaultOf("Speed : 5"), "laser.fig: no figure of a machine, Speed");
  EXPECT_EQ(FaultOf("Clamp Time : 1\nclamp time : 2"), "laser.fig: comes twice, clamp time");
  EXPECT_EQ(FaultOf("Clamp Time : soon"),
            "laser.fig: Clamp Time takes a number from 0 to 3600, not soon");
  EXPECT_EQ(FaultOf("Clamp Time :"), "laser.fig: Clamp Time takes a number from 0 to 3600, not ");
}

TEST(RunFigures, NoFigureIsOutOfItsRange) {
  for (const char* line : {"Rapid Rate : 0", "Rapid Rate : -5", "Default Feed : 0.5",
                           "Cut Acceleration : -1", "Pierce Time : 3601", "Start X : 1e9",
                           "Rapid Rate : inf", "Rapid Rate : nan", "Rapid Rate : 60000 mm"}) {
    EXPECT_NE(FaultOf(line).find("takes a number from"), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace torvane::core

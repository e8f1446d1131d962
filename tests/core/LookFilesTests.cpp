// Colour.cfg, Plot.cfg and the laser settings.
#include <algorithm>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/ColourFile.h"
#include "core/General.h"
#include "core/LaserFile.h"
#include "core/PlotFile.h"
#include "support/Faults.h"

namespace torvane::core {
namespace {

ColourTable ReadColours(std::string_view text) {
  ColourTable colours;
  ReadColourFile(text, "Colour.cfg", colours);
  return colours;
}

PlotSettings ReadPlot(std::string_view text) {
  PlotSettings plot;
  ResetPlotLook(plot);
  ReadPlotFile(text, plot);
  return plot;
}

LaserSetting ReadLaser(std::string_view text, std::size_t names = 4) {
  LaserSetting setting;
  ReadLaserFile(text, LaserNameList(names, "name"), setting);
  return setting;
}

/// The file of a first start with one value put in place of another.
std::string FileWith(int entry, const std::string& value) {
  const std::string fresh = ColourFileText(ColourTable());
  std::string text;
  int line = 0;
  for (const auto part : SplitLines(fresh)) {
    text += line++ == entry ? "label, " + value : std::string(part);
    text += "\r\n";
  }
  return text;
}

TEST(Colours, TheTableHas43EntriesEachWithItsOwnLabel) {
  std::set<std::string> labels;
  for (const auto& entry : ColourEntries) labels.insert(entry.Label);
  EXPECT_EQ(ColourEntries.size(), 43u);
  EXPECT_EQ(labels.size(), 43u);
  EXPECT_STREQ(ColourEntries[2].Label, "Sheet Boundry") << "the word of the file";
}

TEST(Colours, TheDefaultsAreTheDecimalNumbersOfTheFile) {
  const ColourTable colours;
  EXPECT_EQ(colours[ColourName::PlotBackground], 4194304u);
  EXPECT_EQ(colours[ColourName::PunchingZones], 49152u);
  EXPECT_EQ(colours[ColourName::SheetFill], 8421504u);
  EXPECT_EQ(colours[ColourName::HeaderBackground], 13090456u);
  EXPECT_EQ(colours[ColourName::GeneralButtons], 12615680u);
  EXPECT_EQ(colours[ColourName::SubKeys], 16758820u);
  EXPECT_EQ(colours[ColourName::StatusFeedText], 65535u);
}

TEST(Colours, TheFileOfAFirstStartHas44Lines) {
  const std::string text = ColourFileText(ColourTable());
  const auto lines = SplitLines(text);
  ASSERT_EQ(lines.size(), 44u);
  EXPECT_EQ(lines.front(), "Plot Background, 4194304 ");
  EXPECT_EQ(lines[42], "Status Feed Text, 65535 ");
  EXPECT_EQ(lines.back(), "******");
}

TEST(Colours, OnlyTheOrderCounts) {
  std::string text;
  for (int i = 0; i < 43; ++i) text += "x," + std::to_string(i) + "\r\n";
  const ColourTable colours = ReadColours(text);
  EXPECT_EQ(colours[ColourName::PlotBackground], 0u) << "black";
  EXPECT_EQ(colours[ColourName::HeaderText], 17u);
  EXPECT_EQ(colours[ColourName::StatusFeedText], 42u);
}

TEST(Colours, SwappedLabelsSwapNothing) {
  std::string text = ColourFileText(ColourTable());
  const auto header = text.find("Header Text");
  text.replace(header, 11, "Panel Text ");
  EXPECT_EQ(ReadColours(text)[ColourName::HeaderBackground], 13090456u);
  EXPECT_EQ(ReadColours(text)[ColourName::HeaderText], 0u);
}

TEST(Colours, AShortFileOrALineWithoutANumberIsAFault) {
  std::string text = FileWith(5, "255");
  EXPECT_EQ(ReadColours(text)[ColourName::BlockSkip1], 255u);
  EXPECT_EQ(tests::FaultOf([&] { ReadColours(FileWith(5, "red")); }),
            "Colour.cfg: \"red\" stands in place of a number");
  EXPECT_NE(tests::FaultOf([&] { ReadColours(FileWith(5, "")); }), "");
  EXPECT_NE(tests::FaultOf([&] { ReadColours(FileWith(5, "1e20")); }), "");
  EXPECT_EQ(tests::FaultOf([&] { ReadColours("a,1\r\nb,2\r\n"); }),
            "Colour.cfg: ends too soon, colour 3 is missing");
  EXPECT_EQ(tests::FaultOf([&] { ReadColours(""); }),
            "Colour.cfg: ends too soon, colour 1 is missing");
}

TEST(Colours, AValueWithASignIsItsOwn32Bits) {
  EXPECT_EQ(ReadColours(FileWith(0, "-1"))[ColourName::PlotBackground], 0xFFFFFFFFu);
  EXPECT_EQ(ReadColours(FileWith(0, "4294967295"))[ColourName::PlotBackground], 0xFFFFFFFFu);
}

RC_GTEST_PROP(Colours, WhatIsWrittenIsRead, ()) {
  ColourTable colours;
  for (int i = 0; i < 43; ++i)
    colours.Set(static_cast<ColourName>(i), *rc::gen::arbitrary<std::uint32_t>());
  const ColourTable read = ReadColours(ColourFileText(colours));
  for (int i = 0; i < 43; ++i) {
    RC_ASSERT(read[static_cast<ColourName>(i)] == colours[static_cast<ColourName>(i)]);
  }
}

TEST(PlotCfg, WithoutTheFileTheTraceIsThinAndRapidsAreNotDrawn) {
  const PlotSettings plot = ReadPlot("");
  EXPECT_EQ(plot.RealTimeWidth, 1.0F);
  EXPECT_FALSE(plot.ShowMovementIcon);
  EXPECT_EQ(plot.MovementStyle, -999);
}

TEST(PlotCfg, TheWidthIsHeldBetweenOneAndAHundred) {
  EXPECT_EQ(ReadPlot("Width : 250").RealTimeWidth, 100.0F);
  EXPECT_EQ(ReadPlot("0.5").RealTimeWidth, 1.0F);
  EXPECT_EQ(ReadPlot("thick").RealTimeWidth, 1.0F);
  EXPECT_EQ(ReadPlot("Width : 2.5").RealTimeWidth, 2.5F);
}

TEST(PlotCfg, TheIconAndTheStyle) {
  EXPECT_TRUE(ReadPlot("1\r\nIcon : any\r\n").ShowMovementIcon);
  EXPECT_FALSE(ReadPlot("1\r\nno\r\n").ShowMovementIcon);
  EXPECT_EQ(ReadPlot("1\r\nN\r\nStyle : dotted\r\n").MovementStyle, 2);
  EXPECT_EQ(ReadPlot("1\r\nN\r\nsolid\r\n").MovementStyle, 0);
  EXPECT_EQ(ReadPlot("1\r\nN\r\n\r\n").MovementStyle, -999);
  EXPECT_EQ(ReadPlot("1\r\nN\r\nNONE\r\n").MovementStyle, -999);
}

RC_GTEST_PROP(PlotCfg, AnyTextGivesAWidthThatCanBeDrawn, (const std::string& text)) {
  const float width = ReadPlot(text).RealTimeWidth;
  RC_ASSERT(width >= 1 && width <= 100);
}

TEST(LaserFile, TenNumbersBehindTheTitle) {
  const LaserSetting setting =
      ReadLaser("A, TITLE 1,2\r\n1,2,3,4\r\n800.5, 60\r\n500\r\n0.8,1.2\r\n2\r\n");
  EXPECT_EQ(setting.Integers, (std::array<std::int16_t, 4>{1, 2, 3, 4}));
  EXPECT_EQ(setting.Floats, (std::array<float, 2>{800.5F, 60.0F}));
  EXPECT_EQ(setting.Integer7, 500);
  EXPECT_EQ(setting.MoreFloats, (std::array<float, 2>{0.8F, 1.2F}));
  EXPECT_EQ(setting.NameIndex, 2);
}

TEST(LaserFile, LineEndsDivideAsCommasDo) {
  EXPECT_EQ(ReadLaser("T\n1\n2\n3\n4\n5\n6\n7\n8\n9\n3\n").NameIndex, 3);
  EXPECT_EQ(ReadLaser("T\n1,2,3,4,5,6,7,8,9,3").NameIndex, 3);
}

TEST(LaserFile, AnIndexBeyondTheNamesBecomesOne) {
  for (const char* index : {"4", "0", "-1", "99999", "x"}) {
    EXPECT_EQ(ReadLaser(std::string("T\n1,2,3,4,5,6,7,8,9,") + index).NameIndex, 1) << index;
  }
  EXPECT_EQ(ReadLaser("T\n1,2,3,4,5,6,7,8,9,1", 1).NameIndex, 0) << "a list of entry 0 alone";
}

TEST(LaserFile, MissingAndDamagedNumbersReadAsZero) {
  const LaserSetting setting = ReadLaser("T\r\n1,two,3");
  EXPECT_EQ(setting.Integers, (std::array<std::int16_t, 4>{1, 0, 3, 0}));
  EXPECT_EQ(setting.NameIndex, 1);
  EXPECT_EQ(ReadLaser("").NameIndex, 1);
}

RC_GTEST_PROP(LaserFile, AnyTextGivesAnIndexIntoTheNames, (const std::string& text)) {
  const auto names = *rc::gen::inRange<std::size_t>(1, 5);
  const auto index = ReadLaser(text, names).NameIndex;
  RC_ASSERT(index >= 0 && index < static_cast<int>(names));
}

}  // namespace
}  // namespace torvane::core

// The time estimate against the run time of the simulated machine: every example, generated
// programs, overrides, block skips, and tables row by row.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "RunRig.h"
#include "partprogram/RunEstimate.h"
#include "support/AnySheet.h"
#include "support/ProgramGenerator.h"
#include "support/SheetRun.h"
#include "support/SourceTree.h"

namespace torvane::simulator {

using namespace tests;
namespace {

namespace fs = std::filesystem;
using partprogram::RunSwitches;

constexpr double Tolerance = 0.02;  // of the run time

double RunTimeOf(SheetRun& sheet, const RunSwitches& switches) {
  sheet.Select();
  sheet.Send("VR(68)=" + core::NumberText(switches.OverridePercent, -1));
  sheet.Send(std::string("VR(92)=") + (switches.Skip1 ? "1" : "0"));
  sheet.Send(std::string("VR(93)=") + (switches.Skip2 ? "1" : "0"));
  sheet.Start();
  return sheet.Variable(Vr::RunTime);
}

/// Parts in a million of the run time.
double Deviation(double estimate, double seconds) {
  return seconds > 0 ? std::abs(estimate - seconds) / seconds * 1e6 : 0;
}

/// The estimate lies within the tolerance of the machine's run time, and is what the machine has
/// moved and cut. Gives how far the two are from each other, in parts of a million.
double ExpectAgreement(const std::string& program, const RunSwitches& switches = {}) {
  SheetRun::Setting setting;
  setting.FillLines = setting.LeadLines = 24;  // as many as the ring holds: nothing is waited for
  SheetRun sheet(program, setting);
  const auto& passes = sheet.Passes();
  const auto estimate = partprogram::EstimateRun({passes.Table.Text, passes.Kerf}, {}, switches);
  const double seconds = RunTimeOf(sheet, switches);
  EXPECT_NEAR(estimate.Seconds(), seconds, Tolerance * seconds + 1e-6);
  EXPECT_EQ(estimate.BrokenLine, 0);
  double cut = 0;
  double moved = 0;
  for (const auto& piece : sheet.AllPieces()) (piece.Cut ? cut : moved) += piece.S1 - piece.S0;
  EXPECT_NEAR(estimate.CutLength, cut, 1e-3 + 1e-6 * cut);
  EXPECT_NEAR(estimate.MoveLength, moved, 1e-3 + 1e-6 * moved);
  return Deviation(estimate.Seconds(), seconds);
}

std::vector<RunSwitches> AnySwitches() {
  return {{100, false, false}, {50, false, false}, {150, false, false},
          {100, true, false},  {100, false, true}, {80, true, true}};
}

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(Estimate, EveryExampleTakesWhatTheSimulatedMachineTakes) {
  int programs = 0;
  double worst = 0;
  const auto root = torvane::tests::SourceTree() / "examples/installation/Programs/SHOP";
  for (const auto& entry : fs::directory_iterator(root)) {
    if (entry.path().extension() != ".prg") continue;
    ++programs;
    for (const auto& switches : AnySwitches()) {
      SCOPED_TRACE(entry.path().stem().string() + " at " +
                   std::to_string(switches.OverridePercent));
      worst = std::max(worst, ExpectAgreement(ReadAll(entry.path()), switches));
    }
  }
  EXPECT_GE(programs, 9);
  RecordProperty("worst_ppm", std::to_string(worst));
}

/// A sheet with what else a program may hold in front of its rapid moves, and skips before them and
/// before some cuts.
std::string Busy(const std::string& program, unsigned seed) {
  std::mt19937 random(seed);
  const auto pick = [&](int of) { return std::uniform_int_distribution<int>(0, of - 1)(random); };
  static constexpr const char* Blocks[] = {"G04 K0.35",    "/G04 K1.5",  "//G04 K0.75",
                                           "M87",          "M99",        "M00",
                                           "G95 I1 J2 K2", "/G00 X5 Y5", "//G00 X9 Y7"};
  std::string text;
  bool body = true;
  for (const auto line : core::SplitLines(program)) {
    body = body && line.find("M30") == std::string_view::npos;
    if (body && line.find("G00") != std::string_view::npos && pick(3) == 0) {
      text += std::string(Blocks[pick(static_cast<int>(std::size(Blocks)))]) + "\r\n";
    }
    if (body && line.starts_with("G01") && pick(8) == 0) text += pick(2) == 0 ? "/" : "//";
    text += std::string(line) + "\r\n";
  }
  return text;
}

TEST(Estimate, TwoHundredGeneratedProgramsTakeWhatTheSimulatedMachineTakes) {
  const auto switches = AnySwitches();
  double worst = 0;
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const auto& set = switches[seed % switches.size()];
    worst = std::max(worst, ExpectAgreement(Busy(AnySheet(seed).Program(), seed), set));
    if (HasFailure()) break;
  }
  RecordProperty("worst_ppm", std::to_string(worst));
}

TEST(Estimate, AProductionSheetTakesWhatTheSimulatedMachineTakes) {
  GeneratorOptions options;
  options.Profiles = 120;
  options.Columns = 12;
  ExpectAgreement(GenerateProgram(options));
}

TEST(Estimate, ASecondSheetBeginsWhereTheFirstOneEnded) {
  SheetRun sheet(
      "! SHEET : X500 Y300\r\nG71 G90\r\nG00 X100 Y0\r\nG31 T2=3\r\nG01 X160 Y0 F3600\r\n"
      "G31 T2=1\r\nM30\r\n");
  RunTimeOf(sheet, {});
  core::RunFigures figures;
  figures.StartX = sheet.Machine().At().X;
  figures.StartY = sheet.Machine().At().Y;
  const auto& passes = sheet.Passes();
  const auto second = partprogram::EstimateRun({passes.Table.Text, passes.Kerf}, figures, {});
  EXPECT_NEAR(second.Seconds(), RunTimeOf(sheet, {}), 1e-6);
}

TEST(Estimate, ItsFiguresAreTheSimulatedMachines) {
  const core::RunFigures figures;
  const MachineOptions machine;
  EXPECT_EQ(figures.RapidRate, machine.RapidRate);
  EXPECT_EQ(figures.DefaultFeed, machine.DefaultFeed);
  EXPECT_EQ(figures.ClampSeconds, machine.ClampSeconds);
  EXPECT_EQ(figures.RepositionSeconds, machine.RepositionSeconds);
  EXPECT_EQ(figures.RapidAcceleration, 0) << "the simulated machine has its speeds at once";
  EXPECT_EQ(figures.CutAcceleration, 0);
  EXPECT_EQ(figures.PierceSeconds, 0);
  RunRig rig;
  EXPECT_EQ(figures.StartX, rig.X());
  EXPECT_EQ(figures.StartY, rig.Y());
}

/// The same rows in the machine's table and in the text of the estimate, without records.
struct RowsCase {
  const char* Name;
  std::vector<std::string> Rows;
};

const RowsCase RowsCases[] = {
    {"Nothing", {}},
    {"OnlySettings", {"4,0", "5,1,3,-999,-999,-999,-999", "-999,0,0,0,0,0"}},
    {"OnlyADwell", {"0,0,0,0,2.5,0,0"}},
    {"AStopBetweenDwells", {"0,0,0,0,1,0,0", "0,0,0,0,-1,0,0", "0,0,0,0,2,0,0"}},
    {"AMoveAndALine", {"0,100,50,0,0,0,0", "1,200,50,0,0,1500,0"}},
    {"ALineWithoutAFeed", {"1,30,40,0,0,0,0"}},
    {"ALineOfNoLength", {"1,0,0,0,0,600,0", "1,10,0,0,-1,600,0"}},
    {"AFullCircle", {"0,50,50,0,0,0,0", "3,0,0,10,0,0,900,0", "2,0,0,10,0,-1,900,0"}},
    {"ACornerArc", {"1,20,0,0,0,1200,0", "3,0.15,0.15,0,0.15,-1,1200,0", "1,20.15,9,0,-1,1200,0"}},
    {"ClampsAndRepositions",
     {"0,0,0,0,-3,0,0", "9,0,0,0,99,0,0", "0,0,0,0,-2,0,0", "9,0,0,0,99,0,0"}},
};

TEST(Estimate, TablesWithoutRecordsTakeWhatTheirRowsSay) {
  for (const auto& test : RowsCases) {
    SCOPED_TRACE(test.Name);
    RunRig rig;
    std::string text;
    for (const auto& row : test.Rows) {
      rig.Row(row);
      text += "TABLE(500," + row + ")\r\n";
    }
    rig.End();
    text += "TABLE(500,-999)\r\n";
    rig.Select();
    rig.Run.CycleStart();
    for (int tick = 0; tick < 20000 && rig.Running(); ++tick) {
      rig.Run.Advance(0.05);
      if (rig.Run.AwaitingStart()) rig.Run.CycleStart();
    }
    ASSERT_FALSE(rig.Running());
    EXPECT_NEAR(partprogram::EstimateRun({text, {}}, {}, {}).Seconds(), rig.Vr(Vr::RunTime), 1e-6);
  }
}

}  // namespace
}  // namespace torvane::simulator

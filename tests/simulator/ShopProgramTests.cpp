// The programs of the example installation, from their text to the end of their run.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "ReadOnlyFiles.h"
#include "RunRig.h"
#include "core/MachineFiles.h"
#include "partprogram/Pipeline.h"
#include "support/SourceTree.h"

namespace torvane::simulator {

using namespace tests;
namespace {

namespace fs = std::filesystem;

fs::path Installation() { return torvane::tests::SourceTree() / "examples/installation"; }

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> ShopPrograms() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(Installation() / "Programs/SHOP")) {
    if (entry.path().extension() == ".prg") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class ShopProgram : public ::testing::TestWithParam<std::string> {
 protected:
  void Prepare() {
    core::ReadMachineFile(ReadAll(Installation() / "Data/Machine.dat"), "Machine.dat", false,
                          machine_);
    core::ReadProfilerFile(ReadAll(Installation() / "Data/Profiler.cfg"), machine_);
    const auto text = ReadAll(Installation() / "Programs/SHOP" / (GetParam() + ".prg"));
    partprogram::PassInput input;
    input.ProgramName = GetParam();
    input.DirectoryName = "SHOP";
    input.Machine = &machine_;
    input.ActiveStation = &station_;
    result_ = partprogram::RunPasses(partprogram::SqueezeProgram(text), input);
    ASSERT_EQ(result_.Outcome, partprogram::PassOutcome::Good);
    lines_ = core::SplitLines(result_.Table.Text);
    files_.Put("R\\Actvprg1.krw", partprogram::EncodeRecords(result_.Kerf));
  }

  ReadOnlyFiles files_;
  core::MachineData machine_;
  core::Station station_;
  partprogram::PassResult result_;
  std::vector<std::string_view> lines_;
};

double Off(const PathElement& element, const Position& at) {
  const Segment path = element.Path();
  return Distance(path.At(path.NearestDistance(at)), at);
}

TEST_P(ShopProgram, RunsToItsEndOnItsOwnPath) {
  Prepare();
  MachineOptions options;
  options.RootDirectory = "R\\";
  options.Files = &files_;
  RunRig rig(options);
  PathFile path;
  ASSERT_TRUE(path.Load(files_, "R\\Actvprg1.krw"));
  std::size_t sent = 0;
  const auto send = [&](double until) {
    for (; sent < lines_.size() && sent < static_cast<std::size_t>(until); ++sent) {
      ASSERT_EQ(rig.Send(std::string(lines_[sent])), ">>");
    }
  };
  send(20);
  rig.Select();
  rig.Run.CycleStart();
  int cuts = 0;
  for (int tick = 0; tick < 2000000 && rig.Running(); ++tick) {
    rig.Run.Advance(0.05);
    if (rig.Run.AwaitingStart()) rig.Run.CycleStart();
    send(rig.Vr(Vr::RunningLine) + 15);
    if (!rig.Bit(StatusBit::Beam)) continue;
    ++cuts;
    const PathElement* element = path.OfLine(rig.Run.Line());
    ASSERT_NE(element, nullptr);
    ASSERT_LT(Off(*element, rig.Run.At()), 0.002) << "line " << rig.Run.Line();
  }
  EXPECT_FALSE(rig.Running());
  EXPECT_GT(cuts, 0);
  EXPECT_EQ(rig.Count(EventKind::PathRefused), 0);
  EXPECT_EQ(rig.Count(EventKind::TableIncomplete), 0);
  EXPECT_EQ(rig.Count(EventKind::CycleFinished), 1);
  EXPECT_EQ(rig.Vr(Vr::RunningLine), static_cast<double>(lines_.size()));
}

INSTANTIATE_TEST_SUITE_P(Examples, ShopProgram, ::testing::ValuesIn(ShopPrograms()),
                         [](const auto& test) {
                           std::string name = test.param;
                           std::erase_if(name, [](char c) { return !std::isalnum(c); });
                           return name;
                         });

}  // namespace
}  // namespace torvane::simulator

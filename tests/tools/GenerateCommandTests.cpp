#include <sstream>

#include <gtest/gtest.h>

#include "core/MachineData.h"
#include "partprogram/Pipeline.h"
#include "support/TempDirectory.h"
#include "tools/GenerateCommand.h"
#include "tools/ProgramGenerator.h"

namespace torvane::tools {
namespace {

struct Generated {
  int Status = 0;
  std::string Out;
  std::string Errors;
};

Generated Generate(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream errors;
  const int status = GenerateMain(arguments, out, errors);
  return {status, out.str(), errors.str()};
}

partprogram::PassResult Passes(const std::string& program) {
  core::MachineData machine;
  machine.YDirection = 1;
  machine.TravelMaxX = 3000;
  machine.TravelMaxY = 3000;
  const core::Station station;
  return partprogram::RunPasses(partprogram::SqueezeProgram(program),
                                {"GENERATED", "TRIAL", 1, &machine, &station, {}});
}

TEST(Generator, WritesAProgramThatCanBeSelected) {
  const auto generated = Generate({"--profiles", "20", "--columns", "5"});
  ASSERT_EQ(generated.Status, 0) << generated.Errors;
  const auto passes = Passes(generated.Out);
  EXPECT_EQ(passes.Outcome, partprogram::PassOutcome::Good);
  EXPECT_TRUE(passes.Conversion.Errors.empty());
  EXPECT_EQ(passes.Conversion.Records.size(), 1 + 20 * 8U);
}

TEST(Generator, ReachesTheLargestProgramThatASlotHolds) {
  const auto passes = Passes(Generate({"--profiles", std::to_string(MostProfiles)}).Out);
  EXPECT_EQ(passes.Outcome, partprogram::PassOutcome::Good);
  EXPECT_GT(passes.Table.Lines + 10, 32767);

  GeneratorOptions oneMore;
  oneMore.Profiles = MostProfiles + 1;
  EXPECT_EQ(Passes(GenerateProgram(oneMore)).Outcome, partprogram::PassOutcome::ErrorsInCode);
}

TEST(Generator, ByExpressionsGivesTheSamePath) {
  const auto plain = Passes(Generate({"--profiles", "50"}).Out);
  const auto summed = Passes(Generate({"--profiles", "50", "--expressions"}).Out);
  EXPECT_EQ(summed.Outcome, partprogram::PassOutcome::Good);
  ASSERT_EQ(summed.Conversion.Records.size(), plain.Conversion.Records.size());
  for (std::size_t i = 0; i < plain.Conversion.Records.size(); ++i) {
    EXPECT_EQ(summed.Conversion.Records[i].EndPoint.X, plain.Conversion.Records[i].EndPoint.X);
    EXPECT_EQ(summed.Conversion.Records[i].EndPoint.Y, plain.Conversion.Records[i].EndPoint.Y);
  }
}

TEST(Generator, WritesToAFile) {
  const tests::TempDirectory home;
  const auto generated = Generate({home.Path() + "/BIG.prg", "--profiles", "3"});
  EXPECT_EQ(generated.Status, 0);
  EXPECT_EQ(generated.Out, "");
  EXPECT_EQ(home.Get("BIG.prg"), Generate({"--profiles", "3"}).Out);
}

TEST(Generator, SaysWhatItCannotDo) {
  EXPECT_EQ(Generate({"--profiles", "3277"}).Status, 2);
  EXPECT_EQ(Generate({"--columns", "0"}).Status, 2);
  EXPECT_EQ(Generate({"--kerf", "-1"}).Status, 2);
  const auto nowhere = Generate({"/nowhere/at/all.prg"});
  EXPECT_EQ(nowhere.Status, 2);
  EXPECT_NE(nowhere.Errors.find("/nowhere/at/all.prg"), std::string::npos);
  EXPECT_EQ(Generate({"--help"}).Status, 0);
}

}  // namespace
}  // namespace torvane::tools

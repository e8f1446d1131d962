// Every folder of tests/golden: the files that come out, byte for byte.
// TORVANE_GOLDEN=write in the environment writes them instead; look at the difference before you
// commit it.
#include <cctype>
#include <cstdlib>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "GoldenCase.h"
#include "GoldenCompare.h"

namespace torvane::tests {
namespace {

namespace fs = std::filesystem;

bool Writing() {
  const char* wish = std::getenv("TORVANE_GOLDEN");
  return wish != nullptr && std::string(wish) == "write";
}

fs::path ExampleOf(const GoldenCase& golden) {
  return ExamplePrograms() / (golden.Example + ".prg");
}

/// A copy of an example follows it.
void RefreshProgram(GoldenCase& golden) {
  if (golden.Example.empty()) return;
  fs::copy_file(ExampleOf(golden), golden.Folder / "program.prg",
                fs::copy_options::overwrite_existing);
  golden.Text = ReadBytes(golden.Folder / "program.prg");
}

class Golden : public ::testing::TestWithParam<std::string> {};

TEST_P(Golden, GivesTheExpectedFiles) {
  GoldenCase golden = LoadGoldenCase(GetParam());
  const fs::path folder = golden.Folder / "expected";
  if (Writing()) {
    RefreshProgram(golden);
    WriteFolder(folder, RunGoldenCase(golden));
    GTEST_SKIP() << folder << " written";
  }
  const GoldenFiles expected = ReadFolder(folder);
  const GoldenFiles made = RunGoldenCase(golden);
  ASSERT_FALSE(expected.empty()) << folder << " is empty: set TORVANE_GOLDEN=write to make it";
  for (const auto& [name, bytes] : expected) {
    const auto found = made.find(name);
    if (found == made.end()) {
      ADD_FAILURE() << GetParam() << ": " << name << " was not made";
      continue;
    }
    const std::string difference = FirstDifference(name, bytes, found->second);
    EXPECT_TRUE(difference.empty()) << GetParam() << ", " << name << ": " << difference;
  }
  for (const auto& [name, bytes] : made) {
    EXPECT_TRUE(expected.contains(name)) << GetParam() << ": " << name << " was made, unexpected";
  }
}

TEST_P(Golden, ACopyOfAnExampleIsTheExample) {
  const GoldenCase golden = LoadGoldenCase(GetParam());
  if (golden.Example.empty()) return;
  EXPECT_EQ(golden.Text, ReadBytes(ExampleOf(golden))) << golden.Example;
}

std::string TestName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  for (char& character : name) {
    if (std::isalnum(static_cast<unsigned char>(character)) == 0) character = '_';
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Folders, Golden, ::testing::ValuesIn(GoldenNames()), TestName);

TEST(GoldenFolders, EveryExampleProgramHasOne) {
  std::set<std::string> covered;
  for (const auto& name : GoldenNames()) covered.insert(LoadGoldenCase(name).Example);
  for (const auto& entry : fs::recursive_directory_iterator(ExamplePrograms())) {
    if (entry.path().extension() != ".prg" || entry.path().parent_path() == ExamplePrograms()) {
      continue;
    }
    const std::string name =
        entry.path().parent_path().filename().string() + "/" + entry.path().stem().string();
    EXPECT_TRUE(covered.contains(name)) << name << " has no golden folder";
  }
}

TEST(GoldenFolders, TheCommonMachineIsTheExampleInstallation) {
  for (const char* name : {"Machine.dat", "Profiler.cfg", "Machine.stn"}) {
    EXPECT_EQ(ReadBytes(GoldenRoot() / "common" / name),
              ReadBytes(ExamplePrograms().parent_path() / "Data" / name))
        << name;
  }
}

TEST(GoldenDifferences, NameTheRecordAndItsField) {
  std::string expected(516 * 2, '\0');
  std::string actual = expected;
  actual[516 + 180] = 1;  // Values[1] of the second record
  EXPECT_THAT(FirstDifference("program.drw", expected, actual),
              ::testing::StartsWith("record 2, Values[1] is "));
  actual = expected;
  actual[514] = -1;
  actual[515] = -1;
  EXPECT_EQ(FirstDifference("program.krw", expected, actual),
            "record 1, Blended is -1 and should be 0");
  EXPECT_EQ(FirstDifference("program.krw", expected, expected.substr(0, 516)),
            "the number of records is 1 and should be 2");
}

TEST(GoldenDifferences, NameTheLineOfAText) {
  EXPECT_EQ(FirstDifference("program.tbx", "A\r\nB\r\n", "A\r\nC\r\n"),
            "line 2 is \"C\" and should be \"B\"");
  EXPECT_EQ(FirstDifference("program.tbx", "A\r\nB\r\n", "A\r\n"),
            "line 2 is (the end of the file) and should be \"B\"");
  EXPECT_EQ(FirstDifference("program.tbx", "A\r\n", "A\n"),
            "line 1 ends in another way (CR LF, LF or the end of the file)");
  EXPECT_EQ(FirstDifference("program.tbx", "A\r\n", "A\r\n"), "");
}

}  // namespace
}  // namespace torvane::tests

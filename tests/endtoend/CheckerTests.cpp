// torvane-check as it is started: without Qt, and turning into its other half for what needs Qt.
#include <QImage>
#include <filesystem>
#include <string>
#include <vector>

#include "endtoend/Programs.h"
#include "support/SourceTree.h"

namespace torvane::tests {
namespace {

namespace fs = std::filesystem;

constexpr int LongEnough = 60'000;

class Checker : public ::testing::Test {
 protected:
  /// Gives the exit status of the program at `path`.
  int Run(const std::string& path, std::vector<std::string> arguments) {
    const std::string root = SourceTree().string() + "/examples/installation";
    arguments.insert(arguments.begin(), {"--root", root});
    arguments.insert(arguments.end(), {"SHOP", "STAR"});
    Program.Start(path.c_str(), arguments);
    return Program.WaitForEnd(LongEnough);
  }
  /// A copy of the program on its own.
  [[nodiscard]] std::string Alone() const {
    fs::create_directories(Directory.Path() + "/bin");
    const std::string copy = Directory.Path() + "/bin/torvane-check";
    fs::copy_file(TORVANE_CHECK_PROGRAM, copy);
    return copy;
  }

  TempDirectory Directory;
  RunningProgram Program{"torvane-check"};
};

TEST_F(Checker, PrintsItsReport) {
  EXPECT_EQ(Run(TORVANE_CHECK_PROGRAM, {}), 0);
  EXPECT_NE(Program.Output().find("1 program: 1 good, 0 refused"), std::string::npos);
}

TEST_F(Checker, PrintsJson) {
  EXPECT_EQ(Run(TORVANE_CHECK_PROGRAM, {"--json"}), 0);
  EXPECT_NE(Program.Output().find("\"checked\": 1"), std::string::npos);
}

TEST_F(Checker, DrawsPictures) {
  const std::string picture = Directory.Path() + "/plot.png";
  EXPECT_EQ(Run(TORVANE_CHECK_PROGRAM, {"--plot", picture, "--size", "400x300"}), 0);
  EXPECT_EQ(QImage(QString::fromStdString(picture)).size(), QSize(400, 300));
}

TEST_F(Checker, NeedsNothingElseForItsReport) {
  EXPECT_EQ(Run(Alone(), {}), 0);
  EXPECT_NE(Program.Output().find("1 program: 1 good, 0 refused"), std::string::npos);
}

TEST_F(Checker, SaysWhichHalfIsMissing) {
  EXPECT_EQ(Run(Alone(), {"--json"}), 2);
  EXPECT_NE(Program.Errors().find("torvane-check: pictures and JSON need torvane-check-qt: "),
            std::string::npos)
      << Program.Errors();
  EXPECT_EQ(Program.Output(), "");
}

}  // namespace
}  // namespace torvane::tests

#include <gtest/gtest.h>

#include "tools/CheckOptions.h"
#include "tools/ProgramBeside.h"

namespace torvane::tools {
namespace {

TEST(ProgramBeside, IsLookedForWhereItWasBuiltAndThenWhereItIsInstalled) {
  EXPECT_EQ(PlacesOfProgram("/usr/bin/torvane-check", "torvane-check-qt"),
            (std::vector<std::string>{"/usr/bin/torvane-check-qt",
                                      "/usr/libexec/torvane/torvane-check-qt"}));
}

TEST(ProgramBeside, ThatIsNotThereIsNamedWithItsPlace) {
  char name[] = "anything";
  char* argv[] = {name, nullptr};
  const std::string fault = BecomeProgram("torvane-no-such-program", argv);
  EXPECT_NE(fault.find("libexec/torvane/torvane-no-such-program, "), std::string::npos) << fault;
}

TEST(CheckWithoutQt, TakesEverythingButPicturesAndJson) {
  EXPECT_FALSE(NeedsQt({}));
  EXPECT_FALSE(NeedsQt({"--root", "/r", "--out", "/o", "--kerf", "SHOP", "PLOT"}));
  EXPECT_TRUE(NeedsQt({"SHOP", "--plot", "p.png"}));
  EXPECT_TRUE(NeedsQt({"SHOP", "--plot=p.svg"}));
  EXPECT_TRUE(NeedsQt({"--json", "SHOP"}));
}

}  // namespace
}  // namespace torvane::tools

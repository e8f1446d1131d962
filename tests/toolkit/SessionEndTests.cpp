// How the program is asked to end, and how it ends the machine's session.
#include <csignal>
#include <optional>
#include <utility>

#include "support/QtEnvironment.h"
#include "toolkit/EndSignals.h"
#include "toolkit/QtLoop.h"
#include "toolkit/QtSessionEnd.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

TEST(SessionEnd, OnTheMachinesOwnPcItIsForced) {
  EXPECT_EQ(PowerOffCommand(), (QStringList{"systemctl", "poweroff", "--ignore-inhibitors"}));
}

TEST(SessionEnd, EachSignalComesAsAnEventOfTheLoop) {
  QtLoop loop;
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    // Where the tests run without a terminal some are ignored from the start.
    const auto before = std::signal(number, SIG_DFL);
    int asked = 0;
    std::optional<EndSignals> asking(std::in_place, [&] { ++asked; });
    std::raise(number);
    EXPECT_EQ(asked, 0) << "not inside the handler";
    loop.WaitUntil([&] { return asked > 0; });
    EXPECT_EQ(asked, 1) << number;
    std::raise(number);
    loop.WaitUntil([&] { return asked > 1; });
    EXPECT_EQ(asked, 2) << "a second time";
    asking.reset();
    std::signal(number, before);
  }
}

TEST(SessionEnd, AnIgnoredSignalStaysIgnored) {
  QtLoop loop;
  const auto before = std::signal(SIGHUP, SIG_IGN);
  int asked = 0;
  {
    const EndSignals asking([&] { ++asked; });
    std::raise(SIGHUP);
    std::raise(SIGTERM);
    loop.WaitUntil([&] { return asked > 0; });
  }
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

TEST(SessionEnd, AfterwardsTheSignalsAreAsTheyWere) {
  const auto mine = [](int) {};
  const auto before = std::signal(SIGTERM, mine);
  {
    const EndSignals asking([] {});
  }
  EXPECT_EQ(std::signal(SIGTERM, before), static_cast<void (*)(int)>(mine));
}

}  // namespace
}  // namespace torvane::tests

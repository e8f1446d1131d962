// torvane-contract on a pseudo-terminal against the real torvane-sim.
#include <csignal>

#include <gmock/gmock.h>

#include "Programs.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;

constexpr int LongMs = 60000;

struct ContractProgram : EndToEnd {
  void StartContract(const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments = {"--device", Place("line")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    Contract.Start(TORVANE_CONTRACT_PROGRAM, arguments);
  }

  RunningProgram Contract{"torvane-contract"};
};

TEST_F(ContractProgram, HoldsOnTheSimulatedControllerWithARun) {
  StartMachine(1);
  StartContract();
  ASSERT_TRUE(Contract.WaitFor("Press cycle start", LongMs));
  Machine.Type("start");
  EXPECT_EQ(Contract.WaitForEnd(LongMs), 0);
  EXPECT_THAT(Contract.Output(), HasSubstr("20 of 20 clauses hold\n"));
}

TEST_F(ContractProgram, HoldsWithoutARunAsJson) {
  StartMachine(1);
  StartContract({"--no-run", "--json"});
  EXPECT_EQ(Contract.WaitForEnd(LongMs), 0);
  EXPECT_THAT(Contract.Output(), HasSubstr("\"good\": true"));
}

TEST_F(ContractProgram, ASignalWhileItWaitsPutsEverythingBack) {
  StartMachine(1);
  Machine.Type("set 84 12");
  StartContract();
  ASSERT_TRUE(Contract.WaitFor("Press cycle start", LongMs));
  Contract.Signal(SIGTERM);
  EXPECT_EQ(Contract.WaitForEnd(LongMs), 1);
  EXPECT_THAT(Contract.Output(), HasSubstr("not tried"));
  Machine.Type("get 84");
  EXPECT_TRUE(Machine.WaitFor("12", LongMs));
}

TEST_F(ContractProgram, AReaderThatGoesAwayLeavesNothingChanged) {
  StartMachine(1);
  Machine.Type("set 84 12");
  Contract.Start("/bin/sh", {"-c", "\"$0\" --device \"$1\" --start 1 | head -n 1",
                             TORVANE_CONTRACT_PROGRAM, Place("line")});
  EXPECT_EQ(Contract.WaitForEnd(LongMs), 0);
  EXPECT_THAT(Contract.Errors(), HasSubstr("Press cycle start"));
  EXPECT_THAT(Contract.Errors(), HasSubstr("the output cannot be written"));
  Machine.Type("get 84");
  EXPECT_TRUE(Machine.WaitFor("12", LongMs));
}

TEST_F(ContractProgram, WithClosedOutputsNothingThatItSaysGoesToTheController) {
  StartMachine(1);
  Machine.Type("set 84 12");
  Contract.Start("/bin/sh", {"-c", "exec \"$0\" --device \"$1\" --start 1 <&- >&- 2>&-",
                             TORVANE_CONTRACT_PROGRAM, Place("line")});
  EXPECT_EQ(Contract.WaitForEnd(LongMs), 2) << "what it says is known to be lost";
  Machine.Type("get 84");
  EXPECT_TRUE(Machine.WaitFor("12", LongMs));
  EXPECT_THAT(Machine.Output(), ::testing::Not(HasSubstr("cycle start")));
}

TEST_F(ContractProgram, WithoutADeviceItEndsWithOneSentence) {
  StartContract();
  EXPECT_EQ(Contract.WaitForEnd(LongMs), 2);
  EXPECT_THAT(Contract.Errors(), HasSubstr("cannot be opened\n"));
}

}  // namespace
}  // namespace torvane::tests

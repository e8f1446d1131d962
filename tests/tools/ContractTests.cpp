// torvane-contract against the simulated controller, and against controllers with one fault each.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "ContractTrials.h"
#include "support/TempDirectory.h"
#include "tools/CheckOptions.h"
#include "tools/ContractCommand.h"
#include "tools/ContractReport.h"

namespace torvane::tools {

using namespace tests;
namespace {

using ::testing::HasSubstr;

TEST(Contract, HoldsOnTheSimulatedController) {
  FaultyController controller({}, Preset());
  const auto before = ValuesOf(controller);
  const auto result = controller.Try();
  EXPECT_EQ(result.Barred, "");
  EXPECT_TRUE(result.Holds()) << ContractText(result);
  EXPECT_EQ(result.Clauses.size(), 20U);
  EXPECT_EQ(ValuesOf(controller), before) << "everything is put back";
  EXPECT_FALSE(controller.Cut);
  EXPECT_EQ(controller.Asked, std::vector{OperatorWish::CycleStart});
  EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
}

TEST(Contract, HoldsASecondTimeOnTheSameController) {
  FaultyController controller;
  EXPECT_TRUE(controller.Try().Holds());
  EXPECT_TRUE(controller.Try().Holds());
}

RC_GTEST_PROP(ContractProperty, TheHeadEndsWhereItBeganWhereverThatIs, ()) {
  FaultyController controller;
  const double x = *rc::gen::inRange(-50000, 300000) / 100.0;
  const double y = *rc::gen::inRange(-50000, 150000) / 100.0;
  controller.PutHead(x, y);
  const auto result = controller.Try();
  RC_ASSERT(result.Holds());
  RC_ASSERT(std::abs(controller.Controller.TheMachine().At().X - x) < 0.001);
  RC_ASSERT(std::abs(controller.Controller.TheMachine().At().Y - y) < 0.001);
}

// ---- controllers with one fault ----

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

struct FaultCase {
  const char* Clause;  ///< the one that it breaks
  LineFault Fault;
};

std::vector<FaultCase> FaultCases() {
  using Text = std::string;
  std::vector<FaultCase> cases;
  const auto spoils = [&](const char* clause, auto spoil) {
    cases.push_back({clause, {{}, spoil, {}}});
  };
  spoils("echo", [](const Text& line, Text answer, bool) {
    return answer.substr(line.empty() ? 0 : line.size() + 2);
  });
  spoils("prompt", [](const Text&, Text answer, bool) { return Replaced(answer, ">>", "> "); });
  spoils("error mark",
         [](const Text&, Text answer, bool) { return Replaced(answer, "%\r\n", ""); });
  spoils("values", [](const Text& line, Text answer, bool) {
    const auto value = line.starts_with("? ") ? line.size() + 2 : Text::npos;
    const auto end = value == Text::npos ? value : answer.find('\r', value);
    if (end == Text::npos || end - value <= 5) return answer;
    return answer.erase(value + 5, end - value - 5);  // five digits are all that it prints
  });
  spoils("queries", [](const Text& line, Text answer, bool) {
    return line == "? ENDMOVE AXIS(1)" ? line + "\r\n%\r\n>>" : answer;
  });
  cases.push_back(
      {"expressions",
       {[](const Text& line, bool) { return line.find(" OR ") != Text::npos; }, {}, {}}});
  cases.push_back(
      {"block skips", {[](const Text& line, bool) { return line == "VR(93)=1"; }, {}, {}}});
  cases.push_back({"feed override",
                   {[](const Text& line, bool) { return line.starts_with("VR(68)="); }, {}, {}}});
  spoils("table at rest", [](const Text& line, Text answer, bool running) {
    return Rows(line) && !running && line.find("-999") == Text::npos ? line + "\r\n%\r\n>>"
                                                                     : answer;
  });
  spoils("table in force", [](const Text& line, Text answer, bool running) {
    return line == "? VR(81)" && !running && answer.find("\r\n0\r\n") != Text::npos
               ? WithValue(line, "3")
               : answer;
  });
  cases.push_back(
      {"table in force", {[](const Text& line, bool) { return line == "VR(91)=2"; }, {}, {}}});
  spoils("command word", [word = false](const Text& line, Text answer, bool) mutable {
    word = word || line == "VR(48)=15";
    return word && line == "? VR(48)" ? WithValue(line, "15") : answer;
  });
  spoils("rows taken", [](const Text& line, Text answer, bool running) {
    return Rows(line) && running ? line + "\r\n%\r\n>>" : answer;
  });
  cases.back().Fault.Loses = [](const Text& line, bool running) { return Rows(line) && running; };
  cases.push_back(
      {"rows run", {[](const Text& line, bool running) { return Rows(line) && running; }, {}, {}}});
  spoils("status word", [](const Text& line, Text answer, bool running) {
    return line == "? VR(19)" && running ? WithValue(line, "8192") : answer;
  });
  spoils("running record", [](const Text& line, Text answer, bool) {
    return line == "? VR(81)" ? WithValue(line, "0") : answer;
  });
  spoils("run time", [](const Text& line, Text answer, bool) {
    return line == "? VR(52)" ? WithValue(line, "0") : answer;
  });
  spoils("run time", [](const Text& line, Text answer, bool) {
    return line == "? VR(52)" ? WithValue(line, "77") : answer;
  });
  spoils("positions", [](const Text& line, Text answer, bool) {
    return line.starts_with("? MPOS") ? WithValue(line, "0") : answer;
  });
  spoils("positions", [](const Text& line, Text answer, bool running) {
    return line == "? MPOS AXIS(0)" && running ? WithValue(line, "500") : answer;
  });
  spoils("batch count", [](const Text& line, Text answer, bool) {
    return line == "? VR(85)" ? WithValue(line, "0") : answer;
  });
  cases.push_back({"reply time", {{}, {}, [](int count) { return count % 40 == 0 ? 11000 : 2; }}});
  return cases;
}

TEST(Contract, EachFaultFailsTheClauseThatItBreaksAndNoOther) {
  for (const auto& test : FaultCases()) {
    SCOPED_TRACE(test.Clause);
    FaultyController controller(test.Fault);
    const auto result = controller.Try();
    EXPECT_EQ(result.Barred, "");
    EXPECT_EQ(NamesOf(result, ClauseState::Fails), std::vector<std::string>{test.Clause})
        << ContractText(result);
    EXPECT_FALSE(result.Holds());
    EXPECT_FALSE(controller.Cut);
    EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
  }
}

TEST(Contract, ThereAreMoreThanTwelveFaultyControllers) { EXPECT_GE(FaultCases().size(), 12U); }

TEST(Contract, ABeamThatShowsOnceIsTold) {
  int asked = 0;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool running) {
    return line == "? VR(19)" && running && ++asked == 5 ? WithValue(line, "2121728") : answer;
  };
  FaultyController controller(fault);
  EXPECT_EQ(NamesOf(controller.Try(), ClauseState::Fails), std::vector<std::string>{"beam off"});
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}));
}

TEST(Contract, TheRunNeverWaitsForARowOnASlowLine) {
  LineFault fault;
  int running = 0;
  int least = 100;
  fault.DelayMs = [](int) { return 45; };
  fault.Spoils = [&](const std::string& line, std::string answer, bool runs) {
    if (line.starts_with("TABLE(") && runs) ++running;
    if (line == "? VR(81)" && runs && 10 + running < 25) {
      least = std::min(least, 10 + running - std::stoi(answer.substr(line.size() + 2)));
    }
    return answer;
  };
  FaultyController controller(fault);
  EXPECT_TRUE(controller.Try().Holds());
  EXPECT_EQ(running, 15);
  EXPECT_GE(least, 3) << "rows ahead of the running record";
}

TEST(Contract, ARunThatHangsIsStoppedByTheOperator) {
  LineFault fault;
  fault.Loses = [](const std::string& line, bool running) { return Rows(line) && running; };
  FaultyController controller(fault, Preset());
  const auto before = ValuesOf(controller);
  const auto result = controller.Try();
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}));
  EXPECT_THAT(NamesOf(result, ClauseState::NotTried), ::testing::Contains("batch count"));
  EXPECT_EQ(ValuesOf(controller), before);
}

TEST(Contract, ARunThatEndsEarlyHasNotRunItsRows) {
  FaultyController* machine = nullptr;
  LineFault fault;
  fault.Loses = [&](const std::string& line, bool running) {
    if (!Rows(line) || !running) return false;
    if (line.starts_with("TABLE(820,")) {
      machine->Controller.Receive("TABLE(820,-999)\r");
      (void)machine->Controller.TakeOutput();
    }
    return true;
  };
  FaultyController controller(fault);
  machine = &controller;
  const auto result = controller.Try();
  EXPECT_THAT(NamesOf(result, ClauseState::Fails), ::testing::Contains("rows run"));
  EXPECT_THAT(ContractText(result), HasSubstr("the run came to line 11 of 25 and no further"));
}

TEST(Contract, AMachineThatIsNotAtRestIsLeftAlone) {
  FaultyController controller;
  controller.Controller.TheMachine().FeedHold();
  const auto result = controller.Try();
  EXPECT_EQ(result.Barred, "the machine is not at rest: VR(19) is 2048");
  EXPECT_FALSE(result.Holds());
  EXPECT_EQ(controller.Lines, (std::vector<std::string>{"", "? VR(19)"}));
}

TEST(Contract, ADeadLineIsSaidSo) {
  FaultyController controller;
  controller.Port.SetPeer([](std::string_view) {});
  EXPECT_EQ(controller.Try().Barred, "no answer to \"\" in 20000 ms");
}

TEST(Contract, AReplyInSmallPiecesIsOne) {
  FaultyController controller;
  controller.Port.SetPeer([&](std::string_view bytes) {
    controller.CatchUp();
    controller.Controller.Receive(bytes);
    const std::string answer = controller.Controller.TakeOutput();
    for (std::size_t i = 0; i < answer.size(); ++i) {
      controller.Loop.After(static_cast<std::int64_t>(3 * i + 1), [&controller, c = answer[i]] {
        controller.Port.Deliver({&c, 1});
      });
    }
  });
  const auto result = controller.Try();
  EXPECT_TRUE(result.Holds()) << ContractText(result);
}

// ---- the report and the options ----

TEST(ContractReport, NamesWhatHoldsAndWhatDoesNot) {
  ContractResult result;
  result.Clauses = {{"echo", "every line comes back", ClauseState::Holds, ""},
                    {"prompt", "every reply ends", ClauseState::Fails, "\"\" gave > "},
                    {"run time", "it counts", ClauseState::NotTried, "no cycle start came"}};
  EXPECT_EQ(ContractText(result),
            "holds      echo             every line comes back\n"
            "FAILS      prompt           every reply ends\n"
            "                            \"\" gave > \n"
            "not tried  run time         it counts\n"
            "                            no cycle start came\n"
            "1 of 3 clauses hold, 1 fail, 1 not tried\n");
  const auto json = ContractJson(result);
  EXPECT_THAT(json, HasSubstr("\"good\": false"));
  EXPECT_THAT(json, HasSubstr("\"state\": \"fails\""));
}

TEST(ContractOptions, TheLineIsSetAsInTheInstallation) {
  const tests::TempDirectory home;
  home.Put("Trio.cms", "Port\r\nPort : 1\r\nBaud : 19200\r\nE\r\n7\r\n2\r\nRTS\r\n");
  home.Put("Trio.cfg", "50\r\n50\r\n3000\r\n");
  std::string help;
  const auto options = ReadContractOptions({"--device", "/dev/x", "--root", home.Path()}, help);
  EXPECT_EQ(options.Setup.Settings, "19200,E,7,2");
  EXPECT_EQ(options.Setup.Handshaking, platform::Handshake::RtsCts);
  EXPECT_EQ(options.Settings.ReplyMs, 3000);
  EXPECT_TRUE(options.Settings.Run);
  const auto given = ReadContractOptions(
      {"--device", "/dev/x", "--root", home.Path(), "--reply-ms", "500", "--no-run"}, help);
  EXPECT_EQ(given.Settings.ReplyMs, 500);
  EXPECT_FALSE(given.Settings.Run);
}

TEST(ContractOptions, WrongUsesAreSaidSo) {
  const std::vector<std::vector<std::string>> uses = {
      {},
      {"--device", "/dev/x", "--baud", "123"},
      {"--device", "/dev/x", "--baud", "9600", "--root", "."},
      {"--device", "/dev/x", "--reply-ms", "0"},
      {"--device", "/dev/x", "--start", "0"},
      {"--device", "/dev/x", "more"}};
  for (const auto& use : uses) {
    std::string help;
    EXPECT_THROW((void)ReadContractOptions(use, help), WrongUse) << use.size();
  }
}

}  // namespace
}  // namespace torvane::tools

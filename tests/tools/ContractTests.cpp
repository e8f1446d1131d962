// torvane-contract against the simulated controller, and against controllers with one fault each.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "FaultyController.h"
#include "support/TempDirectory.h"
#include "tools/CheckOptions.h"
#include "tools/ContractCommand.h"
#include "tools/ContractReport.h"
#include "tools/ContractSession.h"

namespace torvane::tools {
namespace {

using simulator::ControllerOptions;
using ::testing::HasSubstr;
using tests::FaultyController;
using tests::LineFault;

constexpr int Written[] = {22, 23, 95, 68, 82, 83, 84, 85, 91, 92, 93};

std::vector<std::string> NamesOf(const ContractResult& result, ClauseState state) {
  std::vector<std::string> names;
  for (const auto& clause : result.Clauses) {
    if (clause.State == state) names.push_back(clause.Name);
  }
  return names;
}

/// Variables that are all at something else than what a trial writes.
ControllerOptions Preset() {
  ControllerOptions options;
  options.Presets = {{22, 7},  {23, 8}, {95, 9}, {68, 75}, {82, 3}, {83, 30},
                     {84, 10}, {85, 4}, {91, 1}, {92, 1},  {93, 1}};
  return options;
}

std::vector<double> ValuesOf(FaultyController& controller) {
  std::vector<double> values;
  for (const int number : Written) values.push_back(controller.Variable(number));
  return values;
}

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

/// The answer to a query of a variable with another value.
std::string WithValue(const std::string& line, const std::string& value) {
  return line + "\r\n" + value + "\r\n>>";
}

bool Rows(const std::string& line) { return line.starts_with("TABLE("); }
bool EndRow(const std::string& line) { return Rows(line) && line.ends_with(",-999)"); }
bool RowsOfTheRun(const std::string& line) { return Rows(line) && !EndRow(line); }

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

// ---- controllers that could start a program of the owner's ----

/// The answers of a controller to some lines, in place of its own.
LineFault Answering(std::map<std::string, std::string> values) {
  LineFault fault;
  fault.Spoils = [values = std::move(values)](const std::string& line, std::string answer, bool) {
    const auto found = values.find(line);
    return found == values.end() ? answer : line + "\r\n" + found->second + "\r\n>>";
  };
  return fault;
}

bool Sent(const FaultyController& controller, const std::string& line) {
  return std::find(controller.Lines.begin(), controller.Lines.end(), line) !=
         controller.Lines.end();
}

TEST(Contract, WithoutThePositionNoCycleStartIsAskedForAndNoSlotIsPutInForce) {
  for (const auto* const line : {"? MPOS AXIS(0)", "? MPOS AXIS(1)", "? VR(59)"}) {
    SCOPED_TRACE(line);
    FaultyController controller(Answering({{line, "%"}}), Preset());
    controller.PutOwnersProgram(750);
    const auto before = ValuesOf(controller);
    const auto result = controller.Try();
    EXPECT_TRUE(controller.Asked.empty());
    EXPECT_FALSE(Sent(controller, "VR(91)=2"));
    EXPECT_FALSE(controller.Cut);
    EXPECT_THAT(NamesOf(result, ClauseState::NotTried),
                ::testing::IsSupersetOf({"table at rest", "table in force", "rows taken"}));
    EXPECT_EQ(ValuesOf(controller), before);
  }
}

TEST(Contract, NoCycleStartIsAskedForWhereSlot2IsNotKnownToBeInForce) {
  LineFault stays;
  stays.Loses = [](const std::string& line, bool) { return line == "VR(91)=2"; };
  const LineFault faults[] = {stays, Answering({{"? VR(91)", "%"}}), Answering({{"VR(91)=2", "%"}}),
                              Answering({{"? VR(81)", "4"}})};
  for (const auto& fault : faults) {
    FaultyController controller(fault, Preset());
    controller.PutOwnersProgram(500);
    const auto result = controller.Try();
    EXPECT_TRUE(controller.Asked.empty()) << ContractText(result);
    EXPECT_THAT(NamesOf(result, ClauseState::Holds),
                ::testing::Not(::testing::Contains("table in force")));
    EXPECT_THAT(NamesOf(result, ClauseState::NotTried), ::testing::Contains("rows run"));
  }
}

TEST(Contract, NoCycleStartIsAskedForWhereTheHeadHasLeftItsPlace) {
  FaultyController controller({}, Preset());
  controller.Heard = [&](const std::string& line) {
    if (line == "VR(48)=15") controller.Controller.Memory().WriteVariable(23, 1);
  };
  const auto result = controller.Try();
  EXPECT_TRUE(controller.Asked.empty()) << ContractText(result);
  EXPECT_THAT(ContractText(result), HasSubstr("mm from where the program begins"));
}

TEST(Contract, ATargetThatIsNotKeptStartsNoMove) {
  for (const int target : {22, 23, 95}) {
    SCOPED_TRACE(target);
    const std::string name = "VR(" + std::to_string(target) + ")";
    LineFault fault;
    fault.Loses = [&](const std::string& line, bool) { return line.starts_with(name + "="); };
    auto options = Preset();
    options.Presets.push_back({target, 40});
    FaultyController controller(fault, options);
    controller.OperatorThere = false;
    const auto result = controller.Try();
    EXPECT_FALSE(Sent(controller, "VR(48)=15"));
    EXPECT_EQ(NamesOf(result, ClauseState::Fails), std::vector<std::string>{"command word"});
    EXPECT_THAT(ContractText(result), HasSubstr(name + " is 40, not 0"));
    const auto& at = controller.Controller.TheMachine().At();
    EXPECT_EQ(std::max({std::abs(at.X), std::abs(at.Y), std::abs(at.Z)}), 0);
  }
}

// ---- a move that nobody asked for ----

/// Cuts one answer to `asked` after its first digit by a pause; the rest comes with the next
/// answer.
LineFault CutsOnce(const std::string& asked) {
  LineFault fault;
  fault.Spoils = [asked, rest = std::string(), done = false](const std::string& line,
                                                             std::string answer, bool) mutable {
    if (line == asked && !std::exchange(done, true)) {
      const auto first = line.size() + 3;
      rest = answer.substr(first);
      return answer.substr(0, first);
    }
    return std::exchange(rest, {}) + answer;
  };
  return fault;
}

double LeftItsPlaceBy(FaultyController& controller, double x, double y) {
  const auto& at = controller.Controller.TheMachine().At();
  return std::hypot(at.X - x, at.Y - y);
}

TEST(Contract, ANumberThatAPauseCutsIsNoneAndItsRestIsNoAnswer) {
  for (const auto* const asked :
       {"? MPOS AXIS(0)", "? MPOS AXIS(1)", "? VR(59)", "? VR(84)", "? VR(22)", "? VR(91)"}) {
    SCOPED_TRACE(asked);
    auto options = Preset();
    options.Presets.push_back({84, 1200});
    FaultyController controller(CutsOnce(asked), options);
    controller.PutHead(300, 200);
    controller.PutOwnersProgram(500);
    const auto before = ValuesOf(controller);
    double farthest = 0;
    controller.Heard = [&](const std::string&) {
      farthest = std::max(farthest, LeftItsPlaceBy(controller, 300, 200));
    };
    const auto result = controller.Try();
    EXPECT_LT(farthest, 1.1) << ContractText(result);
    EXPECT_EQ(ValuesOf(controller), before);
    EXPECT_FALSE(controller.Cut);
  }
}

TEST(ContractSession, TheRestOfACutReplyIsNoAnswerToTheNextQuestion) {
  FaultyController controller(CutsOnce("? VR(83)"), Preset());
  ContractSession session({controller.Loop, controller.Port, {}}, {});
  EXPECT_EQ(session.Value("VR(82)"), 3);
  EXPECT_EQ(session.Value("VR(83)"), std::nullopt) << "3 of 30";
  EXPECT_EQ(session.Value("VR(84)"), std::nullopt) << "the 0 of 30";
  EXPECT_EQ(session.Value("VR(84)"), 10);
}

TEST(Contract, APositionOrDivisorThatIsReadWrongOnceMovesNothing) {
  for (const auto* const asked : {"? MPOS AXIS(0)", "? VR(59)"}) {
    for (int wrong = 1; wrong <= 5; ++wrong) {
      SCOPED_TRACE(asked + std::to_string(wrong));
      LineFault fault;
      fault.Spoils = [&, count = 0](const std::string& line, std::string answer, bool) mutable {
        return line == asked && ++count == wrong ? WithValue(line, "10") : answer;
      };
      FaultyController controller(fault, Preset());
      controller.PutHead(300, 200);
      double farthest = 0;
      controller.Heard = [&](const std::string&) {
        farthest = std::max(farthest, LeftItsPlaceBy(controller, 300, 200));
      };
      const auto result = controller.Try();
      EXPECT_LT(farthest, 1.1) << ContractText(result);
    }
  }
}

TEST(Contract, AMeasuredPositionThatStandsStillElsewhereMovesNothing) {
  FaultyController controller(Answering({{"? MPOS AXIS(0)", "0"}}), Preset());
  controller.PutHead(300, 200);
  const auto result = controller.Try();
  EXPECT_FALSE(Sent(controller, "VR(48)=15"));
  EXPECT_THAT(ContractText(result), HasSubstr("the head is not known to be at 0: it is at 300"));
  EXPECT_TRUE(controller.Asked.empty()) << "the program would begin elsewhere too";
  EXPECT_LT(LeftItsPlaceBy(controller, 300, 200), 0.001);
}

TEST(Contract, AMoveThatLeavesItsPlaceIsStoppedAndNothingMoreIsTried) {
  FaultyController controller({}, Preset());
  controller.Heard = [&](const std::string& line) {
    if (line == "VR(48)=15") controller.Controller.Memory().WriteVariable(23, 400);
  };
  const auto result = controller.Try();
  EXPECT_EQ(controller.Asked, std::vector{OperatorWish::Stop});
  EXPECT_EQ(std::count(controller.Lines.begin(), controller.Lines.end(), "VR(48)=0"), 2);
  EXPECT_THAT(ContractText(result), HasSubstr("the head has moved"));
  EXPECT_THAT(NamesOf(result, ClauseState::NotTried), ::testing::Contains("rows taken"));
}

TEST(Contract, ACycleStartInTheMiddleOfTheCommandWordGetsNoMove) {
  FaultyController controller({}, Preset());
  controller.Heard = [&](const std::string& line) {
    if (line != "VR(48)=0") return;
    controller.Controller.TheMachine().CycleStart();
    controller.Controller.TheMachine().FeedHold();
  };
  EXPECT_FALSE(controller.Try().Holds());
  EXPECT_FALSE(Sent(controller, "VR(48)=15"));
  EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
}

TEST(Contract, ACommandWordThatDoesNotComeToRestIsNamed) {
  bool moved = false;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool) {
    moved = moved || line == "VR(48)=15";
    return moved && line == "? VR(48)" ? WithValue(line, "15") : answer;
  };
  FaultyController controller(fault);
  EXPECT_THAT(controller.Try().NotPutBack, ::testing::ElementsAre("VR(48) to 0: it is 15"));
}

TEST(Contract, ABlankBeforeANumberIsNoFault) {
  LineFault fault;
  fault.Spoils = [](const std::string& line, std::string answer, bool) {
    const bool value = line.starts_with("? ") && answer.find('%') == std::string::npos;
    return value ? answer.insert(line.size() + 2, " ") : answer;
  };
  FaultyController controller(fault);
  const auto result = controller.Try();
  EXPECT_TRUE(result.Holds()) << ContractText(result);
}

// ---- a run that is broken off ----

TEST(Contract, NoRowOfTheOwnerStandsBehindTheHarmlessOnes) {
  FaultyController controller;
  EXPECT_TRUE(controller.Try().Holds());
  const auto& lines = controller.Lines;
  const auto first = std::find_if(lines.begin(), lines.end(), RowsOfTheRun);
  std::vector<std::string> ends;
  std::copy_if(lines.begin(), first, std::back_inserter(ends), Rows);
  ASSERT_EQ(ends.size(), 15U);
  for (int i = 0; i < 15; ++i) {
    EXPECT_EQ(ends[static_cast<std::size_t>(i)], "TABLE(" + std::to_string(820 + 7 * i) + ",-999)");
  }
}

TEST(Contract, ARunThatIsBrokenOffComesToItsEndThoughNobodyPressesStop) {
  for (int ms = 100; ms < 8000; ms += 200) {
    SCOPED_TRACE(ms);
    FaultyController controller({}, Preset());
    controller.StopPressed = false;
    const auto before = ValuesOf(controller);
    std::function<void()> end;
    controller.Loop.After(ms, [&] {
      if (end) end();
    });
    const auto result =
        controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
    EXPECT_TRUE(result.NotPutBack.empty()) << ContractText(result);
    EXPECT_EQ(ValuesOf(controller), before);
    EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
    const auto& lines = controller.Lines;
    const auto lastRow = std::find_if(lines.rbegin(), lines.rend(), Rows);
    EXPECT_TRUE(lastRow == lines.rend() || EndRow(*lastRow)) << "the next start would go on";
  }
}

TEST(Contract, AStatusWordThatNeverShowsARunIsNotBelievedAfterAnInterruption) {
  for (const bool rowsLost : {false, true}) {
    SCOPED_TRACE(rowsLost);
    std::function<void()> end;
    LineFault fault;
    fault.Spoils = [&](const std::string& line, std::string answer, bool running) {
      if (line == "? VR(81)" && running && answer.find("\r\n4\r\n") != std::string::npos) end();
      return line == "? VR(19)" ? WithValue(line, "0") : answer;
    };
    fault.Loses = [&](const std::string& line, bool running) {
      return rowsLost && running && Rows(line);
    };
    FaultyController controller(fault, Preset());
    bool intoARun = false;
    controller.Heard = [&](const std::string& line) {
      if (line != "VR(91)=1") return;
      intoARun = controller.Controller.TheMachine().Mode() == simulator::MachineMode::Running;
    };
    const auto result =
        controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
    EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}));
    EXPECT_TRUE(result.NotPutBack.empty()) << ContractText(result);
    EXPECT_FALSE(intoARun);
  }
}

TEST(Contract, ALineThatDiesInTheRunAsksForTheStopWhenItsFirstReplyIsOut) {
  std::int64_t deadMs = 0;
  int asked = 0;
  LineFault fault;
  fault.Loses = [&](const std::string& line, bool running) {
    return deadMs > 0 || (running && line == "? VR(81)" && ++asked > 3);
  };
  FaultyController* machine = nullptr;
  fault.Spoils = [&](const std::string&, std::string answer, bool) {
    if (asked > 3 && deadMs == 0) deadMs = machine->Loop.NowMs();
    return deadMs > 0 ? std::string() : answer;
  };
  FaultyController controller(fault, Preset());
  machine = &controller;
  (void)controller.Try();
  ASSERT_GE(controller.Asked.size(), 2U);
  EXPECT_EQ(controller.Asked[1], OperatorWish::Stop);
  EXPECT_LE(controller.AskedMs[1] - deadMs, 20000);
}

TEST(Contract, AStatusThatIsGarbledOnceEndsNoWatchForTheStop) {
  std::function<void()> end;
  bool ended = false;
  int garbled = 0;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool running) {
    if (line == "? VR(81)" && running && !std::exchange(ended, true)) end();
    return ended && line == "? VR(19)" && ++garbled == 3 ? WithValue(line, "#") : answer;
  };
  FaultyController controller(fault, Preset());
  const auto before = ValuesOf(controller);
  const auto result =
      controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
  EXPECT_TRUE(result.NotPutBack.empty()) << ContractText(result);
  EXPECT_EQ(ValuesOf(controller), before);
}

// ---- a start that nobody asked for ----

bool SentBeginning(const FaultyController& controller, const std::string& text) {
  return std::any_of(controller.Lines.begin(), controller.Lines.end(),
                     [&](const std::string& line) { return line.starts_with(text); });
}

TEST(Contract, ACycleStartThatNobodyAskedForIsNoticedBeforeTheNextThingIsWritten) {
  const struct {
    std::string PressedAt;
    std::string NotSent;
  } cases[] = {{"VR(82)=0", "VR(92)=0"},
               {"VR(93)=0", "VR(68)=90"},
               {"VR(68)=90", "TABLE("},
               {"TABLE(813,", "VR(91)=2"},
               {"VR(91)=2", "VR(48)="}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.PressedAt);
    FaultyController controller({}, Preset());
    controller.PutOwnersProgram(500);
    const auto before = ValuesOf(controller);
    bool pressed = false;
    controller.Heard = [&](const std::string& line) {
      if (pressed || !line.starts_with(test.PressedAt)) return;
      pressed = true;
      controller.Controller.TheMachine().CycleStart();
    };
    const auto result = controller.Try();
    EXPECT_TRUE(pressed);
    EXPECT_FALSE(SentBeginning(controller, test.NotSent)) << ContractText(result);
    EXPECT_EQ(controller.Asked, std::vector{OperatorWish::Stop});
    EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
    EXPECT_EQ(ValuesOf(controller), before);
  }
}

TEST(Contract, ABeamBeforeTheRunEndsTheTrialWithTheStop) {
  bool due = false;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool) {
    due = due || line.find(" OR ") != std::string::npos;
    return line == "? VR(19)" && std::exchange(due, false) ? WithValue(line, "2097152") : answer;
  };
  FaultyController controller(fault, Preset());
  const auto result = controller.Try();
  EXPECT_EQ(NamesOf(result, ClauseState::Fails), std::vector<std::string>{"beam off"});
  EXPECT_THAT(NamesOf(result, ClauseState::NotTried),
              ::testing::IsSupersetOf({"block skips", "table at rest", "echo"}));
  EXPECT_EQ(controller.Asked, std::vector{OperatorWish::Stop});
  EXPECT_FALSE(SentBeginning(controller, "VR(92)="));
}

TEST(Contract, AWaitingRestartIsNotAtRestAlsoWhileItsLampIsOff) {
  for (int ms = 0; ms < 3000; ms += 100) {
    SCOPED_TRACE(ms);
    FaultyController controller;
    controller.Controller.Memory().WriteVariable(91, 3);
    controller.Loop.RunFor(ms);
    EXPECT_THAT(controller.Try().Barred, HasSubstr("the machine is not at rest"));
    EXPECT_LE(controller.Lines.size(), 3U);
  }
}

TEST(Contract, ACycleStartThatWasNoneIsNotWantedAnyMoreBeforeAnythingIsPutBack) {
  for (const int endMs : {5000, 1000000}) {
    SCOPED_TRACE(endMs);
    int asked = 0;
    LineFault fault;
    fault.Spoils = [&](const std::string& line, std::string answer, bool) {
      return line == "? VR(52)" ? WithValue(line, std::to_string(++asked)) : answer;
    };
    FaultyController controller(fault, Preset());
    controller.OperatorThere = false;
    std::vector<OperatorWish> before;
    controller.Heard = [&](const std::string& line) {
      if (line == "VR(91)=1") before = controller.Asked;
    };
    std::function<void()> end;
    controller.Loop.After(endMs, [&] {
      if (end) end();
    });
    const auto result =
        controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
    EXPECT_EQ(before, (std::vector{OperatorWish::CycleStart, OperatorWish::NoCycleStart}))
        << ContractText(result);
  }
}

TEST(Contract, WithoutARunTheBlockSkipsAreNotPutBackIntoARunningMachine) {
  FaultyController controller({}, Preset());
  controller.PutOwnersProgram(500);
  controller.Heard = [&](const std::string& line) {
    if (line == "VR(68)=90") controller.Controller.TheMachine().CycleStart();
  };
  ContractSettings settings;
  settings.Run = false;
  const auto result = controller.Try(settings);
  EXPECT_THAT(result.NotPutBack, ::testing::UnorderedElementsAre("the machine still runs",
                                                                 "VR(92) to 1", "VR(93) to 1"));
  EXPECT_EQ(controller.Variable(92), 0);
  EXPECT_EQ(controller.Variable(68), 75) << "what does no harm is put back";
  EXPECT_TRUE(controller.Asked.empty());
}

TEST(Contract, AStartWhileItPutsBackIsStoppedOrNamed) {
  FaultyController controller({}, Preset());
  controller.StopPressed = false;
  controller.Heard = [&](const std::string& line) {
    if (line != "VR(85)=4") return;
    controller.Controller.TheMachine().CycleStart();
    controller.Controller.TheMachine().FeedHold();
  };
  const auto result = controller.Try();
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}));
  EXPECT_THAT(result.NotPutBack,
              ::testing::UnorderedElementsAre("the machine still runs", "VR(91) to 1",
                                              "VR(92) to 1", "VR(93) to 1"));
}

TEST(Contract, AHoldThatIsPressedAtRestIsAskedToBeReleased) {
  for (const bool obeyed : {true, false}) {
    SCOPED_TRACE(obeyed);
    FaultyController controller({}, Preset());
    const auto before = ValuesOf(controller);
    controller.StopPressed = obeyed;
    controller.Heard = [&](const std::string& line) {
      if (line == "VR(68)=90") controller.Controller.TheMachine().FeedHold();
    };
    const auto result = controller.Try();
    EXPECT_EQ(controller.Asked, std::vector{OperatorWish::Release});
    EXPECT_EQ(result.NotPutBack.empty(), obeyed);
    if (obeyed) {
      EXPECT_EQ(ValuesOf(controller), before);
    } else {
      EXPECT_THAT(result.NotPutBack,
                  ::testing::Contains("the machine is not at rest: VR(19) is 2048"));
    }
  }
}

/// It says that slot 2 is in force and runs slot 1.
LineFault RunsSlot1() {
  LineFault fault = Answering({{"? VR(91)", "2"}});
  fault.Loses = [](const std::string& line, bool) { return line == "VR(91)=2"; };
  return fault;
}

TEST(Contract, AHeadOnAnotherWayIsStoppedAtOnceAndGetsNoMoreRows) {
  FaultyController controller(RunsSlot1(), Preset());
  controller.PutOwnersProgram(500);
  const auto result = controller.Try();
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}));
  EXPECT_THAT(NamesOf(result, ClauseState::Fails), ::testing::Contains("positions"));
  EXPECT_THAT(NamesOf(result, ClauseState::NotTried), ::testing::Contains("rows taken"));
  EXPECT_EQ(std::count_if(controller.Lines.begin(), controller.Lines.end(), RowsOfTheRun), 10);
  EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
}

TEST(Contract, ABeamIsStoppedAtOnceAndTheRunGetsNoMoreRows) {
  auto fault = RunsSlot1();
  fault.Spoils = [spoils = fault.Spoils](const std::string& line, std::string answer,
                                         bool running) {
    if (line.starts_with("? MPOS")) return WithValue(line, "0");
    return spoils(line, std::move(answer), running);
  };
  FaultyController controller(fault, Preset());
  controller.PutOwnersProgram(500);
  const auto result = controller.Try();
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}));
  EXPECT_THAT(NamesOf(result, ClauseState::Fails), ::testing::Contains("beam off"));
  EXPECT_LT(controller.Controller.TheMachine().At().X, 40) << "it was stopped in the cut";
  EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
}

TEST(Contract, WhatSaysWhatRunsIsNotWrittenIntoAMachineThatNobodyStops) {
  std::function<void()> end;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool running) {
    if (line == "? VR(81)" && running) end();
    return answer;
  };
  fault.Loses = [](const std::string& line, bool running) { return EndRow(line) && running; };
  FaultyController controller(fault, Preset());
  controller.StopPressed = false;
  const auto result =
      controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}));
  EXPECT_THAT(result.NotPutBack,
              ::testing::UnorderedElementsAre("the machine still runs", "VR(91) to 1",
                                              "VR(92) to 1", "VR(93) to 1"));
  EXPECT_FALSE(Sent(controller, "VR(91)=1"));
  EXPECT_EQ(controller.Variable(91), 2);
  EXPECT_EQ(controller.Variable(84), 10) << "what does no harm is put back";
}

TEST(Contract, AMachineThatIsHeldIsNotAtRestAlsoWhereItShowsNoRun) {
  bool held = false;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool) {
    return line == "? VR(19)" && held ? WithValue(line, "2048") : answer;
  };
  FaultyController controller(fault, Preset());
  controller.StopPressed = false;
  controller.Loop.After(3000, [&] {
    controller.CatchUp();
    controller.Controller.TheMachine().FeedHold();
    held = true;
  });
  const auto result = controller.Try();
  EXPECT_EQ(controller.Asked.back(), OperatorWish::Release);
  EXPECT_EQ(controller.Variable(91), 2) << ContractText(result);
}

TEST(Contract, ABeamThatWasSeenIsToldAlsoWhereTheEndIsAskedFor) {
  int asked = 0;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool running) {
    return line == "? VR(19)" && running && ++asked == 5 ? WithValue(line, "2121728") : answer;
  };
  FaultyController controller(fault);
  controller.StopPressed = false;
  std::function<void()> end;
  controller.Loop.After(8000, [&] { end(); });
  const auto result =
      controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
  EXPECT_EQ(NamesOf(result, ClauseState::Fails), std::vector<std::string>{"beam off"});
  EXPECT_THAT(NamesOf(result, ClauseState::NotTried), ::testing::Contains("echo"));
}

TEST(Contract, WhatWasSeenOfBeamEchoAndPromptIsToldAlsoWhereTheLineDies) {
  int asked = 0;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool running) {
    if (line == "? VR(48)") return line + "\n0\r\n>>";
    if (line == "? VR(25)") return line + "\r\n0\r\n>";
    if (line == "? VR(19)" && running) ++asked;
    if (asked > 5) return std::string();
    return asked == 5 && line == "? VR(19)" ? WithValue(line, "2121728") : answer;
  };
  fault.Loses = [&](const std::string&, bool) { return asked > 5; };
  FaultyController controller(fault);
  controller.StopPressed = false;
  EXPECT_EQ(NamesOf(controller.Try(), ClauseState::Fails),
            (std::vector<std::string>{"prompt", "echo", "reply time", "beam off"}));
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

// ---- what may come between ----

TEST(Contract, WithoutARunNothingIsMovedAndTheTableStays) {
  FaultyController controller({}, Preset());
  const auto before = ValuesOf(controller);
  ContractSettings settings;
  settings.Run = false;
  const auto result = controller.Try(settings);
  EXPECT_TRUE(result.Holds()) << ContractText(result);
  EXPECT_EQ(result.Clauses.size(), 10U);
  EXPECT_EQ(ValuesOf(controller), before);
  EXPECT_TRUE(controller.Asked.empty());
  for (const auto& line : controller.Lines) {
    EXPECT_FALSE(Rows(line)) << line;
    EXPECT_FALSE(line.starts_with("VR(48)=")) << line;
    EXPECT_FALSE(line.starts_with("VR(91)=")) << line;
  }
}

TEST(Contract, WithoutACycleStartTheRunIsNotTriedAndAllIsPutBack) {
  FaultyController controller({}, Preset());
  controller.OperatorThere = false;
  const auto before = ValuesOf(controller);
  const auto result = controller.Try();
  EXPECT_TRUE(NamesOf(result, ClauseState::Fails).empty()) << ContractText(result);
  EXPECT_EQ(NamesOf(result, ClauseState::NotTried).size(), 7U);
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::NoCycleStart}));
  EXPECT_FALSE(result.Holds());
  EXPECT_EQ(ValuesOf(controller), before);
}

TEST(Contract, AnEndAskedForAtAnyMomentPutsEverythingBack) {
  for (int ms = 100; ms < 8000; ms += 200) {
    SCOPED_TRACE(ms);
    FaultyController controller({}, Preset());
    const auto before = ValuesOf(controller);
    std::function<void()> end;
    controller.Loop.After(ms, [&] {
      if (end) end();
    });
    const auto result =
        controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
    EXPECT_TRUE(NamesOf(result, ClauseState::Fails).empty()) << ContractText(result);
    EXPECT_TRUE(result.NotPutBack.empty());
    EXPECT_EQ(ValuesOf(controller), before);
    EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
    EXPECT_FALSE(end) << "nothing is left to be called";
    EXPECT_TRUE(ms >= 2000 || !result.Holds());
  }
}

TEST(Contract, AReplyThatComesAfterTheEndWasAskedForIsNotTakenForAnother) {
  for (int ms = 1000; ms < 60000; ms += 4000) {
    SCOPED_TRACE(ms);
    LineFault fault;
    fault.DelayMs = [](int) { return 1500; };
    FaultyController controller(fault, Preset());
    const auto before = ValuesOf(controller);
    std::function<void()> end;
    controller.Loop.After(ms, [&] {
      if (end) end();
    });
    const auto result =
        controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
    EXPECT_TRUE(NamesOf(result, ClauseState::Fails).empty()) << ContractText(result);
    EXPECT_TRUE(result.NotPutBack.empty()) << ContractText(result);
    EXPECT_EQ(ValuesOf(controller), before);
  }
}

TEST(Contract, AFaultOfAnyKindInTheMiddlePutsEverythingBack) {
  FaultyController controller({}, Preset());
  const auto before = ValuesOf(controller);
  const auto ask = [](OperatorWish wish, const std::string&) {
    if (wish == OperatorWish::CycleStart) throw std::logic_error("the wish was lost");
  };
  const auto result = TryContract({controller.Loop, controller.Port, ask}, {});
  EXPECT_THAT(ContractText(result), HasSubstr("the wish was lost"));
  EXPECT_FALSE(result.Holds());
  EXPECT_TRUE(result.NotPutBack.empty());
  EXPECT_EQ(ValuesOf(controller), before);
}

TEST(Contract, ALineThatDiesIsTheReplyTimesFaultAndWhatStaysChangedIsNamed) {
  bool dead = false;
  LineFault fault;
  fault.Loses = [&](const std::string& line, bool) {
    dead = dead || line == "VR(92)=1";
    return dead;
  };
  fault.Spoils = [&](const std::string&, std::string answer, bool) {
    return dead ? std::string() : answer;
  };
  FaultyController controller(fault, Preset());
  const auto result = controller.Try();
  EXPECT_EQ(NamesOf(result, ClauseState::Fails), std::vector<std::string>{"reply time"});
  EXPECT_FALSE(result.NotPutBack.empty());
  EXPECT_THAT(ContractText(result), HasSubstr("NOT BACK"));
  EXPECT_EQ(controller.Asked, std::vector{OperatorWish::Stop}) << "nobody knows what runs";
}

TEST(Contract, WhatAControllerDoesNotTakeBackIsNamed) {
  LineFault fault;
  fault.Loses = [](const std::string& line, bool) { return line == "VR(84)=10"; };
  FaultyController controller(fault, Preset());
  EXPECT_THAT(controller.Try().NotPutBack, ::testing::ElementsAre("VR(84) to 10: it is 1000"));
}

TEST(Contract, AControllerThatChattersWithoutAnEndIsNotWaitedFor) {
  constexpr std::int64_t ChatterMs = 3600000;
  bool begun = false;
  LineFault fault;
  fault.Spoils = [&](const std::string&, std::string answer, bool) {
    return begun ? std::string() : answer;
  };
  FaultyController controller(fault, Preset());
  std::function<void()> end;
  std::function<void()> chatter = [&] {
    controller.Port.Deliver("x");
    if (controller.Loop.NowMs() < ChatterMs) controller.Loop.After(100, chatter);
  };
  controller.Heard = [&](const std::string& line) {
    if (line != "VR(92)=1" || std::exchange(begun, true)) return;
    chatter();
    controller.Loop.After(5000, [&] { end(); });
  };
  const auto result =
      controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
  EXPECT_LT(controller.Loop.NowMs(), ChatterMs / 10);
  EXPECT_EQ(controller.Asked, std::vector{OperatorWish::Stop}) << "nobody knows what runs";
  EXPECT_FALSE(result.NotPutBack.empty());
}

TEST(Contract, AStatusThatIsCutByAPauseIsNone) {
  std::function<void()> end;
  bool cut = false;
  LineFault fault;
  fault.Spoils = [&](const std::string& line, std::string answer, bool running) {
    if (line == "? VR(81)" && running && !std::exchange(cut, true)) end();
    return cut && line == "? VR(19)" ? line + "\r\n1" : answer;
  };
  FaultyController controller(fault, Preset());
  controller.StopPressed = false;
  const auto result =
      controller.Try({}, [&](std::function<void()> given) { end = std::move(given); });
  EXPECT_FALSE(Sent(controller, "VR(91)=1")) << "1 of 16384";
  EXPECT_THAT(result.NotPutBack, ::testing::Contains("VR(19) gives no number"));
  EXPECT_EQ(controller.Asked.back(), OperatorWish::Stop);
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

// What torvane-contract could move, cut or start that nobody asked for.
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ContractTrials.h"
#include "tools/ContractReport.h"
#include "tools/ContractSession.h"

namespace torvane::tools {

using namespace tests;
namespace {

using ::testing::HasSubstr;

// ---- controllers that could start a program of the owner's ----

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

// ---- a start that nobody asked for ----

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

TEST(Contract, AStopThatIsAskedForAtOnceIsAwaitedThoughTheNextStatusIsGarbled) {
  auto fault = RunsSlot1();
  FaultyController* machine = nullptr;
  int looks = 0;
  fault.Spoils = [&, spoils = fault.Spoils](const std::string& line, std::string answer,
                                            bool running) {
    const bool stopAsked = machine->Asked.size() == 2;
    if (stopAsked && line == "? VR(19)" && ++looks == 1) return WithValue(line, "#");
    return spoils(line, std::move(answer), running);
  };
  FaultyController controller(fault, Preset());
  machine = &controller;
  controller.PutOwnersProgram(500);
  const auto result = controller.Try();
  EXPECT_EQ(controller.Asked, (std::vector{OperatorWish::CycleStart, OperatorWish::Stop}))
      << ContractText(result);
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

}  // namespace
}  // namespace torvane::tools

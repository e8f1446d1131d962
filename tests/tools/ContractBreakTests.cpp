// Trials that are broken off: by a signal, a dead line, a fault, or an operator who does not
// answer.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ContractTrials.h"
#include "tools/ContractReport.h"

namespace torvane::tools {

using namespace tests;
namespace {

using ::testing::HasSubstr;

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
    const auto result = controller.TryFor(ms);
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
    const auto result = controller.TryFor(ms);
    EXPECT_TRUE(NamesOf(result, ClauseState::Fails).empty()) << ContractText(result);
    EXPECT_TRUE(result.NotPutBack.empty());
    EXPECT_EQ(ValuesOf(controller), before);
    EXPECT_EQ(controller.Controller.TheMachine().Mode(), simulator::MachineMode::Idle);
    EXPECT_FALSE(controller.End) << "nothing is left to be called";
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
    const auto result = controller.TryFor(ms);
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

}  // namespace
}  // namespace torvane::tools

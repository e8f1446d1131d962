// Very many exchanges over a line with faults of every kind: no reply is taken by a query that it
// does not belong to, and none waits for ever.
#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Scale.h"
#include "core/DirectorySet.h"
#include "core/LinkSettings.h"
#include "link/Trio.h"
#include "platform/VirtualLoop.h"
#include "simulator/SimulatedController.h"
#include "simulator/SimulatedPort.h"
#include "support/MemoryFiles.h"

namespace torvane::tests {
namespace {

using link::Asker;
using simulator::FaultKind;

constexpr int FirstVariable = 700;
constexpr int Variables = 32;
/// Exchanges with the same faults.
constexpr int StretchLength = 500;
/// Three may wait for each other's time-out, recovery and dialog, ms.
constexpr std::int64_t LongestMs = 60'000;

/// Nine digits that tell whose the value is: two of them differ in more places than a fault of the
/// line changes.
std::int32_t ValueOf(int variable) {
  return 100'000'000 +
         static_cast<std::int32_t>((variable - FirstVariable + 1) * 48'611'237LL % 900'000'000LL);
}

/// A dialog stands for a while, and the operator goes on.
class PatientScreens final : public link::LinkScreens {
 public:
  PatientScreens(platform::VirtualLoop& loop, std::mt19937& random)
      : loop_(loop), random_(random) {}

  bool ShowWarning(std::string_view, link::WarningMode, link::WarningStyle) override {
    if (up_) return false;
    up_ = true;
    ++Dialogs;
    loop_.RunFor(static_cast<int>(random_() % 3000));
    up_ = false;
    return false;
  }
  void LockForms(bool, std::string_view) override {}
  void SetBusy(bool) override {}
  void Beep() override {}
  void ShutdownToService() override { ++Shutdowns; }

  int Dialogs = 0;
  int Shutdowns = 0;

 private:
  platform::VirtualLoop& loop_;
  std::mt19937& random_;
  bool up_ = false;
};

class ManyExchanges : public ::testing::Test {
 protected:
  ManyExchanges() {
    Settings.CommPort = 1;
    Settings.PortSettings = "115200,N,8,1";
    Settings.TrioLinkEnabled = true;
    Settings.ReplyTimeoutMs = 400;
    Directories.ServiceDirectory = "C:\\Service\\";
    for (int i = 0; i < Variables; ++i) {
      Controller.Memory().SetVariable(FirstVariable + i, ValueOf(FirstVariable + i));
    }
    static_cast<void>(Port.Open({}));
  }

  /// One asker: queries and commands with pauses, until enough were made by all.
  void Ask(Asker asker, int most) {
    while (made_ < most) {
      if (++made_ % StretchLength == 0) ChangeFaults();
      const std::int64_t began = Loop.NowMs();
      if (Random() % 4 == 0) {
        Link.Download("VR(600)=" + std::to_string(made_), asker);
      } else {
        const int variable = FirstVariable + static_cast<int>(Random() % Variables);
        Judge(variable, Link.GetRspnsLng("VR(" + std::to_string(variable) + ")", asker));
      }
      longestMs_ = std::max(longestMs_, Loop.NowMs() - began);
      if (Random() % 8 == 0) Loop.RunFor(static_cast<int>(Random() % 60));
    }
  }

  void Judge(int variable, std::int32_t value) {
    if (value == ValueOf(variable)) {
      ++good_;
    } else if (value == 0) {
      ++failed_;
    } else if (IsAnothers(value)) {
      ++strange_;
    } else {
      ++spoilt_;
    }
  }
  static bool IsAnothers(std::int32_t value) {
    for (int i = 0; i < Variables; ++i) {
      if (ValueOf(FirstVariable + i) == value) return true;
    }
    return false;
  }

  /// Every fifth stretch is a good line.
  void ChangeFaults() {
    Files.Files.clear();  // notes of failures
    Files.Log.clear();
    simulator::FaultSettings faults;
    faults.Seed = static_cast<std::uint32_t>(Random());
    faults.LateSeconds = 0.3 + static_cast<double>(Random() % 2000) / 1000.0;
    constexpr std::array<std::pair<FaultKind, double>, 6> Most{{{FaultKind::Lose, 0.004},
                                                                {FaultKind::Noise, 0.004},
                                                                {FaultKind::Pieces, 0.5},
                                                                {FaultKind::Percent, 0.05},
                                                                {FaultKind::Silence, 0.05},
                                                                {FaultKind::Late, 0.1}}};
    if (++stretch_ % 5 != 0) {
      for (const auto& [kind, rate] : Most) {
        if (Random() % 2 == 0) {
          faults.Rate(kind) = rate * static_cast<double>(Random() % 1000) / 1000.0;
        }
      }
    }
    Controller.SetFaults(faults);
  }

  std::mt19937 Random{Seed()};
  platform::VirtualLoop Loop;
  simulator::SimulatedController Controller{{}};
  simulator::SimulatedPort Port{Loop, Controller, {.Baud = 115200}};
  MemoryFiles Files;
  PatientScreens Screens{Loop, Random};
  core::LinkSettings Settings;
  core::DirectorySet Directories;
  link::Trio Link{Loop, Port, Files, Settings, Directories, Screens};

  int made_ = 0, stretch_ = 0;
  long good_ = 0, failed_ = 0, spoilt_ = 0, strange_ = 0;
  std::int64_t longestMs_ = 0;
};

TEST_F(ManyExchanges, NoReplyIsTakenByAStrangerAndNoneWaitsForEver) {
  const int most = Count(20'000);
  int under = 3;
  for (const Asker asker : {Asker::Poll, Asker::Operator, Asker::Silent}) {
    Loop.Start([this, asker, most, &under] {
      Ask(asker, most);
      --under;
    });
  }
  Loop.WaitUntil([&under] { return under == 0; });
  Loop.RunFor(LongestMs);
  EXPECT_EQ(Loop.ActivitiesUnderWay(), 0U);
  EXPECT_EQ(strange_, 0);
  EXPECT_LT(longestMs_, LongestMs);
  EXPECT_EQ(Screens.Shutdowns, 0);
  EXPECT_GT(good_, made_ / 3) << "the line is good enough for the proof to mean something";
  EXPECT_GT(failed_, 0);
  std::cout << made_ << " exchanges, " << good_ << " queries answered, " << failed_ << " failed, "
            << spoilt_ << " with digits that the line spoilt, " << strange_
            << " taken by a stranger; longest " << longestMs_ << " ms, " << Screens.Dialogs
            << " dialogs\n";
}

}  // namespace
}  // namespace torvane::tests

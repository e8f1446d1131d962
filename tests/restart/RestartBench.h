// A restart over a scripted controller: a slot with real files, on a loop with virtual time.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "partprogram/SlotWriter.h"
#include "platform/Clock.h"
#include "restart/BlockRestart.h"
#include "restart/GatherModule.h"
#include "restart/RestartOperation.h"
#include "restart/VisualRestart.h"
#include "supervision/Bench.h"

namespace torvane::tests {

using namespace torvane::restart;

using tests::Lines;

/// RestartForm and the plot, written down.
class RecordingRestartScreen final : public RestartScreen, public VisualScreens {
 public:
  explicit RecordingRestartScreen(Lines& log) : log_(log) {}

  RestartOperation* Operation = nullptr;
  VisualRestart* Visual = nullptr;
  RestartLabels Labels;
  bool SplitEnabled = false;

  void ShowRestart(const RestartLabels& labels) override {
    Labels = labels;
    log_.emplace_back("show");
  }
  void SetCycleStartColour(std::uint32_t colour) override {
    log_.push_back(colour == 0 ? "black" : colour == 65280 ? "green" : "other");
  }
  void LockOtherForms(bool locked) override { log_.emplace_back(locked ? "lock" : "unlock"); }
  void HideRestart() override {
    log_.emplace_back("hide");
    Operation->Unload();
  }
  void PaintRecord(const partprogram::DrawRecord& record, bool highlighted) override {
    log_.push_back((highlighted ? "mark " : "plain ") + std::to_string(record.RecordIndex));
  }
  void EnableSplit(bool enabled) override { SplitEnabled = enabled; }
  void LeaveGraphics() override {
    Visual->GiveBackRecord();
    log_.emplace_back("leave graphics");
  }
  void OpenRestartForm() override { log_.emplace_back("open RestartForm"); }

 private:
  Lines& log_;
};

struct RestartBench : tests::Bench {
  platform::FixedClock Clock{{2026, 3, 7, 9, 5, 0}};
  RestartStates States;
  partprogram::SplitCycle Split;
  GatherModule Gather{Files, System.Directories, System.Machine, Clock};
  Lines Steps;  ///< what was shown, painted and sent, queries left out
  tests::RecordingDialogs Warnings{Steps};
  RecordingRestartScreen Screen{Steps};
  RestartOperation Operation{{System, Trio, Poll, Loop, Files, Warnings, States, Split}, Screen};
  ChoiceParts Choice{System, Files, Warnings, Gather, States, Split};
  BlockRestart Blocks{Choice};
  VisualRestart Visual{Choice, Screen};

  RestartBench() {
    Screen.Operation = &Operation;
    Screen.Visual = &Visual;
    System.Machine.YDirection = 1;
    System.Machine.LoadPositionX = 2500;
    System.Machine.LoadPositionY = 1250;
    System.Machine.TravelMaxX = 3000;
    System.Machine.TravelMaxY = 1500;
    System.ActiveStation.Name = "Laser 1";
    ClearGatherState(States.RestartState, System.Machine);
    Controller.OnLine = [this](const std::string& line) {
      if (!line.starts_with("? ")) Steps.push_back("> " + line);
      if (OnLine) OnLine(line);
    };
  }

  std::function<void(const std::string&)> OnLine;

  /// Converts a program into the slot's files, as a selection does.
  void Load(int slot, const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    const auto result =
        partprogram::MakeSlotFiles(Files, System.Directories, partprogram::SqueezeProgram(text),
                                   {"PLATE", "SHOP", static_cast<std::int16_t>(slot),
                                    &System.Machine, &System.ActiveStation, Clock.Now()});
    ASSERT_EQ(result.Outcome, partprogram::PassOutcome::Good);
    Temp.Put(Name(slot, "cfg"), "PLATE\r\n");
    System.ActiveSlot = static_cast<std::int16_t>(slot);
    core::ActiveProgram& program = System.Active();
    partprogram::FillSlot(result, program);
    program.ProgramName = "PLATE";
    program.DirectoryName = "SHOP";
    program.Selected = true;
    core::PlotView& view = System.Views[slot];
    view = {};
    view.Corner1X = -10;
    view.Corner1Y = 1510;
    view.Corner2X = 3010;
    view.Corner2Y = -10;
  }

  Lines Happened() { return std::exchange(Steps, {}); }

  std::string LeftText() { return Temp.Get("Restart.tbx"); }
};

}  // namespace torvane::tests

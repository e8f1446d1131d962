// Nobody looks: the screens and the plot of a program that runs without a console.
#pragma once

#include "core/System.h"
#include "link/Trio.h"
#include "link/Variables.h"
#include "supervision/PollScreens.h"
#include "supervision/ProgramScreens.h"

namespace torvane::supervision {

class QuietPollScreens : public PollScreens {
 public:
  [[nodiscard]] bool Offers(PollStage /*stage*/) const override { return false; }
  void RunStage(PollStage /*stage*/) override {}
  void ShowFigure(int /*index*/, std::string_view /*text*/) override {}
  [[nodiscard]] std::uint32_t MessageButtonBackground() const override { return background_; }
  void PaintMessageButton(std::uint32_t background, std::uint32_t /*text*/) override {
    background_ = background;
  }
  void MarkMessageButton(MessageState /*state*/) override {}

 private:
  std::uint32_t background_ = 0;
};

class QuietProgramScreens : public ProgramScreens {
 public:
  [[nodiscard]] std::vector<std::string> VisibleForms() const override { return {}; }
  void SetProgramCaption(core::Slot /*slot*/, std::string_view /*caption*/) override {}
  void PressProgramButton(core::Slot /*slot*/) override {}
  void OpenSetupForm() override {}
  void UnloadProgramForm() override {}
};

/// Draws nothing, but keeps the run time as the plot would.
class QuietPlot : public PlotStage {
 public:
  QuietPlot(core::System& system, link::Trio& trio) : system_(system), trio_(trio) {}

  void RealTimePlot() override {
    auto& state = system_.State;
    if (!system_.Link.TrioLinkEnabled || !system_.Active().Selected) return;
    if (state.MachineRunning && !state.MachineWasRunning) RefreshPlot(system_.ActiveSlot);
    state.RunSeconds = trio_.GetRspnsSngl(link::Variable::RunTime, 2, link::Asker::Poll);
  }
  void RefreshPlot(core::Slot /*slot*/) override { system_.State.RunSeconds = 0; }
  void ShowPlotBox(core::Slot /*slot*/) override {}

 private:
  core::System& system_;
  link::Trio& trio_;
};

}  // namespace torvane::supervision

// Screens, dialogs and a plot that write down in one list what was asked of them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "supervision/OperatorDialogs.h"
#include "supervision/PollScreens.h"
#include "supervision/ProgramScreens.h"
#include "supervision/QuietScreens.h"

namespace torvane::tests {

using namespace torvane::supervision;

using Events = std::vector<std::string>;

class RecordingDialogs final : public OperatorDialogs {
 public:
  explicit RecordingDialogs(Events& events) : events_(events) {}

  bool Answer = false;
  std::function<void()> DuringWarning;

  bool ShowWarning(std::string_view text, WarningMode mode, WarningStyle style) override {
    events_.push_back("warning " + std::to_string(static_cast<int>(mode)) + " " +
                      std::to_string(static_cast<int>(style)) + " " + std::string(text));
    if (DuringWarning) DuringWarning();
    return Answer;
  }
  void SetBusy(bool busy) override { events_.emplace_back(busy ? "busy" : "idle"); }
  void Beep() override { events_.emplace_back("beep"); }

 private:
  Events& events_;
};

class RecordingPollScreens final : public PollScreens {
 public:
  explicit RecordingPollScreens(Events& events) : events_(events) {}

  /// What a screen that shows does in its stage.
  std::map<PollStage, std::function<void()>> Stages;
  std::uint32_t ButtonBackground = 0;
  std::uint32_t ButtonText = 0;
  int Paints = 0;
  MessageState Mark = MessageState::Good;

  [[nodiscard]] bool Offers(PollStage stage) const override { return Stages.count(stage) != 0; }
  void RunStage(PollStage stage) override {
    if (const auto found = Stages.find(stage); found != Stages.end()) found->second();
  }
  void ShowFigure(int index, std::string_view text) override {
    events_.push_back("Main " + std::to_string(index) + "=" + std::string(text));
  }
  [[nodiscard]] std::uint32_t MessageButtonBackground() const override { return ButtonBackground; }
  void PaintMessageButton(std::uint32_t background, std::uint32_t text) override {
    ButtonBackground = background;
    ButtonText = text;
    ++Paints;
  }
  void MarkMessageButton(MessageState state) override { Mark = state; }

 private:
  Events& events_;
};

class RecordingProgramScreens final : public ProgramScreens {
 public:
  explicit RecordingProgramScreens(Events& events) : events_(events) {}

  std::vector<std::string> Forms;
  std::function<void(core::Slot)> OnPress;  ///< the event of the button

  [[nodiscard]] std::vector<std::string> VisibleForms() const override { return Forms; }
  void SetProgramCaption(core::Slot slot, std::string_view caption) override {
    events_.push_back("caption " + std::to_string(slot.Number()) + " " + std::string(caption));
  }
  void PressProgramButton(core::Slot slot) override {
    events_.push_back("press " + std::to_string(slot.Number()));
    if (OnPress) OnPress(slot);
  }
  void OpenSetupForm() override { events_.emplace_back("open SetupForm"); }
  void UnloadProgramForm() override { events_.emplace_back("unload ProgramForm"); }

 private:
  Events& events_;
};

class RecordingPlot final : public QuietPlot {
 public:
  RecordingPlot(core::System& system, link::Trio& trio, Events& events)
      : QuietPlot(system, trio), events_(events) {}

  void RealTimePlot() override {
    events_.emplace_back("trace");
    QuietPlot::RealTimePlot();
  }
  void RefreshPlot(core::Slot slot) override {
    events_.push_back("plot " + std::to_string(slot.Number()));
    QuietPlot::RefreshPlot(slot);
  }
  void ShowPlotBox(core::Slot slot) override {
    events_.push_back("plotbox " + std::to_string(slot.Number()));
  }

 private:
  Events& events_;
};

}  // namespace torvane::tests

// The console as the floors under it see it: dialogs, the lock, figures, captions, rows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "console/FrontEnd.h"
#include "console/Pads.h"
#include "console/ScreenSet.h"
#include "core/ScreenNames.h"
#include "core/Slot.h"
#include "link/Trio.h"
#include "supervision/MessageList.h"
#include "supervision/PollScreens.h"
#include "supervision/ProgramScreens.h"
#include "supervision/WarningBox.h"

namespace torvane::console {

/// Passes over screens that are not loaded, and starts nothing by itself.
class ConsoleScreens final : public link::LinkScreens,
                             public supervision::PollScreens,
                             public supervision::ProgramScreens {
 public:
  /// `functionKey` takes the global keys.
  ConsoleScreens(core::System& system, toolkit::Desk& desk,
                 std::function<void(toolkit::Key)> functionKey);

  [[nodiscard]] ScreenSet& Set() { return set_; }
  [[nodiscard]] Pads& EntryPads() { return pads_; }
  [[nodiscard]] supervision::WarningBox& Warning() { return warning_; }
  [[nodiscard]] supervision::MessageList& Messages() { return messages_; }

  /// The main screen, loaded on first use.
  [[nodiscard]] FrontEnd& Main();
  /// Null before the main screen was loaded and after it has gone.
  [[nodiscard]] FrontEnd* LoadedMain() const {
    return set_.Find<FrontEnd>(core::ScreenNames::FrontEnd);
  }

  /// Names the active program on the main screen's first text line, nothing for an empty slot. The
  /// graphics state has a title of its own there, which stays.
  void ShowProgramLine();

  /// What the link's failure dialog leads to when it is answered with OK.
  void SetShutdownToService(std::function<void()> shutdown) {
    shutdownToService_ = std::move(shutdown);
  }

  // link::LinkScreens
  bool ShowWarning(std::string_view text, link::WarningMode mode,
                   link::WarningStyle style) override;
  void LockForms(bool locked, std::string_view exempt) override { set_.LockForms(locked, exempt); }
  void PauseForms(bool paused) override {
    set_.LockForms(paused, link::LinkLockName, toolkit::Form::Holds::Keep);
  }
  void ShutdownToService() override;
  void SetBusy(bool busy) override { set_.Desk().SetBusy(busy); }
  void Beep() override { set_.Desk().Beep(); }

  // supervision::PollScreens
  [[nodiscard]] bool Offers(supervision::PollStage stage) const override {
    return set_.Offers(stage);
  }
  void RunStage(supervision::PollStage stage) override { set_.RunStage(stage); }
  void ShowFigure(int index, std::string_view text) override;
  [[nodiscard]] std::uint32_t MessageButtonBackground() const override;
  void PaintMessageButton(std::uint32_t background, std::uint32_t text) override;
  void MarkMessageButton(supervision::MessageState state) override;

  // supervision::ProgramScreens
  [[nodiscard]] std::vector<std::string> VisibleForms() const override {
    return set_.VisibleNames();
  }
  void SetProgramCaption(core::Slot slot, std::string_view caption) override;
  void PressProgramButton(core::Slot slot) override;
  void OpenSetupForm() override { set_.Open(core::ScreenNames::SetupForm); }
  void UnloadProgramForm() override { set_.Unload(core::ScreenNames::ProgramForm); }

 private:
  ScreenSet set_;
  supervision::WarningBox warning_;
  supervision::MessageList messages_;
  Pads pads_;
  std::function<void()> shutdownToService_;
};

}  // namespace torvane::console

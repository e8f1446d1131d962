// The console put together: the screens, the plot on the main screen, and what the keys lead to.
#pragma once

#include <functional>
#include <memory>

#include "console/ConsoleScreens.h"
#include "console/ConsoleServices.h"
#include "console/FileTasks.h"
#include "console/ReceiveLamp.h"
#include "core/Slot.h"
#include "graphics/DrawingModule.h"
#include "graphics/RealTimePlot.h"
#include "link/Downloads.h"
#include "link/JogLine.h"
#include "link/Trio.h"
#include "partprogram/SplittingModule.h"
#include "platform/Clock.h"
#include "platform/Drives.h"
#include "restart/BlockRestart.h"
#include "restart/GatherModule.h"
#include "restart/VisualRestart.h"
#include "supervision/ActiveStore.h"
#include "supervision/PollTrio.h"
#include "supervision/ProgramChange.h"
#include "supervision/ProgramEntries.h"
#include "supervision/ProgramSelection.h"
#include "supervision/RunJournal.h"

namespace torvane::console {

/// What the console works with; all of it outlives the console.
struct ConsoleParts {
  core::System& System;
  platform::FileSystem& Files;
  platform::SerialPort& Port;
  const platform::Clock& Clock;
  const platform::Drives& Drives;
  toolkit::Desk& Desk;
  files::CommsModule& Comms;
};

/// Made before the start-up begins. `Open` comes after the colours have been read: only then are
/// there screens with the right faces.
class Console final : public supervision::PlotStage,
                      private FrontEndActions,
                      private restart::VisualScreens {
 public:
  explicit Console(const ConsoleParts& parts);
  ~Console() override;

  void SetExits(ConsoleExits exits);

  /// Loads the main screen with its canvases, without showing it.
  void Open();

  [[nodiscard]] ConsoleScreens& Screens() { return screens_; }
  [[nodiscard]] link::Trio& Trio() { return trio_; }
  [[nodiscard]] link::Downloads& Downloads() { return downloads_; }
  [[nodiscard]] supervision::Poll& Poll() { return poll_; }
  [[nodiscard]] supervision::ActiveStore& Store() { return store_; }
  [[nodiscard]] supervision::ProgramSelection& Selection() { return selection_; }
  [[nodiscard]] graphics::DrawingModule* Drawing() { return drawing_.get(); }
  /// The number of the record that a visual restart has highlighted, 0 outside its modes.
  [[nodiscard]] int MarkedRecord() const;

  /// Plot.cfg, and the plot's switches as they are at every start.
  void LoadPlotConfig();

  /// The window is asked to close: out of the graphics state, then the shutdown question. Nothing
  /// before the main screen shows, while the question is open, and from the shutdown on.
  void CloseRequested();

  /// The global keys of all screens.
  void HandleFunctionKey(toolkit::Key key);

  // supervision::PlotStage; nothing before Open
  void RealTimePlot() override;
  void RefreshPlot(core::Slot slot) override;
  void ShowPlotBox(core::Slot slot) override;

 private:
  // FrontEndActions
  void ChangeActiveProgram(core::Slot slot) override { change_.ChangeActiveProgram(slot); }
  void MainScreenShown() override;
  void KerfButtonChanged(bool pressed) override;
  void LimitsButtonChanged(bool pressed) override;
  void RedrawPlot(core::Slot slot) override;

  [[nodiscard]] restart::ChoiceParts Choice();

  // restart::VisualScreens
  void PaintRecord(const partprogram::DrawRecord& record, bool highlighted) override;
  void EnableSplit(bool enabled) override;
  void LeaveGraphics() override;
  void OpenRestartForm() override;

  ConsoleParts parts_;
  ConsoleExits exits_;
  ConsoleScreens screens_;
  link::Trio trio_;
  link::Downloads downloads_;
  link::JogLine jog_;
  supervision::Poll poll_;
  supervision::RunJournal journal_;
  supervision::ProgramParts programs_;
  supervision::ActiveStore store_;
  supervision::ProgramChange change_;
  partprogram::SplitCycle split_;
  supervision::ProgramSelection selection_;
  supervision::ProgramEntries entries_;
  restart::RestartStates restartPoint_;
  restart::GatherModule gather_;
  restart::BlockRestart blocks_;
  restart::VisualRestart visual_;
  files::FileParts fileWork_;
  FileTasks tasks_;
  ConsoleServices services_;
  ReceiveLamp receiveLamp_;
  std::unique_ptr<graphics::DrawingModule> drawing_;
  std::unique_ptr<graphics::RealTimePlotter> plotter_;
};

}  // namespace torvane::console

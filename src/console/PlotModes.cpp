#include "console/PlotModes.h"

#include "console/FrontEndControls.h"

namespace torvane::console {

namespace {

/// The first and the last of the modes that go back to idle.
constexpr int FirstViewMode = 1;
constexpr int LastViewMode = 4;

}  // namespace

void PlotModes::EnterGraphics(bool enable) {
  core::ConsoleState& state = system_.Console;
  state.FormsLocked = true;
  view_.EnableGraphicsKeys(enable);
  view_.SetStatusLine("");
  view_.ShowFigures(false);
  view_.ShowProgramButtons(false);
  view_.SetTextLine(GraphicsText);
  view_.SetShutdownCaption(ExitGraphicsCaption);
  view_.ShowKeyStrip(KeyStrip::Graphics);
  view_.RefreshScreen();
  state.FormsLocked = false;
  state.PlotKeysActive = true;
  state.PlotKeyMode = 0;
}

void PlotModes::LeaveGraphics() {
  core::ConsoleState& state = system_.Console;
  state.FormsLocked = true;
  state.PlotKeysActive = false;
  view_.ShowKeyStrip(KeyStrip::Main);
  view_.ShowFigures(true);
  view_.ShowProgramButtons(true);
  view_.SetTextLine("");
  view_.SetShutdownCaption(ShutdownCaption);
  state.FormsLocked = false;
  state.PlotKeysActive = false;
  state.PlotKeyMode = 0;
}

void PlotModes::GraphicsCommand(int index) {
  if (index == 1) Redraw();
}

void PlotModes::Redraw() {
  view_.SetTextLine("GRAPHICS - REDRAW");
  view_.SetStatusLine("");
  view_.EnableGraphicsKeys(false);
  view_.RefreshScreen();
  system_.Console.PlotKeyMode = 0;
  system_.Views[static_cast<std::size_t>(system_.ActiveSlot)].ViewZoomed = false;
  view_.RefreshPlot(system_.ActiveSlot);
  EnterGraphics(true);
}

void PlotModes::Cancel() {
  const int mode = system_.Console.PlotKeyMode;
  if (mode >= FirstViewMode && mode <= LastViewMode) {
    EnterGraphics(true);
  } else {
    LeaveGraphics();
  }
}

}  // namespace torvane::console

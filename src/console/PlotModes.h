// The graphics state of the main screen and its modes: which keys stand there, what the text lines
// say, and where each key leads.
//
//   from            event                                  to
//   normal          F7, MainButton(7)                      idle
//   idle            X, ShutdownButton                      normal
//   idle            REDRAW                                 idle, plot drawn afresh
//   modes 1 to 4    C, ShutdownButton                      idle
//   modes 5 to 8    C, ShutdownButton                      normal
//
// Modes by PlotKeyMode: 0 idle, 1 and 2 the corners of a zoom, 4 pan, 5 to 8 visual restart.
#pragma once

#include <string>

#include "core/System.h"

namespace torvane::console {

/// The rows of keys, which share one strip.
enum class KeyStrip { Main, Graphics, Path };

/// What the main screen does for its modes.
class PlotModeView {
 public:
  virtual ~PlotModeView() = default;

  virtual void ShowKeyStrip(KeyStrip strip) = 0;
  /// GraphicsButton 1 to 4, KerfButton and LimitsButton.
  virtual void EnableGraphicsKeys(bool enabled) = 0;
  /// PositionBox, and ProgramButton 1 and 2.
  virtual void ShowFigures(bool shown) = 0;
  virtual void ShowProgramButtons(bool shown) = 0;
  virtual void SetTextLine(const std::string& text) = 0;
  virtual void SetStatusLine(const std::string& text) = 0;
  virtual void SetShutdownCaption(const char* caption) = 0;
  /// Paints what has changed, now.
  virtual void RefreshScreen() = 0;
  /// Draws the slot's plot afresh and starts its run time again.
  virtual void RefreshPlot(int slot) = 0;
};

class PlotModes {
 public:
  PlotModes(core::System& system, PlotModeView& view) : system_(system), view_(view) {}

  /// To idle. `enable` false keeps the keys of the graphics row dead, for the length of a repaint.
  void EnterGraphics(bool enable);
  /// To the normal state.
  void LeaveGraphics();
  /// GraphicsButton 1 to 4.
  void GraphicsCommand(int index);
  /// ShutdownButton while the graphics state is on.
  void Cancel();

 private:
  void Redraw();

  core::System& system_;
  PlotModeView& view_;
};

}  // namespace torvane::console

// The graphics state of the main screen and its modes: which keys are shown, what the text lines
// say, and where each key and each click leads.
//
//   from            event                                  to
//   normal          F7, MainButton(7)                      idle
//   normal          VISUAL RESTART of ProgramForm          mode 5
//   idle            X, ShutdownButton                      normal
//   idle            REDRAW, ZOOM OUT                       idle, plot drawn afresh
//   idle            ZOOM IN                                mode 1, first corner
//   idle            PAN                                    mode 4, new centre
//   mode 1          SELECT, click                          mode 2, opposite corner
//   mode 2          SELECT, click                          idle, zoomed unless too small
//   mode 4          SELECT, click                          idle, panned
//   modes 1, 2, 4   LEFT RIGHT UP DOWN                     the same, the cross has moved
//   modes 1, 2, 4   C, ShutdownButton                      idle
//   modes 5, 7, 8   keys and clicks                        see VisualRestart
//   modes 5, 7, 8   C, ShutdownButton                      normal
#pragma once

#include <array>
#include <string>

#include "core/Slot.h"
#include "core/System.h"
#include "graphics/ViewMath.h"
#include "platform/Canvas.h"
#include "restart/VisualRestart.h"

namespace torvane::console {

/// The rows of keys, which share one strip.
enum class KeyStrip { Main, Graphics, Path };

/// Captions of PathButton 1 to 6; a blank one is hidden.
using PathCaptions = std::array<const char*, 6>;

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
  /// Presses the button of the slot in force without its event, or lets both up.
  virtual void PressProgramButtons(bool pressed) = 0;
  virtual void SetPathKeys(const PathCaptions& captions) = 0;
  virtual void FocusPathKey() = 0;
  virtual void SetTextLine(const std::string& text) = 0;
  virtual void SetStatusLine(const std::string& text) = 0;
  virtual void SetShutdownCaption(const char* caption) = 0;
  /// Paints what has changed, now.
  virtual void RefreshScreen() = 0;
  /// Draws the slot's plot afresh and starts its run time again.
  virtual void RefreshPlot(core::Slot slot) = 0;
  [[nodiscard]] virtual platform::Canvas& PlotCanvasOf(core::Slot slot) = 0;
};

class PlotModes {
 public:
  PlotModes(core::System& system, PlotModeView& view, restart::VisualRestart& visual)
      : system_(system), view_(view), visual_(visual) {}

  /// To idle. `enable` false keeps the keys of the graphics row dead, for the length of a repaint.
  void EnterGraphics(bool enable);
  /// To the normal state.
  void LeaveGraphics();
  /// GraphicsButton 1 to 4: REDRAW, ZOOM IN, ZOOM OUT, PAN.
  void GraphicsCommand(int index);
  /// PathButton 1 to 6.
  void PlotKey(int index);
  /// The pointer was let go over a slot's plot; mm.
  void PlotMouseUp(core::Slot slot, double x, double y);
  /// ShutdownButton while the graphics state is on.
  void Cancel();
  /// To the choice of a visual restart.
  void BeginVisualRestart();

 private:
  void SetGraphicsKeys(int mode);
  void BeginCursorMode(int mode);
  void Redraw();
  void ZoomOut();
  void SelectCorner();
  void ZoomToCursor();
  void PanToCursor();
  void MoveCursor(graphics::CursorMove move);
  void BeginRepaint(const char* text);
  void ShowView(const core::PlotView& view);
  void ShowCursor(float x, float y, bool show);
  void ShowZoomRect(bool show);
  void HideShapes();
  void PlaceShape(platform::Overlay which, platform::UserPoint from, platform::UserPoint to,
                  bool show);
  [[nodiscard]] std::int16_t& Mode() { return system_.Console.PlotKeyMode; }
  [[nodiscard]] core::PlotView& View() { return system_.Views[system_.ActiveSlot]; }
  [[nodiscard]] platform::Canvas& Canvas() { return view_.PlotCanvasOf(system_.ActiveSlot); }

  core::System& system_;
  PlotModeView& view_;
  restart::VisualRestart& visual_;
  std::array<float, 4> plotCursor_{};  ///< first corner or centre, opposite corner; mm
  double cursorSize_ = 0;              ///< arms of the cross, mm
  double cursorStep_ = 0;              ///< its way for one press, mm
};

}  // namespace torvane::console

#include "console/PlotModes.h"

#include <algorithm>
#include <cmath>

#include "console/FrontEndControls.h"
#include "core/General.h"
#include "graphics/RestartMarks.h"

namespace torvane::console {

using graphics::CursorMove;
using platform::Overlay;

namespace {

/// Values of PlotKeyMode.
constexpr int Idle = 0;
constexpr int FirstCorner = 1;
constexpr int OppositeCorner = 2;
constexpr int Pan = 4;

constexpr int SelectKey = 6;

/// What is shown on the keys and in the text lines of a mode.
struct ModeRow {
  int Mode;
  PathCaptions Keys;
  const char* Text;
  const char* Status;
};
constexpr PathCaptions CursorCaptions = {"&LEFT", "&RIGHT", "&UP", "&DOWN", "", "&SELECT"};
constexpr std::array<ModeRow, 3> ModeRows = {{
    {FirstCorner, CursorCaptions, "GRAPHICS - ZOOM IN", "SELECT FIRST CORNER"},
    {Pan, CursorCaptions, "GRAPHICS - PAN", "SELECT NEW CENTRE POSITION"},
    {restart::VisualMode::Choice,
     {"&FIRST", "&PREVIOUS", "&NEXT", "&LAST", "SPLI&T", "&SELECT"},
     "VISUAL RESTART",
     "SELECT RESTART POSITION"},
}};
constexpr const char* OppositeCornerText = "SELECT OPPOSITE CORNER";

bool IsCursorMode(int mode) { return mode == FirstCorner || mode == OppositeCorner || mode == Pan; }

}  // namespace

void PlotModes::EnterGraphics(bool enable) {
  core::ConsoleState& state = system_.Console;
  state.FormsLocked = true;
  if (enable) HideShapes();
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
  state.PlotKeyMode = Idle;
}

void PlotModes::LeaveGraphics() {
  core::ConsoleState& state = system_.Console;
  state.FormsLocked = true;
  state.PlotKeysActive = false;
  visual_.GiveBackRecord();
  HideShapes();
  view_.ShowKeyStrip(KeyStrip::Main);
  view_.ShowFigures(true);
  view_.ShowProgramButtons(true);
  view_.PressProgramButtons(true);
  view_.SetTextLine("");
  view_.SetStatusLine("");
  view_.SetShutdownCaption(ShutdownCaption);
  state.FormsLocked = false;
  state.PlotKeysActive = false;
  state.PlotKeyMode = Idle;
}

/// FormsLocked stays true through the modes: no other row of keys acts.
void PlotModes::SetGraphicsKeys(int mode) {
  system_.Console.FormsLocked = true;
  system_.Console.PlotKeysActive = true;
  view_.PressProgramButtons(false);
  view_.ShowProgramButtons(false);
  view_.SetShutdownCaption(CancelModeCaption);
  const auto* const row = std::find_if(ModeRows.begin(), ModeRows.end(),
                                       [mode](const ModeRow& each) { return each.Mode == mode; });
  if (row != ModeRows.end()) {
    view_.SetPathKeys(row->Keys);
    view_.SetTextLine(row->Text);
    view_.SetStatusLine(row->Status);
  }
  view_.ShowKeyStrip(KeyStrip::Path);
  view_.FocusPathKey();
  view_.ShowFigures(false);
  view_.RefreshScreen();
}

void PlotModes::GraphicsCommand(int index) {
  switch (index) {
    case 1:
      return Redraw();
    case 2:
      return BeginCursorMode(FirstCorner);
    case 3:
      return ZoomOut();
    case 4:
      return BeginCursorMode(Pan);
    default:
      return;
  }
}

void PlotModes::BeginCursorMode(int mode) {
  Mode() = static_cast<std::int16_t>(mode);
  SetGraphicsKeys(mode);
  const core::PlotView& view = View();
  cursorSize_ = cursorStep_ = graphics::CursorSizeOf(view);
  plotCursor_[0] = (view.Corner1X + view.Corner2X) / 2;
  plotCursor_[1] = (view.Corner1Y + view.Corner2Y) / 2;
  ShowCursor(plotCursor_[0], plotCursor_[1], true);
}

void PlotModes::BeginRepaint(const char* text) {
  view_.SetTextLine(text);
  view_.SetStatusLine("");
  view_.EnableGraphicsKeys(false);
  view_.RefreshScreen();
}

void PlotModes::Redraw() {
  BeginRepaint("GRAPHICS - REDRAW");
  Mode() = Idle;
  View().ViewZoomed = false;
  view_.RefreshPlot(system_.ActiveSlot);
  EnterGraphics(true);
}

void PlotModes::ZoomOut() {
  BeginRepaint("GRAPHICS - ZOOM OUT");
  Mode() = Idle;
  View() = graphics::ZoomedOut(View(), system_.Machine.YDirection);
  view_.RefreshPlot(system_.ActiveSlot);
  EnterGraphics(true);
}

// ---- the cross ----

void PlotModes::PlotKey(int index) {
  const int mode = Mode();
  if (!IsCursorMode(mode)) return visual_.VisualKey(static_cast<restart::PathKey>(index));
  if (index >= 1 && index <= 4) return MoveCursor(static_cast<CursorMove>(index - 1));
  if (index != SelectKey) return;
  if (mode == FirstCorner) {
    plotCursor_[2] = plotCursor_[0];
    plotCursor_[3] = plotCursor_[1];
    return SelectCorner();
  }
  mode == OppositeCorner ? ZoomToCursor() : PanToCursor();
}

void PlotModes::MoveCursor(CursorMove move) {
  const bool opposite = Mode() == OppositeCorner;
  float& x = plotCursor_[opposite ? 2 : 0];
  float& y = plotCursor_[opposite ? 3 : 1];
  graphics::MoveCursor(View(), system_.Machine.YDirection, cursorStep_, move, x, y);
  ShowCursor(x, y, true);
  if (opposite) ShowZoomRect(true);
}

void PlotModes::SelectCorner() {
  view_.SetStatusLine(OppositeCornerText);
  view_.RefreshScreen();
  Mode() = OppositeCorner;
  ShowCursor(plotCursor_[0], plotCursor_[1], true);
  ShowZoomRect(true);
}

void PlotModes::ZoomToCursor() {
  const platform::Canvas& canvas = Canvas();
  const auto zoomed = graphics::ZoomedTo(
      View(), {plotCursor_[0], plotCursor_[1], plotCursor_[2], plotCursor_[3]},
      {std::abs(canvas.ScaleWidth()), std::abs(canvas.ScaleHeight())}, system_.Machine.YDirection);
  if (zoomed) ShowView(*zoomed);
  EnterGraphics(true);
}

void PlotModes::PanToCursor() {
  ShowView(graphics::PannedTo(View(), plotCursor_[0], plotCursor_[1]));
  EnterGraphics(true);
}

void PlotModes::ShowView(const core::PlotView& view) {
  View() = view;
  EnterGraphics(false);
  view_.RefreshPlot(system_.ActiveSlot);
}

void PlotModes::PlotMouseUp(core::Slot slot, double x, double y) {
  if (slot != system_.ActiveSlot) return;
  const auto atX = static_cast<float>(core::RoundPlaces(x, 2));
  const auto atY = static_cast<float>(core::RoundPlaces(y, 2));
  switch (Mode()) {
    case FirstCorner:
      plotCursor_ = {atX, atY, atX, atY};
      return SelectCorner();
    case OppositeCorner:
      plotCursor_[2] = atX;
      plotCursor_[3] = atY;
      ShowCursor(atX, atY, false);
      ShowZoomRect(true);
      return ZoomToCursor();
    case Pan:
      plotCursor_[0] = atX;
      plotCursor_[1] = atY;
      ShowCursor(atX, atY, true);
      return PanToCursor();
    case restart::VisualMode::Choice:
      return visual_.Pick(atX, atY);
    default:
      return;
  }
}

void PlotModes::Cancel() {
  const int mode = Mode();
  if (IsCursorMode(mode)) {
    EnterGraphics(true);
  } else if (mode >= restart::VisualMode::Choice) {
    visual_.Cancel();
  } else {
    LeaveGraphics();
  }
}

void PlotModes::BeginVisualRestart() {
  Mode() = restart::VisualMode::Choice;
  SetGraphicsKeys(restart::VisualMode::Choice);
  visual_.BeginVisualRestart();
  if (Mode() != restart::VisualMode::Choice) return;  // nothing on view: left after a warning
  if (const auto place = visual_.LastPlace()) {
    graphics::ShowPlaceMark(Canvas(), *place, std::abs(View().PlotIconSize));
    view_.RefreshScreen();
  }
}

// ---- shapes over the plot ----

void PlotModes::PlaceShape(Overlay which, platform::UserPoint from, platform::UserPoint to,
                           bool show) {
  platform::OverlayState shape = Canvas().GetOverlay(which);
  shape.From = from;
  shape.To = to;
  shape.Visible = show;
  Canvas().SetOverlay(which, shape);
}

void PlotModes::ShowCursor(float x, float y, bool show) {
  if (cursorSize_ == 0) cursorSize_ = graphics::CursorSizeOf({});
  const double half = std::abs(cursorSize_) / 2;
  PlaceShape(Overlay::CrossLine1, {x - half, y}, {x + half, y}, show);
  PlaceShape(Overlay::CrossLine2, {x, y - half}, {x, y + half}, show);
  view_.RefreshScreen();
}

void PlotModes::ShowZoomRect(bool show) {
  const auto [left, right] = std::minmax(plotCursor_[0], plotCursor_[2]);
  const auto [low, high] = std::minmax(plotCursor_[1], plotCursor_[3]);
  const bool up = Canvas().ScaleHeight() < 0;
  PlaceShape(Overlay::ZoomRect, {left, up ? high : low}, {right, up ? low : high}, show);
}

void PlotModes::HideShapes() {
  plotCursor_ = {};
  for (const core::Slot slot : core::BothSlots) {
    for (const Overlay which : {Overlay::CrossLine1, Overlay::CrossLine2, Overlay::ZoomRect}) {
      platform::OverlayState shape = view_.PlotCanvasOf(slot).GetOverlay(which);
      shape.Visible = false;
      view_.PlotCanvasOf(slot).SetOverlay(which, shape);
    }
    graphics::HideRestartMarks(view_.PlotCanvasOf(slot));
  }
}

}  // namespace torvane::console

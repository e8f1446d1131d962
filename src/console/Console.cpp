#include "console/Console.h"

#include <algorithm>

namespace torvane::console {

namespace {

/// Waits for one turn of the loop: what stood in it has run when this returns.
void LetOthersRun(platform::EventLoop& loop) {
  const auto turned = std::make_shared<bool>(false);
  loop.Post([turned] { *turned = true; });
  loop.WaitUntil([turned] { return *turned; });
}

}  // namespace

Console::Console(const ConsoleParts& parts)
    : parts_(parts),
      screens_(parts.System, parts.Desk, [this](toolkit::Key key) { HandleFunctionKey(key); }),
      trio_(parts.Desk.Loop(), parts.Port, parts.Files, parts.System.Link, parts.System.Directories,
            screens_),
      downloads_(trio_, parts.Files, parts.System.Directories, parts.System.Programs),
      jog_(trio_),
      poll_(parts.System, trio_, downloads_, parts.Files, screens_, *this, screens_.Messages()),
      journal_({parts.System, parts.Files, parts.Clock, parts.Desk.Loop()}),
      programs_{parts.System, trio_, downloads_, parts.Files, screens_, screens_, *this, poll_},
      store_(programs_),
      change_(programs_, store_),
      selection_(programs_, store_, split_, parts.Clock),
      entries_(parts.System, parts.Files, parts.Drives, screens_),
      gather_(parts.Files, parts.System.Directories, parts.System.Machine, parts.Clock),
      blocks_(Choice()),
      visual_(Choice(), *this),
      fileWork_{parts.System, parts.Files, parts.Drives, screens_,
                [&loop = parts.Desk.Loop()] { LetOthersRun(loop); }},
      services_{parts.System,
                parts.Files,
                parts.Drives,
                parts.Clock,
                trio_,
                downloads_,
                jog_,
                poll_,
                screens_,
                screens_.Warning(),
                screens_.Messages(),
                entries_,
                selection_,
                blocks_,
                visual_,
                restartPoint_,
                split_,
                screens_.EntryPads(),
                *this,
                exits_,
                parts.Comms,
                fileWork_,
                tasks_},
      receiveLamp_(parts.Desk.Loop(), parts.Comms, [this](const std::string& text) {
        if (FrontEnd* shown = screens_.LoadedMain()) shown->ShowReceiveLamp(text);
      }) {
  screens_.Set().Serve(services_);
  // From the loop: the question waits, and the window system's own event must not wait under it.
  parts.Desk.OnCloseRequest([this] { parts_.Desk.Loop().Post([this] { CloseRequested(); }); });
  poll_.Observe(journal_);
  trio_.SetPollTick([this] { poll_.PollTrio(); });
}

Console::~Console() {
  parts_.Desk.OnCloseRequest({});
  parts_.Desk.Loop().GiveUpWaits();
}

void Console::SetExits(ConsoleExits exits) {
  exits_ = std::move(exits);
  screens_.SetShutdownToService(exits_.ShutdownToService);
}

void Console::Open() {
  FrontEnd& main = screens_.Main();
  drawing_ = std::make_unique<graphics::DrawingModule>(
      parts_.System, parts_.Files,
      std::array<platform::Canvas*, 2>{&main.PlotBox(1).Canvas(), &main.PlotBox(2).Canvas()});
  plotter_ = std::make_unique<graphics::RealTimePlotter>(
      parts_.System, *drawing_,
      graphics::RealTimePlotter::Links{[this](std::string_view expression, int decimals) {
                                         return trio_.GetRspnsSngl(expression, decimals,
                                                                   link::Asker::Poll);
                                       },
                                       [this](core::Slot slot) {
                                         if (FrontEnd* shown = screens_.LoadedMain())
                                           shown->BringPlotForward(slot);
                                       }});
}

void Console::LoadPlotConfig() {
  if (drawing_) drawing_->LoadPlotConfig(screens_.Main());
}

void Console::RealTimePlot() {
  if (plotter_) plotter_->RealTimePlot();
}

void Console::RefreshPlot(core::Slot slot) {
  if (plotter_) plotter_->RefreshPlot(slot);
}

void Console::ShowPlotBox(core::Slot slot) {
  if (plotter_) plotter_->ShowPlotBox(slot);
}

void Console::MainScreenShown() {
  screens_.Set().Unload(core::ScreenNames::SplashForm);
  screens_.ShowProgramLine();
  trio_.StartPolling(true);
}

void Console::KerfButtonChanged(bool pressed) {
  if (drawing_) drawing_->KerfButtonChanged(pressed);
}

void Console::LimitsButtonChanged(bool pressed) {
  if (drawing_) drawing_->LimitsButtonChanged(pressed);
}

void Console::RedrawPlot(core::Slot slot) {
  if (plotter_) plotter_->RedrawWithTrace(slot);
}

int Console::MarkedRecord() const {
  constexpr int FirstRestartMode = 5;
  const core::ConsoleState& state = parts_.System.Console;
  if (!state.PlotKeysActive || state.PlotKeyMode < FirstRestartMode) return 0;
  return std::max<int>(0, visual_.State().VisualCurrent);
}

void Console::CloseRequested() {
  namespace Names = core::ScreenNames;
  const ScreenSet& set = screens_.Set();
  if (parts_.System.ShuttingDown || !set.Visible(Names::FrontEnd)) return;
  if (set.Visible(Names::ShutdownForm)) return;
  // A mode goes back to the graphics state, and that to the normal one.
  for (int step = 0; step < 2 && parts_.System.Console.PlotKeysActive; ++step)
    screens_.Main().ShutdownPressed();
  HandleFunctionKey(toolkit::Key::F12);
}

restart::ChoiceParts Console::Choice() {
  return {parts_.System, parts_.Files, screens_, gather_, restartPoint_, split_, &journal_};
}

void Console::PaintRecord(const partprogram::DrawRecord& record, bool highlighted) {
  if (!drawing_) return;
  drawing_->DrawPlotRecord(
      parts_.System.ActiveSlot, record,
      highlighted ? graphics::PaintMode::Highlight : graphics::PaintMode::Background);
}

void Console::EnableSplit(bool enabled) {
  constexpr int SplitButton = 5;
  screens_.Main().PathButton(SplitButton).SetEnabled(enabled);
}

void Console::LeaveGraphics() { screens_.Main().Modes().LeaveGraphics(); }

void Console::OpenRestartForm() { screens_.Set().Open(core::ScreenNames::RestartForm); }

void Console::HandleFunctionKey(toolkit::Key key) {
  if (parts_.System.ShuttingDown) return;  // the main screen has gone, and is not to come again
  const KeyAction action = FunctionKeyAction(key, parts_.System.Console);
  FrontEnd& main = screens_.Main();
  switch (action.Command) {
    case KeyCommand::None:
      return;
    case KeyCommand::OpenScreen:
      return main.OpenMain(action.Number);
    case KeyCommand::EnterGraphics:
      return main.Modes().EnterGraphics(true);
    case KeyCommand::OpenMessages:
      return main.OpenMessages();
    case KeyCommand::ChangeProgram:
      return ChangeActiveProgram(action.Number);
    case KeyCommand::Shutdown:
      return screens_.Set().ShowModal(core::ScreenNames::ShutdownForm);
    case KeyCommand::GraphicsButton:
      main.GraphicsButton(action.Number).Press();
      return;
    case KeyCommand::FlipLimits:
      return main.FlipLimits();
    case KeyCommand::FlipKerf:
      return main.FlipKerf();
    case KeyCommand::LeaveGraphics:
      return main.Modes().LeaveGraphics();
    case KeyCommand::LeaveRestart:
      return main.Modes().Cancel();
    case KeyCommand::PathButton:
      main.PathButton(action.Number).Press();
      return;
  }
}

}  // namespace torvane::console

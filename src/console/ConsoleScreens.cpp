#include "console/ConsoleScreens.h"

#include "console/MainAreas.h"
#include "console/ScreenTable.h"

namespace torvane::console {

ConsoleScreens::ConsoleScreens(core::System& system, toolkit::Desk& desk,
                               std::function<void(toolkit::Key)> functionKey)
    : set_(system, desk, std::move(functionKey)), pads_(set_) {
  desk.SetBackground(system.Colours[core::ColourName::PlotBackground]);
  desk.SetWorkArea(PlotArea);
  for (const ScreenRow& row : ScreenTable()) set_.Register(row);
}

FrontEnd& ConsoleScreens::Main() {
  return dynamic_cast<FrontEnd&>(*set_.Load(core::ScreenNames::FrontEnd));
}

void ConsoleScreens::ShowProgramLine() {
  FrontEnd* main = LoadedMain();
  if (main == nullptr || set_.System().Console.PlotKeysActive) return;
  const core::ActiveProgram& slot = set_.System().Active();
  main->SetTextLine(slot.ProgramName.empty() ? "" : slot.ProgramName + " " + slot.DirectoryName);
}

bool ConsoleScreens::ShowWarning(std::string_view text, link::WarningMode mode,
                                 link::WarningStyle style) {
  return warning_.ShowWarning(text, mode, style,
                              [this] { set_.ShowModal(core::ScreenNames::WarningForm); });
}

void ConsoleScreens::ShutdownToService() {
  if (shutdownToService_) shutdownToService_();
}

void ConsoleScreens::ShowFigure(int index, std::string_view text) {
  if (FrontEnd* main = LoadedMain()) main->SetPositionText(index, std::string(text));
}

std::uint32_t ConsoleScreens::MessageButtonBackground() const {
  const FrontEnd* main = LoadedMain();
  return main == nullptr ? 0 : main->MessageBackground();
}

void ConsoleScreens::PaintMessageButton(std::uint32_t background, std::uint32_t text) {
  if (FrontEnd* main = LoadedMain()) main->PaintMessageButton(background, text);
}

void ConsoleScreens::MarkMessageButton(supervision::MessageState state) {
  if (FrontEnd* main = LoadedMain()) main->MarkMessageButton(state);
}

void ConsoleScreens::SetProgramCaption(core::Slot slot, std::string_view caption) {
  if (FrontEnd* main = LoadedMain()) main->SetProgramCaption(slot, std::string(caption));
  ShowProgramLine();
}

void ConsoleScreens::PressProgramButton(core::Slot slot) {
  if (FrontEnd* main = LoadedMain()) main->ShowActiveSlot(slot);
  ShowProgramLine();
}

}  // namespace torvane::console

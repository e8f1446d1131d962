#include "console/ConsoleScreens.h"

#include <array>

#include "console/MessageForm.h"
#include "console/PositionForms.h"
#include "console/SetupForm.h"
#include "console/SplashForm.h"
#include "console/ViewProgForm.h"
#include "console/WarningForm.h"

namespace torvane::console {

using supervision::PolledBoxes;
using supervision::PolledForm;

namespace {

/// In the order of PolledForm.
constexpr std::array<const char*, 8> PolledNames = {"MachineForm",  "LaserStatusForm", "SetupForm",
                                                    "BatchForm",    "XYPositionForm",  "XYJogForm",
                                                    "ViewProgForm", "MessageForm"};

}  // namespace

ConsoleScreens::ConsoleScreens(core::System& system, toolkit::Desk& desk,
                               platform::FileSystem& files,
                               std::function<void(toolkit::Key)> functionKey)
    : set_(system, desk, std::move(functionKey)), pads_(set_) {
  desk.SetBackground(system.Colours[core::ColourName::PlotBackground]);
  set_.Register(WarningForm::ScreenName,
                [this](ScreenSet& set) { return std::make_unique<WarningForm>(set, warning_); });
  set_.Register(MessageForm::ScreenName, [this, &files](ScreenSet& set) {
    return std::make_unique<MessageForm>(set, files, messages_);
  });
  set_.Register(SplashForm::ScreenName,
                [](ScreenSet& set) { return std::make_unique<SplashForm>(set); });
  set_.Register(SetupForm::ScreenName,
                [](ScreenSet& set) { return std::make_unique<SetupForm>(set); });
  set_.Register(XYPositionForm::ScreenName,
                [](ScreenSet& set) { return std::make_unique<XYPositionForm>(set); });
  set_.Register(AuxPositionForm::ScreenName,
                [](ScreenSet& set) { return std::make_unique<AuxPositionForm>(set); });
}

void ConsoleScreens::SetFrontEndActions(FrontEndActions& actions) {
  set_.Register(FrontEnd::ScreenName,
                [&actions](ScreenSet& set) { return std::make_unique<FrontEnd>(set, actions); });
}

FrontEnd& ConsoleScreens::Main() {
  return dynamic_cast<FrontEnd&>(*set_.Load(FrontEnd::ScreenName));
}

void ConsoleScreens::ShowProgramLine() {
  FrontEnd* main = LoadedMain();
  if (main == nullptr || set_.System().Console.PlotKeysActive) return;
  const core::ActiveProgram& slot = set_.System().Active();
  main->SetTextLine(slot.ProgramName.empty() ? "" : slot.ProgramName + " " + slot.DirectoryName);
}

bool ConsoleScreens::ShowWarning(std::string_view text, int mode, int style) {
  return warning_.ShowWarning(text, mode, style,
                              [this] { set_.ShowModal(WarningForm::ScreenName); });
}

void ConsoleScreens::ShutdownToService() {
  if (shutdownToService_) shutdownToService_();
}

bool ConsoleScreens::Visible(PolledForm form) const {
  return set_.Visible(PolledNames[static_cast<std::size_t>(form)]);
}

void ConsoleScreens::ShowFigure(PolledBoxes boxes, int index, std::string_view text) {
  const std::string figure(text);
  switch (boxes) {
    case PolledBoxes::MainPosition:
      if (FrontEnd* main = LoadedMain()) main->SetPositionText(index, figure);
      return;
    case PolledBoxes::XYPosition:
      if (auto* screen = set_.Find<XYPositionForm>(XYPositionForm::ScreenName))
        screen->SetPositionText(index, figure);
      return;
    case PolledBoxes::RunTime:
      if (auto* screen = set_.Find<SetupForm>(SetupForm::ScreenName)) screen->SetRunTime(figure);
      return;
    case PolledBoxes::Jog:
    case PolledBoxes::MachineFeed:
    case PolledBoxes::LaserFeed:
    case PolledBoxes::LaserPower:
    case PolledBoxes::LaserStatus:
      return;  // boxes of screens that this console does not have
  }
}

std::uint32_t ConsoleScreens::MessageButtonBackground() const {
  const FrontEnd* main = LoadedMain();
  return main == nullptr ? 0 : main->MessageBackground();
}

void ConsoleScreens::PaintMessageButton(std::uint32_t background, std::uint32_t text) {
  if (FrontEnd* main = LoadedMain()) main->PaintMessageButton(background, text);
}

void ConsoleScreens::SetRollerButton(bool) {
  // The roller button stands on the machine screen; without that screen there is nothing to set.
}

void ConsoleScreens::ShowListing(const supervision::ListingView& rows) {
  if (auto* screen = set_.Find<ViewProgForm>(ViewProgForm::ScreenName)) screen->ShowListing(rows);
}

void ConsoleScreens::ShowMessages(const supervision::MessageList& messages) {
  if (auto* screen = set_.Find<MessageForm>(MessageForm::ScreenName))
    screen->ShowMessages(messages);
}

void ConsoleScreens::ShowBatch(const core::Batch&) {
  // The batch boxes stand on the batch screen; the counters themselves are in the slot.
}

void ConsoleScreens::SetProgramCaption(int slot, std::string_view caption) {
  if (FrontEnd* main = LoadedMain()) main->SetProgramCaption(slot, std::string(caption));
  ShowProgramLine();
}

void ConsoleScreens::PressProgramButton(int slot) {
  if (FrontEnd* main = LoadedMain()) main->ShowActiveSlot(slot);
  ShowProgramLine();
}

}  // namespace torvane::console

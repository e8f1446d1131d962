#include "console/RestartForm.h"

#include "console/ConsoleServices.h"
#include "console/FrontEnd.h"
#include "console/ScreenSet.h"
#include "core/ScreenNames.h"
#include "graphics/RestartMarks.h"
#include "platform/RuntimeFault.h"
#include "restart/RestartWords.h"

namespace torvane::console {

namespace {

constexpr int WordRows = 5;

restart::RestartParts PartsOf(const ConsoleServices& services, toolkit::Desk& desk) {
  return {services.System, services.Trio,    services.Poll,         desk.Loop(),
          services.Files,  services.Dialogs, services.RestartPoint, services.Split};
}

}  // namespace

RestartForm::RestartForm(const ScreenStart& start)
    : Screen(start), operation_(PartsOf(Services(), Screens().Desk()), *this) {
  cycleStart_ = &AddLabel(Body(), "CycleStartLabel", " PRESS  CYCLE START", Role::Panel,
                          toolkit::TypeStyle::Title, toolkit::Alignment::Centre);
  cycleStart_->SetFilled(true);
  cycleStart_->SetColours(0, 0);
  tools_ = AddLabels(Body(), "ToolLabel", 1, {"T01", "Diameter 10"});
  positions_ = AddLabels(Body(), "PositnLabel", 0, {"METRIC", "X0.00", "Y0.00", "C0.00"});
  hits_ = &AddLabel(Body(), "HitsLabel", "Completed Hits : 0");
  for (int row = 1; row <= WordRows; ++row) {
    words_.push_back(&AddLabel(Body(), Numbered("OutlookLabel", row), "", Role::Panel));
  }
  auto& cancel =
      AddButton(Body(), "ExitButton", "&CANCEL", Role::General, [this] { operation_.Cancel(); });
  SetHome(cancel);
  SetGrid(760, Rows({Cell(cycleStart_).High(64), Columns(CellsOf(positions_)),
                     Columns({tools_[0], tools_[1], Cell(hits_).Share(2)}), Rows(CellsOf(words_)),
                     AtRight(cancel)})
                   .Spaced(SectionGap));
}

void RestartForm::Loaded() {
  for (auto* label : words_) label->SetText("");
}

void RestartForm::Activated() {
  if (begun_) return;
  begun_ = true;
  Screens().Desk().Loop().Post(Guard([this] { operation_.StartRestart(); }));
}

void RestartForm::ShowRestart(const restart::RestartLabels& labels) {
  for (std::size_t i = 0; i < tools_.size(); ++i) tools_[i]->SetText(labels.ToolLabel[i]);
  for (std::size_t i = 0; i < positions_.size(); ++i) {
    positions_[i]->SetText(labels.PositnLabel[i]);
  }
  hits_->SetText(labels.HitsLabel);
  ShowOutlook();
}

/// The same words and marks as in a rehearsal, before anything moves.
void RestartForm::ShowOutlook() {
  auto* const main = Screens().Find<FrontEnd>(core::ScreenNames::FrontEnd);
  if (main == nullptr) return;
  const core::System& system = System();
  try {
    const restart::RestartOutlook outlook = restart::OutlookOf(
        Services().Files, system, Services().RestartPoint, Services().Split.SplitRecord);
    for (std::size_t i = 0; i < words_.size(); ++i) {
      words_[i]->SetText(i < outlook.Words.size() ? outlook.Words[i] : "");
    }
    if (!outlook.Entry) return;
    const restart::GatherState& state = Services().RestartPoint.RestartState;
    graphics::ShowRestartMarks(main->PlotBox(system.ActiveSlot).Canvas(),
                               {{system.State.XPosition, system.State.YPosition},
                                {state.XPosition, state.YPosition},
                                outlook.Entry->Compensated},
                               system.Views[system.ActiveSlot].PlotIconSize);
  } catch (const platform::RuntimeFault& fault) {
    // The restart itself needs none of it: what could not be read is named, and it goes on.
    words_[0]->SetText(fault.what());
  }
}

void RestartForm::SetCycleStartColour(std::uint32_t colour) { cycleStart_->SetColours(0, colour); }

void RestartForm::Unloaded() {
  operation_.Unload();
  auto* const main = Screens().Find<FrontEnd>(core::ScreenNames::FrontEnd);
  if (main == nullptr) return;
  for (const core::Slot slot : core::BothSlots) {
    graphics::HideRestartMarks(main->PlotBox(slot).Canvas());
  }
}

}  // namespace torvane::console

#include "console/StatusMenuForm.h"

#include <array>
#include <string>

#include "console/ConsoleServices.h"
#include "console/ScreenSet.h"
#include "core/ScreenNames.h"
#include "link/Trio.h"
#include "link/Variables.h"

namespace torvane::console {

namespace {

namespace Names = core::ScreenNames;

constexpr std::array MachineScreens = {Names::XYPositionForm, Names::AuxPositionForm};
constexpr std::array ProgramScreens = {Names::ViewProgForm, Names::SetupForm, Names::BatchForm};

/// A block skip switch and its variable.
struct SkipRow {
  const char* Caption;
  std::string_view Variable;
  toolkit::Key Key;
};

constexpr std::array<SkipRow, 2> SkipRows = {{
    {" BLOCK SKIP &1", link::Variable::BlockSkip1, static_cast<toolkit::Key>('1')},
    {" BLOCK SKIP &2", link::Variable::BlockSkip2, static_cast<toolkit::Key>('2')},
}};

}  // namespace

StatusMenuForm::StatusMenuForm(const ScreenStart& start) : Screen(start) {
  auto& machine = AddFrame(Body(), "MachineFrame", "MACHINE");
  auto& program = AddFrame(Body(), "ProgramFrame", "PROGRAM ");
  const auto open = [this](const char* screen) {
    FocusHome();
    Screens().Open(screen);
  };
  const auto machineKeys =
      AddButtons(machine, "MachineButton", 1, {"&POSITION", "&AUXILIARY"}, Role::General,
                 [open](int index) { open(MachineScreens[static_cast<std::size_t>(index - 1)]); });
  const auto programKeys =
      AddButtons(program, "ProgramButton", 1,
                 {"&VIEW PROGRAM", "PROGRAM   &INFO", "&BATCH COUNTER"}, Role::General,
                 [open](int index) { open(ProgramScreens[static_cast<std::size_t>(index - 1)]); });
  for (std::size_t i = 0; i < machineKeys.size(); ++i) Leads(*machineKeys[i], MachineScreens[i]);
  for (std::size_t i = 0; i < programKeys.size(); ++i) Leads(*programKeys[i], ProgramScreens[i]);
  MakeSkips();
  SetGrid(592, Rows({
                        Columns({Inside(machine, Rows(CellsOf(machineKeys))),
                                 Inside(program, Rows(CellsOf(programKeys)))})
                            .Spaced(SectionGap),
                        Columns(CellsOf(skips_)).Spaced(SectionGap),
                        Columns({Space(), AddExitButton(Body())}).Spaced(SectionGap),
                    })
                   .Spaced(SectionGap));
}

void StatusMenuForm::MakeSkips() {
  for (const SkipRow& row : SkipRows) {
    skips_.push_back(
        &AddTwoState(Body(), Numbered("SkipButton", static_cast<int>(skips_.size()) + 1),
                     row.Caption, Role::General, [this, &row](bool down) {
                       FocusHome();
                       Services().Trio.Download(link::Assignment(row.Variable, down ? "1" : "0"));
                     }));
    AddKey(row.Key, *skips_.back());
  }
}

void StatusMenuForm::Activated() {
  // A change is sent back, as a press would send it: harmless, the variable holds it already.
  for (std::size_t i = 0; i < skips_.size(); ++i)
    skips_[i]->SetDown(Services().Trio.GetRspnsBln(SkipRows[i].Variable), toolkit::Events::Fire);
}

}  // namespace torvane::console

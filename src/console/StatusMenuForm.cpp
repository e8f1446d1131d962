#include "console/StatusMenuForm.h"

#include <string>

#include "console/ScreenSet.h"

namespace torvane::console {

namespace {

/// A key of the menu and the screen behind it.
struct MenuRow {
  const char* Name;
  const char* Caption;
  const char* Opens;
};

constexpr std::array<MenuRow, 2> MachineRows = {{
    {"MachineButton(1)", "&POSITION", "XYPositionForm"},
    {"MachineButton(2)", "&AUXILIARY", "AuxPositionForm"},
}};

constexpr std::array<MenuRow, 3> ProgramRows = {{
    {"ProgramButton(1)", "&VIEW PROGRAM", "ViewProgForm"},
    {"ProgramButton(2)", "PROGRAM   &INFO", "SetupForm"},
    {"ProgramButton(3)", "&BATCH COUNTER", "BatchForm"},
}};

/// A block skip switch and its variable.
struct SkipRow {
  const char* Name;
  const char* Caption;
  const char* Variable;
  toolkit::Key Key;
};

constexpr std::array<SkipRow, 2> SkipRows = {{
    {"SkipButton(1)", " BLOCK SKIP &1", "VR(92)", static_cast<toolkit::Key>('1')},
    {"SkipButton(2)", " BLOCK SKIP &2", "VR(93)", static_cast<toolkit::Key>('2')},
}};

}  // namespace

StatusMenuForm::StatusMenuForm(ScreenSet& screens, link::Trio& trio)
    : Screen(screens, {.Name = ScreenName, .PanelName = "StatusPanel", .Title = "STATUS"}),
      trio_(trio) {
  machineFrame_ = &AddFrame(Body(), "MachineFrame", "MACHINE");
  programFrame_ = &AddFrame(Body(), "ProgramFrame", "PROGRAM ");
  MakeMenu();
  for (std::size_t i = 0; i < SkipRows.size(); ++i) {
    const SkipRow& row = SkipRows[i];
    skipButtons_[i] =
        &AddTwoState(Body(), row.Name, row.Caption, Role::General, [this, &row](bool down) {
          FocusHome();
          trio_.Download(std::string(row.Variable) + (down ? "=1" : "=0"));
        });
    AddKey(row.Key, *skipButtons_[i]);
  }
  exit_ = &AddExitButton(Body());
}

void StatusMenuForm::MakeMenu() {
  const auto add = [this](toolkit::Frame& frame, const MenuRow& row) {
    return &AddButton(frame, row.Name, row.Caption, Role::General, [this, &row] {
      FocusHome();
      Screens().Open(row.Opens);
    });
  };
  for (std::size_t i = 0; i < MachineRows.size(); ++i)
    machineButtons_[i] = add(*machineFrame_, MachineRows[i]);
  for (std::size_t i = 0; i < ProgramRows.size(); ++i)
    programButtons_[i] = add(*programFrame_, ProgramRows[i]);
}

void StatusMenuForm::Activated() {
  // A change is sent back, as a press would send it: harmless, the variable holds it already.
  for (std::size_t i = 0; i < SkipRows.size(); ++i) {
    skipButtons_[i]->SetDown(trio_.GetRspnsBln(SkipRows[i].Variable), toolkit::Events::Fire);
  }
}

void StatusMenuForm::Layout(const toolkit::Metrics& metrics) {
  const int column = metrics.Px(260);
  const int rows = 3 * metrics.KeyHeight + 2 * metrics.Gap;
  const int frame = toolkit::Frame::HeightFor(metrics, rows);
  toolkit::Area rest =
      PlaceBody(metrics, 2 * column + metrics.Margin + 2 * metrics.Margin,
                frame + 2 * metrics.KeyHeight + 2 * metrics.Margin + 2 * metrics.Margin);
  auto frames = toolkit::Columns(toolkit::TakeTop(rest, frame, metrics.Margin), 2, metrics.Margin);
  machineFrame_->Place(frames[0]);
  programFrame_->Place(frames[1]);
  const auto left = toolkit::Rows(machineFrame_->Inside(), 3, metrics.Gap);
  const auto right = toolkit::Rows(programFrame_->Inside(), 3, metrics.Gap);
  for (std::size_t i = 0; i < machineButtons_.size(); ++i) machineButtons_[i]->Place(left[i]);
  for (std::size_t i = 0; i < programButtons_.size(); ++i) programButtons_[i]->Place(right[i]);
  const auto skips = toolkit::Columns(toolkit::TakeTop(rest, metrics.KeyHeight, metrics.Margin), 2,
                                      metrics.Margin);
  for (std::size_t i = 0; i < skipButtons_.size(); ++i) skipButtons_[i]->Place(skips[i]);
  exit_->Place(toolkit::TakeRight(rest, column));
}

}  // namespace torvane::console

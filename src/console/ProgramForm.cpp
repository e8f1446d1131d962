#include "console/ProgramForm.h"

#include "console/EntryMode.h"
#include "console/ScreenSet.h"
#include "core/General.h"

namespace torvane::console {

using toolkit::Key;

ProgramForm::ProgramForm(ScreenSet& screens, supervision::ProgramEntries& entries,
                         supervision::ProgramSelection& selection, Pads& pads)
    : Screen(screens, {.Name = ScreenName, .PanelName = "ProgramPanel", .Title = "PROGRAM"}),
      entries_(entries),
      selection_(selection),
      pads_(pads) {
  MakeNames();
  MakeKeys();
}

void ProgramForm::MakeNames() {
  labels_[0] = &AddLabel(Body(), "DirectoryLabel", "DIRECTORY", Role::Panel);
  directoryCombo_ = new toolkit::PickBox(&Body());  // owned by the panel
  Adopt(*directoryCombo_, "DirectoryCombo", Role::Entry);
  directoryCombo_->OnChange(Guard([this] { DirectoryChanged(); }));
  labels_[1] = &AddLabel(Body(), "ProgramLabel", "PROGRAM", Role::Panel);
  programCombo_ = new toolkit::PickBox(&Body());  // owned by the panel
  Adopt(*programCombo_, "ProgramCombo", Role::Entry);
  // Names are entered on the pads: most letters are keys of this screen.
  for (toolkit::PickBox* box : {directoryCombo_, programCombo_})
    box->OnKeyPress([](char) { return '\0'; });
  padButtons_[0] = &AddButton(Body(), "PadButton(1)", "PAD (&D)", Role::General, [this] {
    if (EnterName(*directoryCombo_)) DirectoryChanged();
  });
  padButtons_[1] = &AddButton(Body(), "PadButton(2)", "PAD (&P)", Role::General,
                              [this] { (void)EnterName(*programCombo_); });
}

void ProgramForm::MakeKeys() {
  select_ =
      &AddButton(Body(), "SelectButton", "&SELECT", Role::General, [this] { SelectPressed(); });
  side_[0] = &AddButton(Body(), "EditButton", "&EDIT", Role::General, [this] { EditPressed(); });
  side_[1] =
      &AddButton(Body(), "SearchButton", "SEA&RCH", Role::General, [this] { SearchPressed(); });
  side_[2] = &AddButton(Body(), "ListsButton", "&LISTS", Role::General,
                        [this] { Screens().Open("ProgListForm"); });
  side_[3] = &AddButton(Body(), "RestartButton(1)", "&BLOCK RESTART", Role::General,
                        [this] { RestartPressed(); });
  side_[4] = &AddButton(Body(), "RestartButton(2)", "&VISUAL RESTART", Role::General,
                        [this] { RestartPressed(); });
  exit_ = &AddExitButton(Body());
  SetHome(*select_);
}

void ProgramForm::Loaded() {
  core::System& system = Screens().System();
  const core::ActiveProgram& slot = system.Active();
  const std::string directory = system.Directories.ProgramDirectoryName;
  directoryCombo_->SetItems(entries_.Directories());
  directoryCombo_->SetText(directory);
  programCombo_->SetItems(entries_.Programs(directory));
  const bool own = slot.Selected && core::EqualNoCase(slot.DirectoryName, directory);
  programCombo_->SetText(own ? slot.ProgramName : "");
}

void ProgramForm::DirectoryChanged() {
  auto programs = entries_.ChangeDirectory(directoryCombo_->Text());
  // A name that stands for no directory (yet) has no programs; the program's name is left to go
  // with it.
  programCombo_->SetItems(programs.value_or(std::vector<std::string>()));
  if (programs) programCombo_->SetText("");
}

bool ProgramForm::EnterName(toolkit::PickBox& box) {
  const std::string name = pads_.EnterText(box.Text(), EntryMode::Name);
  if (name == box.Text()) return false;
  box.SetText(name);
  return true;
}

void ProgramForm::SelectPressed() {
  selection_.SelectProgram(directoryCombo_->Text(), programCombo_->Text());
}

void ProgramForm::EditPressed() {
  // The way there makes directories and files: not before there is an editor to open them.
  if (!Screens().Known("EditProgForm")) return;
  if (entries_.PrepareEdit(directoryCombo_->Text(), programCombo_->Text()))
    Screens().Open("EditProgForm");
}

void ProgramForm::SearchPressed() {
  if (entries_.PrepareSearch(directoryCombo_->Text(), programCombo_->Text()))
    Screens().Open("SearchForm");
}

void ProgramForm::RestartPressed() {
  if (!entries_.RestartAvailable(Screens().System().ActiveSlot)) Screens().Desk().Beep();
}

bool ProgramForm::OtherKey(const toolkit::KeyStroke& stroke) {
  // The arrows step through the programs, the page keys through the directories, wherever the focus
  // is.
  struct StepRow {
    Key Pressed;
    Key Step;
    bool Directories;
  };
  static constexpr std::array<StepRow, 4> Rows = {{
      {Key::Up, Key::Up, false},
      {Key::Down, Key::Down, false},
      {Key::PageUp, Key::Up, true},
      {Key::PageDown, Key::Down, true},
  }};
  if (stroke.Code == Key::Delete) return true;  // nothing is typed into the boxes
  if (directoryCombo_->ListOpen() || programCombo_->ListOpen()) return false;
  for (const StepRow& row : Rows) {
    if (row.Pressed != stroke.Code) continue;
    return (row.Directories ? directoryCombo_ : programCombo_)
        ->KeyDown(toolkit::KeyStroke(row.Step));
  }
  return false;
}

void ProgramForm::LayoutNames(toolkit::Area rest, const toolkit::Metrics& metrics) {
  for (std::size_t i = 0; i < labels_.size(); ++i) {
    labels_[i]->Place(toolkit::TakeTop(rest, metrics.LineHeight, metrics.Gap / 2));
    toolkit::Area line = toolkit::TakeTop(rest, metrics.KeyHeight, metrics.Margin);
    padButtons_[i]->Place(toolkit::TakeRight(line, metrics.KeyWidth * 3 / 4, metrics.Gap));
    (i == 0 ? directoryCombo_ : programCombo_)->Place(line);
  }
}

void ProgramForm::Layout(const toolkit::Metrics& metrics) {
  const int sideRows = static_cast<int>(side_.size());
  const int height =
      (sideRows + 1) * metrics.KeyHeight + (sideRows - 1) * metrics.Gap + 3 * metrics.Margin;
  const int side = metrics.Px(216);
  toolkit::Area rest = PlaceBody(metrics, metrics.Px(928), height);
  toolkit::Area bottom = toolkit::TakeBottom(rest, metrics.KeyHeight, metrics.Margin);
  exit_->Place(toolkit::TakeRight(bottom, side, metrics.Margin));
  select_->Place(bottom);
  const auto column =
      toolkit::Rows(toolkit::TakeRight(rest, side, metrics.Margin), sideRows, metrics.Gap);
  for (std::size_t i = 0; i < side_.size(); ++i) side_[i]->Place(column[i]);
  LayoutNames(rest, metrics);
}

}  // namespace torvane::console

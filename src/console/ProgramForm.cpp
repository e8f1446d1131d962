#include "console/ProgramForm.h"

#include <array>

#include "console/ConsoleServices.h"
#include "console/EntryMode.h"
#include "console/FileTasks.h"
#include "console/FrontEnd.h"
#include "console/ScreenSet.h"
#include "core/General.h"
#include "core/ScreenNames.h"
#include "files/Lists.h"
#include "files/Questions.h"
#include "restart/BlockRestart.h"

namespace torvane::console {

using toolkit::Key;

ProgramForm::ProgramForm(const ScreenStart& start)
    : Screen(start), entries_(Services().Entries), selection_(Services().Selection) {
  constexpr double SideWide = 216;
  const Cell names = NameCells();
  auto& select =
      AddButton(Body(), "SelectButton", "&SELECT", Role::General, [this] { SelectPressed(); });
  const auto side = SideKeys();
  auto& exit = AddExitButton(Body());
  SetHome(select);
  SetGrid(928, Rows({Columns({names, Rows(CellsOf(side)).Wide(SideWide)}).Spaced(SectionGap),
                     Columns({select, Cell(exit).Wide(SideWide)}).Spaced(SectionGap)})
                   .Spaced(SectionGap));
}

Cell ProgramForm::NameCells() {
  constexpr double PadWide = 114;
  auto& directory = AddLabel(Body(), "DirectoryLabel", "DIRECTORY");
  directoryCombo_ = &AddPick(Body(), "DirectoryCombo", [this] { DirectoryChanged(); });
  auto& program = AddLabel(Body(), "ProgramLabel", "PROGRAM");
  programCombo_ = &AddPick(Body(), "ProgramCombo", {});
  // Names are entered on the pads: most letters are keys of this screen.
  for (toolkit::PickBox* box : {directoryCombo_, programCombo_})
    box->OnKeyPress([](char) { return '\0'; });
  auto& directoryPad = AddButton(Body(), "PadButton(1)", "PAD (&D)", Role::General, [this] {
    if (EnterName(*directoryCombo_)) DirectoryChanged();
  });
  auto& programPad = AddButton(Body(), "PadButton(2)", "PAD (&P)", Role::General,
                               [this] { (void)EnterName(*programCombo_); });
  return Rows({Rows({directory, Table({0, PadWide}, {{directoryCombo_, directoryPad}})}).Spaced(4),
               Rows({program, Table({0, PadWide}, {{programCombo_, programPad}})}).Spaced(4)})
      .Spaced(SectionGap);
}

std::vector<toolkit::Button*> ProgramForm::SideKeys() {
  struct SideKey {
    const char* Name;
    const char* Caption;
    void (ProgramForm::*Pressed)();
    const char* Screen;  ///< null where the key beeps by itself when there is nothing to open
  };
  static constexpr std::array<SideKey, 5> Keys = {{
      {"EditButton", "&EDIT", &ProgramForm::EditPressed, core::ScreenNames::EditProgForm},
      {"SearchButton", "SEA&RCH", &ProgramForm::SearchPressed, core::ScreenNames::SearchForm},
      {"ListsButton", "&LISTS", &ProgramForm::ListsPressed, core::ScreenNames::ProgListForm},
      {"RestartButton(1)", "&BLOCK RESTART", &ProgramForm::BlockRestartPressed, nullptr},
      {"RestartButton(2)", "&VISUAL RESTART", &ProgramForm::VisualRestartPressed, nullptr},
  }};
  std::vector<toolkit::Button*> keys;
  for (const SideKey& key : Keys) {
    keys.push_back(&AddButton(Body(), key.Name, key.Caption, Role::General,
                              [this, pressed = key.Pressed] { (this->*pressed)(); }));
    if (key.Screen != nullptr) Leads(*keys.back(), key.Screen);
  }
  return keys;
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
  std::optional<std::vector<std::string>> programs;
  // Control.cfg is written: a disk that cannot take it must not end the console under a run.
  (void)files::CarryOut(Services().FileWork, files::FaultRule::IsAWarning, [&] {
    programs = entries_.ChangeDirectory(directoryCombo_->Text());
    return files::Ending::Closes;
  });
  // A name that stands for no directory (yet) has no programs; the program's name is left to go
  // with it.
  programCombo_->SetItems(programs.value_or(std::vector<std::string>()));
  if (programs) programCombo_->SetText("");
}

bool ProgramForm::EnterName(toolkit::PickBox& box) {
  const std::string name = EnterText(box.Text(), EntryMode::Name);
  if (name == box.Text()) return false;
  box.SetText(name);
  return true;
}

void ProgramForm::SelectPressed() {
  selection_.SelectProgram(directoryCombo_->Text(), programCombo_->Text());
}

void ProgramForm::TakeSelected(SelectedProgram selected) {
  selectedProgram_ = std::move(selected);
  const auto& [directory, name] = selectedProgram_;
  const auto& parts = Services().FileWork;
  const auto take = [](toolkit::PickBox& box, const files::ListContent& content,
                       const std::string& text) {
    box.SetItems(content.Items);
    box.SetCurrent(content.Index);
    if (content.Index < 0) box.SetText(text);
  };
  take(*programCombo_, files::FillProgramList(parts, directory, name, files::SelectMode::Named),
       name);
  take(*directoryCombo_,
       files::FillDirectoryList(parts, directory, false, true, files::SelectMode::Named),
       directory);
}

void ProgramForm::EditPressed() {
  (void)files::CarryOut(Services().FileWork, files::FaultRule::IsAWarning, [this] {
    PrepareEdit();
    return files::Ending::Closes;
  });
}

void ProgramForm::PrepareEdit() {
  auto target = entries_.PrepareEdit(directoryCombo_->Text(), programCombo_->Text());
  if (!target || !Visible()) return;
  Services().Tasks.Edit = {target->Title, target->Directory, target->Path};
  Screens().Open(core::ScreenNames::EditProgForm);
}

void ProgramForm::SearchPressed() {
  const auto words = entries_.PrepareSearch(directoryCombo_->Text(), programCombo_->Text());
  if (!words || !Visible()) return;
  Services().Tasks.Search = {words->Directory, words->Program};
  Screens().Open(core::ScreenNames::SearchForm);
}

void ProgramForm::ListsPressed() { Screens().Open(core::ScreenNames::ProgListForm); }

/// Only a slot with all its files can be restarted, whatever is in the boxes.
bool ProgramForm::RestartReady() {
  if (restart::RestartFilesExist(Services().Files, System())) return true;
  Screens().Desk().Beep();
  return false;
}

void ProgramForm::BlockRestartPressed() {
  if (!RestartReady()) return;
  Screens().ShowModal(core::ScreenNames::BlockStartForm);
  Unload();
}

void ProgramForm::VisualRestartPressed() {
  if (!RestartReady()) return;
  if (auto* main = Screens().Find<FrontEnd>(core::ScreenNames::FrontEnd)) {
    main->Modes().BeginVisualRestart();
  }
  Unload();
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

}  // namespace torvane::console

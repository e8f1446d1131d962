#include "console/ProgListForm.h"

#include "console/ConsoleServices.h"
#include "console/FileTasks.h"
#include "console/ProgramColumns.h"
#include "files/Lists.h"

namespace torvane::console {

using files::SelectMode;
using toolkit::Key;

ProgListForm::ProgListForm(const ScreenStart& start) : ChooserForm(start) {
  auto& frame = AddFrame(Body(), "ListsFrame", "");
  auto& directoryLabel = AddLabel(frame, "DirectoryLabel", "&DIRECTORIES");
  auto& programLabel = AddLabel(frame, "ProgramLabel", "&PROGRAMS");
  directories_ =
      &AddList(frame, "DirectoryList", toolkit::Selection::Single, [this] { DirectoryChanged(); });
  programs_ = &AddList(frame, "ProgramList");
  steered_ = programs_;
  AddKey(Key::D, [this] { Steer(*directories_); });
  AddKey(Key::P, [this] { Steer(*programs_); });
  SetContents(976, frame,
              Columns({Rows({directoryLabel, Cell(directories_).Share(1)}).Wide(280),
                       Rows({programLabel, Cell(programs_).Share(1)})})
                  .Spaced(SectionGap));
}

void ProgListForm::Steer(toolkit::ListBox& list) {
  steered_ = &list;
  SetHome(list);
  FocusHome();
}

void ProgListForm::Loaded() {
  const core::ActiveProgram& slot = System().Active();
  const auto& parts = Services().FileWork;
  const std::string directory =
      slot.Selected ? slot.DirectoryName : System().Directories.ProgramDirectoryName;
  ShowPrograms(*programs_,
               slot.Selected
                   ? files::FillProgramList(parts, directory, slot.ProgramName, SelectMode::Named)
                   : files::FillProgramList(parts, directory, "", SelectMode::First));
  ShowDirectories(*directories_,
                  files::FillDirectoryList(parts, directory, false, true, SelectMode::Named));
}

void ProgListForm::DirectoryChanged() {
  const auto& parts = Services().FileWork;
  const std::string chosen = directories_->Text(directories_->Current());
  const std::string shown = files::DirectoryToShow(parts, chosen);
  if (!Visible()) return;
  if (shown != chosen)
    directories_->SetCurrent(files::IndexOfDirectory(directories_->Items(), shown));
  ShowPrograms(*programs_, files::FillProgramList(parts, shown, "", SelectMode::First));
}

std::optional<std::string> ProgListForm::ChosenDirectory() const {
  if (directories_->Current() < 0) return std::nullopt;
  return directories_->Text(directories_->Current());
}

std::optional<std::string> ProgListForm::ChosenProgram() const {
  if (programs_->Current() < 0) return std::nullopt;
  return programs_->Text(programs_->Current());
}

}  // namespace torvane::console

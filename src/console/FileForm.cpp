#include "console/FileForm.h"

#include <algorithm>

#include "console/ConsoleServices.h"
#include "console/EntryMode.h"
#include "console/FileTasks.h"
#include "console/ProgramColumns.h"
#include "console/ScreenSet.h"
#include "supervision/ScopedFlag.h"

namespace torvane::console {

using files::SelectMode;
using toolkit::Key;

namespace {

/// Made without a choice of the menu, it has the looks of the first action and none of its effect.
const files::ProgramActionRow& RowFor(files::ProgramAction action) {
  return action == files::ProgramAction::None ? files::ProgramActionRows.front()
                                              : files::RowOf(action);
}

/// Pixels of the drawing.
constexpr double FormWide = 976;
constexpr double DirectoriesWide = 264;
constexpr double LeastList = 160;
constexpr double ListsHigh = 520;

}  // namespace

FileForm::FileForm(const ScreenStart& start)
    : Screen(start), row_(RowFor(Services().Tasks.FileAction)) {
  Title().SetCaption(row_.Title);
  const Cell directories = MakeDirectoryLists();
  const Cell programs = MakeProgramList();
  std::vector<Cell> right = {programs.Share(1)};
  if (row_.NewName) right.push_back(MakeNameBox());
  SetGrid(FormWide, Rows({Columns({directories.Wide(DirectoriesWide), Rows(right)})
                              .Spaced(SectionGap)
                              .High(ListsHigh),
                          MakeKeys()})
                        .Spaced(SectionGap));
}

Cell FileForm::MakeDirectoryLists() {
  auto& frame = AddFrame(Body(), "DirListFrame", "");
  auto& fromLabel = AddLabel(frame, "DirListLabel(1)", row_.DirectoryLabel);
  source_ =
      &AddList(frame, "DirectoryList(1)", toolkit::Selection::Single, [this] { SourceChanged(); });
  std::vector<Cell> cells = {fromLabel, Cell(source_).High(LeastList).Share(1)};
  if (row_.Destination) {
    auto& toLabel = AddLabel(frame, "DirListLabel(2)", "TO");
    destination_ = &AddList(frame, "DirectoryList(2)");
    cells.insert(cells.end(), {toLabel, Cell(destination_).High(LeastList).Share(1)});
  }
  return Inside(frame, Rows(cells));
}

Cell FileForm::MakeProgramList() {
  auto& frame = AddFrame(Body(), "ListFrame", "");
  auto& label = AddLabel(frame, "ListLabel", row_.Title);
  count_ = &AddLabel(frame, "CountLabel", "", Role::Panel, toolkit::TypeStyle::Body,
                     toolkit::Alignment::Right);
  programs_ = &AddList(frame, Numbered("FileList", row_.Multiple ? 2 : 1),
                       row_.Multiple ? toolkit::Selection::Multiple : toolkit::Selection::Single,
                       [this] { ProgramsChanged(); });
  return Inside(frame, Rows({Columns({label, count_}), Cell(programs_).High(LeastList).Share(1)}));
}

Cell FileForm::MakeNameBox() {
  auto& frame = AddFrame(Body(), "BoxFrame", "");
  auto& label = AddLabel(frame, "BoxLabel", "AS");
  box_ = &AddBox(frame, "FileBox", [this] { OpenBox(); });
  box_->SetAlignRight(false);
  box_->SetStyle(toolkit::TypeStyle::Entry);
  return Inside(frame, Table({56, 0}, {{label, box_}}));
}

Cell FileForm::MakeKeys() {
  auto& frame = AddFrame(Body(), "ButtonFrame", "");
  auto& ok = AddButton(frame, "OkButton", "&OK", Role::General, [this] { OkPressed(); });
  auto& exit = AddButton(frame, "ExitButton", "&CANCEL", Role::General, [this] { ExitPressed(); });
  SetHome(exit);
  return Inside(frame, Columns({Space(), Cell(ok).Wide(KeyWide), Cell(exit).Wide(KeyWide)}));
}

void FileForm::Loaded() {
  const std::string current = System().Directories.ProgramDirectoryName;
  ShowDirectories(*source_, files::FillDirectoryList(Services().FileWork, current, true, true,
                                                     SelectMode::Named));
  directory_ = source_->Current() < 0 ? current : source_->Text(source_->Current());
  FillPrograms();
  FillDestinations();
}

void FileForm::FillPrograms() {
  ShowPrograms(*programs_,
               files::FillProgramList(Services().FileWork, directory_, "", SelectMode::First));
  SetHome(programs_->Count() > 0 ? static_cast<toolkit::Control&>(*programs_)
                                 : *Window().Find("ExitButton"));
  ProgramsChanged();
}

void FileForm::FillDestinations() {
  if (destination_ == nullptr) return;
  ShowDirectories(*destination_, files::FillDirectoryList(Services().FileWork, directory_, true,
                                                          false, SelectMode::First));
}

/// The first list shows another directory; a drive without a disc gives way to the current one.
void FileForm::SourceChanged() {
  const std::string chosen = source_->Text(source_->Current());
  const std::string shown = files::DirectoryToShow(Services().FileWork, chosen);
  if (!Visible()) return;
  directory_ = shown;
  if (shown != chosen) {
    source_->SetCurrent(files::IndexOfDirectory(source_->Items(), shown));
  }
  FillPrograms();
  FillDestinations();
}

void FileForm::ProgramsChanged() {
  if (box_ != nullptr) box_->SetText(programs_->Text(programs_->Current()));
  const auto all = std::to_string(programs_->Count());
  count_->SetText(row_.Multiple ? std::to_string(programs_->SelectedIndices().size()) + " OF " +
                                      all + " MARKED"
                                : all + " PROGRAMS");
}

void FileForm::OpenBox() {
  const std::string name = EnterText(box_->Text(), EntryMode::Name);
  box_->SetText(name);
}

/// Through the lists that show; the box opens its pad as the focus comes to it.
void FileForm::NextField(bool backwards) {
  std::vector<toolkit::Control*> fields = {programs_};
  if (box_ != nullptr) fields.push_back(box_);
  if (destination_ != nullptr) fields.push_back(destination_);
  fields.push_back(source_);
  const auto count = static_cast<std::ptrdiff_t>(fields.size());
  const auto at = std::find(fields.begin(), fields.end(), Window().Focused()) - fields.begin();
  const auto next = at == count ? 0 : (at + (backwards ? count - 1 : 1)) % count;
  toolkit::Control& field = *fields[static_cast<std::size_t>(next)];
  field.SetFocus();
  if (&field == box_) OpenBox();
}

bool FileForm::OtherKey(const toolkit::KeyStroke& stroke) {
  if (stroke.Code != Key::Tab) return false;
  NextField(stroke.Shift);
  return true;
}

files::ProgramActionRequest FileForm::Request() const {
  files::ProgramActionRequest request{row_.Action, directory_, programs_->SelectedTexts()};
  if (box_ != nullptr) request.NewName = box_->Text();
  if (destination_ != nullptr && destination_->Current() >= 0)
    request.Destination = destination_->Text(destination_->Current());
  return request;
}

void FileForm::OkPressed() {
  if (working_) return;
  const supervision::ScopedFlag working(working_);
  const files::Ending ending = files::ProgramActions(Services().FileWork).CarryOut(Request());
  if (ending == files::Ending::Closes) Unload();
}

/// An action that has begun is carried through.
void FileForm::ExitPressed() {
  if (!working_) Unload();
}

void FileForm::Unloaded() { Services().Tasks.FileAction = files::ProgramAction::None; }

}  // namespace torvane::console

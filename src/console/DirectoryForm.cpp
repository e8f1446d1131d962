#include "console/DirectoryForm.h"

#include "console/ConsoleServices.h"
#include "console/EntryMode.h"
#include "console/FileTasks.h"
#include "console/ProgramColumns.h"
#include "console/ScreenSet.h"
#include "supervision/ScopedFlag.h"

namespace torvane::console {

using toolkit::Key;

namespace {

/// Made without a choice of the menu, it has the looks of the first action and none of its effect.
const files::DirectoryActionRow& RowFor(files::DirectoryAction action) {
  return action == files::DirectoryAction::None ? files::DirectoryActionRows.front()
                                                : files::RowOf(action);
}

}  // namespace

DirectoryForm::DirectoryForm(const ScreenStart& start)
    : Screen(start), row_(RowFor(Services().Tasks.DirectoryAction)) {
  Title().SetCaption(row_.Title);
  std::vector<Cell> cells;
  if (row_.Label != nullptr) cells.push_back(MakeList());
  if (row_.Box != nullptr) cells.push_back(MakeBox());
  cells.push_back(MakeKeys());
  SetGrid(560, Rows(cells).Spaced(SectionGap));
}

Cell DirectoryForm::MakeList() {
  auto& frame = AddFrame(Body(), "ListFrame", "");
  auto& label = AddLabel(frame, "ListLabel", row_.Label);
  list_ = &AddList(frame, "DirectoryList");
  return Inside(frame, Rows({label, Cell(list_).High(244)}));
}

Cell DirectoryForm::MakeBox() {
  auto& frame = AddFrame(Body(), "BoxFrame", "");
  auto& label = AddLabel(frame, "BoxLabel", row_.Box);
  box_ = &AddBox(frame, "DirectoryBox", [this] { OpenBox(); });
  box_->SetAlignRight(false);
  box_->SetStyle(toolkit::TypeStyle::Entry);
  for (const Key key : {Key::N, Key::A, Key::Tab}) AddKey(key, [this] { box_->Press(); });
  return Inside(frame, Rows({label, box_}));
}

Cell DirectoryForm::MakeKeys() {
  auto& frame = AddFrame(Body(), "ButtonFrame", "");
  auto& ok = AddButton(frame, "OkButton", "&OK", Role::General, [this] { OkPressed(); });
  auto& exit = AddButton(frame, "ExitButton", "&CANCEL", Role::General, [this] {
    if (!working_) Unload();
  });
  SetHome(list_ != nullptr ? static_cast<toolkit::Control&>(*list_) : exit);
  return Inside(frame, Columns({Space(), Cell(ok).Wide(KeyWide), Cell(exit).Wide(KeyWide)}));
}

void DirectoryForm::Loaded() {
  if (list_ == nullptr) return;
  ShowDirectories(*list_, files::FillDirectoryList(Services().FileWork,
                                                   System().Directories.ProgramDirectoryName, false,
                                                   false, files::SelectMode::First));
}

void DirectoryForm::OpenBox() {
  const std::string name = EnterText(box_->Text(), EntryMode::Name);
  box_->SetText(name);
}

void DirectoryForm::OkPressed() {
  if (working_) return;
  const supervision::ScopedFlag working(working_);
  std::optional<std::string> selected;
  if (list_ != nullptr && list_->Current() >= 0) selected = list_->Text(list_->Current());
  const files::Ending ending = files::DirectoryActions(Services().FileWork)
                                   .CarryOut(row_.Action, selected, box_ ? box_->Text() : "");
  if (ending == files::Ending::Closes) Unload();
}

void DirectoryForm::Unloaded() { Services().Tasks.DirectoryAction = files::DirectoryAction::None; }

}  // namespace torvane::console

#include "console/EditProgForm.h"

#include <array>

#include "console/ConsoleServices.h"
#include "console/FileTasks.h"
#include "console/Pads.h"
#include "console/ScreenSet.h"
#include "files/Questions.h"

namespace torvane::console {

namespace {

/// Longest line that the pad takes, characters.
constexpr int LineLength = 80;

}  // namespace

EditProgForm::EditProgForm(const ScreenStart& start) : Screen(start), task_(Services().Tasks.Edit) {
  const Cell list = MakeList();
  const Cell keys = MakeKeys();
  auto& ok = AddButton(Body(), "OkButton", "&OK", Role::General, [this] { OkPressed(); });
  auto& exit = AddExitButton(Body(), "&CANCEL");
  SetHome(*list_);
  SetGrid(976, Rows({Columns({list, keys.Wide(168)}).Spaced(SectionGap),
                     Columns({Space(), Cell(ok).Wide(KeyWide), Cell(exit).Wide(KeyWide)})})
                   .Spaced(SectionGap));
}

Cell EditProgForm::MakeList() {
  auto& title =
      AddLabel(Body(), "ProgLabel", task_.EditTitle, Role::Bold, toolkit::TypeStyle::Bold);
  auto& directory = AddLabel(Body(), "DirectoryLabel", task_.EditDirectory);
  for (toolkit::Label* label : {&title, &directory}) label->SetPlainText(true);
  changed_ = &AddLabel(Body(), "ChangedLabel", "", Role::Bold, toolkit::TypeStyle::Bold,
                       toolkit::Alignment::Centre);
  line_ = &AddLabel(Body(), "LineLabel", "", Role::Panel, toolkit::TypeStyle::Body,
                    toolkit::Alignment::Right);
  list_ = &AddList(Body(), "ProgList", toolkit::Selection::Single, [this] { ListMoved(); });
  list_->SetStyle(toolkit::TypeStyle::Mono);
  list_->SetVisibleLines(files::EditViewLines);
  list_->OnScroll([this](int topLine) { document_.ScrollTo(topLine); });
  list_->OnDoubleClick(Guard([this] { EditPressed(2); }));
  return Rows({Columns({title, directory, Cell(changed_).Wide(120), Cell(line_).Wide(160)}),
               Cell(list_).Share(1)});
}

Cell EditProgForm::MakeKeys() {
  const auto edit =
      AddButtons(Body(), "EditButton", 1, {"&INSERT LINE", "  &EDIT    LINE", "&DELETE LINE"},
                 Role::General, [this](int index) { EditPressed(index); });
  const auto page =
      AddButtons(Body(), "PageButton", 1, {"&HOME", "  PAGE   &UP", "PAGE DO&WN", "E&ND"},
                 Role::General, [this](int index) { PagePressed(index); });
  return Rows({Rows(CellsOf(edit)), Rows(CellsOf(page))}).Spaced(SectionGap);
}

void EditProgForm::Loaded() {
  bool read = false;
  (void)files::CarryOut(Services().FileWork, files::FaultRule::IsAWarning, [&] {
    files::LoadDocument(Services().FileWork, task_.EditPath, document_);
    read = true;
    return files::Ending::Closes;
  });
  // A file that cannot be read must not be written over by an empty text.
  if (!read) return Unload();
  list_->SetItems(document_.Lines());
  ShowPlace();
}

void EditProgForm::ShowPlace() {
  const int top = document_.TopLine();
  list_->SetCurrent(document_.Selected());  // scrolls, and tells the document so
  list_->SetTopLine(top);
  document_.ScrollTo(top);
  line_->SetText(std::to_string(document_.Selected() + 1) + " OF " +
                 std::to_string(document_.Count()));
  changed_->SetText(document_.Changed() ? "CHANGED" : "");
}

void EditProgForm::ListMoved() {
  document_.Select(list_->Current());
  document_.ScrollTo(list_->TopLine());
  ShowPlace();
}

void EditProgForm::EditPressed(int index) {
  static constexpr std::array Actions = {&EditProgForm::InsertLine, &EditProgForm::EditLine,
                                         &EditProgForm::DeleteLine};
  (this->*Actions.at(static_cast<std::size_t>(index - 1)))();
  if (Visible()) ShowPlace();
}

void EditProgForm::InsertLine() {
  const auto text = Services().EntryPads.AskText("", LineLength);
  if (!text || !Visible()) return;
  document_.Insert(*text);
  list_->Insert(document_.Selected(), document_.SelectedText());
}

void EditProgForm::EditLine() {
  if (document_.Selected() < 0) return Services().Dialogs.Beep();
  const auto text = Services().EntryPads.AskText(document_.SelectedText(), LineLength);
  if (!text || !Visible()) return;
  (void)document_.Replace(*text);
  list_->SetText(document_.Selected(), document_.SelectedText());
}

void EditProgForm::DeleteLine() {
  const int line = document_.Selected();
  if (!document_.Delete()) return Services().Dialogs.Beep();
  list_->Remove(line);
}

void EditProgForm::PagePressed(int index) {
  static constexpr std::array Moves = {&files::EditDocument::Home, &files::EditDocument::PageUp,
                                       &files::EditDocument::PageDown, &files::EditDocument::End};
  (document_.*Moves.at(static_cast<std::size_t>(index - 1)))();
  ShowPlace();
}

void EditProgForm::OkPressed() {
  if (files::SaveDocument(Services().FileWork, task_.EditPath, document_)) Unload();
}

}  // namespace torvane::console

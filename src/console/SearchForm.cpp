#include "console/SearchForm.h"

#include <utility>

#include "console/ConsoleServices.h"
#include "console/FileTasks.h"
#include "files/Questions.h"

namespace torvane::console {

SearchForm::SearchForm(const ScreenStart& start) : ChooserForm(start) {
  auto& frame = AddFrame(Body(), "SearchFrame", "");
  SetContents(976, frame, MakeLists(frame));
}

Cell SearchForm::MakeLists(toolkit::Frame& frame) {
  constexpr double BarWide = 56;
  constexpr double DirectoryWide = 400;
  label_ = &AddLabel(frame, "SearchLabel", " SEARCH TEXT ", Role::Bold, toolkit::TypeStyle::Bold);
  label_->SetPlainText(true);
  count_ = &AddLabel(frame, "CountLabel", "", Role::Panel, toolkit::TypeStyle::Body,
                     toolkit::Alignment::Right);
  const auto labels = AddLabels(frame, "ListLabel", 1, {"DIRECTORY", "PROGRAM"});
  for (int i = 0; i < 2; ++i) {
    auto& list = AddList(frame, Numbered("SearchList", i + 1));
    list.OnSelect(Guard([this, &list] { Follow(list); }));
    list.OnScroll([this](int topLine) { ScrollTo(topLine); });
    list.SetBarHidden(true);
    lists_[static_cast<std::size_t>(i)] = &list;
  }
  bar_ = new toolkit::ScrollBar(&frame);  // owned by the frame
  Adopt(*bar_, "SearchBar", Role::Entry);
  bar_->OnScroll([this](int value) { ScrollTo(value); });
  return Rows({Columns({Cell(label_).High(52), count_}),
               Columns({Cell(labels[0]).Wide(DirectoryWide), labels[1]}),
               Columns({Cell(lists_[0]).Wide(DirectoryWide), lists_[1], Cell(*bar_).Wide(BarWide)})
                   .Share(1)});
}

/// Once, as soon as the screen shows, so that the operator sees how far it has come.
void SearchForm::Activated() {
  if (std::exchange(searched_, true)) return;
  Search();
}

void SearchForm::Search() {
  const files::FileParts& parts = Services().FileWork;
  std::vector<files::FoundProgram> found;
  {
    const link::BusyCursor busy(parts.Dialogs);
    found = files::SearchPrograms(parts.Files, System().Directories.ProgramRoot,
                                  Services().Tasks.Search,
                                  [this, &parts](const files::SearchProgress& progress) {
                                    ShowProgress(progress);
                                    parts.Breathe();
                                    return Visible();
                                  });
  }
  if (!Visible()) return;
  if (!found.empty()) return ShowFound(std::move(found));
  Warn("No Matching Programs Found !");
  Unload();
}

void SearchForm::ShowProgress(const files::SearchProgress& progress) {
  count_->SetText(std::to_string(progress.Directories) + " OF " + std::to_string(progress.Total) +
                  " DIRECTORIES   " + std::to_string(progress.Found) + " FOUND");
}

void SearchForm::ShowFound(std::vector<files::FoundProgram> found) {
  std::vector<std::string> directories;
  std::vector<std::string> programs;
  for (files::FoundProgram& program : found) {
    directories.push_back(std::move(program.Directory));
    programs.push_back(std::move(program.Name));
  }
  count_->SetText(std::to_string(found.size()) + " FOUND");
  label_->SetText(files::SearchCaption(Services().Tasks.Search));
  lists_[0]->SetItems(std::move(directories));
  lists_[1]->SetItems(std::move(programs));
  for (toolkit::ListBox* list : lists_) list->SetCurrent(0);
  ScrollTo(0);
}

void SearchForm::Follow(const toolkit::ListBox& moved) {
  for (toolkit::ListBox* list : lists_) list->SetCurrent(moved.Current());
  ScrollTo(moved.TopLine());
}

void SearchForm::ScrollTo(int topLine) {
  const int view = lists_[0]->VisibleLines();
  for (toolkit::ListBox* list : lists_) list->SetTopLine(topLine);
  bar_->SetRange(lists_[0]->Count() - view, view);
  bar_->SetValue(lists_[0]->TopLine());
}

std::optional<std::string> SearchForm::ChosenDirectory() const {
  return lists_[0]->Text(lists_[0]->Current());
}

std::optional<std::string> SearchForm::ChosenProgram() const {
  return lists_[1]->Text(lists_[1]->Current());
}

}  // namespace torvane::console

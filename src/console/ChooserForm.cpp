#include "console/ChooserForm.h"

#include "console/ConsoleServices.h"
#include "console/FileTasks.h"
#include "console/ScreenSet.h"
#include "core/ScreenNames.h"
#include "files/Lists.h"
#include "files/Questions.h"
#include "supervision/ProgramNames.h"

namespace torvane::console {

using toolkit::Key;
using toolkit::KeyStroke;

namespace {

constexpr const char* NoDirectory = "No Directory Selected !";
constexpr const char* NoProgram = "No Program Selected !";
constexpr const char* InvalidDirectory = "Invalid Directory !";
constexpr const char* InvalidProgram = "Invalid Program !";

}  // namespace

Cell ChooserForm::MakeKeys() {
  keys_ = &AddFrame(Body(), "ButtonFrame", "");
  auto& view = AddButton(*keys_, "ViewButton", "&VIEW", Role::General, [this] { ViewPressed(); });
  auto& ok = AddButton(*keys_, "OkButton", "&OK", Role::General, [this] { OkPressed(); });
  auto& exit = AddExitButton(*keys_, "&CANCEL");
  return Inside(*keys_, Columns({Cell(view).Wide(KeyWide), Space(), Cell(ok).Wide(KeyWide),
                                 Cell(exit).Wide(KeyWide)}));
}

void ChooserForm::MakeView() {
  viewFrame_ = &AddFrame(Body(), "ViewFrame", " Program Name ");
  viewBox_ = &AddList(*viewFrame_, "ViewBox", toolkit::Selection::None);
  viewBox_->SetStyle(toolkit::TypeStyle::Mono);
  viewBox_->SetVisibleLines(20);
  viewOk_ =
      &AddButton(*viewFrame_, "ViewOkButton", "&OK", Role::General, [this] { ShowView(false); });
}

void ChooserForm::SetContents(double width, toolkit::Frame& lists, const Cell& listCells) {
  constexpr double ListsHigh = 520;
  constexpr double ViewHigh = 512;
  lists_ = &lists;
  MakeView();
  // After the view's own key, whose letter it has.
  const Cell keys = MakeKeys();
  SetGrid(width, Layers({Rows({Inside(lists, listCells).High(ListsHigh), keys}).Spaced(SectionGap),
                         Inside(*viewFrame_, Rows({Cell(viewBox_).High(ViewHigh).Share(1),
                                                   AtRight(*viewOk_)}))}));
  ShowView(false);
}

std::optional<SelectedProgram> ChooserForm::Checked() {
  const auto directory = ChosenDirectory();
  const auto program = ChosenProgram();
  const char* refusal = nullptr;
  if (!directory) {
    refusal = NoDirectory;
  } else if (!program) {
    refusal = NoProgram;
  } else if (!supervision::NameLengthValid(*directory)) {
    refusal = InvalidDirectory;
  } else if (!supervision::NameLengthValid(*program)) {
    refusal = InvalidProgram;
  } else {
    return SelectedProgram{*directory, *program};
  }
  Warn(refusal);
  return std::nullopt;
}

void ChooserForm::OkPressed() {
  const auto selected = Checked();
  if (!selected || !Visible()) return;
  WithoutEnding([&] { Services().Entries.MakeCurrent(selected->Directory); });
  if (auto* form = Screens().Find<ProgramForm>(core::ScreenNames::ProgramForm))
    form->TakeSelected(*selected);
  Unload();
}

/// A disk that fails is a warning here: the machine may be cutting.
void ChooserForm::WithoutEnding(const Handler& action) {
  (void)files::CarryOut(Services().FileWork, files::FaultRule::IsAWarning, [&] {
    action();
    return files::Ending::Closes;
  });
}

void ChooserForm::ViewPressed() {
  const auto selected = Checked();
  if (!selected || !Visible()) return;
  const std::string path =
      files::DirectoryPath(System().Directories, selected->Directory) + selected->Name + ".prg";
  WithoutEnding([&] {
    auto lines = files::ReadTextLines(Services().FileWork, path);
    if (!lines) return Warn(InvalidProgram);
    viewFrame_->SetCaption(" " + selected->Name + " ");
    viewBox_->SetItems(std::move(*lines));
    ShowView(true);
  });
}

void ChooserForm::ShowView(bool view) {
  lists_->SetVisible(!view);
  keys_->SetVisible(!view);
  viewFrame_->SetVisible(view);
  SetHome(view ? static_cast<toolkit::Control&>(*viewOk_) : SteeredList());
  FocusHome();
}

bool ChooserForm::FirstLook(const KeyStroke& stroke) {
  if (!viewFrame_->Visible() || Traits().Keys.Holds(stroke.Code)) return false;
  if (stroke.Code == Key::O) {
    ShowView(false);
  } else {
    (void)viewBox_->KeyDown(stroke);
  }
  return true;
}

}  // namespace torvane::console

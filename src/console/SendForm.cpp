#include "console/SendForm.h"

#include "console/ConsoleServices.h"
#include "console/ProgramColumns.h"
#include "console/ScreenSet.h"
#include "files/CommsModule.h"

namespace torvane::console {

using files::SelectMode;
using toolkit::Alignment;
using toolkit::TypeStyle;

namespace {

/// Pixels of the drawing.
constexpr double ListsWide = 976;
constexpr double DirectoriesWide = 280;
constexpr double ListsHigh = 480;
constexpr double SendWide = 560;
constexpr double SendLabelHigh = 120;
constexpr double FloodBarHigh = 48;

/// "2:05" for 125 seconds.
std::string MinutesText(int seconds) {
  constexpr int PerMinute = 60;
  const std::string rest = std::to_string(seconds % PerMinute);
  return std::to_string(seconds / PerMinute) + (rest.size() < 2 ? ":0" : ":") + rest;
}

}  // namespace

SendForm::SendForm(const ScreenStart& start) : Screen(start) {
  MakeListFrame();
  MakeSendFrame();
  ShowFrame(false);
}

void SendForm::MakeListFrame() {
  listFrame_ = &AddFrame(Body(), "ListFrame", "");
  auto& directoryLabel = AddLabel(*listFrame_, "DirectoryLabel", "FROM DIRECTORY");
  directories_ = &AddList(*listFrame_, "DirectoryList", toolkit::Selection::Single,
                          [this] { DirectoryChanged(); });
  auto& fileLabel = AddLabel(*listFrame_, "FileLabel", "SEND PROGRAM(S)");
  count_ = &AddLabel(*listFrame_, "CountLabel", "", Role::Panel, TypeStyle::Body, Alignment::Right);
  programs_ =
      &AddList(*listFrame_, "FileList", toolkit::Selection::Multiple, [this] { ShowCount(); });
  ok_ = &AddButton(*listFrame_, "OkButton", "&OK", Role::General, [this] { OkPressed(); });
  exit_ = &AddButton(*listFrame_, "ExitButton", "&CANCEL", Role::General, [this] { Unload(); });
  listCells_ = {Inside(
      *listFrame_,
      Rows({Columns({Rows({directoryLabel, Cell(directories_).Share(1)}).Wide(DirectoriesWide),
                     Rows({Columns({fileLabel, count_}), Cell(programs_).Share(1)})})
                .Spaced(SectionGap)
                .High(ListsHigh),
            Columns({Space(), Cell(ok_).Wide(KeyWide), Cell(exit_).Wide(KeyWide)})})
          .Spaced(SectionGap))};
}

void SendForm::MakeSendFrame() {
  sendFrame_ = &AddFrame(Body(), "SendFrame", "");
  sendLabel_ =
      &AddLabel(*sendFrame_, "SendLabel", "", Role::Panel, TypeStyle::Entry, Alignment::Centre);
  sendLabel_->SetPlainText(true);
  floodBar_ = &AddProgress(*sendFrame_, "FloodBar");
  remaining_ = &AddLabel(*sendFrame_, "RemainingLabel", "", Role::Panel, TypeStyle::Entry,
                         Alignment::Centre);
  force_ = &AddButton(*sendFrame_, "ForceButton", "&FORCE", Role::General,
                      [this] { Services().Comms.Force(); });
  abort_ = &AddButton(*sendFrame_, "AbortButton", "&ABORT", Role::General,
                      [this] { Services().Comms.Abort(); });
  sendCells_ = {Inside(
      *sendFrame_, Rows({Cell(sendLabel_).High(SendLabelHigh), Cell(floodBar_).High(FloodBarHigh),
                         remaining_, Columns({force_, abort_}).Spaced(SectionGap)})
                       .Spaced(SectionGap))};
}

void SendForm::ShowFrame(bool sending) {
  listFrame_->SetVisible(!sending);
  sendFrame_->SetVisible(sending);
  SetGrid(sending ? SendWide : ListsWide, Rows(sending ? sendCells_ : listCells_));
  SetHome(sending ? static_cast<toolkit::Control&>(*abort_) : *exit_);
  Window().SetDefaultButton(sending ? force_ : ok_);
  Window().Relayout();
}

void SendForm::Loaded() {
  Services().Comms.BeginSending();
  const std::string current = System().Directories.ProgramDirectoryName;
  ShowDirectories(*directories_, files::FillDirectoryList(Services().FileWork, current, true, true,
                                                          SelectMode::Named));
  directory_ = directories_->Current() < 0 ? current : directories_->Text(directories_->Current());
  FillPrograms();
}

void SendForm::Unloaded() { Services().Comms.EndSending(); }

/// A drive without a disc gives way to the current directory.
void SendForm::DirectoryChanged() {
  const std::string chosen = directories_->Text(directories_->Current());
  const std::string shown = files::DirectoryToShow(Services().FileWork, chosen);
  if (!Visible()) return;
  directory_ = shown;
  if (shown != chosen) {
    directories_->SetCurrent(files::IndexOfDirectory(directories_->Items(), shown));
  }
  FillPrograms();
}

void SendForm::FillPrograms() {
  listed_ = files::FillProgramList(Services().FileWork, directory_, "", SelectMode::First);
  ShowPrograms(*programs_, listed_);
  SetHome(programs_->Count() > 0 ? static_cast<toolkit::Control&>(*programs_) : *exit_);
  ShowCount();
}

void SendForm::ShowCount() {
  count_->SetText(std::to_string(programs_->SelectedIndices().size()) + " OF " +
                  std::to_string(programs_->Count()) + " MARKED");
}

/// Nothing that is typed reaches the lists, but the blank marks a program.
bool SendForm::OtherKey(const toolkit::KeyStroke& stroke) {
  if (stroke.Code != toolkit::Key::Space || Window().Focused() != programs_) return false;
  return programs_->KeyDown(stroke);
}

void SendForm::OkPressed() {
  std::vector<files::SendItem> items;
  const std::string path = files::DirectoryPath(System().Directories, directory_);
  for (const int index : programs_->SelectedIndices()) {
    const std::string& name = programs_->Text(index);
    const auto size = listed_.Files.at(static_cast<std::size_t>(index)).Size;
    items.push_back({directory_, name, path + name + ".prg", size});
  }
  if (items.empty()) return Warn("No Programs Selected !");
  ShowFrame(true);
  Services().Comms.SendPrograms(items, *this);
  if (Visible()) Unload();
}

void SendForm::ShowSendText(std::string_view text) { sendLabel_->SetText(std::string(text)); }

void SendForm::ShowWaitingForStart() {
  floodBar_->SetVisible(false);
  remaining_->SetVisible(false);
  force_->SetVisible(true);
  SetHome(*force_);
  Window().SetDefaultButton(force_);
  FocusHome();
}

void SendForm::ShowSending(int maximum) {
  floodBar_->SetRange(0, maximum);
  floodBar_->SetValue(0);
  remaining_->SetText("");
  floodBar_->SetVisible(true);
  remaining_->SetVisible(true);
  SetHome(*abort_);
  Window().SetDefaultButton(nullptr);
  FocusHome();
  force_->SetVisible(false);
}

void SendForm::ShowProgress(int value) { floodBar_->SetValue(value); }

void SendForm::ShowRemaining(int percent, int seconds) {
  std::string text = std::to_string(percent) + " %";
  if (seconds >= 0) text += "     " + MinutesText(seconds);
  remaining_->SetText(text);
}

void SendForm::HideProgress() {
  floodBar_->SetVisible(false);
  remaining_->SetVisible(false);
}

void SendForm::WarnCannotSend(std::string_view name) {
  Warn("Can Not Send", "\"" + std::string(name) + "\" !");
}

}  // namespace torvane::console

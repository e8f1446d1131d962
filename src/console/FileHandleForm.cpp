#include "console/FileHandleForm.h"

#include <iterator>

#include "console/ConsoleServices.h"
#include "console/FileTasks.h"
#include "console/ScreenSet.h"
#include "core/ScreenNames.h"
#include "files/CommsModule.h"

namespace torvane::console {

namespace {

template <class Rows>
std::vector<std::string> CaptionsOf(const Rows& rows) {
  std::vector<std::string> captions;
  captions.reserve(std::size(rows));
  for (const auto& row : rows) captions.emplace_back(row.Button);
  return captions;
}

}  // namespace

FileHandleForm::FileHandleForm(const ScreenStart& start) : Screen(start) {
  auto& programs = AddFrame(Body(), "ProgramFrame", "PROGRAMS");
  auto& directories = AddFrame(Body(), "DirectoryFrame", "DIRECTORIES");
  auto& comms = AddFrame(Body(), "CommsFrame", "RS232 COMMS");
  const auto programKeys =
      AddButtons(programs, "ProgramButton", 1, CaptionsOf(files::ProgramActionRows), Role::General,
                 [this](int index) { OpenProgramAction(index); });
  const auto directoryKeys =
      AddButtons(directories, "DirectoryButton", 1, CaptionsOf(files::DirectoryActionRows),
                 Role::General, [this](int index) { OpenDirectoryAction(index); });
  const auto commsKeys = AddButtons(comms, "CommsButton", 1, {"&SEND", "SET&UP"}, Role::General,
                                    [this](int index) { OpenComms(index); });
  commsKeys[0]->SetEnabled(Services().Comms.PortUsed());
  auto& exit = AddExitButton(Body());
  SetGrid(744, Rows({Columns({Inside(programs, Rows(CellsOf(programKeys))),
                              Inside(directories, Rows(CellsOf(directoryKeys))),
                              Inside(comms, Rows(CellsOf(commsKeys)))})
                         .Spaced(SectionGap),
                     AtRight(exit)})
                   .Spaced(SectionGap));
}

void FileHandleForm::OpenProgramAction(int index) {
  FocusHome();
  Services().Tasks.FileAction = static_cast<files::ProgramAction>(index);
  Screens().Open(core::ScreenNames::FileForm);
}

void FileHandleForm::OpenDirectoryAction(int index) {
  FocusHome();
  Services().Tasks.DirectoryAction = static_cast<files::DirectoryAction>(index);
  Screens().Open(core::ScreenNames::DirectoryForm);
}

void FileHandleForm::OpenComms(int index) {
  FocusHome();
  if (index == 2) return EditCommsSettings();
  Screens().Open(core::ScreenNames::SendForm);
}

void FileHandleForm::EditCommsSettings() {
  Services().Tasks.Edit = {"RS232 Communication Settings", "",
                           System().Directories.RootDirectory + "Control.cms"};
  Screens().Open(core::ScreenNames::EditProgForm);
}

}  // namespace torvane::console

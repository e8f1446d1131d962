#include "files/DirectoryActions.h"

#include "core/Text.h"
#include "files/Lists.h"
#include "files/ProgramFamily.h"
#include "platform/PlainNames.h"
#include "supervision/OperatorDialogs.h"
#include "supervision/ProgramNames.h"

namespace torvane::files {

const DirectoryActionRow& RowOf(DirectoryAction action) {
  return DirectoryActionRows.at(static_cast<std::size_t>(action) - 1);
}

Ending DirectoryActions::Refuse(const std::string& line) {
  Tell(parts_, line);
  return Ending::StaysOpen;
}

std::string DirectoryActions::PathOf(const std::string& name) const {
  return parts_.System.Directories.ProgramRoot + name;
}

Ending DirectoryActions::CarryOut(DirectoryAction action,
                                  const std::optional<std::string>& selected,
                                  const std::string& name) {
  const std::string newName(core::Trim(name));
  const FaultRule rule =
      action == DirectoryAction::Delete ? FaultRule::EndsTheProgram : FaultRule::IsAWarning;
  return files::CarryOut(parts_, rule, [&] {
    if (action == DirectoryAction::None) return Ending::Closes;
    if (action == DirectoryAction::Create) return Create(newName);
    if (!selected) return Refuse("No Directory Selected !");
    return action == DirectoryAction::Delete ? Delete(*selected) : Rename(*selected, newName);
  });
}

bool DirectoryActions::Acceptable(const std::string& name) {
  const bool lengthValid = supervision::NameLengthValid(name);
  if (lengthValid && DirectoryExists(parts_, name)) {
    Tell(parts_, "Directory \"" + name + "\" Already Exists !");
  } else if (!lengthValid || !platform::IsPlainName(name)) {
    Tell(parts_, supervision::InvalidDirectoryName);
  } else {
    return true;
  }
  return false;
}

bool DirectoryActions::RefuseProtected(const std::string& name, const char* verb) {
  const auto& programs = parts_.System.Programs;
  if (!SameProgramName(name, programs[1].DirectoryName) &&
      !SameProgramName(name, programs[2].DirectoryName))
    return false;
  Tell(parts_,
       std::string("Can Not ") + verb + " Directory !\nIt Contains Currently Selected Program.");
  return true;
}

Ending DirectoryActions::Create(const std::string& name) {
  if (!Acceptable(name)) return Ending::StaysOpen;
  parts_.Files.MakeDirectory(PathOf(name));
  return Ending::Closes;
}

Ending DirectoryActions::Delete(const std::string& name) {
  if (RefuseProtected(name, "Delete")) return Ending::StaysOpen;
  if (!Ask(parts_, supervision::OneLineWarning("Delete \"" + name + "\" !"))) return Ending::Closes;
  const std::string path = PathOf(name);
  const auto listed = [&] { return parts_.Files.ListFiles(path + "\\*.*"); };
  if (!listed().empty() &&
      !Ask(parts_, supervision::TwoLineWarning("Directory \"" + name + "\" Is Not Empty !",
                                               "Delete it Anyway ?")))
    return Ending::Closes;
  // While the questions were open a program may have been selected from here.
  if (RefuseProtected(name, "Delete")) return Ending::StaysOpen;
  const link::BusyCursor busy(parts_.Dialogs);
  for (const std::string& file : listed())
    parts_.Files.DeleteFile(std::string(path).append("\\").append(file));
  parts_.Files.RemoveDirectory(path);
  return Ending::Closes;
}

Ending DirectoryActions::Rename(const std::string& name, const std::string& newName) {
  if (RefuseProtected(name, "Rename") || !Acceptable(newName)) return Ending::StaysOpen;
  if (!Ask(parts_, "\nRename\n\"" + name + "\"\nAs\n\"" + newName + "\" ?")) return Ending::Closes;
  if (RefuseProtected(name, "Rename")) return Ending::StaysOpen;
  parts_.Files.RenameFile(PathOf(name), PathOf(newName));
  return Ending::Closes;
}

}  // namespace torvane::files

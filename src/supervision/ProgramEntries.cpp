#include "supervision/ProgramEntries.h"

#include <algorithm>
#include <array>

#include "core/Directories.h"
#include "core/General.h"
#include "core/LastFile.h"
#include "core/ProgramCatalogue.h"
#include "core/SlotFiles.h"
#include "platform/PlainNames.h"
#include "supervision/ProgramNames.h"

namespace torvane::supervision {

namespace {

constexpr std::array<std::string_view, 4> RestartFiles = {"cfg", "drw", "cnv", "tbl"};

}  // namespace

void ProgramEntries::Refuse(std::string_view line) { dialogs_.Warn(line); }

std::vector<std::string> ProgramEntries::Directories() const {
  return core::ListProgramDirectories(files_, system_.Directories.ProgramRoot);
}

std::vector<std::string> ProgramEntries::Programs(std::string_view entry) const {
  return core::ListPrograms(files_, core::ProgramDirectoryPath(system_.Directories, entry));
}

std::optional<std::vector<std::string>> ProgramEntries::ChangeDirectory(std::string_view entry) {
  std::string name(core::Trim(entry));
  if (core::IsDriveEntry(name)) {
    name.resize(std::min<std::size_t>(name.size(), 2));
    if (!drives_.Ready(name)) {
      Refuse("Disc Not Ready !");
      return std::nullopt;
    }
  } else if (!DirectoryInRoot(files_, system_.Directories, name)) {
    return std::nullopt;
  }
  MakeCurrent(name);
  return Programs(name);
}

void ProgramEntries::MakeCurrent(std::string_view directory) {
  core::SetProgramDirectory(system_.Directories, directory);
  core::SaveControlFile(files_, system_.Directories, system_.ActiveSlot);
}

bool ProgramEntries::MakeMissingDirectory(const std::string& directory) {
  if (DirectoryInRoot(files_, system_.Directories, directory)) return true;
  const std::string question = "Directory\n" + directory + "\nDoes Not Exist !\n\nCreate It ?";
  if (!dialogs_.ShowWarning(question, WarningMode::OkCancel, WarningStyle::Warning)) return false;
  files_.MakeDirectory(system_.Directories.ProgramRoot + directory);
  return true;
}

std::optional<EditTarget> ProgramEntries::PrepareEdit(std::string_view directoryText,
                                                      std::string_view programText) {
  const std::string directory(core::Trim(directoryText));
  const std::string program(core::Trim(programText));
  // A new file is about to be made: a name that would lead outside the programs root is no name.
  if (!NameLengthValid(directory) || !platform::IsPlainName(directory)) {
    Refuse(InvalidDirectoryName);
    return std::nullopt;
  }
  if (!NameLengthValid(program) || !platform::IsPlainName(program)) {
    Refuse(InvalidProgramName);
    return std::nullopt;
  }
  if (!MakeMissingDirectory(directory)) return std::nullopt;
  const std::string path = SourcePathOf(system_.Directories, directory, program) + ".prg";
  const std::string pattern = system_.Directories.ProgramRoot + "Template.prg";
  if (!files_.FileExists(path) && files_.FileExists(pattern)) {
    core::NoteLastFile(files_, system_.Directories, pattern);
    files_.CopyFile(pattern, path);
  }
  return EditTarget{program, directory, path};
}

std::optional<SearchWords> ProgramEntries::PrepareSearch(std::string_view directoryText,
                                                         std::string_view programText) {
  SearchWords words{std::string(core::Trim(directoryText)), std::string(core::Trim(programText))};
  // One of them may be empty, which takes all names.
  const bool none = words.Directory.empty() && words.Program.empty();
  if (none || words.Directory.size() > LongestName) {
    Refuse("Invalid Directory Search Criteria !");
    return std::nullopt;
  }
  if (words.Program.size() > LongestName) {
    Refuse("Invalid Program Search Criteria !");
    return std::nullopt;
  }
  return words;
}

bool ProgramEntries::RestartAvailable(core::Slot slot) const {
  return std::all_of(RestartFiles.begin(), RestartFiles.end(), [&](std::string_view extension) {
    return files_.FileExists(core::SlotFile(system_.Directories, slot, extension));
  });
}

}  // namespace torvane::supervision

#include "core/Directories.h"

#include <algorithm>
#include <array>

#include "core/ConfigText.h"
#include "core/General.h"
#include "core/LastFile.h"
#include "platform/PlainNames.h"
#include "platform/RuntimeFault.h"

namespace torvane::core {

namespace {

/// Characters of a path that an operating system takes.
constexpr std::size_t LongestPath = 4096;

/// The directory taken where the one of Control.cfg is gone.
constexpr std::string_view FallbackDirectory = "Quendrel";

/// Made under root when missing, in this order; the parents are before their children.
constexpr std::array<const char*, 11> RootDirectories = {
    "Trio",    "Messages", "Messages\\Help", "Data",      "Settings", "Service",
    "RevSubs", "Tools",    "Subs",           "Subs\\One", "Subs\\Two"};

std::string WithBackslash(std::string_view path) {
  std::string text(path);
  if (!text.ends_with('\\')) text += '\\';
  return text;
}

void BuildPaths(DirectorySet& directories, const ControlFile& control) {
  const std::string& root = control.RootDirectory;
  directories.RootDirectory = root;
  directories.TrioDirectory = root + "Trio\\";
  directories.DataDirectory = root + "Data\\";
  directories.SettingsDirectory = root + "Settings\\";
  directories.ServiceDirectory = root + "Service\\";
  directories.ToolsDirectory = root + "Tools\\";
  directories.MessageDirectory = root + "Messages\\";
  directories.MessageHelpDirectory = root + "Messages\\Help\\";
  directories.SubsDirectory = {root + "Subs\\One\\", root + "Subs\\Two\\"};
  directories.ProgramRoot = control.ProgramRoot;
  directories.ProgramDirectoryName = control.ProgramDirectoryName;
}

void MakeMissingDirectories(platform::FileSystem& files, const DirectorySet& directories) {
  for (const char* name : RootDirectories) {
    const std::string path = directories.RootDirectory + name;
    if (!files.DirectoryExists(path)) files.MakeDirectory(path);
  }
  const std::string programs =
      directories.ProgramRoot.substr(0, directories.ProgramRoot.size() - 1);
  if (!programs.empty() && !files.DirectoryExists(programs)) files.MakeDirectory(programs);
}

/// The name itself while it is a directory of programs; else the fallback, else the first one that
/// there is, else none.
std::string FindProgramDirectory(const platform::FileSystem& files,
                                 const DirectorySet& directories) {
  const auto stands = [&](std::string_view name) {
    return platform::IsPlainName(name) &&
           files.DirectoryExists(directories.ProgramRoot + std::string(name));
  };
  if (stands(directories.ProgramDirectoryName)) return directories.ProgramDirectoryName;
  if (stands(FallbackDirectory)) return std::string(FallbackDirectory);
  const auto names = files.ListDirectories(directories.ProgramRoot);
  return names.empty() ? std::string() : names.front();
}

}  // namespace

ControlFile ReadControlFile(std::string_view text, std::string_view path) {
  LineReader lines(text, path);
  ControlFile control;
  const std::array<std::string_view, 3> required = {Trim(lines.Required()), Trim(lines.Required()),
                                                    Trim(lines.Required())};
  for (std::size_t line = 0; line < 2; ++line) {
    const bool tooLong = required[line].size() > LongestPath;
    if (!required[line].empty() && !tooLong) continue;
    throw platform::RuntimeFault(
        std::string(path), "line " + std::to_string(line + 1) +
                               (tooLong ? " is too long for a directory" : " names no directory"));
  }
  control.RootDirectory = WithBackslash(required[0]);
  control.ProgramRoot = WithBackslash(required[1]);
  control.ProgramDirectoryName = required[2];
  if (required[2].find(':') != std::string_view::npos) control.ProgramDirectoryName.clear();
  const auto slot = TruncateToInt16(LeadingNumber(Trim(lines.Optional().value_or(""))));
  control.ActiveSlot = slot;
  return control;
}

std::string ControlFileText(const ControlFile& control) {
  return control.RootDirectory + "\r\n" + control.ProgramRoot + "\r\n" +
         control.ProgramDirectoryName + "\r\n" + IntegerText(control.ActiveSlot.Number()) + "\r\n" +
         std::string(EndMarker) + "\r\n";
}

void LoadDirectories(platform::FileSystem& files, DirectorySet& directories, Slot& activeSlot) {
  NoteLastFile(files, directories, ControlFileName);
  const ControlFile control = ReadControlFile(files.ReadFile(ControlFileName), ControlFileName);
  activeSlot = control.ActiveSlot;
  BuildPaths(directories, control);
  try {
    MakeMissingDirectories(files, directories);
  } catch (const platform::RuntimeFault& fault) {
    throw platform::RuntimeFault(ControlFileName,
                                 std::string("a directory of it cannot be made, ") + fault.what());
  }
  SetProgramDirectory(directories, FindProgramDirectory(files, directories));
  SaveControlFile(files, directories, activeSlot);
}

void SaveControlFile(platform::FileSystem& files, const DirectorySet& directories,
                     Slot activeSlot) {
  files.ReplaceFile(directories.RootDirectory + ControlFileName,
                    ControlFileText({directories.RootDirectory, directories.ProgramRoot,
                                     directories.ProgramDirectoryName, activeSlot}));
}

std::string ProgramDirectoryPath(const DirectorySet& directories, std::string_view name) {
  const auto entry = Trim(name);
  if (entry.find(':') != std::string_view::npos) return std::string(entry.substr(0, 2)) + "\\";
  if (entry.empty()) return directories.ProgramRoot;
  return directories.ProgramRoot + std::string(entry) + "\\";
}

void SetProgramDirectory(DirectorySet& directories, std::string_view name) {
  directories.ProgramDirectoryName = std::string(name);
  directories.ProgramDirectory =
      ProgramDirectoryPath(directories, directories.ProgramDirectoryName);
}

}  // namespace torvane::core

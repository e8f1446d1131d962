#include "files/Lists.h"

#include <algorithm>
#include <utility>

#include "core/Directories.h"
#include "core/ProgramCatalogue.h"
#include "core/Text.h"
#include "files/Questions.h"
#include "platform/NativePaths.h"

namespace torvane::files {

namespace {

constexpr std::string_view FloppyDisk = " [Floppy Disk]";
constexpr std::string_view RemovableDrive = " [Removable Drive]";

bool SameName(std::string_view left, std::string_view right) {
  return platform::CompareNames(left, right) == 0;
}

int IndexFor(SelectMode mode, const std::vector<std::string>& items, int named) {
  if (mode == SelectMode::Named) return named;
  return mode == SelectMode::First && !items.empty() ? 0 : -1;
}

/// The letter of the drive that the root lies on, 0 for a path without one.
char RootDrive(const core::DirectorySet& directories) {
  const std::string& root = directories.RootDirectory;
  return root.size() >= 2 && root[1] == ':' ? platform::FoldCase(root[0]) : '\0';
}

/// What a list calls a drive; empty for a drive that it does not show. A drive of fixed letters is
/// shown whether or not there is a disc in it, any other only while it answers.
std::string DriveEntry(const FileParts& parts, std::string_view drive) {
  if (drive.size() < 2) return {};
  const char letter = platform::FoldCase(drive[0]);
  const std::string name(drive.substr(0, 2));
  if (letter == 'A' || letter == 'B') return name + std::string(FloppyDisk);
  const bool wanted = letter >= 'C' && letter <= 'Z' &&
                      letter != RootDrive(parts.System.Directories) && parts.Drives.Ready(name);
  return wanted ? name + std::string(RemovableDrive) : std::string();
}

/// A directory list in the making.
struct Filling {
  ListContent Content;
  int Named = -1;  ///< line of the current directory

  void Take(std::string entry, bool current, bool withCurrent) {
    if (current && !withCurrent) return;
    if (current) Named = static_cast<int>(Content.Items.size());
    Content.Items.push_back(std::move(entry));
  }
};

}  // namespace

std::string DirectoryPath(const core::DirectorySet& directories, std::string_view entry) {
  return core::ProgramDirectoryPath(directories, entry);
}

ProgramList FillProgramList(const FileParts& parts, std::string_view directoryName,
                            std::string_view selectName, SelectMode mode) {
  const link::BusyCursor busy(parts.Dialogs);
  ProgramList list;
  list.Files =
      parts.Files.ListEntries(DirectoryPath(parts.System.Directories, directoryName) + "*.prg");
  int named = -1;
  for (const platform::FileEntry& file : list.Files) {
    const std::string_view name = core::StemOf(file.Name);
    if (named < 0 && SameName(name, selectName)) named = static_cast<int>(list.Items.size());
    list.Items.emplace_back(name);
  }
  list.Index = IndexFor(mode, list.Items, named);
  return list;
}

ListContent FillDirectoryList(const FileParts& parts, std::string_view currentName, bool withDrives,
                              bool withCurrent, SelectMode mode) {
  Filling filling;
  for (std::string& name :
       core::ListProgramDirectories(parts.Files, parts.System.Directories.ProgramRoot)) {
    const bool current = SameName(name, currentName);
    filling.Take(std::move(name), current, withCurrent);
  }
  const auto drives = withDrives ? parts.Drives.List() : std::vector<std::string>();
  for (const std::string& drive : drives) {
    std::string entry = DriveEntry(parts, drive);
    if (entry.empty()) continue;
    const bool current = SameName(drive.substr(0, 2), currentName.substr(0, 2));
    filling.Take(std::move(entry), current, withCurrent);
  }
  filling.Content.Index = IndexFor(mode, filling.Content.Items, filling.Named);
  return std::move(filling.Content);
}

bool DirectoryExists(const FileParts& parts, std::string_view name) {
  std::string path = DirectoryPath(parts.System.Directories, name);
  path.pop_back();
  return parts.Files.DirectoryExists(path) || parts.Files.FileExists(path);
}

bool DiscReady(const FileParts& parts, std::string_view path) {
  return parts.Drives.Ready(path.substr(0, 2));
}

std::string DirectoryToShow(const FileParts& parts, const std::string& entry) {
  if (!core::IsDriveEntry(entry) || DiscReady(parts, entry)) return entry;
  parts.Dialogs.ShowWarning("\n" + std::string(DiscNotReady), supervision::WarningMode::Ok,
                            supervision::WarningStyle::Warning);
  if (DiscReady(parts, entry)) return entry;
  return parts.System.Directories.ProgramDirectoryName;
}

int IndexOfDirectory(const std::vector<std::string>& items, std::string_view name) {
  if (name == "." || name == ".." || core::IsReservedDirectory(name)) return -1;
  const auto found = std::find_if(items.begin(), items.end(),
                                  [name](const std::string& item) { return SameName(item, name); });
  return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

}  // namespace torvane::files

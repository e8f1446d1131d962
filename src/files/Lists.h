// What the lists show of programs and directories, and which line is selected.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "files/FileParts.h"

namespace torvane::files {

/// Which line a filled list selects.
enum class SelectMode {
  None = 0,
  First = 1,  ///< none in an empty list
  Named = 2   ///< the line of the name given, without minding case, else none
};

struct ListContent {
  std::vector<std::string> Items;
  int Index = -1;  ///< from 0, -1 none
};

/// Programs of a directory with what the columns beside them show.
struct ProgramList : ListContent {
  std::vector<platform::FileEntry> Files;  ///< of the source files, in the order of the items
};

/// The path of a directory list's entry, with its backslash: of a drive entry the root of the
/// drive, of a name the directory below the programs root.
[[nodiscard]] std::string DirectoryPath(const core::DirectorySet& directories,
                                        std::string_view entry);

/// The ".prg" files of a directory without their extension, under the busy pointer.
[[nodiscard]] ProgramList FillProgramList(const FileParts& parts, std::string_view directoryName,
                                          std::string_view selectName, SelectMode mode);

/// The directories below the programs root, then (`withDrives`) floppy and removable drives.
/// `currentName`, a name or a drive, is left out unless `withCurrent`; SelectMode::Named means it.
[[nodiscard]] ListContent FillDirectoryList(const FileParts& parts, std::string_view currentName,
                                            bool withDrives, bool withCurrent, SelectMode mode);

/// True when anything of that name exists below the programs root, a file too.
[[nodiscard]] bool DirectoryExists(const FileParts& parts, std::string_view name);

/// True when the drive of the path answers; its files do not matter.
[[nodiscard]] bool DiscReady(const FileParts& parts, std::string_view path);

/// The directory that a list shows after `entry` was chosen in it: the entry, or, for a drive that
/// does not answer at once nor after the operator was warned, the current program directory.
[[nodiscard]] std::string DirectoryToShow(const FileParts& parts, const std::string& entry);

/// The line of a directory list that holds a name, -1 for none. Names that no list holds (the
/// reserved one, "." and "..") are passed over.
[[nodiscard]] int IndexOfDirectory(const std::vector<std::string>& items, std::string_view name);

inline constexpr const char* DiscNotReady = "Disc Not Ready !";

}  // namespace torvane::files

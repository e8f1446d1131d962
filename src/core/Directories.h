// Control.cfg, and the directories that it leads to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "core/Slot.h"
#include "platform/FileSystem.h"

namespace torvane::core {

inline constexpr const char* ControlFileName = "Control.cfg";

/// What Control.cfg holds.
struct ControlFile {
  std::string RootDirectory;         ///< with its backslash
  std::string ProgramRoot;           ///< with its backslash
  std::string ProgramDirectoryName;  ///< a drive is not kept: it reads as empty
  Slot ActiveSlot;
};

/// Three lines must be there and the first two must say something, else a RuntimeFault that names
/// `path`. A missing fourth line, or one that is neither 1 nor 2, gives slot 1.
[[nodiscard]] ControlFile ReadControlFile(std::string_view text, std::string_view path);

[[nodiscard]] std::string ControlFileText(const ControlFile& control);

/// Control.cfg of the working directory, every path of the set, the directories that are missing,
/// a program directory that exists, and Control.cfg written back at root.
/// Throws RuntimeFault for a file that is missing or too short and for a directory that cannot be
/// made.
void LoadDirectories(platform::FileSystem& files, DirectorySet& directories, Slot& activeSlot);

/// Control.cfg at root from the values in memory, replaced whole.
void SaveControlFile(platform::FileSystem& files, const DirectorySet& directories, Slot activeSlot);

/// The path of a program directory, with its backslash: of a drive entry ("A:") the drive's root,
/// of any other name the directory of `ProgramRoot`. Without a name, `ProgramRoot` itself.
[[nodiscard]] std::string ProgramDirectoryPath(const DirectorySet& directories,
                                               std::string_view name);

/// Makes `name` the current program directory; nothing is written.
void SetProgramDirectory(DirectorySet& directories, std::string_view name);

}  // namespace torvane::core

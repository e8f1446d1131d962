// Which programs and program directories there are.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace torvane::core {

/// True for "EXSUBS" in any case: a directory of that name never shows in a list.
[[nodiscard]] bool IsReservedDirectory(std::string_view name);

/// True for the list entry of a drive, such as "A: [Floppy Disk]".
[[nodiscard]] bool IsDriveEntry(std::string_view entry);

/// The directories of the programs root that lists show, in the order of the file system.
[[nodiscard]] std::vector<std::string> ListProgramDirectories(const platform::FileSystem& files,
                                                              std::string_view programRoot);

/// The programs of a directory, without extension, in the order of the file system. `directoryPath`
/// ends in a backslash. Nothing where it does not exist.
[[nodiscard]] std::vector<std::string> ListPrograms(const platform::FileSystem& files,
                                                    std::string_view directoryPath);

/// Left of the last "."; the whole name where there is none.
[[nodiscard]] std::string_view StemOf(std::string_view fileName);

}  // namespace torvane::core

// The names that an operator gives a program and its directory.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::supervision {

/// Longest name of a program or a directory, characters.
inline constexpr std::size_t LongestName = 32;

inline constexpr const char* InvalidDirectoryName = "Invalid Directory Name !";
inline constexpr const char* InvalidProgramName = "Invalid Program Name !";
inline constexpr const char* DirectoryDoesNotExist = "Directory Does Not Exist !";
inline constexpr const char* ProgramDoesNotExist = "Program Does Not Exist !";

/// True for 1 to 32 characters; `name` is trimmed already.
[[nodiscard]] bool NameLengthValid(std::string_view name);

/// The directory `name` of the programs root exists. False for whatever would lead outside it.
[[nodiscard]] bool DirectoryInRoot(const platform::FileSystem& files,
                                   const core::DirectorySet& directories, std::string_view name);

/// The programs root, the directory, a backslash and the program, without extension.
[[nodiscard]] std::string SourcePathOf(const core::DirectorySet& directories,
                                       std::string_view directory, std::string_view program);

/// The program exists in a directory of the programs root.
[[nodiscard]] bool ProgramInRoot(const platform::FileSystem& files,
                                 const core::DirectorySet& directories, std::string_view directory,
                                 std::string_view program);

}  // namespace torvane::supervision

// A part program as a family of files: one stem in one directory.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::files {

/// A program in a directory.
struct ProgramPlace {
  std::string Directory;  ///< path with its backslash
  std::string Name;       ///< without extension

  [[nodiscard]] std::string File(std::string_view extension) const {
    return Directory + Name + "." + std::string(extension);
  }
};

/// True for two names that the file system takes for one.
[[nodiscard]] bool SameProgramName(std::string_view left, std::string_view right);

/// Names of the files whose stem is the program's, whatever their extension: "A.*" of the same stem
/// only, so that "A.B.prg" is left to the program "A.B". Case is not minded, except where a stem of
/// another case has a source of its own and is a program of its own.
[[nodiscard]] std::vector<std::string> FamilyFiles(const platform::FileSystem& files,
                                                   const ProgramPlace& program);

/// ".prg", ".inf", ".rpt", ".stg" in this order, those that exist. No other extension is touched.
void DeleteProgramFiles(platform::FileSystem& files, const ProgramPlace& program);

/// All files of the stem, the source last.
void DeleteFamily(platform::FileSystem& files, const ProgramPlace& program);

/// What a copy came to.
enum class CopyEnd {
  Done,
  SameDirectory  ///< both paths lead to one directory, under two names; nothing was done
};

/// Copies the source and, if any, the ".stg"; whatever else the target's stem had goes. Both files
/// are written whole beside their places before anything of the target is touched, so that a full
/// disk leaves it as it was, and the source is never touched. Throws RuntimeFault.
CopyEnd CopyProgram(platform::FileSystem& files, const core::DirectorySet& directories,
                    const ProgramPlace& from, const ProgramPlace& to);

/// Gives the program `newName`, which differs in case at most. Source and ".stg" are in the root
/// as Temp.prg and Temp.stg while the names change; every other file of the stem goes. The program
/// is never missing from its directory, and no Temp file stays, not even after a fault.
void ChangeNameCase(platform::FileSystem& files, const core::DirectorySet& directories,
                    const ProgramPlace& program, const std::string& newName);

/// Deletes the root's "Temp.*".
void DeleteTempFiles(platform::FileSystem& files, const core::DirectorySet& directories);

}  // namespace torvane::files

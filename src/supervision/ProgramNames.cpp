#include "supervision/ProgramNames.h"

#include "platform/PlainNames.h"

namespace torvane::supervision {

bool NameLengthValid(std::string_view name) { return !name.empty() && name.size() <= LongestName; }

bool DirectoryInRoot(const platform::FileSystem& files, const core::DirectorySet& directories,
                     std::string_view name) {
  return platform::IsPlainName(name) &&
         files.DirectoryExists(directories.ProgramRoot + std::string(name));
}

std::string SourcePathOf(const core::DirectorySet& directories, std::string_view directory,
                         std::string_view program) {
  return directories.ProgramRoot + std::string(directory) + "\\" + std::string(program);
}

bool ProgramInRoot(const platform::FileSystem& files, const core::DirectorySet& directories,
                   std::string_view directory, std::string_view program) {
  return platform::IsPlainName(directory) && platform::IsPlainName(program) &&
         files.FileExists(SourcePathOf(directories, directory, program) + ".prg");
}

}  // namespace torvane::supervision

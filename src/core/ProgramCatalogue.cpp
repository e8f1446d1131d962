#include "core/ProgramCatalogue.h"

#include "core/Text.h"

namespace torvane::core {

namespace {

constexpr std::string_view ReservedDirectory = "EXSUBS";

}  // namespace

bool IsReservedDirectory(std::string_view name) { return EqualNoCase(name, ReservedDirectory); }

bool IsDriveEntry(std::string_view entry) { return entry.find(':') != std::string_view::npos; }

std::vector<std::string> ListProgramDirectories(const platform::FileSystem& files,
                                                std::string_view programRoot) {
  auto names = files.ListDirectories(programRoot);
  std::erase_if(names, [](const std::string& name) {
    return name == "." || name == ".." || IsReservedDirectory(name);
  });
  return names;
}

std::vector<std::string> ListPrograms(const platform::FileSystem& files,
                                      std::string_view directoryPath) {
  auto names = files.ListFiles(std::string(directoryPath) + "*.prg");
  for (std::string& name : names) name.resize(StemOf(name).size());
  return names;
}

std::string_view StemOf(std::string_view fileName) {
  return fileName.substr(0, fileName.rfind('.'));
}

}  // namespace torvane::core

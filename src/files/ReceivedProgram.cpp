#include "files/ReceivedProgram.h"

#include <algorithm>

#include "core/Directories.h"
#include "core/General.h"
#include "platform/PlainNames.h"

namespace torvane::files {

namespace {

constexpr std::size_t LongestName = 32;
constexpr char Delete = 127;

/// The name after the mark, if it may be used. False, with nothing changed, without the mark.
bool ReadMarkedLine(std::string_view& rest, char mark, std::string& name) {
  std::string_view line;
  if (!core::TakeLine(rest, line)) return false;
  const auto found = line.find(mark);
  if (found == std::string_view::npos) return false;
  const std::string_view text = core::Trim(line.substr(found + 1));
  if (IsTransferName(text)) name = text;
  return true;
}

bool HoldsMark(std::string_view line) {
  return line.find(DirectoryMark) != std::string_view::npos ||
         line.find(NameMark) != std::string_view::npos;
}

}  // namespace

ReceivedHeader ReadReceivedHeader(std::string_view text) {
  ReceivedHeader header;
  const bool directorySeen = ReadMarkedLine(text, DirectoryMark, header.Directory);
  const bool nameSeen = ReadMarkedLine(text, NameMark, header.Name);
  header.Seen = directorySeen || nameSeen;
  return header;
}

bool IsTransferName(std::string_view name) {
  const bool forbidden = std::any_of(name.begin(), name.end(), [](char character) {
    return character == Delete ||
           std::string_view(".\"<>|").find(character) != std::string_view::npos;
  });
  return !forbidden && name.size() <= LongestName && platform::IsPlainName(name);
}

std::string StoredText(std::string_view text, bool headerSeen) {
  if (!headerSeen) return std::string(text);
  std::string stored;
  stored.reserve(text.size());
  std::string_view line;
  while (core::TakeLine(text, line)) {
    const std::string_view trimmed = core::Trim(line);
    if (trimmed.empty() || HoldsMark(trimmed)) continue;
    stored.append(trimmed).append("\r\n");
  }
  return stored;
}

std::string NewProgramName(const platform::FileSystem& files, const core::DirectorySet& directories,
                           std::string_view directory) {
  const std::string path = core::ProgramDirectoryPath(directories, directory);
  for (int number = 1;; ++number) {
    std::string name = "New Program " + std::to_string(number);
    if (!files.FileExists(path + name + ".prg")) return name;
  }
}

}  // namespace torvane::files

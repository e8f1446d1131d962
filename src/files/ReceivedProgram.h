// A program as it came over the line: its header, its names, and the text that is stored.
#pragma once

#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::files {

/// Marks the line of a header that names the directory.
inline constexpr char DirectoryMark = 24;
/// Marks the line of a header that names the program.
inline constexpr char NameMark = 25;

/// What the first two lines say.
struct ReceivedHeader {
  std::string Directory;  ///< empty: none was named, or none that may be used
  std::string Name;       ///< likewise
  bool Seen = false;      ///< one of the two lines was there, usable or not
};

/// The first line may name the directory, the second the program; no other line is looked at.
[[nodiscard]] ReceivedHeader ReadReceivedHeader(std::string_view text);

/// True for a name that may come from the line: 1 to 32 characters, no dot, nothing that divides
/// paths or stands for other characters in them, no control character.
[[nodiscard]] bool IsTransferName(std::string_view name);

/// What is stored. Without a header the text itself, byte for byte. With one, its lines trimmed,
/// each ended by CR LF, without those that are empty or hold a mark.
[[nodiscard]] std::string StoredText(std::string_view text, bool headerSeen);

/// "New Program 1", "New Program 2" and so on: the first whose ".prg" is not in the directory.
[[nodiscard]] std::string NewProgramName(const platform::FileSystem& files,
                                         const core::DirectorySet& directories,
                                         std::string_view directory);

}  // namespace torvane::files

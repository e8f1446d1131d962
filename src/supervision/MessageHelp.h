// The help text behind a message, and how its keys page through it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::supervision {

inline constexpr const char* HelpCaption = "&HELP";          ///< while the list shows
inline constexpr const char* MessagesCaption = "&MESSAGES";  ///< while the help shows

/// The lines of a help file. `Found` is false where the message has none: the caller beeps.
struct HelpText {
  bool Found = false;
  std::vector<std::string> Lines;
};
[[nodiscard]] HelpText ReadHelpText(platform::FileSystem& files,
                                    const core::DirectorySet& directories, std::string_view path);

/// Lines that the help box shows at once.
inline constexpr int HelpPageLines = 28;

enum class HelpKey { Up, Down, PageUp, PageDown, Home, End };

/// The new top line, from 0, for a key; `count` lines in all. Never above 0 and never beyond the
/// last page; a page moves 27 lines.
[[nodiscard]] int HelpTopLine(int top, int count, HelpKey key);

/// The acknowledgement: the note on received programs goes, and with it its message. Conditions of
/// the controller clear themselves.
void AcknowledgeReceived(platform::FileSystem& files, const core::DirectorySet& directories,
                         bool& newProgramsReceived);

}  // namespace torvane::supervision

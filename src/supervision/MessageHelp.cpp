#include "supervision/MessageHelp.h"

#include <algorithm>

#include "core/General.h"
#include "core/LastFile.h"
#include "supervision/MessageList.h"

namespace torvane::supervision {

HelpText ReadHelpText(platform::FileSystem& files, const core::DirectorySet& directories,
                      std::string_view path) {
  HelpText help;
  if (path.empty() || !files.FileExists(path)) return help;
  core::NoteLastFile(files, directories, path);
  const std::string text = files.ReadFile(path);
  for (const auto line : core::SplitLines(text)) help.Lines.emplace_back(line);
  help.Found = true;
  return help;
}

int HelpTopLine(int top, int count, HelpKey key) {
  const int last = std::max(0, count - HelpPageLines);
  top = std::clamp(top, 0, last);
  int wanted = top;
  switch (key) {
    case HelpKey::Up:
      wanted = top - 1;
      break;
    case HelpKey::Down:
      wanted = top + 1;
      break;
    case HelpKey::PageUp:
      wanted = top - (HelpPageLines - 1);
      break;
    case HelpKey::PageDown:
      wanted = top + (HelpPageLines - 1);
      break;
    case HelpKey::Home:
      wanted = 0;
      break;
    case HelpKey::End:
      wanted = last;
      break;
  }
  return std::clamp(wanted, 0, last);
}

void AcknowledgeReceived(platform::FileSystem& files, const core::DirectorySet& directories,
                         bool& newProgramsReceived) {
  const std::string note = ReceiveNotePath(directories);
  if (files.FileExists(note)) files.DeleteFile(note);
  newProgramsReceived = false;
}

}  // namespace torvane::supervision

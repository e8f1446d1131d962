#include "files/ProgramText.h"

#include "core/LastFile.h"
#include "core/Text.h"
#include "files/Questions.h"

namespace torvane::files {

std::optional<std::vector<std::string>> ReadTextLines(const FileParts& parts,
                                                      const std::string& path) {
  if (!parts.Files.FileExists(path)) return std::nullopt;
  core::NoteLastFile(parts.Files, parts.System.Directories, path);
  const std::string text = parts.Files.ReadFile(path);
  const auto lines = core::SplitLines(text);
  return std::vector<std::string>(lines.begin(), lines.end());
}

void LoadDocument(const FileParts& parts, const std::string& path, EditDocument& document) {
  core::NoteLastFile(parts.Files, parts.System.Directories, path);
  document.Load(parts.Files.FileExists(path) ? parts.Files.ReadFile(path) : std::string());
}

bool SaveDocument(const FileParts& parts, const std::string& path, EditDocument& document) {
  bool saved = false;
  static_cast<void>(CarryOut(parts, FaultRule::IsAWarning, [&] {
    core::NoteLastFile(parts.Files, parts.System.Directories, path);
    parts.Files.ReplaceFile(path, document.Text());
    document.MarkKept();
    saved = true;
    return Ending::Closes;
  }));
  return saved;
}

}  // namespace torvane::files

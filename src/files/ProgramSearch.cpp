#include "files/ProgramSearch.h"

#include <algorithm>

#include "core/ProgramCatalogue.h"
#include "platform/NativePaths.h"

namespace torvane::files {

namespace {

std::string Folded(std::string_view text) {
  std::string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), platform::FoldCase);
  return folded;
}

/// `word` is folded already.
bool Occurs(const std::string& word, std::string_view name) {
  return word.empty() || Folded(name).find(word) != std::string::npos;
}

std::string Quoted(const std::string& word) { return " \"" + word + "\" "; }

}  // namespace

std::vector<FoundProgram> SearchPrograms(const platform::FileSystem& files,
                                         std::string_view programRoot, const NameSearch& words,
                                         const std::function<bool(const SearchProgress&)>& step) {
  const std::string directoryWord = Folded(words.Directory);
  const std::string programWord = Folded(words.Program);
  auto directories = files.ListDirectories(programRoot);
  std::erase_if(directories, [&](const std::string& name) {
    return name == "." || name == ".." || !Occurs(directoryWord, name);
  });
  std::vector<FoundProgram> found;
  SearchProgress progress{0, static_cast<int>(directories.size()), 0};
  for (const std::string& directory : directories) {
    const std::string path = std::string(programRoot) + directory + "\\";
    for (std::string& name : core::ListPrograms(files, path)) {
      if (Occurs(programWord, name)) found.push_back({directory, std::move(name)});
    }
    ++progress.Directories;
    progress.Found = static_cast<int>(found.size());
    if (!step(progress)) break;
  }
  return found;
}

std::string SearchCaption(const NameSearch& words) {
  if (words.Directory.empty()) return Quoted(words.Program);
  if (words.Program.empty()) return Quoted(words.Directory);
  return Quoted(words.Directory) + "\n" + Quoted(words.Program);
}

}  // namespace torvane::files

// Finds programs by text in their names.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace torvane::files {

/// The two search words, trimmed; an empty one takes all. Wild cards are text like any other.
struct NameSearch {
  std::string Directory;
  std::string Program;
};

struct FoundProgram {
  std::string Directory;
  std::string Name;

  friend bool operator==(const FoundProgram&, const FoundProgram&) = default;
};

/// How far a search has come.
struct SearchProgress {
  int Directories = 0;  ///< looked through
  int Total = 0;        ///< to be looked through
  int Found = 0;        ///< programs
};

/// Looks through all directories of the programs root, the reserved one too. `step` is called after
/// each of them and may let the console live; false from it ends the search with what was found.
[[nodiscard]] std::vector<FoundProgram> SearchPrograms(
    const platform::FileSystem& files, std::string_view programRoot, const NameSearch& words,
    const std::function<bool(const SearchProgress&)>& step);

/// What the search screen shows of the words: one in quotes, or both below each other, each
/// between blanks.
[[nodiscard]] std::string SearchCaption(const NameSearch& words);

}  // namespace torvane::files

// Size and date beside the names of a list of programs.
#pragma once

#include "files/Lists.h"
#include "toolkit/ListBox.h"

namespace torvane::console {

/// Fills a list with programs and their columns and sets its line; the list tells nobody.
void ShowPrograms(toolkit::ListBox& list, const files::ProgramList& programs);

/// Fills a list of directories and sets its line.
void ShowDirectories(toolkit::ListBox& list, const files::ListContent& directories);

/// Bytes and the day of the last change, a tab between them: narrow, so that names stay whole.
[[nodiscard]] std::string DetailsOf(const platform::FileEntry& file);

}  // namespace torvane::console

// What the file and program screens hand to the screens that they open.
#pragma once

#include "files/DirectoryActions.h"
#include "files/ProgramActions.h"
#include "files/ProgramSearch.h"
#include "files/ProgramText.h"

namespace torvane::console {

/// Written by the screen that opens another one, read by that one as it loads.
struct FileTasks {
  files::ProgramAction FileAction = files::ProgramAction::None;
  files::DirectoryAction DirectoryAction = files::DirectoryAction::None;
  files::NameSearch Search;
  files::EditTask Edit;
};

}  // namespace torvane::console

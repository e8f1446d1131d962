// Creating, deleting and renaming the program directories below the programs root.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "files/FileParts.h"
#include "files/Questions.h"

namespace torvane::files {

/// As `DirectoryAction` keeps it; 0 is no action.
enum class DirectoryAction : std::int16_t { None = 0, Create, Delete, Rename };

/// What the screen shows and offers for an action.
struct DirectoryActionRow {
  DirectoryAction Action;
  const char* Button;  ///< caption on the file menu
  const char* Title;   ///< of the screen
  const char* Label;   ///< of its list, null where there is none
  const char* Box;     ///< label of the box for a name, null where there is none
};

inline constexpr std::array<DirectoryActionRow, 3> DirectoryActionRows = {{
    {DirectoryAction::Create, "CREATE  (&6)", "CREATE NEW DIRECTORY", nullptr, "DIRECTORY &NAME"},
    {DirectoryAction::Delete, "DELETE  (&7)", "DELETE DIRECTORY", "DELETE DIRECTORY", nullptr},
    {DirectoryAction::Rename, "RENAME (&8)", "RENAME DIRECTORY", "RENAME DIRECTORY", "&AS"},
}};

/// The row of an action that is not None.
[[nodiscard]] const DirectoryActionRow& RowOf(DirectoryAction action);

/// The directories of both program slots are protected. Creating and renaming tell a fault of the
/// disk; a deletion that fails, as of a directory with a subdirectory, ends the program with a
/// RuntimeFault while the machine is idle and is a warning while it is in a cycle.
class DirectoryActions {
 public:
  explicit DirectoryActions(const FileParts& parts) : parts_(parts) {}

  /// `selected` is the line of the directory list, if any; `name` is in the box.
  [[nodiscard]] Ending CarryOut(DirectoryAction action, const std::optional<std::string>& selected,
                                const std::string& name);

 private:
  [[nodiscard]] Ending Refuse(const std::string& line);
  [[nodiscard]] Ending Create(const std::string& name);
  [[nodiscard]] Ending Delete(const std::string& name);
  [[nodiscard]] Ending Rename(const std::string& name, const std::string& newName);
  [[nodiscard]] bool Acceptable(const std::string& name);
  [[nodiscard]] bool RefuseProtected(const std::string& name, const char* verb);
  [[nodiscard]] std::string PathOf(const std::string& name) const;

  FileParts parts_;
};

}  // namespace torvane::files

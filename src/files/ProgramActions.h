// The five actions on part programs: delete, rename, copy as, move to, copy to.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "files/FileParts.h"
#include "files/ProgramFamily.h"
#include "files/Questions.h"

namespace torvane::files {

/// As `FileAction` keeps it; 0 is no action.
enum class ProgramAction : std::int16_t { None = 0, Delete, Rename, CopyAs, MoveTo, CopyTo };

/// What the screen shows and offers for an action.
struct ProgramActionRow {
  ProgramAction Action;
  const char* Button;          ///< caption on the file menu
  const char* Title;           ///< of the screen, and of its list of programs
  const char* DirectoryLabel;  ///< over the first directory list
  bool Multiple;               ///< several programs may be selected
  bool NewName;                ///< a box "AS" takes a name
  bool Destination;            ///< a second directory list "TO"
};

inline constexpr std::array<ProgramActionRow, 5> ProgramActionRows = {{
    {ProgramAction::Delete, "DELETE  (&1)", "DELETE PROGRAM(S)", "FROM DIRECTORY", true, false,
     false},
    {ProgramAction::Rename, "RENAME (&2)", "RENAME PROGRAM", "IN DIRECTORY", false, true, false},
    {ProgramAction::CopyAs, "COPY AS (&3)", "COPY PROGRAM", "IN DIRECTORY", false, true, false},
    {ProgramAction::MoveTo, "MOVE TO (&4)", "MOVE PROGRAM(S)", "FROM DIRECTORY", true, false, true},
    {ProgramAction::CopyTo, "COPY TO (&5)", "COPY PROGRAM(S)", "FROM DIRECTORY", true, false, true},
}};

/// The row of an action that is not None.
[[nodiscard]] const ProgramActionRow& RowOf(ProgramAction action);

/// What is selected and entered on the screen.
struct ProgramActionRequest {
  ProgramAction Action = ProgramAction::None;
  std::string Directory;              ///< entry of the first directory list
  std::vector<std::string> Programs;  ///< selected, in the order of the list
  std::string NewName = {};           ///< of the box
  std::optional<std::string> Destination =
      std::nullopt;  ///< entry of the second directory list, if any
};

/// Carries an action out, with all its refusals, questions and its report. A fault of the disk ends
/// the program with a RuntimeFault while the machine is idle, as any fault of a required file
/// does; while it is in a cycle it is a warning.
class ProgramActions {
 public:
  explicit ProgramActions(const FileParts& parts) : parts_(parts) {}

  [[nodiscard]] Ending CarryOut(const ProgramActionRequest& request);

 private:
  using Request = ProgramActionRequest;
  [[nodiscard]] Ending Refuse(const char* line);
  [[nodiscard]] Ending Branch(const Request& request);
  [[nodiscard]] Ending Delete(const Request& request);
  [[nodiscard]] Ending RenameOrCopyAs(const Request& request);
  [[nodiscard]] Ending MoveOrCopyTo(const Request& request);
  [[nodiscard]] bool DestinationReady(const std::string& entry);
  [[nodiscard]] bool MayReplace(const ProgramPlace& program);
  [[nodiscard]] CopyEnd TransferOne(const ProgramPlace& from, const ProgramPlace& to, bool move);
  [[nodiscard]] ProgramPlace PlaceOf(const std::string& directory, const std::string& name) const;

  FileParts parts_;
};

}  // namespace torvane::files

#include "files/ProgramActions.h"

#include "core/ProgramCatalogue.h"
#include "core/Text.h"
#include "files/Lists.h"
#include "platform/PlainNames.h"
#include "supervision/OperatorDialogs.h"
#include "supervision/ProgramNames.h"

namespace torvane::files {

namespace {

constexpr const char* NothingSelected = "No Programs Selected !";
constexpr const char* NoDestination = "No Destination Selected !";
constexpr const char* SameDirectories = "Original & Destination Directories Are The Same !";

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

/// "1 Program Moved !", "3 Programs Moved !".
std::string Report(std::size_t count, const char* done) {
  if (count == 1) return std::string("1 Program ") + done + " !";
  return (count == 0 ? "No" : std::to_string(count)) + " Programs " + done + " !";
}

bool ValidName(std::string_view name) {
  return supervision::NameLengthValid(name) && platform::IsPlainName(name);
}

}  // namespace

const ProgramActionRow& RowOf(ProgramAction action) {
  return ProgramActionRows.at(static_cast<std::size_t>(action) - 1);
}

Ending ProgramActions::Refuse(const char* line) {
  Tell(parts_, line);
  return Ending::StaysOpen;
}

ProgramPlace ProgramActions::PlaceOf(const std::string& directory, const std::string& name) const {
  return {DirectoryPath(parts_.System.Directories, directory), name};
}

Ending ProgramActions::CarryOut(const ProgramActionRequest& request) {
  return files::CarryOut(parts_, FaultRule::EndsTheProgram, [&] {
    DeleteTempFiles(parts_.Files, parts_.System.Directories);
    return Branch(request);
  });
}

Ending ProgramActions::Branch(const Request& request) {
  if (request.Action == ProgramAction::None) return Ending::Closes;
  if (request.Programs.empty()) return Refuse(NothingSelected);
  const ProgramActionRow& row = RowOf(request.Action);
  if (row.NewName) return RenameOrCopyAs(request);
  return row.Destination ? MoveOrCopyTo(request) : Delete(request);
}

Ending ProgramActions::Delete(const Request& request) {
  const auto count = request.Programs.size();
  const std::string what =
      count == 1 ? Quoted(request.Programs.front()) : std::to_string(count) + " Programs";
  if (!Ask(parts_, supervision::OneLineWarning("Delete " + what + " !"))) return Ending::Closes;
  {
    const link::BusyCursor busy(parts_.Dialogs);
    for (const std::string& name : request.Programs) {
      DeleteProgramFiles(parts_.Files, PlaceOf(request.Directory, name));
      parts_.Breathe();
    }
  }
  Tell(parts_, Report(count, "Deleted"));
  return Ending::Closes;
}

bool ProgramActions::MayReplace(const ProgramPlace& program) {
  if (!parts_.Files.FileExists(program.File("prg"))) return true;
  return Ask(parts_, Quoted(program.Name) + "\nAlready Exists !\n\nOverwrite It ?");
}

Ending ProgramActions::RenameOrCopyAs(const Request& request) {
  const bool rename = request.Action == ProgramAction::Rename;
  const ProgramPlace from = PlaceOf(request.Directory, request.Programs.front());
  const ProgramPlace to = PlaceOf(request.Directory, std::string(core::Trim(request.NewName)));
  const bool same = SameProgramName(from.Name, to.Name);
  if (!ValidName(to.Name) || (same && !rename)) return Refuse(supervision::InvalidProgramName);
  if (!Ask(parts_, supervision::TwoLineWarning((rename ? "Rename " : "Copy ") + Quoted(from.Name),
                                               "As " + Quoted(to.Name) + " ?")))
    return Ending::Closes;
  if (same) {
    ChangeNameCase(parts_.Files, parts_.System.Directories, from, to.Name);
  } else {
    if (!MayReplace(to)) return Ending::Closes;
    static_cast<void>(TransferOne(from, to, rename));
  }
  Tell(parts_, Report(1, rename ? "Renamed" : "Copied"));
  return Ending::Closes;
}

CopyEnd ProgramActions::TransferOne(const ProgramPlace& from, const ProgramPlace& to, bool move) {
  const link::BusyCursor busy(parts_.Dialogs);
  const CopyEnd end = CopyProgram(parts_.Files, parts_.System.Directories, from, to);
  if (end == CopyEnd::Done && move) DeleteFamily(parts_.Files, from);
  return end;
}

bool ProgramActions::DestinationReady(const std::string& entry) {
  if (!core::IsDriveEntry(entry) || DiscReady(parts_, entry)) return true;
  Tell(parts_, DiscNotReady);
  return DiscReady(parts_, entry);
}

Ending ProgramActions::MoveOrCopyTo(const Request& request) {
  const bool move = request.Action == ProgramAction::MoveTo;
  if (!request.Destination) return Refuse(NoDestination);
  const std::string& destination = *request.Destination;
  if (request.Directory == destination) return Refuse(SameDirectories);
  const auto selected = request.Programs.size();
  const std::string what =
      selected == 1 ? Quoted(request.Programs.front()) : std::to_string(selected) + " Programs";
  if (!Ask(parts_, supervision::TwoLineWarning((move ? "Move " : "Copy ") + what,
                                               "To " + Quoted(destination) + " !")))
    return Ending::Closes;
  if (!DestinationReady(destination)) return Ending::StaysOpen;
  std::size_t count = 0;
  for (const std::string& name : request.Programs) {
    const ProgramPlace to = PlaceOf(destination, name);
    if (!MayReplace(to)) continue;
    if (TransferOne(PlaceOf(request.Directory, name), to, move) == CopyEnd::SameDirectory)
      return Refuse(SameDirectories);
    ++count;
    parts_.Breathe();
  }
  Tell(parts_, Report(count, move ? "Moved" : "Copied"));
  return Ending::Closes;
}

}  // namespace torvane::files

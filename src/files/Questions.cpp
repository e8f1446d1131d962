#include "files/Questions.h"

#include <string>

#include "files/FaultNote.h"
#include "platform/RuntimeFault.h"
#include "supervision/OperatorDialogs.h"

namespace torvane::files {

using supervision::WarningMode;
using supervision::WarningStyle;

void Tell(const FileParts& parts, std::string_view line) { parts.Dialogs.Warn(line); }

bool Ask(const FileParts& parts, std::string_view text) {
  return parts.Dialogs.ShowWarning(text, WarningMode::OkCancel, WarningStyle::Warning);
}

bool InCycle(const core::MachineState& state) {
  return state.MachineRunning || state.MachineCycleBit || state.MachineFeedhold;
}

namespace {

void TellFault(const FileParts& parts, const platform::RuntimeFault& fault) {
  NoteFault(parts.Files, parts.System.Directories, fault.what());
  std::string_view words = fault.what();
  if (words.starts_with(fault.Path()) && !fault.Path().empty())
    words.remove_prefix(fault.Path().size() + 2);
  parts.Dialogs.Warn(fault.Path(), words);
}

}  // namespace

Ending CarryOut(const FileParts& parts, FaultRule rule, const std::function<Ending()>& action) {
  try {
    return action();
  } catch (const platform::RuntimeFault& fault) {
    if (rule == FaultRule::EndsTheProgram && !InCycle(parts.System.State)) throw;
    TellFault(parts, fault);
    return Ending::Closes;
  }
}

}  // namespace torvane::files

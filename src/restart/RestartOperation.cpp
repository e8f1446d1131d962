#include "restart/RestartOperation.h"

#include <algorithm>
#include <utility>

#include "core/General.h"
#include "core/LastFile.h"
#include "link/Variables.h"
#include "restart/GatherModule.h"
#include "supervision/CycleRules.h"

namespace torvane::restart {
namespace {

constexpr std::uint32_t Green = 65280;
constexpr std::uint32_t Black = 0;

std::string TableInForce(core::Slot slot) {
  return link::Assignment(link::Variable::TableInForce, core::IntegerText(slot.Number()));
}

/// The same warning on the other screens has two line feeds.
std::string RefusalText() {
  const auto& rule = supervision::CycleRuleOf(supervision::CycleAction::Restart);
  return std::string("\n") + rule.FirstLine + "\n\n" + rule.SecondLine;
}

}  // namespace

RestartLineSet RestartLineSetOf(const RestartContent& content, core::Slot slot) {
  RestartLineSet set;
  set.File = RestartLines(content);
  std::copy_if(set.File.begin(), set.File.end(), std::back_inserter(set.Now), GoesToController);
  set.Now.emplace_back(link::CommandLine::RestartTable);
  set.AtStart = {TableInForce(slot), StartLine(slot, content.State.BlockNo)};
  set.OnCancel = {TableInForce(slot)};
  return set;
}

std::string RestartOperation::RestartFile() const {
  return parts_.System.Directories.RootDirectory + "Restart.tbx";
}

std::string RestartOperation::SlotLine() const { return TableInForce(parts_.System.ActiveSlot); }

void RestartOperation::StartRestart() {
  phase_ = Phase::Preparing;
  screen_.LockOtherForms(true);
  if (Refused()) return Hide();
  const auto& system = parts_.System;
  screen_.ShowRestart(LabelsOf(parts_.States.RestartState, system.ActiveStation.Name));
  parts_.Trio.StopPolling(false);
  WriteRestartFile("");
  if (!IsCancelled()) WaitCycleStart();
  Hide();
}

bool RestartOperation::Refused() {
  if (!supervision::ActionRefused(supervision::CycleAction::Restart, parts_.System.State)) {
    return false;
  }
  parts_.Dialogs.ShowWarning(RefusalText(), supervision::WarningMode::Ok,
                             supervision::WarningStyle::Warning);
  return true;
}

void RestartOperation::WriteRestartFile(std::string_view text) {
  const auto& system = parts_.System;
  const std::string gathered = GatherTextFile(system.Directories);
  core::NoteLastFile(parts_.Files, system.Directories, gathered);
  const std::string gatherText = parts_.Files.ReadFile(gathered);
  std::string file;
  for (const std::string& line :
       RestartLines({parts_.States.RestartState, gatherText, parts_.Split.SplitRecord,
                     system.TableSent, system.Machine.YDirection},
                    text)) {
    file.append(line).append("\r\n");
  }
  parts_.Files.ReplaceFile(RestartFile(), file);
  if (system.Link.TrioLinkEnabled) SendRestartFile();
}

void RestartOperation::SendRestartFile() {
  const std::string path = RestartFile();
  core::NoteLastFile(parts_.Files, parts_.System.Directories, path);
  const std::string text = parts_.Files.ReadFile(path);
  for (const std::string_view whole : core::SplitLines(text)) {
    const std::string line = core::UpperCase(core::Trim(whole));
    if (!line.empty() && GoesToController(line) && !IsCancelled()) parts_.Trio.Download(line);
  }
}

void RestartOperation::WaitCycleStart() {
  parts_.Trio.Download(link::CommandLine::RestartTable);
  while (!IsCancelled()) {
    if (!WaitLamp(Phase::LampOff, true) || !WaitLamp(Phase::LampOn, false)) return;
    // A lamp that blinks without a run: the operator has not pressed yet.
    if (parts_.System.State.MachineRunning) return StartRun();
  }
}

/// Polls until the lamp is as asked for; false after a cancel.
bool RestartOperation::WaitLamp(Phase phase, bool lit) {
  phase_ = phase;
  screen_.SetCycleStartColour(lit ? Green : Black);
  const auto& state = parts_.System.State;
  do {
    Tick();
    if (IsCancelled()) return false;
  } while (((state.StatusWord & core::StatusBit::RestartReady) != 0) != lit);
  return true;
}

/// A tick of the poll, no sooner than a period after the last one: with the link off, or where a
/// tick costs no time, the wait sleeps.
void RestartOperation::Tick() {
  const std::int64_t now = parts_.Loop.NowMs();
  const std::int64_t due = lastTick_ + parts_.System.Link.PollPeriodMs;
  if (now < due) {
    bool woken = false;
    const auto timer = parts_.Loop.MakeTimer([&woken] { woken = true; });
    timer->Start(static_cast<int>(std::min<std::int64_t>(due - now, 60'000)));
    parts_.Loop.WaitUntil([this, &woken] { return woken || IsCancelled(); });
    if (IsCancelled()) return;
  }
  lastTick_ = parts_.Loop.NowMs();
  parts_.Poll.PollTrio();
}

void RestartOperation::StartRun() {
  phase_ = Phase::Starting;
  const core::Slot slot = parts_.System.ActiveSlot;
  const std::int16_t blockNo = parts_.States.RestartState.BlockNo;
  parts_.Trio.Download(SlotLine());
  parts_.Trio.Download(StartLine(slot, blockNo));
  const RestartStates& states = parts_.States;
  const int block = states.Block > 0 ? states.Block : parts_.Split.RestartRecord.BlockNumber;
  parts_.Poll.TellRestart({block, states.RestartState.XPosition, states.RestartState.YPosition});
}

void RestartOperation::Cancel() {
  if (phase_ != Phase::Preparing && phase_ != Phase::LampOff && phase_ != Phase::LampOn) return;
  phase_ = Phase::Cancelled;
  parts_.Trio.Download(SlotLine());
}

void RestartOperation::Hide() {
  phase_ = Phase::Closed;
  screen_.HideRestart();
}

void RestartOperation::Unload() {
  auto& system = parts_.System;
  partprogram::ClearSplitCycle(parts_.Split, parts_.Files, system.Directories);
  ClearGatherState(parts_.States.RestartState, system.Machine);
  ClearGatherState(parts_.States.RestartNextState, system.Machine);
  parts_.States.Block = parts_.States.Record = 0;
  parts_.Files.DeleteFile(GatherTextFile(system.Directories));
  screen_.LockOtherForms(false);
  parts_.Trio.StartPolling(false);
}

}  // namespace torvane::restart

#include "simulator/MachineEvents.h"

#include "core/General.h"

namespace torvane::simulator {

namespace {

struct EventRow {
  EventKind Kind;
  std::string_view Text;
  std::string_view ValueLabel;        ///< empty: the value says nothing
  std::string_view AmountLabel = {};  ///< empty: the amount says nothing
};

constexpr EventRow EventRows[] = {
    {EventKind::FrontEndUp, "front end is up", ""},
    {EventKind::CycleStarted, "cycle started", "slot"},
    {EventKind::CycleFinished, "cycle finished", "sheets completed"},
    {EventKind::CycleStopped, "cycle stopped", "line"},
    {EventKind::Held, "feed hold", ""},
    {EventKind::Released, "feed hold released", ""},
    {EventKind::StopPointSet, "stop point set", "record"},
    {EventKind::StopPointReached, "stop point reached", "record"},
    {EventKind::StopPointMissed, "stop point not met before the end", "record"},
    {EventKind::PowerCycled, "switched off and on again", ""},
    {EventKind::ProgramStop, "program stop, waiting for cycle start", "line"},
    {EventKind::WaitingForTable, "waiting for table lines", "after line"},
    {EventKind::TableArrived, "table lines arrived", "going on with line"},
    {EventKind::TableIncomplete, "table is incomplete", "missing line"},
    {EventKind::PathRefused, "record does not belong to the row, moving by the rows", "line"},
    {EventKind::PathMissing, "records of the slot cannot be read, moving by the rows", ""},
    {EventKind::RestartWaiting, "restart table selected, waiting for cycle start", ""},
    {EventKind::RestartStarted, "restart started", ""},
    {EventKind::RestartContinues, "restart goes on", "line"},
    {EventKind::RestartUnknown, "restart block not found", ""},
    {EventKind::ActionStarted, "action started", "VR(48)"},
    {EventKind::ActionDone, "action done", "VR(48)"},
    {EventKind::ActionRefused, "refused", "VR(48)"},
    {EventKind::StartRefused, "cycle start refused: end the error, the hold or the action first",
     ""},
    {EventKind::TableGone,
     "cycle start refused: the table does not hold line 1, select the program again", ""},
    {EventKind::ErrorRaised, "error", "code"},
    {EventKind::BitRaised, "message", "bit"},
    {EventKind::MessagesCleared, "messages cleared", ""},
    {EventKind::RollersOn, "rollers on", ""},
    {EventKind::RollersOff, "rollers off", ""},
    {EventKind::RollersSpoilt, "32 taken from VR(17) though its bit was off", ""},
    {EventKind::JogWord, "jog word", "VR(48)"},
    {EventKind::JogStopWord, "jog stop word", ""},
    {EventKind::JogEnded, "jog ended", "VR(48)", " after mm "},
    {EventKind::JogUnwatched, "jog still on when the line went quiet", ""},
    {EventKind::ReferenceFailed, "reference failed", "VR(48)"},
    {EventKind::ChangedByItself, "changed by itself", "VR", " now "},
    {EventKind::OutputSet, "output set", "output"},
    {EventKind::BeamAllowed, "beam allowed", "now"},
    {EventKind::SheetCountReached, "sheet count reached", ""},
};

}  // namespace

std::string EventText(const MachineEvent& event) {
  for (const auto& row : EventRows) {
    if (row.Kind != event.Kind) continue;
    std::string text(row.Text);
    if (!row.ValueLabel.empty()) {
      text.append(": ").append(row.ValueLabel).append(" ").append(std::to_string(event.Value));
    }
    if (!row.AmountLabel.empty()) {
      text.append(row.AmountLabel).append(core::NumberText(event.Amount, 2));
    }
    return text;
  }
  return "event " + std::to_string(static_cast<int>(event.Kind));
}

}  // namespace torvane::simulator

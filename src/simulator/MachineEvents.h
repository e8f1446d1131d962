// What the simulated machine tells whoever watches it, and how it is set up.
#pragma once

#include <functional>
#include <limits>
#include <string>
#include <string_view>

namespace torvane::platform {
class FileSystem;
}

namespace torvane::simulator {

enum class EventKind {
  FrontEndUp,
  CycleStarted,   ///< Value: slot
  CycleFinished,  ///< Value: sheets completed
  CycleStopped,   ///< Value: table line reached
  Held,
  Released,
  StopPointSet,      ///< Value: record
  StopPointReached,  ///< Value: record
  StopPointMissed,   ///< Value: record that the cycle did not come to
  PowerCycled,
  ProgramStop,      ///< Value: table line
  WaitingForTable,  ///< Value: last line received
  TableArrived,     ///< Value: next line
  TableIncomplete,  ///< Value: line that is missing
  PathRefused,      ///< Value: line whose row and record disagree; the rows alone are followed
  PathMissing,      ///< the slot's records cannot be read; the rows alone are followed
  RestartWaiting,
  RestartStarted,
  RestartContinues,  ///< Value: table line
  RestartUnknown,
  ActionStarted,  ///< Value: command word
  ActionDone,     ///< Value: command word
  ActionRefused,  ///< Value: command word
  StartRefused,   ///< cycle start during an error, a hold or an action
  TableGone,      ///< cycle start where the table does not hold the first line
  ErrorRaised,    ///< Value: code
  BitRaised,      ///< Value: bit
  MessagesCleared,
  RollersOn,
  RollersOff,     ///< they are down, and the bit of the status word is cleared
  RollersSpoilt,  ///< 32 was taken from the messages though the bit was off
  JogWord,        ///< Value: command word, each time that one comes, repeats too
  JogStopWord,    ///< VR(48)=0 came, whether or not a jog was under way
  JogEnded,       ///< Value: command word; Amount: travel, mm
  JogUnwatched,   ///< a jog goes on though no line has come for a while
  ReferenceFailed,
  ChangedByItself,  ///< Value: variable; Amount: what it holds now
  OutputSet,        ///< Value: output
  BeamAllowed,      ///< Value: 1 or 0
  SheetCountReached
};

struct MachineEvent {
  EventKind Kind = EventKind::Held;
  int Value = 0;
  double Amount = 0;
};

/// One line for a person, without an end.
[[nodiscard]] std::string EventText(const MachineEvent& event);

using EventListener = std::function<void(const MachineEvent&)>;

/// Rates mm per minute, times s, lengths mm.
struct MachineOptions {
  double RapidRate = 30000;
  double DefaultFeed = 1000;  ///< where the program gave no feed
  double ReferenceRate = 6000;
  double SearchSeconds = 1;  ///< on the reference switch of one axis
  double ClampSeconds = 1;
  double RepositionSeconds = 3;  ///< also for whatever else the rows do not give
  double RefusalSeconds = 5;     ///< how long the message of a refusal lasts
  double RollerSeconds = 0.5;    ///< the rollers take to come down
  double LampSeconds = 0.5;      ///< half a blink of the cycle start lamp
  double ServoLag = 0.0005;      ///< following error per speed, s
  /// Jogs end here.
  double TravelMinX = -std::numeric_limits<float>::max();
  double TravelMaxX = std::numeric_limits<float>::max();
  double TravelMinY = -std::numeric_limits<float>::max();
  double TravelMaxY = std::numeric_limits<float>::max();
  /// Directory of the slots' files, ending in a separator; empty: the machine moves by the rows.
  std::string RootDirectory;
  const platform::FileSystem* Files = nullptr;
};

}  // namespace torvane::simulator

// Every record that the whole program shares, owned by main and passed down.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/ActiveProgram.h"
#include "core/ColourTable.h"
#include "core/DirectorySet.h"
#include "core/LinkSettings.h"
#include "core/MachineData.h"
#include "core/MachineState.h"
#include "core/PlotSettings.h"
#include "core/Slot.h"
#include "core/TransferSettings.h"

namespace torvane::core {

/// IO.msg by code 1 to 64, Logic.msg by bit 0 to 31.
struct MessageTables {
  std::array<std::string, 65> IoMessages;
  std::array<std::string, 32> LogicMessages;
};

/// State of the console that more than one screen reads.
struct ConsoleState {
  std::string CurrentForm;  ///< the screen on top; empty when the main screen alone shows
  bool FormsLocked = false;
  bool PlotKeysActive = false;
  std::int16_t PlotKeyMode = 0;  ///< 0 none, 1 and 2 zoom corners, 4 pan, 5 to 8 visual restart
  bool NewProgramsReceived = false;
  bool BatchEditing = false;  ///< BatchForm takes new values: its boxes are left alone
};

/// A procedure takes the narrowest record of these that serves it.
struct System {
  DirectorySet Directories;
  MachineData Machine;
  StationTable Stations;
  Station ActiveStation;
  LaserNameList LaserNames;
  LinkSettings Link;
  TransferSettings Comms;
  TransferState Transfer;
  MachineState State;
  MessageTables Messages;
  ColourTable Colours;
  PlotSettings Plot;
  BySlot<PlotView> Views;
  BySlot<ActiveProgram> Programs;
  Slot ActiveSlot;
  std::int16_t TableSent = 0;  ///< table records of the active slot that have gone out
  ConsoleState Console;
  bool ImperialUnits = false;
  bool ShuttingDown = false;
  bool SplashDone = false;

  [[nodiscard]] ActiveProgram& Active() { return Programs[ActiveSlot]; }
};

}  // namespace torvane::core

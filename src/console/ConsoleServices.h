// What the screens work with: the parts of the floors below, handed to each screen in one record.
#pragma once

#include <functional>

#include "core/System.h"
#include "platform/Clock.h"
#include "platform/Drives.h"
#include "platform/FileSystem.h"

namespace torvane::files {
class CommsModule;
struct FileParts;
}  // namespace torvane::files

namespace torvane::link {
class Downloads;
class JogLine;
class OperatorDialogs;
class Trio;
}  // namespace torvane::link

namespace torvane::partprogram {
struct SplitCycle;
}  // namespace torvane::partprogram

namespace torvane::restart {
class BlockRestart;
class VisualRestart;
struct RestartStates;
}  // namespace torvane::restart

namespace torvane::supervision {
class MessageList;
class Poll;
class ProgramEntries;
class ProgramSelection;
class WarningBox;
}  // namespace torvane::supervision

namespace torvane::console {

class FrontEndActions;
struct FileTasks;
class Pads;

/// The ways out, given by the program that owns the console. Both return after everything is
/// closed; the process ends from the loop.
struct ConsoleExits {
  std::function<void()> ShutdownSystem;
  std::function<void()> ShutdownToService;
};

/// All of it outlives the screens. A screen includes the headers of those that it uses.
struct ConsoleServices {
  core::System& System;
  platform::FileSystem& Files;
  const platform::Drives& Drives;
  const platform::Clock& Clock;
  link::Trio& Trio;
  link::Downloads& Downloads;
  link::JogLine& Jog;
  supervision::Poll& Poll;
  link::OperatorDialogs& Dialogs;
  supervision::WarningBox& Warning;
  supervision::MessageList& Messages;
  supervision::ProgramEntries& Entries;
  supervision::ProgramSelection& Selection;
  restart::BlockRestart& Blocks;
  restart::VisualRestart& Visual;
  restart::RestartStates& RestartPoint;
  partprogram::SplitCycle& Split;
  Pads& EntryPads;
  FrontEndActions& MainActions;
  const ConsoleExits& Exits;
  files::CommsModule& Comms;
  const files::FileParts& FileWork;
  FileTasks& Tasks;
};

}  // namespace torvane::console

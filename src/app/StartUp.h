// From process entry to the main screen.
#pragma once

#include "app/StartScreens.h"
#include "core/System.h"
#include "files/CommsModule.h"
#include "link/Downloads.h"
#include "link/Trio.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "supervision/ActiveStore.h"

namespace torvane::app {

/// Shortest time for which the splash screen shows, ms.
inline constexpr int SplashMs = 4000;

struct StartUpParts {
  core::System& System;
  platform::EventLoop& Loop;
  platform::FileSystem& Files;
  link::Trio& Trio;
  link::Downloads& Downloads;
  supervision::ActiveStore& Store;
  files::CommsModule& Comms;
  StartScreens& Screens;
};

/// Runs once. Reads every configuration file, opens the controller link, sends the parameters,
/// rebuilds the two programs and shows the main screen, in a fixed order: each stage needs the one
/// before, and the controller sees its parameters before anything reads a variable. Without the
/// link, or after a failed opening, every later stage still runs.
/// False when the program was shut down meanwhile, by the answer to a failure of the link: the main
/// screen has not been shown then. A required file that is missing or damaged is a RuntimeFault.
bool StartUp(const StartUpParts& parts);

}  // namespace torvane::app

// From the shutdown question, or a failure of the link, back to the operating system.
#pragma once

#include <string>

#include "app/StartScreens.h"
#include "core/System.h"
#include "files/CommsModule.h"
#include "link/Trio.h"
#include "platform/FileSystem.h"
#include "platform/SessionEnd.h"
#include "supervision/PollTrio.h"

namespace torvane::app {

struct ShutdownParts {
  core::System& System;
  platform::FileSystem& Files;
  link::Trio& Trio;
  supervision::Poll& Poll;
  files::CommsModule& Comms;
  StartScreens& Screens;
  platform::SessionEnd& Session;
};

/// Ends the program in order, once: a second call, as from a failure of the link during the last
/// exchanges, does nothing. Both ways return after everything is closed; the process ends from the
/// loop. Plots hold no file open, so there is none to close.
class Shutdown {
 public:
  explicit Shutdown(const ShutdownParts& parts) : parts_(parts) {}

  /// `closeWindows` also ends the operating system's session.
  void ShutdownSystem(bool closeWindows);

  /// The operating system goes on, and the program of Service.cfg, if it names one, takes this
  /// one's place.
  void ShutdownToService();

 private:
  /// Batch counters read and saved, poll stopped, a send ended, both ports closed, main screen
  /// gone.
  void CloseAll();

  ShutdownParts parts_;
  bool ending_ = false;
};

}  // namespace torvane::app

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
///
/// While the main screen is not up yet, as in a start that is given up, no counters are read or
/// saved: the ones in memory are not those of the last session, which the file keeps.
class Shutdown {
 public:
  explicit Shutdown(const ShutdownParts& parts) : parts_(parts) {}

  /// `closeWindows` also ends the operating system's session.
  void ShutdownSystem(bool closeWindows);

  /// The operating system goes on, and the program of Service.cfg, if it names one, takes this
  /// one's place.
  void ShutdownToService();

  /// Ends the program without another exchange: the counters are saved as they were last read. For
  /// an end whose last exchanges hang on a dead line; does nothing once everything is closed.
  void EndAtOnce();

 private:
  /// False when an end is under way already.
  [[nodiscard]] bool Begin();
  /// Batch counters read one last time, then Close. False when EndAtOnce has overtaken it.
  [[nodiscard]] bool CloseAll();
  /// Batch counters saved, the poll's observers told, poll stopped, a send ended, both ports
  /// closed, main screen gone.
  void Close();

  ShutdownParts parts_;
  bool ending_ = false;
  bool closed_ = false;
};

}  // namespace torvane::app

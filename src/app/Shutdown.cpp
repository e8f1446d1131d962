#include "app/Shutdown.h"

#include <utility>

#include "core/SettingsModule.h"
#include "core/SlotFiles.h"

namespace torvane::app {

void Shutdown::ShutdownSystem(bool closeWindows) {
  if (!Begin() || !CloseAll()) return;
  if (closeWindows) parts_.Session.EndSession();
  parts_.Session.EndProcess();
}

void Shutdown::ShutdownToService() {
  if (!Begin()) return;
  const std::string program = core::LoadServiceProgram(parts_.Files, parts_.System.Directories);
  if (!CloseAll()) return;
  if (!program.empty()) parts_.Session.StartProgram(program);
  parts_.Session.EndProcess();
}

void Shutdown::EndAtOnce() {
  if (closed_) return;
  ending_ = true;
  Close();
  parts_.Session.EndProcess();
}

bool Shutdown::Begin() { return !std::exchange(ending_, true); }

bool Shutdown::CloseAll() {
  parts_.Trio.BeginEnd();
  if (parts_.Screens.FrontEndVisible()) parts_.Poll.RefreshBatch(link::Asker::End);
  if (closed_) return false;
  Close();
  return true;
}

void Shutdown::Close() {
  closed_ = true;
  auto& system = parts_.System;
  const bool running = parts_.Screens.FrontEndVisible();
  if (running) {
    core::SaveBatch(parts_.Files, system.Directories, system.ActiveSlot,
                    system.Active().BatchCounters);
  }
  parts_.Poll.TellEnd();
  system.ShuttingDown = true;
  parts_.Trio.StopPolling(true);
  parts_.Comms.Close();
  parts_.Trio.CloseTrioPort();
  if (running) parts_.Screens.UnloadFrontEnd();
}

}  // namespace torvane::app

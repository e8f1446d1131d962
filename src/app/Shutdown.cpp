#include "app/Shutdown.h"

#include "core/SettingsModule.h"
#include "core/SlotFiles.h"

namespace torvane::app {

void Shutdown::ShutdownSystem(bool closeWindows) {
  if (ending_) return;
  ending_ = true;
  CloseAll();
  if (closeWindows) parts_.Session.EndSession();
  parts_.Session.EndProcess();
}

void Shutdown::ShutdownToService() {
  if (ending_) return;
  ending_ = true;
  const std::string program = core::LoadServiceProgram(parts_.Files, parts_.System.Directories);
  CloseAll();
  if (!program.empty()) parts_.Session.StartProgram(program);
  parts_.Session.EndProcess();
}

void Shutdown::CloseAll() {
  auto& system = parts_.System;
  parts_.Poll.RefreshBatch();
  core::SaveBatch(parts_.Files, system.Directories, system.ActiveSlot,
                  system.Active().BatchCounters);
  system.ShuttingDown = true;
  parts_.Trio.StopPolling(true);
  parts_.Comms.Close();
  parts_.Trio.CloseTrioPort();
  if (parts_.Screens.FrontEndVisible()) parts_.Screens.UnloadFrontEnd();
}

}  // namespace torvane::app

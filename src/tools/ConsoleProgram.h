// The console as a program: its parts made, its start, its end.
#pragma once

#include <memory>
#include <string>

#include "app/Installation.h"
#include "app/Shutdown.h"
#include "app/StartUp.h"
#include "console/Console.h"
#include "core/System.h"
#include "files/CommsModule.h"
#include "platform/Clock.h"
#include "platform/DiskFileSystem.h"
#include "simulator/StorageFaults.h"
#include "toolkit/Desk.h"
#include "toolkit/EndSignals.h"
#include "toolkit/QtDrives.h"
#include "toolkit/QtLoop.h"
#include "toolkit/QtSerialPort.h"
#include "toolkit/QtSessionEnd.h"
#include "tools/ConsoleStart.h"
#include "tools/Monitoring.h"
#include "tools/ScriptStage.h"
#include "tools/SentLines.h"
#include "tools/SimulatedMachine.h"
#include "tools/SimulatedOffice.h"
#include "tools/SimulatorPanel.h"
#include "tools/TorvaneOptions.h"

namespace torvane::tools {

/// Needs an application object. Holds the installation for its life: a second one on it is a
/// RuntimeFault of the constructor. Faults of required files come out of Run.
class ConsoleProgram final : private ConsoleStart {
 public:
  explicit ConsoleProgram(const TorvaneOptions& options);
  ~ConsoleProgram() override;

  /// Starts, runs to the end of the program and gives its exit status.
  int Run();

  /// The exit status when the program ends by itself.
  void SetStatus(int status) { status_ = status; }
  /// As the operator's &OK on the shutdown question.
  void ShutDown();
  /// Without another exchange, where the last ones hang on a line that is dead.
  void EndAtOnce() { shutdown_.EndAtOnce(); }

  /// What a script of keys works on.
  [[nodiscard]] ScriptStage Stage();

  [[nodiscard]] toolkit::QtLoop& Loop() { return loop_; }
  [[nodiscard]] toolkit::Desk& Desk() { return desk_; }
  [[nodiscard]] core::System& System() { return system_; }
  [[nodiscard]] console::Console& Console() { return console_; }
  /// Null without --simulate.
  [[nodiscard]] SimulatedMachine* Machine() { return machine_.get(); }
  /// Null without --simulate.
  [[nodiscard]] SimulatedOffice* Office() { return office_.get(); }
  [[nodiscard]] files::CommsModule& Comms() { return comms_; }
  /// The files as the console has them: with what the simulated machine's panel lets fail.
  [[nodiscard]] platform::FileSystem& Files();
  /// The machine's panel; null without --simulate, before the console shows, and off screen unless
  /// it was asked for.
  [[nodiscard]] SimulatorPanel* Panel() { return panel_.get(); }

 private:
  // app::StartScreens
  void ShowSplash() override;
  void ShowFrontEnd() override;
  void SystemMessageBox(std::string_view title, std::string_view text) override;

  [[nodiscard]] platform::SerialPort& MachinePort();
  [[nodiscard]] platform::SerialPort& TransferPort();
  /// The drives as the console has them.
  [[nodiscard]] const platform::Drives& Drives();
  void ShowPanel();
  void SignalCame();

  TorvaneOptions options_;
  toolkit::QtLoop loop_;
  platform::DiskFileSystem files_;
  app::HeldInstallation held_;
  platform::SystemClock clock_;
  toolkit::QtDrives drives_;
  core::System system_;
  std::unique_ptr<SimulatedMachine> machine_;
  /// With a simulated machine its panel can make the disks fail; null without.
  std::unique_ptr<simulator::FaultyFiles> faultyFiles_;
  std::unique_ptr<simulator::FaultyDrives> faultyDrives_;
  std::unique_ptr<toolkit::QtSerialPort> serial_;
  SentLines port_;
  std::unique_ptr<SimulatedOffice> office_;
  std::unique_ptr<toolkit::QtSerialPort> transferSerial_;
  files::CommsModule comms_;
  toolkit::QtSessionEnd session_;
  toolkit::Desk desk_;
  std::unique_ptr<Monitoring> monitoring_;  ///< null without --monitor; outlives the poll
  console::Console console_;
  app::Shutdown shutdown_;
  std::unique_ptr<SimulatorPanel> panel_;
  std::unique_ptr<platform::Timer> signalPatience_;
  toolkit::EndSignals signals_;
  int status_ = 0;
};

}  // namespace torvane::tools

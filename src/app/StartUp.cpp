#include "app/StartUp.h"

#include <array>
#include <memory>

#include "core/Directories.h"
#include "core/General.h"
#include "core/SettingsModule.h"
#include "link/Variables.h"

namespace torvane::app {

namespace {

namespace Variable = link::Variable;

/// The stages of the start, each a line of Stages.
class Starting {
 public:
  explicit Starting(const StartUpParts& parts)
      : parts_(parts),
        system_(parts.System),
        splashTimer_(parts.Loop.MakeTimer([this] { system_.SplashDone = true; })) {}

  bool Run() {
    for (const auto stage : Stages) {
      (this->*stage)();
      if (system_.ShuttingDown) return false;
    }
    return true;
  }

 private:
  using Stage = void (Starting::*)();

  void ClearEndFlags() {
    system_.ShuttingDown = false;
    system_.Link.PollingWanted = false;
  }

  /// LastFile.txt has a place from here on.
  void MakeServiceDirectory() {
    if (!parts_.Files.DirectoryExists("Service")) parts_.Files.MakeDirectory("Service");
    system_.Directories.ServiceDirectory = "Service\\";
  }

  /// The root is not known yet: the file is that of the working directory.
  void ReadColours() { core::LoadColours(parts_.Files, system_.Directories, system_.Colours); }

  void ShowSplash() {
    system_.SplashDone = false;
    parts_.Screens.ShowSplash();
    splashTimer_->Start(SplashMs);
  }

  void ResetFlags() {
    system_.Link.ReportCommsErrors = true;
    system_.Console.FormsLocked = false;
    system_.Console.CurrentForm.clear();
    system_.State.BeamOn = false;
    system_.State.BeamWasOn = false;
    system_.ImperialUnits = false;
  }

  void ReadDirectories() {
    core::LoadDirectories(parts_.Files, system_.Directories, system_.ActiveSlot);
  }

  void ReadMachine() { core::LoadMachineData(parts_.Files, system_); }

  void ReadMessages() {
    core::LoadMessageTables(parts_.Files, system_.Directories, system_.Messages);
  }

  void ReadLinkOptions() {
    core::LoadLinkOptions(parts_.Files, system_.Directories, system_.Link.TrioLinkEnabled,
                          system_.Link.PollLogEnabled, system_.Link);
  }

  void ReadPort() {
    core::LoadPortSettings(parts_.Files, system_.Directories, system_.Link.TrioLinkEnabled,
                           system_.Link);
  }

  void OpenLink() {
    bool& enabled = system_.Link.TrioLinkEnabled;
    if (!enabled) return;
    parts_.Trio.CloseTrioPort();
    parts_.Trio.OpenTrioPort(enabled);
    if (!enabled) parts_.Screens.SystemMessageBox("Torvane 32", "Initialisation Failure !");
  }

  /// One file and no other: an installation has its parameters in one.
  void SendParameters() {
    const std::string& directory = system_.Directories.DataDirectory;
    const auto names = parts_.Files.ListFiles(directory + "*.prm");
    if (!names.empty()) parts_.Downloads.DownParameters(directory, names.front());
  }

  void ReadScale() {
    auto& state = system_.State;
    const float scale = parts_.Trio.GetRspnsSngl(Variable::PositionDivisor, 3);
    state.XScale = scale == 0 ? 1 : scale;
    state.YScale = state.XScale;
    state.ZScale = 1;
  }

  /// In place of what Machine.dat gave.
  void ReadLoadPosition() {
    system_.Machine.LoadPositionX = parts_.Trio.GetRspnsSngl(Variable::LoadPositionAX);
    system_.Machine.LoadPositionY = parts_.Trio.GetRspnsSngl(Variable::LoadPositionAY);
  }

  void ReadPlotConfig() { parts_.Screens.LoadPlotConfig(); }

  void LoadPrograms() { parts_.Store.LoadActivePrograms(); }

  void WriteControlFile() {
    core::SaveControlFile(parts_.Files, system_.Directories, system_.ActiveSlot);
  }

  /// The store has sent it; it is sent again.
  void SendActiveSlot() {
    parts_.Trio.Download(
        link::Assignment(Variable::TableInForce, core::IntegerText(system_.ActiveSlot.Number())));
  }

  void ReadTransferPort() { parts_.Comms.LoadSettings(); }

  void OpenTransferPort() { parts_.Comms.SetUpReceiver(); }

  void WaitForSplash() {
    parts_.Loop.WaitUntil([this] { return system_.SplashDone || system_.ShuttingDown; });
  }

  /// The controller's program learns that the front end is up.
  void TellController() { parts_.Trio.Download(link::CommandLine::FrontEndUp); }

  void ShowMainScreen() {
    splashTimer_->Stop();
    parts_.Screens.ShowFrontEnd();
  }

  static constexpr std::array<Stage, 23> Stages = {
      &Starting::ClearEndFlags,    &Starting::MakeServiceDirectory,
      &Starting::ReadColours,      &Starting::ShowSplash,
      &Starting::ResetFlags,       &Starting::ReadDirectories,
      &Starting::ReadMachine,      &Starting::ReadMessages,
      &Starting::ReadLinkOptions,  &Starting::ReadPort,
      &Starting::OpenLink,         &Starting::SendParameters,
      &Starting::ReadScale,        &Starting::ReadLoadPosition,
      &Starting::ReadPlotConfig,   &Starting::LoadPrograms,
      &Starting::WriteControlFile, &Starting::SendActiveSlot,
      &Starting::ReadTransferPort, &Starting::OpenTransferPort,
      &Starting::WaitForSplash,    &Starting::TellController,
      &Starting::ShowMainScreen,
  };

  const StartUpParts& parts_;
  core::System& system_;
  std::unique_ptr<platform::Timer> splashTimer_;
};

}  // namespace

bool StartUp(const StartUpParts& parts) { return Starting(parts).Run(); }

}  // namespace torvane::app

// The console off screen on virtual time, worked by keys, for pictures of its screens.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/Shutdown.h"
#include "console/Console.h"
#include "core/System.h"
#include "platform/Clock.h"
#include "platform/DiskFileSystem.h"
#include "platform/Drives.h"
#include "platform/SessionEnd.h"
#include "platform/VirtualLoop.h"
#include "toolkit/Desk.h"
#include "tools/ConsoleStart.h"
#include "tools/SimulatedMachine.h"
#include "tools/SimulatedOffice.h"
#include "tools/TorvaneOptions.h"

namespace torvane::tools {

/// Where the pictures go, and how many of them.
struct PictureOptions {
  std::string Folder;       ///< native path, must exist
  WindowSize Size;          ///< of the console
  bool EveryState = false;  ///< also the states of a screen that the manual does not show
};

/// The same keys give the same pictures, whatever the machine that makes them: time is virtual and
/// the clock stands still.
class PictureStage : private ConsoleStart {
 public:
  /// `installation` is the native path of a folder that may be written to.
  PictureStage(const std::string& installation, PictureOptions options);
  ~PictureStage() override;

  /// From the splash screen to the main screen.
  void Start();

  // ---- the operator's hands ----
  void Type(toolkit::Key key) { desk_.TypeKey(toolkit::KeyStroke(key)); }
  void TypeText(std::string_view text);
  void RunFor(int ms);
  /// Does `job` as soon as a modal screen shows. Told before the key that opens the screen, because
  /// that key returns only when the screen has gone. Throws when it never shows.
  void WhenShows(const std::string& screen, std::function<void()> job);
  /// Selects a program and closes the information screen that opens on it.
  void Select(const std::string& directory, const std::string& program);

  /// "<Screen>-<WxH>.png", or "<Screen>-<state>-<WxH>.png" when every state is wanted, or the
  /// manual shows that state. Throws RuntimeFault when the picture cannot be written.
  void Snap(const std::string& screen, const std::string& state = {});
  void Snap(toolkit::Desk& desk, const std::string& screen, const std::string& state);

  [[nodiscard]] console::Console& Console() { return console_; }
  [[nodiscard]] console::ScreenSet& Screens() { return console_.Screens().Set(); }
  [[nodiscard]] simulator::SimulatedController& Controller() { return machine_.Controller(); }
  [[nodiscard]] SimulatedOffice& Office() { return office_; }
  [[nodiscard]] toolkit::Desk& Desk() { return desk_; }
  [[nodiscard]] platform::VirtualLoop& Loop() { return loop_; }
  [[nodiscard]] const core::System& System() const { return system_; }

 private:
  /// A console that is only looked at has no drives and ends nothing.
  class NoDrives final : public platform::Drives {
    [[nodiscard]] std::vector<std::string> List() const override { return {}; }
    [[nodiscard]] bool Ready(std::string_view) const override { return false; }
  };
  class NoEnd final : public platform::SessionEnd {
    void EndSession() override {}
    void StartProgram(std::string_view) override {}
    void EndProcess() override {}
  };

  // app::StartScreens
  void ShowSplash() override;
  void SystemMessageBox(std::string_view title, std::string_view text) override;

  void Await(const std::string& screen, int patienceMs, std::function<void()> job);

  PictureOptions options_;
  platform::VirtualLoop loop_;
  platform::DiskFileSystem files_;
  platform::FixedClock clock_;
  NoDrives drives_;
  NoEnd end_;
  core::System system_;
  SimulatedMachine machine_;
  SimulatedOffice office_;
  files::CommsModule comms_;
  toolkit::Desk desk_;
  console::Console console_;
  app::Shutdown shutdown_;
};

}  // namespace torvane::tools

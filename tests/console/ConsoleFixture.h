// The whole console off screen on virtual time, with a simulated machine and a copy of the example
// installation: worked by keys alone, as the operator works it.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/Shutdown.h"
#include "app/StartUp.h"
#include "console/Console.h"
#include "core/System.h"
#include "platform/Clock.h"
#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "platform/SessionEnd.h"
#include "platform/VirtualLoop.h"
#include "simulator/SimulatedController.h"
#include "simulator/SimulatedPort.h"
#include "support/LooseDrives.h"
#include "support/QtEnvironment.h"
#include "support/SourceTree.h"
#include "support/TempDirectory.h"
#include "toolkit/Desk.h"
#include "tools/ConsoleStart.h"
#include "tools/SimulatedOffice.h"

namespace torvane::tests {

/// Writes down how the program would have ended.
class RecordedEnd final : public platform::SessionEnd {
 public:
  void EndSession() override { Events.emplace_back("end session"); }
  void StartProgram(std::string_view path) override {
    Events.push_back("start " + std::string(path));
  }
  void EndProcess() override { Events.emplace_back("end process"); }

  std::vector<std::string> Events;
};

/// A machine and the installation in front of it: what stays when a console ends.
struct Plant {
  Plant() {
    std::filesystem::copy(torvane::tests::SourceTree() / "examples" / "installation",
                          Directory.Path(), std::filesystem::copy_options::recursive);
    simulator::ControllerOptions options;
    options.Machine.RootDirectory = ".\\";
    options.Machine.Files = &Files;
    Controller = std::make_unique<simulator::SimulatedController>(options);
  }

  tests::TempDirectory Directory;
  platform::DiskFileSystem Files{Directory.Path()};
  std::unique_ptr<simulator::SimulatedController> Controller;
  /// What stands at the end of the line in place of the machine; null: the machine.
  simulator::ControllerEnd* Answers = nullptr;
};

/// One console from its start to its end. Several may follow each other on one plant; destroyed
/// without its shutdown it is a console that was killed.
class ConsoleSession : private tools::ConsoleStart {
 public:
  /// `wire` says what the line to the controller costs; by default nothing.
  explicit ConsoleSession(simulator::PortOptions wire = {})
      : ConsoleSession(std::make_shared<Plant>(), wire) {}
  explicit ConsoleSession(std::shared_ptr<Plant> plant, simulator::PortOptions wire = {})
      : ThePlant(std::move(plant)) {
    Controller->OnLine([this](std::string_view line) { Lines.emplace_back(line); });
    simulator::ControllerEnd* end = ThePlant->Answers;
    if (end == nullptr) end = Controller;
    Port = std::make_unique<simulator::SimulatedPort>(Loop, *end, wire);
    Desk = std::make_unique<toolkit::Desk>(Loop);
    Office = std::make_unique<tools::SimulatedOffice>(Loop, *Files);
    Comms = std::make_unique<files::CommsModule>(System, Loop, *Files, Office->Port());
    TheConsole = std::make_unique<console::Console>(
        console::ConsoleParts{System, *Files, *Port, Clock, Drives, *Desk, *Comms});
    Serve(*TheConsole);
    End = std::make_unique<app::Shutdown>(app::ShutdownParts{
        System, *Files, TheConsole->Trio(), TheConsole->Poll(), *Comms, *this, Session});
    TheConsole->SetExits(
        {[this] { End->ShutdownSystem(true); }, [this] { End->ShutdownToService(); }});
  }
  ~ConsoleSession() override {
    System.ShuttingDown = true;
    Controller->OnLine({});
  }
  ConsoleSession(const ConsoleSession&) = delete;
  ConsoleSession& operator=(const ConsoleSession&) = delete;

  /// The whole start-up: behind it the main screen shows and the poll runs.
  void Start(bool forgetLines = true) {
    app::StartUp({System, Loop, *Files, TheConsole->Trio(), TheConsole->Downloads(),
                  TheConsole->Store(), *Comms, *this});
    Loop.RunFor(200);
    if (forgetLines) Lines.clear();
  }

  // ---- the operator's hands ----
  void Type(toolkit::Key key) { Desk->TypeKey(toolkit::KeyStroke(key)); }
  /// Function key 1 to 12.
  void TypeF(int number) {
    Type(static_cast<toolkit::Key>(static_cast<int>(toolkit::Key::F1) + number - 1));
  }
  /// Each character as a key of its own.
  void TypeText(std::string_view text) {
    for (const char character : text) Desk->TypeKey(toolkit::KeyStroke(character));
  }
  /// What happens while a modal screen stands: jobs run 10 ms apart, from the loop, in the order of
  /// these calls. Call it before the key that opens the screen; that key returns when the screen
  /// has gone.
  void Then(std::function<void()> job) {
    soonMs_ = std::max(soonMs_, Loop.NowMs()) + 10;
    Loop.After(soonMs_ - Loop.NowMs(), std::move(job));
  }
  void ThenType(toolkit::Key key) {
    Then([this, key] { Type(key); });
  }
  void ThenTypeText(std::string text) {
    Then([this, text = std::move(text)] { TypeText(text); });
  }

  /// Runs `act`, which brings up one warning, and answers that with a key. What the warning said.
  std::string Answered(toolkit::Key key, const std::function<void()>& act) {
    auto text = std::make_shared<std::string>("(nothing happened)");
    Then([this, text, key] {
      *text = Warning();
      Type(key);
    });
    act();
    return *text;
  }
  /// A program of the directory SHOP into the slot in force, without its screens.
  void Select(const std::string& program) {
    ASSERT_TRUE(TheConsole->Selection().SelectProgram("SHOP", program));
    Screens().Unload("SetupForm");
    RunFor(200);
    Lines.clear();
  }
  /// A variable of the controller, as its own program would set it.
  void SetVariable(int number, double value) { Controller->Memory().SetVariable(number, value); }

  // ---- what the operator sees ----
  [[nodiscard]] bool Shows(const std::string& screen) { return Screens().Visible(screen); }
  /// The control of a screen that shows; null when there is none.
  template <class Kind>
  [[nodiscard]] Kind* Control(const std::string& screen, const std::string& name) {
    console::Screen* found = Screens().Find(screen);
    return found == nullptr ? nullptr : dynamic_cast<Kind*>(found->Window().Find(name));
  }
  [[nodiscard]] std::string LabelText(const std::string& screen, const std::string& name) {
    auto* label = Control<toolkit::Label>(screen, name);
    return label == nullptr ? "(no such label)" : label->Text();
  }
  [[nodiscard]] std::string Caption(const std::string& screen, const std::string& name) {
    auto* button = Control<toolkit::Button>(screen, name);
    return button == nullptr ? "(no such button)" : button->Caption();
  }
  [[nodiscard]] bool Down(const std::string& screen, const std::string& name) {
    auto* button = Control<toolkit::TwoStateButton>(screen, name);
    return button != nullptr && button->Down();
  }
  /// The control of a screen that has the focus.
  [[nodiscard]] std::string Focus(const std::string& screen) {
    console::Screen* found = Screens().Find(screen);
    if (found == nullptr || found->Window().Focused() == nullptr) return "(none)";
    return found->Window().Focused()->Name();
  }
  /// The screen that gets the keys.
  [[nodiscard]] std::string Front() {
    return Desk->ActiveForm() == nullptr ? "(none)" : Desk->ActiveForm()->Name();
  }
  [[nodiscard]] const std::string& CurrentForm() const { return System.Console.CurrentForm; }
  [[nodiscard]] std::string Warning() {
    return Shows("WarningForm") ? LabelText("WarningForm", "WarningLabel") : "(no warning)";
  }
  [[nodiscard]] console::ScreenSet& Screens() { return TheConsole->Screens().Set(); }
  [[nodiscard]] console::FrontEnd& Main() { return TheConsole->Screens().Main(); }
  [[nodiscard]] simulator::Machine& Machine() { return Controller->TheMachine(); }
  /// Lines that reached the controller since the last call, without the queries.
  [[nodiscard]] std::vector<std::string> TakeCommands() {
    std::vector<std::string> commands;
    for (const std::string& line : Lines) {
      if (!line.starts_with("? ") && !line.empty()) commands.push_back(line);
    }
    Lines.clear();
    return commands;
  }
  /// How often a line reached the controller since the last call of TakeCommands.
  [[nodiscard]] long Times(const std::string& line) const {
    return std::count(Lines.begin(), Lines.end(), line);
  }
  void RunFor(int ms) { Loop.RunFor(ms); }

  std::shared_ptr<Plant> ThePlant;
  tests::TempDirectory& Directory = ThePlant->Directory;
  platform::DiskFileSystem* Files = &ThePlant->Files;
  simulator::SimulatedController* Controller = ThePlant->Controller.get();
  platform::VirtualLoop Loop;
  platform::FixedClock Clock{{2026, 3, 4, 5, 6, 7}};
  tests::LooseDrives Drives;
  core::System System;
  RecordedEnd Session;
  std::vector<std::string> Lines;
  std::vector<std::string> SystemBoxes;
  std::unique_ptr<simulator::SimulatedPort> Port;
  std::unique_ptr<tools::SimulatedOffice> Office;
  std::unique_ptr<files::CommsModule> Comms;
  std::unique_ptr<toolkit::Desk> Desk;
  std::unique_ptr<console::Console> TheConsole;
  std::unique_ptr<app::Shutdown> End;

 private:
  // app::StartScreens, as far as they differ from one console to the next
  void ShowSplash() override {
    Desk->OpenWindow(1280, 1024);
    ShowSplashOnDesk();
  }
  void SystemMessageBox(std::string_view title, std::string_view text) override {
    SystemBoxes.push_back(std::string(title) + ": " + std::string(text));
  }

  std::int64_t soonMs_ = 0;
};

/// A test with one console on a plant of its own.
class ConsoleFixture : public ::testing::Test, protected ConsoleSession {
 protected:
  using ConsoleSession::ConsoleSession;
};

}  // namespace torvane::tests

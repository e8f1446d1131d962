#include "tools/ConsoleProgram.h"

#include <QGuiApplication>
#include <QMessageBox>

#include "console/FrontEndControls.h"
#include "toolkit/SystemBox.h"

namespace torvane::tools {

namespace {

std::unique_ptr<SimulatedMachine> MachineFor(const TorvaneOptions& options, toolkit::QtLoop& loop,
                                             const platform::FileSystem& files) {
  if (!options.Simulate) return nullptr;
  return std::make_unique<SimulatedMachine>(
      loop, files, SimulatedMachineOptions{options.Speed, options.Presets, options.Path});
}

/// How long the last exchanges may take when a signal ends the program, ms: the operating system
/// kills what has not ended some seconds after it was asked to.
constexpr int SignalPatienceMs = 3000;

/// Without a screen nobody could close a message box.
bool OperatorLooksOn() { return QGuiApplication::platformName() != "offscreen"; }

}  // namespace

ConsoleProgram::ConsoleProgram(const TorvaneOptions& options)
    : options_(options),
      files_(options.Root, options.Drives),
      held_(files_),
      drives_(options.Drives),
      machine_(MachineFor(options, loop_, files_)),
      faultyFiles_(machine_ ? std::make_unique<simulator::FaultyFiles>(
                                  files_, machine_->Controller().Storage())
                            : nullptr),
      faultyDrives_(machine_ ? std::make_unique<simulator::FaultyDrives>(
                                   drives_, machine_->Controller().Storage())
                             : nullptr),
      serial_(options.Simulate ? nullptr
                               : std::make_unique<toolkit::QtSerialPort>(loop_, options.Devices)),
      port_(MachinePort()),
      office_(options.Simulate ? std::make_unique<SimulatedOffice>(loop_, files_) : nullptr),
      transferSerial_(options.Simulate
                          ? nullptr
                          : std::make_unique<toolkit::QtSerialPort>(loop_, options.Devices)),
      comms_(system_, loop_, Files(), TransferPort()),
      session_(loop_, options.OwnsMachine,
               [this](std::string_view path) { return files_.NativePath(path); }),
      desk_(loop_),
      console_({system_, Files(), port_, clock_, Drives(), desk_, comms_}),
      shutdown_({system_, Files(), console_.Trio(), console_.Poll(), comms_, *this, session_}),
      signalPatience_(loop_.MakeTimer([this] { shutdown_.EndAtOnce(); })),
      signals_([this] { loop_.Post([this] { SignalCame(); }); }) {
  Serve(console_);
  console_.SetExits(
      {[this] { shutdown_.ShutdownSystem(true); }, [this] { shutdown_.ShutdownToService(); }});
  desk_.setWindowTitle(console::FrontEndCaption);
  if (options.Monitor) {
    monitoring_ = std::make_unique<Monitoring>(*options.Monitor, loop_, console_, system_);
  }
}

ConsoleProgram::~ConsoleProgram() = default;

platform::SerialPort& ConsoleProgram::MachinePort() {
  if (machine_) return machine_->Port();
  return *serial_;
}

platform::SerialPort& ConsoleProgram::TransferPort() {
  if (office_) return office_->Port();
  return *transferSerial_;
}

platform::FileSystem& ConsoleProgram::Files() {
  if (faultyFiles_) return *faultyFiles_;
  return files_;
}

const platform::Drives& ConsoleProgram::Drives() {
  if (faultyDrives_) return *faultyDrives_;
  return drives_;
}

int ConsoleProgram::Run() {
  loop_.Post([this] {
    app::StartUp({system_, loop_, Files(), console_.Trio(), console_.Downloads(), console_.Store(),
                  comms_, *this});
  });
  const int ended = loop_.Run();
  return status_ != 0 ? status_ : ended;
}

ScriptStage ConsoleProgram::Stage() {
  const auto desks = [this] {
    std::vector<toolkit::Desk*> all = {&desk_};
    if (panel_) all.push_back(&panel_->Desk());
    return all;
  };
  const auto shutDown = [this](int status) {
    if (status != 0) SetStatus(status);
    ShutDown();
  };
  return {loop_,
          system_,
          desks,
          port_,
          machine_ ? &machine_->Controller() : nullptr,
          shutDown,
          [this] { return console_.MarkedRecord(); },
          office_.get()};
}

void ConsoleProgram::ShutDown() { shutdown_.ShutdownSystem(true); }

/// As the shutdown, but a line that hangs does not hold it up. Asked twice, it ends at once.
void ConsoleProgram::SignalCame() {
  if (signalPatience_->Active()) return shutdown_.EndAtOnce();
  signalPatience_->Start(SignalPatienceMs);
  desk_.HandsOff();
  shutdown_.ShutdownSystem(false);
}

void ConsoleProgram::ShowSplash() {
  if (options_.Window) {
    desk_.OpenWindow(options_.Window->Width, options_.Window->Height);
  } else if (OperatorLooksOn()) {
    desk_.OpenFullScreen();
  } else {
    desk_.OpenWindow(WindowSize{}.Width, WindowSize{}.Height);
  }
  ShowSplashOnDesk();
  desk_.Refresh();
}

void ConsoleProgram::ShowFrontEnd() {
  // The machine's panel first: the main screen comes up in the room that it leaves.
  ShowPanel();
  ConsoleStart::ShowFrontEnd();
}

void ConsoleProgram::ShowPanel() {
  if (!machine_ || !(OperatorLooksOn() || options_.Panel)) return;
  panel_ = std::make_unique<SimulatorPanel>(loop_, machine_->Controller(), system_.Colours);
  panel_->DockAt(desk_);
}

void ConsoleProgram::SystemMessageBox(std::string_view title, std::string_view text) {
  if (!OperatorLooksOn()) {
    std::fprintf(stderr, "%.*s: %.*s\n", static_cast<int>(title.size()), title.data(),
                 static_cast<int>(text.size()), text.data());
    return;
  }
  QMessageBox box(
      QMessageBox::Warning, QString::fromLatin1(title.data(), static_cast<int>(title.size())),
      QString::fromLatin1(text.data(), static_cast<int>(text.size())), QMessageBox::Ok, &desk_);
  toolkit::PrepareForFingers(box);
  bool closed = false;
  QObject::connect(&box, &QMessageBox::finished, [&closed] { closed = true; });
  box.open();
  loop_.WaitUntil([&closed] { return closed; });
}

}  // namespace torvane::tools

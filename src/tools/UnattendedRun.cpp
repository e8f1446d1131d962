#include "tools/UnattendedRun.h"

#include <cstdio>
#include <filesystem>

#include <unistd.h>

#include "console/FrontEnd.h"
#include "console/WarningForm.h"
#include "core/General.h"
#include "core/ScreenNames.h"
#include "supervision/RunTime.h"
#include "toolkit/Label.h"

namespace torvane::tools {

namespace {

constexpr int LookMs = 50;
constexpr int StartWaitMs = 8000;
/// A tick comes twenty times a second; a console that has had none by now has no line that answers.
constexpr int FirstSightMs = 3000;
constexpr int StatusLineMs = 1000;
/// After so many dialogs &OK ends the console where it is the answer to a failure of the line: a
/// file of refused lines would otherwise ask for hours.
constexpr int MostDialogs = 20;
/// The last exchanges of a shutdown on a line that answers take a fraction of a second.
constexpr int ShutdownWaitMs = 30000;
/// The last tick of the poll reads the counters; the pictures come after it.
constexpr int SettleMs = 400;
/// Long enough for a piece of the trace to be seen.
constexpr int RunningPictureMs = 1500;

bool NamesPicture(const std::string& path) {
  return std::filesystem::path(path).extension() == ".png";
}

}  // namespace

UnattendedRun::UnattendedRun(ConsoleProgram& program, const TorvaneOptions& options)
    : program_(program), options_(options), timer_(program.Loop().MakeTimer([this] { Look(); })) {
  program_.Console().Poll().Observe(*this);
  timer_->Start(LookMs);
}

void UnattendedRun::Look() {
  if (program_.System().ShuttingDown) {
    timer_->Stop();
    return;
  }
  if (options_.ExitAfterRun) AnswerDialogs();
  switch (phase_) {
    case Phase::WaitingForMain:
      if (program_.Console().Screens().Set().Visible(core::ScreenNames::FrontEnd)) BeginSelection();
      return;
    case Phase::Selecting:
      return;
    case Phase::Selected:
      return Begin();
    case Phase::Starting:
      return WatchStart();
    case Phase::Running:
      return WatchRun();
    case Phase::Ending:
      return End();
    case Phase::ShuttingDown:
      if (program_.Loop().NowMs() - enteredMs_ > ShutdownWaitMs) GiveUp();
      return;
    case Phase::Idle:
      return;
  }
}

void UnattendedRun::Enter(Phase phase) {
  phase_ = phase;
  enteredMs_ = program_.Loop().NowMs();
}

void UnattendedRun::AnswerDialogs() {
  auto* warning = program_.Console().Screens().Set().Find(core::ScreenNames::WarningForm);
  if (warning == nullptr || !warning->Visible()) return;
  if (auto* label = dynamic_cast<toolkit::Label*>(warning->Window().Find("WarningLabel"))) {
    std::fprintf(stderr, "%s\n", std::string(core::Trim(label->Text())).c_str());
  }
  program_.SetStatus(RunStatus::Refused);
  const bool endless = ++dialogs_ > MostDialogs;
  if (dialogs_ == 1 || endless) NameLastFile();
  program_.Desk().TypeKey(toolkit::KeyStroke(endless ? toolkit::Key::O : toolkit::Key::C));
}

void UnattendedRun::NameLastFile() {
  const auto& system = program_.System();
  const std::string path = system.Directories.ServiceDirectory + "LastFile.txt";
  if (!program_.Files().FileExists(path)) return;
  const std::string name(core::Trim(program_.Files().ReadFile(path)));
  std::fprintf(stderr, "torvane: the last file was %s\n", name.c_str());
}

void UnattendedRun::BeginSelection() {
  TakePicture("main");
  Enter(Phase::Selecting);
  // An activity of its own: the dialogs of a refusal are answered by the looks that go on.
  program_.Loop().Start([this] { Select(); });
}

void UnattendedRun::Select() {
  if (!options_.SelectProgram.empty()) {
    const bool selected = program_.Console().Selection().SelectProgram(options_.SelectDirectory,
                                                                       options_.SelectProgram);
    if (!selected) {
      return Fail(RunStatus::Refused,
                  options_.SelectDirectory + "/" + options_.SelectProgram + " was not selected");
    }
    TakePicture("selected");
  }
  seen_ = false;
  Enter(Phase::Selected);
}

void UnattendedRun::TickRead(const supervision::TickReading& tick) {
  if (!tick.Blind) seen_ = true;
}

/// The console sees the machine stand before it starts, as it does before an operator's hand gets
/// to the key; with the link off it never does.
void UnattendedRun::Begin() {
  const bool patient =
      program_.System().Link.TrioLinkEnabled && program_.Loop().NowMs() - enteredMs_ < FirstSightMs;
  if (options_.Start && !seen_ && patient) return;
  if (options_.Start) PressStart();
  const bool nothingToDo =
      !options_.Start && options_.ExitAfterRun && options_.SelectProgram.empty();
  Enter(nothingToDo ? Phase::Ending : Phase::Starting);
}

void UnattendedRun::PressStart() {
  // The information screen would hide the trace in the pictures.
  program_.Console().Screens().Set().Unload("SetupForm");
  program_.Machine()->Controller().TheMachine().CycleStart();
}

void UnattendedRun::WatchStart() {
  if (program_.System().State.MachineRunning) {
    ran_ = true;
    Enter(Phase::Running);
  } else if (options_.Start && program_.Loop().NowMs() - enteredMs_ > StartWaitMs) {
    const auto& program = program_.System().Active();
    Fail(RunStatus::NotStarted, "the machine did not take the cycle start of " +
                                    program.DirectoryName + "/" + program.ProgramName);
  }
}

void UnattendedRun::WatchRun() {
  const std::int64_t now = program_.Loop().NowMs();
  if (now - statusShownMs_ >= StatusLineMs) ShowStatusLine();
  if (pictures_ == 2 && now - enteredMs_ > RunningPictureMs) TakePicture("running");
  // A programmed stop waits for cycle start; nobody else is there to press it.
  if (program_.Machine() != nullptr && options_.Start &&
      program_.Machine()->Controller().TheMachine().AwaitingStart()) {
    program_.Machine()->Controller().TheMachine().CycleStart();
  }
  if (!program_.System().State.MachineRunning) Enter(Phase::Ending);
}

void UnattendedRun::End() {
  if (program_.Loop().NowMs() - enteredMs_ < SettleMs) return;
  if (ran_) {
    ShowStatusLine();
    std::printf("\n");
  }
  TakePicture("ended");
  if (NamesPicture(options_.Screenshot) && !program_.Desk().SavePicture(options_.Screenshot)) {
    std::fprintf(stderr, "%s: the picture can not be written\n", options_.Screenshot.c_str());
    program_.SetStatus(RunStatus::Refused);
  }
  if (!options_.ExitAfterRun) return Enter(Phase::Idle);
  Enter(Phase::ShuttingDown);
  // A job of its own: the dialogs of a line that dies now are answered by the next looks.
  program_.Loop().Post([this] { program_.ShutDown(); });
}

void UnattendedRun::GiveUp() {
  std::fprintf(stderr, "torvane: the line did not answer during the shutdown\n");
  program_.SetStatus(RunStatus::Refused);
  program_.EndAtOnce();
}

void UnattendedRun::Fail(int status, const std::string& sentence) {
  std::fprintf(stderr, "torvane: %s\n", sentence.c_str());
  program_.SetStatus(status);
  Enter(Phase::Ending);
}

void UnattendedRun::TakePicture(const std::string& moment) {
  ++pictures_;
  if (options_.Screenshot.empty() || NamesPicture(options_.Screenshot)) return;
  const std::string path =
      options_.Screenshot + "/" + std::to_string(pictures_) + "-" + moment + ".png";
  const auto save = [](toolkit::Desk& desk, const std::string& file) {
    if (!desk.SavePicture(file))
      std::fprintf(stderr, "%s: the picture can not be written\n", file.c_str());
  };
  save(program_.Desk(), path);
  if (program_.Panel() != nullptr)
    save(program_.Panel()->Desk(),
         options_.Screenshot + "/" + std::to_string(pictures_) + "-" + moment + "-panel.png");
}

void UnattendedRun::ShowStatusLine() {
  statusShownMs_ = program_.Loop().NowMs();
  const core::System& system = program_.System();
  const core::MachineState& state = system.State;
  const core::ActiveProgram& slot = program_.System().Active();
  const bool terminal = isatty(STDOUT_FILENO) != 0;
  std::printf("%s%s/%s  %s  line %d of %d  X %.1f  Y %.1f  F %.0f  %s  sheets %d%s",
              terminal ? "\r" : "", slot.DirectoryName.c_str(), slot.ProgramName.c_str(),
              state.MachineRunning ? (state.MachineFeedhold ? "held   " : "running") : "stopped",
              state.RunningBlock, slot.TableLines, static_cast<double>(state.XPosition),
              static_cast<double>(state.YPosition), static_cast<double>(state.FeedRate),
              supervision::RunTimeText(state.RunSeconds).c_str(),
              slot.BatchCounters.SheetsCompleted, terminal ? "   " : "\n");
  std::fflush(stdout);
}

}  // namespace torvane::tools

#include "tools/PictureStage.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

#include "app/StartUp.h"
#include "platform/RuntimeFault.h"

namespace torvane::tools {

namespace {

constexpr int LookMs = 10;
/// Longer than any screen takes to come, the dialog of a dead line included.
constexpr int PatienceMs = 60000;
constexpr double MachineSpeed = 1;
/// States of the main screen that the manual shows.
constexpr std::array<std::string_view, 2> StatesOfTheManual = {"graphics", "restart-split"};

bool InTheManual(std::string_view state) {
  return state.empty() || std::find(StatesOfTheManual.begin(), StatesOfTheManual.end(), state) !=
                              StatesOfTheManual.end();
}

}  // namespace

PictureStage::PictureStage(const std::string& installation, PictureOptions options)
    : options_(std::move(options)),
      files_(installation),
      clock_({2026, 3, 4, 5, 6, 7}),
      machine_(loop_, files_, {MachineSpeed, {}, {}}),
      office_(loop_, files_),
      comms_(system_, loop_, files_, office_.Port()),
      desk_(loop_),
      console_({system_, files_, machine_.Port(), clock_, drives_, desk_, comms_}),
      shutdown_({system_, files_, console_.Trio(), console_.Poll(), comms_, *this, end_}) {
  Serve(console_);
}

PictureStage::~PictureStage() { system_.ShuttingDown = true; }

void PictureStage::Start() {
  app::StartUp({system_, loop_, files_, console_.Trio(), console_.Downloads(), console_.Store(),
                comms_, *this});
  RunFor(500);
}

void PictureStage::TypeText(std::string_view text) {
  for (const char character : text) desk_.TypeKey(toolkit::KeyStroke(character));
}

void PictureStage::RunFor(int ms) {
  QCoreApplication::processEvents();
  loop_.RunFor(ms);
}

void PictureStage::WhenShows(const std::string& screen, std::function<void()> job) {
  Await(screen, PatienceMs, std::move(job));
}

void PictureStage::Await(const std::string& screen, int patienceMs, std::function<void()> job) {
  if (patienceMs < 0) throw platform::RuntimeFault(screen, "never came up");
  loop_.After(LookMs, [this, screen, patienceMs, job = std::move(job)] {
    if (!Screens().Visible(screen)) return Await(screen, patienceMs - LookMs, job);
    job();
  });
}

void PictureStage::Select(const std::string& directory, const std::string& program) {
  if (!console_.Selection().SelectProgram(directory, program))
    throw platform::RuntimeFault(directory + "/" + program, "was not selected");
  Screens().Unload("SetupForm");
  RunFor(300);
}

void PictureStage::Snap(const std::string& screen, const std::string& state) {
  Snap(desk_, screen, state);
}

void PictureStage::Snap(toolkit::Desk& desk, const std::string& screen, const std::string& state) {
  if (!options_.EveryState && !InTheManual(state)) return;
  const std::string path = options_.Folder + "/" + screen + (state.empty() ? "" : "-" + state) +
                           "-" + std::to_string(options_.Size.Width) + "x" +
                           std::to_string(options_.Size.Height) + ".png";
  QCoreApplication::processEvents();
  desk.Refresh();
  if (!desk.SavePicture(path)) throw platform::RuntimeFault(path, "can not be written");
}

void PictureStage::ShowSplash() {
  desk_.OpenWindow(options_.Size.Width, options_.Size.Height);
  ShowSplashOnDesk();
  Snap("SplashForm");
}

void PictureStage::SystemMessageBox(std::string_view title, std::string_view text) {
  throw platform::RuntimeFault(std::string(title), std::string(text));
}

}  // namespace torvane::tools

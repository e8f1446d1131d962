#include "tools/KeyScriptRun.h"

#include <cstdio>
#include <fstream>
#include <iterator>

#include "console/WarningForm.h"
#include "core/ScreenNames.h"
#include "core/Text.h"
#include "platform/RuntimeFault.h"
#include "toolkit/Label.h"

namespace torvane::tools {

namespace {

/// Between two strokes, and between two looks of a wait.
constexpr int StepMs = 20;

std::string ReadWhole(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw platform::RuntimeFault(path, "cannot be read");
  return {std::istreambuf_iterator<char>(in), {}};
}

/// What a wait was for, to be told when it was in vain.
std::string WaitedFor(const KeyStep& step) {
  switch (step.Word) {
    case KeyWord::WaitForm:
      return step.Form + " does not show";
    case KeyWord::WaitClosed:
      return step.Form + " still shows";
    case KeyWord::WaitWarning:
      return "no warning with \"" + step.Text + "\"";
    case KeyWord::WaitLabel:
      return step.Label + " of " + step.Form + " does not show \"" + step.Text + "\"";
    case KeyWord::WaitRunning:
      return "the machine does not run";
    case KeyWord::WaitStopped:
      return "the machine does not stop";
    default:
      return "not done";
  }
}

}  // namespace

KeyScriptRun::KeyScriptRun(ConsoleProgram& program, const std::string& path)
    : program_(program), path_(path), steps_(ReadKeyScript(ReadWhole(path), path)) {
  Later(StepMs);
}

void KeyScriptRun::Later(int ms) {
  timer_ = program_.Loop().MakeTimer([this] { Next(); });
  timer_->Start(ms);
}

void KeyScriptRun::Next() {
  timer_->Stop();
  if (next_ >= steps_.size() || program_.System().ShuttingDown) return;
  const KeyStep& step = steps_[next_];
  const std::int64_t now = program_.Loop().NowMs();
  if (since_ < 0) since_ = now;
  // A stroke may not return before the screen that it opened has gone: what comes next is under way
  // before it.
  Later(StepMs);
  if (step.Word == KeyWord::Key || step.Word == KeyWord::Text || step.Word == KeyWord::End) {
    const bool more = step.Word == KeyWord::Text && typed_ + 1 < step.Text.size();
    const char character = step.Word == KeyWord::Text ? step.Text[typed_] : '\0';
    typed_ = more ? typed_ + 1 : 0;
    if (!more) ++next_;
    since_ = -1;
    if (step.Word == KeyWord::End) return program_.ShutDown();
    return Press(step.Word == KeyWord::Key ? toolkit::KeyStroke(step.Stroke)
                                           : toolkit::KeyStroke(character));
  }
  if (step.Word == KeyWord::Answer) {
    if (program_.Console().Screens().Set().Visible(core::ScreenNames::WarningForm)) {
      Press(toolkit::KeyStroke(step.Stroke));
    }
  } else if (Do(step)) {
    ++next_;
    since_ = -1;
  } else if (now - since_ > patienceMs_) {
    Fail(step, WaitedFor(step));
  }
}

bool KeyScriptRun::Do(const KeyStep& step) {
  switch (step.Word) {
    case KeyWord::Patience:
      patienceMs_ = step.Ms;
      return true;
    case KeyWord::Pause:
      return program_.Loop().NowMs() - since_ >= step.Ms;
    case KeyWord::Picture:
      TakePicture(step);
      return true;
    case KeyWord::Say:
      std::printf("%s\n", step.Text.c_str());
      std::fflush(stdout);
      return true;
    case KeyWord::NoWarning:
      if (program_.Console().Screens().Set().Visible(core::ScreenNames::WarningForm)) {
        Fail(step,
             "a warning stands: " + LabelText(core::ScreenNames::WarningForm, "WarningLabel"));
      }
      return true;
    default:
      return Reached(step);
  }
}

bool KeyScriptRun::Reached(const KeyStep& step) {
  const auto& set = program_.Console().Screens().Set();
  switch (step.Word) {
    case KeyWord::WaitForm:
      return set.Visible(step.Form);
    case KeyWord::WaitClosed:
      return !set.Visible(step.Form);
    case KeyWord::WaitWarning:
      return set.Visible(core::ScreenNames::WarningForm) &&
             LabelText(core::ScreenNames::WarningForm, "WarningLabel").find(step.Text) !=
                 std::string::npos;
    case KeyWord::WaitLabel:
      return set.Visible(step.Form) &&
             LabelText(step.Form, step.Label).find(step.Text) != std::string::npos;
    case KeyWord::WaitRunning:
      return program_.System().State.MachineRunning;
    case KeyWord::WaitStopped:
      return !program_.System().State.MachineRunning;
    default:
      return true;
  }
}

std::string KeyScriptRun::LabelText(const std::string& form, const std::string& label) {
  auto* screen = program_.Console().Screens().Set().Find(form);
  if (screen == nullptr) return {};
  auto* found = dynamic_cast<toolkit::Label*>(screen->Window().Find(label));
  return found == nullptr ? std::string() : found->Text();
}

void KeyScriptRun::Press(const toolkit::KeyStroke& stroke) { program_.Desk().TypeKey(stroke); }

void KeyScriptRun::TakePicture(const KeyStep& step) {
  program_.Desk().Refresh();
  if (!program_.Desk().SavePicture(step.Text)) Fail(step, step.Text + " cannot be written");
}

void KeyScriptRun::Fail(const KeyStep& step, const std::string& what) {
  next_ = steps_.size();
  std::fprintf(stderr, "torvane: %s, line %d: %s\n", path_.c_str(), step.Line, what.c_str());
  program_.SetStatus(ScriptFailed);
  program_.ShutDown();
}

}  // namespace torvane::tools

#include "tools/KeyScriptRun.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "core/General.h"
#include "core/ScreenNames.h"
#include "platform/RuntimeFault.h"
#include "simulator/OperatorCommands.h"
#include "toolkit/Label.h"
#include "tools/ConsoleDump.h"

namespace torvane::tools {

namespace {

/// Between two strokes, and between two looks of a wait.
constexpr int StepMs = 20;

std::string ReadWhole(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw platform::RuntimeFault(path, "cannot be read");
  return {std::istreambuf_iterator<char>(in), {}};
}

bool WriteWhole(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
  out.close();
  return !out.fail();
}

void PrintLine(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

}  // namespace

/// What each word does. True: done. False: look again, which a wait does until its patience is at
/// its end. A step that cannot be done puts the reason into failure_.
struct KeyScriptRun::Actions {
  using Run = KeyScriptRun;

  static bool Hand(Run& run, std::string refusal) {
    run.failure_ = std::move(refusal);
    return true;
  }

  // ---- the operator's hands ----
  static bool Key(Run& run, const KeyStep& step) {
    run.hands_.Type(step.Stroke);
    return true;
  }
  static bool Press(Run& run, const KeyStep& step) {
    run.hands_.Press(step.Stroke);
    return true;
  }
  static bool Release(Run& run, const KeyStep& step) {
    run.hands_.Release(step.Stroke);
    return true;
  }
  static bool Text(Run& run, const KeyStep& step) {
    run.hands_.Type(toolkit::KeyStroke(step.Text[run.typed_]));
    run.since_ = run.stage_.Loop.NowMs();
    if (++run.typed_ < step.Text.size()) return false;
    run.typed_ = 0;
    return true;
  }
  static bool Click(Run& run, const KeyStep& step) {
    return Hand(run, run.hands_.Click(step.Form, step.Control));
  }
  static bool DoubleClick(Run& run, const KeyStep& step) {
    return Hand(run, run.hands_.DoubleClick(step.Form, step.Control));
  }
  static bool Hold(Run& run, const KeyStep& step) {
    return Hand(run, run.hands_.Hold(step.Form, step.Control));
  }
  static bool LetGo(Run& run, const KeyStep& step) {
    return Hand(run, run.hands_.LetGo(step.Form, step.Control));
  }
  static bool ClickRow(Run& run, const KeyStep& step) {
    return Hand(run, run.hands_.ClickRow(step.Form, step.Control, step.Number));
  }
  static bool Point(Run& run, const KeyStep& step) {
    return Hand(run, run.hands_.Point(step.Form, step.Control, step.X, step.Y));
  }

  // ---- the machine and the office ----
  static bool Machine(Run& run, const KeyStep& step) {
    if (run.stage_.Machine == nullptr) return Hand(run, "there is no simulated machine");
    const auto answer = simulator::CarryOutOperatorCommand(step.Text, *run.stage_.Machine);
    if (!answer.Known) return Hand(run, "the machine has no command \"" + step.Text + "\"");
    if (!answer.Text.empty()) PrintLine(answer.Text);
    return true;
  }
  static bool Office(Run& run, const KeyStep& step) {
    if (run.stage_.Office == nullptr) return Hand(run, "there is no simulated office");
    const auto answer = run.stage_.Office->Obey(step.Text);
    if (!answer.Known) return Hand(run, "the office has no command \"" + step.Text + "\"");
    if (!answer.Text.empty()) PrintLine(answer.Text);
    return true;
  }

  // ---- waits ----
  static bool WaitForm(Run& run, const KeyStep& step) { return run.Shown(step.Form) != nullptr; }
  static bool WaitClosed(Run& run, const KeyStep& step) { return run.Shown(step.Form) == nullptr; }
  static bool WaitWarning(Run& run, const KeyStep& step) {
    return run.Shown(core::ScreenNames::WarningForm) != nullptr &&
           run.WarningText().find(step.Text) != std::string::npos;
  }
  static bool WaitLabel(Run& run, const KeyStep& step) {
    return run.LabelText(step.Form, step.Control).find(step.Text) != std::string::npos;
  }
  static bool WaitRunning(Run& run, const KeyStep&) {
    return run.stage_.System.State.MachineRunning;
  }
  static bool WaitStopped(Run& run, const KeyStep&) {
    return !run.stage_.System.State.MachineRunning;
  }
  static bool WaitSent(Run& run, const KeyStep& step) { return run.stage_.Sent.Find(step.Text); }
  static bool WaitMode(Run& run, const KeyStep& step) {
    return run.stage_.System.Console.PlotKeyMode == step.Number;
  }
  static bool NoWarning(Run& run, const KeyStep&) {
    if (run.Shown(core::ScreenNames::WarningForm) == nullptr) return true;
    return Hand(run, "a warning shows: " + run.WarningText());
  }
  static bool Patience(Run& run, const KeyStep& step) {
    run.patienceMs_ = step.Number;
    return true;
  }
  /// As long as it takes, whatever the patience is.
  static bool Pause(Run& run, const KeyStep& step) {
    return run.stage_.Loop.NowMs() - run.since_ >= step.Number;
  }

  // ---- accounts ----
  static bool Picture(Run& run, const KeyStep& step) {
    toolkit::Desk& desk = *run.stage_.Desks().front();
    desk.Refresh();
    if (desk.SavePicture(step.Text)) return true;
    return Hand(run, step.Text + " cannot be written");
  }
  static bool Dump(Run& run, const KeyStep& step) {
    if (WriteWhole(step.Text, ConsoleDump(run.stage_))) return true;
    return Hand(run, step.Text + " cannot be written");
  }
  static bool Say(Run&, const KeyStep& step) {
    PrintLine(step.Text);
    return true;
  }

  // ---- the end ----
  static bool Answer(Run& run, const KeyStep& step) {
    if (run.Shown(core::ScreenNames::WarningForm) != nullptr) run.hands_.Type(step.Stroke);
    return false;
  }
  static bool End(Run& run, const KeyStep&) {
    run.stage_.Loop.Post([end = run.stage_.ShutDown] { end(0); });
    return true;
  }

  /// A word, what it does, and for a wait what is reported when it was in vain.
  struct Row {
    KeyWord Word;
    bool (*Do)(Run&, const KeyStep&);
    std::string (*InVain)(const KeyStep&) = nullptr;
  };
  static const Row& Of(KeyWord word);
};

namespace {

using Actions = KeyScriptRun::Actions;

const Actions::Row ActionRows[] = {
    {KeyWord::Key, Actions::Key},
    {KeyWord::Press, Actions::Press},
    {KeyWord::Release, Actions::Release},
    {KeyWord::Text, Actions::Text},
    {KeyWord::Click, Actions::Click},
    {KeyWord::DoubleClick, Actions::DoubleClick},
    {KeyWord::Hold, Actions::Hold},
    {KeyWord::LetGo, Actions::LetGo},
    {KeyWord::ClickRow, Actions::ClickRow},
    {KeyWord::Point, Actions::Point},
    {KeyWord::Machine, Actions::Machine},
    {KeyWord::Office, Actions::Office},
    {KeyWord::WaitForm, Actions::WaitForm,
     [](const KeyStep& step) { return step.Form + " does not show"; }},
    {KeyWord::WaitClosed, Actions::WaitClosed,
     [](const KeyStep& step) { return step.Form + " still shows"; }},
    {KeyWord::WaitWarning, Actions::WaitWarning,
     [](const KeyStep& step) { return "no warning with \"" + step.Text + "\""; }},
    {KeyWord::WaitLabel, Actions::WaitLabel,
     [](const KeyStep& step) {
       return step.Control + " of " + step.Form + " does not show \"" + step.Text + "\"";
     }},
    {KeyWord::WaitRunning, Actions::WaitRunning,
     [](const KeyStep&) { return std::string("the machine does not run"); }},
    {KeyWord::WaitStopped, Actions::WaitStopped,
     [](const KeyStep&) { return std::string("the machine does not stop"); }},
    {KeyWord::WaitSent, Actions::WaitSent,
     [](const KeyStep& step) { return "no line \"" + step.Text + "\" has been sent"; }},
    {KeyWord::WaitMode, Actions::WaitMode,
     [](const KeyStep& step) { return "PlotKeyMode is not " + core::IntegerText(step.Number); }},
    {KeyWord::NoWarning, Actions::NoWarning},
    {KeyWord::Patience, Actions::Patience},
    {KeyWord::Pause, Actions::Pause},
    {KeyWord::Picture, Actions::Picture},
    {KeyWord::Dump, Actions::Dump},
    {KeyWord::Say, Actions::Say},
    {KeyWord::Answer, Actions::Answer},
    {KeyWord::End, Actions::End},
};

}  // namespace

const KeyScriptRun::Actions::Row& KeyScriptRun::Actions::Of(KeyWord word) {
  return *std::find_if(std::begin(ActionRows), std::end(ActionRows),
                       [&](const Row& row) { return row.Word == word; });
}

KeyScriptRun::KeyScriptRun(const ScriptStage& stage, const std::string& path)
    : stage_(stage), hands_(stage), path_(path), steps_(ReadKeyScript(ReadWhole(path), path)) {
  // Kept for whoever asks only: a script that runs for a day would gather a day's lines.
  const bool asks = std::any_of(steps_.begin(), steps_.end(),
                                [](const KeyStep& step) { return step.Word == KeyWord::WaitSent; });
  if (asks) stage_.Sent.Listen();
  Later(StepMs);
}

void KeyScriptRun::Later(int ms) {
  timer_ = stage_.Loop.MakeTimer([this] { Next(); });
  timer_->Start(ms);
}

void KeyScriptRun::Next() {
  timer_->Stop();
  if (next_ >= steps_.size() || stage_.System.ShuttingDown) return;
  const KeyStep& step = steps_[next_];
  if (since_ < 0) since_ = stage_.Loop.NowMs();
  Later(StepMs);
  const auto& row = Actions::Of(step.Word);
  if (!row.Do(*this, step)) {
    const bool inVain = row.InVain && stage_.Loop.NowMs() - since_ > patienceMs_;
    if (inVain) Fail(step, row.InVain(step) + OnShow());
    return;
  }
  if (!failure_.empty()) return Fail(step, failure_);
  ++next_;
  since_ = -1;
}

std::string KeyScriptRun::LabelText(const std::string& form, const std::string& label) const {
  const toolkit::Form* const shown = Shown(form);
  if (shown == nullptr) return {};
  const auto* found = dynamic_cast<toolkit::Label*>(shown->Find(label));
  return found == nullptr ? std::string() : found->Text();
}

std::string KeyScriptRun::WarningText() const {
  return LabelText(core::ScreenNames::WarningForm, "WarningLabel");
}

/// What stands in the way of a wait, in one line: the screens from the back to the front.
std::string KeyScriptRun::OnShow() const {
  std::string text;
  for (const toolkit::Desk* desk : stage_.Desks()) {
    for (const toolkit::Form* form : desk->Forms()) {
      if (Shown(form->Name()) == nullptr) continue;
      text += text.empty() ? "; on show: " : ", ";
      text += form->Name();
    }
  }
  std::string warning = WarningText();
  if (warning.empty()) return text;
  std::replace_if(
      warning.begin(), warning.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text + ", \"" + warning + "\"";
}

void KeyScriptRun::Fail(const KeyStep& step, const std::string& what) {
  next_ = steps_.size();
  std::fprintf(stderr, "torvane: %s, line %d: %s\n", path_.c_str(), step.Line, what.c_str());
  stage_.Loop.Post([end = stage_.ShutDown] { end(ScriptFailed); });
}

}  // namespace torvane::tools

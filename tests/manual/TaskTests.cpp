// The operator's tasks, played: each step of the manual is done by its keys on the whole console,
// with a simulated machine on virtual time.
#include <algorithm>
#include <map>
#include <sstream>

#include <gmock/gmock.h>

#include "Manual.h"
#include "console/ConsoleFixture.h"
#include "platform/ScriptedPort.h"
#include "tools/KeyScriptRun.h"

namespace torvane::tests {
namespace {

/// A section of the manual with numbered steps.
struct Task {
  std::string Id;
  std::vector<std::string> Before;  ///< lines "//<": what comes before the task begins
  std::vector<std::string> Script;  ///< lines "//>"
  std::vector<std::string> Steps;   ///< lines ". ": what the reader is told
  std::string First;                ///< "operator.adoc:12"
};

std::vector<Task> ReadTasks() {
  std::vector<Task> tasks;
  for (const ManualLine& line : ManualLines()) {
    if (line.File != "operator.adoc") continue;
    const bool step = line.Text.starts_with(". ");
    const bool played = line.Text.starts_with("//> ");
    const bool before = line.Text.starts_with("//< ");
    if (!step && !played && !before) continue;
    const std::string id = line.Id.empty() ? line.Heading : line.Id;
    if (tasks.empty() || tasks.back().Id != id)
      tasks.push_back({id, {}, {}, {}, line.File + ":" + std::to_string(line.Number)});
    if (step) tasks.back().Steps.push_back(line.Text.substr(2));
    if (played) tasks.back().Script.push_back(line.Text.substr(4));
    if (before) tasks.back().Before.push_back(line.Text.substr(4));
  }
  return tasks;
}

const std::vector<Task>& Tasks() {
  static const std::vector<Task> tasks = ReadTasks();
  return tasks;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

std::string WithoutBlanks(std::string text) {
  std::erase(text, ' ');
  return text;
}

/// In the order of their first strokes.
void Append(std::vector<std::string>& keys, const std::string& key) {
  if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
}

/// What the script presses, by its words "key" and "press".
std::vector<std::string> KeysOfScript(const Task& task) {
  std::vector<std::string> keys;
  for (const std::string& line : task.Script) {
    std::istringstream in(line);
    std::string word;
    std::string key;
    in >> word >> key;
    if (word == "key" || word == "press") Append(keys, key);
  }
  return keys;
}

class ManualTask : public ConsoleFixture, public ::testing::WithParamInterface<Task> {
 protected:
  platform::ScriptedPort Nowhere{Loop};
  tools::SentLines Sent{Nowhere};
  bool Failed = false;

  void Play(const std::string& name, const std::vector<std::string>& lines) {
    if (lines.empty()) return;
    Directory.Put(name, Joined(lines));
    tools::KeyScriptRun run(
        {Loop, System, [this] { return std::vector<toolkit::Desk*>{Desk.get()}; }, Sent, Controller,
         [this](int status) { Failed = Failed || status != 0; },
         [this] { return TheConsole->MarkedRecord(); }, Office.get()},
        Directory.Path() + "/" + name);
    constexpr int LookMs = 100;
    constexpr int LongestMs = 3600000;
    for (int ms = 0; !run.Finished() && !Failed && ms < LongestMs; ms += LookMs) RunFor(LookMs);
    EXPECT_TRUE(run.Finished() && !Failed)
        << GetParam().First << ", the section \"" << GetParam().Id
        << "\": the steps cannot be played, see above";
    RunFor(LookMs);
  }
  /// "selected STAR" is a word of the manual's own: a program of SHOP stands in slot 1. "start"
  /// asks for the console's start itself.
  void PlayBefore() {
    std::vector<std::string> script;
    for (const std::string& line : GetParam().Before) {
      if (line.starts_with("selected ")) {
        Select(line.substr(std::string("selected ").size()));
      } else if (line != "start") {
        script.push_back(line);
      }
    }
    Play("before.txt", script);
  }
};

TEST_P(ManualTask, CanBeDoneAsItSays) {
  const Task& task = GetParam();
  ASSERT_FALSE(task.Script.empty())
      << task.First << ": the steps of \"" << task.Id
      << "\" are not played; write what they press as lines \"//> key ...\" below each step";
  Start();
  Controller->OnLine([this](std::string_view line) { Sent.Write(std::string(line) + "\r"); });
  PlayBefore();
  Sent.Listen();
  Play("task.txt", task.Script);
}

/// The steps for the reader and those that are played are the same keys in the same order.
TEST_P(ManualTask, TellsTheKeysThatArePlayed) {
  std::vector<std::string> told;
  for (const std::string& step : GetParam().Steps)
    for (const std::string& key : QuotesIn(step, "kbd")) Append(told, WithoutBlanks(key));
  EXPECT_EQ(told, KeysOfScript(GetParam())) << GetParam().First;
}

/// What is typed on a pad stands in the text.
TEST_P(ManualTask, TellsTheTextThatIsTyped) {
  const Task& task = GetParam();
  const std::string steps = Joined(task.Steps);
  for (const std::string& line : task.Script) {
    if (!line.starts_with("text ")) continue;
    EXPECT_THAT(steps, ::testing::HasSubstr("`" + line.substr(5) + "`")) << task.First;
  }
}

INSTANTIATE_TEST_SUITE_P(Operator, ManualTask, ::testing::ValuesIn(Tasks()), [](const auto& task) {
  std::string name = task.param.Id;
  for (char& character : name)
    if (std::isalnum(static_cast<unsigned char>(character)) == 0) character = '_';
  return name;
});

TEST(ManualTasks, AreThereForADayOfWork) {
  EXPECT_GE(Tasks().size(), 25U);
  std::map<std::string, int> seen;
  for (const Task& task : Tasks()) EXPECT_EQ(++seen[task.Id], 1) << task.Id << " is in two pieces";
}

}  // namespace
}  // namespace torvane::tests

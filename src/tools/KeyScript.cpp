#include "tools/KeyScript.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "core/Text.h"
#include "platform/RuntimeFault.h"

namespace torvane::tools {

using toolkit::Key;

namespace {

constexpr int LongestMs = 600000;

/// What stands behind the word.
enum class Operand { None, Key, Text, Form, FormLabelText, Ms };

struct WordRow {
  std::string_view Name;
  KeyWord Word;
  Operand Behind;
};

constexpr std::array Words = {
    WordRow{"key", KeyWord::Key, Operand::Key},
    WordRow{"text", KeyWord::Text, Operand::Text},
    WordRow{"wait-form", KeyWord::WaitForm, Operand::Form},
    WordRow{"wait-closed", KeyWord::WaitClosed, Operand::Form},
    WordRow{"wait-warning", KeyWord::WaitWarning, Operand::Text},
    WordRow{"wait-label", KeyWord::WaitLabel, Operand::FormLabelText},
    WordRow{"wait-running", KeyWord::WaitRunning, Operand::None},
    WordRow{"wait-stopped", KeyWord::WaitStopped, Operand::None},
    WordRow{"no-warning", KeyWord::NoWarning, Operand::None},
    WordRow{"answer", KeyWord::Answer, Operand::Key},
    WordRow{"patience", KeyWord::Patience, Operand::Ms},
    WordRow{"pause", KeyWord::Pause, Operand::Ms},
    WordRow{"picture", KeyWord::Picture, Operand::Text},
    WordRow{"say", KeyWord::Say, Operand::Text},
    WordRow{"end", KeyWord::End, Operand::None},
};

constexpr std::array NamedKeys = {
    std::pair{std::string_view("BACKSPACE"), Key::Backspace},
    std::pair{std::string_view("TAB"), Key::Tab},
    std::pair{std::string_view("ENTER"), Key::Enter},
    std::pair{std::string_view("ESCAPE"), Key::Escape},
    std::pair{std::string_view("SPACE"), Key::Space},
    std::pair{std::string_view("PAGEUP"), Key::PageUp},
    std::pair{std::string_view("PAGEDOWN"), Key::PageDown},
    std::pair{std::string_view("END"), Key::End},
    std::pair{std::string_view("HOME"), Key::Home},
    std::pair{std::string_view("LEFT"), Key::Left},
    std::pair{std::string_view("UP"), Key::Up},
    std::pair{std::string_view("RIGHT"), Key::Right},
    std::pair{std::string_view("DOWN"), Key::Down},
    std::pair{std::string_view("INSERT"), Key::Insert},
    std::pair{std::string_view("DELETE"), Key::Delete},
};

/// A whole number from 0 up to `most`; -1 for anything else.
int NumberOf(std::string_view text, int most) {
  int value = 0;
  const auto* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stopped == end && value >= 0 && value <= most ? value : -1;
}

/// The first word of a text, which is cut off with the blanks behind it.
std::string_view TakeWord(std::string_view& text) {
  const auto end = std::min(text.find(' '), text.size());
  const auto word = text.substr(0, end);
  text = core::Trim(text.substr(end));
  return word;
}

/// False where the operand is not what the word needs.
bool ReadOperand(Operand behind, std::string_view text, KeyStep& step) {
  switch (behind) {
    case Operand::None:
      return text.empty();
    case Operand::Key:
      step.Stroke = KeyNamed(text);
      return step.Stroke != Key::None;
    case Operand::Text:
      step.Text = text;
      return !text.empty();
    case Operand::Form:
      step.Form = TakeWord(text);
      return !step.Form.empty() && text.empty();
    case Operand::FormLabelText:
      step.Form = TakeWord(text);
      step.Label = TakeWord(text);
      step.Text = text;
      return !step.Text.empty();
    case Operand::Ms:
      step.Ms = NumberOf(text, LongestMs);
      return step.Ms >= 0;
  }
  return false;
}

bool ReadStep(std::string_view line, KeyStep& step) {
  std::string_view rest = line;
  const auto name = TakeWord(rest);
  const auto* const row = std::find_if(Words.begin(), Words.end(),
                                       [&](const WordRow& word) { return word.Name == name; });
  if (row == Words.end()) return false;
  step.Word = row->Word;
  return ReadOperand(row->Behind, rest, step);
}

}  // namespace

Key KeyNamed(std::string_view name) {
  constexpr int FunctionKeys = 12;
  if (name.size() == 1) return toolkit::KeyOf(name[0]);
  const std::string upper = core::UpperCase(name);
  for (const auto& [named, key] : NamedKeys) {
    if (upper == named) return key;
  }
  const int number = upper.starts_with('F') ? NumberOf(name.substr(1), FunctionKeys) : 0;
  if (number < 1) return Key::None;
  return static_cast<Key>(static_cast<int>(Key::F1) + number - 1);
}

std::vector<KeyStep> ReadKeyScript(std::string_view text, std::string_view path) {
  std::vector<KeyStep> steps;
  int number = 0;
  for (const std::string_view whole : core::SplitLines(text)) {
    ++number;
    const auto line = core::Trim(whole);
    if (line.empty() || line.front() == '#') continue;
    KeyStep step;
    step.Line = number;
    if (!ReadStep(line, step)) {
      throw platform::RuntimeFault(
          std::string(path),
          "line " + std::to_string(number) + " is not understood: " + std::string(line));
    }
    steps.push_back(std::move(step));
  }
  return steps;
}

}  // namespace torvane::tools

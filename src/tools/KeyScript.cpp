#include "tools/KeyScript.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "core/Text.h"
#include "platform/RuntimeFault.h"

namespace torvane::tools {

using toolkit::Key;

namespace {

/// Of a wait in ms, and far more than any list has rows.
constexpr int MostNumber = 600000;

/// What comes after the word.
enum class Operand {
  None,
  Key,
  Text,
  Form,
  Control,
  ControlText,
  ControlRow,
  ControlPlace,
  Number
};

struct WordRow {
  std::string_view Name;
  KeyWord Word;
  Operand After;
};

constexpr std::array Words = {
    WordRow{"key", KeyWord::Key, Operand::Key},
    WordRow{"press", KeyWord::Press, Operand::Key},
    WordRow{"release", KeyWord::Release, Operand::Key},
    WordRow{"text", KeyWord::Text, Operand::Text},
    WordRow{"click", KeyWord::Click, Operand::Control},
    WordRow{"double-click", KeyWord::DoubleClick, Operand::Control},
    WordRow{"hold", KeyWord::Hold, Operand::Control},
    WordRow{"let-go", KeyWord::LetGo, Operand::Control},
    WordRow{"click-row", KeyWord::ClickRow, Operand::ControlRow},
    WordRow{"point", KeyWord::Point, Operand::ControlPlace},
    WordRow{"machine", KeyWord::Machine, Operand::Text},
    WordRow{"office", KeyWord::Office, Operand::Text},
    WordRow{"wait-form", KeyWord::WaitForm, Operand::Form},
    WordRow{"wait-closed", KeyWord::WaitClosed, Operand::Form},
    WordRow{"wait-warning", KeyWord::WaitWarning, Operand::Text},
    WordRow{"wait-label", KeyWord::WaitLabel, Operand::ControlText},
    WordRow{"wait-running", KeyWord::WaitRunning, Operand::None},
    WordRow{"wait-stopped", KeyWord::WaitStopped, Operand::None},
    WordRow{"wait-sent", KeyWord::WaitSent, Operand::Text},
    WordRow{"wait-mode", KeyWord::WaitMode, Operand::Number},
    WordRow{"no-warning", KeyWord::NoWarning, Operand::None},
    WordRow{"patience", KeyWord::Patience, Operand::Number},
    WordRow{"pause", KeyWord::Pause, Operand::Number},
    WordRow{"picture", KeyWord::Picture, Operand::Text},
    WordRow{"dump", KeyWord::Dump, Operand::Text},
    WordRow{"say", KeyWord::Say, Operand::Text},
    WordRow{"answer", KeyWord::Answer, Operand::Key},
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

/// A number of user units; nothing for anything else.
std::optional<double> UnitsOf(std::string_view text) {
  double value = 0;
  const auto* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stopped != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

/// The first word of a text, which is cut off with the blanks after it.
std::string_view TakeWord(std::string_view& text) {
  const auto end = std::min(text.find(' '), text.size());
  const auto word = text.substr(0, end);
  text = core::Trim(text.substr(end));
  return word;
}

bool ReadStroke(std::string_view text, KeyStep& step) {
  const auto stroke = StrokeNamed(text);
  if (stroke) step.Stroke = *stroke;
  return stroke.has_value();
}

/// The form and the control, which are cut off; false when one is missing.
bool TakeControl(std::string_view& text, KeyStep& step) {
  step.Form = TakeWord(text);
  step.Control = TakeWord(text);
  return !step.Control.empty();
}

bool ReadNumber(std::string_view text, int least, KeyStep& step) {
  step.Number = NumberOf(text, MostNumber);
  return step.Number >= least;
}

bool ReadPlace(std::string_view text, KeyStep& step) {
  const auto x = UnitsOf(TakeWord(text));
  const auto y = UnitsOf(text);
  if (!x || !y) return false;
  step.X = *x;
  step.Y = *y;
  return true;
}

/// False where the operand is not what the word needs.
bool ReadOperand(Operand after, std::string_view text, KeyStep& step) {
  switch (after) {
    case Operand::None:
      return text.empty();
    case Operand::Key:
      return ReadStroke(text, step);
    case Operand::Text:
      step.Text = text;
      return !text.empty();
    case Operand::Form:
      step.Form = TakeWord(text);
      return !step.Form.empty() && text.empty();
    case Operand::Control:
      return TakeControl(text, step) && text.empty();
    case Operand::ControlText:
      if (!TakeControl(text, step)) return false;
      step.Text = text;
      return !text.empty();
    case Operand::ControlRow:
      return TakeControl(text, step) && ReadNumber(text, 1, step);
    case Operand::ControlPlace:
      return TakeControl(text, step) && ReadPlace(text, step);
    case Operand::Number:
      return ReadNumber(text, 0, step);
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
  return ReadOperand(row->After, rest, step);
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

std::optional<toolkit::KeyStroke> StrokeNamed(std::string_view name) {
  toolkit::KeyStroke held;
  const std::array holders = {std::pair{std::string_view("ALT+"), &toolkit::KeyStroke::Alt},
                              std::pair{std::string_view("CTRL+"), &toolkit::KeyStroke::Control},
                              std::pair{std::string_view("SHIFT+"), &toolkit::KeyStroke::Shift}};
  for (const auto& [word, holder] : holders) {
    if (!core::UpperCase(name).starts_with(word) || name.size() == word.size()) continue;
    held.*holder = true;
    name.remove_prefix(word.size());
  }
  const Key code = KeyNamed(name);
  const bool character = name.size() == 1 && static_cast<unsigned char>(name[0]) > ' ';
  if (code == Key::None && !character) return std::nullopt;
  toolkit::KeyStroke stroke =
      code == Key::None ? toolkit::KeyStroke(name[0]) : toolkit::KeyStroke(code);
  stroke.Alt = held.Alt;
  stroke.Control = held.Control;
  stroke.Shift = held.Shift;
  // As the window system has it: such a stroke is a command, and types nothing.
  if (stroke.Alt || stroke.Control) stroke.Character = 0;
  return stroke;
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

// A script of keys: what an operator would press, what he waits for, and the pictures he would
// take. For demonstrations, and for tests of the whole program.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/Key.h"

namespace torvane::tools {

/// What a line of a script does.
enum class KeyWord {
  Key,          ///< "key F1": one stroke, by the name of the key or its character
  Text,         ///< "text STAR": each character as a stroke of its own
  WaitForm,     ///< "wait-form SetupForm": until that screen shows
  WaitClosed,   ///< "wait-closed SetupForm": until it shows no more
  WaitWarning,  ///< "wait-warning GetTrio Timeout": until a warning stands that holds the text
  WaitLabel,  ///< "wait-label SetupForm MaterialDescription Brass": until the label holds the text
  WaitRunning,  ///< "wait-running": until the machine runs
  WaitStopped,  ///< "wait-stopped": until it has stopped
  NoWarning,    ///< "no-warning": no warning stands at this moment
  Answer,       ///< "answer O": from here to the end of the program, that key for every warning
  Patience,     ///< "patience 20000": the waits behind it last at most so long, ms
  Pause,        ///< "pause 500": ms
  Picture,      ///< "picture FILE": the desk as PNG
  Say,          ///< "say TEXT": a line on standard output, for whoever works the machine
  End,          ///< "end": shuts down as the operator's &OK does
};

struct KeyStep {
  KeyWord Word = KeyWord::End;
  int Line = 0;  ///< of the script, from 1
  std::string Form;
  std::string Label;
  std::string Text;
  toolkit::Key Stroke = toolkit::Key::None;
  int Ms = 0;
};

/// The steps of a script. Empty lines and lines that begin with "#" are passed over. Throws
/// RuntimeFault with `path` and the number of the line that it does not understand.
[[nodiscard]] std::vector<KeyStep> ReadKeyScript(std::string_view text, std::string_view path);

/// "F1" to "F12", "Enter", "Left" and the like in any case, or one letter or digit; Key::None for
/// anything else.
[[nodiscard]] toolkit::Key KeyNamed(std::string_view name);

}  // namespace torvane::tools

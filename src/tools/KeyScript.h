// A script of keys: what an operator would press, what he waits for, and the pictures he would
// take. For demonstrations, and for tests of the whole program.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/Key.h"

namespace torvane::tools {

/// What a line of a script does.
enum class KeyWord {
  // ---- the operator's hands ----
  Key,          ///< "key F1", "key Alt+C": one stroke
  Press,        ///< "press Left": held down; again without a release: the repeat of a held key
  Release,      ///< "release Left": let go
  Text,         ///< "text STAR": each character as a stroke of its own
  Click,        ///< "click ProgramForm SelectButton": the pointer on the middle of a control
  DoubleClick,  ///< "double-click ProgramForm FileList"
  Hold,         ///< "hold MoveForm JogButton(1)": the pointer pressed there and kept
  LetGo,        ///< "let-go MoveForm JogButton(1)": and released
  ClickRow,     ///< "click-row ProgramForm FileList 3": row 3 of a list, counted from 1
  Point,        ///< "point FrontEnd PlotBox(1) 100 50": on a canvas, in its user units
  // ---- the machine and the office ----
  Machine,  ///< "machine error 1": one line to the simulated machine, as typed to torvane-sim
  Office,   ///< "office send FILE": one line to the simulated office, as typed to torvane-office
  // ---- waits ----
  WaitForm,     ///< "wait-form SetupForm": until that screen shows
  WaitClosed,   ///< "wait-closed SetupForm": until it shows no more
  WaitWarning,  ///< "wait-warning GetTrio Timeout": until a warning shows that holds the text
  WaitLabel,  ///< "wait-label SetupForm MaterialDescription Brass": until the label holds the text
  WaitRunning,  ///< "wait-running": until the machine runs
  WaitStopped,  ///< "wait-stopped": until it has stopped
  WaitSent,   ///< "wait-sent VR(48)=": until a line that begins so has gone to the controller since
              ///< the line of the last wait-sent, or since the start
  WaitMode,   ///< "wait-mode 5": until PlotKeyMode is that
  NoWarning,  ///< "no-warning": no warning shows at this moment
  Patience,   ///< "patience 20000": the waits after it last at most so long, ms
  Pause,      ///< "pause 500": ms
  // ---- accounts ----
  Picture,  ///< "picture FILE": the desk as PNG
  Dump,     ///< "dump FILE": everything that shows, as JSON
  Say,      ///< "say TEXT": a line on standard output, for whoever works the machine
  // ---- the end ----
  Answer,  ///< "answer O": from here to the end of the program, that key for every warning
  End,     ///< "end": shuts down as the operator's &OK does
};

struct KeyStep {
  KeyWord Word = KeyWord::End;
  int Line = 0;  ///< of the script, from 1
  std::string Form;
  std::string Control;
  std::string Text;
  toolkit::KeyStroke Stroke;
  int Number = 0;  ///< ms, row or mode
  double X = 0;    ///< user units of a canvas
  double Y = 0;
};

/// The steps of a script. Empty lines and lines that begin with "#" are passed over. Throws
/// RuntimeFault with `path` and the number of the line that it does not understand.
[[nodiscard]] std::vector<KeyStep> ReadKeyScript(std::string_view text, std::string_view path);

/// "F1" to "F12", "Enter", "Left" and the like in any case, or one letter or digit; Key::None for
/// anything else.
[[nodiscard]] toolkit::Key KeyNamed(std::string_view name);

/// The stroke of a named key or of one character that a key types, with "Alt+", "Ctrl+" and
/// "Shift+" before it in any case. Letters type their capital. Nothing for anything else.
[[nodiscard]] std::optional<toolkit::KeyStroke> StrokeNamed(std::string_view name);

}  // namespace torvane::tools

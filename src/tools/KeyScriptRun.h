// Plays a script of keys on the console, from the event loop.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/EventLoop.h"
#include "tools/ConsoleProgram.h"
#include "tools/KeyScript.h"

namespace torvane::tools {

/// Exit status of the program when a wait of its script was in vain, or a picture was not written.
inline constexpr int ScriptFailed = 4;

/// One step after the other, each from a timer of its own: a key that opens a modal screen returns
/// only when that screen has gone, and the steps behind it work the screen meanwhile. A wait that
/// is in vain is told on standard error, ends the program and sets its status.
class KeyScriptRun {
 public:
  /// `path` is native. Throws RuntimeFault where the script cannot be read or understood.
  KeyScriptRun(ConsoleProgram& program, const std::string& path);

  /// All steps have been played. A program that ended before has not done what its script tells.
  [[nodiscard]] bool Finished() const {
    return next_ >= steps_.size() || steps_[next_].Word == KeyWord::Answer;
  }

 private:
  void Later(int ms);
  void Next();
  /// True when the step is done; false: look again.
  bool Do(const KeyStep& step);
  [[nodiscard]] bool Reached(const KeyStep& step);
  [[nodiscard]] std::string LabelText(const std::string& form, const std::string& label);
  void Press(const toolkit::KeyStroke& stroke);
  void TakePicture(const KeyStep& step);
  void Fail(const KeyStep& step, const std::string& what);

  ConsoleProgram& program_;
  std::string path_;
  std::vector<KeyStep> steps_;
  std::size_t next_ = 0;
  std::unique_ptr<platform::Timer> timer_;
  std::int64_t since_ = -1;  ///< when the step under way began to wait; -1: it has not begun
  std::size_t typed_ = 0;    ///< characters of a text that have been typed
  int patienceMs_ = 10000;
};

}  // namespace torvane::tools

// Plays a script of keys on the console, from the event loop.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/EventLoop.h"
#include "tools/KeyScript.h"
#include "tools/ScriptHands.h"
#include "tools/ScriptStage.h"

namespace torvane::tools {

/// Exit status of the program when a step of its script could not be done, or a wait was in vain.
inline constexpr int ScriptFailed = 4;

/// One step after the other, each from a timer of its own. A step that cannot be done and a wait
/// that is in vain are reported on standard error with the script's name and line; then the program
/// ends with ScriptFailed.
class KeyScriptRun {
 public:
  /// `path` is native. Throws RuntimeFault where the script cannot be read or understood.
  KeyScriptRun(const ScriptStage& stage, const std::string& path);

  /// All steps have been played. A program that ended before has not done what its script says.
  [[nodiscard]] bool Finished() const {
    return next_ >= steps_.size() || steps_[next_].Word == KeyWord::Answer;
  }

  /// One step of a script.
  struct Actions;

 private:
  friend struct Actions;

  void Later(int ms);
  void Next();
  [[nodiscard]] toolkit::Form* Shown(const std::string& form) const {
    return ShownForm(stage_.Desks(), form);
  }
  [[nodiscard]] std::string LabelText(const std::string& form, const std::string& label) const;
  [[nodiscard]] std::string WarningText() const;
  [[nodiscard]] std::string OnShow() const;
  void Fail(const KeyStep& step, const std::string& what);

  ScriptStage stage_;
  ScriptHands hands_;
  std::string path_;
  std::vector<KeyStep> steps_;
  std::size_t next_ = 0;
  std::unique_ptr<platform::Timer> timer_;
  std::int64_t since_ = -1;  ///< when the step under way began; -1: it has not begun
  std::size_t typed_ = 0;    ///< characters of a text that have been typed
  std::string failure_;      ///< why the step under way cannot be done
  int patienceMs_ = 10000;
};

}  // namespace torvane::tools

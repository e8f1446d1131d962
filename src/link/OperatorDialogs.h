// What the floors under the screens ask of the operator: the warning dialog, the hourglass, a beep.
#pragma once

#include <string>
#include <string_view>

namespace torvane::link {

/// Which buttons the warning dialog shows.
enum class WarningMode { Ok = 1, OkCancel = 2, YesNo = 3 };

/// Its pair of images.
enum class WarningStyle { Warning = 1, Question = 2, Information = 3 };

class OperatorDialogs {
 public:
  virtual ~OperatorDialogs() = default;

  /// Text with its line feeds. True unless button 0 or another way of closing answered; false at
  /// once while a warning is already up.
  virtual bool ShowWarning(std::string_view text, WarningMode mode, WarningStyle style) = 0;
  virtual void SetBusy(bool busy) = 0;
  virtual void Beep() = 0;

  /// One line with its OK key, or two: how almost every refusal looks.
  void Warn(std::string_view line);
  void Warn(std::string_view first, std::string_view second);

  /// The same as a question; true for OK, false for CANCEL and any other way of closing.
  [[nodiscard]] bool Confirm(std::string_view line);
  [[nodiscard]] bool Confirm(std::string_view first, std::string_view second);
};

/// The layout of a warning of one line: two line feeds before it.
[[nodiscard]] std::string OneLineWarning(std::string_view line);

/// Of two lines: one line feed before them and one between.
[[nodiscard]] std::string TwoLineWarning(std::string_view first, std::string_view second);

/// The busy cursor for as long as it lives; one within another is allowed.
class BusyCursor {
 public:
  explicit BusyCursor(OperatorDialogs& dialogs) : dialogs_(dialogs) { dialogs_.SetBusy(true); }
  ~BusyCursor() { dialogs_.SetBusy(false); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;

 private:
  OperatorDialogs& dialogs_;
};

}  // namespace torvane::link

// What the floors under the screens ask of them: the warning dialog, the busy pointer, the lock.
#pragma once

#include <string_view>

namespace torvane::supervision {

/// Modes of the warning dialog.
namespace WarningMode {
inline constexpr int Ok = 1;
inline constexpr int OkCancel = 2;
inline constexpr int YesNo = 3;
}  // namespace WarningMode

/// Image pairs of the warning dialog.
namespace WarningStyle {
inline constexpr int Warning = 1;
inline constexpr int Question = 2;
inline constexpr int Information = 3;
}  // namespace WarningStyle

class OperatorDialogs {
 public:
  virtual ~OperatorDialogs() = default;

  /// Text with its line feeds. True unless button 0 or another way of closing answered; false at
  /// once while a warning is already up.
  virtual bool ShowWarning(std::string_view text, int mode, int style) = 0;
  virtual void BusyPointer(bool busy) = 0;
  virtual void Beep() = 0;
};

}  // namespace torvane::supervision

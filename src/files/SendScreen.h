// What a send shows to the operator.
#pragma once

#include <string_view>

namespace torvane::files {

/// A send goes on below the screen; the screen only shows.
class SendScreen {
 public:
  virtual ~SendScreen() = default;

  /// The text of the program in hand, empty after it.
  virtual void ShowSendText(std::string_view text) = 0;
  /// The start is waited for: the bar is hidden, ForceButton shows and has the focus.
  virtual void ShowWaitingForStart() = 0;
  /// The program goes out: ForceButton is hidden, the bar shows, from 0 to `maximum`.
  virtual void ShowSending(int maximum) = 0;
  virtual void ShowProgress(int value) = 0;
  /// How much has gone, 0 to 100 percent, and the seconds that the rest will take; below 0 while
  /// that cannot be known.
  virtual void ShowRemaining(int percent, int seconds) = 0;
  virtual void HideProgress() = 0;
  /// A program that cannot be read is not sent.
  virtual void WarnCannotSend(std::string_view name) = 0;
};

}  // namespace torvane::files

// Entry of a number or a text on the pads: one call, one value back.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "console/ScreenSet.h"

namespace torvane::console {

/// What goes into a pad and comes out of it: one for each call.
struct PadEntry {
  std::string EntryText;  ///< in: the initial text; out: the entered text, unchanged on CANCEL
  int EntryResult = 0;    ///< in: the entry mode; out: -1 after OK, 0 after CANCEL
};

class Pads {
 public:
  explicit Pads(ScreenSet& screens) : screens_(screens) {}

  /// The number pad. After CANCEL the initial text's own value comes back, so a caller always
  /// writes the result.
  [[nodiscard]] double EnterNumber(std::string_view initialText, int mode);

  /// The key pad. After CANCEL the initial text comes back.
  [[nodiscard]] std::string EnterText(std::string_view initialText, int mode);

  /// The same, with nothing after CANCEL.
  [[nodiscard]] std::optional<std::string> AskText(std::string_view initialText, int mode);

  /// What the last call puts in and takes out; for the screen of its pad, which is made then.
  [[nodiscard]] const std::shared_ptr<PadEntry>& Entry() const { return entry_; }

 private:
  PadEntry Enter(const char* screen, std::string_view initialText, int mode);

  ScreenSet& screens_;
  std::shared_ptr<PadEntry> entry_ = std::make_shared<PadEntry>();
};

}  // namespace torvane::console

// The one modal question of the console, without its window: which buttons a mode shows, which keys
// press them, and what the box answers.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "supervision/OperatorDialogs.h"

namespace torvane::supervision {

inline constexpr const char* WarningHeader = "TORVANE 32";

/// What a mode makes of WarningButton 0 to 2. A button without a caption is hidden.
struct WarningLayout {
  std::array<const char*, 3> Captions{};
  int DefaultButton = 1;  ///< pressed by the enter key
  int CancelButton = 1;
  int FocusButton = 1;

  [[nodiscard]] bool Visible(int button) const {
    return Captions[static_cast<std::size_t>(button)] != nullptr;
  }
};

[[nodiscard]] const WarningLayout& WarningLayoutOf(WarningMode mode);

/// The button that a key presses: "O" and "Y" the affirmative one, "C" and "N" button 0 even where
/// it is hidden. Nothing for any other key. `letter` is a capital.
[[nodiscard]] std::optional<int> WarningKeyButton(char letter, const WarningLayout& layout);

/// The image pair of a style.
enum class WarningImages { Warning, Question, Information };
[[nodiscard]] WarningImages WarningImagesOf(WarningStyle style);

/// The state of the window. One box at a time: the mark is what keeps two dialogs from meeting.
class WarningBox {
 public:
  /// Marks the box as up, runs `showModal`, which returns when the window has gone, and gives the
  /// answer: true if button 1 or 2 was pressed. Without a word false while a box is up already.
  bool ShowWarning(std::string_view text, WarningMode mode, WarningStyle style,
                   const std::function<void()>& showModal);

  /// A button was pressed; the window closes after it. Buttons 0 to 2, any other counts as closing
  /// in another way.
  void Press(int button);

  /// The window has gone: the mark is cleared and the next warning can come up, even before the
  /// call that waits for it has gone on.
  void Closed();

  /// True while a box is up.
  [[nodiscard]] bool Up() const { return up_; }
  [[nodiscard]] const std::string& Text() const { return text_; }
  [[nodiscard]] const WarningLayout& Layout() const { return WarningLayoutOf(mode_); }
  [[nodiscard]] WarningImages Images() const { return WarningImagesOf(style_); }

 private:
  bool up_ = false;
  std::string text_;
  WarningMode mode_ = WarningMode::Ok;
  WarningStyle style_ = WarningStyle::Warning;
  int* answer_ = nullptr;  ///< of the call that waits
};

}  // namespace torvane::supervision

// The text of the line editor: its lines, the selected one, and the part in view.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvane::files {

/// Lines in view at a time, and lines that a page key moves by.
inline constexpr int EditViewLines = 21;
inline constexpr int EditPageLines = 20;

/// Indices count from 0, -1 is no line. Lines are trimmed as they come in and as they go out; empty
/// lines stay.
class EditDocument {
 public:
  /// Takes the lines of a file and selects the first one.
  void Load(std::string_view text);

  /// The whole file, each line trimmed and ended by CR LF.
  [[nodiscard]] std::string Text() const;

  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  [[nodiscard]] int Count() const { return static_cast<int>(lines_.size()); }
  [[nodiscard]] int Selected() const { return selected_; }
  [[nodiscard]] int TopLine() const { return top_; }
  /// The text of the selected line, empty without one.
  [[nodiscard]] std::string SelectedText() const;
  /// True once a line differs from what was loaded or last kept.
  [[nodiscard]] bool Changed() const { return changed_; }
  void MarkKept() { changed_ = false; }

  /// The operator pressed a line; the view stays. Out of range selects none.
  void Select(int index);
  /// The operator scrolled the list.
  void ScrollTo(int topLine);

  /// A new line after the selected one, or the first of an empty text; it is selected.
  void Insert(std::string_view text);
  /// Another text for the selected line. False without one.
  bool Replace(std::string_view text);
  /// Takes the selected line out; the selection stays at its index or goes to the last line. False
  /// without one.
  bool Delete();

  void Home();
  void PageUp();
  void PageDown();
  void End();

 private:
  void BringIntoView();
  void SetTop(int top);

  std::vector<std::string> lines_;
  int selected_ = -1;
  int top_ = 0;
  bool changed_ = false;
};

}  // namespace torvane::files

// One line of text with a caret and a selection.
#pragma once

#include "toolkit/Control.h"

namespace torvane::toolkit {

/// Text is Latin-1. Positions count characters from 0. The box never trims and knows no limit: what
/// is accepted is the business of the key-press hooks.
class EntryBox : public Control {
 public:
  explicit EntryBox(QWidget* parent);
  ~EntryBox() override;

  /// A character of code 0 ends the text: it and what comes after it go. The caret goes to 0 and
  /// the selection away. Tells nobody.
  void SetText(const std::string& text);
  [[nodiscard]] const std::string& Text() const { return text_; }

  /// The caret, or the start of the selection. Kept as set, even after the end of the text, where
  /// typing goes to the end. Setting it drops the selection.
  void SetCursor(int position);
  [[nodiscard]] int Cursor() const { return cursor_; }
  /// Characters selected from the cursor on.
  void SetSelectionLength(int length);
  [[nodiscard]] int SelectionLength() const { return selection_; }
  void SelectAll();

  /// A box that only shows and is pressed (the boxes that open a pad).
  void SetReadOnly(bool readOnly);

  /// The character to be typed, Backspace (8) and Enter (13) too; what comes back is typed instead,
  /// 0 swallows it.
  void OnKeyPress(std::function<char(char)> handler) { keyPress_ = std::move(handler); }
  /// The operator changed the text by a key.
  void OnChange(std::function<void()> handler) { change_ = std::move(handler); }
  /// A press and release on the box.
  void OnClick(std::function<void()> handler) { click_ = std::move(handler); }
  /// As if it were pressed; nothing when it is hidden or disabled.
  void Press();
  void SetAlignRight(bool right);
  /// Part of another control, whose focus it shows.
  void FollowFocusOf(const Control& host) { host_ = &host; }
  /// Entry by default; Readout has figures of one width.
  void SetStyle(TypeStyle style);

  bool KeyDown(const KeyStroke& stroke) override;
  void FocusChanged(bool hasFocus) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void PointerDown(const PointerEvent& event) override;
  void PointerMove(const PointerEvent& event) override;
  void PointerUp(const PointerEvent& event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void Replace(int from, int count, const std::string& with);
  void Edited();
  bool TypeCharacter(char character);
  bool MoveKey(const KeyStroke& stroke);
  [[nodiscard]] int PositionAt(int x) const;
  [[nodiscard]] int TextLeft() const;
  [[nodiscard]] int WidthTo(int position) const;
  void RestartCaret();

  std::string text_;
  int cursor_ = 0;
  int selection_ = 0;
  int anchor_ = -1;
  int blink_ = 0;
  const Control* host_ = this;
  TypeStyle style_ = TypeStyle::Entry;
  bool caretOn_ = true;
  bool readOnly_ = false;
  bool alignRight_ = false;
  std::function<char(char)> keyPress_;
  std::function<void()> change_;
  std::function<void()> click_;
};

}  // namespace torvane::toolkit

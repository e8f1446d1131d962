#include "toolkit/EntryBox.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyleHints>
#include <algorithm>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

EntryBox::EntryBox(QWidget* parent) : Control(parent) { SetFocusable(true); }

EntryBox::~EntryBox() = default;

void EntryBox::SetText(const std::string& text) {
  text_ = text.substr(0, text.find('\0'));
  cursor_ = 0;
  selection_ = 0;
  anchor_ = -1;
  RestartCaret();
}

void EntryBox::SetCursor(int position) {
  cursor_ = std::max(0, position);
  selection_ = 0;
  RestartCaret();
}

void EntryBox::SetSelectionLength(int length) {
  const int room = std::max(0, static_cast<int>(text_.size()) - cursor_);
  selection_ = std::clamp(length, 0, room);
  RestartCaret();
}

void EntryBox::SelectAll() {
  SetCursor(0);
  SetSelectionLength(static_cast<int>(text_.size()));
}

void EntryBox::SetReadOnly(bool readOnly) {
  readOnly_ = readOnly;
  update();
}

void EntryBox::SetAlignRight(bool right) {
  alignRight_ = right;
  update();
}

void EntryBox::SetStyle(TypeStyle style) {
  style_ = style;
  update();
}

void EntryBox::Press() {
  if (!OnShow() || !Enabled() || !click_) return;
  const auto handler = click_;
  handler();
}

void EntryBox::Replace(int from, int count, const std::string& with) {
  const int size = static_cast<int>(text_.size());
  from = std::clamp(from, 0, size);
  count = std::clamp(count, 0, size - from);
  text_.replace(static_cast<std::size_t>(from), static_cast<std::size_t>(count), with);
  cursor_ = from + static_cast<int>(with.size());
  selection_ = 0;
  Edited();
}

void EntryBox::Edited() {
  RestartCaret();
  if (const auto handler = change_) handler();
}

bool EntryBox::TypeCharacter(char character) {
  if (const auto hook = keyPress_) {
    character = hook(character);
    if (!character) return true;
  }
  if (character == static_cast<char>(Key::Enter)) return false;
  if (character != static_cast<char>(Key::Backspace)) {
    Replace(cursor_, selection_, std::string(1, character));
  } else if (selection_ > 0) {
    Replace(cursor_, selection_, {});
  } else if (cursor_ > static_cast<int>(text_.size())) {
    SetCursor(cursor_ - 1);
  } else if (cursor_ > 0) {
    Replace(cursor_ - 1, 1, {});
  }
  return true;
}

bool EntryBox::MoveKey(const KeyStroke& stroke) {
  const int size = static_cast<int>(text_.size());
  const int start = std::min(cursor_, size);
  switch (stroke.Code) {
    case Key::Left:
      SetCursor(selection_ > 0 ? start : std::max(0, start - 1));
      return true;
    case Key::Right:
      SetCursor(selection_ > 0 ? start + selection_ : std::min(size, start + 1));
      return true;
    case Key::Home:
      SetCursor(0);
      return true;
    case Key::End:
      SetCursor(size);
      return true;
    case Key::Delete:
      if (selection_ > 0 || start < size) Replace(start, std::max(1, selection_), {});
      return true;
    default:
      return false;
  }
}

bool EntryBox::KeyDown(const KeyStroke& stroke) {
  if (readOnly_) {
    if (stroke.Code != Key::Enter && stroke.Code != Key::Space) return false;
    if (!stroke.Repeat) Press();
    return true;
  }
  if (MoveKey(stroke)) return true;
  return stroke.Character && TypeCharacter(stroke.Character);
}

void EntryBox::FocusChanged(bool hasFocus) {
  if (blink_) killTimer(blink_);
  blink_ = 0;
  const int period = QGuiApplication::styleHints()->cursorFlashTime() / 2;
  if (hasFocus && !readOnly_ && period > 0) blink_ = startTimer(period);
  RestartCaret();
}

void EntryBox::RestartCaret() {
  caretOn_ = true;
  update();
}

void EntryBox::timerEvent(QTimerEvent*) {
  caretOn_ = !caretOn_;
  update();
}

int EntryBox::WidthTo(int position) const {
  const QFont font = FontOf(Measures(), style_);
  return QFontMetrics(font).horizontalAdvance(
      ToQString(text_).left(std::min<int>(position, static_cast<int>(text_.size()))));
}

/// Where the text starts: scrolled so that the caret stays in view.
int EntryBox::TextLeft() const {
  const int pad = Measures().Px(14);
  const int room = width() - 2 * pad;
  const int whole = WidthTo(static_cast<int>(text_.size()));
  if (whole <= room) return alignRight_ ? width() - pad - whole : pad;
  const int caret = WidthTo(cursor_);
  return caret <= room ? pad : pad + room - caret;
}

int EntryBox::PositionAt(int x) const {
  const int size = static_cast<int>(text_.size());
  const int left = TextLeft();
  for (int i = 0; i < size; ++i) {
    if (x < left + (WidthTo(i) + WidthTo(i + 1)) / 2) return i;
  }
  return size;
}

void EntryBox::PointerDown(const PointerEvent& event) {
  if (readOnly_) return;
  SetCursor(PositionAt(event.X));
  anchor_ = cursor_;
}

void EntryBox::PointerMove(const PointerEvent& event) {
  if (anchor_ < 0 || readOnly_ || event.Button != PointerButton::Left) return;
  const int at = PositionAt(event.X);
  const int anchor = anchor_;
  SetCursor(std::min(at, anchor));
  SetSelectionLength(std::abs(at - anchor));
}

void EntryBox::PointerUp(const PointerEvent& event) {
  anchor_ = -1;
  if (rect().contains(event.X, event.Y)) Press();
}

void EntryBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  const bool focus = host_->HasFocus();
  const Colour text = Enabled() ? Foreground() : Faded(Foreground(), Background());
  painter.fillRect(rect(), ToQColor(Background()));
  painter.setPen(QPen(ToQColor(focus ? text : Rim(Background())), m.Hairline, Qt::SolidLine,
                      Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(rect().adjusted(0, 0, -m.Hairline, -m.Hairline));
  painter.setClipRect(rect().adjusted(m.Px(8), 0, -m.Px(8), 0));
  painter.setFont(FontOf(m, style_));
  const QFontMetrics font(painter.font());
  const QString shown = ToQString(text_);
  const int left = TextLeft();
  const int base = (height() + font.capHeight()) / 2;
  painter.setPen(ToQColor(text));
  painter.drawText(left, base, shown);
  const int caretTop = base - font.capHeight() - font.descent();
  const int caretHeight = font.capHeight() + 2 * font.descent();
  if (selection_ > 0 && !readOnly_) {
    const QRect marked(left + WidthTo(cursor_), caretTop,
                       WidthTo(cursor_ + selection_) - WidthTo(cursor_), caretHeight);
    painter.fillRect(marked, ToQColor(text));
    painter.setClipRect(marked & rect().adjusted(m.Px(8), 0, -m.Px(8), 0));
    painter.setPen(ToQColor(Background()));
    painter.drawText(left, base, shown);
  } else if (focus && caretOn_ && !readOnly_) {
    painter.fillRect(QRect(left + WidthTo(cursor_), caretTop, std::max(2, m.Px(2)), caretHeight),
                     ToQColor(text));
  }
}

}  // namespace torvane::toolkit

#include "toolkit/ListBox.h"

#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

ListBox::ListBox(QWidget* parent, Selection mode, Form* owner)
    : Control(parent, owner), mode_(mode), bar_(this, OwnerForm()) {
  SetFocusable(true);
  // It covers all of its place: a step in a list paints the list and nothing below it.
  setAttribute(Qt::WA_OpaquePaintEvent);
  bar_.SetVisible(false);
  bar_.OnScroll([this](int value) {
    SetTopLine(value);
    if (const auto handler = scrolled_) handler(top_);
  });
}

void ListBox::Clear() { SetItems({}); }

void ListBox::Add(std::string text) { Insert(Count(), std::move(text)); }

void ListBox::Insert(int index, std::string text) {
  index = std::clamp(index, 0, Count());
  items_.insert(items_.begin() + index, std::move(text));
  selected_.insert(selected_.begin() + index, 0);
  if (static_cast<std::size_t>(index) < details_.size())
    details_.insert(details_.begin() + index, std::string());
  if (current_ >= index) ++current_;
  ItemsChanged();
}

void ListBox::Remove(int index) {
  if (index < 0 || index >= Count()) return;
  items_.erase(items_.begin() + index);
  selected_.erase(selected_.begin() + index);
  if (static_cast<std::size_t>(index) < details_.size()) details_.erase(details_.begin() + index);
  if (current_ == index) {
    current_ = -1;
  } else if (current_ > index) {
    --current_;
  }
  ItemsChanged();
}

void ListBox::SetItems(std::vector<std::string> items) {
  items_ = std::move(items);
  selected_.assign(items_.size(), 0);
  details_.clear();
  current_ = -1;
  top_ = 0;
  ItemsChanged();
}

void ListBox::SetText(int index, std::string text) {
  if (index < 0 || index >= Count()) return;
  items_[static_cast<std::size_t>(index)] = std::move(text);
  update();
}

void ListBox::SetDetails(std::vector<std::string> details) {
  details_ = std::move(details);
  update();
}

const std::string& ListBox::Text(int index) const {
  static const std::string none;
  return index < 0 || index >= Count() ? none : items_[static_cast<std::size_t>(index)];
}

void ListBox::SetCurrent(int index) {
  current_ = index < 0 || index >= Count() ? -1 : index;
  if (mode_ == Selection::Single) {
    std::fill(selected_.begin(), selected_.end(), 0);
    if (current_ >= 0) selected_[static_cast<std::size_t>(current_)] = 1;
  }
  ShowCurrent();
  update();
}

void ListBox::SetSelected(int index, bool selected) {
  if (index < 0 || index >= Count() || mode_ == Selection::None) return;
  if (mode_ == Selection::Single) {
    if (selected) return SetCurrent(index);
    if (current_ == index) SetCurrent(-1);
    return;
  }
  selected_[static_cast<std::size_t>(index)] = selected ? 1 : 0;
  update();
}

bool ListBox::Selected(int index) const {
  return index >= 0 && index < Count() && selected_[static_cast<std::size_t>(index)];
}

std::vector<int> ListBox::SelectedIndices() const {
  std::vector<int> indices;
  for (int i = 0; i < Count(); ++i) {
    if (Selected(i)) indices.push_back(i);
  }
  return indices;
}

std::vector<std::string> ListBox::SelectedTexts() const {
  std::vector<std::string> texts;
  for (const int index : SelectedIndices()) texts.push_back(Text(index));
  return texts;
}

void ListBox::SetTopLine(int index) {
  const int last = std::max(0, Count() - VisibleLines());
  top_ = std::clamp(index, 0, last);
  bar_.SetValue(top_);
  update();
}

void ListBox::SetBarHidden(bool hidden) {
  barHidden_ = hidden;
  ItemsChanged();
}

void ListBox::SetStyle(TypeStyle style) {
  style_ = style;
  update();
}

void ListBox::SetVisibleLines(int count) {
  fixedLines_ = std::max(0, count);
  ItemsChanged();
}

int ListBox::VisibleLines() const {
  if (fixedLines_ > 0) return fixedLines_;
  return std::max(1, (height() - 2 * Measures().Hairline) / std::max(1, RowHeight()));
}

int ListBox::RowHeight() const {
  const int inside = height() - 2 * Measures().Hairline;
  if (fixedLines_ > 0) return std::max(1, inside / fixedLines_);
  return std::max(1, Measures().Px(40));
}

int ListBox::NaturalHeight() const {
  constexpr int FewLines = 6;
  const Metrics& m = Measures();
  const int lines = fixedLines_ > 0 ? fixedLines_ * m.LineHeight : FewLines * m.Px(40);
  return lines + 2 * m.Hairline;
}

int ListBox::LineAt(int y) const {
  const int line = top_ + (y - Measures().Hairline) / RowHeight();
  return y < 0 || line >= Count() ? -1 : line;
}

void ListBox::ShowCurrent() {
  if (current_ < 0 || height() < RowHeight()) return;
  const int before = top_;
  if (current_ < top_) SetTopLine(current_);
  if (current_ >= top_ + VisibleLines()) SetTopLine(current_ - VisibleLines() + 1);
  if (top_ == before) return;
  if (const auto handler = scrolled_) handler(top_);
}

void ListBox::Step(int to) {
  if (Count() == 0) return;
  to = std::clamp(to, 0, Count() - 1);
  if (mode_ == Selection::None) {
    SetTopLine(to);
    if (const auto handler = scrolled_) handler(top_);
    return;
  }
  if (to == current_) return;
  SetCurrent(to);
  if (const auto handler = select_) handler();
}

bool ListBox::KeyDown(const KeyStroke& stroke) {
  const int page = std::max(1, VisibleLines() - 1);
  const int from = mode_ == Selection::None ? top_ : current_;
  switch (stroke.Code) {
    case Key::Up:
      Step(from - 1);
      return true;
    case Key::Down:
      Step(from + 1);
      return true;
    case Key::PageUp:
      Step(from - page);
      return true;
    case Key::PageDown:
      Step(std::max(0, from) + page);
      return true;
    case Key::Home:
      Step(0);
      return true;
    case Key::End:
      Step(Count() - 1);
      return true;
    case Key::Space:
      if (mode_ != Selection::Multiple || current_ < 0) return false;
      SetSelected(current_, !Selected(current_));
      if (const auto handler = select_) handler();
      return true;
    default:
      return false;
  }
}

void ListBox::ScrollTo(int index) {
  if (index < 0 || index >= Count()) return;
  const int before = top_;
  if (index < top_) SetTopLine(index);
  if (index >= top_ + VisibleLines()) SetTopLine(index - VisibleLines() + 1);
  if (top_ == before) return;
  if (const auto handler = scrolled_) handler(top_);
}

Area ListBox::LineArea(int index) const {
  const int edge = Measures().Hairline;
  const int right = bar_.Visible() ? bar_.x() : width() - edge;
  return {edge, edge + (index - top_) * RowHeight(), right - edge, RowHeight()};
}

void ListBox::PressLine(int index) {
  if (index < 0 || index >= Count()) return;
  const QPointer<ListBox> self(this);
  if (mode_ == Selection::Multiple) {
    current_ = index;
    SetSelected(index, !Selected(index));
    if (const auto handler = select_) handler();
  } else if (mode_ == Selection::Single && index != current_) {
    SetCurrent(index);
    if (const auto handler = select_) handler();
  }
  if (!self) return;
  if (const auto handler = click_) handler();
}

void ListBox::PointerDown(const PointerEvent& event) {
  pressY_ = event.Y;
  pressTop_ = top_;
  pressLine_ = LineAt(event.Y);
  marksBefore_ = selected_;
  dragged_ = false;
}

/// The lines between the press and here; a drag back gives the rest its old marks again.
void ListBox::MarkUpTo(int y) {
  const int row = RowHeight();
  if (y < 0) SetTopLine(top_ - 1);
  if (y >= height()) SetTopLine(top_ + 1);
  const int last = std::min(Count(), top_ + VisibleLines()) - 1;
  const int line = std::clamp(top_ + (y - Measures().Hairline) / row, top_, std::max(top_, last));
  if (line == current_ || marksBefore_.size() != selected_.size()) return;
  selected_ = marksBefore_;
  const char mark = marksBefore_[static_cast<std::size_t>(pressLine_)] ? 0 : 1;
  const auto [first, end] = std::minmax(pressLine_, line);
  std::fill(selected_.begin() + first, selected_.begin() + end + 1, mark);
  current_ = line;
  update();
  if (const auto handler = select_) handler();
}

/// A finger that moves by half a row drags the lines along and selects nothing; in a multiple list
/// it marks.
void ListBox::PointerMove(const PointerEvent& event) {
  if (pressY_ < 0 || event.Button == PointerButton::None) return;
  if (std::abs(event.Y - pressY_) > RowHeight() / 2) dragged_ = true;
  if (!dragged_) return;
  if (mode_ == Selection::Multiple && pressLine_ >= 0 && pressLine_ < Count())
    return MarkUpTo(event.Y);
  const int before = top_;
  SetTopLine(pressTop_ + (pressY_ - event.Y) / RowHeight());
  if (top_ == before) return;
  if (const auto handler = scrolled_) handler(top_);
}

void ListBox::PointerUp(const PointerEvent& event) {
  const bool press = pressY_ >= 0 && !dragged_;
  pressY_ = -1;
  if (!press || !rect().contains(event.X, event.Y)) return;
  const int line = LineAt(event.Y);
  if (line >= 0) return PressLine(line);
  if (const auto handler = click_) handler();
}

void ListBox::PointerDouble(const PointerEvent& event) {
  if (LineAt(event.Y) != current_ || current_ < 0) return;
  if (const auto handler = doubleClick_) handler();
}

void ListBox::PlaceChanged() {
  const Metrics& m = Measures();
  Area rest = Area{0, 0, width(), height()}.Inset(m.Hairline);
  bar_.Place(TakeRight(rest, std::min(m.ScrollWidth, width() / 3)));
  ItemsChanged();
  ShowCurrent();
}

void ListBox::LookChanged() {
  bar_.SetColours(Background(), Foreground());
  bar_.SetEnabled(Enabled());
  update();
}

void ListBox::MetricsChanged() { PlaceChanged(); }

void ListBox::ItemsChanged() {
  const int beyond = Count() - VisibleLines();
  bar_.SetVisible(beyond > 0 && !barHidden_);
  bar_.SetRange(beyond, VisibleLines());
  SetTopLine(top_);
}

namespace {

std::vector<std::string_view> Columns(std::string_view details) {
  std::vector<std::string_view> columns;
  while (true) {
    const std::size_t tab = details.find('\t');
    columns.push_back(details.substr(0, tab));
    if (tab == std::string_view::npos) return columns;
    details.remove_prefix(tab + 1);
  }
}

}  // namespace

/// Each as wide as its longest text would be in figures.
std::vector<int> ListBox::ColumnWidths(const QPainter& painter) const {
  std::vector<int> widths;
  const int figure = painter.fontMetrics().horizontalAdvance(QLatin1Char('0'));
  for (const std::string& details : details_) {
    const auto columns = Columns(details);
    if (widths.size() < columns.size()) widths.resize(columns.size(), 0);
    for (std::size_t i = 0; i < columns.size(); ++i)
      widths[i] = std::max(widths[i], figure * static_cast<int>(columns[i].size()));
  }
  return widths;
}

/// Takes the columns of a line off the right end of its place.
void ListBox::PaintDetails(QPainter& painter, QRect& place, int line,
                           const std::vector<int>& widths) const {
  if (static_cast<std::size_t>(line) >= details_.size()) return;
  const auto columns = Columns(details_[static_cast<std::size_t>(line)]);
  const int gap = Measures().Px(16);
  for (std::size_t i = widths.size(); i-- > 0;) {
    QRect column = place;
    column.setLeft(place.right() + 1 - widths[i]);
    if (i < columns.size()) PaintFigures(painter, column, ToQString(columns[i]), Alignment::Right);
    place.setRight(column.left() - gap - 1);
  }
}

namespace {

/// The first of the two that the text fits in; where neither does, the second one condensed.
QFont FittingFont(const QFont& first, const QFont& second, const std::string& text, int width) {
  constexpr int Least = 75;  // percent: a narrower letter is not read from afar
  const QString shown = ToQString(text);
  if (QFontMetrics(first).horizontalAdvance(shown) <= width) return first;
  const int wide = QFontMetrics(second).horizontalAdvance(shown);
  QFont font = second;
  if (wide > width) font.setStretch(std::max(Least, 100 * width / wide - 1));
  return font;
}

}  // namespace

void ListBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  painter.fillRect(rect(), ToQColor(Background()));
  QFont font = FontOf(m, style_);
  const int row = RowHeight();
  font.setPixelSize(std::min(font.pixelSize(), std::max(8, row * 5 / 6)));
  // Columns are in the small type, and so is a name that would not fit.
  const QFont narrow = FontOf(m, TypeStyle::Body);
  painter.setFont(narrow);
  const std::vector<int> columns = ColumnWidths(painter);
  const int right = bar_.Visible() ? bar_.x() : width() - m.Hairline;
  const Colour text = Enabled() ? Foreground() : Faded(Foreground(), Background());
  for (int i = 0; i < VisibleLines() && top_ + i < Count(); ++i) {
    const int line = top_ + i;
    const QRect place(m.Hairline, m.Hairline + i * row, right - m.Hairline, row);
    const bool marked = Selected(line);
    if (marked) painter.fillRect(place, ToQColor(text));
    painter.setPen(ToQColor(marked ? Background() : text));
    QRect rest = place.adjusted(m.Px(10), 0, -m.Px(10), 0);
    if (!details_.empty()) {
      painter.setFont(narrow);
      PaintDetails(painter, rest, line, columns);
    }
    painter.setFont(
        style_ == TypeStyle::Mono ? font : FittingFont(font, narrow, Text(line), rest.width()));
    PaintLine(painter, rest, {Text(line), -1}, Alignment::Left);
    if (mode_ != Selection::Multiple || line != current_ || !HasFocus()) continue;
    painter.drawRect(place.adjusted(2, 2, -3, -3));
  }
  const bool focus = HasFocus();
  const int pen = focus ? m.Hairline + 1 : m.Hairline;
  painter.setPen(QPen(ToQColor(focus ? text : Rim(Background())), pen, Qt::SolidLine, Qt::SquareCap,
                      Qt::MiterJoin));
  painter.drawRect(rect().adjusted(pen / 2, pen / 2, -((pen + 1) / 2), -((pen + 1) / 2)));
}

}  // namespace torvane::toolkit

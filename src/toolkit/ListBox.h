// A list of lines with one or several of them selected.
#pragma once

#include <string>
#include <vector>

#include "toolkit/Control.h"
#include "toolkit/Metrics.h"
#include "toolkit/ScrollBar.h"

namespace torvane::toolkit {

enum class Selection { None, Single, Multiple };

/// Indices count from 0, -1 is none. With several selectable, a press or Space turns a line over,
/// a drag gives all lines that it passes the mark that a press would give the first, and the
/// current line (the one with the frame) moves by itself.
class ListBox : public Control {
 public:
  explicit ListBox(QWidget* parent, Selection mode = Selection::Single, Form* owner = nullptr);

  void Clear();
  void Add(std::string text);
  void Insert(int index, std::string text);
  void Remove(int index);
  void SetItems(std::vector<std::string> items);
  void SetText(int index, std::string text);
  [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
  /// What is shown beside the lines, in order: the columns of a line are divided by tabs, their
  /// right ends line up. Lines that come later have none.
  void SetDetails(std::vector<std::string> details);
  [[nodiscard]] const std::vector<std::string>& Details() const { return details_; }
  /// Empty for an index out of range.
  [[nodiscard]] const std::string& Text(int index) const;
  [[nodiscard]] const std::vector<std::string>& Items() const { return items_; }

  /// The current line; in a single list the selected one. Setting it scrolls it into view and tells
  /// nobody; an index out of range selects none.
  void SetCurrent(int index);
  [[nodiscard]] int Current() const { return current_; }

  void SetSelected(int index, bool selected);
  [[nodiscard]] bool Selected(int index) const;
  [[nodiscard]] std::vector<int> SelectedIndices() const;
  [[nodiscard]] std::vector<std::string> SelectedTexts() const;

  /// The first line in view, kept within the list.
  void SetTopLine(int index);
  [[nodiscard]] int TopLine() const { return top_; }
  /// Without a scroll bar of its own, for lists that share one.
  void SetBarHidden(bool hidden);
  /// Entry by default; Mono for the text of programs.
  void SetStyle(TypeStyle style);

  /// Lines that fit; a fixed count stretches the rows, 0 goes by the type.
  void SetVisibleLines(int count);
  [[nodiscard]] int VisibleLines() const;
  /// The height that shows the fixed count of lines, or six where none is fixed, pixels.
  [[nodiscard]] int NaturalHeight() const;

  /// The operator changed the current line or the selection (pointer or key).
  void OnSelect(std::function<void()> handler) { select_ = std::move(handler); }
  /// The operator scrolled, or the current line moved the view.
  void OnScroll(std::function<void(int topLine)> handler) { scrolled_ = std::move(handler); }
  void OnDoubleClick(std::function<void()> handler) { doubleClick_ = std::move(handler); }
  void OnClick(std::function<void()> handler) { click_ = std::move(handler); }

  /// Up, Down, PageUp, PageDown, Home, End, and Space in a multiple list; for screens that steer
  /// the list from their key-down hook as well.
  bool KeyDown(const KeyStroke& stroke) override;
  /// As if the operator had scrolled until that line shows.
  void ScrollTo(int index);
  /// Where a line shows, pixels of the list; nothing of it is in view for one that is scrolled out.
  [[nodiscard]] Area LineArea(int index) const;
  /// As if the operator had pressed that line.
  void PressLine(int index);

  void MetricsChanged() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void PointerDown(const PointerEvent& event) override;
  void PointerMove(const PointerEvent& event) override;
  void PointerUp(const PointerEvent& event) override;
  void PointerDouble(const PointerEvent& event) override;
  void PlaceChanged() override;
  void LookChanged() override;

 private:
  [[nodiscard]] int RowHeight() const;
  [[nodiscard]] int LineAt(int y) const;
  void Step(int to);
  void MarkUpTo(int y);
  void PaintDetails(QPainter& painter, QRect& place, int line,
                    const std::vector<int>& widths) const;
  [[nodiscard]] std::vector<int> ColumnWidths(const QPainter& painter) const;
  void ShowCurrent();
  void ItemsChanged();

  Selection mode_;
  std::vector<std::string> items_;
  std::vector<char> selected_;
  std::vector<std::string> details_;
  std::vector<char> marksBefore_;  ///< at the press that a drag began with
  int current_ = -1;
  int top_ = 0;
  int fixedLines_ = 0;
  bool barHidden_ = false;
  TypeStyle style_ = TypeStyle::Entry;
  int pressY_ = -1;
  int pressTop_ = 0;
  int pressLine_ = -1;
  bool dragged_ = false;
  ScrollBar bar_;
  std::function<void()> select_;
  std::function<void(int)> scrolled_;
  std::function<void()> doubleClick_;
  std::function<void()> click_;
};

}  // namespace torvane::toolkit

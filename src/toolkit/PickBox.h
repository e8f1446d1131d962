// An entry with a list that drops down from it.
#pragma once

#include <QPointer>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/EntryBox.h"
#include "toolkit/ListBox.h"

namespace torvane::toolkit {

/// The text may be typed or taken from the list. Up and Down step through the list's lines; a press
/// on the arrow, or Enter, opens the list, and there Enter or a press takes the line and Escape, or
/// a press elsewhere, leaves the text as it was.
class PickBox : public Control {
 public:
  explicit PickBox(QWidget* parent);
  ~PickBox() override;

  void SetItems(std::vector<std::string> items);
  void AddItem(std::string text);
  void ClearItems();
  [[nodiscard]] int Count() const { return list_->Count(); }
  [[nodiscard]] const std::string& Item(int index) const { return list_->Text(index); }

  /// Index of the line that was taken last, -1 when the text was typed or set.
  [[nodiscard]] int Current() const { return current_; }
  /// Takes a line; tells nobody. Out of range: none, and the text is emptied.
  void SetCurrent(int index);

  void SetText(const std::string& text);
  [[nodiscard]] const std::string& Text() const { return entry_.Text(); }
  [[nodiscard]] EntryBox& Entry() { return entry_; }
  [[nodiscard]] ListBox& List() { return *list_; }
  [[nodiscard]] const ListBox& List() const { return *list_; }

  void OpenList();
  void CloseList();
  [[nodiscard]] bool ListOpen() const { return open_; }

  /// The operator took another line, or typed.
  void OnChange(std::function<void()> handler) { change_ = std::move(handler); }
  void OnKeyPress(std::function<char(char)> handler) { entry_.OnKeyPress(std::move(handler)); }

  bool KeyDown(const KeyStroke& stroke) override;
  void FocusChanged(bool hasFocus) override;
  void MetricsChanged() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void PointerUp(const PointerEvent& event) override;
  void PlaceChanged() override;
  void LookChanged() override;

 private:
  bool ListKey(const KeyStroke& stroke);
  void Take(int index);
  [[nodiscard]] Area ListArea(const Metrics& m);

  EntryBox entry_;
  QPointer<ListBox> list_;
  int current_ = -1;
  bool open_ = false;
  std::function<void()> change_;
};

}  // namespace torvane::toolkit

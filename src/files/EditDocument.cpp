#include "files/EditDocument.h"

#include <algorithm>

#include "core/Text.h"

namespace torvane::files {

void EditDocument::Load(std::string_view text) {
  lines_.clear();
  for (const std::string_view line : core::SplitLines(text)) lines_.emplace_back(core::Trim(line));
  selected_ = lines_.empty() ? -1 : 0;
  top_ = 0;
  changed_ = false;
}

std::string EditDocument::Text() const {
  std::string text;
  for (const std::string& line : lines_) text.append(core::Trim(line)).append("\r\n");
  return text;
}

std::string EditDocument::SelectedText() const {
  return selected_ < 0 ? std::string() : lines_[static_cast<std::size_t>(selected_)];
}

void EditDocument::Select(int index) { selected_ = index < 0 || index >= Count() ? -1 : index; }

void EditDocument::ScrollTo(int topLine) { SetTop(topLine); }

void EditDocument::SetTop(int top) {
  top_ = std::clamp(top, 0, std::max(0, Count() - EditViewLines));
}

void EditDocument::BringIntoView() { SetTop(selected_); }

void EditDocument::Insert(std::string_view text) {
  selected_ = lines_.empty() ? 0 : selected_ + 1;
  lines_.emplace(lines_.begin() + selected_, core::Trim(text));
  changed_ = true;
  BringIntoView();
}

bool EditDocument::Replace(std::string_view text) {
  if (selected_ < 0) return false;
  std::string& line = lines_[static_cast<std::size_t>(selected_)];
  const std::string_view trimmed = core::Trim(text);
  changed_ = changed_ || line != trimmed;
  line = trimmed;
  BringIntoView();
  return true;
}

bool EditDocument::Delete() {
  if (selected_ < 0) return false;
  lines_.erase(lines_.begin() + selected_);
  selected_ = std::min(selected_, Count() - 1);
  changed_ = true;
  BringIntoView();
  return true;
}

void EditDocument::Home() {
  selected_ = lines_.empty() ? -1 : 0;
  SetTop(0);
}

void EditDocument::PageUp() {
  if (lines_.empty()) return;
  selected_ = std::max(0, selected_ - EditPageLines);
  SetTop(top_ - EditPageLines);
}

void EditDocument::PageDown() {
  selected_ = std::min(Count() - 1, selected_ + EditPageLines);
  SetTop(top_ + EditPageLines);
}

void EditDocument::End() {
  selected_ = Count() - 1;
  SetTop(selected_);
}

}  // namespace torvane::files

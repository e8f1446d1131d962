#include "simulator/TableRing.h"

#include <algorithm>

namespace torvane::simulator {

TableRing::TableRing(int firstIndex, int lastIndex)
    : first_(firstIndex), last_(lastIndex), due_(lastIndex + 1) {}

void TableRing::Begin() {
  rows_.clear();
  newest_ = 0;
  mark_ = 0;
  broken_ = false;
  ++programs_;
}

void TableRing::GoOver(int index, int count) {
  const auto touches = [&](const RingRow& row) {
    return row.Index < index + count && index < row.Index + row.Count;
  };
  while (!rows_.empty() && touches(rows_.front())) rows_.pop_front();
  for (auto& row : rows_) {
    if (touches(row)) row.Whole = false;
  }
}

void TableRing::Written(int index, std::span<const double> values, bool running) {
  const int count = static_cast<int>(values.size());
  const bool again = !rows_.empty() && index == rows_.back().Index && index != first_;
  if (again) {  // the newest row, sent once more, takes its own place
    rows_.pop_back();
    --newest_;
    due_ = index;
  }
  const bool due = Due(index);
  const bool begins = index == first_ && (!due || broken_ || newest_ == 0);
  if (begins) {
    Begin();
  } else if (!due) {
    broken_ = true;
  } else if (index == first_ && !running) {
    mark_ = newest_ + 1;
  }
  GoOver(index, count);
  due_ = index + count;
  if (broken_) return;
  auto& row = rows_.emplace_back();
  row.Index = index;
  row.Count = count;
  std::copy_n(values.begin(), std::min(values.size(), LongestRow), row.Values.begin());
  ++newest_;
}

void TableRing::Select() {
  if (mark_ == 0) return;
  const int before = mark_ - 1;
  while (!rows_.empty() && OldestLine() < mark_) rows_.pop_front();
  newest_ -= before;
  mark_ = 0;
  ++programs_;
}

void TableRing::Resume(int line, int due) {
  rows_.clear();
  newest_ = line;
  due_ = due;
  mark_ = 0;
  broken_ = false;
}

int TableRing::OldestLine() const {
  return rows_.empty() ? 0 : newest_ - static_cast<int>(rows_.size()) + 1;
}

const RingRow* TableRing::Row(int line) const {
  if (rows_.empty() || line < OldestLine() || line > newest_) return nullptr;
  const auto& row = rows_[static_cast<std::size_t>(line - OldestLine())];
  return row.Whole ? &row : nullptr;
}

}  // namespace torvane::simulator

#include "console/FormGrid.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "toolkit/Button.h"
#include "toolkit/EntryBox.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/ListBox.h"
#include "toolkit/Panel.h"
#include "toolkit/PickBox.h"
#include "toolkit/ProgressBar.h"

namespace torvane::console {

using toolkit::Area;
using toolkit::Control;
using toolkit::Metrics;

namespace {

template <class Kind>
const Kind* As(const Control& control) {
  return dynamic_cast<const Kind*>(&control);
}

/// What is no frame and no panel, at the height that its kind has everywhere.
int NaturalHeight(const Control& control, const Metrics& metrics) {
  if (As<toolkit::Button>(control) != nullptr) return metrics.KeyHeight;
  if (As<toolkit::EntryBox>(control) != nullptr || As<toolkit::PickBox>(control) != nullptr)
    return metrics.EntryHeight;
  if (const auto* label = As<toolkit::Label>(control)) return label->NaturalHeight();
  if (const auto* list = As<toolkit::ListBox>(control)) return list->NaturalHeight();
  return metrics.EntryHeight;
}

int InsideHeight(const Control& box, int contents, const Metrics& metrics) {
  if (const auto* frame = As<toolkit::Frame>(box)) return frame->HeightFor(metrics, contents);
  return contents + 2 * (metrics.Hairline + metrics.Gap);
}

Area RoomInside(const Control& box, const Metrics& metrics) {
  if (const auto* frame = As<toolkit::Frame>(box)) return frame->Inside();
  return Area{0, 0, box.Bounds().Width, box.Bounds().Height}.Inset(metrics.Hairline + metrics.Gap);
}

/// Cuts `room` by the shares, to the last pixel.
std::vector<int> CutByShares(int room, const std::vector<double>& shares) {
  const double all = std::accumulate(shares.begin(), shares.end(), 0.0);
  std::vector<int> parts;
  double sum = 0;
  int taken = 0;
  for (const double share : shares) {
    sum += share;
    const int upTo = all > 0 ? static_cast<int>(std::max(0, room) * sum / all) : 0;
    parts.push_back(upTo - taken);
    taken = upTo;
  }
  return parts;
}

}  // namespace

Cell::Cell(Control& control) : kind_(Kind::Control), control_(&control) {}
Cell::Cell(Control* control) : Cell(*control) {}
Cell::Cell(Kind kind, std::vector<Cell> cells) : kind_(kind), cells_(std::move(cells)) {}

Cell Cell::Wide(double drawn) const {
  Cell cell = *this;
  cell.wide_ = drawn;
  return cell;
}

Cell Cell::High(double drawn) const {
  Cell cell = *this;
  cell.high_ = drawn;
  return cell;
}

Cell Cell::Share(double weight) const {
  Cell cell = *this;
  cell.share_ = weight;
  return cell;
}

Cell Cell::Spaced(double drawn) const {
  Cell cell = *this;
  cell.gap_ = drawn;
  return cell;
}

Cell Cell::WithFoot() const {
  Cell cell = *this;
  cell.foot_ = true;
  return cell;
}

int Cell::GapOf(const Metrics& metrics) const { return metrics.Px(gap_); }

int Cell::Height(const Metrics& metrics) const {
  if (high_ > 0) {
    const bool key = kind_ == Kind::Control && As<toolkit::Button>(*control_) != nullptr;
    return key ? metrics.KeyOf(high_) : metrics.Px(high_);
  }
  if (kind_ == Kind::Control) return NaturalHeight(*control_, metrics);
  const int contents = ContentsHeight(metrics);
  return kind_ == Kind::Inside ? InsideHeight(*control_, contents, metrics) : contents;
}

int Cell::ContentsHeight(const Metrics& metrics) const {
  int sum = 0;
  int highest = 0;
  for (const Cell& cell : cells_) {
    const int height = cell.Height(metrics);
    sum += height;
    highest = std::max(highest, height);
  }
  if (kind_ != Kind::Rows || cells_.empty()) return highest;
  return sum + GapOf(metrics) * (static_cast<int>(cells_.size()) - 1);
}

void Cell::Place(const Area& area, const Metrics& metrics) const {
  switch (kind_) {
    case Kind::Control:
      control_->Place(area);
      return;
    case Kind::Inside:
      control_->Place(area);
      cells_.front().Place(RoomInside(*control_, metrics), metrics);
      return;
    case Kind::Rows:
      return PlaceRows(area, metrics);
    case Kind::Columns:
      return PlaceColumns(area, metrics);
    case Kind::Layers:
      for (const Cell& cell : cells_) cell.Place(area, metrics);
      return;
    case Kind::Space:
      return;
  }
}

void Cell::PlaceRows(const Area& area, const Metrics& metrics) const {
  const int gap = GapOf(metrics);
  std::vector<double> shares;
  int room = area.Height - ContentsHeight(metrics);
  for (const Cell& cell : cells_) shares.push_back(std::max(0.0, cell.share_));
  const std::vector<int> more = CutByShares(room, shares);
  int y = area.Y;
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const int height = cells_[i].Height(metrics) + more[i];
    if (foot_ && i > 0 && i + 1 == cells_.size()) y = std::max(y, area.Bottom() - height);
    cells_[i].Place({area.X, y, area.Width, height}, metrics);
    y += height + gap;
  }
}

void Cell::PlaceColumns(const Area& area, const Metrics& metrics) const {
  const int gap = GapOf(metrics);
  std::vector<double> shares;
  int room = area.Width - gap * (static_cast<int>(cells_.size()) - 1);
  for (const Cell& cell : cells_) {
    const bool fixed = cell.wide_ > 0;
    if (fixed) room -= metrics.Px(cell.wide_);
    shares.push_back(fixed ? 0.0 : cell.share_ < 0 ? 1.0 : cell.share_);
  }
  const std::vector<int> parts = CutByShares(room, shares);
  int x = area.X;
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const int width = cells_[i].wide_ > 0 ? metrics.Px(cells_[i].wide_) : parts[i];
    cells_[i].Place({x, area.Y, width, area.Height}, metrics);
    x += width + gap;
  }
}

Cell Space() { return Cell(Cell::Kind::Space, {}).Share(1); }

Cell Rows(std::vector<Cell> cells) { return Cell(Cell::Kind::Rows, std::move(cells)); }

Cell Columns(std::vector<Cell> cells) { return Cell(Cell::Kind::Columns, std::move(cells)); }

Cell Layers(std::vector<Cell> cells) { return Cell(Cell::Kind::Layers, std::move(cells)); }

std::vector<Cell> Sharing(std::vector<Cell> cells) {
  for (Cell& cell : cells) cell = cell.Share(1);
  return cells;
}

Cell Table(const std::vector<double>& widths, const std::vector<std::vector<Cell>>& rows) {
  std::vector<Cell> lines;
  for (const auto& row : rows) {
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < row.size(); ++i)
      cells.push_back(widths[i] > 0 ? row[i].Wide(widths[i]) : row[i]);
    lines.push_back(Columns(std::move(cells)));
  }
  return Rows(std::move(lines));
}

Cell Inside(Control& box, const Cell& contents) {
  Cell cell(Cell::Kind::Inside, {contents});
  cell.control_ = &box;
  return cell;
}

Cell AtRight(Control& key, double wide) { return Columns({Space(), Cell(key).Wide(wide)}); }

}  // namespace torvane::console

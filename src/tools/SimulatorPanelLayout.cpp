// Where everything stands on the simulated machine's panel.
#include "toolkit/Area.h"
#include "tools/SimulatorPanel.h"

namespace torvane::tools {

using toolkit::Area;
using toolkit::Metrics;

namespace {

constexpr int CycleKeyHeight = 48;
constexpr int SmallKeyHeight = 36;
constexpr int StateLineHeight = 20;
constexpr int LampWidth = 96;
constexpr int SpeedTextWidth = 48;

void PlaceRow(const Area& row, const std::vector<toolkit::Control*>& controls, int gap) {
  const auto cells = toolkit::Columns(row, static_cast<int>(controls.size()), gap);
  for (std::size_t i = 0; i < controls.size(); ++i) controls[i]->Place(cells[i]);
}

}  // namespace

void SimulatorPanel::Layout(const Metrics& metrics) {
  form_.SetSize(desk_.width(), desk_.height());
  Area inside = form_.Inside();
  title_->Place(toolkit::TakeTop(inside, metrics.TitleHeight + metrics.Gap));
  body_->Place(inside);
  const int gap = 2 * metrics.Gap;
  Area rest = Area{0, 0, inside.Width, inside.Height}.Inset(metrics.Margin);
  Area top = toolkit::TakeTop(rest, 3 * CycleKeyHeight + 2 * gap, gap);
  const auto lamps =
      toolkit::Rows(toolkit::TakeLeft(top, LampWidth, gap), static_cast<int>(lamps_.size()), 0);
  for (std::size_t i = 0; i < lamps_.size(); ++i) lamps_[i]->Place(lamps[i]);
  const auto keys = toolkit::Rows(top, 3, gap);
  start_->Place(keys[0]);
  hold_->Place(keys[1]);
  stop_->Place(keys[2]);
  faultFrame_->Place(toolkit::TakeTop(
      rest, toolkit::Frame::HeightFor(metrics, 3 * SmallKeyHeight + 2 * metrics.Gap), gap));
  LayoutFaults(metrics);
  speedFrame_->Place(
      toolkit::TakeTop(rest, toolkit::Frame::HeightFor(metrics, SmallKeyHeight), gap));
  LayoutSpeed(metrics);
  state_->Place(toolkit::TakeTop(rest, StateLineHeight));
}

void SimulatorPanel::LayoutFaults(const Metrics& metrics) {
  const auto rows = toolkit::Rows(faultFrame_->Inside(), 3, metrics.Gap);
  const Picker* pickers[] = {&error_, &bit_};
  for (std::size_t i = 0; i < std::size(pickers); ++i) {
    Area row = rows[i];
    pickers[i]->Raise->Place(toolkit::TakeRight(row, row.Width / 2 - metrics.Gap / 2, metrics.Gap));
    pickers[i]->Less->Place(toolkit::TakeLeft(row, SmallKeyHeight, metrics.Gap));
    pickers[i]->More->Place(toolkit::TakeRight(row, SmallKeyHeight, metrics.Gap));
    pickers[i]->Shown->Place(row);
  }
  PlaceRow(rows[2], {clear_, beam_}, metrics.Gap);
}

void SimulatorPanel::LayoutSpeed(const Metrics& metrics) {
  Area row = speedFrame_->Inside();
  speedText_->Place(toolkit::TakeRight(row, SpeedTextWidth, metrics.Gap));
  speed_->Place(row);
}

}  // namespace torvane::tools

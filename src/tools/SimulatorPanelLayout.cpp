// Where everything is placed on the simulated machine's panel.
#include <initializer_list>

#include "tools/SimulatorPanel.h"

namespace torvane::tools {

using console::Cell;
using toolkit::Area;
using toolkit::Metrics;

namespace {

/// Pixels of the drawing.
constexpr double KeyHigh = 56;
constexpr double LampHigh = 28;
constexpr double LampWide = 152;
constexpr double StepWide = 80;
constexpr double NumberWide = 64;
constexpr double SpeedTextWide = 56;

Cell Key(toolkit::Button* key, double wide) { return Cell(key).Wide(wide).High(KeyHigh); }

}  // namespace

int SimulatorPanel::HeightFor(const Metrics& metrics) const {
  const int rows = faults_->Down() ? 2 : 1;
  return rows * metrics.KeyOf(KeyHigh) + (rows + 1) * metrics.Gap + 2 * metrics.Hairline;
}

/// What is worked in every run.
Cell SimulatorPanel::MainCells() {
  std::vector<Cell> lines;
  constexpr std::size_t LampsInALine = 3;
  for (std::size_t from = 0; from < lamps_.size(); from += LampsInALine) {
    std::vector<Cell> line;
    for (std::size_t i = from; i < from + LampsInALine; ++i) {
      line.push_back(i < lamps_.size() ? Cell(lamps_[i]).Wide(LampWide).High(LampHigh)
                                       : console::Space().Wide(LampWide));
    }
    lines.push_back(console::Columns(std::move(line)).Spaced(0));
  }
  std::vector<Cell> cells = {Key(start_, 148), Key(hold_, 136), Key(stop_, 104),
                             console::Rows(std::move(lines)).Spaced(0).Wide(3 * LampWide), state_};
  if (faults_->Visible()) cells.push_back(Key(faults_, 112));
  return console::Columns(std::move(cells));
}

/// What can go wrong, and how fast the machine's time runs.
Cell SimulatorPanel::FaultCells() {
  std::vector<Cell> cells;
  for (const Picker* picker : {&error_, &bit_}) {
    cells.push_back(Key(picker->Less, StepWide));
    cells.push_back(Cell(picker->Shown).Wide(NumberWide));
    cells.push_back(Key(picker->More, StepWide));
    cells.push_back(Key(picker->Raise, 116));
  }
  cells.push_back(Key(clear_, 96));
  cells.push_back(Key(beam_, 152));
  cells.emplace_back(speed_);
  cells.push_back(Cell(speedText_).Wide(SpeedTextWide));
  return console::Columns(std::move(cells));
}

void SimulatorPanel::Layout(const Metrics& metrics) {
  body_->Place(form_.Inside());
  const bool open = faults_->Down();
  for (toolkit::Control* control : std::initializer_list<toolkit::Control*>{
           error_.Less, error_.Shown, error_.More, error_.Raise, bit_.Less, bit_.Shown, bit_.More,
           bit_.Raise, clear_, beam_, speed_, speedText_})
    control->SetVisible(open);
  Area rest = body_->Inside().Inset(metrics.Gap);
  const int key = metrics.KeyOf(KeyHigh);
  MainCells().Place(toolkit::TakeTop(rest, key, metrics.Gap), metrics);
  if (open) FaultCells().Place(toolkit::TakeTop(rest, key), metrics);
}

}  // namespace torvane::tools

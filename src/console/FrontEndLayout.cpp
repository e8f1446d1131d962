// Where everything stands on the main screen: one grid, the plot takes what the rest leaves.
#include "console/FrontEnd.h"
#include "console/MainAreas.h"
#include "toolkit/Area.h"

namespace torvane::console {

using toolkit::Area;
using toolkit::Metrics;

namespace {

constexpr int FigureRowHeight = 96;
constexpr int MainKeys = 7;
/// Widths of the program keys and of the last two keys, in main keys.
constexpr double ProgramKeyShare = 1.5;
constexpr double LastKeyShare = 1.12;
/// Keys of the graphics state: nothing stands beside them but the last two keys.
constexpr int GraphicsKeys = 6;

}  // namespace

void FrontEnd::Layout(const Metrics& metrics) {
  Area rest = Window().Inside();
  header_->Place(toolkit::TakeTop(rest, metrics.TitleHeight));
  const Area strip = toolkit::TakeBottom(rest, KeyStripHeight(metrics));
  keyStrip_->Place(strip);
  LayoutKeys({0, 0, strip.Width, strip.Height}, metrics);
  rest = rest.Inset(metrics.Gap);
  statusPanel_->Place(toolkit::TakeBottom(rest, metrics.TextStrip, metrics.Gap / 2));
  textPanel_->Place(toolkit::TakeBottom(rest, metrics.TextStrip, metrics.Gap));
  const Area figures = toolkit::TakeRight(rest, metrics.Px(PositionBoxWidth), metrics.Gap);
  figureField_->Place(figures);
  positionBox_->Place(figures);
  LayoutPositions(metrics);
  mainPanel_->Place(rest);
  const Area plot = Area{0, 0, rest.Width, rest.Height}.Inset(metrics.Hairline);
  for (toolkit::PlotCanvas* box : plotBoxes_) box->Place(plot);
}

void FrontEnd::LayoutPositions(const Metrics& metrics) {
  Area rest = positionBox_->Inside().Inset(metrics.Gap * 2, metrics.Gap);
  for (std::size_t i = 0; i < positionLabels_.size(); ++i) {
    const bool shown = positionLabels_[i]->Visible();
    Area row = shown ? toolkit::TakeTop(rest, metrics.Px(FigureRowHeight))
                     : Area{rest.X, rest.Y, rest.Width, 0};
    positionLabels_[i]->Place(toolkit::TakeLeft(row, metrics.Px(32)));
    positionTexts_[i]->Place(row);
    positionLines_[i]->Place(toolkit::TakeTop(rest, shown ? metrics.Hairline : 0));
  }
}

void FrontEnd::LayoutKeys(Area strip, const Metrics& metrics) {
  Area rest = strip.Inset(metrics.Gap);
  const int groupGap = 2 * metrics.Gap;
  const int gaps = (MainKeys - 1) * metrics.Gap + 2 * groupGap + 2 * metrics.Gap;
  const double key = (rest.Width - gaps) / (MainKeys + 2 * ProgramKeyShare + 2 * LastKeyShare);
  const int last = static_cast<int>(key * LastKeyShare);
  const int program = static_cast<int>(key * ProgramKeyShare);
  shutdownButton_->Place(toolkit::TakeRight(rest, last, metrics.Gap));
  messageButton_->Place(toolkit::TakeRight(rest, last, groupGap));
  programButtons_[1]->Place(toolkit::TakeRight(rest, program, metrics.Gap));
  programButtons_[0]->Place(toolkit::TakeRight(rest, program, groupGap));
  mainRow_->Place(rest);
  const auto cells = toolkit::Columns({0, 0, rest.Width, rest.Height}, MainKeys, metrics.Gap);
  for (std::size_t i = 0; i < mainButtons_.size(); ++i) mainButtons_[i]->Place(cells[i]);
  const Area whole{rest.X, rest.Y, programButtons_[1]->Bounds().Right() - rest.X, rest.Height};
  LayoutGraphicsKeys(whole, metrics);
}

void FrontEnd::LayoutGraphicsKeys(Area whole, const Metrics& metrics) {
  graphicsRow_->Place(whole);
  pathRow_->Place(whole);
  const auto cells = toolkit::Columns({0, 0, whole.Width, whole.Height}, GraphicsKeys, metrics.Gap);
  for (std::size_t i = 0; i < graphicsButtons_.size(); ++i) graphicsButtons_[i]->Place(cells[i]);
  kerfButton_->Place(cells[4]);
  limitsButton_->Place(cells[5]);
  for (std::size_t i = 0; i < pathButtons_.size(); ++i) pathButtons_[i]->Place(cells[i]);
}

}  // namespace torvane::console

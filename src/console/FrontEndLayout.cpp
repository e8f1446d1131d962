// Where everything lies on the main screen: one grid, the plot takes what the rest leaves.
#include <algorithm>

#include "console/FrontEnd.h"
#include "console/MainAreas.h"
#include "toolkit/Area.h"

namespace torvane::console {

using toolkit::Area;
using toolkit::Metrics;

namespace {

constexpr int ReceiveLampWidth = 256;
constexpr int MainKeys = 7;
/// Widths of the program keys and of the last two keys, in main keys.
constexpr double ProgramKeyShare = 1.5;
constexpr double LastKeyShare = 1.12;
/// Keys of the graphics state: nothing is beside them but the last two keys.
constexpr int GraphicsKeys = 6;

}  // namespace

void FrontEnd::Layout(const Metrics& metrics) {
  Area rest = Window().Inside();
  header_->Place(toolkit::TakeTop(rest, metrics.TitleHeight));
  Area title = Area{0, 0, header_->width(), header_->height()}.Inset(metrics.Gap);
  receiveLamp_->Place(toolkit::TakeRight(title, metrics.Px(ReceiveLampWidth)));
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

/// The figures that show share the height; the letter is small above its figure, which has the
/// whole width.
void FrontEnd::LayoutPositions(const Metrics& metrics) {
  const Area box = positionBox_->Inside().Inset(metrics.Gap * 2, metrics.Gap);
  const auto shown = std::count_if(positionLabels_.begin(), positionLabels_.end(),
                                   [](const toolkit::Label* label) { return label->Visible(); });
  const auto rows = toolkit::Rows(box, static_cast<int>(shown), metrics.Gap);
  std::size_t next = 0;
  for (std::size_t i = 0; i < positionLabels_.size(); ++i) {
    if (!positionLabels_[i]->Visible()) continue;
    Area row = rows[next++];
    positionLines_[i]->SetVisible(next < rows.size());
    positionLines_[i]->Place(toolkit::TakeBottom(row, metrics.Hairline));
    const int figure = metrics.TypeSize(toolkit::TypeStyle::Position) * 3 / 2;
    positionLabels_[i]->Place(toolkit::TakeTop(row, metrics.LineHeight));
    row.Y += std::max(0, (row.Height - figure) / 2);
    row.Height = std::min(row.Height, figure);
    positionTexts_[i]->Place(row);
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
  programButtons_[2]->Place(toolkit::TakeRight(rest, program, metrics.Gap));
  programButtons_[1]->Place(toolkit::TakeRight(rest, program, groupGap));
  mainRow_->Place(rest);
  const auto cells = toolkit::Columns({0, 0, rest.Width, rest.Height}, MainKeys, metrics.Gap);
  for (std::size_t i = 0; i < mainButtons_.size(); ++i) mainButtons_[i]->Place(cells[i]);
  const Area whole{rest.X, rest.Y, programButtons_[2]->Bounds().Right() - rest.X, rest.Height};
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

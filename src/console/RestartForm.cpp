#include "console/RestartForm.h"

#include <QPoint>
#include <algorithm>
#include <cmath>

#include "console/ConsoleServices.h"
#include "console/FrontEnd.h"
#include "console/MainAreas.h"
#include "console/ScreenSet.h"
#include "core/ScreenNames.h"
#include "graphics/RestartMarks.h"
#include "platform/RuntimeFault.h"
#include "restart/RestartWords.h"

namespace torvane::console {

namespace {

constexpr int WordRows = 5;
/// Characters that a row of them has room for.
constexpr std::size_t RowLength = 84;

/// What is told: a row for each of the first sentences, and the notes after them filled up to the
/// last row.
std::vector<std::string> RowsOf(const std::vector<std::string>& words) {
  constexpr std::size_t RowsOfOneSentence = 3;
  std::vector<std::string> rows;
  rows.reserve(WordRows);
  for (const std::string& sentence : words) {
    const bool joins =
        rows.size() == WordRows ||
        (rows.size() > RowsOfOneSentence && rows.back().size() + sentence.size() < RowLength);
    if (joins) {
      rows.back().append(" ").append(sentence);
    } else {
      rows.push_back(sentence);
    }
  }
  return rows;
}

/// Distance of a point from an area, pixels; 0 inside it.
double DistanceFrom(const toolkit::Area& area, QPoint point) {
  const int across = std::max({area.X - point.x(), 0, point.x() - area.Right()});
  const int down = std::max({area.Y - point.y(), 0, point.y() - area.Bottom()});
  return std::hypot(across, down);
}

/// In the middle of `room`.
toolkit::Area MiddleOf(const toolkit::Area& room, int width, int height) {
  return {room.X + (room.Width - width) / 2, room.Y + (room.Height - height) / 2, width, height};
}

/// Of the corners of `room` the one at which an area of that size leaves `point` farthest outside.
toolkit::Area CornerClearOf(const toolkit::Area& room, int width, int height, QPoint point) {
  toolkit::Area best;
  for (const int left : {room.X, room.Right() - width}) {
    for (const int top : {room.Y, room.Bottom() - height}) {
      const toolkit::Area corner{left, top, width, height};
      if (best.Width == 0 || DistanceFrom(corner, point) > DistanceFrom(best, point)) best = corner;
    }
  }
  return best;
}

restart::RestartParts PartsOf(const ConsoleServices& services, toolkit::Desk& desk) {
  return {services.System, services.Trio,    services.Poll,         desk.Loop(),
          services.Files,  services.Dialogs, services.RestartPoint, services.Split};
}

}  // namespace

RestartForm::RestartForm(const ScreenStart& start)
    : Screen(start), operation_(PartsOf(Services(), Screens().Desk()), *this) {
  cycleStart_ = &AddLabel(Body(), "CycleStartLabel", " PRESS  CYCLE START", Role::Panel,
                          toolkit::TypeStyle::Title, toolkit::Alignment::Centre);
  cycleStart_->SetFilled(true);
  cycleStart_->SetColours(0, 0);
  tools_ = AddLabels(Body(), "ToolLabel", 1, {"T01", "Diameter 10"});
  for (const char* text : {"METRIC", "X0.00", "Y0.00", "C0.00"}) {
    const int index = static_cast<int>(positions_.size());
    positions_.push_back(&AddLabel(Body(), Numbered("PositnLabel", index), text, Role::Panel,
                                   toolkit::TypeStyle::Strong));
  }
  hits_ = &AddLabel(Body(), "HitsLabel", "Completed Hits : 0");
  for (int row = 1; row <= WordRows; ++row) {
    words_.push_back(&AddLabel(Body(), Numbered("OutlookLabel", row), "", Role::Panel));
  }
  auto& cancel =
      AddButton(Body(), "ExitButton", "&CANCEL", Role::General, [this] { operation_.Cancel(); });
  SetHome(cancel);
  SetGrid(760, Rows({Columns({Cell(cycleStart_).High(64), Cell(cancel).Wide(KeyWide)}),
                     Rows({Columns(CellsOf(positions_)),
                           Columns({tools_[0], tools_[1], Cell(hits_).Share(2)})}),
                     Rows(CellsOf(words_)).Spaced(0)})
                   .Spaced(SectionGap));
}

void RestartForm::Loaded() {
  for (auto* label : words_) label->SetText("");
}

void RestartForm::Activated() {
  if (begun_) return;
  begun_ = true;
  Screens().Desk().Loop().Post(Guard([this] { operation_.StartRestart(); }));
}

void RestartForm::ShowRestart(const restart::RestartLabels& labels) {
  for (std::size_t i = 0; i < tools_.size(); ++i) tools_[i]->SetText(labels.ToolLabel[i]);
  for (std::size_t i = 0; i < positions_.size(); ++i) {
    positions_[i]->SetText(labels.PositnLabel[i]);
  }
  hits_->SetText(labels.HitsLabel);
  ShowOutlook();
}

/// The same words and marks as in a rehearsal, before anything moves.
void RestartForm::ShowOutlook() {
  auto* const main = Screens().Find<FrontEnd>(core::ScreenNames::FrontEnd);
  if (main == nullptr) return;
  const core::System& system = System();
  toolkit::Form& form = Window();
  const auto middle = MiddleOf(PlotArea(form.Measures()), form.width(), form.height());
  form.MoveTo(middle.X, middle.Y);
  try {
    const restart::RestartOutlook outlook = restart::OutlookOf(
        Services().Files, system, Services().RestartPoint, Services().Split.SplitRecord);
    const std::vector<std::string> rows = RowsOf(outlook.Words);
    for (std::size_t i = 0; i < words_.size(); ++i) {
      words_[i]->SetText(i < rows.size() ? rows[i] : "");
    }
    if (outlook.Entry) ShowMarks(main->PlotBox(system.ActiveSlot), outlook.Entry->Compensated);
  } catch (const platform::RuntimeFault& fault) {
    // The restart itself needs none of it: what could not be read is named, and it goes on.
    words_[0]->SetText(fault.what());
  }
}

/// The marks, with the form where it leaves the entry in sight.
void RestartForm::ShowMarks(toolkit::PlotCanvas& plot, const core::Vector2& entry) {
  const core::System& system = System();
  const restart::GatherState& state = Services().RestartPoint.RestartState;
  graphics::ShowRestartMarks(
      plot.Canvas(),
      {{system.State.XPosition, system.State.YPosition}, {state.XPosition, state.YPosition}, entry},
      system.Views[system.ActiveSlot].PlotIconSize);
  const QPoint place(static_cast<int>(plot.Canvas().ToPixelX(entry.X)),
                     static_cast<int>(plot.Canvas().ToPixelY(entry.Y)));
  toolkit::Form& form = Window();
  const toolkit::Area clear = CornerClearOf(PlotArea(form.Measures()), form.width(), form.height(),
                                            plot.mapTo(plot.window(), place));
  form.MoveTo(clear.X, clear.Y);
}

void RestartForm::SetCycleStartColour(std::uint32_t colour) { cycleStart_->SetColours(0, colour); }

void RestartForm::Unloaded() {
  operation_.Unload();
  auto* const main = Screens().Find<FrontEnd>(core::ScreenNames::FrontEnd);
  if (main == nullptr) return;
  for (const core::Slot slot : core::BothSlots) {
    graphics::HideRestartMarks(main->PlotBox(slot).Canvas());
  }
}

}  // namespace torvane::console

#include "console/LaserStatusForm.h"

#include <array>
#include <string>

#include "console/ConsoleServices.h"
#include "core/General.h"
#include "link/Trio.h"
#include "link/Variables.h"
#include "supervision/Overrides.h"
#include "supervision/PollTrio.h"

namespace torvane::console {

using toolkit::Key;

namespace {

constexpr double FormWide = 984;
constexpr double OverrideWide = 228;
constexpr double StatusCaptionWide = 272;
constexpr double AskedForWide = 56;
constexpr double ColumnGap = 16;

const std::vector<std::string> FeedKeys = {"- 20 (&1)", "- 5 (&2)", "+ 5 (&3)", "+ 20 (&4)"};
const std::vector<std::string> PowerKeys = {"- 20 (&5)", "- 5 (&6)", "+ 5 (&7)", "+ 20 (&8)"};

const std::vector<std::string> StatusCaptions = {
    "LASER MODE :",     "LASER DUTY (%) :", "LASER FREQUENCY (Hz) :", "ASSIST GAS :",
    "RAMPING MODE :",   "RAMP UP VALUE :",  "RAMP DOWN VALUE :",      "RAMP MINIMUM POWER (%) :",
    "AUTO HEAD COMP :", "TIP HEIGHT (mm) :"};

/// Of a line of the status, lower than an entry that is pressed.
constexpr double StatusHigh = 44;

/// Further keys of the feed; the power has none.
constexpr std::array FurtherFeedKeys = {Key::PageDown, Key::Down, Key::Up, Key::PageUp};

std::string Assignment(std::string_view variable, double percent) {
  return std::string(variable) + "=" + core::NumberText(percent, 0);
}

}  // namespace

LaserStatusForm::LaserStatusForm(const ScreenStart& start) : Screen(start) {
  const Cell feed = OverrideCells(feed_, "Feed", "FEED RATE", "( mm / min )", FeedKeys,
                                  [this](int key) { PressFeed(key); });
  const Cell power = OverrideCells(power_, "Power", "LASER POWER", "( % )", PowerKeys,
                                   [this](int key) { PressPower(key); });
  const Cell status = StatusCells();
  OfferStage(supervision::PollStage::Laser, [this] { Refresh(); });
  SetGrid(
      FormWide,
      Rows({Columns({feed.Wide(OverrideWide), power.Wide(OverrideWide), status}).Spaced(ColumnGap),
            AtRight(AddExitButton(Body()))})
          .Spaced(ColumnGap));
}

Cell LaserStatusForm::OverrideCells(Override& override, const std::string& name,
                                    const std::string& heading, const std::string& unit,
                                    const std::vector<std::string>& keys,
                                    const std::function<void(int)>& press) {
  auto& whole = AddFrame(Body(), name + "Frame(0)", heading);
  auto& label = AddLabel(whole, name + "Label", unit);
  std::vector<Cell> lines = {label};
  const std::array<const char*, 3> captions = {"PROGRAMMED", "ACTUAL", "OVERIDE (%)"};
  for (int i = 0; i < 3; ++i) {
    auto& frame =
        AddFrame(whole, Numbered(name + "Frame", i + 1), captions[static_cast<std::size_t>(i)]);
    auto& box = AddValue(frame, Numbered(name + "Box", i + 1));
    override.Boxes.push_back(&box);
    if (i < 2) {
      lines.push_back(Inside(frame, Rows({box})));
      continue;
    }
    override.AskedFor = &AddLabel(frame, name + "Wanted", "", Role::Bold, toolkit::TypeStyle::Title,
                                  toolkit::Alignment::Right);
    lines.push_back(Inside(frame, Columns({box, Cell(override.AskedFor).Wide(AskedForWide)})));
  }
  const auto buttons = AddButtons(whole, name + "Button", 1, keys, Role::General, press);
  if (name == "Feed") {
    for (std::size_t i = 0; i < FurtherFeedKeys.size(); ++i) {
      AddKey(FurtherFeedKeys[i], *buttons[i]);
    }
  }
  lines.push_back(Columns({buttons[0], buttons[1]}));
  lines.push_back(Columns({buttons[2], buttons[3]}));
  return Inside(whole, Rows(lines));
}

Cell LaserStatusForm::StatusCells() {
  auto& frame = AddFrame(Body(), "StatusFrame", "LASER STATUS");
  const auto labels = AddLabels(frame, "StatusLabel", 1, StatusCaptions);
  status_ = AddValues(frame, "StatusBox", 1, static_cast<int>(StatusCaptions.size()));
  std::vector<std::vector<Cell>> rows;
  for (std::size_t i = 0; i < status_.size(); ++i) {
    rows.push_back({Cell(labels[i]).High(StatusHigh), Cell(status_[i]).High(StatusHigh)});
  }
  return Inside(frame, Table({StatusCaptionWide, 0}, rows));
}

void LaserStatusForm::PressFeed(int key) {
  const double wanted = supervision::StepLaserFeed(feed_.Working.value_or(0), key);
  ShowAskedFor(feed_, wanted);
  Services().Trio.Download(Assignment(link::Variable::FeedOverrideRequest, wanted));
}

void LaserStatusForm::PressPower(int key) {
  // The first answer may still be on its way: a step from an unknown power would drop it. Of two
  // presses that wait for it, the second one goes on from the first.
  if (!power_.Working) {
    const double read = Services().Trio.GetRspnsSngl(link::Variable::PowerOverride, 0);
    if (!power_.Working) power_.Working = read;
  }
  const double wanted = supervision::StepOverride(*power_.Working, key);
  ShowAskedFor(power_, wanted);
  Services().Trio.Download(Assignment(link::Variable::PowerOverride, wanted));
}

void LaserStatusForm::ShowAskedFor(Override& override, double percent) {
  override.Working = percent;
  override.AskedFor->SetText(core::NumberText(percent, 0));
}

void LaserStatusForm::Refresh() {
  const auto figures = Services().Poll.ReadLaserFigures();
  for (std::size_t i = 0; i < figures.Feed.size(); ++i) {
    feed_.Boxes[i]->SetText(figures.Feed[i]);
    power_.Boxes[i]->SetText(figures.Power[i]);
  }
  for (std::size_t i = 0; i < status_.size(); ++i) status_[i]->SetText(figures.Status[i]);
}

void LaserStatusForm::Activated() {
  ShowAskedFor(feed_, System().State.FeedOverride);
  power_.Working.reset();
  const double power = Services().Trio.GetRspnsSngl(link::Variable::PowerOverride, 0);
  // A press meanwhile has asked for itself, later than this.
  if (!power_.Working) ShowAskedFor(power_, power);
  Refresh();
}

}  // namespace torvane::console

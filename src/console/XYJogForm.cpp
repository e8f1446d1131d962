#include "console/XYJogForm.h"

#include <optional>

#include "console/ConsoleServices.h"
#include "core/General.h"
#include "supervision/CycleRules.h"

namespace torvane::console {

using supervision::JogDirection;
using toolkit::Key;
using toolkit::TypeStyle;

namespace {

/// Of JogButton(1) to (4).
constexpr std::array<Key, 4> ArrowKeys = {Key::Right, Key::Up, Key::Left, Key::Down};
constexpr std::array<toolkit::ArrowFace, 4> ArrowFaces = {
    toolkit::ArrowFace::Right, toolkit::ArrowFace::Up, toolkit::ArrowFace::Left,
    toolkit::ArrowFace::Down};

std::optional<JogDirection> DirectionOf(Key key) {
  for (std::size_t i = 0; i < ArrowKeys.size(); ++i) {
    if (ArrowKeys[i] == key) return static_cast<JogDirection>(i);
  }
  return {};
}

template <class Table>
std::vector<std::string> Captions(const Table& table) {
  std::vector<std::string> captions;
  captions.reserve(table.size());
  for (const auto& row : table) captions.emplace_back(row.Caption);
  return captions;
}

}  // namespace

XYJogForm::XYJogForm(const ScreenStart& start)
    : Screen(start),
      settings_(Services().Trio, System().Link),
      jog_(Services().Jog, System().Machine) {
  const Cell position = MakePosition();
  const Cell arrows = MakeArrows();
  const Cell options = MakeOptions();
  auto& exit = AddExitButton(Body());
  SetGrid(760, Rows({Columns({position, Cell(arrows).Wide(360)}), options, AtRight(exit)})
                   .Spaced(SectionGap));
  OfferStage(supervision::PollStage::JogPosition, [this] {
    ShowPosition();
    ShowHeld();
  });
}

Cell XYJogForm::MakePosition() {
  auto& box = AddPanel(Body(), "PositionBox", toolkit::PanelStyle::Sunken, Role::XYPosition);
  box.SetFocusable(true);
  SetHome(box);
  auto& title = AddLabel(box, "PositionLabel", "POSITION", Role::XYHeader, TypeStyle::Title);
  std::vector<Cell> lines = {Cell(title).High(40)};
  constexpr std::array<const char*, 2> Axes = {"X", "Y"};
  for (std::size_t i = 0; i < figures_.size(); ++i) {
    const int number = static_cast<int>(i) + 1;
    auto& axis =
        AddLabel(box, Numbered("AxisLabel", number), Axes[i], Role::XYHeader, TypeStyle::Title);
    figures_[i] = &AddLabel(box, Numbered("PositionText", number), "0.00", Role::XYPosition,
                            TypeStyle::Figure, toolkit::Alignment::Right);
    figures_[i]->OnClick(Guard([this] { FocusHome(); }));
    lines.push_back(Table({48, 0}, {{axis, figures_[i]}}).High(72));
  }
  return Inside(box, Rows(lines).Spaced(0));
}

/// The four keys as the compass has them, each with its axis beside or below it.
Cell XYJogForm::MakeArrows() {
  constexpr double ArrowHigh = 72;
  std::vector<Cell> cells;
  for (std::size_t i = 0; i < arrows_.size(); ++i) {
    const int number = static_cast<int>(i) + 1;
    const auto direction = static_cast<JogDirection>(i);
    arrows_[i] = &AddHoldButton(
        Body(), Numbered("JogButton", number), "",
        [this, direction] {
          jog_.Hold(direction);
          WarnIfBusy();
          Press(direction, false);
        },
        [this, direction] { Release(direction); });
    arrows_[i]->SetArrow(ArrowFaces[i]);
    const bool up = direction == JogDirection::Up;
    labels_[i] = &AddLabel(Body(), Numbered("JogLabel", number), "", Role::Bold, TypeStyle::Title,
                           up ? toolkit::Alignment::Left : toolkit::Alignment::Centre);
    cells.push_back(Cell(arrows_[i]).High(ArrowHigh));
  }
  labels_[0]->SetText("X+");
  labels_[2]->SetText("X-");
  return Rows({Columns({Space(), cells[1], Cell(labels_[1]).High(ArrowHigh)}),
               Columns({cells[2], cells[3], cells[0]}),
               Columns({labels_[2], labels_[3], labels_[0]})});
}

Cell XYJogForm::MakeOptions() {
  auto& distance = AddFrame(Body(), "DistanceFrame", "DISTANCE");
  distances_ = AddOptions(distance, "DistanceOption", 1, Captions(supervision::JogDistances()),
                          [this](int option) {
                            distanceChosen_ = true;
                            SendDistance(option);
                          });
  auto& speed = AddFrame(Body(), "SpeedFrame", "  SPEED % ");
  speeds_ =
      AddOptions(speed, "SpeedOption", 1, Captions(supervision::JogSpeeds()), [this](int option) {
        speedChosen_ = true;
        settings_.SendSpeed(option);
      });
  return Rows(
      {Inside(distance, Columns(CellsOf(distances_))), Inside(speed, Columns(CellsOf(speeds_)))});
}

void XYJogForm::Activated() {
  const auto y = supervision::JogLabelsOfY(System().Machine.YDirection);
  labels_[1]->SetText(y[0]);
  labels_[3]->SetText(y[1]);
  ShowPosition();
  TakeSettings();
}

/// What the controller holds, and back to it as the options that show it. An option that the
/// operator has pressed meanwhile holds, and so does whatever a later reading brings.
void XYJogForm::TakeSettings() {
  distanceChosen_ = speedChosen_ = false;
  const int reading = ++readings_;
  const auto stands = [this, reading] { return Visible() && reading == readings_; };
  const auto held = settings_.Read();
  if (!stands()) return;
  if (!distanceChosen_) {
    const int distance = settings_.DistanceOptionFor(held);
    if (!stands()) return;
    if (!distanceChosen_) {
      distances_[static_cast<std::size_t>(distance - 1)]->Select(toolkit::Events::Silent);
      SendDistance(distance);
    }
  }
  if (!stands() || speedChosen_) return;
  const int speed = supervision::JogSpeedOption(held.Percent);
  speeds_[static_cast<std::size_t>(speed - 1)]->Select(toolkit::Events::Silent);
  settings_.SendSpeed(speed);
}

void XYJogForm::ShowPosition() {
  figures_[0]->SetText(core::NumberText(System().State.XPosition, 2));
  figures_[1]->SetText(core::NumberText(System().State.YPosition, 2));
}

void XYJogForm::WarnIfBusy() {
  (void)supervision::RefuseAction(supervision::CycleAction::Jog, System().State,
                                  Services().Dialogs);
}

bool XYJogForm::FirstLook(const toolkit::KeyStroke& stroke) {
  const auto direction = DirectionOf(stroke.Code);
  if (direction && !stroke.Repeat) jog_.Hold(*direction);
  WarnIfBusy();
  return false;
}

bool XYJogForm::OtherKey(const toolkit::KeyStroke& stroke) {
  const auto direction = DirectionOf(stroke.Code);
  if (direction) Press(*direction, stroke.Repeat);
  return direction.has_value();
}

void XYJogForm::KeyUp(const toolkit::KeyStroke& stroke) {
  if (const auto direction = DirectionOf(stroke.Code)) Release(*direction);
}

void XYJogForm::Press(JogDirection direction, bool repeat) {
  ShowHeld();
  jog_.Go(direction, repeat);
  ShowHeld();
}

void XYJogForm::Release(JogDirection direction) {
  jog_.Release(direction);
  ShowHeld();
}

/// The stop of a held key goes out first: a machine that jogs on could take a stop that comes after
/// "VR(11)=1" for the end of a step, which ends by itself, and jog on without end.
void XYJogForm::SendDistance(int option) {
  HandsOff();
  settings_.SendDistance(option);
}

void XYJogForm::HandsOff() {
  jog_.EndHolds();
  ShowHeld();
}

/// The key of a held direction is lit.
void XYJogForm::ShowHeld() {
  for (std::size_t i = 0; i < arrows_.size(); ++i) {
    const bool held = jog_.Held(static_cast<JogDirection>(i));
    Adopt(*arrows_[i], arrows_[i]->Name(), held ? Role::WarningMessage : Role::General);
  }
}

}  // namespace torvane::console

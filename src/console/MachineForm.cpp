#include "console/MachineForm.h"

#include <array>

#include "console/ConsoleServices.h"
#include "console/ScreenSet.h"
#include "core/General.h"
#include "core/ScreenNames.h"
#include "supervision/PollTrio.h"

namespace torvane::console {

using toolkit::Key;

namespace {

/// MachineButton(1) to (3).
constexpr std::array<const char*, 3> Doors = {
    core::ScreenNames::LoadForm, core::ScreenNames::MoveForm, core::ScreenNames::XYJogForm};
/// Of the first key of a row, pixels of the drawing: its caption is the longest.
constexpr double FirstKeyWide = 208;
/// The keys beside the digits, by FeedButton.
constexpr std::array<Key, 4> FeedKeys = {Key::PageDown, Key::Down, Key::Up, Key::PageUp};

}  // namespace

MachineForm::MachineForm(const ScreenStart& start)
    : Screen(start), motion_(System(), Services().Trio, Services().Dialogs) {
  const auto references = AddButtons(
      Body(), "ReferenceButton", 0, {"REFERENCE &ALL", "REF &X", "REF &Y", "REF &Z"},
      Role::Reference, [this](int axes) { motion_.Reference(static_cast<std::size_t>(axes)); });
  SetHome(*references[0]);
  rollers_ = &AddTwoState(Body(), "RollerButton", "&ROLLERS", Role::General,
                          [this](bool on) { motion_.SwitchRollers(on); });
  const auto doors = AddButtons(Body(), "MachineButton", 1, {"&LOAD", "&MOVE", "&JOG"},
                                Role::General, [this](int door) {
                                  FocusHome();
                                  Screens().Open(Doors.at(static_cast<std::size_t>(door - 1)));
                                });
  const Cell feed = MakeFeed();
  auto& exit = AddExitButton(Body(), "&EXIT");
  SetGrid(760, Rows({Columns({Cell(references[0]).Wide(FirstKeyWide), references[1], references[2],
                              references[3]}),
                     Columns({Cell(rollers_).Wide(FirstKeyWide), doors[0], doors[1], doors[2]}),
                     feed, AtRight(exit)})
                   .Spaced(SectionGap));
  OfferStage(supervision::PollStage::Machine, [this] { RefreshMachineForm(false); });
}

Cell MachineForm::MakeFeed() {
  auto& frame = AddFrame(Body(), "FeedFrame", "FEED OVERIDE");
  auto& inForce = AddLabel(frame, "FeedLabel(1)", "IN FORCE %");
  feedBox_ = &AddValue(frame, "FeedBox");
  feedBox_->SetText("100");
  auto& asked = AddLabel(frame, "FeedLabel(2)", "ASKED FOR %");
  askedBox_ = &AddValue(frame, "FeedAsked");
  const auto keys =
      AddButtons(frame, "FeedButton", 1, {"- 20 (&1)", "- 5 (&2)", "+ 5 (&3)", "+ 20 (&4)"},
                 Role::General, [this](int key) { PressFeed(key); });
  for (std::size_t i = 0; i < keys.size(); ++i) AddKey(FeedKeys.at(i), *keys[i]);
  // Each over a key.
  return Inside(frame,
                Rows({Columns({inForce, feedBox_, asked, askedBox_}), Columns(CellsOf(keys))}));
}

void MachineForm::PressFeed(int key) {
  const int percent = feed_.Press(key);
  askedBox_->SetText(core::LongText(percent));
  motion_.RequestFeedOverride(percent);
}

void MachineForm::Activated() {
  feed_.Take(System().State.FeedOverride);
  askedBox_->SetText(core::LongText(feed_.Value()));
  RefreshMachineForm(true);
}

/// What the poll knows. The toggle is moved without its event, which would switch the rollers.
void MachineForm::RefreshMachineForm(bool force) {
  feedBox_->SetText(core::NumberText(System().State.FeedOverride, 0));
  if (const auto on = Services().Poll.TakeRollers(force))
    rollers_->SetDown(*on, toolkit::Events::Silent);
}

}  // namespace torvane::console

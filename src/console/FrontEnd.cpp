#include "console/FrontEnd.h"

#include "console/ConsoleServices.h"
#include "console/FrontEndControls.h"
#include "console/ScreenSet.h"
#include "graphics/SheetPainter.h"
#include "toolkit/Theme.h"

namespace torvane::console {

using core::ColourName;
using toolkit::Alignment;
using toolkit::PanelStyle;
using toolkit::TypeStyle;

namespace {

/// How much of a rim's strength the lines between the figures have.
constexpr double HairlineShare = 0.5;

}  // namespace

FrontEnd::FrontEnd(const ScreenStart& start)
    : Screen(start), actions_(Services().MainActions), modes_(System(), *this, Services().Visual) {
  SetUpFrontEnd();
}

void FrontEnd::SetUpFrontEnd() {
  Window().SetColours(Colours()[ColourName::PlotBackground], Colours()[ColourName::Text]);
  header_ = &AddPanel(Window(), "HeaderPanel", PanelStyle::Title, Role::Header, FrontEndHeader);
  receiveLamp_ =
      &AddLabel(*header_, "ReceiveLamp", "", Role::OkMessage, TypeStyle::Bold, Alignment::Centre);
  receiveLamp_->SetFilled(true);
  receiveLamp_->SetVisible(false);
  MakePlot();
  MakePositions();
  textPanel_ = &AddPanel(Window(), "TextPanel", PanelStyle::Text, Role::Entry);
  statusPanel_ = &AddPanel(Window(), "StatusPanel", PanelStyle::Text, Role::Entry);
  keyStrip_ = &AddPanel(Window(), "KeyStrip", PanelStyle::Body, Role::Panel);
  MakeKeys();
  MakeGraphicsKeys();
  ShowKeyStrip(KeyStrip::Main);
  ShowActiveSlot(System().ActiveSlot);
  BringPlotForward(System().ActiveSlot);
}

void FrontEnd::MakePlot() {
  mainPanel_ = &AddPanel(Window(), "MainPanel", PanelStyle::Sunken, Role::Panel);
  mainPanel_->SetRim(toolkit::Rim(Colours()[ColourName::StatusBackground]));
  for (const core::Slot slot : core::BothSlots) {
    auto* box = new toolkit::PlotCanvas(mainPanel_);  // owned by the panel
    Adopt(*box, Numbered("PlotBox", slot.Number()), Role::Plot);
    box->SetFocusable(true);
    graphics::SetUpPlotBox(box->Canvas(), Colours());
    box->OnRedraw(Guard([this, slot] { actions_.RedrawPlot(slot); }));
    box->OnPlotUp([this, slot](const toolkit::PlotPointerEvent& event) {
      Guard([this, slot, event] {
        modes_.PlotMouseUp(slot, event.X, event.Y);
        Screens().RestoreFormOrder();
      })();
    });
    plotBoxes_[slot] = box;
  }
}

void FrontEnd::MakePositions() {
  figureField_ = &AddPanel(Window(), "FigureField", PanelStyle::Sunken, Role::StatusPosition);
  positionBox_ = &AddPanel(Window(), "PositionBox", PanelStyle::Sunken, Role::StatusPosition);
  for (int index = 1; index <= 6; ++index) {
    const PositionRow& row = PositionRows[Index(index)];
    const Role role =
        row.Colour == ColourName::StatusFeedText ? Role::StatusFeed : Role::StatusPosition;
    auto& label = AddLabel(*positionBox_, Numbered("PositionLabel", index), row.Label, role,
                           TypeStyle::Title);
    auto& text = AddLabel(*positionBox_, Numbered("PositionText", index), index <= 3 ? "0.0" : "0",
                          role, TypeStyle::Position, Alignment::Right);
    text.SetShrinking(true);
    label.SetVisible(row.Shown);
    text.SetVisible(row.Shown);
    text.OnClick(Guard([this] { FocusHome(); }));
    auto& line = AddPanel(*positionBox_, Numbered("PositionLine", index), PanelStyle::Body,
                          Role::StatusPosition);
    line.SetColours(toolkit::Mix(line.Background(), toolkit::Rim(line.Background()), HairlineShare),
                    line.Foreground());
    line.SetVisible(row.Shown);
    positionLines_[Index(index)] = &line;
    positionLabels_[Index(index)] = &label;
    positionTexts_[Index(index)] = &text;
  }
}

Screen::Handler FrontEnd::Press(Handler handler) {
  return [this, handler = std::move(handler)] {
    handler();
    FocusHome();
    Screens().RestoreFormOrder();
  };
}

void FrontEnd::MakeKeys() {
  mainRow_ = &AddPanel(*keyStrip_, "MainButtonPanel", PanelStyle::Body, Role::Panel);
  for (int index = 1; index <= 7; ++index) {
    mainButtons_[Index(index)] =
        &AddButton(*mainRow_, Numbered("MainButton", index), MainButtons[Index(index)].Caption,
                   Role::General, Press([this, index] { OpenMain(index); }));
    if (const char* screen = MainButtons[Index(index)].Screen)
      Leads(*mainButtons_[Index(index)], screen);
  }
  for (const core::Slot slot : core::BothSlots) {
    programButtons_[slot] = &AddTwoState(
        *keyStrip_, Numbered("ProgramButton", slot.Number()),
        ProgramButtonCaptions[Index(slot.Number())], Role::General,
        [this, slot](bool) { Press([this, slot] { actions_.ChangeActiveProgram(slot); })(); });
  }
  messageButton_ = &AddButton(*keyStrip_, "MessageButton", MessageButtonCaption, Role::OkMessage,
                              Press([this] { OpenMessages(); }));
  messageButton_->SetMark(toolkit::KeyMark::Good);
  shutdownButton_ = &AddButton(*keyStrip_, "ShutdownButton", ShutdownCaption, Role::General,
                               Press([this] { ShutdownPressed(); }));
}

void FrontEnd::MakeGraphicsKeys() {
  graphicsRow_ = &AddPanel(*keyStrip_, "GraphicsButtonPanel", PanelStyle::Body, Role::Panel);
  for (int index = 1; index <= 4; ++index) {
    graphicsButtons_[Index(index)] = &AddButton(
        *graphicsRow_, Numbered("GraphicsButton", index), GraphicsButtonCaptions[Index(index)],
        Role::General, Press([this, index] { modes_.GraphicsCommand(index); }));
  }
  kerfButton_ = &AddTwoState(
      *graphicsRow_, "KerfButton", KerfButtonCaption, Role::General,
      [this](bool down) { Press([this, down] { actions_.KerfButtonChanged(down); })(); });
  limitsButton_ = &AddTwoState(
      *graphicsRow_, "LimitsButton", LimitsButtonCaption, Role::General,
      [this](bool down) { Press([this, down] { actions_.LimitsButtonChanged(down); })(); });
  pathRow_ = &AddPanel(*keyStrip_, "PathButtonPanel", PanelStyle::Body, Role::Panel);
  for (int index = 1; index <= 6; ++index) {
    pathButtons_[Index(index)] =
        &AddButton(*pathRow_, Numbered("PathButton", index), "", Role::General,
                   Press([this, index] { modes_.PlotKey(index); }));
  }
}

void FrontEnd::ShowMainForm() {
  header_->SetVisible(true);
  mainPanel_->SetVisible(true);
  BringPlotForward(System().ActiveSlot);
  actions_.MainScreenShown();
}

void FrontEnd::BringPlotForward(core::Slot slot) {
  PlotBox(slot).SetVisible(true);
  PlotBox(slot.Other()).SetVisible(false);
  SetHome(PlotBox(slot));
  FocusHome();
}

void FrontEnd::ShowReceiveLamp(const std::string& text) {
  receiveLamp_->SetText(text);
  receiveLamp_->SetVisible(!text.empty());
}

void FrontEnd::SetPositionText(int index, const std::string& text) {
  positionTexts_[Index(index)]->SetText(text);
}

const std::string& FrontEnd::PositionText(int index) const {
  return positionTexts_[Index(index)]->Text();
}

void FrontEnd::MarkMessageButton(supervision::MessageState state) {
  using supervision::MessageState;
  const auto mark = state == MessageState::Critical  ? toolkit::KeyMark::Hold
                    : state == MessageState::Warning ? toolkit::KeyMark::Warning
                                                     : toolkit::KeyMark::Good;
  messageButton_->SetMark(mark);
}

void FrontEnd::SetProgramCaption(core::Slot slot, const std::string& caption) {
  programButtons_[slot]->SetCaption(caption);
}

void FrontEnd::ShowActiveSlot(core::Slot slot) {
  programButtons_[slot]->SetDown(true, toolkit::Events::Silent);
  programButtons_[slot.Other()]->SetDown(false, toolkit::Events::Silent);
}

void FrontEnd::OpenMain(int index) {
  if (System().Console.FormsLocked) return;
  if (index == 7) {
    modes_.EnterGraphics(true);
    return;
  }
  const MainButtonRow& row = MainButtons[Index(index)];
  if (row.SetsCurrent) {
    Screens().Open(row.Screen);
  } else {
    Screens().Show(row.Screen);
  }
}

void FrontEnd::OpenMessages() { Screens().Open(core::ScreenNames::MessageForm); }

void FrontEnd::ShutdownPressed() {
  if (System().Console.PlotKeysActive) return modes_.Cancel();
  Screens().ShowModal(core::ScreenNames::ShutdownForm);
}

void FrontEnd::ShowKeyStrip(KeyStrip strip) {
  mainRow_->SetVisible(strip == KeyStrip::Main);
  graphicsRow_->SetVisible(strip == KeyStrip::Graphics);
  pathRow_->SetVisible(strip == KeyStrip::Path);
}

void FrontEnd::EnableGraphicsKeys(bool enabled) {
  for (toolkit::Button* button : graphicsButtons_) button->SetEnabled(enabled);
  kerfButton_->SetEnabled(enabled);
  limitsButton_->SetEnabled(enabled);
}

void FrontEnd::ShowProgramButtons(bool shown) {
  for (auto* button : programButtons_) button->SetVisible(shown);
}

void FrontEnd::PressProgramButtons(bool pressed) {
  if (pressed) return ShowActiveSlot(System().ActiveSlot);
  for (auto* button : programButtons_) button->SetDown(false, toolkit::Events::Silent);
}

void FrontEnd::SetPathKeys(const PathCaptions& captions) {
  for (std::size_t i = 0; i < captions.size(); ++i) {
    pathButtons_[i]->SetCaption(captions[i]);
    pathButtons_[i]->SetVisible(*captions[i] != '\0');
    pathButtons_[i]->SetEnabled(true);
  }
}

void FrontEnd::RefreshScreen() { Screens().Desk().Refresh(); }

void FrontEnd::FlipKerf() { kerfButton_->Press(); }
void FrontEnd::FlipLimits() { limitsButton_->Press(); }
void FrontEnd::SetKerfButton(bool pressed) { kerfButton_->SetDown(pressed, toolkit::Events::Fire); }
void FrontEnd::SetLimitsButton(bool pressed) {
  limitsButton_->SetDown(pressed, toolkit::Events::Fire);
}

bool FrontEnd::OtherKey(const toolkit::KeyStroke& stroke) {
  if (FunctionKeyAction(stroke.Code, System().Console).Command == KeyCommand::None) return false;
  Screens().HandleFunctionKey(stroke.Code);
  return true;
}

void FrontEnd::Unloaded() { SetTextLine(""); }

}  // namespace torvane::console

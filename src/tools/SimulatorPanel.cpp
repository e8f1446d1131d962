#include "tools/SimulatorPanel.h"

#include <algorithm>

#include "core/General.h"
#include "core/MachineState.h"

namespace torvane::tools {

using core::ColourName;
using toolkit::Metrics;
using toolkit::TypeStyle;

namespace {

constexpr int RefreshMs = 100;
/// Pixels, of a window of its own.
constexpr int PanelWidth = 1280;
/// The drawing that such a window is measured by.
constexpr int DrawnHeight = 960;

/// Lit or not, by the words of the status variable that the console reads too.
struct LampRow {
  const char* Name;
  const char* Caption;
  ColourName Lit;
  int Bit;
};
constexpr std::array<LampRow, 5> LampRows = {{
    {"RunningLamp", "RUNNING", ColourName::OkMessageButton, core::StatusBit::Running},
    {"HoldLamp", "HOLD", ColourName::WarningMessageButton, core::StatusBit::Feedhold},
    {"ErrorLamp", "ERROR", ColourName::CriticalMessageButton, core::StatusBit::InError},
    {"BeamLamp", "BEAM", ColourName::RealTimeProfiling, core::StatusBit::Beam},
    {"RestartLamp", "RESTART", ColourName::ReferenceButtons, core::StatusBit::RestartReady},
}};

std::string SpeedCaption(double speed) { return core::NumberText(speed, -1) + "x"; }

}  // namespace

SimulatorPanel::SimulatorPanel(platform::EventLoop& loop,
                               simulator::SimulatedController& controller,
                               const core::ColourTable& colours)
    : controller_(controller), colours_(colours), desk_(loop), form_(desk_, "SimulatorPanel") {
  desk_.setMinimumSize(0, 0);
  desk_.setWindowTitle("Simulated machine");
  desk_.SetBackground(colours_[ColourName::PlotBackground]);
  form_.SetColours(colours_[ColourName::PanelBackground], colours_[ColourName::PanelText]);
  form_.SetBackdrop(true);
  body_ = &Make(new toolkit::Panel(&form_, toolkit::PanelStyle::Sunken), "BodyPanel",
                ColourName::PanelBackground, ColourName::PanelText);
  MakeLamps();
  MakeCycleKeys();
  MakeFaults();
  MakeSpeed();
  form_.OnKeyDown([this](const toolkit::KeyStroke& stroke) {
    const auto row = std::find_if(keys_.begin(), keys_.end(),
                                  [&](const auto& key) { return key.first == stroke.Code; });
    if (row == keys_.end()) return false;
    if (!stroke.Repeat) row->second->Press();
    return true;
  });
  form_.OnLayout([this](const Metrics& metrics) { Layout(metrics); });
  timer_ = loop.MakeTimer([this] { Refresh(); });
}

SimulatorPanel::~SimulatorPanel() {
  desk_.setParent(nullptr);
  if (console_) console_->SetDock(nullptr, {});
}

template <class Kind>
Kind& SimulatorPanel::Make(Kind* control, const std::string& name, ColourName face,
                           ColourName text) {
  control->SetName(name);
  control->SetColours(colours_[face], colours_[text]);
  return *control;  // owned by its parent
}

void SimulatorPanel::AddKey(toolkit::Button& button) {
  const toolkit::Key key = toolkit::KeyOf(button.Accelerator());
  if (key != toolkit::Key::None) keys_.emplace_back(key, &button);
}

void SimulatorPanel::MakeLamps() {
  for (std::size_t i = 0; i < LampRows.size(); ++i) {
    const LampRow& row = LampRows[i];
    lamps_[i] = &Make(new PanelLamp(body_, row.Caption, colours_[row.Lit]), row.Name,
                      ColourName::PanelBackground, ColourName::PanelText);
  }
}

void SimulatorPanel::MakeCycleKeys() {
  start_ = &Make(new toolkit::Button(body_, "CYCLE &START"), "StartButton",
                 ColourName::OkMessageButton, ColourName::OkMessageButtonText);
  start_->OnClick([this] {
    controller_.TheMachine().CycleStart();
    Refresh();
  });
  hold_ = &Make(new toolkit::TwoStateButton(body_, "FEED &HOLD"), "HoldButton",
                ColourName::WarningMessageButton, ColourName::WarningMessageButtonText);
  hold_->OnChange([this](bool down) {
    down ? controller_.TheMachine().FeedHold() : controller_.TheMachine().Release();
    Refresh();
  });
  stop_ = &Make(new toolkit::Button(body_, "S&TOP"), "StopButton",
                ColourName::CriticalMessageButton, ColourName::CriticalMessageButtonText);
  stop_->OnClick([this] {
    controller_.TheMachine().Stop();
    Refresh();
  });
  for (toolkit::Button* button : std::initializer_list<toolkit::Button*>{start_, hold_, stop_})
    AddKey(*button);
}

void SimulatorPanel::MakeFaults() {
  faults_ = &Make(new toolkit::TwoStateButton(body_, "&FAULTS"), "FaultsButton",
                  ColourName::GeneralButtons, ColourName::GeneralButtonText);
  faults_->OnChange([this](bool) {
    if (console_) console_->Redock();
  });
  MakePicker(error_, "Error", "&ERROR",
             [](simulator::Machine& machine, int code) { machine.RaiseError(code); });
  MakePicker(bit_, "Bit", "MESSA&GE",
             [](simulator::Machine& machine, int bit) { machine.RaiseBit(bit); });
  clear_ = &Make(new toolkit::Button(body_, "&CLEAR"), "ClearButton", ColourName::GeneralButtons,
                 ColourName::GeneralButtonText);
  clear_->OnClick([this] {
    controller_.TheMachine().ClearMessages();
    Refresh();
  });
  beam_ = &Make(new toolkit::TwoStateButton(body_, "&BEAM ALLOWED"), "BeamButton",
                ColourName::GeneralButtons, ColourName::GeneralButtonText);
  beam_->OnChange([this](bool down) {
    controller_.TheMachine().AllowBeam(down);
    Refresh();
  });
  AddKey(*clear_);
  AddKey(*beam_);
}

void SimulatorPanel::MakePicker(Picker& picker, const char* name, const char* caption,
                                void (*raise)(simulator::Machine&, int)) {
  const std::string stem(name);
  const auto key = [&](const char* text, const char* end) {
    return &Make(new toolkit::Button(body_, text), stem + end, ColourName::GeneralButtons,
                 ColourName::GeneralButtonText);
  };
  picker.Less = key("-", "Less");
  picker.Shown = &Make(new toolkit::Label(body_, std::to_string(picker.Value), TypeStyle::Entry,
                                          toolkit::Alignment::Centre),
                       stem + "Number", ColourName::TextBackground, ColourName::Text);
  picker.Shown->SetFilled(true);
  picker.Shown->SetRim(true);
  picker.More = key("+", "More");
  picker.Raise = key(caption, "Button");
  picker.Less->OnClick([this, &picker] { Step(picker, -1); });
  picker.More->OnClick([this, &picker] { Step(picker, 1); });
  picker.Raise->OnClick([this, &picker, raise] {
    raise(controller_.TheMachine(), picker.Value);
    Refresh();
  });
  AddKey(*picker.Raise);
}

void SimulatorPanel::Step(Picker& picker, int by) {
  const int count = picker.Highest - picker.Lowest + 1;
  picker.Value = picker.Lowest + (picker.Value - picker.Lowest + by + count) % count;
  picker.Shown->SetText(std::to_string(picker.Value));
}

void SimulatorPanel::MakeSpeed() {
  speed_ = &Make(new toolkit::Slider(body_), "SpeedSlider", ColourName::GeneralButtons,
                 ColourName::GeneralButtonText);
  speed_->SetMaximum(static_cast<int>(Speeds.size()) - 1);
  speedText_ = &Make(new toolkit::Label(body_, SpeedCaption(controller_.Speed()), TypeStyle::Bold,
                                        toolkit::Alignment::Right),
                     "SpeedLabel", ColourName::PanelBackground, ColourName::PanelText);
  // A speed between the steps, as the command line may give it, is at the step below.
  for (std::size_t i = 0; i < Speeds.size(); ++i) {
    if (Speeds[i] <= controller_.Speed()) speed_->SetValue(static_cast<int>(i));
  }
  speed_->OnChange([this](int step) {
    const double speed = Speeds[static_cast<std::size_t>(step)];
    controller_.SetSpeed(speed);
    speedText_->SetText(SpeedCaption(speed));
  });
  state_ = &Make(new toolkit::Label(body_, "", TypeStyle::Body), "StateLabel",
                 ColourName::PanelBackground, ColourName::PanelText);
}

void SimulatorPanel::Refresh() {
  simulator::Machine& machine = controller_.TheMachine();
  const int status = controller_.Memory().Word(simulator::Vr::Status);
  for (std::size_t i = 0; i < LampRows.size(); ++i)
    lamps_[i]->SetLit((status & LampRows[i].Bit) != 0);
  hold_->SetDown(machine.Held(), toolkit::Events::Silent);
  beam_->SetDown(machine.BeamAllowed(), toolkit::Events::Silent);
  const auto number = [](double value) { return core::NumberText(value, 0); };
  state_->SetText("SIMULATED MACHINE\nLINE " + number(machine.Line()) + "   F " +
                  number(machine.FeedNow()));
}

void SimulatorPanel::DockAt(toolkit::Desk& console) {
  console_ = &console;
  desk_.setFocusPolicy(Qt::NoFocus);
  desk_.MeasureAs([this] { return console_ ? console_->Measures() : Metrics(); });
  console.SetDock(&desk_, [this](const Metrics& metrics) { return HeightFor(metrics); });
  desk_.show();
  Open();
}

void SimulatorPanel::OpenAlone(std::function<void()> closed) {
  const Metrics measures = Metrics::For(PanelWidth, DrawnHeight);
  faults_->SetDown(true, toolkit::Events::Silent);
  faults_->SetVisible(false);
  desk_.MeasureAs([measures] { return measures; });
  desk_.OnCloseRequest(std::move(closed));
  desk_.OpenWindow(PanelWidth, HeightFor(measures));
  Open();
}

void SimulatorPanel::Open() {
  form_.Show();
  Refresh();
  timer_->Start(RefreshMs);
}

}  // namespace torvane::tools

#include "tools/SimulatorPanel.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "core/General.h"
#include "core/MachineState.h"

namespace torvane::tools {

using core::ColourName;
using toolkit::Metrics;
using toolkit::TypeStyle;

namespace {

constexpr int RefreshMs = 100;
/// Pixels: a window for the pointer, small beside the console.
constexpr int PanelWidth = 264;
constexpr int PanelHeight = 456;

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
  desk_.setMinimumSize(PanelWidth, PanelHeight);
  desk_.setWindowTitle("Simulated machine");
  desk_.SetBackground(colours_[ColourName::PlotBackground]);
  form_.SetColours(colours_[ColourName::PanelBackground], colours_[ColourName::PanelText]);
  title_ = &Make(new toolkit::Panel(&form_, toolkit::PanelStyle::Title, "SIMULATED MACHINE"),
                 "TitlePanel", ColourName::HeaderBackground, ColourName::HeaderText);
  title_->OnMouseDown([this](const toolkit::PointerEvent& event) {
    grabbed_ = {event.X, event.Y};
    // Where a window may not place itself, the window system is asked to move it.
    if (QGuiApplication::platformName().startsWith("wayland"))
      desk_.windowHandle()->startSystemMove();
  });
  title_->OnMouseMove([this](const toolkit::PointerEvent& event) { Drag(event); });
  body_ = &Make(new toolkit::Panel(&form_, toolkit::PanelStyle::Body), "BodyPanel",
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

SimulatorPanel::~SimulatorPanel() = default;

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
  faultFrame_ = &Make(new toolkit::Frame(body_, "FAULTS"), "FaultFrame",
                      ColourName::PanelBackground, ColourName::PanelText);
  MakePicker(error_, "Error", "&ERROR",
             [](simulator::Machine& machine, int code) { machine.RaiseError(code); });
  MakePicker(bit_, "Bit", "MESSA&GE",
             [](simulator::Machine& machine, int bit) { machine.RaiseBit(bit); });
  clear_ = &Make(new toolkit::Button(faultFrame_, "&CLEAR"), "ClearButton",
                 ColourName::GeneralButtons, ColourName::GeneralButtonText);
  clear_->OnClick([this] {
    controller_.TheMachine().ClearMessages();
    Refresh();
  });
  beam_ = &Make(new toolkit::TwoStateButton(faultFrame_, "&BEAM ALLOWED"), "BeamButton",
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
    return &Make(new toolkit::Button(faultFrame_, text), stem + end, ColourName::GeneralButtons,
                 ColourName::GeneralButtonText);
  };
  picker.Less = key("-", "Less");
  picker.Shown = &Make(new toolkit::Label(faultFrame_, std::to_string(picker.Value),
                                          TypeStyle::Entry, toolkit::Alignment::Centre),
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
  speedFrame_ = &Make(new toolkit::Frame(body_, "SPEED"), "SpeedFrame", ColourName::PanelBackground,
                      ColourName::PanelText);
  speed_ = &Make(new toolkit::Slider(speedFrame_), "SpeedSlider", ColourName::GeneralButtons,
                 ColourName::GeneralButtonText);
  speed_->SetMaximum(static_cast<int>(Speeds.size()) - 1);
  speedText_ = &Make(new toolkit::Label(speedFrame_, SpeedCaption(controller_.Speed()),
                                        TypeStyle::Bold, toolkit::Alignment::Right),
                     "SpeedLabel", ColourName::PanelBackground, ColourName::PanelText);
  // A speed between the steps, as the command line may give it, stands at the step below.
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
  state_->SetText("LINE " + number(machine.Line()) + "   F " + number(machine.FeedNow()));
}

void SimulatorPanel::Drag(const toolkit::PointerEvent& event) {
  if (event.Button == toolkit::PointerButton::None) return;
  desk_.move(desk_.x() + event.X - grabbed_.first, desk_.y() + event.Y - grabbed_.second);
}

void SimulatorPanel::OpenBeside(const toolkit::Desk& console) {
  desk_.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                       Qt::WindowDoesNotAcceptFocus);
  desk_.setAttribute(Qt::WA_ShowWithoutActivating);
  // A full screen is what the window is going to be, whatever its size is at this moment.
  const QRect place = console.isFullScreen() ? console.screen()->geometry()
                                             : QRect(console.mapToGlobal(QPoint()), console.size());
  const Metrics m = Metrics::For(place.width(), place.height());
  const int below = m.KeyHeight + 3 * m.Gap;  // the key strip stays free
  desk_.move(place.x() + place.width() - PanelWidth - m.Gap,
             place.y() + place.height() - below - PanelHeight);
  // Told before it shows: a window above the console's own stays above it, full screen or not.
  desk_.winId();
  if (QWindow* window = console.window()->windowHandle())
    desk_.windowHandle()->setTransientParent(window);
  desk_.resize(PanelWidth, PanelHeight);
  desk_.show();
  form_.Show();
  Refresh();
  timer_->Start(RefreshMs);
}

void SimulatorPanel::OpenAlone(std::function<void()> closed) {
  desk_.OnCloseRequest(std::move(closed));
  desk_.OpenWindow(PanelWidth, PanelHeight);
  form_.Show();
  Refresh();
  timer_->Start(RefreshMs);
}

}  // namespace torvane::tools

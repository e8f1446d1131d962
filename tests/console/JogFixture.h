// The jog screen with an operator's hands on it, which hold keys down and let them go.
#pragma once

#include <string>

#include "ConsoleFixture.h"
#include "core/General.h"
#include "core/ScreenNames.h"

namespace torvane::tests {

class JogFixture : public ConsoleFixture {
 public:
  /// A stroke as the window system brings it: nobody waits for what comes of it.
  void Press(toolkit::Key key) {
    Loop.Start([this, key] { Type(key); });
  }
  void Hold(toolkit::Key key) {
    Loop.Start([this, key] { Desk->PressKey(toolkit::KeyStroke(key)); });
  }
  void Repeat(toolkit::Key key) {
    toolkit::KeyStroke stroke(key);
    stroke.Repeat = true;
    Loop.Start([this, stroke] { Desk->PressKey(stroke); });
  }
  void Let(toolkit::Key key) {
    Loop.Start([this, key] { Desk->ReleaseKey(toolkit::KeyStroke(key)); });
  }

  // ---- what else happens ----
  void LoseTheWindow() {
    QEvent gone(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(Desk.get(), &gone);
  }
  void Lock(bool locked) { Screens().LockForms(locked, "LockAllForms"); }
  void ShowADialog() {
    Loop.Start([this] { TheConsole->Screens().Warn("Program Not Found !"); });
  }
  void ShowAScreen() {
    Loop.Start([this] { Screens().Open(core::ScreenNames::MessageForm); });
  }
  void TouchAnotherScreen() { Click(*Control<toolkit::Panel>("MachineForm", "MachinePanel(0)")); }
  void UnloadIt() {
    Loop.Start([this] { Screens().Unload(core::ScreenNames::XYJogForm); });
  }

 protected:
  explicit JogFixture(simulator::PortOptions wire = {}) : ConsoleFixture(wire) {}

  /// By way of the machine screen, as the operator opens it; the lines of its opening are dropped
  /// unless they are wanted.
  void Open(bool drop = true) {
    TypeF(3);
    Type(toolkit::Key::J);
    RunFor(100);
    ASSERT_EQ(CurrentForm(), "XYJogForm");
    if (drop) Lines.clear();
  }
  [[nodiscard]] static std::string Named(const char* name, int index) {
    return console::Numbered(name, index);
  }
  [[nodiscard]] toolkit::Button& Arrow(int number) {
    return *Control<toolkit::Button>("XYJogForm", Named("JogButton", number));
  }
  [[nodiscard]] std::string YUpWord() const {
    return System.Machine.YDirection == 1 ? "VR(48)=21" : "VR(48)=22";
  }
  [[nodiscard]] std::string YDownWord() const {
    return System.Machine.YDirection == 1 ? "VR(48)=22" : "VR(48)=21";
  }
  /// The bit as the next tick will find it otherwise.
  void SetRunning(bool running) { System.State.MachineRunning = running; }
  void SetFault(simulator::FaultKind kind, double rate) {
    simulator::FaultSettings faults;
    faults.Rate(kind) = rate;
    Controller->SetFaults(faults);
  }
  [[nodiscard]] static bool IsJogWord(std::string_view line) {
    return line == "VR(48)=19" || line == "VR(48)=20" || line == "VR(48)=21" || line == "VR(48)=22";
  }
  /// The machine moves on a jog word.
  [[nodiscard]] bool Jogging() {
    const double word = Controller->Memory().Variable(48);
    return Machine().Mode() == simulator::MachineMode::Manual && word >= 19 && word <= 22;
  }
};

}  // namespace torvane::tests

// Jogging: by the arrow keys and by touch, for as long as they are held and not a moment longer.
#pragma once

#include <array>

#include "console/Screen.h"
#include "supervision/JogControl.h"
#include "supervision/JogSettings.h"

namespace torvane::console {

/// The guard looks at every key before it is carried out, this screen's own and the global ones. It
/// warns and lets the key pass: the controller decides.
class XYJogForm final : public Screen {
 public:
  explicit XYJogForm(const ScreenStart& start);

 private:
  void Activated() override;
  bool FirstLook(const toolkit::KeyStroke& stroke) override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;
  void KeyUp(const toolkit::KeyStroke& stroke) override;
  void HandsOff() override;

  [[nodiscard]] Cell MakeArrows();
  [[nodiscard]] Cell MakePosition();
  [[nodiscard]] Cell MakeOptions();
  void TakeSettings();
  void WarnIfBusy();
  void Press(supervision::JogDirection direction, bool repeat);
  void Release(supervision::JogDirection direction);
  void ShowHeld();
  void SendDistance(int option);
  void ShowPosition();

  supervision::JogSettings settings_;
  supervision::JogControl jog_;
  std::array<toolkit::Button*, 4> arrows_{};
  std::array<toolkit::Label*, 4> labels_{};
  std::array<toolkit::Label*, 2> figures_{};
  std::vector<toolkit::OptionButton*> distances_;
  std::vector<toolkit::OptionButton*> speeds_;
  int readings_ = 0;             ///< of what the controller holds
  bool distanceChosen_ = false;  ///< by the operator, since the last reading began
  bool speedChosen_ = false;
};

}  // namespace torvane::console

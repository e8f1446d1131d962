// A screen whose contents a test makes, for what the frame does with every screen.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "console/Screen.h"
#include "console/ScreenSet.h"

namespace torvane::tests {

class TrialScreen final : public console::Screen {
 public:
  using Maker = std::function<void(TrialScreen&)>;

  TrialScreen(const console::ScreenStart& start, const Maker& make) : Screen(start) { make(*this); }
  ~TrialScreen() override {
    if (OnGone) OnGone();
  }

  using Screen::AddBox;
  using Screen::AddButton;
  using Screen::AddEntry;
  using Screen::AddExitButton;
  using Screen::AddFrame;
  using Screen::AddHoldButton;
  using Screen::AddKey;
  using Screen::AddLabel;
  using Screen::AddList;
  using Screen::AddNumberBox;
  using Screen::AddOptions;
  using Screen::AddPick;
  using Screen::AddProgress;
  using Screen::AddValue;
  using Screen::Body;
  using Screen::Confirm;
  using Screen::EnterNumber;
  using Screen::EnterText;
  using Screen::OfferStage;
  using Screen::SetGlobalKeys;
  using Screen::SetGrid;
  using Screen::SetHome;
  using Screen::Title;
  using Screen::Warn;

  std::function<void()> OnLoad;
  std::function<bool(const toolkit::KeyStroke&)> OnFirstLook;
  std::function<void(const toolkit::KeyStroke&)> OnKeyUp;
  std::function<void()> OnGone;

 private:
  void Loaded() override {
    if (OnLoad) OnLoad();
  }
  bool FirstLook(const toolkit::KeyStroke& stroke) override {
    return OnFirstLook && OnFirstLook(stroke);
  }
  void KeyUp(const toolkit::KeyStroke& stroke) override {
    if (OnKeyUp) OnKeyUp(stroke);
  }
};

/// The row of a screen with an exit and what `make` adds.
[[nodiscard]] inline console::ScreenRow TrialRow(console::ScreenTraits traits,
                                                 TrialScreen::Maker make = {}) {
  if (traits.PanelName.empty()) traits.PanelName = "Panel";
  return {std::move(traits), [make = std::move(make)](const console::ScreenStart& start) {
            return std::make_unique<TrialScreen>(start, [&make](TrialScreen& screen) {
              screen.SetGrid(400, screen.AddExitButton(screen.Body()));
              if (make) make(screen);
            });
          }};
}

}  // namespace torvane::tests

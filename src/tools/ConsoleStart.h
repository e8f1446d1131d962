// The screens of start and end, shown by a console.
#pragma once

#include "app/StartScreens.h"
#include "console/Console.h"

namespace torvane::tools {

/// What every program that owns a console does alike; how its desk opens and how it shows a system
/// message is its own.
class ConsoleStart : public app::StartScreens {
 public:
  void UnloadSplash() override;
  void ShowFrontEnd() override;
  [[nodiscard]] bool FrontEndVisible() const override;
  void UnloadFrontEnd() override;
  void LoadPlotConfig() override;

 protected:
  /// `console` outlives this; to be told before the start-up begins.
  void Serve(console::Console& console) { console_ = &console; }

  /// Loads the main screen and shows the splash screen, on a desk that is open.
  void ShowSplashOnDesk();

 private:
  [[nodiscard]] console::ScreenSet& Set() const { return console_->Screens().Set(); }

  console::Console* console_ = nullptr;
};

}  // namespace torvane::tools

// What the start and the end of the program show.
#pragma once

#include <string_view>

namespace torvane::app {

class StartScreens {
 public:
  virtual ~StartScreens() = default;

  /// Shows SplashForm without blocking, painted when the call returns.
  virtual void ShowSplash() = 0;
  virtual void UnloadSplash() = 0;

  /// The operating system's own message box with a warning icon and its one button; returns when
  /// it is closed. The start-up has no other.
  virtual void SystemMessageBox(std::string_view title, std::string_view text) = 0;

  /// Shows FrontEnd without blocking. When it comes to the front the splash
  /// screen goes and the poll starts.
  virtual void ShowFrontEnd() = 0;
  [[nodiscard]] virtual bool FrontEndVisible() const = 0;
  virtual void UnloadFrontEnd() = 0;

  /// Reads Plot.cfg, and puts the plot's switches and their buttons as they are at start.
  virtual void LoadPlotConfig() = 0;
};

}  // namespace torvane::app

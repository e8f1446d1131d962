#include "tools/ConsoleStart.h"

#include "console/SplashForm.h"

namespace torvane::tools {

void ConsoleStart::ShowSplashOnDesk() {
  console_->Open();
  Set().Show(console::SplashForm::ScreenName);
}

void ConsoleStart::UnloadSplash() { Set().Unload(console::SplashForm::ScreenName); }
void ConsoleStart::ShowFrontEnd() { Set().Show(console::FrontEnd::ScreenName); }
bool ConsoleStart::FrontEndVisible() const { return Set().Visible(console::FrontEnd::ScreenName); }
void ConsoleStart::UnloadFrontEnd() { Set().Unload(console::FrontEnd::ScreenName); }
void ConsoleStart::LoadPlotConfig() { console_->LoadPlotConfig(); }

}  // namespace torvane::tools

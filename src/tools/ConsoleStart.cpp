#include "tools/ConsoleStart.h"

#include "console/SplashForm.h"
#include "core/ScreenNames.h"

namespace torvane::tools {

void ConsoleStart::ShowSplashOnDesk() {
  console_->Open();
  Set().Show(core::ScreenNames::SplashForm);
}

void ConsoleStart::UnloadSplash() { Set().Unload(core::ScreenNames::SplashForm); }
void ConsoleStart::ShowFrontEnd() { Set().Show(core::ScreenNames::FrontEnd); }
bool ConsoleStart::FrontEndVisible() const { return Set().Visible(core::ScreenNames::FrontEnd); }
void ConsoleStart::UnloadFrontEnd() { Set().Unload(core::ScreenNames::FrontEnd); }
void ConsoleStart::LoadPlotConfig() { console_->LoadPlotConfig(); }

}  // namespace torvane::tools

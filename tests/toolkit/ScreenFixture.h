// A desk of 1280 by 1024 with a real loop.
#pragma once

#include <string>
#include <vector>

#include "support/QtEnvironment.h"
#include "toolkit/Button.h"
#include "toolkit/Desk.h"
#include "toolkit/Panel.h"

namespace torvane::tests {

class OnDesk : public ::testing::Test {
 protected:
  OnDesk() : Desk_(Loop) { Desk_.OpenWindow(1280, 1024); }

  /// A form with a body, shown in the middle.
  struct Screen {
    Screen(toolkit::Desk& desk, const std::string& name, std::vector<std::string>& log)
        : Window(desk, name), Body(&Window, toolkit::PanelStyle::Body) {
      Window.OnLayout([this](const toolkit::Metrics& m) {
        Window.SetSize(m.Px(400), m.Px(300));
        Body.Place(Window.Inside());
      });
      Window.OnActivate([name, &log] { log.push_back("activate " + name); });
      Window.OnUnload([name, &log] { log.push_back("unload " + name); });
    }
    toolkit::Form Window;
    toolkit::Panel Body;
  };

  std::vector<std::string> Taken() { return std::exchange(Log, {}); }

  toolkit::QtLoop Loop;
  toolkit::Desk Desk_;
  std::vector<std::string> Log;
};

using Words = std::vector<std::string>;

}  // namespace torvane::tests

// What tells one screen from another for the frame, and how it is made.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "console/FunctionKeys.h"

namespace torvane::console {

class Screen;
class ScreenSet;

struct ScreenTraits {
  std::string Name = {};           ///< of core::ScreenNames
  std::string PanelName = {};      ///< such as "MachinePanel"; panel 0 is the title, 1 the body
  std::string Title = {};          ///< caption of panel 0
  KeyMask Keys = GlobalKeys::All;  ///< handed on before the screen's own accelerators
  std::string Parent = {};         ///< taken up again at unload, if it shows
  bool Current = true;             ///< false for modal screens, which leave CurrentForm alone
  bool Backdrop = false;           ///< the main screen, under all others
  bool Centred = false;            ///< a dialog, in the middle whatever lies below it
  bool Accelerators = true;        ///< false where the letters of captions are other keys
  bool LocksOthers = false;        ///< the others are locked from its load to its unload
  bool LiveWhileLocked = false;    ///< stays live while others are locked
  bool SwallowsTyping = false;     ///< no typed character reaches a box or list of it
};

/// What a screen is made from.
struct ScreenStart {
  ScreenSet& Set;
  const ScreenTraits& Traits;
};

/// One screen of the console.
struct ScreenRow {
  ScreenTraits Traits;
  std::function<std::unique_ptr<Screen>(const ScreenStart&)> Make;
};

}  // namespace torvane::console

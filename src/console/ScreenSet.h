// All screens of the console: made on first use, stacked over the main screen, locked together.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "console/Screen.h"
#include "core/System.h"
#include "toolkit/Desk.h"

namespace torvane::console {

/// Holds one instance of each screen that is loaded. A name that no factory makes is a screen of
/// a machine without it: showing it does nothing.
class ScreenSet {
 public:
  using Factory = std::function<std::unique_ptr<Screen>(ScreenSet&)>;

  ScreenSet(core::System& system, toolkit::Desk& desk,
            std::function<void(toolkit::Key)> functionKey);
  ~ScreenSet();

  /// How to make a screen; a later registration of the name takes the place of the first.
  void Register(const std::string& name, Factory factory);
  [[nodiscard]] bool Known(const std::string& name) const { return factories_.count(name) != 0; }

  /// Makes a screen without showing it; null for a name that nothing makes.
  Screen* Load(const std::string& name);

  /// Shows a screen modeless, loading it if need be. False for a name that nothing makes.
  bool Show(const std::string& name);

  /// Shows a menu's choice: the screen, then CurrentForm.
  void Open(const std::string& name);

  /// Shows a screen modal and waits in the event loop until it is unloaded.
  void ShowModal(const std::string& name);

  /// Unloads a screen that shows or is loaded; nothing otherwise.
  void Unload(const std::string& name);

  [[nodiscard]] bool Visible(const std::string& name) const;
  /// The loaded screen of that name, null if there is none.
  [[nodiscard]] Screen* Find(const std::string& name) const;
  /// The same as its own class.
  template <class Kind>
  [[nodiscard]] Kind* Find(const std::string& name) const {
    return dynamic_cast<Kind*>(Find(name));
  }
  /// Names of all loaded screens that show, the lowest first.
  [[nodiscard]] std::vector<std::string> VisibleNames() const;

  /// Locks all visible screens but the ones that stay live and the exempt one, or unlocks all.
  /// There is no nesting count.
  void LockForms(bool locked, std::string_view exempt);

  /// Raises every open screen, the current one last, so that none hides behind the main screen, and
  /// makes the top one active.
  void RestoreFormOrder();

  /// The global keys.
  void HandleFunctionKey(toolkit::Key key) { functionKey_(key); }

  [[nodiscard]] core::System& System() { return system_; }
  [[nodiscard]] toolkit::Desk& Desk() { return desk_; }

 private:
  friend class Screen;
  /// The screen was unloaded: out of the table now, destroyed when its handlers have returned.
  void Retire(Screen& screen);
  void Reap();

  core::System& system_;
  toolkit::Desk& desk_;
  std::function<void(toolkit::Key)> functionKey_;
  std::map<std::string, Factory> factories_;
  std::map<std::string, std::unique_ptr<Screen>> screens_;
  std::vector<std::unique_ptr<Screen>> retired_;
  std::shared_ptr<bool> alive_;
};

}  // namespace torvane::console

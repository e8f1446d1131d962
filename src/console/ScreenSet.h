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

/// Holds one instance of each screen that is loaded. A name without a row is a screen of a machine
/// that has it: showing it does nothing.
class ScreenSet {
 public:
  ScreenSet(core::System& system, toolkit::Desk& desk,
            std::function<void(toolkit::Key)> functionKey);
  ~ScreenSet();

  /// What the screens work with; before the first of them is made.
  void Serve(const ConsoleServices& services) { services_ = &services; }

  /// A later row of a name takes the place of the first.
  void Register(const ScreenRow& row);
  [[nodiscard]] bool Known(const std::string& name) const { return rows_.count(name) != 0; }

  /// Makes a screen without showing it; null for a name without a row, and where the screen gave
  /// up while it was loading.
  Screen* Load(const std::string& name);

  /// Shows a screen modeless, loading it if need be. False where there is none.
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
  void LockForms(bool locked, std::string_view exempt,
                 toolkit::Form::Holds holds = toolkit::Form::Holds::End);

  /// Raises every open screen, the current one last, so that none hides behind the main screen, and
  /// makes the top one active.
  void RestoreFormOrder();

  /// True while a screen shows that offers the stage.
  [[nodiscard]] bool Offers(supervision::PollStage stage) const;
  /// Runs the stage of the screen that shows and offers it.
  void RunStage(supervision::PollStage stage);

  /// The global keys.
  void HandleFunctionKey(toolkit::Key key) { functionKey_(key); }

  [[nodiscard]] core::System& System() { return system_; }
  [[nodiscard]] toolkit::Desk& Desk() { return desk_; }
  [[nodiscard]] const ConsoleServices& Services() const { return *services_; }

 private:
  friend class Screen;
  /// The screen was unloaded: out of the table now, destroyed when its handlers have returned.
  void Retire(Screen& screen);
  void Reap();
  [[nodiscard]] const ScreenTraits* TraitsOf(const toolkit::Form& form) const;
  [[nodiscard]] Screen* Offering(supervision::PollStage stage) const;

  core::System& system_;
  toolkit::Desk& desk_;
  const ConsoleServices* services_ = nullptr;
  std::function<void(toolkit::Key)> functionKey_;
  std::map<std::string, ScreenRow> rows_;
  std::map<std::string, std::unique_ptr<Screen>> screens_;
  std::vector<std::unique_ptr<Screen>> retired_;
  std::shared_ptr<bool> alive_;
};

}  // namespace torvane::console

#include "console/ScreenSet.h"

#include <algorithm>

namespace torvane::console {

ScreenSet::ScreenSet(core::System& system, toolkit::Desk& desk,
                     std::function<void(toolkit::Key)> functionKey)
    : system_(system),
      desk_(desk),
      functionKey_(std::move(functionKey)),
      alive_(std::make_shared<bool>(true)) {}

ScreenSet::~ScreenSet() { *alive_ = false; }

void ScreenSet::Register(const ScreenRow& row) { rows_[row.Traits.Name] = row; }

Screen* ScreenSet::Load(const std::string& name) {
  if (Screen* loaded = Find(name)) return loaded;
  const auto row = rows_.find(name);
  if (row == rows_.end()) return nullptr;
  const ScreenTraits& traits = row->second.Traits;
  auto made = row->second.Make({*this, traits});
  Screen* screen = made.get();
  screens_[name] = std::move(made);
  screen->Window().OnLayout([screen](const toolkit::Metrics& metrics) { screen->Layout(metrics); });
  if (traits.LocksOthers) {
    LockForms(true, name);
    system_.Console.CurrentForm = name;
  }
  bool goesOn = true;
  screen->Guard([screen, &goesOn] { goesOn = screen->Load(); })();
  return goesOn ? screen : nullptr;
}

bool ScreenSet::Show(const std::string& name) {
  Screen* screen = Load(name);
  if (screen == nullptr) return false;
  screen->Window().Show();
  return true;
}

void ScreenSet::Open(const std::string& name) {
  Screen* screen = Load(name);
  if (screen == nullptr) return;
  // Before it shows: its activation may wait, and by then the operator may have gone elsewhere.
  system_.Console.CurrentForm = name;
  screen->Window().Show();
}

void ScreenSet::ShowModal(const std::string& name) {
  Screen* screen = Load(name);
  if (screen == nullptr) return;
  screen->Guard([&] { desk_.ShowModal(screen->Window()); })();
}

void ScreenSet::Unload(const std::string& name) {
  if (Screen* screen = Find(name)) screen->Unload();
}

bool ScreenSet::Visible(const std::string& name) const {
  const Screen* screen = Find(name);
  return screen != nullptr && screen->Visible();
}

Screen* ScreenSet::Find(const std::string& name) const {
  const auto found = screens_.find(name);
  return found == screens_.end() ? nullptr : found->second.get();
}

std::vector<std::string> ScreenSet::VisibleNames() const {
  std::vector<std::string> names;
  for (const toolkit::Form* form : desk_.Forms()) {
    if (form->Visible()) names.push_back(form->Name());
  }
  return names;
}

void ScreenSet::LockForms(bool locked, std::string_view exempt, toolkit::Form::Holds holds) {
  system_.Console.FormsLocked = locked;
  for (toolkit::Form* form : std::vector<toolkit::Form*>(desk_.Forms())) {
    if (!locked) {
      form->SetEnabled(true);
    } else if (form->Visible()) {
      const ScreenTraits* traits = TraitsOf(*form);
      const bool live = traits != nullptr && traits->LiveWhileLocked;
      form->SetEnabled(live || form->Name() == exempt, holds);
    }
  }
}

void ScreenSet::RestoreFormOrder() {
  // Raised in their order; only the top one is activated, since an activation may wait and talk to
  // the controller.
  toolkit::Form* top = nullptr;
  for (toolkit::Form* form : std::vector<toolkit::Form*>(desk_.Forms())) {
    if (!form->Visible() || form->Backdrop()) continue;
    form->Raise();
    const bool currentFound = top != nullptr && top->Name() == system_.Console.CurrentForm;
    if (!currentFound) top = form;
  }
  if (top != nullptr) top->Show();
}

const ScreenTraits* ScreenSet::TraitsOf(const toolkit::Form& form) const {
  const Screen* screen = Find(form.Name());
  return screen == nullptr ? nullptr : &screen->Traits();
}

Screen* ScreenSet::Offering(supervision::PollStage stage) const {
  for (const auto& [name, screen] : screens_) {
    if (screen->Visible() && screen->Offers(stage)) return screen.get();
  }
  return nullptr;
}

bool ScreenSet::Offers(supervision::PollStage stage) const { return Offering(stage) != nullptr; }

void ScreenSet::RunStage(supervision::PollStage stage) {
  std::vector<std::string> names;
  for (const auto& [name, screen] : screens_) {
    if (screen->Visible() && screen->Offers(stage)) names.push_back(name);
  }
  // A stage waits: the next screen may have gone meanwhile.
  for (const std::string& name : names) {
    Screen* screen = Find(name);
    if (screen != nullptr && screen->Visible()) screen->RunStage(stage);
  }
}

void ScreenSet::Retire(Screen& screen) {
  const auto found = screens_.find(screen.Name());
  if (found == screens_.end() || found->second.get() != &screen) return;
  retired_.push_back(std::move(found->second));
  screens_.erase(found);
  Reap();
}

void ScreenSet::Reap() {
  // Only from the loop: the caller may still stand in a form's own code.
  desk_.Loop().Post([this, alive = alive_] {
    if (!*alive) return;
    // At the end of the program somebody may still stand in a wait and come back to the main
    // screen's canvases: what was unloaded then goes with the set.
    if (system_.ShuttingDown) return;
    std::vector<std::unique_ptr<Screen>> gone;
    for (auto& screen : retired_) {
      if (!screen->Running()) gone.push_back(std::move(screen));
    }
    std::erase(retired_, nullptr);
  });
}

}  // namespace torvane::console

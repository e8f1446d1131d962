// The one pattern of every screen: load, activate, key, unload.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "console/ColourRoles.h"
#include "console/FunctionKeys.h"
#include "console/TitleDrag.h"
#include "toolkit/Button.h"
#include "toolkit/EntryBox.h"
#include "toolkit/Form.h"
#include "toolkit/Frame.h"
#include "toolkit/ImageMark.h"
#include "toolkit/Label.h"
#include "toolkit/ListBox.h"
#include "toolkit/Panel.h"
#include "toolkit/PickBox.h"

namespace torvane::console {

class ScreenSet;

/// What tells one screen from another for the frame.
struct ScreenTraits {
  std::string Name = {};              ///< such as "MachineForm"
  std::string PanelName = {};         ///< such as "MachinePanel"; panel 0 is the title, 1 the body
  std::string Title = {};             ///< caption of panel 0
  GlobalKeys Keys = GlobalKeys::All;  ///< handed on before the screen's own accelerators
  std::string Parent = {};            ///< taken up again at unload, if it shows
  bool Current = true;                ///< false for modal screens, which leave CurrentForm alone
  bool Backdrop = false;              ///< the main screen, under all others
  bool Centred = false;               ///< a dialog, in the middle whatever stands below it
  bool Accelerators = true;           ///< false where the letters of the captions are global keys
};

/// A screen builds its controls in its constructor with the functions below, lays them out by
/// Layout, and does in Loaded, Activated and Unloaded what is its own. A press on a button made
/// here runs its handler and then puts the focus back on the fixed control; the letter behind the
/// ampersand of its caption does the same. The screen is destroyed some time after it was unloaded,
/// never while one of its handlers runs.
class Screen {
 public:
  Screen(ScreenSet& screens, ScreenTraits traits);
  virtual ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  [[nodiscard]] const ScreenTraits& Traits() const { return traits_; }
  [[nodiscard]] const std::string& Name() const { return traits_.Name; }
  [[nodiscard]] toolkit::Form& Window() { return form_; }
  [[nodiscard]] bool Visible() const { return form_.Visible(); }

  /// Closes it: CurrentForm and the parent are put right.
  void Unload() { form_.Close(); }

  /// Puts the focus on the control where it rests.
  void FocusHome();

  /// True while a handler of this screen is on the stack.
  [[nodiscard]] bool Running() const { return running_ > 0; }

 protected:
  using Handler = std::function<void()>;

  /// Runs a handler of the screen; the screen outlives it, whatever it unloads. Controls whose
  /// events are set directly must go through this, as in `list.OnClick(Guard([this] { ... }))`.
  [[nodiscard]] Handler Guard(Handler handler);

  // ---- making controls; names are the documented ones ----
  toolkit::Button& AddButton(QWidget& parent, const std::string& name, const std::string& caption,
                             Role role, Handler click);
  toolkit::TwoStateButton& AddTwoState(QWidget& parent, const std::string& name,
                                       const std::string& caption, Role role,
                                       std::function<void(bool)> change);
  toolkit::Label& AddLabel(QWidget& parent, const std::string& name, const std::string& text,
                           Role role, toolkit::TypeStyle style = toolkit::TypeStyle::Body,
                           toolkit::Alignment alignment = toolkit::Alignment::Left);
  toolkit::Frame& AddFrame(QWidget& parent, const std::string& name, const std::string& caption);
  toolkit::Panel& AddPanel(QWidget& parent, const std::string& name, toolkit::PanelStyle style,
                           Role role, const std::string& caption = {});
  /// "E&XIT": unloads the own form and nothing else.
  toolkit::Button& AddExitButton(QWidget& parent, const std::string& caption = "E&XIT");

  /// Gives a control made by hand its name and its colours.
  void Adopt(toolkit::Control& control, const std::string& name, Role role);

  /// A further key that presses the button, beside the letter of its caption.
  void AddKey(toolkit::Key key, toolkit::Button& button);
  /// A key that runs a procedure.
  void AddKey(toolkit::Key key, Handler handler);
  /// The accelerator of the caption that stands now, and no other letter of this button.
  void SetCaption(toolkit::Button& button, const std::string& caption);

  /// The control that the focus goes back to after every action.
  void SetHome(toolkit::Control& control);

  // ---- the four moments ----
  /// Before the screen shows for the first time.
  virtual void Loaded() {}
  /// It came to the front: CurrentForm is set; bring the shown values up to date.
  virtual void Activated() {}
  /// A key that is neither global nor an accelerator; true when it was used.
  virtual bool OtherKey(const toolkit::KeyStroke& stroke);
  /// It is going; CurrentForm is put right after it.
  virtual void Unloaded() {}
  /// Places the controls. `rest` is what the title leaves, in pixels of panel 1.
  virtual void Layout(const toolkit::Metrics& metrics) = 0;

  [[nodiscard]] toolkit::Panel& Title() { return *title_; }
  [[nodiscard]] toolkit::Panel& Body() { return *body_; }
  [[nodiscard]] ScreenSet& Screens() { return screens_; }
  [[nodiscard]] const core::ColourTable& Colours() const;

  /// Sizes the form to a body of that size, places both panels, and gives the room for controls
  /// inside the body's margins.
  toolkit::Area PlaceBody(const toolkit::Metrics& metrics, int bodyWidth, int bodyHeight);

 private:
  friend class ScreenSet;
  void MakeTitle();
  bool KeyDown(const toolkit::KeyStroke& stroke);
  void Activate();
  void HandOver();
  void ChoosePlace();
  template <class Control, class... Arguments>
  Control& Make(QWidget& parent, const std::string& name, Role role, Arguments&&... arguments);

  ScreenSet& screens_;
  ScreenTraits traits_;
  toolkit::Form form_;
  toolkit::Panel* title_ = nullptr;
  toolkit::Panel* body_ = nullptr;
  toolkit::Control* home_ = nullptr;
  TitleDrag drag_;
  std::map<toolkit::Key, Handler> keys_;
  std::map<toolkit::Button*, toolkit::Key> accelerators_;
  int running_ = 0;
  bool loaded_ = false;
};

}  // namespace torvane::console

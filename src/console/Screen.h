// The one pattern of every screen: load, activate, key, unload.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/ColourRoles.h"
#include "console/FormGrid.h"
#include "console/ScreenTraits.h"
#include "console/TitleDrag.h"
#include "core/System.h"
#include "supervision/PollScreens.h"
#include "toolkit/Button.h"
#include "toolkit/EntryBox.h"
#include "toolkit/Form.h"
#include "toolkit/Frame.h"
#include "toolkit/ImageMark.h"
#include "toolkit/Label.h"
#include "toolkit/ListBox.h"
#include "toolkit/Panel.h"
#include "toolkit/PickBox.h"
#include "toolkit/ProgressBar.h"

namespace torvane::console {

class ScreenSet;
struct ConsoleServices;

/// The name of a control of an array, such as "FeedButton(2)".
[[nodiscard]] std::string Numbered(const std::string& name, int index);

/// A screen makes its controls in its constructor with the functions below, lays them out by
/// SetGrid, and does in Loaded, Activated and Unloaded what is its own. A press on a control made
/// here runs its handler and then puts the focus back on the fixed control; the letter after the
/// ampersand of its caption does the same. A handler may wait; the screen is destroyed some time
/// after it was unloaded, never while one of its handlers runs.
class Screen {
 public:
  explicit Screen(const ScreenStart& start);
  virtual ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  [[nodiscard]] const ScreenTraits& Traits() const { return traits_; }
  [[nodiscard]] const std::string& Name() const { return traits_.Name; }
  [[nodiscard]] toolkit::Form& Window() { return form_; }
  [[nodiscard]] bool Visible() const { return form_.Visible(); }

  /// Closes it: CurrentForm and the parent are put right. From Loaded: it never shows.
  void Unload();

  /// Puts the focus on the control where it rests.
  void FocusHome();

  /// True while a handler of this screen is on the stack.
  [[nodiscard]] bool Running() const { return running_ > 0; }

  /// Its stages of the poll's tick.
  [[nodiscard]] bool Offers(supervision::PollStage stage) const {
    return stages_.count(stage) != 0;
  }
  void RunStage(supervision::PollStage stage);

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
  /// One of several in the same parent; `chosen` runs when the operator puts it down.
  toolkit::OptionButton& AddOption(QWidget& parent, const std::string& name,
                                   const std::string& caption, Handler chosen);
  /// A key that acts while it is held: `down` at the press, `up` when it is let go, wherever the
  /// finger has gone. Only the left button of the pointer counts.
  toolkit::Button& AddHoldButton(QWidget& parent, const std::string& name,
                                 const std::string& caption, Handler down, Handler up);
  toolkit::Label& AddLabel(QWidget& parent, const std::string& name, const std::string& text,
                           Role role = Role::Panel,
                           toolkit::TypeStyle style = toolkit::TypeStyle::Body,
                           toolkit::Alignment alignment = toolkit::Alignment::Left);
  /// A figure or a text in a field of its own, which is only looked at; a press gives the focus
  /// back.
  toolkit::Label& AddValue(QWidget& parent, const std::string& name,
                           toolkit::Alignment alignment = toolkit::Alignment::Right);
  toolkit::Frame& AddFrame(QWidget& parent, const std::string& name, const std::string& caption);
  toolkit::Panel& AddPanel(QWidget& parent, const std::string& name, toolkit::PanelStyle style,
                           Role role, const std::string& caption = {});
  /// A list; `select` runs when the operator moves the current line or marks one.
  toolkit::ListBox& AddList(QWidget& parent, const std::string& name,
                            toolkit::Selection selection = toolkit::Selection::Single,
                            Handler select = {});
  /// An entry with a list that drops down; `change` runs when the operator takes or types another
  /// text.
  toolkit::PickBox& AddPick(QWidget& parent, const std::string& name, Handler change);
  /// An entry that is typed into.
  toolkit::EntryBox& AddEntry(QWidget& parent, const std::string& name, Handler change = {});
  /// A box that shows and is pressed; `click` says what for.
  toolkit::EntryBox& AddBox(QWidget& parent, const std::string& name, Handler click);
  /// A box that opens the number pad on its text in an entry mode, shows what comes back with
  /// `places` decimals (-1 as plain as it is) and hands it on.
  toolkit::EntryBox& AddNumberBox(QWidget& parent, const std::string& name, int mode, int places,
                                  std::function<void(double)> entered);
  toolkit::ImageMark& AddImage(QWidget& parent, const std::string& name, toolkit::MarkKind kind,
                               Role role = Role::Panel);
  toolkit::ProgressBar& AddProgress(QWidget& parent, const std::string& name);
  /// "E&XIT": unloads the own form and nothing else.
  toolkit::Button& AddExitButton(QWidget& parent, const std::string& caption = "E&XIT");

  /// An array of buttons, named from index `first` on; a press runs `click` with its index.
  std::vector<toolkit::Button*> AddButtons(QWidget& parent, const std::string& name, int first,
                                           const std::vector<std::string>& captions, Role role,
                                           const std::function<void(int)>& click);
  /// An array of options.
  std::vector<toolkit::OptionButton*> AddOptions(QWidget& parent, const std::string& name,
                                                 int first,
                                                 const std::vector<std::string>& captions,
                                                 const std::function<void(int)>& chosen);
  /// Arrays of labels and of values.
  std::vector<toolkit::Label*> AddLabels(QWidget& parent, const std::string& name, int first,
                                         const std::vector<std::string>& texts);
  std::vector<toolkit::Label*> AddValues(QWidget& parent, const std::string& name, int first,
                                         int count);

  /// Lines of a listing or of messages, from index 1 on: one line of text each, ampersands as they
  /// are; a press runs `press` with the row.
  std::vector<toolkit::Label*> AddTextRows(QWidget& parent, const std::string& name, int count,
                                           toolkit::TypeStyle style,
                                           const std::function<void(int)>& press);

  /// Gives a control made by hand its name and its colours.
  void Adopt(toolkit::Control& control, const std::string& name, Role role);

  /// A further key that presses the button, beside the letter of its caption.
  void AddKey(toolkit::Key key, toolkit::Button& button);
  /// A key that runs a procedure.
  void AddKey(toolkit::Key key, Handler handler);
  /// The accelerator of the caption that stands now, and no other letter of this button.
  void SetCaption(toolkit::Button& button, const std::string& caption);
  /// Another set of global keys from now on, where it depends on the state of the screen.
  void SetGlobalKeys(KeyMask keys) { traits_.Keys = keys; }

  /// A key whose screen this console does not have looks disabled and is.
  void Leads(toolkit::Button& button, const char* screen);

  /// The control that the focus goes back to after every action.
  void SetHome(toolkit::Control& control);

  // ---- asking and telling; all of them wait, and the screen may have gone when they return ----
  /// The number pad on the text of a box; shows and gives what was entered, or on CANCEL the value
  /// of the text.
  double EnterNumber(toolkit::EntryBox& box, int mode, int places);
  [[nodiscard]] std::string EnterText(std::string_view text, int mode);
  /// A warning of one or two lines with &OK.
  void Warn(std::string_view first, std::string_view second = {});
  /// A question of one or two lines, answered &OK (true) or &CANCEL.
  [[nodiscard]] bool Confirm(std::string_view first, std::string_view second = {});

  /// A stage of the poll's tick, run while the screen shows. It may ask the controller.
  void OfferStage(supervision::PollStage stage, Handler handler) {
    stages_[stage] = std::move(handler);
  }

  // ---- the four moments ----
  /// Before the screen shows for the first time.
  virtual void Loaded() {}
  /// It came to the front: CurrentForm is set; bring the shown values up to date.
  virtual void Activated() {}
  /// Every key before it is carried out, global keys too; true swallows it. It may wait.
  virtual bool FirstLook(const toolkit::KeyStroke& stroke);
  /// A key that is neither global nor an accelerator; true when it was used.
  virtual bool OtherKey(const toolkit::KeyStroke& stroke);
  /// A key was let go, once a key, never for the repeats of a held one; also when the screen or
  /// the window went from under it.
  virtual void KeyUp(const toolkit::KeyStroke& stroke);
  /// What the operator holds here can no longer be relied upon: the screen was locked or left,
  /// another one or a dialog came over it, the window lost the keys. Must not wait.
  virtual void HandsOff() {}
  /// It is going; CurrentForm is put right after it.
  virtual void Unloaded() {}
  /// Places the controls: the grid of the body, unless a screen has a form of its own.
  virtual void Layout(const toolkit::Metrics& metrics);
  /// The body's contents, `width` in pixels of the drawing with the margins; the height follows.
  void SetGrid(double width, const Cell& contents);

  [[nodiscard]] toolkit::Panel& Title() { return *title_; }
  [[nodiscard]] toolkit::Panel& Body() { return *body_; }
  [[nodiscard]] ScreenSet& Screens() { return screens_; }
  [[nodiscard]] const ConsoleServices& Services() const;
  [[nodiscard]] core::System& System() const;
  [[nodiscard]] const core::ColourTable& Colours() const;

  /// Sizes the form to a body of that size, places both panels, and gives the room for controls
  /// inside the body's margins.
  toolkit::Area PlaceBody(const toolkit::Metrics& metrics, int bodyWidth, int bodyHeight);

 private:
  friend class ScreenSet;
  void MakeTitle();
  bool KeyDown(const toolkit::KeyStroke& stroke);
  void Activate();
  bool Load();
  void Leave();
  void HandOver();
  void ChoosePlace();
  [[nodiscard]] const toolkit::Form* FormBelow() const;
  template <class Control, class... Arguments>
  Control& Make(QWidget& parent, const std::string& name, Role role, Arguments&&... arguments) {
    auto* control = new Control(&parent, std::forward<Arguments>(arguments)...);  // owned by it
    Adopt(*control, name, role);
    return *control;
  }

  ScreenSet& screens_;
  ScreenTraits traits_;
  toolkit::Form form_;
  toolkit::Panel* title_ = nullptr;
  toolkit::Panel* body_ = nullptr;
  toolkit::Control* home_ = nullptr;
  TitleDrag drag_;
  std::map<toolkit::Key, Handler> keys_;
  std::map<toolkit::Button*, toolkit::Key> accelerators_;
  std::map<supervision::PollStage, Handler> stages_;
  std::optional<Cell> grid_;
  double gridWidth_ = 0;
  int running_ = 0;
  bool loading_ = false;
  bool abandoned_ = false;  ///< unloaded before it could show
};

}  // namespace torvane::console

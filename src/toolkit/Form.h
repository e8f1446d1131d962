// A borderless screen on the desk: stacking, focus, the keys before the focused control.
#pragma once

#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/Control.h"
#include "toolkit/Key.h"
#include "toolkit/Metrics.h"

namespace torvane::toolkit {

class Desk;

/// A screen. Controls are made with the form, or a panel in it, as their parent, and laid out by
/// the function given to OnLayout, which runs at once and again whenever the desk's size changes:
///
///   Form form(desk, "MachineForm");
///   Panel title(&form, PanelStyle::Title), body(&form, PanelStyle::Body);
///   Button exit(&body, "&EXIT");
///   form.OnLayout([&](const Metrics& m) {
///     form.SetSize(m.Px(640), m.Px(480));
///     Area rest = form.Inside();
///     title.Place(TakeTop(rest, m.TitleHeight));
///     body.Place(rest);
///   });
///   form.OnKeyDown([&](const KeyStroke& stroke) { ...; return true when used; });
///   form.Show();
class Form : public QWidget {
 public:
  /// What a lock does to the keys and buttons that the operator holds down.
  enum class Holds { End, Keep };

  Form(Desk& desk, std::string name);
  ~Form() override;

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] Desk& OwnerDesk() const { return desk_; }

  /// Shows it on top of the stack and makes it the active form; OnActivate runs when it was not.
  void Show();
  /// On top of the others without being shown or activated.
  void Raise();
  /// Takes it off the desk without OnUnload. The next form of the stack becomes active.
  void Hide();
  /// OnUnload, then Hide. Nothing happens on a form that does not show. A modal form's ShowModal
  /// returns after it.
  void Close();
  [[nodiscard]] bool Visible() const { return visible_; }
  /// How often it was taken off the desk: it may show again before whoever waits for that looks.
  [[nodiscard]] std::uint64_t Hides() const { return hides_; }
  [[nodiscard]] bool Active() const;

  /// A disabled form takes no keys and no presses; it looks the same. A key or a button that was
  /// held when it was disabled is released once the form is enabled again. OnHandsOff
  /// runs at once, or with Holds::Keep as soon as something is let go of meanwhile.
  void SetEnabled(bool enabled, Holds holds = Holds::End);
  [[nodiscard]] bool Enabled() const { return enabled_; }

  /// The form came to the front (not: back to the front after a modal form over it).
  void OnActivate(std::function<void()> handler) { activate_ = std::move(handler); }
  void OnUnload(std::function<void()> handler) { unload_ = std::move(handler); }

  /// Before the focused control; true swallows the stroke, and no key press follows.
  void OnKeyDown(std::function<bool(const KeyStroke&)> handler) { keyDown_ = std::move(handler); }
  /// The character that the stroke types, before the focused control: what comes back is typed
  /// instead, 0 swallows it. Enter still presses the default button then.
  void OnKeyPress(std::function<char(char)> handler) { keyPress_ = std::move(handler); }
  /// Once a key, when it is let go (never for the repeats of a held key).
  void OnKeyUp(std::function<void(const KeyStroke&)> handler) { keyUp_ = std::move(handler); }

  /// What the operator holds on this form can no longer be relied upon: it was disabled or hidden,
  /// another form came to the front, a dialog too, or the window lost the keys. Must not wait.
  void OnHandsOff(std::function<void()> handler) { handsOff_ = std::move(handler); }
  void HandsOff();

  void OnLayout(std::function<void(const Metrics&)> layout);
  void Relayout();

  /// The focus of the form. False when the control cannot have it, and then it stays where it is.
  bool FocusOn(Control* control);
  [[nodiscard]] Control* Focused() const;
  /// The fixed control that the focus goes back to after every action.
  void SetDefaultFocus(Control* control) { defaultFocus_ = control; }
  void FocusDefault();
  /// Tab: the next control that takes the focus, in the order of their making.
  void FocusNext(bool backwards);

  /// Pressed by Enter when the focused control has no use for it; may be null.
  void SetDefaultButton(Control* button) { defaultButton_ = button; }

  /// Place on the desk, pixels. A form that was never moved is in the middle.
  [[nodiscard]] int Left() const { return x(); }
  [[nodiscard]] int Top() const { return y(); }
  void MoveTo(int left, int top);
  void SetSize(int width, int height);
  /// The form's own rectangle inside its rim, for layouts.
  [[nodiscard]] Area Inside() const;
  [[nodiscard]] const Metrics& Measures() const;

  /// Fills the desk, has no shadow, and stays under all others (the main screen).
  void SetBackdrop(bool backdrop);
  [[nodiscard]] bool Backdrop() const { return backdrop_; }

  void SetColours(Colour background, Colour foreground);
  [[nodiscard]] Colour Background() const { return background_; }

  /// The control of that name, null if there is none.
  [[nodiscard]] Control* Find(const std::string& name) const;
  [[nodiscard]] std::vector<Control*> Controls() const;

  /// True when keys and presses reach it now.
  [[nodiscard]] bool AcceptsInput() const;

  /// An open list of one of its controls; closed by a press elsewhere.
  void SetPopup(Control* popup, std::function<void()> close);
  void ClosePopup();

  /// Used by the desk and the controls.
  void DeliverKeyDown(KeyStroke stroke);
  void DeliverKeyUp(const KeyStroke& stroke);
  void RunActivate();
  void PressedOn(Control* control);
  /// Runs now, or when the form is enabled again.
  void WhenEnabled(std::function<void()> job);
  void AddControl(Control* control);
  void DropControl(Control* control);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  class Shadow;
  void PlaceShadow();
  void DefaultPlace();
  void PressDefault(const KeyStroke& stroke);
  void TakeSwallowed(const KeyStroke& stroke);

  Desk& desk_;
  std::string name_;
  Shadow* shadow_ = nullptr;
  std::vector<Control*> controls_;
  Control* focused_ = nullptr;
  Control* defaultFocus_ = nullptr;
  Control* defaultButton_ = nullptr;
  Control* popup_ = nullptr;
  std::function<void()> closePopup_;
  std::function<void()> activate_;
  std::function<void()> unload_;
  std::function<void()> handsOff_;
  std::function<bool(const KeyStroke&)> keyDown_;
  std::function<char(char)> keyPress_;
  std::function<void(const KeyStroke&)> keyUp_;
  std::function<void(const Metrics&)> layout_;
  std::vector<std::function<void()>> waiting_;
  Colour background_ = 0xC7BE98;
  Colour foreground_ = 0;
  std::uint64_t hides_ = 0;
  double centreX_ = 0.5;
  double centreY_ = 0.5;
  bool visible_ = false;
  bool enabled_ = true;
  bool backdrop_ = false;
  bool closing_ = false;
  bool moving_ = false;

  friend class Desk;
};

}  // namespace torvane::toolkit

// Keys: plain, two-state, and one of several.
#pragma once

#include "toolkit/Caption.h"
#include "toolkit/Control.h"

namespace torvane::toolkit {

/// The way that the arrow on a key points; its caption goes.
enum class ArrowFace { None, Right, Up, Left, Down };

/// Whether a change by the program tells the handlers.
enum class Events { Fire, Silent };

/// A sign in the lower right corner of a key, told apart by its shape alone.
enum class KeyMark {
  None,
  Good,     ///< a tick
  Warning,  ///< a triangle
  Hold      ///< two bars in a disc
};

/// A plain key. A click is a press and release on it, Space or Enter while it has the focus, or
/// Press. The letter behind the caption's ampersand is underlined; the form's key-down hook does
/// what it stands for.
class Button : public Control {
 public:
  explicit Button(QWidget* parent, std::string caption = {});

  void SetCaption(std::string caption);
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  [[nodiscard]] char Accelerator() const { return AcceleratorOf(caption_); }

  void SetMark(KeyMark mark);
  [[nodiscard]] KeyMark Mark() const { return mark_; }

  /// With the ring of a key that is down, as the sign of the choice in force.
  void SetLit(bool lit);
  [[nodiscard]] bool Lit() const { return lit_; }

  void SetArrow(ArrowFace arrow);

  void OnClick(std::function<void()> handler) { click_ = std::move(handler); }

  /// A click by the program: nothing when the button is hidden or disabled. Returns whether it was
  /// carried out.
  bool Press();

  /// True while it is pressed by pointer.
  [[nodiscard]] bool Sunk() const { return sunk_; }

  bool KeyDown(const KeyStroke& stroke) override;

 protected:
  /// What a click does; the plain button calls its handler.
  virtual void Clicked();
  /// Draws as down: a dark ring.
  [[nodiscard]] virtual bool Ringed() const { return lit_; }

  void FireClick();
  void paintEvent(QPaintEvent* event) override;
  void PointerDown(const PointerEvent& event) override;
  void PointerMove(const PointerEvent& event) override;
  void PointerUp(const PointerEvent& event) override;
  void PointerCancelled() override;

 private:
  std::string caption_;
  ArrowFace arrow_ = ArrowFace::None;
  CaptionText lines_;
  std::function<void()> click_;
  KeyMark mark_ = KeyMark::None;
  bool lit_ = false;
  bool sunk_ = false;
  bool held_ = false;
};

/// A key that stays down. A click changes its state, then tells OnChange, then OnClick.
class TwoStateButton : public Button {
 public:
  explicit TwoStateButton(QWidget* parent, std::string caption = {});

  [[nodiscard]] bool Down() const { return down_; }
  /// OnChange runs only for Events::Fire, and only when the state differs.
  void SetDown(bool down, Events events);
  void OnChange(std::function<void(bool down)> handler) { change_ = std::move(handler); }

 protected:
  void Clicked() override;
  [[nodiscard]] bool Ringed() const override { return down_ || Lit(); }

 private:
  bool down_ = false;
  std::function<void(bool)> change_;
};

/// One of several keys in the same parent, of which at most one is down. A click on the one that is
/// down leaves it down and tells nobody.
class OptionButton : public TwoStateButton {
 public:
  explicit OptionButton(QWidget* parent, std::string caption = {});

  /// Puts it down and lets the others up; with Events::Fire its OnChange runs, if it was up.
  void Select(Events events);

 protected:
  void Clicked() override;
};

}  // namespace torvane::toolkit

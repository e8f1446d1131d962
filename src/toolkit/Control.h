// What every control of a form has: place, colours, name, focus, keys and pointer.
#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "platform/Canvas.h"
#include "toolkit/Area.h"
#include "toolkit/Key.h"
#include "toolkit/Metrics.h"
#include "toolkit/Pointer.h"

namespace torvane::toolkit {

using platform::Colour;

class Desk;
class Form;

/// A control paints itself from its two colours. It lies in a form, a panel or a frame; whatever
/// it is put into, keys and focus are the business of its form. Handlers are plain functions; a
/// handler may wait, open a modal form or hide the control's own form: every event of the pointer
/// is an activity of the loop.
class Control : public QWidget {
 public:
  /// `owner` is for controls outside their form, such as an open list.
  explicit Control(QWidget* parent, Form* owner = nullptr);
  ~Control() override;

  /// The documented name, such as "ExitButton" or "NumberButton(3)"; Form::Find looks for it.
  void SetName(std::string name) { name_ = std::move(name); }
  [[nodiscard]] const std::string& Name() const { return name_; }

  void Place(const Area& area);
  [[nodiscard]] Area Bounds() const;

  /// Own visibility, whether or not the form shows at the moment.
  void SetVisible(bool visible);
  [[nodiscard]] bool Visible() const { return visible_; }
  /// True when nothing above it is hidden either.
  [[nodiscard]] bool OnShow() const;

  /// A disabled control fades and takes no input.
  void SetEnabled(bool enabled);
  [[nodiscard]] bool Enabled() const { return enabled_; }

  /// Face and text, 0x00BBGGRR.
  void SetColours(Colour background, Colour foreground);
  [[nodiscard]] Colour Background() const { return background_; }
  [[nodiscard]] Colour Foreground() const { return foreground_; }

  /// Puts the form's focus here; false when the control cannot have it.
  bool SetFocus();
  [[nodiscard]] bool HasFocus() const;
  /// True for controls that take the focus, when they are visible and enabled.
  [[nodiscard]] bool CanFocus() const;
  void SetFocusable(bool focusable) { focusable_ = focusable; }

  void OnMouseDown(std::function<void(const PointerEvent&)> handler) {
    mouseDown_ = std::move(handler);
  }
  void OnMouseMove(std::function<void(const PointerEvent&)> handler) {
    mouseMove_ = std::move(handler);
  }
  /// Comes even when the form was locked after the press, as soon as it is free again.
  void OnMouseUp(std::function<void(const PointerEvent&)> handler) {
    mouseUp_ = std::move(handler);
  }

  [[nodiscard]] Form* OwnerForm() const;
  [[nodiscard]] const Metrics& Measures() const;

  /// A stroke that the form let through; true when the control used it.
  virtual bool KeyDown(const KeyStroke& stroke);

  /// Told by the form.
  virtual void FocusChanged(bool hasFocus);

  /// The desk's size or the metrics changed.
  virtual void MetricsChanged() {}

 protected:
  virtual void PointerDown(const PointerEvent& event);
  virtual void PointerMove(const PointerEvent& event);
  virtual void PointerUp(const PointerEvent& event);
  virtual void PointerDouble(const PointerEvent& event);
  /// The press ended where it must not count: the form was locked, hidden or covered meanwhile.
  virtual void PointerCancelled() {}
  /// Colours, enabled state or caption changed.
  virtual void LookChanged() { update(); }
  virtual void PlaceChanged() {}

  void mousePressEvent(QMouseEvent* event) final;
  void mouseMoveEvent(QMouseEvent* event) final;
  void mouseReleaseEvent(QMouseEvent* event) final;
  void mouseDoubleClickEvent(QMouseEvent* event) final;
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  [[nodiscard]] bool Admits() const;
  /// Runs what an event leads to as an activity; the control outlives its start, not its waits.
  void InActivity(std::function<void(Control&)> handle);
  void Press(const PointerEvent& at, bool twice);
  void Move(const PointerEvent& at);
  void Release(const PointerEvent& event, bool counts);

  std::string name_;
  Form* owner_ = nullptr;
  Colour background_ = 0xC7BE98;
  Colour foreground_ = 0;
  bool visible_ = true;
  bool enabled_ = true;
  bool focusable_ = false;
  PointerButton grabbed_ = PointerButton::None;
  std::function<void(const PointerEvent&)> mouseDown_;
  std::function<void(const PointerEvent&)> mouseMove_;
  std::function<void(const PointerEvent&)> mouseUp_;

  friend class Form;
};

}  // namespace torvane::toolkit

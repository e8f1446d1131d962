// A value chosen along a groove, in steps.
#pragma once

#include <functional>

#include "toolkit/Control.h"

namespace torvane::toolkit {

/// Steps from 0 to Maximum, lowest at the left. A press on the groove, a drag of the knob, or Left
/// and Right while it has the focus move it.
class Slider : public Control {
 public:
  explicit Slider(QWidget* parent);

  /// Highest step, from 0 up; a value beyond it is held.
  void SetMaximum(int maximum);
  [[nodiscard]] int Maximum() const { return maximum_; }

  /// Tells nobody; held within the range.
  void SetValue(int value);
  [[nodiscard]] int Value() const { return value_; }

  /// The operator moved it to another step.
  void OnChange(std::function<void(int value)> handler) { change_ = std::move(handler); }

  bool KeyDown(const KeyStroke& stroke) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void PointerDown(const PointerEvent& event) override;
  void PointerMove(const PointerEvent& event) override;
  void PointerUp(const PointerEvent& event) override;
  void FocusChanged(bool hasFocus) override;

 private:
  [[nodiscard]] int KnobWidth() const;
  /// Left edge of the knob at a step, pixels.
  [[nodiscard]] int KnobLeft(int value) const;
  [[nodiscard]] int StepAt(int x) const;
  void Take(int value);

  int maximum_ = 1;
  int value_ = 0;
  bool held_ = false;
  std::function<void(int)> change_;
};

}  // namespace torvane::toolkit

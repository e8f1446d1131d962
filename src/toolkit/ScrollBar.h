// A scroll bar wide enough for a finger.
#pragma once

#include "toolkit/Control.h"

namespace torvane::toolkit {

/// Upright. Values run from 0 to Maximum; the thumb shows PageSize of Maximum + PageSize.
class ScrollBar : public Control {
 public:
  explicit ScrollBar(QWidget* parent, Form* owner = nullptr);

  void SetRange(int maximum, int pageSize);
  [[nodiscard]] int Maximum() const { return maximum_; }
  /// Clamped into the range. Tells nobody.
  void SetValue(int value);
  [[nodiscard]] int Value() const { return value_; }
  /// The operator moved it.
  void OnScroll(std::function<void(int value)> handler) { scroll_ = std::move(handler); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void PointerDown(const PointerEvent& event) override;
  void PointerMove(const PointerEvent& event) override;
  void PointerUp(const PointerEvent& event) override;

 private:
  [[nodiscard]] Area Thumb() const;
  [[nodiscard]] int ArrowHeight() const;
  void Move(int value);

  int maximum_ = 0;
  int page_ = 1;
  int value_ = 0;
  int grab_ = -1;
  std::function<void(int)> scroll_;
};

}  // namespace torvane::toolkit

// How far a job has come.
#pragma once

#include "toolkit/Control.h"

namespace torvane::toolkit {

/// Foreground on background, from Minimum to Maximum; a value outside is clamped.
class ProgressBar : public Control {
 public:
  explicit ProgressBar(QWidget* parent);

  void SetRange(int minimum, int maximum);
  void SetValue(int value);
  [[nodiscard]] int Minimum() const { return minimum_; }
  [[nodiscard]] int Maximum() const { return maximum_; }
  [[nodiscard]] int Value() const { return value_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int minimum_ = 0;
  int maximum_ = 100;
  int value_ = 0;
};

}  // namespace torvane::toolkit

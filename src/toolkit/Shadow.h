// The soft shadow that a form casts on what lies under it.
#pragma once

#include <QImage>
#include <QWidget>

#include "toolkit/Form.h"
#include "toolkit/Metrics.h"

namespace torvane::toolkit {

/// A sibling right under its form; takes no presses.
class Form::Shadow : public QWidget {
 public:
  explicit Shadow(QWidget* parent);

  /// Round that place of the desk.
  void Surround(const QRect& form, const Metrics& metrics);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Draw(int reach);

  int reach_ = 0;
  QImage corner_;  ///< one quarter, the middle of the form at its right lower pixel
};

}  // namespace torvane::toolkit

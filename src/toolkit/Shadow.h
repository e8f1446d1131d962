// The soft shadow that a form casts on what lies under it.
#pragma once

#include <QImage>
#include <QWidget>
#include <array>
#include <cstddef>

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

  static constexpr std::size_t PieceCount = 8;

  int reach_ = 0;
  QRect covered_;  ///< by the form, in the shadow's own pixels
  /// Four corners, then the sides left and right, above and below, which are stretched.
  std::array<QImage, PieceCount> pieces_;
};

}  // namespace torvane::toolkit

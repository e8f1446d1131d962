// The signs of a dialog: warning, question, information.
#pragma once

#include "toolkit/Control.h"

namespace torvane::toolkit {

enum class MarkKind { Warning, Question, Information };

/// Drawn in the foreground colour, sign in the background colour, as large as its place allows.
class ImageMark : public Control {
 public:
  ImageMark(QWidget* parent, MarkKind kind);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  MarkKind kind_;
};

}  // namespace torvane::toolkit

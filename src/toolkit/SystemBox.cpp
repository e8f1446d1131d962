#include "toolkit/SystemBox.h"

namespace torvane::toolkit {

void PrepareForFingers(QMessageBox& box) {
  box.setStyleSheet(
      "QPushButton { min-width: 152px; min-height: 56px; font-size: 21px; font-weight: bold; }"
      "QLabel { font-size: 21px; }");
}

}  // namespace torvane::toolkit

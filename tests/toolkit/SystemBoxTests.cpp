#include <QPushButton>

#include <gtest/gtest.h>

#include "support/QtEnvironment.h"
#include "toolkit/SystemBox.h"

namespace torvane::toolkit {
namespace {

TEST(SystemBox, HasAKeyThatAFingerHits) {
  QMessageBox box(QMessageBox::Critical, "Torvane 32", "Machine.dat: is missing", QMessageBox::Ok);
  PrepareForFingers(box);
  box.show();
  const QAbstractButton* key = box.button(QMessageBox::Ok);
  EXPECT_GE(key->height(), 56);
  EXPECT_GE(key->width(), 152);
}

}  // namespace
}  // namespace torvane::toolkit

// A part of the desk that is painted anew looks as it did when all of it was painted.
#include <algorithm>
#include <cstdlib>

#include <rapidcheck/gtest.h>

#include "ScreenFixture.h"
#include "toolkit/Form.h"
#include "toolkit/Label.h"
#include "toolkit/ListBox.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

class Repaints : public OnDesk {
 protected:
  Repaints() {
    Ground.SetBackdrop(true);
    Ground.SetColours(0xC0C0C0, 0);
    Ground.Show();
    Front.SetSize(600, 400);
    Lines.SetItems({"G00 X1", "G01 X2", "M30"});
    Lines.SetCurrent(1);
    Lines.Place({20, 60, 300, 300});
    Place.Place({340, 60, 250, 40});
    Front.Show();
    Whole = Desk_.grab().toImage();
  }

  [[nodiscard]] QImage Part(const QRect& part) { return Desk_.grab(part).toImage(); }

  Form Ground{Desk_, "FrontEnd"};
  Form Front{Desk_, "EditProgForm"};
  ListBox Lines{&Front};
  Label Place{&Front, "2 OF 3"};
  QImage Whole;
};

/// The largest difference of a colour of two pictures of one size, 0 to 255.
int Difference(const QImage& a, const QImage& b) {
  int largest = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb one = a.pixel(x, y);
      const QRgb other = b.pixel(x, y);
      largest =
          std::max({largest, std::abs(qRed(one) - qRed(other)),
                    std::abs(qGreen(one) - qGreen(other)), std::abs(qBlue(one) - qBlue(other))});
    }
  }
  return largest;
}

/// Of smoothed corners and letters.
constexpr int Rounding = 4;

TEST_F(Repaints, AnyPartOfAFormAndItsShadowIsAPieceOfTheWhole) {
  Lines.SetVisible(false);
  Whole = Desk_.grab().toImage();
  const QRect form = Front.geometry();
  const bool same = rc::check([&] {
    const int left = *rc::gen::inRange(form.left() - 40, form.right() + 30);
    const int top = *rc::gen::inRange(form.top() - 40, form.bottom() + 30);
    const QRect part(left, top, *rc::gen::inRange(1, 200), *rc::gen::inRange(1, 200));
    RC_ASSERT(Difference(Part(part), Whole.copy(part)) <= Rounding);
  });
  EXPECT_TRUE(same);
}

TEST_F(Repaints, AListCoversItsPlace) {
  EXPECT_TRUE(Lines.testAttribute(Qt::WA_OpaquePaintEvent));
  const QImage list = Lines.grab().toImage();
  for (const QPoint& at : {QPoint(0, 0), QPoint(list.width() - 1, 0), QPoint(0, list.height() - 1),
                           QPoint(list.width() - 1, list.height() - 1), QPoint(150, 200)}) {
    EXPECT_EQ(qAlpha(list.pixel(at)), 255);
    EXPECT_EQ(list.pixel(at), Whole.pixel(Lines.mapTo(&Desk_, at)));
  }
}

TEST_F(Repaints, TheShadowLiesRoundTheForm) {
  const QRect form = Front.geometry();
  const QPoint beside(form.right() + 4, form.center().y());
  const QPoint away(form.right() + 200, form.center().y());
  EXPECT_LT(qGray(Whole.pixel(beside)), qGray(Whole.pixel(away)));
}

}  // namespace
}  // namespace torvane::tests

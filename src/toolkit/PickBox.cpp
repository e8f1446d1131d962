#include "toolkit/PickBox.h"

#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <algorithm>

#include "toolkit/Desk.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

/// Lines of an open list.
constexpr int MostLines = 8;
/// Pixels: what a finger hits.
constexpr int LowestRow = 48;

QWidget* ListParent(const Control& box, QWidget* otherwise) {
  return box.OwnerForm() ? static_cast<QWidget*>(&box.OwnerForm()->OwnerDesk()) : otherwise;
}

}  // namespace

PickBox::PickBox(QWidget* parent) : Control(parent), entry_(this) {
  SetFocusable(true);
  entry_.SetFocusable(false);
  entry_.FollowFocusOf(*this);
  list_ = new ListBox(ListParent(*this, this), Selection::Single, OwnerForm());
  list_->SetFocusable(false);
  list_->SetVisible(false);
  list_->OnClick([this] {
    const int index = list_->Current();
    CloseList();
    Take(index);
  });
  entry_.OnMouseDown([this](const PointerEvent&) { SetFocus(); });
  entry_.OnChange([this] {
    current_ = -1;
    if (const auto handler = change_) handler();
  });
}

PickBox::~PickBox() { delete list_; }

void PickBox::SetItems(std::vector<std::string> items) {
  CloseList();
  list_->SetItems(std::move(items));
  current_ = -1;
}

void PickBox::AddItem(std::string text) { list_->Add(std::move(text)); }

void PickBox::ClearItems() { SetItems({}); }

void PickBox::SetCurrent(int index) {
  current_ = index < 0 || index >= Count() ? -1 : index;
  list_->SetCurrent(current_);
  entry_.SetText(list_->Text(current_));
}

void PickBox::SetText(const std::string& text) {
  current_ = -1;
  entry_.SetText(text);
}

void PickBox::Take(int index) {
  if (index < 0 || index >= Count()) return;
  const bool same = index == current_ && entry_.Text() == list_->Text(index);
  SetCurrent(index);
  entry_.SetCursor(static_cast<int>(entry_.Text().size()));
  if (same) return;
  if (const auto handler = change_) handler();
}

/// Below the box, or above it where there is more room, inside the desk's work area.
Area PickBox::ListArea(const Metrics& m) {
  QWidget* const ground = list_->parentWidget();
  const Area room = OwnerForm() ? OwnerForm()->OwnerDesk().WorkArea()
                                : Area{0, 0, ground->width(), ground->height()};
  const int row = std::max(LowestRow, m.Px(48));
  const int rim = 2 * m.Hairline;
  const QPoint corner = mapTo(ground, QPoint(0, 0));
  const int above = corner.y() - 2 - room.Y;
  const int below = room.Bottom() - corner.y() - height() - 2;
  const int wanted = std::min(MostLines, Count());
  const bool under = below >= wanted * row + rim || below >= above;
  const int lines = std::clamp((std::max(above, below) - rim) / row, 1, wanted);
  list_->SetVisibleLines(lines);
  const int high = lines * row + rim;
  const int top = under ? corner.y() + height() + 2 : corner.y() - 2 - high;
  return {corner.x(), top, width(), high};
}

void PickBox::OpenList() {
  if (open_ || Count() == 0 || !OnShow() || !Enabled()) return;
  open_ = true;
  const Metrics& m = Measures();
  list_->SetColours(Background(), Foreground());
  list_->Place(ListArea(m));
  list_->SetCurrent(current_);
  list_->SetVisible(true);
  list_->raise();
  if (OwnerForm()) OwnerForm()->SetPopup(list_, [this] { CloseList(); });
}

void PickBox::CloseList() {
  if (!open_) return;
  open_ = false;
  list_->SetVisible(false);
  if (OwnerForm()) OwnerForm()->SetPopup(nullptr, nullptr);
}

bool PickBox::ListKey(const KeyStroke& stroke) {
  if (stroke.Code == Key::Escape) {
    CloseList();
    return true;
  }
  if (stroke.Code == Key::Enter) {
    const int index = list_->Current();
    CloseList();
    Take(index);
    return true;
  }
  return list_->KeyDown(stroke);
}

bool PickBox::KeyDown(const KeyStroke& stroke) {
  if (open_ && ListKey(stroke)) return true;
  if (stroke.Code == Key::Enter && Count() > 0) {
    OpenList();
    return true;
  }
  if (stroke.Code == Key::Up || stroke.Code == Key::Down) {
    const int step = stroke.Code == Key::Up ? -1 : 1;
    if (Count() > 0) Take(std::clamp(current_ + step, 0, Count() - 1));
    return true;
  }
  return entry_.KeyDown(stroke);
}

void PickBox::FocusChanged(bool hasFocus) {
  if (!hasFocus) CloseList();
  entry_.FocusChanged(hasFocus);
  update();
}

void PickBox::PointerUp(const PointerEvent& event) {
  if (!rect().contains(event.X, event.Y)) return;
  if (open_) return CloseList();
  OpenList();
}

void PickBox::PlaceChanged() {
  Area rest{0, 0, width(), height()};
  (void)TakeRight(rest, std::min(height(), width() / 2));
  entry_.Place(rest);
}

void PickBox::MetricsChanged() { CloseList(); }

void PickBox::LookChanged() {
  entry_.SetColours(Background(), Foreground());
  entry_.SetEnabled(Enabled());
  update();
}

void PickBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  const QRect arrow(entry_.width(), 0, width() - entry_.width(), height());
  const Colour text = Enabled() ? Foreground() : Faded(Foreground(), Background());
  painter.fillRect(arrow, ToQColor(Mix(Background(), Foreground(), open_ ? 0.3 : 0.14)));
  painter.setPen(QPen(ToQColor(HasFocus() ? text : Rim(Background())), m.Hairline, Qt::SolidLine,
                      Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(arrow.adjusted(-m.Hairline, 0, -m.Hairline, -m.Hairline));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ToQColor(text));
  const double size = height() / 7.0;
  const QPointF middle = QRectF(arrow).center();
  QPainterPath sign;
  sign.moveTo(middle + QPointF(-1.4 * size, -size * 0.7));
  sign.lineTo(middle + QPointF(1.4 * size, -size * 0.7));
  sign.lineTo(middle + QPointF(0, size * 0.7));
  painter.drawPath(sign);
}

}  // namespace torvane::toolkit

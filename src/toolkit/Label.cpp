#include "toolkit/Label.h"

#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

/// The font, smaller where the line would be too wide, but never smaller than can be read.
QFont Fitted(QFont font, const QString& line, int width, bool figures, int least) {
  const auto wide = [&] {
    return figures ? FiguresWidth(font, line) : QFontMetrics(font).horizontalAdvance(line);
  };
  while (font.pixelSize() > least && wide() > width) font.setPixelSize(font.pixelSize() - 1);
  return font;
}

}  // namespace

Label::Label(QWidget* parent, std::string text, TypeStyle style, Alignment alignment)
    : Control(parent), text_(std::move(text)), style_(style), alignment_(alignment) {}

void Label::SetText(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  update();
}

void Label::SetStyle(TypeStyle style) {
  style_ = style;
  update();
}

void Label::SetAlignment(Alignment alignment) {
  alignment_ = alignment;
  update();
}

void Label::SetAtTop(bool atTop) {
  atTop_ = atTop;
  update();
}

void Label::SetFilled(bool filled) {
  filled_ = filled;
  update();
}

void Label::SetRim(bool rim) {
  rim_ = rim;
  update();
}

void Label::SetPlainText(bool plain) {
  plain_ = plain;
  update();
}

int Label::NaturalHeight() const {
  constexpr double Leading = 1.5;
  const int lines = 1 + static_cast<int>(std::count(text_.begin(), text_.end(), '\n'));
  const Metrics& m = Measures();
  if (filled_ && rim_)
    return std::max(m.EntryHeight, static_cast<int>(m.TypeSize(style_) * Leading));
  return std::max(m.LineHeight, static_cast<int>(lines * m.TypeSize(style_) * Leading));
}

void Label::SetShrinking(bool shrinking) {
  shrinking_ = shrinking;
  update();
}

void Label::Press() {
  if (!OnShow() || !Enabled() || !click_) return;
  const auto handler = click_;
  handler();
}

void Label::PointerUp(const PointerEvent& event) {
  if (rect().contains(event.X, event.Y)) Press();
}

void Label::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  QRect area = rect();
  if (filled_) {
    painter.fillRect(area, ToQColor(Background()));
    if (rim_) {
      painter.setPen(QPen(ToQColor(Rim(Background())), m.Hairline, Qt::SolidLine, Qt::SquareCap,
                          Qt::MiterJoin));
      painter.drawRect(area.adjusted(0, 0, -m.Hairline, -m.Hairline));
    }
    area.adjust(m.Px(12), 0, -m.Px(12), 0);
  }
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.setFont(FontOf(m, style_));
  const Colour text = Enabled() ? Foreground() : Faded(Foreground(), Background());
  painter.setPen(ToQColor(text));
  const QStringList lines = ToQString(text_).split(QLatin1Char('\n'));
  const int height = static_cast<int>(painter.font().pixelSize() * 1.45);
  const int all = height * static_cast<int>(lines.size());
  int top = atTop_ ? area.y() : area.y() + (area.height() - all) / 2;
  for (const QString& line : lines) {
    const QRect place(area.x(), top, area.width(), height);
    if (shrinking_) {
      painter.setFont(Fitted(FontOf(m, style_), line, area.width(), HasFigures(style_),
                             m.TypeSize(TypeStyle::Small)));
    }
    if (HasFigures(style_)) {
      PaintFigures(painter, place, line, alignment_);
    } else {
      const std::string bytes = line.toLatin1().toStdString();
      PaintLine(painter, place, plain_ ? CaptionLine{bytes, -1} : ParseLine(bytes), alignment_);
    }
    top += height;
  }
}

}  // namespace torvane::toolkit

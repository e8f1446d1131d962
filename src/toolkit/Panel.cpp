#include "toolkit/Panel.h"

#include <QPainter>
#include <QPainterPath>

#include "toolkit/Form.h"
#include "toolkit/Theme.h"

namespace torvane::toolkit {

Panel::Panel(QWidget* parent, PanelStyle style, std::string caption)
    : Control(parent), style_(style), caption_(std::move(caption)) {}

void Panel::SetCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  update();
}

void Panel::SetRim(Colour rim) {
  rim_ = rim;
  update();
}

Area Panel::Inside() const {
  const Area whole{0, 0, width(), height()};
  const bool rimmed = style_ == PanelStyle::Text || style_ == PanelStyle::Sunken;
  return rimmed ? whole.Inset(Measures().Hairline) : whole;
}

void Panel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  const auto* form = dynamic_cast<const Form*>(parentWidget());
  if (form && !form->Backdrop()) {
    QPainterPath inside;
    const int h = m.Hairline;
    inside.addRoundedRect(QRectF(form->rect()).adjusted(h, h, -h, -h).translated(-pos()),
                          m.Corner + 1, m.Corner + 1);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(inside);
  }
  painter.fillRect(rect(), ToQColor(Background()));
  const QColor line = ToQColor(rim_.value_or(Rim(Background())));
  if (style_ == PanelStyle::Title) {
    painter.fillRect(0, height() - m.Hairline, width(), m.Hairline, line);
  }
  if (style_ == PanelStyle::Text || style_ == PanelStyle::Sunken) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(line, m.Hairline, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rect().adjusted(0, 0, -m.Hairline, -m.Hairline));
  }
  if (caption_.empty()) return;
  const bool title = style_ == PanelStyle::Title;
  painter.setFont(FontOf(m, title ? TypeStyle::Title : TypeStyle::Entry));
  painter.setPen(ToQColor(Foreground()));
  PaintLine(painter, rect().adjusted(m.Px(14), 0, -m.Px(14), -m.Hairline), {caption_, -1},
            title ? Alignment::Centre : Alignment::Left);
}

}  // namespace torvane::toolkit

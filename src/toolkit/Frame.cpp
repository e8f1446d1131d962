#include "toolkit/Frame.h"

#include <QFontMetrics>
#include <QPainter>

#include "toolkit/Theme.h"

namespace torvane::toolkit {

namespace {

std::string Trimmed(const std::string& text) {
  const auto from = text.find_first_not_of(' ');
  if (from == std::string::npos) return {};
  return text.substr(from, text.find_last_not_of(' ') - from + 1);
}

}  // namespace

Frame::Frame(QWidget* parent, std::string caption)
    : Control(parent), caption_(std::move(caption)) {}

void Frame::SetCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  update();
}

/// The caption's height, half of it above the line; none without a caption, so that the margins are
/// even.
int Frame::Rise(const Metrics& metrics) const {
  return Trimmed(caption_).empty() ? 0 : metrics.TypeSize(TypeStyle::Small);
}

Area Frame::Inside() const {
  const Metrics& m = Measures();
  Area rest{0, 0, width(), height()};
  (void)TakeTop(rest, Rise(m));
  return rest.Inset(m.Px(16));
}

int Frame::HeightFor(const Metrics& metrics, int inside) const {
  return inside + Rise(metrics) + 2 * metrics.Px(16);
}

void Frame::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Metrics& m = Measures();
  painter.setRenderHint(QPainter::Antialiasing);
  const double half = m.Hairline / 2.0;
  painter.setPen(QPen(ToQColor(Rim(Background())), m.Hairline));
  painter.drawRoundedRect(QRectF(rect()).adjusted(half, Rise(m) / 2.0 + half, -half, -half),
                          m.Corner, m.Corner);
  const CaptionLine line = ParseLine(Trimmed(caption_));
  if (line.Text.empty()) return;
  painter.setFont(FontOf(m, TypeStyle::Small));
  const int wide = QFontMetrics(painter.font()).horizontalAdvance(ToQString(line.Text));
  // A narrow frame gives its caption all that is between its corners.
  const bool roomy = wide + 2 * m.Gap + m.Px(32) <= width();
  const int left = roomy ? m.Px(16) : m.Corner;
  const int side = roomy ? m.Gap : 2;
  const QRect gap(left, 0, std::min(wide + 2 * side, width() - 2 * left), Rise(m) + 2);
  painter.fillRect(gap, ToQColor(Background()));
  painter.setPen(ToQColor(Foreground()));
  PaintLine(painter, gap.adjusted(side, 0, -side + 1, 0), line, Alignment::Left);
}

}  // namespace torvane::toolkit

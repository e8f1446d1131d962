#include "toolkit/Metrics.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace torvane::toolkit {

namespace {

/// The drawing that all sizes are given for.
constexpr double DrawnWidth = 1280;
constexpr double DrawnHeight = 960;

/// What a finger needs.
constexpr int LowestKey = 56;

/// Pixels of the drawing and the least that can be read, in the order of TypeStyle.
struct TypeStep {
  double Drawn;
  int Least;
};
constexpr std::array<TypeStep, static_cast<std::size_t>(TypeStyle::Count)> TypeScale = {{
    {14, 12},  // Small
    {17, 14},  // Body
    {17, 14},  // Bold
    {17, 14},  // Key
    {21, 17},  // Title
    {25, 20},  // Entry
    {25, 20},  // Strong
    {25, 20},  // Mono
    {32, 26},  // Readout
    {42, 34},  // Figure
    {59, 47},  // Position
}};

}  // namespace

Metrics Metrics::For(int width, int height) {
  Metrics m;
  m.DeskWidth = width;
  m.DeskHeight = height;
  m.Scale = std::clamp(std::min(width / DrawnWidth, height / DrawnHeight), 0.5, 3.0);
  m.Gap = m.Px(8);
  m.Margin = m.Px(24);
  m.KeyHeight = m.KeyOf(72);
  m.PadKeyHeight = m.KeyOf(60);
  m.KeyWidth = m.Px(152);
  m.TitleHeight = m.Px(48);
  m.EntryHeight = m.KeyOf(56);
  m.LineHeight = m.Px(28);
  m.TextStrip = m.Px(34);
  m.Hairline = std::max(1, static_cast<int>(m.Scale));
  m.Edge = std::max(2, m.Px(3));
  m.Ring = std::max(2, m.Px(3));
  m.Corner = std::max(3, m.Px(4));
  m.ScrollWidth = std::max(48, m.Px(56));
  return m;
}

int Metrics::Px(double base) const { return static_cast<int>(std::lround(base * Scale)); }

int Metrics::KeyOf(double base) const { return std::max(LowestKey, Px(base)); }

int Metrics::TypeSize(TypeStyle style) const {
  const TypeStep& step = TypeScale[static_cast<std::size_t>(style)];
  return std::max(step.Least, Px(step.Drawn));
}

}  // namespace torvane::toolkit

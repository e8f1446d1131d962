#include "restart/SplitPoint.h"

#include <algorithm>
#include <cmath>

#include "core/General.h"
#include "partprogram/Binding.h"

namespace torvane::restart {

using partprogram::DrawRecord;
using partprogram::Figure;
namespace RecordCode = partprogram::RecordCode;

namespace {

constexpr int CoarsestSplit = 3;
constexpr int FinestSplit = 30;
constexpr double SmallestShare = 1;   // mm
constexpr double SmallestStep = 0.1;  // mm or degrees

}  // namespace

float SplitStepOf(double extent, double length) {
  double step = 0;
  for (int n = CoarsestSplit; n <= FinestSplit; ++n) {
    step = extent / n;
    if (length / n < SmallestShare) {
      step = extent / (n - 1);
      break;
    }
  }
  if (std::abs(step) < SmallestStep) step = std::copysign(SmallestStep, extent);
  if (std::abs(extent / 2) < std::abs(step)) step = extent / 2;
  return static_cast<float>(step);
}

bool CanSplit(const DrawRecord& record) {
  return record.Code == RecordCode::LineProfile || record.Code == RecordCode::ArcProfile;
}

SplitPoint::SplitPoint(const DrawRecord& record)
    : turned_(record), arc_(record.Code == RecordCode::ArcProfile) {
  if (arc_) {
    partprogram::ReverseArcRecord(turned_);
    whole_ = turned_[Figure::Sweep];
    step_ = SplitStepOf(whole_, turned_[Figure::ArcLength]);
  } else {
    partprogram::ReverseLineRecord(turned_);
    whole_ = turned_[Figure::Length];
    step_ = SplitStepOf(whole_, whole_);
  }
  remaining_ = whole_;
  rest_ = turned_;
}

void SplitPoint::Press(SplitKey key) {
  switch (key) {
    case SplitKey::Whole:
      remaining_ = whole_;
      break;
    case SplitKey::OneMore:
      remaining_ += step_;
      break;
    case SplitKey::OneLess:
      remaining_ -= step_;
      break;
    case SplitKey::LastStep:
      remaining_ = step_;
      break;
  }
  // A sweep that has run over to the other sign counts as one step.
  const double step = step_;
  if (std::signbit(remaining_) != std::signbit(whole_) || std::abs(remaining_) < std::abs(step)) {
    remaining_ = step;
  }
  if (std::abs(remaining_) > std::abs(whole_)) remaining_ = whole_;
  Place();
}

void SplitPoint::SetRemaining(double remaining) {
  remaining_ = std::copysign(std::min(std::abs(remaining), std::abs(whole_)), whole_);
  Place();
}

/// Always from the whole element: its direction does not drift however often the point moves.
void SplitPoint::Place() {
  rest_ = turned_;
  if (remaining_ == whole_) return;
  if (arc_) {
    rest_[Figure::Sweep] = static_cast<float>(remaining_);
  } else {
    const core::Vector2 way = core::PolarToXY(remaining_, turned_[Figure::Angle]);
    rest_.EndPoint.X = static_cast<float>(rest_.StartPoint.X + way.X);
    rest_.EndPoint.Y = static_cast<float>(rest_.StartPoint.Y + way.Y);
  }
  partprogram::FinishRecord(rest_);
}

}  // namespace torvane::restart

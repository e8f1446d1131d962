#include "simulator/Kinematics.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace torvane::simulator {

namespace {

constexpr double RadiansPerDegree = std::numbers::pi / 180.0;
constexpr double SecondsPerMinute = 60.0;
constexpr double Tiny = 1e-9;  // mm or s; a shorter rest of a job is none

double Between(double a, double b, double share) { return a + (b - a) * share; }

}  // namespace

double Distance(const Position& a, const Position& b) {
  return std::hypot(a.X - b.X, a.Y - b.Y, a.Z - b.Z);
}

Segment Segment::Line(const Position& from, const Position& to) {
  Segment segment;
  segment.from_ = from;
  segment.to_ = to;
  segment.length_ = Distance(from, to);
  return segment;
}

Segment Segment::Arc(const Position& from, const Position& to, const Position& centre,
                     double startAngle, double sweep) {
  Segment segment = Line(from, to);
  segment.centre_ = centre;
  segment.radius_ = std::hypot(from.X - centre.X, from.Y - centre.Y);
  segment.startAngle_ = startAngle * RadiansPerDegree;
  segment.sweep_ = sweep * RadiansPerDegree;
  if (segment.sweep_ != 0) segment.length_ = segment.radius_ * std::abs(segment.sweep_);
  return segment;
}

Position Segment::At(double distance) const {
  if (distance <= 0) return length_ > 0 ? from_ : to_;
  if (distance >= length_) return to_;
  const double share = distance / length_;
  Position at{Between(from_.X, to_.X, share), Between(from_.Y, to_.Y, share),
              Between(from_.Z, to_.Z, share)};
  if (sweep_ != 0) {
    const double angle = startAngle_ + sweep_ * share;
    at.X = centre_.X + radius_ * std::cos(angle);
    at.Y = centre_.Y + radius_ * std::sin(angle);
  }
  return at;
}

double Segment::NearestDistance(const Position& point) const {
  if (length_ <= 0) return 0;
  if (sweep_ == 0) {
    const double along = (point.X - from_.X) * (to_.X - from_.X) +
                         (point.Y - from_.Y) * (to_.Y - from_.Y) +
                         (point.Z - from_.Z) * (to_.Z - from_.Z);
    return std::clamp(along / length_, 0.0, length_);
  }
  constexpr double FullTurn = 2.0 * std::numbers::pi;
  const double angle = std::atan2(point.Y - centre_.Y, point.X - centre_.X);
  double turned = std::fmod((angle - startAngle_) * (sweep_ < 0 ? -1.0 : 1.0), FullTurn);
  if (turned < 0) turned += FullTurn;
  const double whole = std::abs(sweep_);
  // Outside the sweep the nearer end counts.
  if (turned > whole) turned = turned - whole < FullTurn - turned ? whole : 0.0;
  return turned * radius_;
}

Task Task::Travelling(const Segment& path, double rate) {
  return {Kind::Travel, path, rate, 0, 0, false};
}
Task Task::Cutting(const Segment& path, double rate) {
  return {Kind::Cut, path, rate, 0, 0, false};
}
Task Task::Waiting(double seconds) { return {Kind::Wait, {}, 0, seconds, 0, false}; }
Task Task::AwaitingStart() { return {Kind::AwaitStart, {}, 0, 0, 0, false}; }

double Mover::RateNow(double overridePercent) const {
  if (tasks_.empty()) return 0;
  const Task& task = tasks_.front();
  if (task.What == Task::Kind::Travel) return task.Rate;
  return task.What == Task::Kind::Cut ? task.Rate * overridePercent / 100.0 : 0.0;
}

double Mover::Work(double seconds, double overridePercent, Position& at) {
  if (tasks_.empty() || tasks_.front().What == Task::Kind::AwaitStart) return seconds;
  Task& task = tasks_.front();
  if (task.What == Task::Kind::Wait) {
    const double used = std::min(seconds, task.Seconds - task.Done);
    task.Done += used;
    if (task.Seconds - task.Done <= Tiny) tasks_.pop_front();
    return std::max(used, 0.0);
  }
  const double perSecond = RateNow(overridePercent) / SecondsPerMinute;
  const double rest = task.Path.Length() - task.Done;
  if (perSecond * seconds < rest - Tiny) {
    task.Done += perSecond * seconds;
    at = task.Path.At(task.Done);
    return seconds;
  }
  at = task.Path.End();
  tasks_.pop_front();
  return rest > 0 ? std::min(seconds, rest / perSecond) : 0.0;
}

}  // namespace torvane::simulator

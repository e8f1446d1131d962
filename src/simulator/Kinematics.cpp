#include "simulator/Kinematics.h"

#include <algorithm>

namespace torvane::simulator {

namespace {

constexpr double SecondsPerMinute = 60.0;
constexpr double Tiny = 1e-9;  // mm or s; a shorter rest of a job is none

}  // namespace

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

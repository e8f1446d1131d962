// The small jobs that a row or a manual action is made of, and lines and arcs travelled at a rate.
#pragma once

#include <cstddef>
#include <deque>

#include "partprogram/PathSegment.h"

namespace torvane::simulator {

using partprogram::Distance;
using partprogram::Position;
using partprogram::Segment;

/// One job of the machine.
struct Task {
  enum class Kind {
    Travel,     ///< at Rate, whatever the override says
    Cut,        ///< at Rate times the override, with the beam on
    Wait,       ///< Seconds pass
    AwaitStart  ///< until the operator's cycle start
  };
  Kind What = Kind::Wait;
  Segment Path;
  double Rate = 0;  ///< mm per minute
  double Seconds = 0;
  double Done = 0;        ///< mm or s of it so far
  bool Approach = false;  ///< the way to the start of an element, none of the element itself

  [[nodiscard]] static Task Travelling(const Segment& path, double rate);
  [[nodiscard]] static Task Cutting(const Segment& path, double rate);
  [[nodiscard]] static Task Waiting(double seconds);
  [[nodiscard]] static Task AwaitingStart();

  [[nodiscard]] bool Moves() const { return What == Kind::Travel || What == Kind::Cut; }
};

/// Jobs one after another.
class Mover {
 public:
  [[nodiscard]] bool Empty() const { return tasks_.empty(); }
  [[nodiscard]] std::size_t Size() const { return tasks_.size(); }
  [[nodiscard]] const Task* Current() const { return tasks_.empty() ? nullptr : &tasks_.front(); }
  void Add(const Task& task) { tasks_.push_back(task); }
  void Clear() { tasks_.clear(); }
  /// Takes the job in hand away, done or not.
  void Drop() { tasks_.pop_front(); }

  /// Works on the job in hand for up to `seconds` and gives the time used: less than `seconds`
  /// only when the job came to its end, which takes it away. `at` follows the path.
  double Work(double seconds, double overridePercent, Position& at);

  /// mm per minute of the job in hand.
  [[nodiscard]] double RateNow(double overridePercent) const;

 private:
  std::deque<Task> tasks_;
};

}  // namespace torvane::simulator

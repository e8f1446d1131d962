// Lines and arcs travelled at a rate, and the small jobs that a row or a manual action is made of.
#pragma once

#include <cstddef>
#include <deque>

namespace torvane::simulator {

/// mm.
struct Position {
  double X = 0;
  double Y = 0;
  double Z = 0;
};

[[nodiscard]] double Distance(const Position& a, const Position& b);

/// A line or an arc in the plane of the sheet. Its ends are exactly those given.
class Segment {
 public:
  Segment() = default;
  [[nodiscard]] static Segment Line(const Position& from, const Position& to);
  /// `startAngle` and `sweep` in degrees; a positive sweep turns from X to Y.
  [[nodiscard]] static Segment Arc(const Position& from, const Position& to, const Position& centre,
                                   double startAngle, double sweep);

  /// mm.
  [[nodiscard]] double Length() const { return length_; }
  /// `distance` mm from the start, held to the ends.
  [[nodiscard]] Position At(double distance) const;
  [[nodiscard]] const Position& End() const { return to_; }
  /// How far from the start the point of the segment lies that is nearest to `point`, mm.
  [[nodiscard]] double NearestDistance(const Position& point) const;

 private:
  Position from_;
  Position to_;
  Position centre_;
  double radius_ = 0;
  double startAngle_ = 0;  ///< radians
  double sweep_ = 0;       ///< radians; 0 for a line
  double length_ = 0;
};

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

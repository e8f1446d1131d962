// Handlers on stacks of their own, so that a handler that waits holds up no other.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace torvane::platform {

/// An activity is one handler with a stack to itself. It runs until it waits; then it is put aside,
/// and whoever started it, or let it go on, has the thread back. Activities end in any order. All
/// of this is one thread: nothing runs beside a handler but while it waits.
///
/// What a handler needs it holds by value: its caller has gone on when it comes back from a wait.
class Activities {
 public:
  Activities();
  ~Activities();
  Activities(const Activities&) = delete;
  Activities& operator=(const Activities&) = delete;

  /// Runs `handler` until it ends or waits. May be called inside an activity. A fault before the
  /// first wait leaves here, a later one leaves GoOn.
  void Start(std::function<void()> handler);

  /// True inside an activity.
  [[nodiscard]] bool Inside() const { return current_ != nullptr; }

  /// Puts the activity that calls aside until `done` holds. `done` is asked at once and then by
  /// GoOn; it must have no side effect. An activity that is being given up does not wait again.
  void Wait(const std::function<bool()>& done);

  /// Goes on with every activity whose condition holds, the oldest first, until none is left that
  /// could. True when one went on. Inside an activity it does nothing.
  bool GoOn();

  /// True when GoOn would find one.
  [[nodiscard]] bool Ready() const;

  /// Gives up all waits, the newest first: each leaves its handler as an exception that only this
  /// class knows. Whatever the handlers throw on that way is dropped with them.
  void Unwind();

  /// Activities that have begun and not ended.
  [[nodiscard]] std::size_t UnderWay() const { return underWay_.size(); }

  /// Bytes of one stack. A guard page below it turns an overflow into a plain crash.
  static constexpr std::size_t StackSize = std::size_t{1} << 20;

 private:
  struct Activity;
  [[nodiscard]] std::unique_ptr<Activity> Take();
  void Run(Activity& activity);
  void GiveBack(Activity& activity);
  [[nodiscard]] Activity* FirstReady() const;

  std::vector<std::unique_ptr<Activity>> underWay_;  // in the order of their start
  std::vector<std::unique_ptr<Activity>> idle_;      // with their stacks, to be used again
  Activity* current_ = nullptr;
  bool unwinding_ = false;
};

}  // namespace torvane::platform

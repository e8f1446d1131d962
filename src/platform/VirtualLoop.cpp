#include "platform/VirtualLoop.h"

#include <map>
#include <stdexcept>
#include <utility>

#include "platform/Activities.h"

namespace torvane::platform {

namespace {

/// One wait longer than this much virtual time will never end: seven days, ms.
constexpr std::int64_t WaitLimitMs = 7LL * 24 * 3600 * 1000;

/// Order of events: when they fall due, then when they were made.
using EventKey = std::pair<std::int64_t, std::uint64_t>;

}  // namespace

struct VirtualLoop::State {
  std::int64_t Now = 0;
  std::uint64_t Made = 0;
  std::uint64_t Handled = 0;
  std::map<EventKey, std::function<void()>> Events;
  std::function<void()> Look;
  Activities Handlers;

  EventKey Add(std::int64_t due, std::function<void()> job) {
    const EventKey key{due, Made++};
    Events.emplace(key, std::move(job));
    return key;
  }

  /// Takes the first event and runs it at its time, and then whatever waited for it. The caller
  /// knows that there is one.
  void HandleFirst() {
    auto node = Events.extract(Events.begin());
    if (node.key().first > Now) Now = node.key().first;
    ++Handled;
    Handlers.Start(std::move(node.mapped()));
    Handlers.GoOn();
    if (Look) Look();
  }

  [[nodiscard]] bool DueBy(std::int64_t end) const {
    return !Events.empty() && Events.begin()->first.first <= end;
  }
};

/// The next tick is among the events only while the activity of the last one is over; then the
/// timer goes on in step with its period.
class VirtualLoop::VirtualTimer final : public Timer {
 public:
  VirtualTimer(const std::shared_ptr<State>& state, std::function<void()> fired)
      : core_(std::make_shared<Core>()) {
    core_->Loop = state;
    core_->Fired = std::move(fired);
  }
  ~VirtualTimer() override { Stop(); }

  void Start(int intervalMs) override {
    Stop();
    if (intervalMs <= 0) return;
    const auto loop = core_->Loop.lock();
    if (!loop) return;
    core_->Interval = intervalMs;
    core_->Due = loop->Now + intervalMs;
    if (!core_->Running) Schedule(core_, *loop);
  }

  void Stop() override {
    core_->Interval = 0;
    if (!std::exchange(core_->Scheduled, false)) return;
    if (const auto loop = core_->Loop.lock()) loop->Events.erase(core_->Key);
  }

  [[nodiscard]] bool Active() const override { return core_->Interval > 0; }
  [[nodiscard]] int IntervalMs() const override { return core_->Interval; }

 private:
  struct Core {
    std::weak_ptr<State> Loop;
    std::function<void()> Fired;
    int Interval = 0;
    std::int64_t Due = 0;
    EventKey Key;
    bool Scheduled = false;
    bool Running = false;
  };

  static void Schedule(const std::shared_ptr<Core>& core, State& loop) {
    core->Key = loop.Add(core->Due, [core] { Fire(core); });
    core->Scheduled = true;
  }

  /// Ends one call of the handler, however it ends: the next tick is the first of the period's
  /// grid that is still to come.
  struct Finish {
    std::shared_ptr<Core> Timer;
    ~Finish() {
      Timer->Running = false;
      const auto loop = Timer->Loop.lock();
      if (!loop || Timer->Interval <= 0) return;
      if (Timer->Due <= loop->Now) {
        Timer->Due += ((loop->Now - Timer->Due) / Timer->Interval + 1) * Timer->Interval;
      }
      Schedule(Timer, *loop);
    }
  };

  /// The copy in `finish` keeps the timer's state alive while its handler runs.
  static void Fire(const std::shared_ptr<Core>& core) {
    const Finish finish{core};
    core->Scheduled = false;
    core->Running = true;
    if (core->Fired) core->Fired();
  }

  std::shared_ptr<Core> core_;
};

VirtualLoop::VirtualLoop() : state_(std::make_shared<State>()) {}
VirtualLoop::~VirtualLoop() {
  state_->Handlers.Unwind();
  state_->Events.clear();
}

std::int64_t VirtualLoop::NowMs() const { return state_->Now; }

std::unique_ptr<Timer> VirtualLoop::MakeTimer(std::function<void()> fired) {
  return std::make_unique<VirtualTimer>(state_, std::move(fired));
}

void VirtualLoop::Post(std::function<void()> job) { state_->Add(state_->Now, std::move(job)); }

void VirtualLoop::After(std::int64_t delayMs, std::function<void()> job) {
  state_->Add(state_->Now + (delayMs > 0 ? delayMs : 0), std::move(job));
}

void VirtualLoop::Start(std::function<void()> handler) {
  state_->Handlers.Start(std::move(handler));
}

void VirtualLoop::WaitUntil(const std::function<bool()>& done) {
  if (state_->Handlers.Inside()) return state_->Handlers.Wait(done);
  const std::int64_t limit = state_->Now + WaitLimitMs;
  while (!done()) {
    if (state_->Handlers.GoOn()) continue;
    if (state_->Events.empty()) throw std::logic_error("a wait that nothing can end");
    if (!state_->DueBy(limit)) throw std::logic_error("a wait that has not ended in seven days");
    state_->HandleFirst();
  }
}

void VirtualLoop::GiveUpWaits() { state_->Handlers.Unwind(); }

void VirtualLoop::RunFor(std::int64_t ms) {
  const std::int64_t end = state_->Now + ms;
  if (state_->Handlers.Inside()) {
    After(ms, [] {});
    return WaitUntil([this, end] { return state_->Now >= end; });
  }
  state_->Handlers.GoOn();
  while (state_->DueBy(end)) state_->HandleFirst();
  if (state_->Now < end) state_->Now = end;
  state_->Handlers.GoOn();
}

std::size_t VirtualLoop::ActivitiesUnderWay() const { return state_->Handlers.UnderWay(); }

void VirtualLoop::OnEvent(std::function<void()> look) { state_->Look = std::move(look); }

std::uint64_t VirtualLoop::EventsHandled() const { return state_->Handled; }

}  // namespace torvane::platform

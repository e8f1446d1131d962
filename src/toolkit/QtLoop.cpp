#include "toolkit/QtLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <deque>
#include <stdexcept>
#include <utility>

#include "platform/Activities.h"
#include "toolkit/Application.h"

namespace torvane::toolkit {

namespace {

QEvent::Type JobEvent() {
  static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

void ThrowFault() {
  auto* application = dynamic_cast<Application*>(QCoreApplication::instance());
  if (!application || !application->HasFault()) return;
  std::rethrow_exception(application->TakeFault());
}

}  // namespace

/// The queue of posted jobs (each posted event runs one) and the activities of the loop.
struct QtLoop::State : QObject {
  std::deque<std::function<void()>> Jobs;
  platform::Activities Handlers;
  QElapsedTimer Clock;
  QMetaObject::Connection Blocking;
  const std::function<bool()>* Outside = nullptr;  ///< what the wait outside any activity waits for
  int Depth = 0;  ///< events that Qt stood in when the activity that runs now got the thread
  bool Ended = false;
  int Status = 0;

  State() { Clock.start(); }

  void Ask() { QCoreApplication::postEvent(this, new QEvent(JobEvent())); }

  bool event(QEvent* event) override {
    if (event->type() != JobEvent()) return QObject::event(event);
    if (Jobs.empty()) return true;
    auto job = std::move(Jobs.front());
    Jobs.pop_front();
    Serve(std::move(job));
    return true;
  }

  /// A handler, and after it whatever waited for what it did.
  void Serve(std::function<void()> handler) {
    Start(std::move(handler));
    GoOn();
  }

  void Start(std::function<void()> handler) {
    const AtDepth depth(*this);
    Handlers.Start(std::move(handler));
  }

  bool GoOn() {
    const AtDepth depth(*this);
    return Handlers.GoOn();
  }

  /// Qt may handle an event and go to sleep in the same call. Whoever waited for that event is gone
  /// on with before.
  void BeforeSleep() {
    if (!Handlers.Ready() && !(Outside && (*Outside)())) return;
    QAbstractEventDispatcher::instance()->wakeUp();
  }

  void Watch() {
    if (Blocking) return;
    Blocking = connect(QAbstractEventDispatcher::instance(),
                       &QAbstractEventDispatcher::aboutToBlock, this, [this] { BeforeSleep(); });
  }

  void HandleEvents() {
    Watch();
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    ThrowFault();
  }

 private:
  struct AtDepth {
    explicit AtDepth(State& state) : Of(state), Before(state.Depth) {
      state.Depth = Application::EventDepth();
    }
    ~AtDepth() { Of.Depth = Before; }
    AtDepth(const AtDepth&) = delete;
    AtDepth& operator=(const AtDepth&) = delete;

    State& Of;
    int Before;
  };
};

namespace {

class LoopTimer final : public platform::Timer {
 public:
  LoopTimer(std::weak_ptr<QtLoop::State> loop, std::function<void()> fired)
      : shared_(std::make_shared<Shared>()) {
    shared_->Loop = std::move(loop);
    shared_->Fired = std::move(fired);
    shared_->Clock.setTimerType(Qt::PreciseTimer);
    QObject::connect(&shared_->Clock, &QTimer::timeout,
                     [shared = shared_.get()] { Fire(shared->weak_from_this().lock()); });
  }

  ~LoopTimer() override {
    shared_->Clock.stop();
    shared_->Fired = nullptr;
    // It may be firing right now, with this call inside its handler; it goes when that returns.
  }

  void Start(int intervalMs) override {
    if (intervalMs <= 0) return Stop();
    shared_->Clock.start(intervalMs);
  }

  void Stop() override {
    shared_->Clock.stop();
    shared_->Clock.setInterval(0);
  }

  [[nodiscard]] bool Active() const override { return shared_->Clock.isActive(); }
  [[nodiscard]] int IntervalMs() const override {
    return shared_->Clock.isActive() ? shared_->Clock.interval() : 0;
  }

 private:
  struct Shared : std::enable_shared_from_this<Shared> {
    std::weak_ptr<QtLoop::State> Loop;
    QTimer Clock;
    std::function<void()> Fired;
    bool Running = false;
  };

  static void Fire(const std::shared_ptr<Shared>& shared) {
    if (!shared || shared->Running || !shared->Fired) return;
    const auto loop = shared->Loop.lock();
    if (!loop) return;
    loop->Serve([shared, handler = shared->Fired] {
      struct Mark {
        bool& Running;
        ~Mark() { Running = false; }
      } const mark{shared->Running = true};
      handler();
    });
  }

  std::shared_ptr<Shared> shared_;
};

}  // namespace

QtLoop::QtLoop() : state_(std::make_shared<State>()) {}
QtLoop::~QtLoop() { state_->Handlers.Unwind(); }

std::int64_t QtLoop::NowMs() const { return state_->Clock.elapsed(); }

std::unique_ptr<platform::Timer> QtLoop::MakeTimer(std::function<void()> fired) {
  return std::make_unique<LoopTimer>(state_, std::move(fired));
}

void QtLoop::Post(std::function<void()> job) {
  state_->Jobs.push_back(std::move(job));
  state_->Ask();
}

void QtLoop::Start(std::function<void()> handler) { state_->Start(std::move(handler)); }

void QtLoop::WaitUntil(const std::function<bool()>& done) {
  const auto state = state_;
  if (done()) return;
  if (Application::EventDepth() != (state->Handlers.Inside() ? state->Depth : 0)) {
    throw std::logic_error("a wait inside an event of the toolkit");
  }
  if (state->Handlers.Inside()) return state->Handlers.Wait(done);
  struct Mark {
    State& Of;
    const std::function<bool()>* Before;
    ~Mark() { Of.Outside = Before; }
  } const mark{*state, std::exchange(state->Outside, &done)};
  while (!done()) {
    if (!state->GoOn()) state->HandleEvents();
  }
}

void QtLoop::GiveUpWaits() { state_->Handlers.Unwind(); }

int QtLoop::Run() {
  const auto state = state_;
  struct AtEnd {
    State& Of;
    ~AtEnd() { Of.Handlers.Unwind(); }
  } const atEnd{*state};
  WaitUntil([&] { return state->Ended; });
  state->Ended = false;
  return state->Status;
}

void QtLoop::End(int status) {
  state_->Ended = true;
  state_->Status = status;
  if (auto* dispatcher = QAbstractEventDispatcher::instance()) dispatcher->wakeUp();
}

bool QtLoop::Ended() const { return state_->Ended; }

}  // namespace torvane::toolkit

#include "toolkit/QtLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <deque>
#include <utility>

#include "toolkit/Application.h"

namespace torvane::toolkit {

namespace {

/// Unwinds the waits that are under way when the program ends. No std::exception on purpose: nobody
/// but Run catches it.
struct LoopEnded {};

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

/// The queue of posted jobs: each posted event runs one job, unless the innermost wait is over
/// already; then the job waits until that wait has returned.
struct QtLoop::State : QObject {
  std::deque<std::function<void()>> Jobs;
  const std::function<bool()>* Innermost = nullptr;
  QElapsedTimer Clock;
  bool HeldBack = false;
  bool Ended = false;
  int Status = 0;

  State() { Clock.start(); }

  void Ask() { QCoreApplication::postEvent(this, new QEvent(JobEvent())); }

  bool event(QEvent* event) override {
    if (event->type() != JobEvent()) return QObject::event(event);
    if (Innermost && (*Innermost)()) {
      HeldBack = true;
      return true;
    }
    RunOne();
    return true;
  }

  void RunOne() {
    if (Jobs.empty()) return;
    const auto job = std::move(Jobs.front());
    Jobs.pop_front();
    job();
  }

  /// One event for each job that was held back.
  void AskAgain() {
    if (!std::exchange(HeldBack, false)) return;
    QCoreApplication::removePostedEvents(this, JobEvent());
    for (std::size_t i = 0; i < Jobs.size(); ++i) Ask();
  }
};

namespace {

class LoopTimer final : public platform::Timer {
 public:
  explicit LoopTimer(std::function<void()> fired) : shared_(std::make_shared<Shared>()) {
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
    QTimer Clock;
    std::function<void()> Fired;
    bool Running = false;
  };

  static void Fire(const std::shared_ptr<Shared>& shared) {
    if (!shared || shared->Running || !shared->Fired) return;
    struct Mark {
      bool& Running;
      ~Mark() { Running = false; }
    } const mark{shared->Running = true};
    const auto handler = shared->Fired;
    handler();
  }

  std::shared_ptr<Shared> shared_;
};

}  // namespace

QtLoop::QtLoop() : state_(std::make_shared<State>()) {}
QtLoop::~QtLoop() = default;

std::int64_t QtLoop::NowMs() const { return state_->Clock.elapsed(); }

std::unique_ptr<platform::Timer> QtLoop::MakeTimer(std::function<void()> fired) {
  return std::make_unique<LoopTimer>(std::move(fired));
}

void QtLoop::Post(std::function<void()> job) {
  state_->Jobs.push_back(std::move(job));
  state_->Ask();
}

void QtLoop::WaitUntil(const std::function<bool()>& done) {
  const auto state = state_;
  struct Nesting {
    State& Of;
    const std::function<bool()>* Outer;
    ~Nesting() {
      Of.Innermost = Outer;
      Of.AskAgain();
    }
  } const nesting{*state, std::exchange(state->Innermost, &done)};
  while (!done()) {
    if (state->Ended) throw LoopEnded{};
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    ThrowFault();
  }
}

int QtLoop::Run() {
  const auto state = state_;
  try {
    WaitUntil([&] { return state->Ended; });
  } catch (const LoopEnded&) {
    // A wait inside a handler was given up; that is what End is for.
  }
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

// What a poll tick of eight queries costs over the line's own time, on a simulated port that moves
// every byte at the pace of its baud rate, in real time.
#include <cerrno>
#include <chrono>
#include <ctime>
#include <map>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>
#include <sys/prctl.h>

#include "core/DirectorySet.h"
#include "core/LinkSettings.h"
#include "link/Trio.h"
#include "link/Variables.h"
#include "platform/Activities.h"
#include "platform/DiskFileSystem.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace {

using namespace torvane;
using Nanoseconds = std::int64_t;

Nanoseconds Now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

void SleepUntil(Nanoseconds due) {
  const timespec time{due / 1'000'000'000LL, due % 1'000'000'000LL};
  while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr) == EINTR) {
  }
}

/// Jobs in the order of their time, each an activity; sleeps between them.
class RealLoop final : public platform::EventLoop {
 public:
  void At(Nanoseconds due, std::function<void()> job) { jobs_.emplace(due, std::move(job)); }

  [[nodiscard]] std::int64_t NowMs() const override { return Now() / 1'000'000; }
  [[nodiscard]] std::unique_ptr<platform::Timer> MakeTimer(std::function<void()> fired) override {
    return std::make_unique<RealTimer>(*this, std::move(fired));
  }
  void Post(std::function<void()> job) override { At(Now(), std::move(job)); }
  void Start(std::function<void()> handler) override { handlers_.Start(std::move(handler)); }
  void WaitUntil(const std::function<bool()>& done) override {
    if (handlers_.Inside()) return handlers_.Wait(done);
    while (!done()) {
      auto node = jobs_.extract(jobs_.begin());
      SleepUntil(node.key());
      handlers_.Start(std::move(node.mapped()));
      handlers_.GoOn();
    }
  }
  void GiveUpWaits() override { handlers_.Unwind(); }

 private:
  class RealTimer final : public platform::Timer {
   public:
    RealTimer(RealLoop& loop, std::function<void()> fired)
        : loop_(loop), fired_(std::move(fired)) {}
    ~RealTimer() override { Stop(); }
    void Start(int intervalMs) override {
      Stop();
      if (intervalMs <= 0) return;
      interval_ = intervalMs;
      job_ = loop_.jobs_.emplace(Now() + intervalMs * 1'000'000LL, [this] { Fire(); });
      waiting_ = true;
    }
    void Stop() override {
      if (waiting_) loop_.jobs_.erase(job_);
      waiting_ = false;
      interval_ = 0;
    }
    [[nodiscard]] bool Active() const override { return interval_ > 0; }
    [[nodiscard]] int IntervalMs() const override { return interval_; }

   private:
    void Fire() {
      waiting_ = false;
      const int interval = interval_;
      fired_();
      if (interval_ == interval && !waiting_) Start(interval);
    }
    RealLoop& loop_;
    std::function<void()> fired_;
    std::multimap<Nanoseconds, std::function<void()>>::iterator job_;
    bool waiting_ = false;
    int interval_ = 0;
  };

  std::multimap<Nanoseconds, std::function<void()>> jobs_;
  platform::Activities handlers_;
};

/// Ten bits a byte both ways, and a controller that answers as soon as it has the line.
class PacedPort final : public platform::SerialPort {
 public:
  PacedPort(RealLoop& loop, int baud) : loop_(loop), byteTime_(10'000'000'000LL / baud) {}

  Nanoseconds LineTime = 0;  ///< of all that has gone over the line

  bool Open(const platform::PortSetup&) override { return open_ = true; }
  void Close() override { open_ = false; }
  [[nodiscard]] bool IsOpen() const override { return open_; }
  [[nodiscard]] std::size_t BytesWaiting() const override { return input_.size(); }
  [[nodiscard]] std::string ReadAll() override { return std::exchange(input_, {}); }
  [[nodiscard]] std::size_t BytesQueued() const override { return 0; }
  void SetDtr(bool) override {}
  void SetRts(bool) override {}
  [[nodiscard]] platform::PortLines Lines() const override { return {}; }
  void OnReceived(std::function<void()> handler) override { received_ = std::move(handler); }
  void OnLineEvent(std::function<void(platform::LineEvent)>) override {}

  void Write(std::string_view bytes) override {
    const Nanoseconds start = Now();
    reply_.assign(bytes);
    reply_ += "\n-1234.567\r\n>>";
    const auto out = static_cast<Nanoseconds>(bytes.size());
    const auto back = static_cast<Nanoseconds>(reply_.size());
    LineTime += (out + back) * byteTime_;
    for (Nanoseconds index = 0; index < back; ++index) {
      loop_.At(start + (out + index + 1) * byteTime_, [this, index] {
        input_ += reply_[static_cast<std::size_t>(index)];
        if (received_) received_();
      });
    }
  }

 private:
  RealLoop& loop_;
  Nanoseconds byteTime_;
  std::function<void()> received_;
  std::string reply_;
  std::string input_;
  bool open_ = false;
};

class NoScreens final : public link::LinkScreens {
 public:
  bool ShowWarning(std::string_view, link::WarningMode, link::WarningStyle) override {
    return false;
  }
  void SetBusy(bool) override {}
  void Beep() override {}
  void LockForms(bool, std::string_view) override {}
  void ShutdownToService() override {}
};

void EightQueries(link::Trio& trio) {
  benchmark::DoNotOptimize(trio.GetRspnsLng(link::Variable::Status));
  benchmark::DoNotOptimize(trio.GetRspnsSngl(link::Variable::RunTime, 2));
  for (const auto axis : link::MeasuredPosition) benchmark::DoNotOptimize(trio.GetRspnsSngl(axis));
  benchmark::DoNotOptimize(trio.GetRspnsSngl(link::Variable::FeedOverride, 0));
  benchmark::DoNotOptimize(trio.GetRspnsSngl(link::Variable::FeedRate, 0));
  benchmark::DoNotOptimize(trio.GetRspnsInt(link::Variable::RunningRecord));
}

/// Counters: milliseconds of the line alone and of the tick, and what the tick costs above the
/// line.
void PollTick(benchmark::State& state) {
  prctl(PR_SET_TIMERSLACK, 1);
  RealLoop loop;
  PacedPort port(loop, static_cast<int>(state.range(0)));
  platform::DiskFileSystem files(".");
  core::LinkSettings settings;
  settings.CommPort = 1;
  settings.TrioLinkEnabled = true;
  const core::DirectorySet directories;
  NoScreens screens;
  link::Trio trio(loop, port, files, settings, directories, screens);
  trio.OpenTrioPort(settings.TrioLinkEnabled);
  port.LineTime = 0;
  Nanoseconds ticks = 0;
  for (auto _ : state) {
    const Nanoseconds start = Now();
    bool over = false;
    loop.Start([&] {
      EightQueries(trio);
      over = true;
    });
    loop.WaitUntil([&over] { return over; });
    const Nanoseconds taken = Now() - start;
    ticks += taken;
    state.SetIterationTime(static_cast<double>(taken) * 1e-9);
  }
  const auto count = static_cast<double>(state.iterations());
  state.counters["line_ms"] = static_cast<double>(port.LineTime) * 1e-6 / count;
  state.counters["tick_ms"] = static_cast<double>(ticks) * 1e-6 / count;
  state.counters["over_percent"] =
      100.0 * (static_cast<double>(ticks) / static_cast<double>(port.LineTime) - 1.0);
}
BENCHMARK(PollTick)->Arg(9600)->Arg(115200)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

// The poll's period beside clients of the monitoring that behave badly, over the period without
// any: fifty that read, one that never does, one that sends all the time, one that connects and
// goes.
#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "monitoring/Adapter.h"
#include "platform/SocketServer.h"

namespace {

using namespace torvane;
using Nanoseconds = std::int64_t;

constexpr Nanoseconds Ms = 1'000'000;
constexpr int ServeMs = 10;
constexpr int PeriodMs = 50;
constexpr int Ticks = 60;

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

int Connect(std::uint16_t port) {
  const int handle = socket(AF_INET, SOCK_STREAM, 0);
  const timeval patience{0, 20'000};
  setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
  setsockopt(handle, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof(patience));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
  return handle;
}

/// The clients, on a thread for each kind; they stop when this goes.
class Crowd {
 public:
  explicit Crowd(std::uint16_t port) : port_(port) {
    threads_.emplace_back([this] { ReadAll(); });
    threads_.emplace_back([this] { Flood(); });
    threads_.emplace_back([this] { ConnectAndGo(); });
    silent_ = Connect(port_);
  }
  ~Crowd() {
    over_ = true;
    for (auto& thread : threads_) thread.join();
    close(silent_);
  }
  Crowd(const Crowd&) = delete;
  Crowd& operator=(const Crowd&) = delete;

  std::atomic<std::int64_t> Taken = 0;
  std::atomic<int> Connections = 0;

 private:
  void ReadAll() {
    std::vector<int> handles;
    for (int i = 0; i < 50; ++i) handles.push_back(Connect(port_));
    std::array<char, 4096> bytes{};
    while (!over_) {
      for (const int handle : handles) {
        const ssize_t count = recv(handle, bytes.data(), bytes.size(), MSG_DONTWAIT);
        if (count > 0) Taken += count;
      }
      SleepUntil(Now() + 5 * Ms);
    }
    for (const int handle : handles) close(handle);
  }
  void Flood() {
    const std::string bytes(1U << 16U, 'x');
    int handle = Connect(port_);
    while (!over_) {
      if (send(handle, bytes.data(), bytes.size(), MSG_NOSIGNAL) > 0) continue;
      if (errno == EAGAIN) continue;
      close(handle);
      handle = Connect(port_);
    }
    close(handle);
  }
  void ConnectAndGo() {
    while (!over_ && Connections < 1000) {
      close(Connect(port_));
      ++Connections;
      SleepUntil(Now() + Ms);
    }
  }

  std::uint16_t port_;
  std::atomic<bool> over_ = false;
  std::vector<std::thread> threads_;
  int silent_ = -1;
};

/// Mean and longest period of ticks with their telling; clients are served between them. All that
/// the monitoring takes of the one thread adds to the period.
struct Periods {
  double Mean = 0;
  double Longest = 0;
};
Periods Poll(monitoring::Adapter& adapter) {
  monitoring::MonitorSnapshot snapshot;
  snapshot.Available = true;
  Periods periods;
  Nanoseconds last = 0;
  const Nanoseconds first = Now();
  for (int tick = 0; tick <= Ticks; ++tick) {
    const Nanoseconds now = Now();
    if (tick > 0) periods.Longest = std::max(periods.Longest, static_cast<double>(now - last) / Ms);
    last = now;
    for (auto& value : snapshot.Values) value = std::to_string(tick * 1.001);
    adapter.Publish(snapshot);
    // As a timer that starts afresh when its tick has ended: whatever takes time shows.
    for (int at = 0; at < PeriodMs; at += ServeMs) {
      adapter.Serve(Now() / Ms);
      SleepUntil(Now() + ServeMs * Ms);
    }
  }
  periods.Mean = static_cast<double>(last - first) / Ms / Ticks;
  return periods;
}

void PollBesideClients(benchmark::State& state) {
  for (auto _ : state) {
    platform::SocketServer server{platform::TcpPlace{}};
    monitoring::Adapter adapter(server, [] { return Now() / Ms; });
    const Periods alone = Poll(adapter);
    Crowd crowd(server.Place().Port);
    const Periods beside = Poll(adapter);
    state.counters["mean_ms_alone"] = alone.Mean;
    state.counters["mean_ms_beside"] = beside.Mean;
    state.counters["ratio"] = beside.Mean / alone.Mean;
    state.counters["longest_ms_beside"] = beside.Longest;
    state.counters["clients"] = static_cast<double>(adapter.Clients());
    state.counters["connections"] = crowd.Connections.load();
    state.counters["kB_taken"] = static_cast<double>(crowd.Taken) / 1000;
  }
}
BENCHMARK(PollBesideClients)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();

#include "tools/WorkPool.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace torvane::tools {

void RunOnAllCores(std::size_t count, unsigned workers,
                   const std::function<void(std::size_t)>& work) {
  if (workers == 0) workers = std::max(1U, std::thread::hardware_concurrency());
  std::atomic<std::size_t> next = 0;
  std::mutex lock;
  std::exception_ptr first;

  const auto drain = [&] {
    for (std::size_t piece = next++; piece < count; piece = next++) {
      try {
        work(piece);
      } catch (...) {
        const std::scoped_lock guard(lock);
        if (first == nullptr) first = std::current_exception();
        next = count;
        return;
      }
    }
  };

  {
    std::vector<std::jthread> threads;
    const auto helpers = std::min<std::size_t>(workers, count);
    for (std::size_t i = 1; i < helpers; ++i) threads.emplace_back(drain);
    drain();
  }
  if (first != nullptr) std::rethrow_exception(first);
}

}  // namespace torvane::tools

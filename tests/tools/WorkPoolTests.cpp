#include <atomic>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tools/WorkPool.h"

namespace torvane::tools {
namespace {

TEST(WorkPool, DoesEachPieceOnce) {
  for (const unsigned workers : {0U, 1U, 2U, 7U, 200U}) {
    for (const std::size_t count : {0U, 1U, 2U, 100U}) {
      std::vector<std::atomic<int>> done(count);
      RunOnAllCores(count, workers, [&](std::size_t piece) { ++done[piece]; });
      for (const auto& times : done) EXPECT_EQ(times, 1);
    }
  }
}

TEST(WorkPool, WorksInSeveralThreadsAtOnce) {
  // Each of two pieces waits for the other: one thread alone would never end.
  std::atomic<int> begun = 0;
  RunOnAllCores(2, 2, [&](std::size_t) {
    ++begun;
    while (begun < 2) std::this_thread::yield();
  });
  EXPECT_EQ(begun, 2);
}

TEST(WorkPool, PassesTheFaultOfAPieceOnAndBeginsNoMore) {
  std::atomic<int> done = 0;
  EXPECT_THROW(RunOnAllCores(1000, 1,
                             [&](std::size_t piece) {
                               if (piece == 3) throw std::runtime_error("piece");
                               ++done;
                             }),
               std::runtime_error);
  EXPECT_EQ(done, 3);
}

}  // namespace
}  // namespace torvane::tools

#include <atomic>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/DiskFileSystem.h"
#include "platform/FileBatch.h"
#include "platform/RuntimeFault.h"
#include "support/TempDirectory.h"

namespace torvane::platform {
namespace {

using Threads = FileBatch::Threads;

/// The text once, then the end.
FileSystem::PartSource Once(std::string text) {
  return [text = std::move(text)](std::string& part) mutable {
    part = std::move(text);
    text.clear();
  };
}

class Batches : public ::testing::TestWithParam<Threads> {
 protected:
  [[nodiscard]] std::vector<std::string> Names() const { return Files.ListFiles("*"); }

  tests::TempDirectory Temp;
  DiskFileSystem Files{Temp.Path()};
};

TEST_P(Batches, PutNothingInPlaceBeforeTheyAreTold) {
  Temp.Put("a", "old");
  FileBatch batch(Files, GetParam());
  batch.Add(1, "a", Once("new"));
  batch.Add(2, "b", Once("other"));
  batch.Write();
  EXPECT_EQ(Temp.Get("a"), "old");
  batch.PutInPlace(1);
  EXPECT_EQ(Temp.Get("a"), "new");
  EXPECT_FALSE(Files.FileExists("b"));
  batch.PutInPlace(2);
  EXPECT_EQ(Temp.Get("b"), "other");
  EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
}

TEST_P(Batches, LeaveNoTraceOfWhatIsNotPutInPlace) {
  {
    FileBatch batch(Files, GetParam());
    batch.Add(1, "a", Once("new"));
    batch.Write();
  }
  {
    FileBatch batch(Files, GetParam());
    for (int i = 0; i < 20; ++i) batch.Add(1, "b" + std::to_string(i), Once("given up"));
  }
  EXPECT_EQ(Names(), std::vector<std::string>{});
}

TEST_P(Batches, TellTheFirstFaultInTheOrderOfTheirPlaces) {
  Temp.MakeDirectory("two");
  Temp.MakeDirectory("three");
  try {
    FileBatch batch(Files, GetParam());
    batch.Add(3, "three", Once("x"));
    batch.Add(2, "two", Once("x"));
    batch.Add(4, "four", Once("x"));
    batch.Add(1, "one", Once("x"));
    batch.Write();
    batch.PutInPlace(4);
    FAIL() << "nothing was told";
  } catch (const RuntimeFault& fault) {
    EXPECT_NE(std::string(fault.what()).find("two"), std::string::npos) << fault.what();
  }
  EXPECT_EQ(Names(), std::vector<std::string>{"one"});
}

TEST_P(Batches, WriteManyFilesOnceEach) {
  constexpr int Many = 200;
  std::atomic<int> made = 0;
  FileBatch batch(Files, GetParam());
  for (int i = 0; i < Many; ++i) {
    batch.Add(i, std::to_string(i), [&made, i, first = true](std::string& part) mutable {
      part = first ? std::string(static_cast<std::size_t>(i) * 100 + 1, 'x') : std::string();
      made += first ? 1 : 0;
      first = false;
    });
  }
  batch.Write();
  batch.PutInPlace(Many);
  EXPECT_EQ(made, Many);
  EXPECT_EQ(Names().size(), static_cast<std::size_t>(Many));
  EXPECT_EQ(Files.FileSize("199"), 19901U);
}

INSTANTIATE_TEST_SUITE_P(WithOneThreadAndTwo, Batches,
                         ::testing::Values(Threads::One, Threads::Two));

}  // namespace
}  // namespace torvane::platform

// The main of every test program, and the one place that knows the checkout's folder.
#include <gtest/gtest.h>

#include "support/SourceTree.h"

std::filesystem::path torvane::tests::SourceTree() { return TORVANE_SOURCE_DIR; }

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

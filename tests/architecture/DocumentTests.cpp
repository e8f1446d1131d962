// The documents name files that are there.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "support/SourceTree.h"

namespace {

namespace fs = std::filesystem;

std::string Document(const std::string& name) {
  std::ifstream in(torvane::tests::SourceTree() / name);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// Every `folder/File.ext` of a text that is one of src.
TEST(Documents, EveryFileOfTheMapIsThere) {
  const std::string text = Document("docs/architecture.md");
  const std::regex place("`([a-z]+/[A-Za-z]+\\.(?:h|cpp))`");
  int found = 0;
  for (std::sregex_iterator it(text.begin(), text.end(), place), end; it != end; ++it, ++found) {
    EXPECT_TRUE(fs::exists(torvane::tests::SourceTree() / "src" / (*it)[1].str())) << (*it)[1];
  }
  EXPECT_GT(found, 50);
}

TEST(Documents, EveryDocumentThatTheReadmeNamesIsThere) {
  const std::string text = Document("README.md");
  const std::regex place("`((?:docs/)?[A-Za-z-]+\\.md)`");
  int found = 0;
  for (std::sregex_iterator it(text.begin(), text.end(), place), end; it != end; ++it, ++found) {
    EXPECT_TRUE(fs::exists(torvane::tests::SourceTree() / (*it)[1].str())) << (*it)[1];
  }
  EXPECT_GE(found, 5);
}

}  // namespace

// The device file of the examples is well-formed and names the adapter's items.
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "monitoring/MonitorValues.h"
#include "support/SourceTree.h"

namespace torvane::monitoring {
namespace {

std::string DeviceFile() {
  std::ifstream in(tests::SourceTree() / "examples" / "monitoring" / "torvane.xml");
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(DeviceFile, IsWellFormed) {
  const std::string text = DeviceFile();
  ASSERT_TRUE(text.starts_with("<?xml "));
  const std::regex tag(R"re(<(/?)([A-Za-z]+)((?:\s+[A-Za-z:]+="[^"<&]*")*)\s*(/?)>)re");
  std::vector<std::string> open;
  std::size_t at = text.find("?>") + 2;
  int tags = 0;
  for (std::sregex_iterator it(text.begin() + static_cast<long>(at), text.end(), tag), end;
       it != end; ++it, ++tags) {
    const auto& match = *it;
    const std::string between = match.prefix().str();
    EXPECT_EQ(between.find_first_of("<>&"), std::string::npos) << between;
    if (match[1].matched && match[1].length() > 0) {
      ASSERT_FALSE(open.empty());
      EXPECT_EQ(open.back(), match[2].str());
      open.pop_back();
    } else if (match[4].length() == 0) {
      open.push_back(match[2].str());
    }
  }
  EXPECT_TRUE(open.empty());
  EXPECT_GT(tags, 30);
}

TEST(DeviceFile, NamesEveryItemOnceAndNoOther) {
  const std::string text = DeviceFile();
  const std::regex item(
      R"re(<DataItem category="([A-Z]+)" id="([A-Za-z_]+)" name="([A-Za-z_]+)")re");
  std::map<std::string, std::string> items;
  std::size_t count = 0;
  for (std::sregex_iterator it(text.begin(), text.end(), item), end; it != end; ++it, ++count) {
    EXPECT_EQ((*it)[2], (*it)[3]);
    items[(*it)[3]] = (*it)[1];
  }
  EXPECT_EQ(count, MonitorItems.size());
  for (const auto& wanted : MonitorItems) {
    ASSERT_EQ(items.count(std::string(wanted.Key)), 1U) << wanted.Key;
    EXPECT_EQ(items[std::string(wanted.Key)] == "CONDITION", wanted.Kind == ItemKind::Condition);
  }
}

}  // namespace
}  // namespace torvane::monitoring

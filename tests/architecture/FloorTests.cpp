// The floors of the house: an include points down, and no two files include each other.
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/SourceTree.h"

namespace {

namespace fs = std::filesystem;

/// What each folder may include beside itself. Folders of one floor do not see each other, but for
/// the programs, which put the simulated machine beside the console.
const std::map<std::string, std::set<std::string>> MayInclude = [] {
  const std::vector<std::vector<std::string>> floors = {
      {"platform"},
      {"core"},
      {"partprogram", "link"},
      {"supervision"},
      {"restart", "graphics", "files", "monitoring"},
      {"toolkit"},
      {"console"},
      {"simulator"},
      {"app", "tools"}};
  std::map<std::string, std::set<std::string>> table;
  std::set<std::string> below;
  for (const auto& floor : floors) {
    for (const auto& folder : floor) table[folder] = below;
    below.insert(floor.begin(), floor.end());
  }
  table["toolkit"] = {"platform", "core"};
  table["tools"].insert("app");  // one program drives the other's parts
  return table;
}();

/// Folders that must build where there is no Qt.
const std::set<std::string> WithoutQt = {"platform",   "core",        "partprogram", "link",
                                         "restart",    "supervision", "graphics",    "files",
                                         "monitoring", "simulator"};

const std::regex IncludeLine(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");

fs::path SourceRoot() { return torvane::tests::SourceTree() / "src"; }

struct Include {
  bool Angled = false;
  std::string Name;
};

std::vector<Include> IncludesOf(const fs::path& file) {
  std::vector<Include> found;
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line)) {
    std::smatch match;
    if (std::regex_search(line, match, IncludeLine)) found.push_back({match[1] == "<", match[2]});
  }
  return found;
}

std::vector<fs::path> Sources() {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(SourceRoot())) {
    const auto extension = entry.path().extension();
    if (extension == ".h" || extension == ".cpp") files.push_back(entry.path());
  }
  return files;
}

std::string FolderOf(const fs::path& file) {
  return fs::relative(file, SourceRoot()).begin()->string();
}

TEST(Floors, EveryFolderStandsInTheTable) {
  for (const auto& file : Sources()) EXPECT_TRUE(MayInclude.count(FolderOf(file))) << file;
}

TEST(Floors, IncludesPointDownOnly) {
  for (const auto& file : Sources()) {
    const std::string folder = FolderOf(file);
    const auto row = MayInclude.find(folder);
    if (row == MayInclude.end()) continue;
    for (const auto& include : IncludesOf(file)) {
      const std::string target = include.Name.substr(0, include.Name.find('/'));
      if (include.Angled || !MayInclude.count(target)) continue;
      EXPECT_TRUE(target == folder || row->second.count(target))
          << file << " includes " << include.Name;
    }
  }
}

TEST(Floors, QtStaysInTheUpperFloors) {
  for (const auto& file : Sources()) {
    if (!WithoutQt.count(FolderOf(file))) continue;
    for (const auto& include : IncludesOf(file)) {
      EXPECT_FALSE(include.Angled && include.Name.size() > 1 && include.Name[0] == 'Q' &&
                   std::isupper(static_cast<unsigned char>(include.Name[1])))
          << file << " includes " << include.Name;
    }
  }
}

TEST(Floors, NoTwoFilesIncludeEachOtherRoundACorner) {
  std::map<std::string, std::vector<std::string>> graph;
  for (const auto& file : Sources()) {
    auto& edges = graph[fs::relative(file, SourceRoot()).generic_string()];
    for (const auto& include : IncludesOf(file)) {
      if (!include.Angled) edges.push_back(include.Name);
    }
  }
  std::map<std::string, int> state;  // 0 unseen, 1 on the path, 2 done
  std::function<void(const std::string&)> visit = [&](const std::string& name) {
    state[name] = 1;
    for (const auto& next : graph[name]) {
      if (!graph.count(next)) continue;
      EXPECT_NE(state[next], 1) << name << " and " << next << " include each other";
      if (state[next] == 0) visit(next);
    }
    state[name] = 2;
  };
  std::vector<std::string> names;
  for (const auto& [name, edges] : graph) names.push_back(name);
  for (const auto& name : names) {
    if (state[name] == 0) visit(name);
  }
}

TEST(Floors, HeadersOpenWithWhatTheyAreFor) {
  for (const auto& file : Sources()) {
    if (file.extension() != ".h") continue;
    std::ifstream in(file);
    std::string first;
    std::getline(in, first);
    EXPECT_EQ(first.substr(0, 2), "//") << file;
  }
}

}  // namespace

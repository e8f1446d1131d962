// Finding programs by text in their names.
#include "Workshop.h"
#include "files/ProgramSearch.h"

namespace torvane::files {

using namespace tests;
namespace {

class Search : public ::testing::Test, public Workshop {
 protected:
  std::vector<FoundProgram> Find(const std::string& directory, const std::string& program) {
    Steps.clear();
    return SearchPrograms(Disk, System.Directories.ProgramRoot, {directory, program},
                          [this](const SearchProgress& progress) {
                            Steps.push_back(progress);
                            return Steps.size() < StopAfter;
                          });
  }
  std::vector<SearchProgress> Steps;
  std::size_t StopAfter = 1000;
};

using Found = std::vector<FoundProgram>;

TEST_F(Search, AWordIsFoundAnywhereInTheNameAndInAllDirectories) {
  for (const char* path :
       {"SHOP/CAB.prg", "SHOP/ab1.PRG", "NEST/Slab.prg", "NEST/BA.prg", "SHOP/ab.lsr"})
    Temp.Put(std::string("Programs/") + path, "");
  EXPECT_EQ(Find("", "ab"), (Found{{"NEST", "Slab"}, {"SHOP", "ab1"}, {"SHOP", "CAB"}}));
}

TEST_F(Search, AWordForTheDirectoryChoosesDirectories) {
  Temp.Put("Programs/SHOP/A.prg", "");
  Temp.Put("Programs/NEST/A.prg", "");
  EXPECT_EQ(Find("hO", ""), (Found{{"SHOP", "A"}}));
  EXPECT_EQ(Find("hO", "b"), Found{});
  EXPECT_EQ(Find("x", "a"), Found{});
}

TEST_F(Search, TheReservedDirectoryIsScanned) {
  Temp.Put("Programs/EXSUBS/SUB1.prg", "");
  EXPECT_EQ(Find("", "sub"), (Found{{"EXSUBS", "SUB1"}}));
}

TEST_F(Search, DotsAreNoDirectories) {
  Temp.Put("Programs/A.prg", "a program in the root itself");
  Temp.Put("A.prg", "and one above it");
  EXPECT_EQ(Find("", "A"), Found{});
  EXPECT_EQ(Find(".", "A"), Found{});
}

TEST_F(Search, WildCardsAreText) {
  Temp.Put("Programs/SHOP/AXB.prg", "");
  Temp.Put("Programs/SHOP/A*B.prg", "");
  EXPECT_EQ(Find("", "*"), (Found{{"SHOP", "A*B"}}));
  EXPECT_EQ(Find("", "A?B"), Found{});
}

TEST_F(Search, EachDirectoryIsAStepThatMayEndTheSearch) {
  Temp.Put("Programs/SHOP/A.prg", "");
  Temp.Put("Programs/NEST/A.prg", "");
  static_cast<void>(Find("", ""));
  ASSERT_EQ(Steps.size(), 2U);
  EXPECT_EQ(Steps[0].Directories, 1);
  EXPECT_EQ(Steps[0].Total, 2);
  EXPECT_EQ(Steps[0].Found, 1);
  EXPECT_EQ(Steps[1].Found, 2);
  StopAfter = 1;
  EXPECT_EQ(Find("", "").size(), 1U);
}

TEST_F(Search, TheCaptionShowsTheWordsThatThereAre) {
  EXPECT_EQ(SearchCaption({"SHOP", "ab"}), " \"SHOP\" \n \"ab\" ");
  EXPECT_EQ(SearchCaption({"SHOP", ""}), " \"SHOP\" ");
  EXPECT_EQ(SearchCaption({"", "ab"}), " \"ab\" ");
}

}  // namespace
}  // namespace torvane::files

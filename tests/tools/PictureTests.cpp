// The pictures of the documents: one of each screen, at the size that was asked for, and the same
// ones whenever they are taken.
#include <QImage>
#include <filesystem>
#include <set>

#include <gtest/gtest.h>

#include "support/QtEnvironment.h"
#include "support/SourceTree.h"
#include "support/TempDirectory.h"
#include "tools/PictureScenes.h"

namespace torvane::tools {
namespace {

namespace fs = std::filesystem;

std::set<std::string> TakeAll(const fs::path& folder) {
  const tests::TempDirectory installation;
  fs::copy(torvane::tests::SourceTree() / "examples" / "installation", installation.Path(),
           fs::copy_options::recursive);
  PrepareInstallation(installation.Path());
  PictureStage stage(installation.Path(), {folder.string(), {1024, 768}, false});
  PlayScenes(stage);
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder))
    names.insert(entry.path().filename().string());
  return names;
}

TEST(Pictures, EveryScreenGetsOneAndASecondRoundGivesTheSame) {
  const tests::TempDirectory first;
  const tests::TempDirectory second;
  const auto names = TakeAll(first.Path());
  EXPECT_EQ(names, TakeAll(second.Path()));
  for (const char* screen :
       {"SplashForm",     "FrontEnd",       "ProgramForm",     "KeyboardForm",    "NumberForm",
        "StatusMenuForm", "XYPositionForm", "AuxPositionForm", "ViewProgForm",    "SetupForm",
        "MessageForm",    "WarningForm",    "ShutdownForm",    "SimulatorPanel",  "MachineForm",
        "LoadForm",       "MoveForm",       "XYJogForm",       "LaserStatusForm", "BatchForm",
        "UserForm",       "ProgListForm",   "SearchForm",      "EditProgForm",    "FileHandleForm",
        "FileForm",       "DirectoryForm",  "SendForm"}) {
    const std::string name = std::string(screen) + "-1024x768.png";
    ASSERT_TRUE(names.count(name)) << name;
    const QImage one(QString::fromStdString((fs::path(first.Path()) / name).string()));
    const QImage two(QString::fromStdString((fs::path(second.Path()) / name).string()));
    EXPECT_EQ(one, two) << name;
    if (std::string(screen) != "SimulatorPanel") {
      EXPECT_EQ(one.size(), QSize(1024, 768)) << name;
    }
  }
}

}  // namespace
}  // namespace torvane::tools

// torvane-pictures: one picture of every screen, for the documents and for whoever looks at them.
#include <CLI/CLI.hpp>
#include <QTemporaryDir>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "toolkit/Application.h"
#include "tools/PictureScenes.h"

namespace {

namespace fs = std::filesystem;

/// "WIDTHxHEIGHT".
torvane::tools::WindowSize SizeOf(const std::string& text) {
  torvane::tools::WindowSize size;
  const auto mark = text.find('x');
  const bool good = mark != std::string::npos &&
                    CLI::detail::lexical_cast(text.substr(0, mark), size.Width) &&
                    CLI::detail::lexical_cast(text.substr(mark + 1), size.Height);
  if (!good || size.Width < 640 || size.Height < 480)
    throw std::runtime_error("\"" + text + "\" is no WIDTHxHEIGHT from 640x480 up");
  return size;
}

/// Every size starts from the installation as it came.
void TakePictures(const std::string& installation, const torvane::tools::PictureOptions& options) {
  const QTemporaryDir temporary;
  if (!temporary.isValid()) throw std::runtime_error("no temporary folder can be made");
  const std::string root = temporary.path().toStdString() + "/installation";
  fs::copy(installation, root, fs::copy_options::recursive);
  torvane::tools::PrepareInstallation(root);
  torvane::tools::PictureStage stage(root, options);
  torvane::tools::PlayScenes(stage);
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Takes pictures of every screen of the console, off screen.", "torvane-pictures");
  std::string installation;
  torvane::tools::PictureOptions options;
  std::vector<std::string> sizes = {"1280x1024"};
  app.add_option("INSTALLATION", installation, "the example installation, which is copied")
      ->required()
      ->check(CLI::ExistingDirectory);
  app.add_option("FOLDER", options.Folder, "where the pictures go")->required();
  app.add_option("--size", sizes, "WIDTHxHEIGHT of the console, several times for several sizes");
  app.add_flag("--states", options.EveryState, "the states of each screen as well");
  CLI11_PARSE(app, argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  torvane::toolkit::Application application(argc, argv);
  try {
    fs::create_directories(options.Folder);
    for (const std::string& size : sizes) {
      options.Size = SizeOf(size);
      TakePictures(installation, options);
    }
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "torvane-pictures: %s\n", fault.what());
    return 1;
  }
  return 0;
}

// An installation for torvane-check, with what the command prints.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/SourceTree.h"
#include "support/TempDirectory.h"
#include "tools/CheckCommand.h"

namespace torvane::tools {

namespace fs = std::filesystem;

inline const fs::path Examples = torvane::tests::SourceTree() / "examples" / "installation";

inline constexpr const char* Plain =
    "! MATERIAL : Copper\r\n! SHEET : X500 Y300\r\n! CLAMP : L80 R380\r\n"
    "G71 G90\r\n\r\nG00 X10 Y10\r\nG31 T2=3\r\nG01 X50 Y10 F1000\r\nG01 X50 Y40\r\n"
    "G02 X70 Y20 I0 J-20\r\nG31 T2=1\r\nM30\r\n";

/// An installation of its own, with what the command prints.
struct Shop {
  tests::TempDirectory Home;
  std::ostringstream Out;
  std::ostringstream Errors;

  Shop() {
    fs::copy(Examples, Home.Path() + "/root", fs::copy_options::recursive);
    Put("PLAIN", Plain);
  }
  void Put(const std::string& name, std::string_view text) const {
    Home.Put("root/Programs/JOBS/" + name + ".prg", text);
  }
  int Run(std::vector<std::string> arguments, bool terminal = false) {
    Out.str("");
    Errors.str("");
    arguments.insert(arguments.begin(), {"--root", Home.Path() + "/root"});
    return CheckMain(arguments, {Out, Errors, terminal, &TheQtOutput()});
  }
  [[nodiscard]] bool Says(const std::string& text) const {
    return Out.str().find(text) != std::string::npos;
  }
  [[nodiscard]] bool Complains(const std::string& text) const {
    return Errors.str().find(text) != std::string::npos;
  }
};

inline std::string Snapshot(const fs::path& directory) {
  std::vector<std::string> lines;
  for (const auto& entry : fs::recursive_directory_iterator(directory)) {
    std::string line = entry.path().string();
    if (entry.is_regular_file()) {
      std::ifstream in(entry.path(), std::ios::binary);
      line += ": " + std::string(std::istreambuf_iterator<char>(in), {});
    }
    lines.push_back(line);
  }
  std::sort(lines.begin(), lines.end());
  std::string text;
  for (const auto& line : lines) text += line + "\n";
  return text;
}

}  // namespace torvane::tools

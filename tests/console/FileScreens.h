// What the tests of the file and program screens share: the folders as they are, and answers.
#pragma once

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "ConsoleFixture.h"
#include "toolkit/ListBox.h"
#include "toolkit/PickBox.h"

namespace torvane::tests {

class FileScreens : public ConsoleFixture {
 protected:
  using Texts = std::vector<std::string>;
  using Tree = std::map<std::string, std::string>;

  FileScreens() { Start(); }

  void Put(const std::string& path, const std::string& text) {
    std::filesystem::create_directories((Programs() / path).parent_path());
    std::ofstream(Programs() / path, std::ios::binary) << text;
  }
  [[nodiscard]] std::filesystem::path Programs() const {
    return std::filesystem::path(Directory.Path()) / "Programs";
  }
  /// Every file below the programs root with its bytes, and every directory with a slash.
  [[nodiscard]] Tree AllPrograms() const {
    Tree tree;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Programs())) {
      const std::string name = std::filesystem::relative(entry.path(), Programs()).string();
      std::ostringstream bytes;
      if (entry.is_regular_file()) bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
      tree[entry.is_directory() ? name + "/" : name] = bytes.str();
    }
    return tree;
  }
  /// Runs `act`, answers each warning that comes up with the next key, and gives what they said.
  Texts Answers(const std::vector<toolkit::Key>& keys, const std::function<void()>& act) {
    auto texts = std::make_shared<Texts>();
    for (const toolkit::Key key : keys) {
      Then([this, texts, key] {
        texts->push_back(Warning());
        Type(key);
      });
    }
    act();
    RunFor(20 * (static_cast<int>(keys.size()) + 1));
    EXPECT_FALSE(Shows("WarningForm")) << Warning();
    return *texts;
  }
  Texts Answers(const std::vector<toolkit::Key>& keys, toolkit::Key key) {
    return Answers(keys, [this, key] { Type(key); });
  }
  /// Presses a key that opens the key pad, and enters a text there.
  void Enter(toolkit::Key key, const std::string& text) {
    ThenTypeText(text);
    ThenType(toolkit::Key::Enter);
    Type(key);
    RunFor(60);
  }
  /// The same, and the pad is cancelled.
  void EnterAndCancel(toolkit::Key key, const std::string& text) {
    ThenTypeText(text);
    Then([this] { Control<toolkit::Button>("KeyboardForm", "ExitButton")->Press(); });
    Type(key);
    RunFor(60);
  }
  [[nodiscard]] toolkit::ListBox& List(const std::string& screen, const std::string& name) {
    auto* list = Control<toolkit::ListBox>(screen, name);
    if (list == nullptr) throw std::runtime_error(screen + " has no " + name);
    return *list;
  }
  [[nodiscard]] std::string BoxText(const std::string& screen, const std::string& name) {
    auto* box = Control<toolkit::EntryBox>(screen, name);
    return box == nullptr ? "(no such box)" : box->Text();
  }
  [[nodiscard]] std::string FrameCaption(const std::string& screen, const std::string& name) {
    auto* frame = Control<toolkit::Frame>(screen, name);
    return frame == nullptr ? "(no such frame)" : frame->Caption();
  }
  [[nodiscard]] std::string ScreenTitle(const std::string& screen) {
    console::Screen* found = Screens().Find(screen);
    if (found == nullptr) return "(not loaded)";
    auto* title = Control<toolkit::Panel>(screen, found->Traits().PanelName + "(0)");
    return title->Caption();
  }
  void TouchLine(toolkit::ListBox& list, int line) {
    const int row = (list.height() - 2) / list.VisibleLines();
    ClickAt(list, 20, 1 + row * (line - list.TopLine()) + row / 2);
    RunFor(20);
  }
  void Touch(const std::string& screen, const std::string& name) {
    Click(*Control<toolkit::Control>(screen, name));
    RunFor(20);
  }
};

/// A key by its letter or digit.
constexpr toolkit::Key KeyFor(char letter) { return static_cast<toolkit::Key>(letter); }

}  // namespace torvane::tests

#include "SourceTexts.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/SourceTree.h"

namespace torvane::tests {

namespace {

namespace fs = std::filesystem;

/// One walk over a piece of code.
class Scanner {
 public:
  explicit Scanner(std::string_view code) : code_(code) {}

  std::vector<std::string> Literals() {
    while (at_ < code_.size()) Step();
    return std::move(literals_);
  }

 private:
  [[nodiscard]] bool Begins(std::string_view text) const {
    return code_.substr(at_).starts_with(text);
  }
  void PassTo(std::string_view end) {
    const auto found = code_.find(end, at_);
    at_ = found == std::string_view::npos ? code_.size() : found + end.size();
  }
  void Step() {
    if (Begins("//")) return PassTo("\n");
    if (Begins("/*")) return PassTo("*/");
    if (Begins("#include")) return PassTo("\n");
    if (Begins("R\"(")) return TakeRaw();
    const char character = code_[at_];
    if (character == '"') return TakeText();
    // A mark between digits parts thousands.
    const bool digits = at_ > 0 && std::isxdigit(static_cast<unsigned char>(code_[at_ - 1])) != 0;
    if (character == '\'' && !digits) return PassCharacter();
    if (std::isspace(static_cast<unsigned char>(character)) == 0) joins_ = false;
    ++at_;
  }
  void TakeRaw() {
    at_ += 3;
    const auto end = std::min(code_.find(")\"", at_), code_.size());
    Take(std::string(code_.substr(at_, end - at_)));
    at_ = std::min(end + 2, code_.size());
  }
  void TakeText() {
    std::string text;
    for (++at_; at_ < code_.size() && code_[at_] != '"'; ++at_) {
      if (code_[at_] == '\\' && at_ + 1 < code_.size()) {
        const char escaped = code_[++at_];
        text += escaped == 'n' || escaped == 'r' || escaped == 't' ? '\n' : escaped;
      } else {
        text += code_[at_];
      }
    }
    ++at_;
    Take(std::move(text));
  }
  void PassCharacter() {
    for (++at_; at_ < code_.size() && code_[at_] != '\''; ++at_)
      if (code_[at_] == '\\') ++at_;
    ++at_;
    joins_ = false;
  }
  void Take(std::string text) {
    if (joins_) {
      literals_.back() += text;
    } else {
      literals_.push_back(std::move(text));
    }
    joins_ = true;
  }

  std::string_view code_;
  std::size_t at_ = 0;
  bool joins_ = false;  ///< nothing but blanks since the last literal
  std::vector<std::string> literals_;
};

void AddFile(const fs::path& path, std::vector<SourceText>& texts) {
  const std::string name = fs::relative(path, SourceTree()).generic_string();
  for (std::string& text : LiteralsOf(SourceFile(name))) texts.push_back({std::move(text), name});
}

}  // namespace

std::vector<std::string> LiteralsOf(std::string_view code) { return Scanner(code).Literals(); }

std::vector<SourceText> TextsOf(const std::string& place) {
  const fs::path path = SourceTree() / "src" / place;
  std::vector<SourceText> texts;
  if (!fs::is_directory(path)) {
    AddFile(path, texts);
    return texts;
  }
  for (const auto& file : fs::recursive_directory_iterator(path)) {
    const auto ending = file.path().extension();
    if (ending == ".h" || ending == ".cpp") AddFile(file.path(), texts);
  }
  return texts;
}

const std::vector<SourceText>& TextsOfTheConsole() {
  static const std::vector<SourceText> all = [] {
    std::vector<SourceText> texts;
    for (const auto& folder : fs::directory_iterator(SourceTree() / "src")) {
      const std::string name = folder.path().filename().string();
      if (!folder.is_directory() || name == "simulator" || name == "tools") continue;
      for (SourceText& text : TextsOf(name)) texts.push_back(std::move(text));
    }
    return texts;
  }();
  return all;
}

std::string SourceFile(const std::string& place) {
  std::ifstream in(SourceTree() / place, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace torvane::tests

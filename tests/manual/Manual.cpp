#include "Manual.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <utility>

#include "support/SourceTree.h"

namespace torvane::tests {

namespace {

namespace fs = std::filesystem;

/// "[#select]" before a heading.
std::string IdIn(const std::string& text) {
  static const std::regex pattern(R"(^\[#([a-z0-9-]+)\]$)");
  std::smatch found;
  return std::regex_match(text, found, pattern) ? found[1].str() : std::string();
}

/// "=== Select a program".
std::string HeadingIn(const std::string& text) {
  static const std::regex pattern(R"(^=+ (.+)$)");
  std::smatch found;
  return std::regex_match(text, found, pattern) ? found[1].str() : std::string();
}

/// The text of the two signs that would mean something to the tool if they stood there themselves.
std::string Resolved(std::string text) {
  for (const auto& [name, sign] : {std::pair{"{asterisk}", "*"}, std::pair{"{backslash}", "\\"}}) {
    for (auto at = text.find(name); at != std::string::npos; at = text.find(name, at + 1))
      text.replace(at, std::string_view(name).size(), sign);
  }
  return text;
}

void ReadSource(const fs::path& path, std::vector<ManualLine>& lines) {
  std::ifstream in(path);
  std::string text;
  std::string heading;
  std::string id;
  std::string nextId;
  for (int number = 1; std::getline(in, text); ++number) {
    if (const std::string found = IdIn(text); !found.empty()) nextId = found;
    if (const std::string found = HeadingIn(text); !found.empty()) {
      heading = found;
      id = std::exchange(nextId, {});
    }
    lines.push_back({path.filename().string(), number, Resolved(text), heading, id});
  }
}

std::regex PatternOf(std::string_view role) {
  const std::string name(role);
  if (role == "btn" || role == "kbd") return std::regex(name + R"(:\[([^\]]*)\])");
  return std::regex(R"(\[\.)" + name + R"(\]#([^#]+)#)");
}

}  // namespace

std::string Quote::Where() const {
  return "docs/manual/" + Line.File + ":" + std::to_string(Line.Number);
}

const std::vector<ManualLine>& ManualLines() {
  static const std::vector<ManualLine> all = [] {
    std::vector<fs::path> sources;
    for (const auto& file : fs::directory_iterator(SourceTree() / "docs" / "manual"))
      if (file.path().extension() == ".adoc") sources.push_back(file.path());
    std::sort(sources.begin(), sources.end());
    std::vector<ManualLine> lines;
    for (const auto& source : sources) ReadSource(source, lines);
    return lines;
  }();
  return all;
}

std::vector<std::string> QuotesIn(std::string_view text, std::string_view role) {
  const std::string line(text);
  const std::regex pattern = PatternOf(role);
  std::vector<std::string> quotes;
  for (std::sregex_iterator it(line.begin(), line.end(), pattern), end; it != end; ++it)
    quotes.push_back((*it)[1].str());
  return quotes;
}

std::vector<Quote> Quotes(std::string_view role) {
  std::vector<Quote> quotes;
  for (const ManualLine& line : ManualLines()) {
    if (line.Text.starts_with("//")) continue;
    for (std::string& text : QuotesIn(line.Text, role)) quotes.push_back({std::move(text), line});
  }
  return quotes;
}

bool Quoted(const std::vector<Quote>& quotes, std::string_view text) {
  return std::any_of(quotes.begin(), quotes.end(),
                     [&](const Quote& quote) { return quote.Text == text; });
}

std::vector<std::string> FixedParts(const std::string& text) {
  static const std::regex openPart(R"re("?(<[^>]*>|\*)"?)re");
  std::vector<std::string> parts;
  for (std::sregex_token_iterator it(text.begin(), text.end(), openPart, -1), end; it != end;
       ++it) {
    if (it->length() > 0) parts.push_back(it->str());
  }
  return parts;
}

std::string Squeezed(std::string_view text) {
  std::string squeezed;
  for (const char character : text) {
    if (std::isspace(static_cast<unsigned char>(character)) == 0) {
      squeezed += character;
    } else if (!squeezed.empty() && squeezed.back() != ' ') {
      squeezed += ' ';
    }
  }
  if (!squeezed.empty() && squeezed.back() == ' ') squeezed.pop_back();
  return squeezed;
}

}  // namespace torvane::tests

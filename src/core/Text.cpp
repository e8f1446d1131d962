#include "core/Text.h"

#include <algorithm>

namespace torvane::core {

namespace {

constexpr std::string_view Whitespace = " \t\r\n";

constexpr char Upper(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(Whitespace);
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(Whitespace);
  return text.substr(first, last - first + 1);
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
  return upper;
}

std::string RemoveBlanks(std::string_view text) {
  std::string rest(text);
  std::erase(rest, ' ');
  return rest;
}

std::string_view BlockPart(std::string_view line) { return Trim(line.substr(0, line.find('!'))); }

std::string_view CommentPart(std::string_view line) {
  const auto mark = line.find('!');
  return mark == std::string_view::npos ? std::string_view{} : Trim(line.substr(mark + 1));
}

std::string_view SemicolonPart(std::string_view line) {
  return Trim(line.substr(0, line.find(';')));
}

std::string_view AfterColon(std::string_view line) {
  const auto colon = line.find(':');
  return Trim(colon == std::string_view::npos ? line : line.substr(colon + 1));
}

std::string_view StripExtension(std::string_view name) {
  return Trim(name.substr(0, name.rfind('.')));
}

std::string_view NamePart(std::string_view path) {
  const auto separator = path.find_last_of("/\\:");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

bool TakeLine(std::string_view& rest, std::string_view& line) {
  if (rest.empty()) return false;
  const auto found =
      std::find_if(rest.begin(), rest.end(), [](char c) { return c == '\n' || c == '\r'; });
  const auto end = static_cast<std::size_t>(found - rest.begin());
  line = rest.substr(0, end);
  if (end == rest.size()) {
    rest = {};
    return true;
  }
  const bool pair = rest[end] == '\r' && end + 1 < rest.size() && rest[end + 1] == '\n';
  rest.remove_prefix(end + (pair ? 2 : 1));
  return true;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  lines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
  for (std::string_view line; TakeLine(text, line);) lines.push_back(line);
  return lines;
}

bool EqualNoCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return Upper(a) == Upper(b); });
}

}  // namespace torvane::core

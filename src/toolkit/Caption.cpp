#include "toolkit/Caption.h"

#include <cctype>

namespace torvane::toolkit {

namespace {

/// The parts between line feeds and runs of two and more blanks, trimmed, empty ones left out.
std::vector<std::string_view> Split(std::string_view text) {
  std::vector<std::string_view> parts;
  std::size_t start = 0;
  const auto take = [&](std::size_t end) {
    while (start < end && text[start] == ' ') ++start;
    std::size_t last = end;
    while (last > start && text[last - 1] == ' ') --last;
    if (last > start) parts.push_back(text.substr(start, last - start));
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool feed = text[i] == '\n' || text[i] == '\r';
    const bool run = text[i] == ' ' && i + 1 < text.size() && text[i + 1] == ' ';
    if (!feed && !run) continue;
    take(i);
    start = i + 1;
  }
  take(text.size());
  return parts;
}

bool NamesAFunctionKey(std::string_view text) {
  if (text.size() < 2 || text.size() > 3 || text[0] != 'F') return false;
  int number = 0;
  for (const char c : text.substr(1)) {
    if (c < '0' || c > '9') return false;
    number = number * 10 + (c - '0');
  }
  return text[1] != '0' && number <= 12;
}

}  // namespace

CaptionLine ParseLine(std::string_view text) {
  CaptionLine line;
  line.Text.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '&') {
      line.Text += text[i];
      continue;
    }
    if (++i >= text.size()) break;
    if (text[i] != '&' && line.Underlined < 0) line.Underlined = static_cast<int>(line.Text.size());
    line.Text += text[i];
  }
  return line;
}

CaptionText ParseCaption(std::string_view text) {
  CaptionText caption;
  const auto parts = Split(text);
  bool marked = false;
  for (const auto part : parts) {
    CaptionLine line = ParseLine(part);
    if (marked) line.Underlined = -1;
    marked = marked || line.Underlined >= 0;
    caption.Lines.push_back(std::move(line));
  }
  caption.NameOverKey = parts.size() > 1 && NamesAFunctionKey(parts.back());
  return caption;
}

char AcceleratorOf(std::string_view text) {
  const CaptionLine line = ParseLine(text);
  if (line.Underlined < 0) return 0;
  const char c = line.Text[static_cast<std::size_t>(line.Underlined)];
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace torvane::toolkit

// The rows of a report for a person: a name, and what it is.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvane::tools {

/// Indented name and value, the values below each other. A row without a name goes on with the one
/// above it.
inline void AddRow(std::string& text, std::string_view name, std::string_view value) {
  constexpr std::size_t NameColumn = 16;  // characters
  text += "  ";
  text += name;
  text.append(name.size() < NameColumn ? NameColumn - name.size() : 1, ' ');
  text += value;
  text += '\n';
}

}  // namespace torvane::tools

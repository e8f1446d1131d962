// The texts that the program itself can say: the string literals of its sources.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvane::tests {

/// A literal, with its escapes undone; literals that follow each other are one.
struct SourceText {
  std::string Text;
  std::string File;  ///< "src/files/Lists.h"
};

/// The literals of C++ code; comments, characters and includes are passed over.
[[nodiscard]] std::vector<std::string> LiteralsOf(std::string_view code);

/// The literals of a folder of src, such as "console", or of one file, such as
/// "link/Variables.h".
[[nodiscard]] std::vector<SourceText> TextsOf(const std::string& place);

/// Of everything in src but the simulated machine and the programs round the console.
[[nodiscard]] const std::vector<SourceText>& TextsOfTheConsole();

/// A file of the checkout, whole.
[[nodiscard]] std::string SourceFile(const std::string& place);

}  // namespace torvane::tests

// Where the sources of this checkout lie, for tests that read the example installation.
#pragma once

#include <filesystem>

namespace torvane::tests {

/// The folder with the README.
[[nodiscard]] std::filesystem::path SourceTree();

}  // namespace torvane::tests

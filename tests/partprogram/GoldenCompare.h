// Where two files of a slot differ, in words that a reader of part programs understands.
#pragma once

#include <string>

namespace torvane::tests {

/// Empty when the bytes are equal; else one sentence about the first difference: a record and the
/// name of its field in ".drw" and ".krw", a record of 80 bytes in ".tbl" and ".rnd", a line in any
/// other file.
[[nodiscard]] std::string FirstDifference(const std::string& name, const std::string& expected,
                                          const std::string& actual);

}  // namespace torvane::tests

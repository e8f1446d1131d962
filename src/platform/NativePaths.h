// The system's paths and names turned into those of the machine's file system, and back.
//
// The system writes paths with backslashes, in single bytes, and does not mind the case of a name.
// The machine divides by slashes, keeps names in UTF-8 and minds case.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace torvane::platform {

/// Upper case of one Latin-1 byte; bytes without a case stay.
[[nodiscard]] char FoldCase(char byte);

/// Below 0, 0 or above 0, as names sort without minding case.
[[nodiscard]] int CompareNames(std::string_view left, std::string_view right);

/// True when the whole name matches; "*" any run, "?" any one byte, case not minded. A pattern that
/// ends in ".*" also matches a name without an extension.
[[nodiscard]] bool MatchesPattern(std::string_view name, std::string_view pattern);

/// A name of the machine as the system keeps it: UTF-8 becomes Latin-1. A name that is no UTF-8, or
/// that Latin-1 does not have the letters of, stays byte for byte.
[[nodiscard]] std::string ToSystemName(std::string_view nativeName);

/// Latin-1 to UTF-8.
[[nodiscard]] std::string ToNativeName(std::string_view systemName);

/// Where paths begin on this machine.
class NativePaths {
 public:
  /// `workingDirectory` (native) is where a path without a root begins. Drive letters lead to
  /// native directories; "C" leads to "/" unless the table says otherwise.
  NativePaths(std::string workingDirectory, const std::map<char, std::string>& drives);

  /// The native path of a system path, for a file that may not be there: as far as directories and
  /// names exist in some other case, theirs is taken. Empty when the path cannot be meant: empty,
  /// holding a NUL byte, or on a drive that no letter leads to.
  [[nodiscard]] std::string Resolve(std::string_view path) const;

  /// "A" leads to a directory, or, with an empty one, to nothing any more.
  void SetDrive(char letter, std::string nativeDirectory);

 private:
  /// Splits off what the path begins with; the native directory that it means.
  [[nodiscard]] std::string BaseOf(std::string_view& path) const;

  std::string workingDirectory_;
  std::map<char, std::string> drives_;
};

}  // namespace torvane::platform

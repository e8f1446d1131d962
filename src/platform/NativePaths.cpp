#include "platform/NativePaths.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace torvane::platform {

namespace {

namespace fs = std::filesystem;

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

std::string Joined(std::string directory, std::string_view name) {
  if (!directory.empty() && directory.back() != '/') directory += '/';
  directory += name;
  return directory;
}

/// The components between the separators; empty ones and "." say nothing.
std::vector<std::string_view> Components(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const auto end = std::find_if(path.begin(), path.end(), IsSeparator);
    const auto length = static_cast<std::size_t>(end - path.begin());
    const std::string_view part = path.substr(0, length);
    if (!part.empty() && part != ".") parts.push_back(part);
    path.remove_prefix(std::min(path.size(), length + 1));
  }
  return parts;
}

bool Exists(const std::string& nativePath) {
  std::error_code error;
  return fs::exists(fs::status(nativePath, error));
}

/// One component found in a directory: as it is written, else in the first other case that the
/// sorted listing has. Nothing when no name of the directory is meant.
std::optional<std::string> FindName(const std::string& directory, std::string_view part) {
  for (const std::string& name : {ToNativeName(part), std::string(part)}) {
    if (Exists(Joined(directory, name))) return name;
  }
  std::optional<std::string> best;
  std::error_code error;
  for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
    const std::string name = it->path().filename().string();
    if (CompareNames(ToSystemName(name), part) != 0) continue;
    if (!best || name < *best) best = name;
  }
  return best;
}

}  // namespace

char FoldCase(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  const bool ascii = code >= 'a' && code <= 'z';
  const bool latin = code >= 0xE0 && code <= 0xFE && code != 0xF7;
  return ascii || latin ? static_cast<char>(code - 0x20) : byte;
}

int CompareNames(std::string_view left, std::string_view right) {
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto a = static_cast<unsigned char>(FoldCase(left[i]));
    const auto b = static_cast<unsigned char>(FoldCase(right[i]));
    if (a != b) return a < b ? -1 : 1;
  }
  if (left.size() == right.size()) return 0;
  return left.size() < right.size() ? -1 : 1;
}

namespace {

/// The wild-card match proper; steps back to the last "*" only, so it never grows exponentially.
bool MatchesExactly(std::string_view name, std::string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;
  std::size_t starName = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      starName = n;
    } else if (p < pattern.size() &&
               (pattern[p] == '?' || FoldCase(pattern[p]) == FoldCase(name[n]))) {
      ++p;
      ++n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++starName;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  if (MatchesExactly(name, pattern)) return true;
  return pattern.ends_with(".*") && name.find('.') == std::string_view::npos &&
         MatchesExactly(name, pattern.substr(0, pattern.size() - 2));
}

std::string ToSystemName(std::string_view nativeName) {
  std::string name;
  for (std::size_t i = 0; i < nativeName.size(); ++i) {
    const auto lead = static_cast<unsigned char>(nativeName[i]);
    if (lead < 0x80) {
      name += nativeName[i];
      continue;
    }
    const bool pair = (lead == 0xC2 || lead == 0xC3) && i + 1 < nativeName.size() &&
                      (static_cast<unsigned char>(nativeName[i + 1]) & 0xC0U) == 0x80U;
    if (!pair) return std::string(nativeName);
    const auto tail = static_cast<unsigned char>(nativeName[++i]);
    name += static_cast<char>(((lead & 0x03U) << 6U) | (tail & 0x3FU));
  }
  return name;
}

std::string ToNativeName(std::string_view systemName) {
  std::string name;
  for (const char c : systemName) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x80) {
      name += c;
    } else {
      name += static_cast<char>(0xC0U | (code >> 6U));
      name += static_cast<char>(0x80U | (code & 0x3FU));
    }
  }
  return name;
}

NativePaths::NativePaths(std::string workingDirectory, const std::map<char, std::string>& drives)
    : workingDirectory_(std::move(workingDirectory)) {
  if (workingDirectory_.empty()) workingDirectory_ = ".";
  drives_['C'] = "/";
  for (const auto& [letter, directory] : drives) SetDrive(letter, directory);
}

void NativePaths::SetDrive(char letter, std::string nativeDirectory) {
  if (nativeDirectory.empty()) {
    drives_.erase(FoldCase(letter));
  } else {
    drives_[FoldCase(letter)] = std::move(nativeDirectory);
  }
}

std::string NativePaths::BaseOf(std::string_view& path) const {
  if (path.size() >= 2 && path[1] == ':') {
    const auto drive = drives_.find(FoldCase(path[0]));
    path.remove_prefix(2);
    return drive == drives_.end() ? std::string() : drive->second;
  }
  return !path.empty() && IsSeparator(path[0]) ? std::string("/") : workingDirectory_;
}

std::string NativePaths::Resolve(std::string_view path) const {
  if (path.empty() || path.find('\0') != std::string_view::npos) return {};
  std::string found = BaseOf(path);
  if (found.empty()) return {};
  const auto parts = Components(path);
  std::string direct = found;
  for (const auto part : parts) direct = Joined(std::move(direct), ToNativeName(part));
  if (Exists(direct)) return direct;

  bool there = true;
  for (const auto part : parts) {
    const auto name = there ? FindName(found, part) : std::nullopt;
    there = name.has_value();
    found = Joined(std::move(found), there ? *name : ToNativeName(part));
  }
  return found;
}

}  // namespace torvane::platform

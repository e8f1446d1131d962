#include "tools/ProgramBeside.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace torvane::tools {

namespace fs = std::filesystem;

std::vector<std::string> PlacesOfProgram(const std::string& ownPath, const std::string& name) {
  const fs::path own = fs::path(ownPath).parent_path();
  return {(own / name).string(),
          (own.parent_path() / "libexec" / "torvane" / name).lexically_normal().string()};
}

std::string BecomeProgram(const std::string& name, char** argv) {
  std::error_code error;
  const fs::path own = fs::read_symlink("/proc/self/exe", error);
  if (error) return "/proc/self/exe, " + error.message();
  std::string fault;
  for (const std::string& place : PlacesOfProgram(own.string(), name)) {
    ::execv(place.c_str(), argv);
    fault = place + ", " + std::generic_category().message(errno);
    if (errno != ENOENT) break;
  }
  return fault;
}

}  // namespace torvane::tools

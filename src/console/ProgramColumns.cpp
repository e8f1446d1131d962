#include "console/ProgramColumns.h"

#include <array>
#include <cstdio>

namespace torvane::console {

std::string DetailsOf(const platform::FileEntry& file) {
  std::string details = std::to_string(file.Size) + "\t";
  if (file.Written.Year == 0) return details;
  std::array<char, 32> date{};
  (void)std::snprintf(date.data(), date.size(), "%04d-%02d-%02d", file.Written.Year,
                      file.Written.Month, file.Written.Day);
  return details + date.data();
}

void ShowDirectories(toolkit::ListBox& list, const files::ListContent& directories) {
  list.SetItems(directories.Items);
  list.SetCurrent(directories.Index);
}

void ShowPrograms(toolkit::ListBox& list, const files::ProgramList& programs) {
  ShowDirectories(list, programs);
  std::vector<std::string> details;
  for (const platform::FileEntry& file : programs.Files) details.push_back(DetailsOf(file));
  list.SetDetails(std::move(details));
}

}  // namespace torvane::console

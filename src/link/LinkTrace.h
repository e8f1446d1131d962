// The texts that the link leaves for a person: Polling.txt and Errors.txt.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::link {

/// Polling.txt may grow to this many bytes; one more and it is put aside.
inline constexpr std::uint64_t PollLogLimit = 50'000'000;

/// One record of Polling.txt: five lines, the text after each label from column 15 on.
[[nodiscard]] std::string PollLogRecord(std::string_view tag, std::string_view query,
                                        std::string_view reply, bool status);

/// One record of Errors.txt: four lines.
[[nodiscard]] std::string ErrorLogRecord(std::string_view lastComms, std::string_view text);

/// The text of the failure dialog.
[[nodiscard]] std::string FailureText(std::string_view lastComms, std::string_view text);

/// Appends to the files in the service directory as it is at each call. What cannot be written
/// is reported to the caller and raises nothing: no exchange may fail for the sake of its trace.
class LinkTrace {
 public:
  LinkTrace(platform::FileSystem& files, const core::DirectorySet& directories)
      : files_(files), directories_(directories) {}

  /// False when it could not be written.
  [[nodiscard]] bool AppendExchange(std::string_view tag, std::string_view query,
                                    std::string_view reply, bool status);
  void AppendError(std::string_view lastComms, std::string_view text);

  /// A Polling.txt beyond its limit takes the place of Polling.bak; the next record starts a new
  /// one. False when it could not be put aside. A trace that is not there is a RuntimeFault.
  [[nodiscard]] bool Rotate();

 private:
  bool Append(const std::string& path, const std::string& record);
  [[nodiscard]] std::string ServicePath(std::string_view name) const;

  platform::FileSystem& files_;
  const core::DirectorySet& directories_;
};

}  // namespace torvane::link

#include "platform/FileSystem.h"

#include <utility>

namespace torvane::platform {

namespace {

/// Kept in memory until it is put in place.
class KeptFile final : public NewFile {
 public:
  KeptFile(FileSystem& files, std::string_view path, std::string bytes)
      : files_(files), path_(path), bytes_(std::move(bytes)) {}

  void PutInPlace() override { files_.ReplaceFile(path_, bytes_); }

 private:
  FileSystem& files_;
  std::string path_;
  std::string bytes_;
};

}  // namespace

std::unique_ptr<NewFile> FileSystem::WriteBeside(std::string_view path, const PartSource& next) {
  std::string bytes;
  std::string part;
  for (next(part); !part.empty(); next(part)) bytes += part;
  return std::make_unique<KeptFile>(*this, path, std::move(bytes));
}

}  // namespace torvane::platform

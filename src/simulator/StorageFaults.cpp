#include "simulator/StorageFaults.h"

#include <algorithm>
#include <limits>

#include "core/General.h"
#include "platform/RuntimeFault.h"

namespace torvane::simulator {

namespace {

bool Begins(std::string_view path, const std::string& prefix) {
  return core::UpperCase(path.substr(0, prefix.size())) == prefix;
}

bool AnyBegins(std::string_view path, const std::vector<std::string>& prefixes) {
  return std::any_of(prefixes.begin(), prefixes.end(),
                     [&](const std::string& prefix) { return Begins(path, prefix); });
}

[[noreturn]] void Refuse(std::string_view path, const char* why) {
  throw platform::RuntimeFault(std::string(path), why);
}

}  // namespace

void StorageFaults::FullAfter(std::uint64_t bytes, std::string_view prefix) {
  full_.push_back({core::UpperCase(prefix), bytes});
}
void StorageFaults::ReadOnly(std::string_view prefix) {
  readOnly_.push_back(core::UpperCase(prefix));
}
void StorageFaults::Gone(std::string_view prefix) { gone_.push_back(core::UpperCase(prefix)); }
void StorageFaults::ReadyAt(std::string_view drive, int tests) {
  testsLeft_[core::UpperCase(drive)] = tests;
}
void StorageFaults::Clear() { *this = {}; }

std::uint64_t StorageFaults::Room(std::string_view path) const {
  auto room = std::numeric_limits<std::uint64_t>::max();
  for (const auto& limit : full_) {
    if (Begins(path, limit.Prefix)) room = std::min(room, limit.Bytes);
  }
  return room;
}

void StorageFaults::Write(std::string_view path, std::uint64_t bytes) {
  if (IsGone(path)) Refuse(path, "the drive does not answer");
  if (AnyBegins(path, readOnly_)) Refuse(path, "the disk is write-protected");
  if (Room(path) < bytes) Refuse(path, "the disk is full");
  for (auto& limit : full_) {
    if (Begins(path, limit.Prefix)) limit.Bytes -= bytes;
  }
}

bool StorageFaults::IsGone(std::string_view path) const { return AnyBegins(path, gone_); }

bool StorageFaults::TestDrive(std::string_view drive) {
  const auto found = testsLeft_.find(core::UpperCase(drive));
  if (found == testsLeft_.end()) return true;
  if (found->second > 1) {
    --found->second;
    return false;
  }
  testsLeft_.erase(found);
  return true;
}

void FaultyFiles::RefuseGone(std::string_view path) const {
  if (faults_.IsGone(path)) Refuse(path, "the drive does not answer");
}

bool FaultyFiles::FileExists(std::string_view path) const {
  return !faults_.IsGone(path) && inner_.FileExists(path);
}
bool FaultyFiles::DirectoryExists(std::string_view path) const {
  return !faults_.IsGone(path) && inner_.DirectoryExists(path);
}
void FaultyFiles::MakeDirectory(std::string_view path) {
  faults_.Write(path, 0);
  inner_.MakeDirectory(path);
}
void FaultyFiles::RemoveDirectory(std::string_view path) {
  faults_.Write(path, 0);
  inner_.RemoveDirectory(path);
}
std::string FaultyFiles::ReadFile(std::string_view path) const {
  RefuseGone(path);
  return inner_.ReadFile(path);
}
void FaultyFiles::ReplaceFile(std::string_view path, std::string_view bytes) {
  faults_.Write(path, bytes.size());
  inner_.ReplaceFile(path, bytes);
}
void FaultyFiles::OverwriteFile(std::string_view path, std::string_view bytes) {
  faults_.Write(path, bytes.size());
  inner_.OverwriteFile(path, bytes);
}
void FaultyFiles::AppendFile(std::string_view path, std::string_view bytes) {
  const auto room = faults_.Room(path);
  if (room > 0 && room < bytes.size()) {
    const auto fits = bytes.substr(0, static_cast<std::size_t>(room));
    faults_.Write(path, fits.size());
    inner_.AppendFile(path, fits);
  }
  faults_.Write(path, bytes.size());
  inner_.AppendFile(path, bytes);
}
std::uint64_t FaultyFiles::FileSize(std::string_view path) const {
  RefuseGone(path);
  return inner_.FileSize(path);
}
void FaultyFiles::DeleteFile(std::string_view path) {
  faults_.Write(path, 0);
  inner_.DeleteFile(path);
}
void FaultyFiles::CopyFile(std::string_view from, std::string_view to) {
  RefuseGone(from);
  faults_.Write(to, inner_.FileSize(from));
  inner_.CopyFile(from, to);
}
void FaultyFiles::RenameFile(std::string_view from, std::string_view to) {
  faults_.Write(from, 0);
  faults_.Write(to, 0);
  inner_.RenameFile(from, to);
}
std::vector<std::string> FaultyFiles::ListFiles(std::string_view pattern) const {
  return faults_.IsGone(pattern) ? std::vector<std::string>{} : inner_.ListFiles(pattern);
}
std::vector<platform::FileEntry> FaultyFiles::ListEntries(std::string_view pattern) const {
  return faults_.IsGone(pattern) ? std::vector<platform::FileEntry>{} : inner_.ListEntries(pattern);
}
std::vector<std::string> FaultyFiles::ListDirectories(std::string_view path) const {
  return faults_.IsGone(path) ? std::vector<std::string>{} : inner_.ListDirectories(path);
}
std::unique_ptr<platform::RecordFile> FaultyFiles::OpenRecords(std::string_view path,
                                                               std::size_t recordSize) const {
  RefuseGone(path);
  return inner_.OpenRecords(path, recordSize);
}

}  // namespace torvane::simulator

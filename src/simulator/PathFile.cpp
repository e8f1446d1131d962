#include "simulator/PathFile.h"

#include <algorithm>

#include "partprogram/DrawRecord.h"
#include "platform/RuntimeFault.h"

namespace torvane::simulator {

namespace {

constexpr int FirstRecord = 2;  // after the header

}  // namespace

bool PathFile::Load(const platform::FileSystem& files, const std::string& path) {
  elements_.clear();
  std::string bytes;
  try {
    bytes = files.ReadFile(path);
  } catch (const platform::RuntimeFault&) {
    return false;  // the machine goes by the rows, and says so
  }
  constexpr std::size_t Size = partprogram::DrawRecordSize;
  if (bytes.empty() || bytes.size() % Size != 0) return false;
  elements_.reserve(bytes.size() / Size - 1);
  for (std::size_t at = Size; at < bytes.size(); at += Size) {
    const auto number = static_cast<int>(elements_.size()) + FirstRecord;
    const std::span<const char, Size> record(bytes.data() + at, Size);
    elements_.push_back(partprogram::ToElement(number, partprogram::DecodeRecord(record)));
  }
  return true;
}

const PathElement* PathFile::OfLine(int line) const {
  const auto at = std::lower_bound(
      elements_.begin(), elements_.end(), line,
      [](const PathElement& element, int wanted) { return element.TableLine < wanted; });
  return at == elements_.end() ? nullptr : &*at;
}

const PathElement* PathFile::OfRecord(int record) const {
  const int index = record - FirstRecord;
  if (index < 0 || static_cast<std::size_t>(index) >= elements_.size()) return nullptr;
  return &elements_[static_cast<std::size_t>(index)];
}

int PathFile::FirstLineOf(int record) const {
  if (OfRecord(record) == nullptr) return 0;
  const PathElement* before = OfRecord(record - 1);
  return before == nullptr ? 1 : before->TableLine + 1;
}

}  // namespace torvane::simulator

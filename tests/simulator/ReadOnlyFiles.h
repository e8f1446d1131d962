// The files that the machine reads.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "partprogram/DrawRecord.h"
#include "support/MemoryFiles.h"

namespace torvane::tests {

/// The machine must not write: every attempt is a fault.
class ReadOnlyFiles final : public MemoryFiles {
 public:
  ReadOnlyFiles() { ReadOnly = true; }
};

/// A record file of these records.
inline std::string EncodeAll(const std::vector<partprogram::DrawRecord>& records) {
  std::string bytes(records.size() * partprogram::DrawRecordSize, '\0');
  for (std::size_t i = 0; i < records.size(); ++i) {
    partprogram::EncodeRecord(records[i], std::span<char, partprogram::DrawRecordSize>(
                                              bytes.data() + i * partprogram::DrawRecordSize,
                                              partprogram::DrawRecordSize));
  }
  return bytes;
}

}  // namespace torvane::tests

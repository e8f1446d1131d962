// Any bytes as records: decoded, encoded back to the same bytes, finished and drawn.
#include <cstring>
#include <vector>

#include "FuzzInput.h"
#include "graphics/ProgramPlot.h"
#include "partprogram/Binding.h"
#include "partprogram/DrawRecord.h"
#include "platform/RecordingCanvas.h"

using namespace torvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<partprogram::DrawRecord> records;
  for (std::size_t at = 0; at + partprogram::DrawRecordSize <= size;
       at += partprogram::DrawRecordSize) {
    std::array<char, partprogram::DrawRecordSize> bytes{};
    std::memcpy(bytes.data(), data + at, bytes.size());
    const auto record = partprogram::DecodeRecord(bytes);
    std::array<char, partprogram::DrawRecordSize> again{};
    partprogram::EncodeRecord(record, again);
    if (again != bytes) __builtin_trap();
    records.push_back(record);
  }
  if (records.empty()) return 0;
  platform::RecordingCanvas canvas(640, 480);
  const core::ColourTable colours;
  core::MachineData machine;
  machine.YDirection = 1;
  graphics::DrawProgram(canvas, colours, machine,
                        {records[0][partprogram::Figure::Length],
                         records[0][partprogram::Figure::SecondLength], records, records});
  for (auto& record : records) partprogram::FinishRecord(record);
  return 0;
}

#include "supervision/BatchCount.h"

#include "core/General.h"
#include "core/SlotFiles.h"
#include "platform/RuntimeFault.h"

namespace torvane::supervision {

std::optional<core::Batch> BatchOf(double partsPerSheet, double partsRequired,
                                   double sheetsCompleted) {
  core::Batch batch;
  batch.PartsPerSheet = core::RoundToInt32(partsPerSheet);
  if (batch.PartsPerSheet < 1) return std::nullopt;
  batch.SheetsCompleted = core::RoundToInt32(sheetsCompleted);
  const std::int32_t wanted = core::RoundToInt32(partsRequired);
  if (wanted < 1) return batch;
  batch.PartsRequired = wanted;
  batch.SheetsRequired = wanted / batch.PartsPerSheet + (wanted % batch.PartsPerSheet != 0 ? 1 : 0);
  batch.SheetsToGo = core::TruncateToInt32(static_cast<double>(batch.SheetsRequired) -
                                           static_cast<double>(batch.SheetsCompleted));
  return batch;
}

bool StoreBatch(core::System& system, platform::FileSystem& files, link::Downloads& downloads,
                const core::Batch& batch) {
  system.Active().BatchCounters = batch;
  bool saved = true;
  try {
    core::SaveBatch(files, system.Directories, system.ActiveSlot, batch);
  } catch (const platform::RuntimeFault&) {
    saved = false;  // a full disk must not end the console while the machine cuts
  }
  downloads.DownBatch(batch);
  return saved;
}

}  // namespace torvane::supervision

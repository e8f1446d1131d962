// The files Actvprg<slot>.* that hold a selected program: their names, and the small text files
// among them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/ActiveProgram.h"
#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::core {

/// Extensions of the six files without which a slot holds no program.
inline constexpr std::array<std::string_view, 6> RequiredSlotFiles = {"cfg", "prg", "rnd",
                                                                      "drw", "krw", "tbl"};

/// `RootDirectory` + "Actvprg" + slot + "." + extension.
[[nodiscard]] std::string SlotFile(const DirectorySet& directories, int slot,
                                   std::string_view extension);

/// True when all six required files of the slot exist.
[[nodiscard]] bool SlotFilesExist(const platform::FileSystem& files,
                                  const DirectorySet& directories, int slot);

/// Deletes every file of the slot, whatever its extension.
void DeleteSlotFiles(platform::FileSystem& files, const DirectorySet& directories, int slot);

/// The fields of an empty slot; `LoadY` is the machine's load position, mm.
void EmptySlot(ActiveProgram& program, float loadPositionY);

// Each reader of a text throws a RuntimeFault that names `path` for a text that is too short or has
// something else in place of a number.

/// Actvprg<slot>.cfg: names, `BodyLines` and `TableLines` (0 to 32767), `LoadY`.
void ReadSlotConfig(std::string_view text, std::string_view path, ActiveProgram& program);
[[nodiscard]] std::string SlotConfigText(const ActiveProgram& program);

/// Actvprg<slot>.sts.
[[nodiscard]] RunTotals ReadProgramStatus(std::string_view text, std::string_view path);
[[nodiscard]] std::string ProgramStatusText(const RunTotals& totals);

/// Actvprg<slot>.btc.
[[nodiscard]] Batch ReadBatch(std::string_view text, std::string_view path);
[[nodiscard]] std::string BatchText(const Batch& batch);

// The same with their files.

/// The file must be there.
void LoadSlotConfig(platform::FileSystem& files, const DirectorySet& directories, int slot,
                    ActiveProgram& program);
void SaveSlotConfig(platform::FileSystem& files, const DirectorySet& directories, int slot,
                    const ActiveProgram& program);

/// Without the file: zeros.
void LoadProgramStatus(platform::FileSystem& files, const DirectorySet& directories, int slot,
                       RunTotals& totals);
void SaveProgramStatus(platform::FileSystem& files, const DirectorySet& directories, int slot,
                       const RunTotals& totals);
void LoadBatch(platform::FileSystem& files, const DirectorySet& directories, int slot,
               Batch& batch);
void SaveBatch(platform::FileSystem& files, const DirectorySet& directories, int slot,
               const Batch& batch);

}  // namespace torvane::core

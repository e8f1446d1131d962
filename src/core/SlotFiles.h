// The files Actvprg<slot>.* that hold a selected program: their names, and the small text files
// among them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/ActiveProgram.h"
#include "core/DirectorySet.h"
#include "core/Slot.h"
#include "platform/FileSystem.h"

namespace torvane::core {

/// Extensions of the files "Actvprg<slot>.*".
namespace Extension {
inline constexpr std::string_view Config = "cfg";     ///< names and counts
inline constexpr std::string_view Program = "prg";    ///< the part program, squeezed
inline constexpr std::string_view Body = "bdy";       ///< without the definitions of subroutines
inline constexpr std::string_view Converted = "cnv";  ///< what the passes walk
inline constexpr std::string_view Listing = "rnd";    ///< records of 80 bytes, one a line
inline constexpr std::string_view Draw = "drw";       ///< records of the programmed path
inline constexpr std::string_view Kerf = "krw";       ///< records of the compensated path
inline constexpr std::string_view TableText = "tbx";  ///< controller lines as text
inline constexpr std::string_view Table = "tbl";      ///< the same as records of 80 bytes
inline constexpr std::string_view Laser = "lsr";      ///< laser settings
inline constexpr std::string_view Status = "sts";     ///< totals of the conversion
inline constexpr std::string_view BatchCounters = "btc";  ///< sheets and parts
inline constexpr std::string_view Any = "*";
}  // namespace Extension

/// Every extension that a slot's file may have.
inline constexpr std::array<std::string_view, 12> SlotFileExtensions = {
    Extension::Config,  Extension::Program, Extension::Body,   Extension::Converted,
    Extension::Listing, Extension::Draw,    Extension::Kerf,   Extension::TableText,
    Extension::Table,   Extension::Laser,   Extension::Status, Extension::BatchCounters};

/// Extensions of the six files without which a slot holds no program.
inline constexpr std::array<std::string_view, 6> RequiredSlotFiles = {
    Extension::Config, Extension::Program, Extension::Listing,
    Extension::Draw,   Extension::Kerf,    Extension::Table};

/// `rootDirectory` (with its backslash) + "Actvprg" + slot + "." + extension: the one place that
/// knows these names.
[[nodiscard]] std::string SlotFile(std::string_view rootDirectory, Slot slot,
                                   std::string_view extension);
[[nodiscard]] std::string SlotFile(const DirectorySet& directories, Slot slot,
                                   std::string_view extension);

/// True when all six required files of the slot exist.
[[nodiscard]] bool SlotFilesExist(const platform::FileSystem& files,
                                  const DirectorySet& directories, Slot slot);

/// Deletes every file of the slot, whatever its extension, and what is no file but has the name of
/// one: a link (what it leads to stays), a pipe, an empty folder.
void DeleteSlotFiles(platform::FileSystem& files, const DirectorySet& directories, Slot slot);

/// Bytes of a record of the listing and of the table: one line.
inline constexpr std::size_t LineRecordSize = 80;

/// A RuntimeFault that names the file unless it has exactly that many records.
void HoldSize(const platform::FileSystem& files, const std::string& path, int records,
              std::size_t recordSize);

/// Each record of a table fills rows of the controller's table and does nothing else.
[[nodiscard]] bool IsTableLine(std::string_view record);

/// A RuntimeFault that names the file and the first record that is no table line.
void HoldTableLines(const platform::FileSystem& files, const std::string& path);

/// The fields of an empty slot; `LoadY` is the machine's load position, mm.
void EmptySlot(ActiveProgram& program, float loadPositionY);

// Each reader of a text throws a RuntimeFault that names `path` for a text that is too short, has
// something else in place of a number, or lacks its end mark.

/// Actvprg<slot>.cfg: names (a fault where one is no plain name), `BodyLines` and `TableLines` (0
/// to 32767), `LoadY`.
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
void LoadSlotConfig(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                    ActiveProgram& program);
void SaveSlotConfig(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                    const ActiveProgram& program);

/// Without the file: zeros.
void LoadProgramStatus(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                       RunTotals& totals);
void SaveProgramStatus(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                       const RunTotals& totals);
void LoadBatch(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
               Batch& batch);
void SaveBatch(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
               const Batch& batch);

}  // namespace torvane::core
